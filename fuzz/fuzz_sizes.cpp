// SPDX-License-Identifier: Apache-2.0
//
// Any bytes, read as a picture file by the readers of single formats. The file goes on with zeros,
// as long as the first byte says: a reader may neither read without bound nor answer otherwise when
// the end is cut off.
#include <imageutils/headers/readers.h>

#include <algorithm>
#include <cstdlib>

namespace {

std::optional<FoundHeader> readFirst(const std::uint8_t* data, std::int64_t size, std::int64_t end)
{
    int reads = 0;
    FileBytes bytes([&](std::int64_t position, char* to, std::int64_t count) {
        constexpr int mostReads = 1 << 18;
        if (++reads > mostReads || count > 1 << 24)
            std::abort();
        const std::int64_t given = std::clamp<std::int64_t>(end - position, 0, count);
        const std::int64_t written = std::clamp<std::int64_t>(size - position, 0, given);
        std::copy_n(data + std::min(position, size), written, to);
        std::fill_n(to + written, given - written, '\0');
        return given;
    });
    return readKnownHeader(bytes);
}

bool hasSize(const std::optional<FoundHeader>& found) { return found && !found->refusal; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const std::int64_t length = std::int64_t(size) - 1;
    const std::int64_t end = length + (std::int64_t(data[0] & 127) << (data[0] & 1 ? 32 : 8));
    const std::optional<FoundHeader> whole = readFirst(data + 1, length, end);
    if (!hasSize(whole))
        return 0;
    if (whole->header.width < 1 || whole->header.height < 1)
        std::abort();
    const std::optional<FoundHeader> cut = readFirst(data + 1, length / 2, length / 2);
    if (hasSize(cut) &&
        (cut->header.width != whole->header.width || cut->header.height != whole->header.height))
        std::abort();
    return 0;
}
