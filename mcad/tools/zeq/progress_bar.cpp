// Layout of the bar: "[#####-----]  42 %  stage", cut to the width of the terminal.
#include "zeq/progress_bar.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>

#include <sys/ioctl.h>
#include <unistd.h>

#include "text/text.h"
#include "transport/utf8.h"

namespace zeq::host {

namespace {

constexpr int barWidth = 30;
constexpr std::chrono::milliseconds interval{50};
constexpr std::chrono::milliseconds frameTime{150};

void writeToTerminal(const std::string& text) {
    // A terminal that cannot be written to shows no progress; nothing else depends on it.
    [[maybe_unused]] const ssize_t count = ::write(STDERR_FILENO, text.data(), text.size());
}

int terminalWidth() {
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

/// As much of the text as fits into so many columns.
std::string cut(const std::wstring& text, int columns) {
    const std::wstring shown = transport::fromUtf8(text::printable(text));
    std::size_t length = 0;
    for (; length < shown.size(); ++length) {
        columns -= std::max(::wcwidth(shown[length]), 0);
        if (columns < 0) break;
    }
    return transport::toUtf8(std::wstring_view(shown).substr(0, length));
}

} // namespace

void ProgressBar::show(const State& state) {
    const auto now = Clock::now();
    const bool newStage = state.stage != m_state.stage;
    const bool same = m_drawn && !state.isActivityOnly() && state == m_state;
    m_state = state;
    m_shown = true;
    if (!m_enabled || same || (m_drawn && !newStage && now - m_lastDrawn < interval)) return;
    draw();
}

std::optional<ProgressBar::Clock::time_point> ProgressBar::nextFrame() const {
    if (!m_enabled || !m_shown || !m_state.isActivityOnly()) return std::nullopt;
    return m_lastDrawn + frameTime;
}

void ProgressBar::clear() {
    if (m_drawn) writeToTerminal("\r\033[K");
    m_drawn = false;
}

void ProgressBar::finish() {
    clear();
    m_shown = false;
}

void ProgressBar::draw() {
    m_lastDrawn = Clock::now();
    std::string bar(barWidth, '-');
    std::string percent = "      ";
    if (m_state.isActivityOnly()) {
        constexpr int blockWidth = 4;
        const int span = barWidth - blockWidth;
        const int step = m_pulses++ % (2 * span);
        bar.replace(static_cast<std::size_t>(step < span ? step : 2 * span - step), blockWidth, blockWidth,
                    '#');
    } else {
        const std::int64_t position = std::clamp(m_state.position, 0, m_state.end);
        const auto filled = static_cast<std::size_t>(position * barWidth / m_state.end);
        bar.replace(0, filled, filled, '#');
        percent = std::to_string(position * 100 / m_state.end) + " %";
        percent.insert(0, 6 - std::min<std::size_t>(percent.size(), 6), ' ');
    }
    const std::string start = "[" + bar + "]" + percent + "  ";
    // One column stays free: a line that fills the last one would wrap.
    const int rest = terminalWidth() - 1 - static_cast<int>(start.size());
    if (rest < 0) return;
    writeToTerminal("\r\033[K" + start + cut(m_state.stage, rest));
    m_drawn = true;
}

} // namespace zeq::host
