// SPDX-License-Identifier: Apache-2.0
#include <imageutils/plugins/boxes.h>

#include <array>
#include <cstddef>
#include <ios>
#include <limits>

namespace {

std::uint64_t largeEndFirst(const char* bytes, std::size_t count)
{
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    return number;
}

} // namespace

Box boxAt(std::streambuf& file, std::int64_t position)
{
    std::array<char, 16> head = {};
    if (file.pubseekpos(position) < 0 || file.sgetn(head.data(), head.size()) < 8)
        return {};
    const auto type = std::uint32_t(largeEndFirst(head.data() + 4, 4));
    std::uint64_t size = largeEndFirst(head.data(), 4);
    if (size == 1) // then it is a long one and follows the type
        size = largeEndFirst(head.data() + 8, 8);
    const auto most = std::uint64_t(std::numeric_limits<std::int64_t>::max() - position);
    return {type, size >= 8 && size <= most ? std::int64_t(size) : 0};
}
