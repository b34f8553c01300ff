// The decoder: what comes one by one, and the loop for symbols where there is room enough.
#include "zeq_api/codec/inflater.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>
#include <utility>

#include <zlib.h>

#include "zeq_api/codec/base64_units.h"
#include "zeq_api/codec/checksum.h"
#include "zeq_api/codec/compressor.h"

namespace zeq::detail {

static_assert(std::endian::native == std::endian::little, "the loads below are those of the formats");

namespace {

namespace ie = inflate_entry;

// What is in the bits may be gone back to.
constexpr std::size_t inputBehind = 8;
// What manySymbols() may write in one round, a literal and the longest copy in whole vectors.
constexpr std::ptrdiff_t outputSlack = 320;
// The checksum is taken while the output is in the cache.
constexpr std::ptrdiff_t checkedAtOnce = 1 << 15;

template <class T>
T load(const std::uint8_t* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}
template <class T>
void store(std::uint8_t* to, T value) {
    std::memcpy(to, &value, sizeof value);
}

/// The number that a value and the extra bits behind the code of an entry stand for.
unsigned number(InflateEntry e, unsigned value, std::uint64_t bits) {
    return value + static_cast<unsigned>((bits & ((std::uint64_t{1} << ie::bits(e)) - 1)) >> ie::codeBits(e));
}

unsigned lengthOf(InflateEntry e, std::uint64_t bits) { return number(e, 3 + (ie::value(e) >> 8), bits); }

template <std::size_t step>
void copyInSteps(std::uint8_t* out, const std::uint8_t* from, const std::uint8_t* end) {
    do {
        std::memcpy(out, from, step);
        out += step;
        from += step;
    } while (out < end);
}

/// Copies from so far back; up to 31 bytes more may be written.
[[gnu::always_inline]] inline std::uint8_t* copyBack(std::uint8_t* out, std::size_t distance,
                                                     std::size_t size) {
    std::uint8_t* const end = out + size;
    const std::uint8_t* const from = out - distance;
    if (distance >= 16) {
        std::memcpy(out, from, 16);
        std::memcpy(out + 16, from + 16, 16);
        if (size > 32) copyInSteps<16>(out + 32, from + 32, end);
    } else if (distance >= 8) {
        copyInSteps<8>(out, from, end);
    } else if (distance == 4) {
        const std::uint64_t unit = load<std::uint32_t>(from);
        for (; out < end; out += 8) store(out, unit << 32 | unit);
    } else if (distance == 1) {
        std::memset(out, *from, size);
    } else {
        for (std::size_t i = 0; i < size; ++i) out[i] = from[i];
    }
    return end;
}

} // namespace

Inflater::Inflater(ByteInput input, std::size_t blockSize, bool withVectors)
    : m_withVectors(withVectors), m_input(std::move(input)), m_blockSize(blockSize),
      m_block(new std::uint8_t[inputBehind + blockSize + inputSlack]) {
    m_in = m_inEnd = m_block.get() + inputBehind;
    std::memset(m_block.get(), 0, inputBehind);
    std::memset(m_block.get() + inputBehind + blockSize, 0, inputSlack);
}

std::size_t Inflater::read(char* out, std::size_t size) {
    auto* const begin = reinterpret_cast<std::uint8_t*>(out);
    m_out = begin;
    m_outEnd = begin + size;
    m_oldest = begin - std::min<std::uint64_t>(m_size, historySize);
    m_unchecked = begin;
    while (m_out != m_outEnd && m_state < State::whole) {
        provideInput();
        m_state = next();
        if (m_in - m_bitCount / 8 > m_inEnd) m_state = State::failed;
    }
    updateChecksum();
    return static_cast<std::size_t>(m_out - begin);
}

void Inflater::provideInput() {
    const auto left = static_cast<std::size_t>(m_inEnd - m_in);
    if (m_inputEnds || left >= inputSlack) return;
    std::uint8_t* const block = m_block.get() + inputBehind;
    std::memmove(block - inputBehind, m_in - inputBehind, inputBehind + left);
    const std::size_t count = m_input(reinterpret_cast<char*>(block + left), m_blockSize - left);
    m_inputEnds = count < m_blockSize - left;
    m_in = block;
    m_inEnd = block + left + count;
    if (m_inputEnds) std::memset(block + left + count, 0, inputSlack);
}

void Inflater::updateChecksum() {
    const auto size = static_cast<std::size_t>(m_out - m_unchecked);
    if (m_isZlib)
        m_checksum = static_cast<std::uint32_t>(adler32_z(m_checksum, m_unchecked, size));
    else
        m_checksum = addToCrc(m_checksum, m_unchecked, size);
    m_size += size;
    m_unchecked = m_out;
}

Inflater::State Inflater::next() {
    switch (m_state) {
    case State::header:
        return header();
    case State::block:
        return block();
    case State::stored:
        return stored();
    case State::symbols:
        return symbols();
    default:
        return trailer();
    }
}

Inflater::State Inflater::header() {
    using namespace std::string_view_literals;
    const std::string_view data(reinterpret_cast<const char*>(m_in),
                                static_cast<std::size_t>(m_inEnd - m_in));
    if (data.starts_with("\x1F\x8B\x08\0"sv)) {
        m_in += 10;
    } else if (data.starts_with('\x78') && Compressor::isCompressed(data.data(), data.size())) {
        m_in += 2;
        m_isZlib = true;
        m_checksum = 1;
    } else {
        return State::failed;
    }
    return State::block;
}

Inflater::State Inflater::block() {
    refill();
    m_isLast = take(1) != 0;
    switch (take(2)) {
    case 0:
        return storedBlock();
    case 1:
        m_tables.buildFixed();
        return State::symbols;
    case 2:
        return readCodes() ? State::symbols : State::failed;
    default:
        return State::failed;
    }
}

Inflater::State Inflater::storedBlock() {
    drop(m_bitCount % 8);
    m_left = take(16);
    if ((take(16) ^ m_left) != 0xFFFF) return State::failed;
    returnBytes();
    return State::stored;
}

Inflater::State Inflater::stored() {
    const std::size_t count =
        std::min({m_left, static_cast<std::size_t>(m_outEnd - m_out),
                  static_cast<std::size_t>(std::max<std::ptrdiff_t>(m_inEnd - m_in, 0))});
    if (count == 0 && m_left != 0) return State::failed; // the input has ended
    std::memcpy(m_out, m_in, count);
    m_out += count;
    m_in += count;
    m_left -= count;
    return m_left == 0 ? afterBlock() : State::stored;
}

bool Inflater::readCodes() {
    constexpr std::array<std::uint8_t, 19> order{16, 17, 18, 0, 8,  7, 9,  6, 10, 5,
                                                 11, 4,  12, 3, 13, 2, 14, 1, 15};
    // Lengths, repetitions of the last one, and of zeros.
    constexpr auto entries = [] {
        std::array<InflateEntry, 19> list{};
        for (unsigned length = 0; length < 16; ++length) list[length] = length << 16 | ie::literal;
        list[16] = 3 << 16 | ie::unit | 2;
        list[17] = 3 << 16 | ie::copy | 3;
        list[18] = 11 << 16 | ie::copy | 7;
        return list;
    }();
    const unsigned literals = 257 + take(5), distances = 1 + take(5), lengths = 4 + take(4);
    if (literals > 286 || distances > 30) return false;
    std::array<std::uint8_t, order.size()> codeLengths{};
    for (unsigned i = 0; i < lengths; ++i) {
        refill();
        codeLengths[order[i]] = static_cast<std::uint8_t>(take(3));
    }
    InflateLengthCode code;
    if (!code.build(codeLengths, entries.data(), InflateLengthCode::Missing::none)) return false;

    std::array<std::uint8_t, 286 + 30> all;
    for (unsigned i = 0; i < literals + distances;) {
        refill();
        const InflateEntry e = code[m_bits];
        const unsigned value = number(e, ie::value(e), m_bits);
        drop(ie::bits(e));
        if (e & ie::literal) {
            all[i++] = static_cast<std::uint8_t>(value);
            continue;
        }
        const bool repeats = e & ie::unit;
        if (e == 0 || value > literals + distances - i || (repeats && i == 0)) return false;
        std::memset(&all[i], repeats ? all[i - 1] : 0, value);
        i += value;
    }
    return all[256] != 0 && m_tables.build({all.data(), literals}, {all.data() + literals, distances});
}

Inflater::State Inflater::symbols() {
    if (m_left != 0) {
        copyPending();
        return State::symbols;
    }
    const bool isRoomy =
        m_outEnd - m_out > outputSlack && m_out - m_oldest >= 4 &&
        (m_inputEnds ? m_in < m_inEnd : m_inEnd - m_in > static_cast<std::ptrdiff_t>(inputSlack));
    if (!isRoomy) return oneSymbol();
    const State state = m_withVectors ? manySymbolsWithVectors() : manySymbolsPlainly();
    if (m_out - m_unchecked >= checkedAtOnce) updateChecksum();
    return state;
}

Inflater::State Inflater::oneSymbol() {
    refill();
    const InflateEntry e = m_tables.literals[m_bits];
    if (e & (ie::literal | ie::unit)) {
        drop(ie::codeBits(e));
        *m_out++ = static_cast<std::uint8_t>(ie::value(e));
        return State::symbols;
    }
    if (!(e & ie::copy)) {
        drop(ie::bits(e));
        return e == 0 ? State::failed : afterBlock();
    }
    if (ie::hasMore(e)) *m_out++ = static_cast<std::uint8_t>(ie::value(e));
    m_left = lengthOf(e, m_bits);
    drop(ie::bits(e));
    const InflateEntry d = m_tables.distances[m_bits];
    m_distance = number(d, ie::value(d), m_bits);
    drop(ie::bits(d));
    if (d == 0 || m_distance > static_cast<std::size_t>(m_out - m_oldest)) return State::failed;
    copyPending();
    return State::symbols;
}

void Inflater::copyPending() {
    for (; m_left != 0 && m_out != m_outEnd; --m_left, ++m_out) *m_out = *(m_out - m_distance);
}

/// As long as there is room and input enough.
template <bool withVectors>
[[gnu::always_inline]] inline Inflater::State Inflater::manySymbols() {
    std::uint64_t bits = m_bits;
    unsigned count = m_bitCount;
    const std::uint8_t* in = m_in;
    std::uint8_t* out = m_out;
    const std::uint8_t* const oldest = m_oldest;
    const std::uint8_t* const inEnd = m_inputEnds ? m_inEnd : m_inEnd - inputSlack;
    const std::uint8_t* const outEnd = out + std::min(m_outEnd - out - outputSlack, checkedAtOnce);
    const InflateEntry* const table = m_tables.literals.table.data();
    constexpr auto mask = InflateTables::Literals::mask;
    State state = State::symbols;

    const auto more = [&] {
        bits |= load<std::uint64_t>(in) << count;
        in += (63 - count) / 8;
        count |= 56;
    };
    const auto skip = [&](unsigned n) {
        bits >>= n;
        count -= n;
    };
    more();
    InflateEntry e = table[bits & mask];
    const auto next = [&] { e = table[bits & mask]; };
    const auto putLiterals = [&] {
        store(out, static_cast<std::uint16_t>(ie::value(e)));
        out += 1 + ie::hasMore(e);
        skip(ie::bits(e));
        next();
    };
    // At its begin there are 56 bits that count, as many more as fit, and `e` is what they begin with.
    while (in < inEnd && out < outEnd) {
        if (e & ie::literal) {
            putLiterals();
            if (e & ie::literal) {
                putLiterals();
                if (e & ie::literal) {
                    putLiterals();
                    if (e & ie::literal) putLiterals();
                }
            }
            more();
            if (e & ie::literal) continue;
        }
        if (e & ie::unit) {
            if (load<std::uint32_t>(out - 4) > 0xFF) { // not of zeros
                *out++ = static_cast<std::uint8_t>(ie::value(e));
                skip(ie::codeBits(e));
                more();
                next();
                continue;
            }
#if ZEQ_VECTOR_CODE
            if constexpr (withVectors) {
                if (m_tables.base64.areThere) {
                    const std::uint8_t* const from = in - (count + 7) / 8;
                    const unsigned shift = (0 - count) % 8;
                    const std::size_t units =
                        decodeBase64Units(m_tables.base64, from, shift, inEnd, out, outEnd);
                    if (units != 0) {
                        const std::size_t end = shift + 10 * units;
                        out += 4 * units;
                        in = from + end / 8;
                        bits = load<std::uint64_t>(in) >> end % 8;
                        in += 7;
                        count = 56 - static_cast<unsigned>(end % 8);
                        more();
                        next();
                        continue;
                    }
                }
            }
#endif
            do {
                for (int i = 0; i < 4 && e & ie::unit; ++i) {
                    store(out, ie::value(e));
                    out += 4;
                    skip(ie::bits(e));
                    next();
                }
                more();
            } while (e & ie::unit && in < inEnd && out < outEnd);
            continue;
        }
        if (!(e & ie::copy)) {
            if (e == ie::longCode) e = m_tables.literals.find(bits);
            if (e & (ie::literal | ie::copy)) continue;
            skip(ie::bits(e));
            state = e == 0 ? State::failed : afterBlock();
            break;
        }
        *out = static_cast<std::uint8_t>(ie::value(e));
        out += ie::hasMore(e);
        const std::size_t size = lengthOf(e, bits);
        skip(ie::bits(e));
        const InflateEntry d = m_tables.distances[bits];
        const std::size_t distance = number(d, ie::value(d), bits);
        skip(ie::bits(d));
        if (d == 0 || distance > static_cast<std::size_t>(out - oldest)) {
            state = State::failed;
            break;
        }
        next(); // 64 bits were there, of which a literal, a length and a distance take at most 48
        more();
        out = copyBack(out, distance, size);
    }
    m_bits = bits;
    m_bitCount = count;
    m_in = in;
    m_out = out;
    return state;
}

Inflater::State Inflater::manySymbolsPlainly() { return manySymbols<false>(); }

ZEQ_TARGET_VECTORS Inflater::State Inflater::manySymbolsWithVectors() { return manySymbols<true>(); }

Inflater::State Inflater::trailer() {
    drop(m_bitCount % 8);
    returnBytes();
    updateChecksum();
    if (m_inEnd - m_in < (m_isZlib ? 4 : 8)) return State::failed;
    const auto checksum = load<std::uint32_t>(m_in);
    const bool isRight = m_isZlib ? __builtin_bswap32(checksum) == m_checksum
                                  : checksum == m_checksum &&
                                        load<std::uint32_t>(m_in + 4) == static_cast<std::uint32_t>(m_size);
    return isRight ? State::whole : State::failed;
}

/// Makes 56 bits or more of what the block holds, or of the zeros behind it.
void Inflater::refill() {
    m_bits |= load<std::uint64_t>(m_in) << m_bitCount;
    m_in += (63 - m_bitCount) / 8;
    m_bitCount |= 56;
}

void Inflater::drop(unsigned n) {
    m_bits >>= n;
    m_bitCount -= n;
}

unsigned Inflater::take(unsigned n) {
    const auto value = static_cast<unsigned>(m_bits & ((1U << n) - 1));
    drop(n);
    return value;
}

/// Goes back to the bytes of which no bit was used.
void Inflater::returnBytes() {
    m_in -= m_bitCount / 8;
    m_bits = 0;
    m_bitCount = 0;
}

} // namespace zeq::detail
