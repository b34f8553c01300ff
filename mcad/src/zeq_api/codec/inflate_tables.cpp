// Tables are made by doubling: what stands for a short code is copied for all that can follow it.
#include "zeq_api/codec/inflate_tables.h"

#include <algorithm>
#include <string_view>

namespace zeq::detail {

namespace {

namespace ie = inflate_entry;

/// Of a symbol with `extra` bits behind its code.
constexpr InflateEntry entryOf(InflateEntry kind, unsigned value, unsigned extra = 0) {
    return value << 16 | kind | extra;
}

constexpr unsigned endSymbol = 256;
constexpr unsigned firstLength = 257; // stands for a copy of 3 bytes
constexpr unsigned unitDistance = 3;  // stands for 4 bytes back

constexpr auto literalEntries = [] {
    std::array<InflateEntry, 288> entries{}; // the last two stand for nothing
    for (unsigned symbol = 0; symbol < endSymbol; ++symbol) entries[symbol] = entryOf(ie::literal, symbol);
    entries[endSymbol] = entryOf(ie::more, 0);
    unsigned length = 3;
    for (unsigned symbol = firstLength; symbol < 285; ++symbol) {
        const unsigned extra = symbol < 265 ? 0 : (symbol - 261) / 4;
        entries[symbol] = entryOf(ie::copy, (length - 3) << 8, extra);
        length += 1 << extra;
    }
    entries[285] = entryOf(ie::copy, (258 - 3) << 8);
    return entries;
}();

constexpr auto distanceEntries = [] {
    std::array<InflateEntry, 32> entries{}; // the last two stand for nothing
    unsigned distance = 1;
    for (unsigned symbol = 0; symbol < 30; ++symbol) {
        const unsigned extra = symbol < 4 ? 0 : symbol / 2 - 1;
        entries[symbol] = entryOf(ie::copy, distance, extra);
        distance += 1 << extra;
    }
    return entries;
}();

/// Codes are read from their highest bit, which comes first in the stream: at the lowest place.
constexpr unsigned reversed(unsigned code, unsigned length) {
    unsigned result = 0;
    for (unsigned i = 0; i < length; ++i) result |= (code >> i & 1) << (length - 1 - i);
    return result;
}

/// The code after a reversed one of that length.
unsigned nextReversed(unsigned code, unsigned length) {
    unsigned bit = 1U << (length - 1);
    for (; code & bit; bit >>= 1) code ^= bit;
    return code | bit;
}

InflateEntry withCode(InflateEntry entry, unsigned length) { return entry + length * 0x101; }

/// Bits as they stand in the stream, the first one lowest.
struct Bits {
    unsigned bits;
    unsigned count;
};

/// The code of a symbol, of no bits if it has none.
template <class Code>
Bits bitsOf(const Code& code, InflateEntry entry) {
    for (unsigned length = 1; length < 16; ++length) {
        const auto symbols = code.symbols(length);
        const auto at = std::ranges::find(symbols, withCode(entry, length));
        if (at != symbols.end())
            return {reversed(code.firstCode(length) + static_cast<unsigned>(at - symbols.begin()), length),
                    length};
    }
    return {0, 0};
}

} // namespace

template <unsigned tableWidth, std::size_t most>
bool InflateCode<tableWidth, most>::build(std::span<const std::uint8_t> lengths, const InflateEntry* entries,
                                          Missing missing) {
    std::array<std::uint16_t, 16> counts{};
    for (const std::uint8_t length : lengths) ++counts[length];
    counts[0] = 0;
    int left = 1; // codes of the length that are not taken
    unsigned code = 0, at = 0, longest = 0;
    std::array<std::uint16_t, 16> next{};
    for (unsigned length = 1; length < 16; ++length) {
        const unsigned count = counts[length];
        if (count != 0) longest = length;
        left = 2 * left - static_cast<int>(count);
        code *= 2;
        if (left < 0) return false;
        m_rows[length] = {static_cast<std::uint16_t>(code), counts[length], static_cast<std::uint16_t>(at)};
        next[length] = static_cast<std::uint16_t>(at);
        code += count;
        at += count;
    }
    if (left > 0 && (missing == Missing::none ? longest != 0 : longest > 1)) return false;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
        if (const unsigned length = lengths[symbol])
            m_sorted[next[length]++] = entries[symbol] == 0 ? 0 : withCode(entries[symbol], length);

    table[0] = 0;
    std::size_t size = 1;
    code = 0; // reversed; as codes get longer by a 0, it stays
    at = 0;
    for (unsigned length = 1; length <= longest; ++length) {
        if (length <= width) {
            std::copy_n(table.begin(), size, table.begin() + size);
            size *= 2;
        }
        for (unsigned n = counts[length]; n != 0; --n) {
            if (length <= width)
                table[code] = m_sorted[at++];
            else
                table[code & mask] = ie::longCode;
            code = nextReversed(code, length);
        }
    }
    for (; size <= mask; size *= 2) std::copy_n(table.begin(), size, table.begin() + size);
    return true;
}

template <unsigned tableWidth, std::size_t most>
InflateEntry InflateCode<tableWidth, most>::find(std::uint64_t bits) const {
    const unsigned code = reversed(bits & 0x7FFF, 15);
    for (unsigned length = width + 1; length < 16; ++length) {
        const Row& row = m_rows[length];
        const unsigned index = (code >> (15 - length)) - row.first;
        if (index < row.count) return m_sorted[row.at + index];
    }
    return 0;
}

bool InflateTables::build(std::span<const std::uint8_t> literalLengths,
                          std::span<const std::uint8_t> distanceLengths) {
    m_areFixed = false;
    base64.areThere = false;
    if (!literals.build(literalLengths, literalEntries.data(), Literals::Missing::allBut1) ||
        !distances.build(distanceLengths, distanceEntries.data(), Distances::Missing::allBut1))
        return false;
    combine();
    return true;
}

/// Puts units, pairs of literals, and literals with a length in the place of the literals that they begin with.
void InflateTables::combine() {
    const Bits length = bitsOf(literals, literalEntries[firstLength]);
    const Bits distance = bitsOf(distances, distanceEntries[unitDistance]);
    Bits copy{0, 0};
    if (length.count && distance.count)
        copy = {length.bits | distance.bits << length.count, length.count + distance.count};
    const auto beginsCopy = [&](std::size_t bits) {
        return copy.count != 0 && (bits & ((1U << copy.count) - 1)) == copy.bits;
    };
    auto& table = literals.table;
    for (std::size_t i = table.size(); i-- != 0;) { // the entry of what follows is not combined yet
        const InflateEntry first = table[i];
        if (ie::kind(first) != ie::literal || ie::bits(first) + copy.count > Literals::width) continue;
        const std::size_t rest = i >> ie::bits(first);
        const InflateEntry second = table[rest];
        if (beginsCopy(rest))
            table[i] = first + copy.count + (ie::unit - ie::literal);
        else if (ie::kind(second) == ie::literal &&
                 ie::bits(first) + ie::bits(second) + copy.count <= Literals::width &&
                 !beginsCopy(rest >> ie::bits(second))) // the second one begins no unit
            table[i] = first + ie::bits(second) + (ie::value(second) << 24 | ie::more);
        else if (ie::kind(second) == ie::copy && ie::bits(first) + ie::codeBits(second) <= Literals::width)
            table[i] = second + ie::bits(first) * 0x101 + (ie::value(first) << 16 | ie::more);
    }
    if (copy.count == 2) findBase64(copy.bits);
}

void InflateTables::findBase64(unsigned copy) {
    constexpr std::string_view letters = "+/0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    const auto symbols = literals.symbols(8);
    const auto at =
        std::search(symbols.begin(), symbols.end(), letters.begin(), letters.end(),
                    [](InflateEntry e, char letter) { return static_cast<char>(ie::value(e)) == letter; });
    if (at == symbols.end()) return;
    base64 = {true,
              static_cast<std::uint8_t>(literals.firstCode(8) + static_cast<unsigned>(at - symbols.begin())),
              static_cast<std::uint8_t>(copy)};
}

void InflateTables::buildFixed() {
    if (m_areFixed) return;
    std::array<std::uint8_t, 288> literalLengths;
    for (unsigned symbol = 0; symbol < literalLengths.size(); ++symbol)
        literalLengths[symbol] = static_cast<std::uint8_t>(symbol < 144   ? 8
                                                           : symbol < 256 ? 9
                                                           : symbol < 280 ? 7
                                                                          : 8);
    std::array<std::uint8_t, 32> distanceLengths;
    distanceLengths.fill(5);
    build(literalLengths, distanceLengths);
    m_areFixed = true;
}

template class InflateCode<7, 19>;
template class InflateCode<10, 32>;
template class InflateCode<12, 288>;

} // namespace zeq::detail
