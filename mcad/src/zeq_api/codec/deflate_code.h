// The prefix codes of deflate blocks (RFC 1951), for writing. Internal.
#pragma once

#include <array>
#include <bit>
#include <cstdint>

namespace zeq::detail {

inline constexpr int literalCount =
    288; ///< literals, the end of a block, lengths, and two that are never used
inline constexpr int distanceCount = 30;
inline constexpr int endOfBlock = 256;

/// Bits, the first one lowest, and how many.
struct Bits {
    std::uint64_t bits = 0;
    unsigned count = 0;
    friend constexpr Bits operator+(Bits a, Bits b) {
        return {a.bits | b.bits << a.count, a.count + b.count};
    }
};

/// A symbol with its extra bits, for lengths from 3 to 258 and for distances from 1 to 32768 (RFC 1951, 3.2.5).
struct Coded {
    int symbol;
    Bits extra;
};
constexpr Coded codedLength(unsigned length) {
    if (length == 258) return {285, {}};
    const unsigned n = length - 3;
    if (n < 8) return {257 + static_cast<int>(n), {}};
    const unsigned count = static_cast<unsigned>(std::bit_width(n)) - 3;
    return {static_cast<int>(257 + 4 * count + (n >> count)), {n & ((1U << count) - 1), count}};
}
constexpr Coded codedDistance(unsigned distance) {
    const unsigned n = distance - 1;
    if (n < 4) return {static_cast<int>(n), {}};
    const unsigned count = static_cast<unsigned>(std::bit_width(n)) - 2;
    return {static_cast<int>(2 * count + (n >> count)), {n & ((1U << count) - 1), count}};
}

using LiteralLengths = std::array<std::uint8_t, literalCount>;
using DistanceLengths = std::array<std::uint8_t, distanceCount>;

/// Lengths of at most `longest` bits that suit the frequencies best, but for what the limit costs. Symbols of no
/// frequency get none; at least two must have one.
void findLengths(const std::uint32_t* frequencies, int count, int longest, std::uint8_t* lengths);

/// A code for literals and lengths and one for distances.
class DeflateCode {
public:
    DeflateCode(const LiteralLengths& literals, const DistanceLengths& distances);

    /// The code that needs no description (RFC 1951, 3.2.6).
    static const DeflateCode& fixed();

    /// What a block is made of, in one row: a literal; a unit, which is a literal and a copy of the three bytes behind
    /// the one that lies four bytes before it; a length, whose distance is to follow.
    static constexpr unsigned literal(unsigned byte) { return byte; }
    static constexpr unsigned unit(unsigned byte) { return 256 + byte; }
    static constexpr unsigned length(unsigned length) { return firstLength + length; }
    static constexpr unsigned firstLength = 512, count = firstLength + 259;
    Bits operator[](unsigned symbol) const { return m_symbols[symbol]; }
    Bits distance(unsigned distance) const {
        const Coded coded = codedDistance(distance);
        return m_distances[static_cast<std::size_t>(coded.symbol)] + coded.extra;
    }
    Bits end() const { return m_end; }

    const LiteralLengths& literalLengths() const { return m_literalLengths; }
    const DistanceLengths& distanceLengths() const { return m_distanceLengths; }

private:
    LiteralLengths m_literalLengths;
    DistanceLengths m_distanceLengths;
    std::array<Bits, count> m_symbols{};
    std::array<Bits, distanceCount> m_distances{};
    Bits m_end;
};

} // namespace zeq::detail
