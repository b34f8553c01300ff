// Lines on standard error, and when they may be coloured.
#include "zeq/console.h"

#include <cstdlib>
#include <string_view>

#include <unistd.h>

#include "text/text.h"

namespace zeq::host {

namespace {

std::string_view environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

bool isCapableTerminal(int fd) { return ::isatty(fd) != 0 && environment("TERM") != "dumb"; }

bool usesColor(EColor choice, int fd) {
    if (choice != EColor::automatic) return choice == EColor::always;
    return isCapableTerminal(fd) && environment("NO_COLOR").empty();
}

} // namespace

Console::Console(const Settings& settings)
    : m_quiet(settings.quiet), m_verbose(settings.verbose),
      m_colorsErrors(usesColor(settings.color, STDERR_FILENO)),
      m_colorsOutput(settings.output.empty() && usesColor(settings.color, STDOUT_FILENO)),
      m_progress(settings.progress && !settings.quiet && isCapableTerminal(STDERR_FILENO)) {}

void Console::warning(const std::string& message) {
    if (!m_quiet) line("warning: ", "1;33", message);
    m_warnings.push_back(message);
}

void Console::message(const std::string& text) {
    if (!m_quiet) line("", "", text);
}

void Console::note(const std::string& message) {
    if (m_verbose) line("", "", message);
}

void Console::translatorLine(std::string_view text) {
    if (!m_quiet) line("translator: ", "2", text::printable(text));
}

/// One call for a line, so that lines of several processes do not mix.
void Console::line(const std::string& prefix, const std::string& color, const std::string& text) {
    m_progress.clear();
    std::string whole = "zeq: ";
    whole += m_colorsErrors && !prefix.empty() ? "\033[" + color + "m" + prefix + "\033[0m" : prefix;
    whole += text + '\n';
    for (std::size_t at = 0; at < whole.size();) {
        const ssize_t count = ::write(STDERR_FILENO, whole.data() + at, whole.size() - at);
        if (count <= 0) return; // nobody listens
        at += static_cast<std::size_t>(count);
    }
}

} // namespace zeq::host
