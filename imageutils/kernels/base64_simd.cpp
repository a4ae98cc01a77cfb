// SPDX-License-Identifier: Apache-2.0
//
// Base64 with SIMD: 12 bytes become 16 characters, a 128-bit block of a vector. Byte shuffles move
// the bytes into place, and look up the offset between a 6-bit value and its character.
#include <imageutils/kernels/base64.h>
#include <imageutils/kernels/simddispatch.h>

#include <array>

#define HWY_TARGET_INCLUDE "imageutils/kernels/base64_simd.cpp"
#include <hwy/foreach_target.h> // IWYU pragma: keep
#include <hwy/highway.h>

#ifndef IMAGEUTILS_BASE64_TABLES
#define IMAGEUTILS_BASE64_TABLES
namespace Kernels {
namespace {

using Table = std::array<std::uint8_t, 16>;

/// For each byte of a 32-bit group the index of its input byte. Bytes are repeated, so that each
/// 6-bit value lies within a 16-bit half of the group.
constexpr Table spread = {1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10};
/// For each decoded byte its index in the groups. The last four entries are not used.
constexpr Table packed = {2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, 0, 0, 0, 0};

/// The offset from a value to its character. The index is 13 for values below 26, 0 for values
/// below 52, and value - 51 for the others.
constexpr Table toCharacter = [] {
    Table table{};
    table[0] = std::uint8_t('a' - 26);
    for (std::size_t value = 52; value < 64; ++value)
        table[value - 51] = std::uint8_t(std::size_t(standardAlphabet[value]) - value);
    table[13] = 'A';
    return table;
}();

/// The offset from a character to its value, by the upper four bits of the character. '/' shares
/// them with '+' and is looked up one place lower.
constexpr Table toValue = [] {
    Table table{};
    for (std::size_t value = 0; value < 63; ++value) {
        const auto character = std::uint8_t(standardAlphabet[value]);
        table[character >> 4] = std::uint8_t(value - character);
    }
    table[('/' >> 4) - 1] = std::uint8_t(63 - '/');
    return table;
}();

/// Assigns upper four bits to a class, one bit each; values of one class accept the same lower four
/// bits. The highest class bit is for values that occur in no character.
constexpr std::uint8_t kindOf(int upper)
{
    constexpr std::array<std::uint8_t, 8> kinds = {16, 16, 1, 2, 4, 8, 4, 8};
    return upper < 8 ? kinds[std::size_t(upper)] : 16;
}

constexpr Table kinds = [] {
    Table table{};
    for (int upper = 0; upper < 16; ++upper)
        table[std::size_t(upper)] = kindOf(upper);
    return table;
}();

/// For each lower four bits the classes with which they do not form a character.
constexpr Table refused = [] {
    Table table{};
    for (int character = 0; character < 256; ++character) {
        if (standardAlphabet.find(char(character)) == std::string_view::npos)
            table[std::size_t(character & 15)] |= kindOf(character >> 4);
    }
    return table;
}();

} // namespace
} // namespace Kernels
#endif

#if HWY_TARGET != HWY_SCALAR
HWY_BEFORE_NAMESPACE();
namespace Kernels::HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

constexpr std::size_t blockBytes = 12, blockCharacters = 16;
using Bytes = hn::CappedTag<std::uint8_t, 2 * blockCharacters>;
using Words = hn::Repartition<std::uint16_t, Bytes>;
using Groups = hn::Repartition<std::uint32_t, Bytes>;
constexpr std::size_t blocks = hn::MaxLanes(Bytes()) / blockCharacters;

/// Loads blocks that begin 12 bytes apart. The last four bytes of each belong to the next block.
template<typename Tag>
HWY_INLINE hn::Vec<Tag> loadBlocks(Tag tag, const std::uint8_t* bytes)
{
    if constexpr (hn::MaxLanes(tag) == blockCharacters) {
        return hn::LoadU(tag, bytes);
    } else {
        const hn::Half<Tag> half;
        return hn::Combine(tag, loadBlocks(half, bytes + blockBytes), loadBlocks(half, bytes));
    }
}

/// Stores blocks 12 bytes apart; the last four bytes of each are overwritten by the next.
template<typename Tag>
HWY_INLINE void storeBlocks(Tag tag, hn::Vec<Tag> vector, std::uint8_t* bytes)
{
    if constexpr (hn::MaxLanes(tag) == blockCharacters) {
        hn::StoreU(vector, tag, bytes);
    } else {
        const hn::Half<Tag> half;
        storeBlocks(half, hn::LowerHalf(half, vector), bytes);
        storeBlocks(half, hn::UpperHalf(half, vector), bytes + blockBytes);
    }
}

