// Memory for the bytes of an image.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

namespace acis_detail {
/// A block of bytes that can grow. What is new is not set to anything, and a large block is moved by its
/// pages and not copied.
class byte_block {
public:
    char* data() { return m_bytes.get(); }
    const char* data() const { return m_bytes.get(); }
    std::size_t size() const { return m_size; }
    void grow(std::size_t size) {
        void* grown = std::realloc(m_bytes.get(), size);
        if (!grown) throw std::bad_alloc();
        (void)m_bytes.release();
        m_bytes.reset(static_cast<char*>(grown));
        m_size = size;
    }

private:
    std::unique_ptr<char, decltype(&std::free)> m_bytes{nullptr, &std::free};
    std::size_t m_size = 0;
};
} // namespace acis_detail
