// Deflate data (RFC 1951) such as no compressor writes: codes of any lengths, copies of any kind, and now and then
// something that is not allowed.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace zeq::test {

class RandomDeflate {
public:
    explicit RandomDeflate(std::uint64_t seed) : m_random(seed) {}

    /// The bytes of one to four blocks.
    std::string blocks() {
        m_breaks = chance(3);
        for (int left = 1 + below(4); left != 0; --left) {
            bits(left == 1, 1);
            const unsigned kind = below(8);
            if (kind == 0) {
                storedBlock();
            } else if (kind == 1) {
                bits(1, 2);
                useFixedCodes();
                symbols();
            } else {
                bits(2, 2);
                dynamicCodes();
                symbols();
            }
        }
        if (m_breaks && chance(20)) bits(3, 3);
        while (m_count != 0) bits(0, 1);
        return std::move(m_bytes);
    }

    unsigned below(unsigned n) { return static_cast<unsigned>(m_random() % n); }
    /// True once in `n` times.
    bool chance(unsigned n) { return below(n) == 0; }

    using Lengths = std::vector<std::uint8_t>;
    /// A last block with codes of these lengths and these symbols; those of distances count from 1000 on.
    std::string block(const Lengths& literals, const Lengths& distances, const std::vector<unsigned>& list) {
        bits(1, 1);
        bits(2, 2);
        writeCodes(literals, distances);
        const Code literalCode(literals), distanceCode(distances);
        for (const unsigned s : list) s < 1000 ? symbol(literalCode, s) : symbol(distanceCode, s - 1000);
        while (m_count != 0) bits(0, 1);
        return std::move(m_bytes);
    }

private:
    void bits(unsigned value, unsigned count) {
        m_rest |= std::uint64_t{value} << m_count;
        for (m_count += count; m_count >= 8; m_count -= 8, m_rest >>= 8) m_bytes += static_cast<char>(m_rest);
    }

    struct Code {
        Lengths lengths;
        std::vector<std::uint16_t> codes;
        std::vector<unsigned> used;
        explicit Code(Lengths l = {}) : lengths(std::move(l)), codes(lengths.size()) {
            unsigned code = 0;
            for (unsigned length = 1; length < 16; ++length, code <<= 1) {
                for (unsigned symbol = 0; symbol < lengths.size(); ++symbol) {
                    if (lengths[symbol] != length) continue;
                    for (unsigned i = 0; i < length; ++i) // the highest bit comes first
                        codes[symbol] =
                            static_cast<std::uint16_t>(codes[symbol] | (code >> i & 1) << (length - 1 - i));
                    ++code;
                    used.push_back(symbol);
                }
            }
        }
    };
    void symbol(const Code& code, unsigned symbol) { bits(code.codes[symbol], code.lengths[symbol]); }
    static bool has(const Code& code, unsigned symbol) {
        return symbol < code.lengths.size() && code.lengths[symbol] != 0;
    }

    /// Lengths of so many codes below one of `depth` bits, of which none is missing.
    Lengths tree(unsigned leaves, unsigned depth, unsigned deepest) {
        Lengths all{static_cast<std::uint8_t>(depth)};
        while (all.size() < leaves) {
            std::uint8_t& leaf = all[below(chance(3) ? 1 : static_cast<unsigned>(all.size()))];
            if (leaf == deepest) {
                if (std::ranges::all_of(all, [&](unsigned n) { return n == deepest; })) break;
                std::ranges::swap(leaf, *std::ranges::min_element(all));
                continue;
            }
            all.push_back(++leaf);
        }
        std::ranges::shuffle(all, m_random);
        return all;
    }
    void give(Lengths& lengths, std::vector<unsigned> symbols, unsigned depth) {
        if (symbols.empty()) return;
        std::ranges::shuffle(symbols, m_random);
        const Lengths some = tree(static_cast<unsigned>(symbols.size()), depth, 15);
        for (std::size_t i = 0; i < some.size(); ++i) lengths[symbols[i]] = some[i];
    }
    std::vector<unsigned> someOf(unsigned begin, unsigned end, unsigned oneIn) {
        std::vector<unsigned> symbols;
        for (unsigned i = begin; i < end; ++i)
            if (chance(oneIn)) symbols.push_back(i);
        return symbols;
    }

