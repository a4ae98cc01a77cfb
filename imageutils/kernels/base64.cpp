// SPDX-License-Identifier: Apache-2.0
#include <imageutils/kernels/base64.h>

#include <array>
#include <bit>
#include <cstring>

namespace Kernels {
namespace {

// Eight characters are loaded, and six bytes stored, as one little-endian integer.
static_assert(std::endian::native == std::endian::little);

/// Marks a character that ends the decoding. The bit lies above the 24 bits of a group, so that one
/// test of the combined values finds the mark of any character.
constexpr std::uint32_t stop = 1u << 31;

using PlaceTable = std::array<std::uint32_t, 256>;

/// For each character the bits that it adds to a group of four characters if it stands at `place`
/// in the group. A group holds three bytes in little-endian order.
constexpr PlaceTable makePlaceTable(int place)
{
    PlaceTable table{};
    table.fill(stop);
    for (std::uint32_t value = 0; value < standardAlphabet.size(); ++value) {
        const std::uint32_t group = value << (18 - 6 * place);
        table[std::uint8_t(standardAlphabet[value])] =
            group >> 16 | (group & 0xFF00) | (group & 0xFF) << 16;
    }
    return table;
}

constexpr std::array<PlaceTable, 4> places = {makePlaceTable(0), makePlaceTable(1),
                                              makePlaceTable(2), makePlaceTable(3)};

std::uint32_t groupOf(std::uint32_t characters)
{
    return places[0][characters & 255] | places[1][characters >> 8 & 255] |
           places[2][characters >> 16 & 255] | places[3][characters >> 24];
}

} // namespace

namespace Scalar {

std::size_t encodeBase64(const std::uint8_t* bytes, std::size_t count, const char* alphabet,
                         char* text)
{
    char* const begin = text;
    for (; count >= 3; count -= 3, bytes += 3, text += 4) {
        const std::uint32_t group =
            std::uint32_t(bytes[0]) << 16 | std::uint32_t(bytes[1]) << 8 | bytes[2];
        text[0] = alphabet[group >> 18];
        text[1] = alphabet[group >> 12 & 63];
        text[2] = alphabet[group >> 6 & 63];
        text[3] = alphabet[group & 63];
    }
    if (count > 0) {
        const std::uint32_t second = count == 2 ? bytes[1] : 0;
        text[0] = alphabet[bytes[0] >> 2];
        text[1] = alphabet[unsigned(bytes[0] & 3) << 4 | second >> 4];
        text[2] = count == 2 ? alphabet[(second & 15) << 2] : '=';
        text[3] = '=';
        text += 4;
    }
    return std::size_t(text - begin);
}

std::size_t decodeBase64(const char* text, std::size_t count, std::uint8_t* bytes)
{
    const std::uint8_t* const begin = bytes;
    for (; count >= 8; count -= 8, text += 8, bytes += 6) {
        std::uint64_t characters;
        std::memcpy(&characters, text, sizeof(characters));
        const std::uint32_t first = groupOf(std::uint32_t(characters));
        const std::uint32_t second = groupOf(std::uint32_t(characters >> 32));
        if ((first | second) & stop)
            break;
        const std::uint64_t six = first | std::uint64_t(second) << 24;
        std::memcpy(bytes, &six, 6);
    }
    // The rest: fewer than eight characters, or eight of which one ends the decoding.
    std::uint32_t group = 0;
    std::size_t gathered = 0;
    for (; count > 0; --count, ++text) {
        const std::uint32_t value = places[gathered][std::uint8_t(*text)];
        if (value & stop)
            break;
        group |= value;
        if (++gathered == 4) {
            std::memcpy(bytes, &group, 3);
            bytes += 3;
            group = 0;
            gathered = 0;
        }
    }
    if (gathered > 1) {
        std::memcpy(bytes, &group, gathered - 1);
        bytes += gathered - 1;
    }
    return std::size_t(bytes - begin);
}

} // namespace Scalar
} // namespace Kernels
