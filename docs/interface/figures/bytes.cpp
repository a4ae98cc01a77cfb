// SPDX-License-Identifier: Apache-2.0
#include "figures.h"

#include <imageutils/cvutils.h>

#include <string>

namespace {

/// Whether the decoder ignores everything that follows `text`.
bool hasStopped(const std::string& text)
{
    return CvUtils::base64Decode(text + "AAAAAAAA") == CvUtils::base64Decode(text + "////////");
}

/// The number of characters of `text` that the decoder reads before it stops.
std::size_t charactersRead(const std::string& text)
{
    std::size_t read = 0;
    while (read < text.size() && !hasStopped(text.substr(0, read + 1)))
        ++read;
    return read;
}

QString hexadecimal(const std::vector<unsigned char>& bytes)
{
    const QByteArray array(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    return bytes.empty() ? QStringLiteral("no byte") : QString::fromLatin1(array.toHex(' '));
}

} // namespace

Svg base64StopRule()
{
    const struct
    {
        const char* text;
        const char* remark;
    } rows[] = {
        {"AQIDBAUG", "whole groups of four"},
        {"AQIDBA==", "padding ends the text"},
        {"AQIDBA", "padding may be missing"},
        {"AQIDB", "a single leftover character gives no byte"},
        {"AQID\nBAUG", "a line break ends the text"},
        {"AQ-DBAUG", "so does any other character"},
    };
    Svg svg(760, 40 + 40 * int(std::size(rows)));
    svg.text({20, 22}, "text (green: read, grey: ignored)", "font-weight=\"bold\"");
    svg.text({300, 22}, "bytes", "font-weight=\"bold\"");
    double y = 36;
    for (const auto& row : rows) {
        const std::string text = row.text;
        const std::size_t read = charactersRead(text);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const double x = 20 + 28 * double(i);
            svg.rect({x, y, 26, 28}, i < read ? "fill=\"#c7e9c0\" stroke=\"#5a9e54\""
                                              : "fill=\"#eeeeee\" stroke=\"#bbbbbb\"");
            svg.text({x + 13, y + 19},
                     text[i] == '\n' ? QStringLiteral("LF") : QString(QLatin1Char(text[i])),
                     i < read ? "text-anchor=\"middle\" font-family=\"monospace\""
                              : "text-anchor=\"middle\" font-family=\"monospace\" fill=\"#999\"");
        }
        svg.text({300, y + 19}, hexadecimal(CvUtils::base64Decode(text)),
                 "font-family=\"monospace\"");
        svg.text({480, y + 19}, row.remark);
        y += 40;
    }
    return svg;
}
