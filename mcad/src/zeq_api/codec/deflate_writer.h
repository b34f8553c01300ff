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

/// Bits on their way to a store.
class BitWriter {
public:
    explicit BitWriter(json::ByteStore store) : m_store(std::move(store)) {}

    /// At most 56 bits. Between two calls of makeRoom() there may be `room` bytes of them.
    void put(Bits code) {
        m_bits |= code.bits << m_count;
        m_count += code.count;
        std::memcpy(m_next, &m_bits, sizeof m_bits);
        m_next += m_count >> 3;
        m_bits >>= m_count & ~7U;
        m_count &= 7;
    }
    static constexpr std::size_t room = 1 << 14;
    void makeRoom() {
        if (m_next > m_bytes.get() + blockSize) flush();
    }
    /// Fills the last byte with zeros.
    void align() {
        if (m_count != 0) put({0, 8 - m_count});
    }
    /// Whole bytes, after align().
    void bytes(const void* from, std::size_t size);
    /// Where the next whole byte will lie in the store.
    std::uint64_t position() const { return m_stored + static_cast<std::uint64_t>(m_next - m_bytes.get()); }
    /// Replaces eight bytes.
    void replace(std::uint64_t at, std::uint64_t value);
    void flush();

    /// For a faster writer: the bits that do not fill a byte yet, and the place of that byte.
    std::uint64_t openBits() const { return m_bits; }
    unsigned openCount() const { return m_count; }
    char* next() const { return m_next; }
    void goOn(char* next, std::uint64_t openBits, unsigned openCount) {
        m_next = next;
        m_bits = openBits;
        m_count = openCount;
    }

private:
    static constexpr std::size_t blockSize = 1 << 17;

    json::ByteStore m_store;
    std::uint64_t m_stored = 0;
    std::uint64_t m_bits = 0;
    unsigned m_count = 0;
    std::unique_ptr<char[]> m_bytes{new char[blockSize + room + sizeof m_bits]};
    char* m_next = m_bytes.get();
};

class DeflateWriter {
public:
    explicit DeflateWriter(BitWriter& out) : m_out(&out) {}

    void literal(unsigned char byte) { add(byte); }
    /// A literal and the three bytes that follow the one four bytes before it.
    void unit(unsigned char byte) { add(unitBit | byte); }
    void copy(std::size_t distance, std::size_t length);

    /// 32-bit units that are mostly letters of Base64. The four bytes before them were written, too; of the first
    /// letter's three last bytes and of those four, none is zero by chance: they are what the decoder will see.
    void base64(const char* units, std::size_t count);

    /// Eight bytes that can be replaced afterwards, because they lie in the data as they are.
    /// @return where
    std::uint64_t replaceable(std::uint64_t value);

    void finish();

private:
    static constexpr std::uint32_t unitBit = 1U << 8, copyBit = 1U << 31;
    static constexpr std::size_t mostSymbols = 1 << 15;
    // Fewer are not worth a code of their own when one for Base64 is in force.
    static constexpr std::size_t fewSymbols = 400;

    void add(std::uint32_t symbol) {
        if (m_count == mostSymbols) endBlock();
        m_symbols[m_count++] = symbol;
    }
    void writeSymbols(const DeflateCode& code);
    void describe(const DeflateCode& code);
    void endBlock();
    void endBase64();
    void plainUnits(const char* units, std::size_t count);
    std::size_t vectors(const char* units, std::size_t count);

    BitWriter* m_out;
    bool m_isInBase64 = false; // a block with the code for Base64 is open
    std::size_t m_count = 0;
    std::unique_ptr<std::uint32_t[]> m_symbols{new std::uint32_t[mostSymbols]};
};

} // namespace zeq::detail
