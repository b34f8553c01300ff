// The look-up tables for the codes of one block of deflate data (RFC 1951, 3.2.2 to 3.2.6). Internal.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zeq::detail {

/// What the next bits stand for, packed into 32 bits:
///
///   bits  0 to  5  how many bits all of it takes
///   bits  8 to 11  how many of them come before the extra bits; of two literals or a unit, those of the first literal
///   bits 12 to 15  the flags below; none of them: no such code
///   bits 16 to 31  one or two literals, the first one lowest; of a length, the literal before it and what is added to
///                  3 and the extra bits; of a distance, what is added to the extra bits
using InflateEntry = std::uint32_t;

namespace inflate_entry {

constexpr InflateEntry literal = 1 << 12; ///< a literal; with `more`, two of them
constexpr InflateEntry unit = 1 << 13;    ///< a literal and the copy of 3 bytes from 4 bytes back
constexpr InflateEntry copy = 1 << 14;    ///< a length or a distance; with `more`, a literal and a length
constexpr InflateEntry more = 1 << 15;    ///< alone, the end of the block
constexpr InflateEntry longCode = more;   ///< without bits: a code that is longer than the table is wide

constexpr unsigned bits(InflateEntry e) { return e & 63; }
constexpr unsigned codeBits(InflateEntry e) { return e >> 8 & 15; }
constexpr std::uint32_t value(InflateEntry e) { return e >> 16; }
constexpr bool hasMore(InflateEntry e) { return e & more; }
constexpr InflateEntry kind(InflateEntry e) { return e & (literal | unit | copy | more); }

} // namespace inflate_entry

/// One Huffman code: a table for what is at most `width` bits long, and the canonical order for the rest.
template <unsigned tableWidth, std::size_t most>
class InflateCode {
public:
    static constexpr unsigned width = tableWidth;
    static constexpr std::uint64_t mask = (std::uint64_t{1} << width) - 1;

    enum class Missing {
        none,    ///< every code must be there
        allBut1, ///< as zlib has it: or there is none at all, or one of one bit
    };
    /// @param lengths of the symbols' codes, 0 to 15
    /// @param entries for the symbols; the code's length is added
    /// @return false for sets of codes that cannot be, or lack codes that must not be missing
    bool build(std::span<const std::uint8_t> lengths, const InflateEntry* entries, Missing missing);

    InflateEntry operator[](std::uint64_t bits) const {
        const InflateEntry entry = table[bits & mask];
        return entry == inflate_entry::longCode ? find(bits) : entry;
    }
    /// The entry of a code that is longer than the table is wide.
    InflateEntry find(std::uint64_t bits) const;

    /// The symbols with codes of that length, which are consecutive from `firstCode` on.
    std::span<const InflateEntry> symbols(unsigned length) const {
        return {m_sorted.data() + m_rows[length].at, m_rows[length].count};
    }
    unsigned firstCode(unsigned length) const { return m_rows[length].first; }

    std::array<InflateEntry, mask + 1> table;

private:
    struct Row {
        std::uint16_t first;
        std::uint16_t count;
        std::uint16_t at; // in m_sorted
    };
    std::array<Row, 16> m_rows{};            // by length
    std::array<InflateEntry, most> m_sorted; // by code
};

/// The codes of units whose literals are of Base64 text, in a block in which each of them takes ten bits.
struct Base64Codes {
    bool areThere = false;
    std::uint8_t first; ///< the code of '+', in eight bits; those of the others follow in the order of ASCII
    std::uint8_t copy;  ///< the two bits behind each literal, the first one lowest
};

/// All codes of a block.
class InflateTables {
public:
    /// @param literals lengths of the codes of literals and lengths, 257 to 288
    /// @param distances lengths of the codes of distances, 1 to 32
    /// @return false for what zlib refuses
    bool build(std::span<const std::uint8_t> literals, std::span<const std::uint8_t> distances);
    /// Makes them the codes of blocks that bring none.
    void buildFixed();

    using Literals = InflateCode<12, 288>;
    using Distances = InflateCode<10, 32>;
    Literals literals;
    Distances distances;
    Base64Codes base64;

private:
    void combine();
    void findBase64(unsigned copy);

    bool m_areFixed = false;
};

/// The code in which the lengths of the codes of a block are written.
using InflateLengthCode = InflateCode<7, 19>;

extern template class InflateCode<7, 19>;
extern template class InflateCode<10, 32>;
extern template class InflateCode<12, 288>;

} // namespace zeq::detail
