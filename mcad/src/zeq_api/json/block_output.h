// Where the binary form of an object goes, block by block. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace zeq::json {

/// Puts bytes where the data end so far, or in place of bytes that are there already.
using ByteStore = std::function<void(const char* bytes, std::size_t size, std::uint64_t at)>;

/// What is known of the bytes at a place of a block.
struct Mark {
    enum Kind : std::uint32_t {
        name,      ///< the name of a member stands here
        container, ///< the length of an object or array; `unknownLength` until it is closed
        base64,    ///< units of Base64 text begin here
        base64End
    };
    std::uint32_t kind : 2;
    std::uint32_t at : 30; ///< counted from the begin of the block
};

inline constexpr std::uint64_t unknownLength = ~std::uint64_t{0};

/// Memory that is filled.
struct Block {
    char* begin = nullptr; ///< from here on bytes can be changed
    char* next = nullptr;  ///< up to here they are written
    char* end = nullptr;
    Mark* marks = nullptr; ///< in the order of their places, with room for one in each four bytes
    Mark* nextMark = nullptr;
};

/// Takes what a ByteSink writes.
class BlockOutput {
public:
    virtual ~BlockOutput() = default;
    /// Makes room in the block: takes all that it holds, or the first part of it, and leaves the rest at the begin.
    virtual void pass(Block& block) = 0;
    /// Gives a container its length, which stands in what was taken.
    virtual void setLength(std::uint64_t at, std::uint64_t length) = 0;
    /// Takes all. To be called once, at the end.
    virtual void finish(Block& block) = 0;
};

/// Stores the bytes as they are.
class PlainOutput : public BlockOutput {
public:
    explicit PlainOutput(ByteStore store) : m_store(std::move(store)) {}
    void pass(Block& block) override;
    void setLength(std::uint64_t at, std::uint64_t length) override;
    void finish(Block& block) override;

private:
    static constexpr std::size_t blockSize = 1 << 17;

    ByteStore m_store;
    std::uint64_t m_size = 0;
    std::unique_ptr<char[]> m_bytes{new char[blockSize]};
    std::unique_ptr<Mark[]> m_marks{new Mark[blockSize / 4]};
};

} // namespace zeq::json
