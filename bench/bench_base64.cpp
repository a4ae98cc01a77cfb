// SPDX-License-Identifier: Apache-2.0
//
// Base64 of 64 MiB beside Qt's.
#include "ratios.h"

#include <imageutils/cvutils.h>

#include <QtCore/QByteArray>

#include <algorithm>
#include <random>

namespace {

std::vector<unsigned char> randomBytes(std::size_t count)
{
    std::vector<unsigned char> bytes(count);
    std::mt19937 random; // seeded alike in every run
    std::generate(bytes.begin(), bytes.end(), [&random] { return (unsigned char)(random()); });
    return bytes;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<unsigned char> bytes = randomBytes(std::size_t(64) << 20);
    const QByteArray byteArray(reinterpret_cast<const char*>(bytes.data()),
                               qsizetype(bytes.size()));
    const std::string text = CvUtils::base64Encode(bytes);
    const QByteArray textArray = QByteArray::fromStdString(text);

    addOperation("encode", "ours", [&] { return CvUtils::base64Encode(bytes); });
    addOperation("encode", "QByteArray::toBase64", [&] { return byteArray.toBase64(); });
    addOperation("decode", "ours", [&] { return CvUtils::base64Decode(text); });
    addOperation("decode", "QByteArray::fromBase64",
                 [&] { return QByteArray::fromBase64(textArray); });
    return runBenchmarks(argc, argv);
}
