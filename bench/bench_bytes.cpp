// SPDX-License-Identifier: Apache-2.0
//
// Serialised matrices and base64, beside copying the same bytes.
#include "groups.h"
#include "scalarloops.h"

#include <imageutils/cvutils.h>

#include <support/matrices.h>

#include <QtCore/QByteArray>

#include <modp_b64.h>
#include <openssl/evp.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace Bench {
namespace {

using Bytes = std::vector<unsigned char>;

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

/// Memory that is not filled with zeros first, and the number of bytes used.
struct Buffer
{
    explicit Buffer(std::size_t capacity)
        : memory(static_cast<unsigned char*>(std::malloc(capacity)))
    {}
    unsigned char* data() const { return memory.get(); }
    char* text() const { return reinterpret_cast<char*>(memory.get()); }
    std::size_t size() const { return used; }

    std::unique_ptr<unsigned char, Free> memory;
    std::size_t used = 0;
};

Buffer copied(const void* data, std::size_t size)
{
    Buffer copy(size);
    std::memcpy(copy.data(), data, size);
    copy.used = size;
    return copy;
}

Buffer encodedByModp(const Bytes& bytes)
{
    Buffer text(modp_b64_encode_len(bytes.size()));
    text.used =
        modp_b64_encode(text.text(), reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return text;
}

Buffer decodedByModp(const std::string& text)
{
    Buffer bytes(modp_b64_decode_len(text.size()));
    bytes.used = modp_b64_decode(bytes.text(), text.data(), text.size());
    return bytes;
}

Buffer encodedByOpenSsl(const Bytes& bytes)
{
    Buffer text((bytes.size() + 2) / 3 * 4 + 1);
    text.used = std::size_t(EVP_EncodeBlock(text.data(), bytes.data(), int(bytes.size())));
    return text;
}

Buffer decodedByOpenSsl(const std::string& text)
{
    Buffer bytes(text.size() / 4 * 3);
    const int size = EVP_DecodeBlock(
        bytes.data(), reinterpret_cast<const unsigned char*>(text.data()), int(text.size()));
    const std::size_t padding = text.size() - 1 - text.find_last_not_of('=');
    bytes.used = std::size_t(size) - padding; // OpenSSL decodes padding to zeros
    return bytes;
}

/// Returns 0 if the result holds the bytes of `expected`.
template<typename Expected>
auto differenceFrom(const Expected& expected)
{
    return [&expected](const auto& result) {
        return std::size_t(result.size()) == expected.size() &&
                       std::memcmp(result.data(), expected.data(), expected.size()) == 0
                   ? 0
                   : 1;
    };
}

void encode(const Bytes& bytes, const std::string& text, const std::string& size,
            const Options& options)
{
    const QByteArray array(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    const auto same = differenceFrom(text);
    Benchmark benchmark("base64Encode", size);
    benchmark.add(
        Role::Ours, "ours", [&] { return CvUtils::base64Encode(bytes); }, same);
    benchmark.add(
        Role::Scalar, "scalar loop", [&] { return ScalarLoops::encoded(bytes); }, same);
    benchmark.add(
        Role::Peer, "modp_b64", [&] { return encodedByModp(bytes); }, same);
    benchmark.add(
        Role::Peer, "OpenSSL", [&] { return encodedByOpenSsl(bytes); }, same);
    benchmark.add(
        Role::Peer, "QByteArray", [&] { return array.toBase64(); }, same);
    benchmark.addYardstick("memcpy of the text", [&] { return copied(text.data(), text.size()); });
    benchmark.run(options);
}

void decode(const Bytes& bytes, const std::string& text, const std::string& size,
            const Options& options)
{
    const QByteArray array = QByteArray::fromStdString(text);
    const auto same = differenceFrom(bytes);
    Benchmark benchmark("base64Decode", size);
    benchmark.add(
        Role::Ours, "ours", [&] { return CvUtils::base64Decode(text); }, same);
    benchmark.add(
        Role::Scalar, "scalar loop", [&] { return ScalarLoops::decoded(text); }, same);
    benchmark.add(
        Role::Peer, "modp_b64", [&] { return decodedByModp(text); }, same);
    benchmark.add(
        Role::Peer, "OpenSSL", [&] { return decodedByOpenSsl(text); }, same);
    benchmark.add(
        Role::Peer, "QByteArray", [&] { return QByteArray::fromBase64(array); }, same);
    benchmark.addYardstick("memcpy of the text", [&] { return copied(text.data(), text.size()); });
    benchmark.run(options);
}

void serializeMat(const cv::Mat& mat, const std::string& name, const std::string& size,
                  const Options& options)
{
    const cv::Mat whole = mat.isContinuous() ? mat : mat.clone();
    const auto copy = [whole] { return copied(whole.data, whole.total() * whole.elemSize()); };
    Benchmark benchmark("serializeMat, " + name, size);
    benchmark.add(
        Role::Ours, "ours", [mat] { return CvUtils::serializeMat(mat); },
        [whole](const Bytes& bytes) {
            const std::size_t header = 16;
            const std::size_t elements = whole.total() * whole.elemSize();
            return bytes.size() == header + elements &&
                           std::memcmp(&bytes[header], whole.data, elements) == 0
                       ? 0
                       : 1;
        });
    benchmark.addYardstick("memcpy of the elements", copy);
    benchmark.run(options);
}

void deserializeMat(const cv::Mat& mat, const std::string& size, const Options& options)
{
    const Bytes bytes = CvUtils::serializeMat(mat);
    Benchmark benchmark("deserializeMat", size);
    benchmark.add(
        Role::Ours, "ours", [&] { return CvUtils::deserializeMat(bytes); },
        [mat](const cv::Mat& result) { return TestSupport::sameBytes(result, mat) ? 0 : 1; });
    benchmark.addYardstick("memcpy of the elements",
                           [&] { return copied(mat.data, mat.total() * mat.elemSize()); });
    benchmark.run(options);
}

} // namespace

void base64(const Options& options)
{
    const int megabytes = options.isSmall ? 1 : 64;
    const Bytes bytes = TestSupport::noise(megabytes, 1 << 20, CV_8U).reshape(1, 1);
    const std::string text = CvUtils::base64Encode(bytes);
    const std::string size = std::to_string(megabytes) + " MiB";
    encode(bytes, text, size, options.onOneThread());
    decode(bytes, text, size, options.onOneThread());
}

void serialize(const Options& options)
{
    for (const PictureSize& size : options.sizes) {
        const cv::Mat mat = TestSupport::noise(size.rows, size.cols, CV_32FC3);
        serializeMat(mat, "whole", size.name, options.onOneThread());
        serializeMat(TestSupport::asView(mat), "view", size.name, options.onOneThread());
        deserializeMat(mat, size.name, options.onOneThread());
    }
}

} // namespace Bench