    void storedBlock() {
        bits(0, 2);
        while (m_count != 0) bits(below(2), 1);
        const unsigned size = chance(4) ? 0 : below(chance(50) ? 65536 : 300);
        bits(size, 16);
        bits(m_breaks && chance(20) ? size : ~size & 0xFFFF, 16);
        for (unsigned i = 0; i < size; ++i) bits(below(256), 8);
        m_size += size;
    }

    void useFixedCodes() {
        Lengths lengths(288);
        for (unsigned i = 0; i < 288; ++i)
            lengths[i] = static_cast<std::uint8_t>(i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8);
        m_literals = Code(lengths);
        m_distances = Code(Lengths(32, 5));
    }

    void dynamicCodes() {
        const unsigned most = m_breaks && chance(10) ? 288 : 286;
        Lengths literals(most), distances(m_breaks && chance(10) ? 32 : 30);
        if (chance(3)) { // units of Base64 letters take ten bits, or nearly
            std::vector<unsigned> others = someOf(0, 43, 4);
            for (unsigned i = 123; i < most; ++i)
                if (i == 256 || (i != 257 && chance(4))) others.push_back(i);
            give(literals, others, 2);
            for (unsigned i = 43; i < 123; ++i) {
                if (i == '+' || i == '/' || (i >= '0' && i <= '9') || (i >= 'A' && i <= 'Z') || i >= 'a')
                    literals[i] = 8;
            }
            literals[257] = 1;
            distances[3] = 1;
            give(distances, {below(3)}, 1);
            if (chance(4)) std::swap(literals[45], literals['0' + below(75)]);
        } else {
            std::vector<unsigned> symbols = someOf(0, 256, 1 + below(20));
            for (const unsigned symbol : someOf(257, most, 1 + below(6))) symbols.push_back(symbol);
            symbols.push_back(256);
            give(literals, symbols, 0);
            give(distances, someOf(0, static_cast<unsigned>(distances.size()), 1 + below(8)), 0);
            if (literals[256] == 0) literals[256] = 1; // it was the only one
            if (std::ranges::all_of(distances, [](unsigned n) { return n == 0; }) && chance(2))
                distances[below(30)] = 1;
        }
        if (m_breaks && chance(3)) literals[below(most)] = static_cast<std::uint8_t>(below(16));
        if (m_breaks && chance(3)) distances[below(30)] = static_cast<std::uint8_t>(below(16));
        if (m_breaks && chance(10)) literals[256] = 0;
        writeCodes(literals, distances);
        m_literals = Code(literals);
        m_distances = Code(distances);
    }

    void writeCodes(const Lengths& literals, const Lengths& distances) {
        const auto needed = [](const Lengths& lengths, std::size_t least) {
            std::size_t size = lengths.size();
            while (size > least && lengths[size - 1] == 0) --size;
            return size;
        };
        const std::size_t literalCount = needed(literals, 257), distanceCount = needed(distances, 1);
        Lengths all(literals.begin(), literals.begin() + static_cast<std::ptrdiff_t>(literalCount));
        all.insert(all.end(), distances.begin(),
                   distances.begin() + static_cast<std::ptrdiff_t>(distanceCount));

        struct Item {
            unsigned symbol, extra, extraBits;
        };
        std::vector<Item> items;
        for (std::size_t i = 0; i < all.size();) {
            unsigned same = 1;
            while (i + same < all.size() && all[i + same] == all[i]) ++same;
            if (m_breaks && chance(500)) same += 3; // perhaps too many
            if (all[i] == 0 && same >= 11 && !chance(9)) {
                same = std::min(same, 138U);
                items.push_back({18, same - 11, 7});
            } else if (all[i] == 0 && same >= 3) {
                same = std::min(same, 10U);
                items.push_back({17, same - 3, 3});
            } else if (i != 0 && all[i] == all[i - 1] && same >= 3) {
                same = std::min(same, 6U);
                items.push_back({16, same - 3, 2});
            } else {
                same = 1;
                items.push_back({all[i], 0, 0});
            }
            i += same;
        }
        if (m_breaks && chance(100)) items.insert(items.begin(), {16, 0, 2}); // of nothing
        std::vector<unsigned> symbols;
        for (unsigned symbol = 0; symbol < 19; ++symbol)
            if (chance(6) || std::ranges::find(items, symbol, &Item::symbol) != items.end())
                symbols.push_back(symbol);
        if (symbols.size() == 1) symbols.push_back(symbols[0] == 0 ? 1 : 0);
        Lengths lengths(19);
        const Lengths some = tree(static_cast<unsigned>(symbols.size()), 0, 7);
        for (std::size_t i = 0; i < symbols.size(); ++i) lengths[symbols[i]] = some[i];
        if (m_breaks && chance(20)) lengths[below(19)] = static_cast<std::uint8_t>(below(8));

        bits(static_cast<unsigned>(literalCount - 257), 5);
        bits(static_cast<unsigned>(distanceCount - 1), 5);
        bits(19 - 4, 4);
        for (const unsigned i : {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15})
            bits(lengths[i], 3);
        const Code code(lengths);
        for (const Item& item : items) {
            symbol(code, item.symbol);
            bits(item.extra, item.extraBits);
        }
    }

