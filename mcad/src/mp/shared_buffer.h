// Named, resizable blocks of bytes that two processes share: files of the shared directory under /tmp.
// Objects are used by one thread at a time.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "mp/string.h"

namespace mp {

/// The directory that holds the files of all shared buffers of this product version.
const std::string& sharedDirectory();

/// The kind of object that a shared buffer is, for removeObject().
struct SharedMemoryObject {
    static void remove(const String& name) noexcept;
};

/// Removes the object of that kind and name from the system. A name that is no plain file name, and an object
/// that does not exist, are silently ignored.
template <class Object = SharedMemoryObject>
void removeObject(const String& name) noexcept {
    Object::remove(name);
}

/// A block of bytes known by name to all processes; its size is the size of the payload. It outlives the
/// object that wrote it, unless that was told to remove it.
template <class T>
class SharedBuffer;

template <>
class SharedBuffer<char> {
public:
    SharedBuffer() = default;
    /// Opens or creates the named object, see init().
    SharedBuffer(const String& name, bool removeOnDestroy);
    SharedBuffer(const SharedBuffer&) = delete;
    SharedBuffer& operator=(const SharedBuffer&) = delete;
    virtual ~SharedBuffer();

    /// Opens or creates the named object for reading and writing and lets go of the one held before, which it
    /// keeps when it throws.
    /// @throws SharedMemoryException for an empty name, a name that is no plain file name, something under
    ///         that name that is no regular file, or with the system's own error text
    void init(const String& name, bool removeOnDestroy);

    /// Truncates or extends the object to `size` bytes and reserves the space.
    /// @throws SharedMemoryException before init(), for a size beyond the signed range, or when there is not
    ///         that much space, which can leave the object empty
    void setSize(unsigned long size);

    /// Makes the object hold exactly these bytes.
    /// @throws SharedMemoryException as setSize(), or with the system's own error text
    void setBuffer(const char* data, unsigned long size);

    /// Writes these bytes from there on, beyond the end too.
    /// @throws SharedMemoryException before init(), or with the system's own error text
    void write(const char* data, unsigned long size, unsigned long at);

    /// The number of bytes; 0 when it cannot be read.
    /// @throws SharedMemoryException before init()
    unsigned long size() const;

    /// Fills `out` with bytes from there on and returns how many there were, fewer only at the end.
    /// @throws SharedMemoryException before init(), or with the system's own error text
    unsigned long read(char* out, unsigned long size, unsigned long at) const;

    /// Fills `out` with all bytes of the object; makes it empty when the size is below 1 or cannot be read.
    /// @throws SharedMemoryException before init(), or with the system's own error text
    void get(std::vector<char>& out) const;

private:
    void requireOpen() const;

    int m_file = -1;
    String m_name;
    bool m_removeOnDestroy = false;
};

} // namespace mp
