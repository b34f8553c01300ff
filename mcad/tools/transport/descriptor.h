// Ownership of one file descriptor.
#pragma once

#include <utility>

#include <unistd.h>

namespace zeq::transport {

/// Closes what it holds when it goes.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_fd, other.m_fd);
        other.reset();
        return *this;
    }
    ~Descriptor() { reset(); }

    int get() const { return m_fd; }
    bool isOpen() const { return m_fd >= 0; }
    void reset() {
        if (isOpen()) ::close(std::exchange(m_fd, -1));
    }

private:
    int m_fd = -1;
};

} // namespace zeq::transport
