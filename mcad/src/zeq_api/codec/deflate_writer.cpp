// Blocks of deflate data. Base64 text has a code of its own, the same for all such text: a unit of it is a letter of 8
// bits, the length 3 of one bit and the distance 4 of one bit, so that 16 of them are 20 bytes and can be made at once.
#include "zeq_api/codec/deflate_writer.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

#include "zeq_api/codec/vector_code.h"

namespace zeq::detail {

namespace {

using Byte = unsigned char;

constexpr unsigned storedBlock = 0, fixedBlock = 1, describedBlock = 2;
// Base64 is written by so many units, which are looked at for copies from `period` units before: 60 bytes, which is a
// multiple of the size of points, of directions and of triangles.
constexpr std::size_t stretch = 64, period = 80, shortestRun = 8, mostAtOnce = 4096;

constexpr Bits startOf(unsigned kind, bool isLast = false) { return {kind << 1 | (isLast ? 1U : 0U), 3}; }

const DeflateCode& base64Code() {
    static const DeflateCode code = [] {
        LiteralLengths literals{};
        std::fill_n(literals.begin(), 286, std::uint8_t{10});
        std::fill_n(literals.begin(), 32, std::uint8_t{9});
        for (const unsigned length : {32U, 36U, 256U})
            literals[static_cast<std::size_t>(codedLength(length).symbol)] = 9;
        for (const char letter :
             std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"))
            literals[static_cast<Byte>(letter)] = 8;
        literals[static_cast<std::size_t>(codedLength(3).symbol)] = 1;
        DistanceLengths distances{};
        distances.fill(7);
        std::fill_n(distances.begin(), 4, std::uint8_t{6});
        distances[static_cast<std::size_t>(codedDistance(4).symbol)] = 1;
        distances[4] = 6;
        distances[static_cast<std::size_t>(codedDistance(period * 4).symbol)] = 2;
        return DeflateCode(literals, distances);
    }();
    return code;
}

std::uint32_t load(const char* from) {
    std::uint32_t value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

constexpr unsigned describedLiterals = 286;
constexpr std::uint64_t descriptionSize = 14 + 19 * 3 + 4 * (describedLiterals + distanceCount);

} // namespace

struct DeflateWriter::Frequencies {
    std::array<std::uint32_t, literalCount> literals{};
    std::array<std::uint32_t, distanceCount> distances{};
};

/// What the symbols take with a code.
std::uint64_t DeflateWriter::sizeOf(const Frequencies& frequencies, const DeflateCode& code) {
    const auto sum = [](const auto& counts, const auto& lengths) {
        return std::inner_product(counts.begin(), counts.end(), lengths.begin(), std::uint64_t{0});
    };
    return sum(frequencies.literals, code.literalLengths()) +
           sum(frequencies.distances, code.distanceLengths());
}

void BitWriter::bytes(const void* from, std::size_t size) {
    std::memcpy(m_cursor.m_next, from, size);
    m_cursor.m_next += size;
}

void BitWriter::replace(std::uint64_t at, std::uint64_t value) {
    if (at >= m_stored)
        std::memcpy(m_bytes.get() + (at - m_stored), &value, sizeof value);
    else
        m_store(reinterpret_cast<const char*>(&value), sizeof value, at);
}

void BitWriter::flush() {
    const auto size = static_cast<std::size_t>(m_cursor.m_next - m_bytes.get());
    m_store(m_bytes.get(), size, m_stored);
    m_stored += size;
    m_cursor.m_next = m_bytes.get();
}

void DeflateWriter::longCopy(std::size_t distance, std::size_t length) {
    while (length > 0) {
        if (m_count + 2 > mostSymbols) endBlock();
        if (m_distance != distance) add(distanceBit | static_cast<std::uint32_t>(distance - 1));
        m_distance = distance;
        // What is left is never too short for a copy.
        const std::size_t piece = length <= longest ? length : std::min<std::size_t>(longest, length - 3);
        add(DeflateCode::length(static_cast<unsigned>(piece)));
        length -= piece;
    }
}

void DeflateWriter::writeSymbols(const DeflateCode& code) {
    // What follows a symbol: nothing, or the distance of a copy. Looked up, because no branch could be foreseen.
    std::array<Bits, 2> behind;
    const auto bitsOf = [&](std::uint32_t symbol) {
        return code[symbol] + behind[symbol / DeflateCode::firstLength];
    };
    const std::uint16_t* next = m_symbols.get();
    for (std::size_t left = m_count; left != 0;) {
        BitCursor out = m_out->cursor();
        constexpr std::size_t most = 2048; // of at most eight bytes each
        const std::uint16_t* const end = next + std::min(left, most);
        left -= static_cast<std::size_t>(end - next);
        while (next != end) {
            std::uint64_t four = ~std::uint64_t{0};
            if (end - next >= 4) std::memcpy(&four, next, sizeof four);
            if ((four & 0xFF00FF00FF00FF00) == 0) { // all literals, of at most twelve bits each
                out.put((code[next[0]] + code[next[1]]) + (code[next[2]] + code[next[3]]));
                next += 4;
                continue;
            }
            const std::uint32_t symbol = *next++;
            if (symbol & distanceBit) {
                behind[1] = code.distance((symbol & ~distanceBit) + 1);
                continue;
            }
            Bits bits = bitsOf(symbol);
            // Others two at once, mostly: each waits for what was put before.
            if (next != end && !(*next & distanceBit)) {
                const Bits second = bitsOf(*next++);
                if (bits.count + second.count > BitCursor::most)
                    out.put(std::exchange(bits, second));
                else
                    bits = bits + second;
            }
            out.put(bits);
        }
        m_out->cursor() = out;
    }
    m_count = 0;
    m_distance = 0;
}

void DeflateWriter::describe(const DeflateCode& code) {
    m_out->cursor().put(startOf(describedBlock));
    m_out->put({describedLiterals - 257, 5});
    m_out->put({distanceCount - 1, 5});
    m_out->put({15, 4});
    // The code for the lengths: four bits for each, none for repetitions.
    for (int i = 0; i < 19; ++i) m_out->put({i < 3 ? 0U : 4U, 3});
    const auto put = [this](unsigned length) {
        m_out->put({(length & 1) << 3 | (length & 2) << 1 | (length & 4) >> 1 | length >> 3, 4});
    };
    for (std::size_t i = 0; i < describedLiterals; ++i) put(code.literalLengths()[i]);
    for (const std::uint8_t length : code.distanceLengths()) put(length);
}

void DeflateWriter::endBlock() {
    if (m_count == 0) return;
    if (m_isInBase64 && m_count < fewSymbols) return writeSymbols(base64Code());
    endBase64();
    const DeflateCode& fixed = DeflateCode::fixed();
    constexpr std::size_t tooFew = 60; // to save as much as the description of a code takes
    if (m_count >= tooFew) {
        const Frequencies frequencies = countSymbols();
        LiteralLengths literals;
        DistanceLengths distances;
        findLengths(frequencies.literals.data(), literalCount, 12, literals.data());
        findLengths(frequencies.distances.data(), distanceCount, 10, distances.data());
        const DeflateCode code(literals, distances);
        if (sizeOf(frequencies, code) + descriptionSize < sizeOf(frequencies, fixed)) {
            describe(code);
            writeSymbols(code);
            return m_out->put(code.end());
        }
    }
    m_out->cursor().put(startOf(fixedBlock));
    writeSymbols(fixed);
    m_out->put(fixed.end());
}

DeflateWriter::Frequencies DeflateWriter::countSymbols() const {
    std::array<std::uint32_t, DeflateCode::count> counts{};
    Frequencies all;
    std::size_t distance = 0;
    std::uint32_t copies = 0; // with that distance
    for (std::size_t i = 0; i < m_count; ++i) {
        const std::uint32_t symbol = m_symbols[i];
        if (symbol & distanceBit) {
            all.distances[distance] += std::exchange(copies, 0);
            distance = static_cast<std::size_t>(codedDistance((symbol & ~distanceBit) + 1).symbol);
        } else {
            ++counts[symbol];
            copies += symbol >= DeflateCode::firstLength;
        }
    }
    all.distances[distance] += copies;
    for (unsigned size = 3; size <= longest; ++size)
        all.literals[static_cast<std::size_t>(codedLength(size).symbol)] += counts[DeflateCode::length(size)];
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::uint32_t units = counts[DeflateCode::unit(byte)];
        all.literals[byte] += counts[DeflateCode::literal(byte)] + units;
        all.literals[static_cast<std::size_t>(codedLength(3).symbol)] += units;
        all.distances[static_cast<std::size_t>(codedDistance(4).symbol)] += units;
    }
    // A code needs two symbols.
    ++all.literals[endOfBlock];
    ++all.literals[0];
    ++all.distances[0];
    ++all.distances[3];
    return all;
}

void DeflateWriter::endBase64() {
    if (!m_isInBase64) return;
    m_out->put(base64Code().end());
    m_isInBase64 = false;
}

void DeflateWriter::base64(const char* units, std::size_t count) {
    if (m_count >= fewSymbols) endBlock();
    if (!m_isInBase64) {
        describe(base64Code());
        m_isInBase64 = true;
    }
    writeSymbols(base64Code());
    for (const char* const begin = units; count > 0;) {
        const std::size_t piece = std::min(mostAtOnce, count);
        const std::size_t done = vectors(units, piece);
        plainUnits(begin, units + done * 4, std::min(piece - done, stretch));
        const std::size_t all = std::min(piece, done + stretch);
        units += all * 4;
        count -= all;
    }
}

/// The text begins at `begin`.
void DeflateWriter::plainUnits(const char* begin, const char* units, std::size_t count) {
    const DeflateCode& code = base64Code();
    BitCursor& out = m_out->cursor();
    while (count > 0) {
        std::size_t same = 0;
        if (units - begin >= static_cast<std::ptrdiff_t>(period * 4))
            while (same < count && load(units + same * 4) == load(units + same * 4 - period * 4)) ++same;
        std::size_t taken = 1;
        if (const std::uint32_t unit = load(units); same >= shortestRun) {
            out.put(code[DeflateCode::length(static_cast<unsigned>(same) * 4)] + code.distance(period * 4));
            taken = same;
        } else if (unit < 256 && load(units - 4) >> 8 == 0) {
            out.put(code[DeflateCode::unit(unit)]);
        } else {
            for (int i = 0; i < 4; ++i) out.put(code[DeflateCode::literal(static_cast<Byte>(units[i]))]);
        }
        units += taken * 4;
        count -= taken;
    }
}

std::uint64_t DeflateWriter::replaceable(std::uint64_t value) {
    endBlock();
    endBase64();
    m_out->cursor().put(startOf(storedBlock));
    m_out->align();
    constexpr std::uint16_t size = sizeof value;
    constexpr std::uint16_t head[2] = {size, static_cast<std::uint16_t>(~size)};
    m_out->bytes(head, sizeof head);
    const std::uint64_t at = m_out->position();
    m_out->bytes(&value, sizeof value);
    return at;
}

void DeflateWriter::finish() {
    endBlock();
    endBase64();
    m_out->cursor().put(startOf(fixedBlock, true));
    m_out->put(DeflateCode::fixed().end());
    m_out->align();
}

#if ZEQ_VECTOR_CODE

namespace {

constexpr std::size_t lanes = 16; // letters in a register

/// Eight codes with the bits of the copy, ten bits each, in the first ten bytes.
ZEQ_VECTOR_INLINE __m128i packEight(__m128i codes) {
    const __m128i low = _mm_set1_epi64x(0xFFFFF), high = _mm_set1_epi64x(0xFFFFF00000000);
    const __m128i twos = _mm_madd_epi16(codes, _mm_set1_epi32(1 | 1024 << 16));
    const __m128i fours =
        _mm_or_si128(_mm_and_si128(twos, low), _mm_srli_epi64(_mm_and_si128(twos, high), 12));
    return _mm_shuffle_epi8(fours, _mm_setr_epi8(0, 1, 2, 3, 4, 8, 9, 10, 11, 12, -1, -1, -1, -1, -1, -1));
}

/// Sixteen of them, in 160 bits.
struct Packed {
    std::uint64_t words[3];
};
ZEQ_VECTOR_INLINE Packed pack(__m128i codes) {
    const __m128i zero = _mm_setzero_si128();
    const __m128i first = packEight(_mm_unpacklo_epi8(codes, zero)),
                  second = packEight(_mm_unpackhi_epi8(codes, zero));
    const __m128i head = _mm_or_si128(first, _mm_slli_si128(second, 10));
    return {{static_cast<std::uint64_t>(_mm_cvtsi128_si64(head)),
             static_cast<std::uint64_t>(_mm_extract_epi64(head, 1)),
             static_cast<std::uint32_t>(_mm_cvtsi128_si32(_mm_srli_si128(second, 6)))}};
}

/// The codes of letters: 128 and the letter's rank in ASCII, first bit lowest.
ZEQ_VECTOR_INLINE __m256i codesOf(__m256i text) {
    return mirrored(addByRow(text, 129 - '/', 130 - '0', 140 - 'A', 166 - 'a'));
}

/// Writes up to sixteen letters at once.
class LetterCursor : public BitCursor {
public:
    explicit LetterCursor(const BitCursor& at) : BitCursor(at) {}

