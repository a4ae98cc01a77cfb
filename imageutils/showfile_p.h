// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <chrono>

class OSUtils;

/// Does the work of `OSUtils::showFileInGraphicalShell`, whose time limit for the desktop's
/// services is a parameter here. The signals are sent by `sender`, which may be deleted while the
/// services are asked.
void showFile(OSUtils* sender, const QString& path, std::chrono::milliseconds limit);
