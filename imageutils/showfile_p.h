// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <chrono>

class OSUtils;

/// What `OSUtils::showFileInGraphicalShell` does; the services of the desktop are waited for no
/// longer than `limit` together. The signals are those of `shower`, which may be deleted meanwhile.
void showFile(OSUtils* shower, const QString& path, std::chrono::milliseconds limit);
