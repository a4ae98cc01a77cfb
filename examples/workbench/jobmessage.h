// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobresult.h"
#include "options.h"
#include "sources.h"

#include <QtCore/QByteArray>
#include <QtCore/QRect>

/// What the program and its worker processes say to each other over pipes: one line of JSON each.
/// The program sends a Request; the worker answers with any number of Messages, of which the last
/// one is a Result or a Preview. A worker that wants memory waits for one line, whatever it says. A
/// worker that is at work on a view gives up what an Interrupt says, a line of one digit.

/// What a worker gives up for the next request.
enum class Interrupt {
    None,
    Picture, ///< the exact picture, when the next request is for the same photograph
    Decoding ///< the decoding of a photograph as well
};

/// What a window wants to show of a photograph.
struct View
{
    enum class Kind {
        None,      ///< nothing: the request is an export
        Thumbnail, ///< the whole photograph, small
        Before,    ///< the photograph, turned as its export is
        After,     ///< the pixels that the export would have
        Encoded,   ///< the same, as they are read back from the exported file
        Prepare    ///< nothing yet; the photograph is decoded for a later view
    };
    Kind kind = Kind::None;
    QSize bounds{};          ///< the pixels that the window has for it
    QRectF part{0, 0, 1, 1}; ///< what is visible, in widths and heights of the picture
    bool mayBeDraft =
        false; ///< a picture that is made quickly will do, where the exact one is slow
};

/// One photograph to be exported, or to be shown in a window.
struct Request
{
    QString path;
    bool mayBeOutput = false; ///< an earlier output of this program at `path` is passed over
    View view{};
    qint64 memoryShare = 0; ///< bytes that a worker may use without asking
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
        Preview    ///< `bytes` bytes of RGBA pixels follow the line, of a picture of `size`, which
                   ///< shows `part` of a picture of `whole` pixels; `result` has the facts
    };
    Kind kind;
    Step step = Step::Header;
    qint64 bytes = 0;
    QString text{};
    QSize size{};
    JobResult result{};
    QRect part{};
    QSize whole{};
    bool isDraft = false;   ///< the picture differs a little from the exact one
    bool isGivenUp = false; ///< there is no picture, because another request came in the meantime
};

/// The request to export `source` with `options`.
Request requestFor(const Source& source, const Options& options, qint64 memoryShare);

/// The line for `request`, with its line feed.
QByteArray lineOf(const Request& request);

/// The line for `message`, with its line feed.
QByteArray lineOf(const Message& message);

/// The request in `line`; a default one when the line holds none.
Request requestOf(const QByteArray& line);

/// The line for `interrupt`.
QByteArray lineOf(Interrupt interrupt);

/// The interrupt in `line`; `None` when it is a request.
Interrupt interruptOf(const QByteArray& line);

/// The message in `line`; nothing when the line holds none.
std::optional<Message> messageOf(const QByteArray& line);
