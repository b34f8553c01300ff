// The window, the choice of copies, and the frame of the member.
#include "zeq_api/codec/gzip_output.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

#include "zeq_api/codec/checksum.h"
#include "zeq_api/codec/gzip_stream.h"
#include "zeq_api/codec/vector_code.h"

namespace zeq::detail {

namespace {

using json::Block;
using json::Mark;

constexpr std::size_t headSize = 9; // of a text and of a container: a tag and a length
constexpr std::size_t unitSize = 4;
// Shorter copies cost more than what they copy.
constexpr std::size_t shortestCopy = 8;
constexpr std::size_t marksAtOnce = 8;
// Less Base64 is text like other text.
constexpr std::size_t shortestBase64 = 4096;

template <class T>
T load(const char* from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

/// Of the name that stands there, as far as it lies in the block.
std::size_t nameSize(const char* name, const char* end) {
    const auto room = static_cast<std::uint64_t>(end - name);
    return room < headSize
               ? room
               : std::min(room, headSize + unitSize * std::min(room, load<std::uint64_t>(name + 1)));
}

std::size_t agreeingPlainly(const char* a, const char* b, std::size_t size) {
    std::size_t done = 0;
    for (; size - done >= 8; done += 8)
        if (const auto difference = load<std::uint64_t>(a + done) ^ load<std::uint64_t>(b + done);
            difference != 0)
            return done + static_cast<std::size_t>(std::countr_zero(difference)) / 8;
    while (done != size && a[done] == b[done]) ++done;
    return done;
}

#if ZEQ_VECTOR_CODE
ZEQ_TARGET_VECTORS std::size_t agreeingVectors(const char* a, const char* b, std::size_t size) {
    constexpr std::size_t step = 32;
    std::size_t done = 0;
    for (; size - done >= step; done += step) {
        const auto same = static_cast<unsigned>(
            _mm256_movemask_epi8(_mm256_cmpeq_epi8(loadVector(a + done), loadVector(b + done))));
        if (same != ~0U) return done + static_cast<std::size_t>(std::countr_one(same));
    }
    return done + agreeingPlainly(a + done, b + done, size - done);
}
#endif

/// A bit for each of sixteen bytes that `word(i)` gives, eight from the i-th on: whether it is zero.
template <class Word>
std::uint32_t zeros(Word&& word) {
    const auto ofEight = [](std::uint64_t bytes) {
        constexpr std::uint64_t low = 0x7F7F7F7F7F7F7F7F;
        const std::uint64_t ones = ~(((bytes & low) + low) | bytes | low) >> 7;
        return static_cast<std::uint32_t>(ones * 0x0102040810204080 >> 56);
    };
    return ofEight(word(0)) | ofEight(word(8)) << 8;
}

/// How many literals to write before something else is tried.
struct Plain {
    std::size_t count;
    bool agrees; ///< whether eight bytes agree behind them
};

constexpr std::ptrdiff_t plainLookahead = 16;
/// At most eight, after a look at that many bytes. `distance` is to what may agree, or 0.
Plain plainBytes(const char* from, std::size_t distance) {
    constexpr std::uint32_t most = 1U << DeflateWriter::literalsAtOnce;
    if (distance != 0) {
        std::uint32_t same = zeros([from, distance](std::size_t i) {
            return load<std::uint64_t>(from + i) ^ load<std::uint64_t>(from + i - distance);
        });
        same &= same >> 1;
        same &= same >> 2;
        same &= same >> 4;
        if ((same & ~1U) != 0) return {static_cast<std::size_t>(std::countr_zero(same & ~1U)), true};
    }
    // Where three zeros follow a byte, text in 32-bit units may begin, which is written by units.
    const std::uint32_t zero = zeros([from](std::size_t i) { return load<std::uint64_t>(from + i); });
    const std::uint32_t units = zero >> 1 & zero >> 2 & zero >> 3 & ~1U;
    return {static_cast<std::size_t>(std::countr_zero(units | most)), false};
}

/// How many of the bytes are the same in both places.
std::size_t agreeingBytes(const char* a, const char* b, std::size_t size) {
#if ZEQ_VECTOR_CODE
    if (hasVectors()) return agreeingVectors(a, b, size);
#endif
    return agreeingPlainly(a, b, size);
}

} // namespace

/// Makes room for a window of that size behind the history, with what the block holds.
void GzipOutput::makeWindow(Block& block, std::size_t size) {
    std::unique_ptr<char[]> window(new char[historySize + size + DeflateWriter::literalsAtOnce]);
    std::unique_ptr<Mark[]> marks(new Mark[size / 4 + marksAtOnce]);
    char* const begin = window.get() + historySize;
    std::memset(begin - sizeof json::unknownLength, -1, sizeof json::unknownLength); // no unit is behind it
    block = {begin, std::copy(block.begin, block.next, begin), begin + size, marks.get(),
             std::copy(block.marks, block.nextMark, marks.get())};
    m_window = std::move(window);
    m_marks = std::move(marks);
    m_begin = begin;
}

void GzipOutput::startCompressing() {
    m_bits.emplace(m_store);
    m_deflate.emplace(*m_bits);
    constexpr char header[] = {'\x1F', '\x8B', 8, 0, 0, 0, 0, 0, 0, '\xFF'};
    m_bits->bytes(header, sizeof header);
}

void GzipOutput::pass(Block& block) {
    if (!m_window) return makeWindow(block, m_sizes.small);
    if (!m_deflate) {
        startCompressing();
        return makeWindow(block, m_sizes.block);
    }
    const char* const taken = take(block);
    const auto waiting = static_cast<std::size_t>(block.next - taken);
    const auto size = static_cast<std::size_t>(taken - block.begin);
    std::memmove(m_window.get(), taken - historySize, historySize + waiting);
    m_start += size;
    Mark* kept = m_marks.get();
    const Mark* mark =
        std::partition_point(m_marks.get(), block.nextMark, [size](Mark one) { return one.at < size; });
    for (; mark != block.nextMark; ++mark)
        *kept++ = {mark->kind, static_cast<std::uint32_t>(mark->at - size)};
    block.next = block.begin + waiting;
    block.nextMark = kept;
}

/// Writes the block, up to what waits, and says where that begins. At the end nothing does: all is closed then.
const char* GzipOutput::take(const Block& block) {
    const char* from = block.begin;
    const char* end = block.next;
    // Behind all others.
    std::fill_n(block.nextMark, marksAtOnce, Mark{Mark::name, static_cast<std::uint32_t>(end - block.begin)});
    const Mark* tokenMarks = block.marks;
    const auto takeUntil = [&](const char* to, const Mark* mark) {
        if (from == to) return;
        if (m_isBase64) {
            m_deflate->base64(from, static_cast<std::size_t>(to - from) / unitSize);
            m_distance = 0;
        } else {
            tokens(from, to, tokenMarks);
        }
        from = to;
        tokenMarks = mark;
    };
    for (const Mark* mark = block.marks; mark != block.nextMark; ++mark) {
        const char* const at = block.begin + mark->at;
        switch (mark->kind) {
        case Mark::name:
            break;
        case Mark::container:
            if (load<std::uint64_t>(at + 1) != json::unknownLength) break;
            // One that begins near the end waits for the next block, where it may be complete.
            if (static_cast<std::size_t>(end - at) <= m_sizes.block / 4) {
                end = at;
                takeUntil(end, mark);
                mark = block.nextMark - 1;
                break;
            }
            takeUntil(at + 1, mark);
            m_gaps.push_back({positionOf(from), m_deflate->replaceable(json::unknownLength)});
            from += sizeof(std::uint64_t);
            break;
        case Mark::base64:
            if (mark[1].kind == Mark::base64End && std::size_t{mark[1].at} - mark->at < shortestBase64) break;
            takeUntil(at, mark);
            m_isBase64 = true;
            break;
        case Mark::base64End:
            if (!m_isBase64) break;
            takeUntil(at, mark);
            m_isBase64 = false;
        }
    }
    takeUntil(end, block.nextMark);
    m_crc = addToCrc(m_crc, block.begin, static_cast<std::size_t>(end - block.begin));
    return end;
}

/// How many bytes from `at` are the same as those at m_distance before.
std::size_t GzipOutput::agreeing(const char* at, const char* to) const {
    const char* const source = at - m_distance;
    // What will stand in a gap is not known.
    if (!m_gaps.empty() && m_gaps.back().at + sizeof(std::uint64_t) > positionOf(source)) {
        const std::uint64_t position = positionOf(source);
        const auto gap = std::partition_point(m_gaps.begin(), m_gaps.end(), [position](const Gap& one) {
            return one.at + sizeof(std::uint64_t) <= position;
        });
        if (gap->at < positionOf(to) - m_distance) to = at + std::max(gap->at, position) - position;
    }
    return agreeingBytes(at, source, static_cast<std::size_t>(to - at));
}

/// How far it is to where this name stood last; 0 if that is too far or nowhere.
std::size_t GzipOutput::distanceToSame(const char* name, std::size_t size) {
    const char* const text = name + headSize;
    std::uint64_t hash = size;
    if (size >= headSize + 2 * unitSize)
        hash += load<std::uint64_t>(text) + 7 * load<std::uint64_t>(name + size - 2 * unitSize);
    std::uint64_t& last = m_names[hash * 0x9E3779B97F4A7C15U >> 54];
    const std::uint64_t distance = positionOf(name) - std::exchange(last, positionOf(name));
    return distance <= historySize ? distance : 0;
}

/// The first mark that is not before `at`.
const Mark* GzipOutput::firstMark(const Mark* mark, const char* at) const {
    const auto place = static_cast<std::int32_t>(at - m_begin);
    for (;;) { // eight at once: how many it takes, no processor can foresee
        std::int32_t before = 0;
        for (std::size_t i = 0; i < marksAtOnce; ++i) before += static_cast<std::int32_t>(mark[i].at) < place;
        mark += before;
        if (before < static_cast<std::int32_t>(marksAtOnce)) return mark;
    }
}

/// Copies as much as agrees with what lies m_distance before, in whole names.
/// @param mark none between it and `from`; then the first that is not before what is returned
/// @return behind what was copied
const char* GzipOutput::copy(const char* from, const char* to, const Mark*& mark) {
    if (m_distance == 0) return from;
    const char* end = from + agreeing(from, to);
    const Mark* next = firstMark(mark, end);
    if (next != mark && next[-1].kind == Mark::name) {
        const char* const name = m_begin + next[-1].at;
        if (name >= from && name + nameSize(name, to) > end) {
            end = name;
            --next;
        }
    }
    const auto size = static_cast<std::size_t>(end - from);
    if (size < shortestCopy) return from;
    m_deflate->copy(m_distance, size);
    mark = next;
    return end;
}

void GzipOutput::tokens(const char* from, const char* to, const Mark* mark) {
    from = copy(from, to, mark);
    while (from < to) { // what is there does not agree
        if (mark->kind == Mark::name && m_begin + mark->at == from) {
            if (const std::size_t distance = distanceToSame(from, nameSize(from, to)); distance != 0) {
                m_distance = distance;
                const char* const end = copy(from, to, mark);
                if (end != std::exchange(from, end)) continue;
            }
            ++mark;
        }
        while (mark->kind != Mark::name || m_begin + mark->at <= from) ++mark; // there is one at the end
        from = copy(plain(from, std::min(m_begin + mark->at, to), to), to, mark);
    }
}

/// Writes at least a byte, up to `stop` or to where the bytes agree again.
const char* GzipOutput::plain(const char* from, const char* stop, const char* to) {
    do {
        Plain next{1, false};
        if (to - from >= plainLookahead) next = plainBytes(from, m_distance);
        const std::uint32_t unit = to - from >= 4 ? load<std::uint32_t>(from) : ~0U;
        if (next.count >= unitSize && unit < 256 && load<std::uint32_t>(from - unitSize) >> 8 == 0) {
            m_deflate->unit(static_cast<unsigned char>(unit));
            next = {unitSize, next.agrees && next.count == unitSize};
        } else {
            next.count = std::min(next.count, static_cast<std::size_t>(stop - from));
            m_deflate->literals(from, next.count);
        }
        from += next.count;
        if (next.agrees) break;
    } while (from < stop);
    return from;
}

void GzipOutput::setLength(std::uint64_t at, std::uint64_t length) {
    const auto gap =
        std::partition_point(m_gaps.begin(), m_gaps.end(), [at](const Gap& one) { return one.at < at; });
    gap->length = length;
    m_bits->replace(gap->inStore, length);
}

void GzipOutput::finish(Block& block) {
    const auto size = static_cast<std::size_t>(block.next - block.begin);
    if (!m_deflate) { // it is small
        const auto encoder =
            newEncoder(-1, [this, at = std::uint64_t{0}](const char* bytes, std::size_t count) mutable {
                m_store(bytes, count, std::exchange(at, at + count));
            });
        encoder->write({block.begin, size});
        return encoder->finish();
    }
    take(block);
    m_deflate->finish();
    const std::uint64_t total = m_start + size;
    for (const Gap& gap : m_gaps)
        m_crc ^= crcOfChange(gap.length ^ json::unknownLength, total - gap.at - sizeof gap.length);
    const std::uint32_t trailer[2] = {m_crc, static_cast<std::uint32_t>(total)};
    m_bits->bytes(trailer, sizeof trailer);
    m_bits->flush();
}

} // namespace zeq::detail