    void symbols() {
        if (m_literals.used.empty()) return;
        const unsigned most = chance(10) ? 3000 : 60;
        for (unsigned left = below(most); left != 0; --left) {
            const bool hasUnits = has(m_literals, 257) && has(m_distances, 3) && m_size >= 4;
            if (hasUnits && chance(4)) {
                unit(below(256));
                if (chance(4)) { // zeros, that the units behind may copy
                    for (int i = 0; i < 4; ++i) literal(0);
                }
                const bool areLetters = chance(2);
                for (unsigned n = below(chance(5) ? 200 : 20); n != 0; --n)
                    unit(areLetters ? 'A' + below(26) : below(256));
            } else if (const unsigned s =
                           m_literals.used[below(static_cast<unsigned>(m_literals.used.size()))];
                       s < 256) {
                literal(s);
            } else if (s != 256) {
                copy(s);
            }
        }
        if (!m_breaks || !chance(50)) symbol(m_literals, 256);
    }
    void literal(unsigned s) {
        if (!has(m_literals, s)) return;
        symbol(m_literals, s);
        ++m_size;
    }
    void unit(unsigned s) {
        if (!has(m_literals, s)) return;
        literal(s);
        const unsigned other = m_distances.used[below(static_cast<unsigned>(m_distances.used.size()))];
        symbol(m_literals, 257);
        symbol(m_distances, other < 3 && other < m_size && chance(40) ? other : 3); // nearly a unit
        m_size += 3;
    }
    void copy(unsigned s) {
        if (m_distances.used.empty()) return;
        const unsigned d = m_distances.used[below(static_cast<unsigned>(m_distances.used.size()))];
        const unsigned lengthBits = s < 265 || s > 284 ? 0 : (s - 261) / 4;
        const unsigned distanceBits = d < 4 ? 0 : d / 2 - 1;
        const unsigned largest =
            d < 4 ? d + 1 : (3 + (d & 1)) << distanceBits; // that the symbol can stand for
        const bool isNear = largest <= m_size;
        if (!isNear && !(m_breaks && chance(50))) return;
        const unsigned length = below(1U << lengthBits);
        symbol(m_literals, s);
        bits(length, lengthBits);
        symbol(m_distances, d);
        bits(chance(3) ? (1U << distanceBits) - 1 : below(1U << distanceBits), distanceBits);
        const unsigned base = s < 265 ? s - 254 : s > 284 ? 258 : ((4 + (s - 261) % 4) << lengthBits) + 3;
        m_size += base + length;
    }

    std::mt19937_64 m_random;
    bool m_breaks = false;
    std::string m_bytes;
    std::uint64_t m_rest = 0; // so many bits
    unsigned m_count = 0;
    std::size_t m_size = 0; // of what the data hold
    Code m_literals, m_distances;
};

} // namespace zeq::test
