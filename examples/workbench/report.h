// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jobresult.h"
#include "options.h"
#include "sources.h"

#include <functional>
#include <vector>

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
    /// A report on `sources`; the table's head is printed at once. The table fits 80 columns, or
    /// has everything that is known if the user wants that.
    Report(const Options& options, const QList<Source>& sources);

    /// Prints what became of the next photograph.
    void add(const JobResult& result);

    /// Prints how many photographs were exported, kept and failed. Returns the program's exit
    /// status: 1 when one failed, else 0.
    int finish();

private:
    /// One column of the table: texts stand on its left, numbers on its right.
    struct Column
    {
        QString head;
        qsizetype width;
        bool isNumber;
        std::function<QString(const JobResult&)> text;
    };

    void addShortColumns();
    void addAllColumns(bool withBitmap);
    void addSize(const char* head, QSize JobResult::*size);
    void printRow(const std::function<QString(const Column&)>& text) const;

    const bool m_isJson;
    const bool m_isQuiet;
    const bool m_isDryRun;
    std::vector<Column> m_columns;
    int m_exported = 0;
    int m_kept = 0;
    int m_failed = 0;
};
