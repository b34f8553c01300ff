// How a block of bytes gets its memory: small ones from the heap, large ones from the system.
#include "platform/acis/byte_block.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace acis_detail {
namespace {
constexpr std::size_t huge_page = std::size_t(2) << 20;
bool is_large(std::size_t size) { return size >= 2 * huge_page; }

/// The first address of a huge page in a range of addresses that belongs to nobody else yet.
char* large_range(std::size_t size) {
    void* range =
        mmap(nullptr, size + huge_page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (range == MAP_FAILED) throw std::bad_alloc();
    auto* start = static_cast<char*>(range);
    std::size_t before = -reinterpret_cast<std::uintptr_t>(range) & (huge_page - 1);
    if (before > 0) munmap(start, before);
    munmap(start + before + size, huge_page - before);
    return start + before;
}
} // namespace

void byte_block::grow(std::size_t size) {
    void* grown = nullptr;
    if (!is_large(size)) {
        grown = std::realloc(m_bytes, size);
        if (!grown) throw std::bad_alloc();
    } else {
        size = (size + huge_page - 1) & ~(huge_page - 1);
        char* range = large_range(size);
        if (is_large(m_size))
            grown = mremap(m_bytes, m_size, size, MREMAP_MAYMOVE | MREMAP_FIXED, range);
        else
            grown = mmap(range, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
        if (grown == MAP_FAILED) {
            munmap(range, size);
            throw std::bad_alloc();
        }
        madvise(grown, size, MADV_HUGEPAGE); // does nothing where there are none
        if (!is_large(m_size) && m_size > 0) {
            std::memcpy(grown, m_bytes, m_size);
            std::free(m_bytes);
        }
    }
    m_bytes = static_cast<char*>(grown);
    m_size = size;
}

void byte_block::release() {
    if (is_large(m_size))
        munmap(m_bytes, m_size);
    else
        std::free(m_bytes);
}
} // namespace acis_detail
