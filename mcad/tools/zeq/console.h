// What zeq tells the user on standard error: messages, the translator's own lines and the progress bar.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "zeq/progress_bar.h"
#include "zeq/settings.h"

namespace zeq::host {

/// Writes whole lines, never through the progress bar.
class Console {
public:
    explicit Console(const Settings& settings);

    void error(const std::string& message) { line("error: ", "1;31", message); }
    /// Something is lost, faulty or doubtful.
    void warning(const std::string& message);
    /// All of them, shown or not.
    const std::vector<std::string>& warnings() const { return m_warnings; }
    /// What the translator tells the user.
    void message(const std::string& text);
    /// Only with --verbose.
    void note(const std::string& message);
    /// A line that the translator wrote to its standard error.
    void translatorLine(std::string_view text);

    ProgressBar& progress() { return m_progress; }
    /// Whether standard output may be coloured.
    bool colorsOutput() const { return m_colorsOutput; }

private:
    void line(const std::string& prefix, const std::string& color, const std::string& text);

    bool m_quiet;
    bool m_verbose;
    bool m_colorsErrors;
    bool m_colorsOutput;
    ProgressBar m_progress;
    std::vector<std::string> m_warnings;
};

} // namespace zeq::host
