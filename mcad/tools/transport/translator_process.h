// A translator as a child process: documents go to its standard input and come from its standard output.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <sys/types.h>

#include "transport/descriptor.h"
#include "transport/frame.h"
#include "transport/signal_pipe.h"

namespace zeq::transport {

/// Runs one translator in a process group of its own. Never blocks but in wait(); the destructor kills and
/// reaps whatever is left of the group. SIGPIPE must be ignored, and the SignalPipe must catch SIGCHLD.
class TranslatorProcess {
public:
    using Clock = std::chrono::steady_clock;

    /// What wait() came back with.
    enum class Event {
        document,     ///< document() holds it
        errorLine,    ///< the translator wrote errorLine() to its standard error
        outputClosed, ///< no document will come any more; comes once, and only if the process is still there
        ended,        ///< the process has ended and everything it wrote has been delivered
        signal,       ///< this process received signal()
        deadline,
    };

    /// Starts `program`, looked up in PATH when it holds no '/'.
    /// @throws std::system_error if it cannot be started
    TranslatorProcess(const std::string& program, SignalPipe& signals);
    TranslatorProcess(const TranslatorProcess&) = delete;
    TranslatorProcess& operator=(const TranslatorProcess&) = delete;
    ~TranslatorProcess();

    /// Queues a document; wait() sends it.
    void send(std::wstring_view text);
    /// Ends the translator's standard input; what is still queued is dropped.
    void closeInput();

    /// Waits until something happens or `deadline`, if there is one, has passed.
    /// @throws ProtocolError once, when the output is no sequence of frames; the rest of the output is then
    /// dropped
    Event wait(std::optional<Clock::time_point> deadline);

    const std::wstring& document() const { return m_document; }
    const std::string& errorLine() const { return m_errorLine; }
    int signal() const { return m_signal; }

    /// Asks the translator to end in order.
    void terminate();
    /// Ends the whole process group at once.
    void kill();

    /// After Event::ended.
    bool succeeded() const;
    /// After Event::ended: the signal that killed it; 0 when it ended by itself.
    int endSignal() const;
    /// After Event::ended: how it ended, as in "was killed by signal 11 (Segmentation fault)".
    std::string describeEnd() const;

    /// Bytes of all frames in both directions.
    std::uint64_t bytesMoved() const { return m_bytesMoved; }

private:
    /// Waits until a byte can be moved, a signal arrives or the deadline has passed, and moves what can be.
    void moveBytes(std::optional<Clock::time_point> deadline);
    void reapIfEnded();
    void sendQueued();
    void receiveOutput();
    void receiveErrors();
    bool nextErrorLine();

    SignalPipe& m_signals;
    pid_t m_pid = -1;
    std::optional<int> m_status;
    Descriptor m_input;
    Descriptor m_output;
    Descriptor m_errors;

    std::string m_queue;
    FrameDecoder m_decoder;
    bool m_outputIsFrames = true;
    bool m_toldOutputClosed = false;
    std::string m_errorText;

    std::wstring m_document;
    std::string m_errorLine;
    int m_signal = 0;
    std::uint64_t m_bytesMoved = 0;
};

} // namespace zeq::transport
