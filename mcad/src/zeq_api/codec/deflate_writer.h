// Writes deflate data (RFC 1951) from literals and copies that somebody else has chosen. Internal.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

#include "zeq_api/codec/deflate_code.h"
#include "zeq_api/json/block_output.h"

namespace zeq::detail {

/// Where bits are written, the first one lowest. Up to eight bytes behind the last whole one are overwritten.
class BitCursor {
public:
    explicit BitCursor(char* next) : m_next(next) {}

    static constexpr unsigned most = 56; ///< bits that can be put at once
    void put(Bits code) {
        m_open |= code.bits << m_count;
        m_count += code.count;
        std::memcpy(m_next, &m_open, sizeof m_open);
        m_next += m_count / 8;
        m_open >>= m_count & ~7U;
        m_count %= 8;
    }
    char* next() const { return m_next; }

protected:
    char* m_next;
    std::uint64_t m_open = 0; ///< the bits that do not fill a byte yet
    unsigned m_count = 0;     ///< how many

    friend class BitWriter;
};

/// Bits on their way to a store.
class BitWriter {
public:
    explicit BitWriter(json::ByteStore store) : m_store(std::move(store)) {}

    /// So many bytes can be written with the cursor, or a copy of it that is put back, after a call of this.
    static constexpr std::size_t room = 1 << 14;
    BitCursor& cursor() {
        if (m_cursor.next() > m_bytes.get() + blockSize) flush();
        return m_cursor;
    }
    void put(Bits code) { m_cursor.put(code); }
    /// Fills the last byte with zeros.
    void align() {
        if (m_cursor.m_count != 0) put({0, 8 - m_cursor.m_count});
    }
    /// Whole bytes, after align().
    void bytes(const void* from, std::size_t size);
    /// Where the next whole byte will lie in the store.
    std::uint64_t position() const {
        return m_stored + static_cast<std::uint64_t>(m_cursor.next() - m_bytes.get());
    }
    /// Replaces eight bytes.
    void replace(std::uint64_t at, std::uint64_t value);
    void flush();

private:
    static constexpr std::size_t blockSize = 1 << 17;

    json::ByteStore m_store;
    std::uint64_t m_stored = 0;
    std::unique_ptr<char[]> m_bytes{new char[blockSize + room + sizeof(std::uint64_t)]};
    BitCursor m_cursor{m_bytes.get()};
};

class DeflateWriter {
public:
    explicit DeflateWriter(BitWriter& out) : m_out(&out) {}

    /// A literal and the three bytes that follow the one four bytes before it.
    void unit(unsigned char byte) { add(DeflateCode::unit(byte)); }
    /// At most so many; so many bytes are read, however few are written.
    static constexpr std::size_t literalsAtOnce = 8;
    void literals(const char* bytes, std::size_t count) {
        if (m_count + literalsAtOnce > mostSymbols) endBlock();
        std::uint16_t* const to = m_symbols.get() + m_count;
        for (std::size_t i = 0; i < literalsAtOnce; ++i)
            to[i] = DeflateCode::literal(static_cast<unsigned char>(bytes[i]));
        m_count += count;
    }
    void copy(std::size_t distance, std::size_t length) {
        if (length > longest || distance != m_distance || m_count == mostSymbols)
            longCopy(distance, length);
        else
            add(DeflateCode::length(static_cast<unsigned>(length)));
    }

    /// 32-bit units that are mostly letters of Base64. Before them lie the four bytes that were written before.
    void base64(const char* units, std::size_t count);

    /// Eight bytes that can be replaced afterwards, because they lie in the data as they are.
    /// @return where
    std::uint64_t replaceable(std::uint64_t value);

    void finish();

private:
    // Marks the distance of the lengths from here on, less one: it seldom changes.
    static constexpr std::uint32_t distanceBit = 1U << 15;
    static constexpr std::size_t mostSymbols = 1 << 15;
    static constexpr unsigned longest = 258;
    // Fewer are not worth a code of their own when one for Base64 is in force.
    static constexpr std::size_t fewSymbols = 400;

    void add(std::uint32_t symbol) {
        if (m_count == mostSymbols) endBlock();
        m_symbols[m_count++] = static_cast<std::uint16_t>(symbol);
    }
    void longCopy(std::size_t distance, std::size_t length);
    struct Frequencies;
    Frequencies countSymbols() const;
    static std::uint64_t sizeOf(const Frequencies& frequencies, const DeflateCode& code);
    void writeSymbols(const DeflateCode& code);
    void describe(const DeflateCode& code);
    void endBlock();
    void endBase64();
    void plainUnits(const char* begin, const char* units, std::size_t count);
    std::size_t vectors(const char* units, std::size_t count);

    BitWriter* m_out;
    bool m_isInBase64 = false; // a block with the code for Base64 is open
    std::size_t m_count = 0;
    std::size_t m_distance = 0; // the last one that was marked since there are symbols
    std::unique_ptr<std::uint16_t[]> m_symbols{new std::uint16_t[mostSymbols]};
};

} // namespace zeq::detail
