// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobmessage.h"

#include <QtCore/QList>
#include <QtCore/QProcess>
#include <QtGui/QImage>

#include <memory>

/// What a window shows of a photograph.
struct Shown
{
    QImage image;  ///< null when there is nothing to be shown
    QRect part{};  ///< the pixels that the image shows
    QSize whole{}; ///< of so many
    JobResult
        facts{}; ///< what is known about the photograph; its failure says why there is no image
    bool isDraft = false;   ///< the exact picture can be requested
    bool isGivenUp = false; ///< the request was interrupted, and can be made again
};

/// One worker process, in which foreign code decodes, computes and encodes one photograph after
/// another, the program `imageutils-workbench-worker`. When the process dies, the photograph in it
/// fails, its unfinished file is removed, and the next one gets a new process. Needs an event loop.
class Worker : public QObject
{
    Q_OBJECT

public:
    /// How much of a processor the process gets where others want it as well. With `Low`, a window
    /// that shows pictures meanwhile keeps drawing frames.
    enum class Priority { Usual, Low };

    explicit Worker(Priority priority = Priority::Usual, QObject* parent = nullptr);
    ~Worker() override;

    /// Hands `request` to the process, which is started when there is none. One at a time.
    void start(const Request& request);

    /// Answers `memoryWanted`.
    void grantMemory();

    /// Lets the process give up what it does for a view. The answer then says so.
    void interrupt(Interrupt interrupt);

    /// Whether a photograph is in work.
    bool isBusy() const { return m_isBusy; }

    /// Ends the processes of `workers` in the middle of their work and removes what they have not
    /// finished. Takes no longer than a fifth of a second.
    static void end(const QList<Worker*>& workers);

    /// Does this for all workers of the program, together in that time.
    static void endAll();

    /// From now on new workers run `path` instead of this program.
    static void setProgram(const QString& path);

Q_SIGNALS:
    void stepped(Step step);
    void memoryWanted(qint64 bytes);

    /// The photograph is done, or its process has died.
    void finished(const JobResult& result);

    /// The answer to a request with a view.
    void viewed(const Shown& shown);

    /// The system cannot start a process now. The photograph was not begun.
    void unavailable(const QString& reason);

private:
    void readOutput();
    bool readPreview();
    void readErrors();
    void receive(const Message& message);
    void showFailure(QProcess::ProcessError error);
    void showEnd(int code, QProcess::ExitStatus status);
    void complete(const JobResult& result);
    void removeTemporaries();
    QString reasonOfEnd(int code, QProcess::ExitStatus status) const;

    std::unique_ptr<QProcess> m_process = std::make_unique<QProcess>();
    Request m_request;
    bool m_isBusy = false;
    Step m_step = Step::Header;
    QStringList m_temporaries;        ///< files that the process may have left unfinished
    QByteArray m_said;                ///< the end of what foreign code wrote to the error output
    std::optional<Message> m_preview; ///< whose pixels are still to come
};
