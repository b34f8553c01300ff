// The progress bar: one line of a terminal, redrawn in place.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace zeq::host {

/// Draws on standard error. Without a terminal it does nothing.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    /// How far the work is: `position` of `end`, or unknown when `pulse` is set.
    struct State {
        int position = 0;
        int end = 0;
        bool pulse = false;
        std::wstring stage;

        bool operator==(const State&) const = default;
        bool isActivityOnly() const { return pulse || end <= 0; }
    };

    explicit ProgressBar(bool enabled) : m_enabled(enabled) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar() { finish(); }

    /// Draws the new state; states that follow too quickly are only drawn when the stage changes.
    void show(const State& state);
    /// When animate() is due: while activity is shown that has no measurable position.
    std::optional<Clock::time_point> nextFrame() const;
    /// Moves the sign of activity on.
    void animate() { draw(); }
    /// Leaves an empty line, for a message.
    void clear();
    /// Leaves an empty line, for good.
    void finish();

private:
    void draw();

    bool m_enabled;
    bool m_shown = false; ///< there is a state to draw
    bool m_drawn = false;
    State m_state;
    int m_pulses = 0;
    Clock::time_point m_lastDrawn;
};

} // namespace zeq::host
