// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobresult.h"
#include "options.h"
#include "sources.h"

/// "5640x3172"; "-" for an unknown size.
QString sizeText(QSize size);

/// "yes", "no" or, while unknown, "-".
QString answerText(std::optional<bool> answer);

/// The model of the camera; "-" when the file does not say.
QString cameraText(const JobResult& result);

/// Says on the standard output what became of each photograph, as a table or as lines of JSON, and
/// on the error output what went wrong.
class Report
{
public:
    /// A report on `sources`; the table's head is printed at once.
    Report(const Options& options, const QList<Source>& sources);

    /// Prints what became of the next photograph.
    void add(const JobResult& result);

    /// Prints how many photographs were exported, kept and failed. Returns the program's exit
    /// status: 1 when one failed, else 0.
    int finish();

private:
    void printRow(const QStringList& cells) const;
    QStringList rowOf(const JobResult& result) const;

    const bool m_isJson;
    const std::size_t m_steps; ///< shown as columns
    qsizetype m_fileColumns = 0;
    int m_exported = 0;
    int m_kept = 0;
    int m_failed = 0;
};
