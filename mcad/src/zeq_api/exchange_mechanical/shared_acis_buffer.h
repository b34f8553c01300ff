// The kernel's binary file as a shared buffer. Objects are used by one thread at a time.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "mp/shared_buffer.h"
#include "mp/string.h"
#include "platform/acis/acis.h"

namespace zeq {

/// A binary file of the kernel that is held in memory, published as a named shared buffer, and taken from
/// one.
class ExcSharedAcisBuffer : public BinaryFile {
public:
    /// An empty stream, see init().
    ExcSharedAcisBuffer(const mp::String& name, bool removeOnDestroy) { init(name, removeOnDestroy); }
    ExcSharedAcisBuffer(const ExcSharedAcisBuffer&) = delete;
    ExcSharedAcisBuffer& operator=(const ExcSharedAcisBuffer&) = delete;
    /// Removes the named object if this buffer owns it.
    ~ExcSharedAcisBuffer() override;

    /// Sets the name of the shared object, and whether it is removed with this buffer. Opens nothing.
    void init(const mp::String& name, bool removeOnDestroy);

    const mp::String& name() const { return m_name; }
    void setRemoveOnDestroy(bool remove) { m_removeOnDestroy = remove; }

    /// Writes at the end of what was written or at the mark that was gone to.
    void write(const void* data, std::size_t size, int) override;
    /// Reads at most `size` bytes.
    /// @return how many there were
    std::size_t read(void* data, std::size_t size, int) override;
    /// The position after the last read, write or goto_mark(); -1 when that failed.
    long long set_mark() override { return m_position; }
    void goto_mark(long long mark) override;

    /// Makes the named object hold the stream's content.
    /// @throws mp::SharedMemoryException if it cannot be written
    void flush(bool compress);
    /// Replaces the stream's content by that of the named object, compressed or not, and goes to its start.
    /// @throws mp::SharedMemoryException if it cannot be read; std::runtime_error if it is damaged
    void load();
    /// Makes the stream usable again after a failure. The content stays.
    void cleanUp();

private:
    std::unique_ptr<mp::SharedBuffer<char>> m_sharedBuffer;
    std::vector<char> m_content;
    std::size_t m_readAt = 0;
    std::size_t m_writeAt = 0;
    bool m_failed = false;
    long long m_position = 0;
    bool m_removeOnDestroy = false;
    mp::String m_name;
};

} // namespace zeq
