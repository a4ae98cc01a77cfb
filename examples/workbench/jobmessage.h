// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobresult.h"
#include "options.h"
#include "sources.h"

#include <QtCore/QByteArray>

/// What the program and its worker processes say to each other over pipes: one line of JSON each.
/// The program sends a Request; the worker answers with any number of Messages, of which the last
/// one is a Result or a Preview. A worker that wants memory waits for one line, whatever it says.

/// One photograph to be exported, or to be shown in a window.
struct Request
{
    QString path;
    bool mayBeOutput = false; ///< an earlier output of this program at `path` is passed over
    QSize preview{};          ///< the largest size to be shown; invalid for an export
    qint64 memoryShare = 0;   ///< bytes that a worker may use without asking
    Options options{};
    QString subfolder{}; ///< as in Source
    int number = 0;      ///< as in Source
};

struct Message
{
    enum class Kind {
        Step,      ///< `step` begins
        Memory,    ///< the pixels need `bytes`; the worker waits for permission
        Temporary, ///< a file `text` is about to be created, to be removed if the worker dies
        Log,       ///< a line `text` for the error output
        Result,    ///< the photograph is done
        Preview    ///< `bytes` bytes of RGBA pixels follow the line, of a picture of `size`
    };
    Kind kind;
    Step step = Step::Header;
    qint64 bytes = 0;
    QString text{};
    QSize size{};
    JobResult result{};
};

/// The request to export `source` with `options`.
Request requestFor(const Source& source, const Options& options, qint64 memoryShare);

/// The line for `request`, with its line feed.
QByteArray lineOf(const Request& request);

/// The line for `message`, with its line feed.
QByteArray lineOf(const Message& message);

/// The request in `line`; a default one when the line holds none.
Request requestOf(const QByteArray& line);

/// The message in `line`; nothing when the line holds none.
std::optional<Message> messageOf(const QByteArray& line);
