// Huffman's construction, its limit, and the canonical codes.
#include "zeq_api/codec/deflate_code.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace zeq::detail {

namespace {

constexpr int longestCode = 15;

/// How many codes of each length an optimal tree over these weights, in rising order, has.
std::array<unsigned, 64> optimalCounts(const std::vector<std::uint64_t>& leaves) {
    const std::size_t n = leaves.size();
    std::vector<std::uint64_t> weights(leaves);
    std::vector<std::size_t> parents(2 * n - 1);
    weights.resize(2 * n - 1);
    std::size_t leaf = 0, inner = n;
    for (std::size_t made = n; made < 2 * n - 1; ++made) {
        weights[made] = 0;
        for (int side = 0; side < 2; ++side) {
            const bool takesLeaf = leaf < n && (inner >= made || weights[leaf] <= weights[inner]);
            const std::size_t child = takesLeaf ? leaf++ : inner++;
            weights[made] += weights[child];
            parents[child] = made;
        }
    }
    std::array<unsigned, 64> counts{};
    std::vector<unsigned> depths(2 * n - 1);
    for (std::size_t node = 2 * n - 2; node-- > 0;) {
        depths[node] = depths[parents[node]] + 1;
        if (node < n) ++counts[depths[node]];
    }
    return counts;
}

/// Canonical codes, with the first bit lowest.
void assignCodes(std::span<const std::uint8_t> lengths, std::span<Bits> codes) {
    std::array<unsigned, longestCode + 2> next{};
    for (const std::uint8_t length : lengths)
        if (length != 0) ++next[length + 1U];
    for (std::size_t length = 1; length < next.size(); ++length)
        next[length] = (next[length] + next[length - 1]) << 1;
    for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol) {
        const unsigned length = lengths[symbol];
        if (length == 0) continue;
        unsigned reversed = 0;
        for (unsigned code = next[length]++, bit = 0; bit < length; ++bit, code >>= 1)
            reversed = reversed << 1 | (code & 1);
        codes[symbol] = {reversed, length};
    }
}

} // namespace

void findLengths(const std::uint32_t* frequencies, int count, int longest, std::uint8_t* lengths) {
    std::vector<std::pair<std::uint32_t, int>> used;
    for (int symbol = 0; symbol < count; ++symbol)
        if (frequencies[symbol] != 0) used.emplace_back(frequencies[symbol], symbol);
    std::sort(used.begin(), used.end());
    std::vector<std::uint64_t> weights;
    weights.reserve(used.size());
    for (const auto& [frequency, symbol] : used) weights.push_back(frequency);
    std::array<unsigned, 64> counts = optimalCounts(weights);

    // What is too long comes up to the limit; for the room that this takes others move down, the longest first.
    const auto limit = static_cast<std::size_t>(longest);
    for (std::size_t length = limit + 1; length < counts.size(); ++length)
        counts[limit] += std::exchange(counts[length], 0);
    std::uint64_t room = 0;
    for (std::size_t length = 1; length <= limit; ++length)
        room += std::uint64_t{counts[length]} << (limit - length);
    for (; room > std::uint64_t{1} << limit; --room) {
        std::size_t length = limit - 1;
        while (counts[length] == 0) --length;
        --counts[length];
        counts[length + 1] += 2;
        --counts[limit];
    }

    std::fill_n(lengths, count, std::uint8_t{0});
    std::size_t next = 0;
    for (std::size_t length = limit; length > 0; --length)
        for (unsigned i = 0; i < counts[length]; ++i)
            lengths[used[next++].second] = static_cast<std::uint8_t>(length);
}

DeflateCode::DeflateCode(const LiteralLengths& literals, const DistanceLengths& distances)
    : m_literalLengths(literals), m_distanceLengths(distances) {
    std::array<Bits, literalCount> codes{};
    assignCodes(literals, codes);
    assignCodes(distances, m_distances);
    m_end = codes[endOfBlock];
    for (unsigned size = 3; size <= 258; ++size) {
        const Coded coded = codedLength(size);
        m_symbols[length(size)] = codes[static_cast<std::size_t>(coded.symbol)] + coded.extra;
    }
    const Bits zeros = m_symbols[length(3)] + distance(4);
    for (unsigned byte = 0; byte < 256; ++byte) {
        m_symbols[literal(byte)] = codes[byte];
        m_symbols[unit(byte)] = codes[byte] + zeros;
    }
}

const DeflateCode& DeflateCode::fixed() {
    static const DeflateCode code = [] {
        LiteralLengths literals{};
        std::fill_n(literals.begin(), 144, std::uint8_t{8});
        std::fill(literals.begin() + 144, literals.begin() + 256, std::uint8_t{9});
        std::fill(literals.begin() + 256, literals.begin() + 280, std::uint8_t{7});
        std::fill(literals.begin() + 280, literals.end(), std::uint8_t{8});
        DistanceLengths distances{};
        distances.fill(5);
        return DeflateCode(literals, distances);
    }();
    return code;
}

} // namespace zeq::detail