std::size_t encodeBase64(const std::uint8_t* bytes, std::size_t count, const char* alphabet,
                         char* text)
{
    constexpr Bytes tag;
    constexpr Words words;
    constexpr Groups groups;
    constexpr std::size_t step = blocks * blockBytes;
    const char* const begin = text;
    const auto order = hn::LoadDup128(tag, spread.data()),
               added = hn::LoadDup128(tag, toCharacter.data());
    for (; count >= step + 4; count -= step, bytes += step, text += blocks * blockCharacters) {
        const auto spreadBytes =
            hn::BitCast(groups, hn::TableLookupBytes(loadBlocks(tag, bytes), order));
        // Two of the four values are shifted right, by keeping the upper half of a product, and two
        // are shifted left.
        const auto down = hn::BitCast(words, hn::And(spreadBytes, hn::Set(groups, 0x0FC0FC00)));
        const auto up = hn::BitCast(words, hn::And(spreadBytes, hn::Set(groups, 0x003F03F0)));
        const auto factorsDown = hn::BitCast(words, hn::Set(groups, 0x04000040)),
                   factorsUp = hn::BitCast(words, hn::Set(groups, 0x01000010));
        const auto values =
            hn::BitCast(tag, hn::Or(hn::MulHigh(down, factorsDown), hn::Mul(up, factorsUp)));
        const auto upperCase =
            hn::IfThenElseZero(hn::Lt(values, hn::Set(tag, 26)), hn::Set(tag, 13));
        const auto index = hn::Or(hn::SaturatedSub(values, hn::Set(tag, 51)), upperCase);
        hn::StoreU(hn::Add(values, hn::TableLookupBytes(added, index)), tag,
                   reinterpret_cast<std::uint8_t*>(text));
    }
    return std::size_t(text - begin) + Scalar::encodeBase64(bytes, count, alphabet, text);
}

std::size_t decodeBase64(const char* text, std::size_t count, std::uint8_t* bytes)
{
    constexpr Bytes tag;
    constexpr Words words;
    constexpr Groups groups;
    constexpr std::size_t step = blocks * blockCharacters;
    const std::uint8_t* const begin = bytes;
    const auto added = hn::LoadDup128(tag, toValue.data()),
               order = hn::LoadDup128(tag, packed.data()),
               upperKinds = hn::LoadDup128(tag, kinds.data()),
               lowerRefused = hn::LoadDup128(tag, refused.data());
    const auto fourBits = hn::Set(tag, 15);
    // Eight more characters, because the last block stores four bytes beyond its 12.
    for (; count >= step + 8; count -= step, text += step, bytes += blocks * blockBytes) {
        const auto characters = hn::LoadU(tag, reinterpret_cast<const std::uint8_t*>(text));
        const auto upper = hn::ShiftRight<4>(characters);
        const auto wrong =
            hn::And(hn::TableLookupBytes(upperKinds, upper),
                    hn::TableLookupBytes(lowerRefused, hn::And(characters, fourBits)));
        if (!hn::AllTrue(tag, hn::Eq(wrong, hn::Zero(tag))))
            break; // the scalar loop finds the character that ends the decoding
        const auto isSlash = hn::VecFromMask(tag, hn::Eq(characters, hn::Set(tag, '/'))); // or -1
        const auto values = hn::BitCast(
            words, hn::Add(characters, hn::TableLookupBytes(added, hn::Add(upper, isSlash))));
        const auto pairs =
            hn::BitCast(groups, hn::Or(hn::And(hn::ShiftLeft<6>(values), hn::Set(words, 0x0FC0)),
                                       hn::ShiftRight<8>(values)));
        const auto group = hn::Or(hn::And(hn::ShiftLeft<12>(pairs), hn::Set(groups, 0xFFF000)),
                                  hn::ShiftRight<16>(pairs));
        storeBlocks(tag, hn::TableLookupBytes(hn::BitCast(tag, group), order), bytes);
    }
    return std::size_t(bytes - begin) + Scalar::decodeBase64(text, count, bytes);
}

} // namespace
} // namespace Kernels::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();
#endif

#if HWY_ONCE
namespace Kernels {

std::size_t encodeBase64(const std::uint8_t* bytes, std::size_t count, const char* alphabet,
                         char* text)
{
    return IMAGEUTILS_BEST(encodeBase64)(bytes, count, alphabet, text);
}

std::size_t decodeBase64(const char* text, std::size_t count, std::uint8_t* bytes)
{
    return IMAGEUTILS_BEST(decodeBase64)(text, count, bytes);
}

} // namespace Kernels
#endif
