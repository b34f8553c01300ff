// Shared buffers as files of one directory. Names come out of documents that another process wrote, so
// nothing outside that directory is ever touched, and nothing but a regular file in it is opened.
#include "mp/shared_buffer.h"

#include <cerrno>
#include <climits>
#include <system_error>
#include <utility>

#include <boost/uuid/name_generator_md5.hpp>
#include <boost/uuid/string_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "mp/exception.h"

namespace mp {

namespace {

constexpr mode_t directoryMode = 0777;
constexpr mode_t fileMode = 0644;

/// An open file descriptor, or none (-1).
class Descriptor {
public:
    explicit Descriptor(int descriptor) : m_descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_descriptor(other.exchange(-1)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() {
        if (m_descriptor >= 0) ::close(m_descriptor);
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    int exchange(int other) { return std::exchange(m_descriptor, other); }

private:
    int m_descriptor;
};

[[noreturn]] void throwSystemError(int error = errno) {
    throw SharedMemoryException(toWideString(std::system_category().message(error)));
}

/// The narrow form of a name; empty if that is no plain file name.
std::string fileNameOf(const String& name) {
    if (name.find(L'\0') != String::npos) return {};
    std::string fileName = toUtf8String(name);
    const bool isPlain = fileName.find('/') == std::string::npos && fileName != "." && fileName != "..";
    return isPlain ? fileName : std::string();
}

/// Opens the shared directory, which must be a real one: a link put in its place is not followed.
Descriptor openDirectory() {
    return Descriptor(::open(sharedDirectory().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor openOrCreateDirectory() {
    if (::mkdir(sharedDirectory().c_str(), directoryMode) != 0 && errno != EEXIST) throwSystemError();
    Descriptor directory = openDirectory();
    if (!directory) throwSystemError();
    // The umask may have narrowed the mode. Where it is right already it may not be ours to set.
    struct stat status {};
    if (::fstat(directory.get(), &status) != 0) throwSystemError();
    if ((status.st_mode & directoryMode) != directoryMode && ::fchmod(directory.get(), directoryMode) != 0) {
        throwSystemError();
    }
    return directory;
}

Descriptor openOrCreate(const Descriptor& directory, const std::string& fileName) {
    // Neither follow a link nor wait for the other end of a pipe.
    constexpr int flags = O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    for (;;) {
        Descriptor created(::openat(directory.get(), fileName.c_str(), flags | O_CREAT | O_EXCL, fileMode));
        if (created) {
            if (::fchmod(created.get(), fileMode) != 0) throwSystemError();
            return created;
        }
        if (errno != EEXIST) throwSystemError();
        Descriptor existing(::openat(directory.get(), fileName.c_str(), flags));
        if (existing) return existing;
        if (errno != ENOENT) throwSystemError(); // else it was removed meanwhile: try again
    }
}

} // namespace

const std::string& sharedDirectory() {
    static const std::string directory = [] {
        const auto productSpace = boost::uuids::string_generator()("0c557e3b-f9db-49db-b8b5-cf3d8b32f396");
        return "/tmp/mp-v25-" +
               to_string(boost::uuids::name_generator_md5(productSpace)("Morvanta_25_MultiProcess"));
    }();
    return directory;
}

void SharedMemoryObject::remove(const String& name) noexcept {
    try {
        const std::string fileName = fileNameOf(name);
        const Descriptor directory = openDirectory();
        if (!fileName.empty() && directory) ::unlinkat(directory.get(), fileName.c_str(), 0);
    } catch (const std::exception&) { // out of memory: the object stays
    }
}

SharedBuffer<char>::SharedBuffer(const String& name, bool removeOnDestroy) { init(name, removeOnDestroy); }

SharedBuffer<char>::~SharedBuffer() {
    const Descriptor file(m_file);
    if (m_removeOnDestroy) removeObject(m_name);
}

void SharedBuffer<char>::init(const String& name, bool removeOnDestroy) {
    if (name.empty()) throw SharedMemoryException(L"Shared variable name mustn't be empty");
    const std::string fileName = fileNameOf(name);
    if (fileName.empty()) throw SharedMemoryException(L"Shared variable name is not a valid file name");

    Descriptor file = openOrCreate(openOrCreateDirectory(), fileName);
    struct stat status {};
    if (::fstat(file.get(), &status) != 0) throwSystemError();
    if (!S_ISREG(status.st_mode)) throw SharedMemoryException(L"Shared variable is not a regular file");

    m_name = name;
    m_removeOnDestroy = removeOnDestroy;
    m_file = file.exchange(m_file);
}

void SharedBuffer<char>::setSize(unsigned long size) {
    requireOpen();
    if (size > LONG_MAX) throwSystemError(EINVAL);
    const auto length = static_cast<off_t>(size);
    if (::ftruncate(m_file, length) != 0) throwSystemError();
    if (length == 0) return;
    // Take the space now, so that a full disk is noticed here and not by whoever writes.
    int error = 0;
    do {
        error = ::posix_fallocate(m_file, 0, length);
    } while (error == EINTR);
    if (error != 0) {
        if (::ftruncate(m_file, 0) != 0) error = errno;
        throwSystemError(error);
    }
}

void SharedBuffer<char>::setBuffer(const char* data, unsigned long size) {
    setSize(size);
    write(data, size, 0);
}

void SharedBuffer<char>::write(const char* data, unsigned long size, unsigned long at) {
    requireOpen();
    for (unsigned long done = 0; done < size;) {
        const ssize_t count = ::pwrite(m_file, data + done, size - done, static_cast<off_t>(at + done));
        if (count >= 0) {
            done += static_cast<unsigned long>(count);
        } else if (errno != EINTR) {
            throwSystemError();
        }
    }
}

unsigned long SharedBuffer<char>::size() const {
    requireOpen();
    struct stat status {};
    return ::fstat(m_file, &status) != 0 || status.st_size < 1 ? 0
                                                               : static_cast<unsigned long>(status.st_size);
}

unsigned long SharedBuffer<char>::read(char* out, unsigned long size, unsigned long at) const {
    requireOpen();
    unsigned long done = 0;
    while (done < size) {
        const ssize_t count = ::pread(m_file, out + done, size - done, static_cast<off_t>(at + done));
        if (count == 0) break; // or another process has cut it meanwhile
        if (count > 0) {
            done += static_cast<unsigned long>(count);
        } else if (errno != EINTR) {
            throwSystemError();
        }
    }
    return done;
}

void SharedBuffer<char>::get(std::vector<char>& out) const {
    out.resize(size());
    out.resize(read(out.data(), out.size(), 0));
}

void SharedBuffer<char>::requireOpen() const {
    if (m_file < 0) throw SharedMemoryException(L"Shared buffer was not initialized");
}

} // namespace mp
