// Decompression of gzip and zlib data, at its fastest where they hold units of 32 bits of which three bytes are zero.
// Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "zeq_api/codec/gzip_stream.h"
#include "zeq_api/codec/inflate_tables.h"
#include "zeq_api/codec/vector_code.h"

namespace zeq::detail {

/// Accepts what zlib accepts of gzip data with a plain header and of zlib data with the usual ones, and ignores what
/// follows them; everything else is not whole.
class Inflater : public GzipDecoder {
public:
    /// @param blockSize how much of the input is asked for at once, more than `inputSlack`
    /// @param withVectors only if hasVectors()
    explicit Inflater(ByteInput input, std::size_t blockSize = 1 << 17, bool withVectors = hasVectors());
    std::size_t read(char* out, std::size_t size) override;
    bool isWhole() const override { return m_state == State::whole; }

    /// So much of the input lies in the block whenever a symbol or the codes of a block are read: more than any of them
    /// take. At its end there are so many zeros.
    static constexpr std::size_t inputSlack = 1024;

private:
    enum class State {
        header,
        block,
        stored,
        symbols,
        trailer,
        whole,
        failed
    };

    void provideInput();
    void updateChecksum();
    State next();
    State header();
    State block();
    State storedBlock();
    State stored();
    State symbols();
    State oneSymbol();
    State trailer();
    State afterBlock() const { return m_isLast ? State::trailer : State::block; }
    bool readCodes();
    void copyPending();

    template <bool withVectors>
    State manySymbols();
    State manySymbolsPlainly();
    State manySymbolsWithVectors();

    void refill();
    void drop(unsigned n);
    unsigned take(unsigned n);
    void returnBytes();

    State m_state = State::header;
    bool m_isZlib = false;
    bool m_isLast = false;
    bool m_inputEnds = false;
    bool m_withVectors;

    // The next `m_bitCount` bits, lowest first; what stands above them are those that come next in the input, or zeros.
    std::uint64_t m_bits = 0;
    unsigned m_bitCount = 0;
    const std::uint8_t* m_in;
    const std::uint8_t* m_inEnd;

    std::uint8_t* m_out = nullptr;
    std::uint8_t* m_outEnd = nullptr;
    const std::uint8_t* m_oldest = nullptr; // that may be copied
    const std::uint8_t* m_unchecked = nullptr;
    std::uint32_t m_checksum = 0;
    std::uint64_t m_size = 0; // of what is in the checksum

    // What is left of a stored block or of a copy.
    std::size_t m_left = 0;
    std::size_t m_distance = 0;

    ByteInput m_input;
    std::size_t m_blockSize;
    std::unique_ptr<std::uint8_t[]> m_block;
    InflateTables m_tables;
};

} // namespace zeq::detail
