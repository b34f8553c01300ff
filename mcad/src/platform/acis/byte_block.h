// Memory for the bytes of an image.
#pragma once

#include <cstddef>

namespace acis_detail {
/// A block of bytes that can grow. What is new is not set to anything. A large block lies in huge pages, where
/// the system has them, and is moved by its pages and not copied.
class byte_block {
public:
    byte_block() = default;
    byte_block(const byte_block&) = delete;
    byte_block& operator=(const byte_block&) = delete;
    ~byte_block() { release(); }

    char* data() { return m_bytes; }
    const char* data() const { return m_bytes; }
    std::size_t size() const { return m_size; }
    /// At least to that size. Throws std::bad_alloc.
    void grow(std::size_t size);

private:
    void release();

    char* m_bytes = nullptr;
    std::size_t m_size = 0;
};
} // namespace acis_detail