    using BitCursor::put;
    ZEQ_VECTOR_INLINE void put(const char* codes) {
        m_open = write(codes) >> 32;
        m_next += 20;
    }
    ZEQ_VECTOR_INLINE void put(const char* codes, std::size_t letters) {
        write(codes);
        m_count += static_cast<unsigned>(letters) * 10;
        m_next += m_count / 8;
        m_count %= 8;
        m_open = static_cast<Byte>(*m_next) & ((1U << m_count) - 1);
    }

private:
    ZEQ_VECTOR_INLINE std::uint64_t write(const char* codes) {
        const Packed packed = pack(_mm_loadu_si128(reinterpret_cast<const __m128i*>(codes)));
        const std::uint64_t words[3] = {m_open | packed.words[0] << m_count,
                                        shifted(packed.words[0], packed.words[1]),
                                        shifted(packed.words[1], packed.words[2])};
        std::memcpy(m_next, words, sizeof words);
        return words[2];
    }
    std::uint64_t shifted(std::uint64_t low, std::uint64_t high) const {
        return high << m_count | low >> 1 >> (63 - m_count);
    }
};

/// Where runs of at least eight ones begin, and all but the last seven places of each.
constexpr std::uint64_t longRuns(std::uint64_t bits) {
    static_assert(shortestRun == 8);
    bits &= bits >> 1;
    bits &= bits >> 2;
    return bits & bits >> 4;
}

} // namespace

ZEQ_TARGET_VECTORS std::size_t DeflateWriter::vectors(const char* units, std::size_t count) {
    if (!hasVectors() || load(units - 4) >> 8 != 0) return 0;
    const DeflateCode& code = base64Code();
    const Bits distance = code.distance(period * 4);
    LetterCursor out(m_out->cursor());
    char codes[stretch + lanes];
    char letters[period + mostAtOnce] = {}; // none before the first
    std::size_t done = 0;
    for (; count - done >= stretch; done += stretch) {
        std::uint64_t same = 0;
        bool areAll = true;
        for (std::size_t i = 0; i < stretch; i += 2 * lanes) {
            const __m256i text = narrowed(units + (done + i) * 4);
            areAll = areAll && areLetters(text);
            char* const place = letters + period + done + i;
            const auto isSame = static_cast<unsigned>(
                _mm256_movemask_epi8(_mm256_cmpeq_epi8(text, loadVector(place - period))));
            same |= std::uint64_t{isSame} << i;
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(place), text);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(codes + i), codesOf(text));
        }
        if (!areAll) break;
        std::size_t from = 0;
        for (std::uint64_t runs = longRuns(same); runs != 0;) {
            const auto run = static_cast<std::size_t>(std::countr_zero(runs));
            const auto size = static_cast<std::size_t>(std::countr_one(same >> run));
            for (; run - from > lanes; from += lanes) out.put(codes + from);
            out.put(codes + from, run - from);
            out.put(code[DeflateCode::length(static_cast<unsigned>(size) * 4)] + distance);
            from = run + size;
            runs = from < stretch ? runs >> from << from : 0;
        }
        for (; stretch - from >= lanes; from += lanes) out.put(codes + from);
        if (from != stretch) out.put(codes + from, stretch - from);
    }
    m_out->cursor() = out;
    return done;
}

#else

std::size_t DeflateWriter::vectors(const char*, std::size_t) { return 0; }

#endif

} // namespace zeq::detail
