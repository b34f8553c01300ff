// The life of the translator process: it is asked to end before it is killed, and always awaited.
#include "zeq/conversation.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>

#include "mp/shared_buffer.h"
#include "text/text.h"
#include "transport/translator_process.h"
#include "zeq/failure.h"

namespace zeq::host {

namespace {

using transport::TranslatorProcess;
using Clock = TranslatorProcess::Clock;
using Event = TranslatorProcess::Event;

/// How long a translator may take to end once it has answered or has been asked to end.
constexpr std::chrono::seconds grace{3};
/// For commands that need no work.
constexpr std::chrono::seconds shortTimeout{30};

/// Removes the buffer that a document named: once the document is handled, nobody will load it any more.
class BufferRemover {
public:
    explicit BufferRemover(std::wstring name) : m_name(std::move(name)) {}
    BufferRemover(const BufferRemover&) = delete;
    BufferRemover& operator=(const BufferRemover&) = delete;
    ~BufferRemover() { mp::removeObject<>(m_name); }

private:
    std::wstring m_name;
};

std::optional<std::chrono::duration<double>> timeoutFor(const Host& host, Command::EType type) {
    const bool isShort = type == Command::EType::ping || type == Command::EType::info;
    return isShort && !host.settings.timeout ? shortTimeout : host.settings.timeout;
}

class Conversation {
public:
    Conversation(const Host& host, const Request& request, const Take& take)
        : m_host(host), m_request(request), m_take(take), m_timeout(timeoutFor(host, request.type)),
          m_process(host.settings.translator, host.signals) {}

    std::uint64_t run();

private:
    Event nextEvent();
    void onDocument();
    void onSignal();
    void onDeadline();
    void conclude();
    void fail(int exitCode, const std::string& reason);
    /// From here on documents are dropped and only the end of the process is awaited.
    void expectEnd(bool askToEnd);

    const Host& m_host;
    const Request& m_request;
    const Take& m_take;
    std::optional<std::chrono::duration<double>> m_timeout;
    TranslatorProcess m_process;
    std::optional<Clock::time_point> m_deadline;

    bool m_answered = false;
    bool m_ending = false;
    bool m_killed = false;
    bool m_outputClosed = false;
    int m_signal = 0;
    std::optional<Failure> m_fault;
};

std::uint64_t Conversation::run() {
    m_host.console.note("started the translator '" + text::printable(m_host.settings.translator) + "'");
    m_process.send(m_request.text);
    if (m_timeout) m_deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(*m_timeout);
    for (;;) {
        switch (nextEvent()) {
        case Event::document:
            onDocument();
            break;
        case Event::errorLine:
            m_host.console.translatorLine(m_process.errorLine());
            break;
        case Event::signal:
            onSignal();
            break;
        case Event::deadline:
            onDeadline();
            break;
        case Event::outputClosed:
            // Most likely it is about to end; how it ends says more than that it fell silent.
            m_outputClosed = true;
            if (!m_ending) m_deadline = Clock::now() + grace;
            break;
        case Event::ended:
            conclude();
            return m_process.bytesMoved();
        }
    }
}

Event Conversation::nextEvent() {
    ProgressBar& progress = m_host.console.progress();
    for (;;) {
        const std::optional<Clock::time_point> frame = progress.nextFrame();
        const bool frameFirst = frame && (!m_deadline || *frame < *m_deadline);
        try {
            const Event event = m_process.wait(frameFirst ? frame : m_deadline);
            if (event != Event::deadline || !frameFirst) return event;
            progress.animate();
        } catch (const transport::ProtocolError& error) {
            fail(exit_code::translatorBroken,
                 "the translator broke the protocol: " + text::printable(error.what()));
        }
    }
}

void Conversation::onDocument() {
    try {
        const Document document(m_process.document());
        const BufferRemover remover(document.bufferName());
        if (m_ending) return;
        m_host.report.addDocument(document.text());
        m_answered = m_take(document);
        if (m_answered) expectEnd(false);
    } catch (const Failure& fault) {
        fail(fault.exitCode(), fault.what());
    } catch (const std::exception&) {
        fail(exit_code::translatorBroken,
             "the translator sent a document that cannot be read: " + currentReason());
    }
}

void Conversation::onSignal() {
    if (m_signal != 0) {
        m_process.kill();
        return;
    }
    m_signal = m_process.signal();
    expectEnd(true);
}

void Conversation::onDeadline() {
    if (!m_ending && !m_outputClosed) {
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%g s", m_timeout->count());
        fail(exit_code::timedOut, std::string("the translator did not answer within ") + seconds);
        return;
    }
    if (!m_ending) fail(exit_code::translatorBroken, "the translator closed its output without an answer");
    m_killed = true;
    m_process.kill();
    m_deadline.reset();
}

void Conversation::conclude() {
    const auto cannotDo = [this](const std::string& reason) {
        return cannot(m_request.verb, m_request.thing, reason);
    };
    if (m_signal != 0)
        throw Failure(exit_code::signalled(m_signal),
                      cannotDo("interrupted by signal " + std::to_string(m_signal) + " (" +
                               ::strsignal(m_signal) + ")"));
    if (m_fault) throw Failure(m_fault->exitCode(), cannotDo(m_fault->what()));
    if (!m_answered) {
        const int signal = m_process.endSignal();
        std::string suspicion;
        if (signal == SIGKILL)
            suspicion = "; the memory of the machine may have run out";
        else if (signal != 0 && m_request.type == Command::EType::import)
            suspicion = "; the file may be damaged";
        throw Failure(exit_code::translatorBroken,
                      cannotDo("the translator " + text::printable(m_process.describeEnd()) +
                               " before it answered" + suspicion));
    }
    if (m_killed)
        m_host.console.warning("the translator did not end after its answer and was killed");
    else if (!m_process.succeeded())
        m_host.console.warning("the translator " + m_process.describeEnd() + " after it had answered");
}

void Conversation::fail(int exitCode, const std::string& reason) {
    if (!m_ending && !m_fault) m_fault.emplace(exitCode, reason);
    expectEnd(true);
}

void Conversation::expectEnd(bool askToEnd) {
    m_process.closeInput();
    if (askToEnd) m_process.terminate();
    if (!m_ending) m_deadline = Clock::now() + grace;
    m_ending = true;
}

} // namespace

std::uint64_t converse(const Host& host, const Request& request, const Take& take) {
    std::optional<Conversation> conversation;
    try {
        conversation.emplace(host, request, take);
    } catch (const std::system_error&) {
        throw Failure(exit_code::inputOutput, cannot("start", host.settings.translator, currentReason()));
    }
    return conversation->run();
}

} // namespace zeq::host
