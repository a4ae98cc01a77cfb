// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobresult.h"

/// What is known about a photograph, in the words of a photographer and the language of the window.
namespace Facts {

/// The names of the facts that are known; `values` has as many entries.
QStringList names(const JobResult& facts);
QStringList values(const JobResult& facts);

/// "4.2 MB", or "4.2 MB → 0.8 MB" after an export; empty while `bytes` is unknown (-1).
QString sizesText(qint64 bytes, qint64 outputBytes);

/// `reason`, by which the program reports a failure, as a sentence that says what can be done.
QString failureText(const QString& reason);

} // namespace Facts
