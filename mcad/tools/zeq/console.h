// What zeq tells the user on standard error: messages, the translator's own lines and the progress bar.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zeq/progress_bar.h"
#include "zeq/settings.h"

namespace zeq::host {

/// Something lost, faulty or doubtful, and where that is, as far as it is known: the ids that entities carry.
struct Warning {
    std::string text;
    std::optional<std::uint64_t> blockId;
    std::optional<std::int64_t> faceId;
    std::optional<std::int64_t> edgeId;
};

/// Writes whole lines, never through the progress bar.
class Console {
public:
    explicit Console(const Settings& settings);

    void error(const std::string& message) { line("error: ", "1;31", message); }
    void warning(Warning warning);
    void warning(const std::string& message) { warning(Warning{message, {}, {}, {}}); }
    /// All of them, shown or not.
    const std::vector<Warning>& warnings() const { return m_warnings; }
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
    std::vector<Warning> m_warnings;
};

} // namespace zeq::host
