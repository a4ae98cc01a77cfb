// SPDX-License-Identifier: Apache-2.0
#include "headless.h"

#include "report.h"
#include "terminal.h"

#include <imageutils/imageutils.h>

namespace {

JobResult refused(const Source& source)
{
    JobResult result;
    result.path = source.path;
    result.failure = source.refusal;
    return result;
}

} // namespace

int runHeadless(const Options& options, const QList<Source>& sources)
{
    Report report(options, sources);
    qsizetype number = 0;
    for (const Source& source : sources) {
        const QString place = QStringLiteral("%1 of %2, ").arg(++number).arg(sources.size());
        const auto showStep = [&](Step step) {
            if (sources.size() > 1)
                Terminal::showProgress(place + QLatin1String(stepNames[std::size_t(step)]) +
                                       QLatin1Char(' ') + NImageUtils::getFilename(source.path));
        };
        report.add(source.refusal.isEmpty() ? runJob(source.path, options, showStep)
                                            : refused(source));
    }
    return report.finish();
}
