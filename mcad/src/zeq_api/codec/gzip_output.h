// Compresses the binary form of an object while it is written. Internal.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "zeq_api/codec/deflate_writer.h"
#include "zeq_api/json/block_output.h"

namespace zeq::detail {

/// Others than the usual ones are for tests: `small` is at least 16 KB, and `block` twice that.
struct GzipSizes {
    std::size_t block = 1 << 18; ///< what is compressed at once
    std::size_t small = 1 << 16; ///< up to here the compressor for any data is used, which searches
};

/// Makes one gzip member (RFC 1952). It searches for nothing: a copy comes from where the same member name stood last,
/// and goes on as far as the bytes agree; text in 32-bit units and Base64 have codes of their own. Lengths that are not
/// known when they pass are written so that they can be replaced.
class GzipOutput : public json::BlockOutput {
public:
    explicit GzipOutput(json::ByteStore store, const GzipSizes& sizes = {})
        : m_store(std::move(store)), m_sizes(sizes) {}
    void pass(json::Block& block) override;
    void setLength(std::uint64_t at, std::uint64_t length) override;
    void finish(json::Block& block) override;

private:
    static constexpr std::size_t historySize = 1 << 15;

    /// A length that was not known.
    struct Gap {
        std::uint64_t at;
        std::uint64_t inStore;
        std::uint64_t length = json::unknownLength;
    };

    void makeWindow(json::Block& block, std::size_t size);
    void startCompressing();
    const char* take(const json::Block& block);
    void tokens(const char* from, const char* to, const json::Mark* mark);
    const char* copy(const char* from, const char* to, const json::Mark*& mark);
    const char* plain(const char* from, const char* stop, const char* to);
    const json::Mark* firstMark(const json::Mark* mark, const char* at) const;
    std::size_t distanceToSame(const char* name, std::size_t size);
    std::size_t agreeing(const char* at, const char* to) const;
    std::uint64_t positionOf(const char* at) const {
        return m_start + static_cast<std::uint64_t>(at - m_begin);
    }

    json::ByteStore m_store;
    GzipSizes m_sizes;
    std::optional<BitWriter> m_bits;
    std::optional<DeflateWriter> m_deflate;
    std::unique_ptr<char[]> m_window;
    std::unique_ptr<json::Mark[]> m_marks;
    const char* m_begin = nullptr; // of the block, behind its history
    std::uint64_t m_start = 0;     // of the block, in all that is written
    bool m_isBase64 = false;
    std::size_t m_distance = 0; // to what the bytes agreed with last, or 0
    std::uint32_t m_crc = 0;
    std::vector<Gap> m_gaps;
    std::array<std::uint64_t, 1024> m_names{}; // where a name with this hash stood last; 0 if nowhere
};

} // namespace zeq::detail
