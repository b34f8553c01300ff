// Starting the child, moving bytes while waiting, and reaping: one poll() loop, no threads.
#include "transport/translator_process.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>

namespace zeq::transport {

namespace {

constexpr std::size_t portionSize = 64 * 1024;
constexpr std::size_t longestErrorLine = 4096;

void check(int error, const char* call) {
    if (error != 0) throw std::system_error(error, std::generic_category(), call);
}

struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

Pipe makePipe() {
    int ends[2];
    check(::pipe2(ends, O_CLOEXEC) == 0 ? 0 : errno, "pipe");
    return {Descriptor(ends[0]), Descriptor(ends[1])};
}

/// Our end only: the translator's end stays an ordinary blocking one.
Descriptor nonBlocking(Descriptor end) {
    check(::fcntl(end.get(), F_SETFL, O_NONBLOCK) == 0 ? 0 : errno, "fcntl");
    return end;
}

/// Spawn attributes: own process group, no signal blocked, none ignored.
class Attributes {
public:
    Attributes() {
        check(::posix_spawnattr_init(&m_attributes), "posix_spawnattr_init");
        sigset_t none;
        sigset_t defaults;
        ::sigemptyset(&none);
        ::sigemptyset(&defaults);
        for (int signal : {SIGPIPE, SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGCHLD})
            ::sigaddset(&defaults, signal);
        ::posix_spawnattr_setpgroup(&m_attributes, 0);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setsigdefault(&m_attributes, &defaults);
        ::posix_spawnattr_setflags(&m_attributes,
                                   POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    Attributes(const Attributes&) = delete;
    ~Attributes() { ::posix_spawnattr_destroy(&m_attributes); }
    const posix_spawnattr_t* get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

/// Spawn file actions: the three standard descriptors.
class Redirections {
public:
    Redirections(const Descriptor& input, const Descriptor& output, const Descriptor& errors) {
        check(::posix_spawn_file_actions_init(&m_actions), "posix_spawn_file_actions_init");
        int target = 0;
        for (const Descriptor* end : {&input, &output, &errors})
            check(::posix_spawn_file_actions_adddup2(&m_actions, end->get(), target++), "adddup2");
    }
    Redirections(const Redirections&) = delete;
    ~Redirections() { ::posix_spawn_file_actions_destroy(&m_actions); }
    const posix_spawn_file_actions_t* get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

/// Reads one portion. An error other than "not now" counts as the end of the stream.
/// @return false at the end of the stream
template <class Take>
bool readPortion(const Descriptor& from, Take take) {
    std::array<char, portionSize> portion;
    const ssize_t count = ::read(from.get(), portion.data(), portion.size());
    if (count > 0) take(std::string_view(portion.data(), static_cast<std::size_t>(count)));
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

} // namespace

TranslatorProcess::TranslatorProcess(const std::string& program, SignalPipe& signals) : m_signals(signals) {
    Pipe input = makePipe();
    Pipe output = makePipe();
    Pipe errors = makePipe();
    m_input = nonBlocking(std::move(input.writeEnd));
    m_output = nonBlocking(std::move(output.readEnd));
    m_errors = nonBlocking(std::move(errors.readEnd));

    const Redirections redirections(input.readEnd, output.writeEnd, errors.writeEnd);
    const Attributes attributes;
    std::string name = program;
    char* arguments[] = {name.data(), nullptr};
    check(::posix_spawnp(&m_pid, program.c_str(), redirections.get(), attributes.get(), arguments, environ),
          "posix_spawn");
}

TranslatorProcess::~TranslatorProcess() {
    if (m_status) return;
    kill();
    while (::waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

void TranslatorProcess::send(std::wstring_view text) { m_queue += encodeFrame(text); }

void TranslatorProcess::closeInput() {
    m_queue.clear();
    m_input.reset();
}

void TranslatorProcess::terminate() {
    if (!m_status) ::kill(m_pid, SIGTERM);
}

void TranslatorProcess::kill() {
    if (!m_status) ::kill(-m_pid, SIGKILL);
}

TranslatorProcess::Event TranslatorProcess::wait(std::optional<Clock::time_point> deadline) {
    for (;;) {
        while (const int signal = m_signals.take()) {
            if (signal == SIGCHLD) continue; // only there to wake poll()
            m_signal = signal;
            return Event::signal;
        }
        reapIfEnded();
        // Before documents and lines: a translator that never stops sending must not outrun the clock.
        if (deadline && Clock::now() >= *deadline) return Event::deadline;
        if (nextErrorLine()) return Event::errorLine;
        try {
            if (m_outputIsFrames && m_decoder.next(m_document)) return Event::document;
        } catch (const ProtocolError&) {
            m_outputIsFrames = false;
            throw;
        }
        if (m_status && !m_output.isOpen() && !m_errors.isOpen()) return Event::ended;
        if (!m_status && !m_output.isOpen() && !std::exchange(m_toldOutputClosed, true))
            return Event::outputClosed;

        moveBytes(deadline);
    }
}

void TranslatorProcess::moveBytes(std::optional<Clock::time_point> deadline) {
    // poll() skips negative descriptors, which closed ones are.
    std::array<pollfd, 4> watched{{{m_signals.fd(), POLLIN, 0},
                                   {m_output.get(), POLLIN, 0},
                                   {m_errors.get(), POLLIN, 0},
                                   {m_queue.empty() ? -1 : m_input.get(), POLLOUT, 0}}};
    int timeout = -1;
    if (m_status) {
        timeout = 0; // what the translator wrote is all there; a stray child may hold the pipes open
    } else if (deadline) {
        const auto rest = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
        timeout = static_cast<int>(std::clamp<std::int64_t>(rest, 0, 3'600'000));
    }
    const int ready = ::poll(watched.data(), watched.size(), timeout);
    if (ready == 0 && m_status) {
        m_output.reset();
        m_errors.reset();
    }
    if (ready <= 0) return;
    if (watched[1].revents != 0) receiveOutput();
    if (watched[2].revents != 0) receiveErrors();
    if (watched[3].revents != 0) sendQueued();
}

bool TranslatorProcess::succeeded() const {
    return m_status && WIFEXITED(*m_status) && WEXITSTATUS(*m_status) == 0;
}

int TranslatorProcess::endSignal() const {
    return m_status && WIFSIGNALED(*m_status) ? WTERMSIG(*m_status) : 0;
}

std::string TranslatorProcess::describeEnd() const {
    std::string text;
    if (const int signal = endSignal(); signal != 0) {
        text = "was killed by signal " + std::to_string(signal) + " (" + ::strsignal(signal) + ")";
    } else {
        text = "exited with status " + std::to_string(m_status ? WEXITSTATUS(*m_status) : 0);
    }
    if (!m_outputIsFrames || !m_decoder.isWithinFrame()) return text;
    const std::string printed = m_decoder.textInstead();
    return text + (printed.empty() ? " in the middle of a document"
                                   : " after it wrote text instead of documents ('" + printed + "')");
}

void TranslatorProcess::reapIfEnded() {
    if (m_status) return;
    siginfo_t info{};
    if (::waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0 ||
        info.si_pid == 0)
        return;
    // Until it is reaped its process group cannot be anybody else's: the moment to end what it left behind.
    ::kill(-m_pid, SIGKILL);
    int status = 0;
    ::waitpid(m_pid, &status, 0);
    m_status = status;
}

void TranslatorProcess::sendQueued() {
    const ssize_t count = ::write(m_input.get(), m_queue.data(), m_queue.size());
    if (count >= 0) {
        m_queue.erase(0, static_cast<std::size_t>(count));
        m_bytesMoved += static_cast<std::uint64_t>(count);
    } else if (errno != EAGAIN && errno != EINTR) {
        closeInput(); // nobody reads it: how the translator ends will tell why
    }
}

void TranslatorProcess::receiveOutput() {
    const bool more = readPortion(m_output, [this](std::string_view bytes) {
        m_bytesMoved += bytes.size();
        if (m_outputIsFrames) m_decoder.feed(bytes);
    });
    if (!more) m_output.reset();
}

void TranslatorProcess::receiveErrors() {
    if (!readPortion(m_errors, [this](std::string_view bytes) { m_errorText += bytes; })) m_errors.reset();
}

bool TranslatorProcess::nextErrorLine() {
    std::size_t end = m_errorText.find('\n');
    const bool whole = end != std::string::npos;
    if (!whole) {
        const bool isLast = !m_errors.isOpen() && !m_errorText.empty();
        if (!isLast && m_errorText.size() < longestErrorLine) return false;
        end = m_errorText.size();
    }
    m_errorLine = m_errorText.substr(0, end);
    m_errorText.erase(0, whole ? end + 1 : end);
    return true;
}

} // namespace zeq::transport
