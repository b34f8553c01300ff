// poll() beside the signal pipe.
#include "zeq/interruptible.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "transport/descriptor.h"
#include "zeq/failure.h"

namespace zeq::host {

void throwIfSignalled(transport::SignalPipe& signals) {
    while (const int signal = signals.take())
        if (signal != SIGCHLD)
            throw Failure(exit_code::signalled(signal), "interrupted by signal " + std::to_string(signal) +
                                                            " (" + ::strsignal(signal) + ")");
}

void waitUntilReady(int fd, short events, transport::SignalPipe& signals) {
    std::array<pollfd, 2> watched{{{fd, events, 0}, {signals.fd(), POLLIN, 0}}};
    while (watched[0].revents == 0) {
        ::poll(watched.data(), watched.size(), -1);
        throwIfSignalled(signals);
    }
}

std::string readAll(const std::string& path, transport::SignalPipe& signals) {
    const auto require = [&path](bool done, int error) {
        if (!done)
            throw Failure(exit_code::inputOutput,
                          cannot("read", path, std::generic_category().message(error)));
    };
    constexpr std::size_t mostBytes = std::size_t{1} << 30;
    transport::Descriptor file;
    int fd = STDIN_FILENO;
    if (path != "-") {
        // A pipe that nobody writes to must not block before there is a chance to be interrupted.
        file = transport::Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        require(file.isOpen(), errno);
        fd = file.get();
    }
    std::string bytes;
    for (;;) {
        waitUntilReady(fd, POLLIN, signals);
        std::array<char, 16 * 1024> portion;
        const ssize_t count = ::read(fd, portion.data(), portion.size());
        if (count == 0) return bytes;
        if (count > 0) bytes.append(portion.data(), static_cast<std::size_t>(count));
        require(count > 0 || errno == EINTR || errno == EAGAIN, errno);
        require(bytes.size() <= mostBytes, EFBIG);
    }
}

} // namespace zeq::host
