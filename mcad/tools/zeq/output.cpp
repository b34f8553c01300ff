// Buffered writing that a signal can interrupt, and the rename at the end.
#include "zeq/output.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "zeq/failure.h"
#include "zeq/interruptible.h"

namespace zeq::host {

namespace {

/// A pipe that is ready takes at least this much without blocking.
constexpr std::size_t portionSize = 4096;
constexpr std::size_t portionOfFile = 1024 * 1024; // a file does not block
constexpr std::size_t bufferSize = 64 * 1024;

} // namespace

Output::Output(const std::string& path, bool force, transport::SignalPipe& signals)
    : m_signals(signals), m_path(path), m_force(force) {
    namespace fs = std::filesystem;
    if (m_path.empty()) {
        m_fd = STDOUT_FILENO;
        return;
    }
    std::error_code error;
    if (const fs::path target = fs::canonical(m_path, error); !error)
        m_path = target; // what a link points to
    const fs::file_status status = fs::status(m_path, error);
    int flags = O_WRONLY | O_CLOEXEC;
    if (fs::exists(status) && !fs::is_regular_file(status)) { // a device or a pipe has no other name
        m_temporary.clear();
    } else {
        if (fs::exists(status) && !m_force)
            throw Failure(exit_code::inputOutput,
                          cannot("write", m_path, "it exists already; --force replaces it"));
        m_temporary = m_path + "." + std::to_string(::getpid()) + ".part";
        flags |= O_CREAT | O_EXCL;
    }
    m_file = transport::Descriptor(::open((m_temporary.empty() ? m_path : m_temporary).c_str(), flags, 0666));
    if (!m_file.isOpen()) {
        const std::string reason = std::generic_category().message(errno);
        m_temporary.clear();
        throw Failure(exit_code::inputOutput, cannot("write", m_path, reason));
    }
    m_fd = m_file.get();
}

Output::~Output() {
    if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

void Output::write(std::string_view text) {
    if (m_buffer.size() + text.size() > bufferSize) flush();
    if (text.size() > bufferSize)
        send(text);
    else
        m_buffer += text;
}

void Output::commit() {
    flush();
    const auto require = [this](bool done) {
        if (!done)
            throw Failure(exit_code::inputOutput,
                          cannot("write", shownName(), std::generic_category().message(errno)));
    };
    if (m_temporary.empty()) return;
    require(::fsync(m_fd) == 0);
    // link() refuses a name that has come to exist meanwhile; rename() replaces it.
    const bool linked = !m_force && ::link(m_temporary.c_str(), m_path.c_str()) == 0;
    require(m_force || linked || errno != EEXIST);
    if (linked)
        ::unlink(m_temporary.c_str());
    else
        require(::rename(m_temporary.c_str(), m_path.c_str()) == 0);
    m_temporary.clear();
}

void Output::flush() {
    send(m_buffer);
    m_buffer.clear();
}

void Output::send(std::string_view bytes) {
    const std::size_t portion = m_temporary.empty() ? portionSize : portionOfFile;
    for (std::size_t at = 0; at < bytes.size();) {
        waitUntilReady(m_fd, POLLOUT, m_signals);
        const ssize_t count = ::write(m_fd, bytes.data() + at, std::min(portion, bytes.size() - at));
        if (count >= 0)
            at += static_cast<std::size_t>(count);
        else if (errno == EPIPE)
            throw Failure(exit_code::signalled(SIGPIPE), "");
        else if (errno != EINTR && errno != EAGAIN)
            throw Failure(exit_code::inputOutput,
                          cannot("write", shownName(), std::generic_category().message(errno)));
    }
}

std::string Output::shownName() const { return m_path.empty() ? "standard output" : m_path; }

void requireDirectory(const std::string& directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error)
        throw Failure(exit_code::inputOutput, cannot("make the directory", directory, error.message()));
}

} // namespace zeq::host
