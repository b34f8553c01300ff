// Reads the clocks of the system, between stages alone.
#include "timing/stopwatch.h"

#include <algorithm>
#include <cwchar>

#include <time.h>

namespace zeq::timing {

namespace {

double seconds(clockid_t clock) {
    timespec time{};
    ::clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

} // namespace

Stopwatch::Moment Stopwatch::now() { return {seconds(CLOCK_MONOTONIC), seconds(CLOCK_PROCESS_CPUTIME_ID)}; }

void Stopwatch::begin(std::wstring_view stage) {
    end();
    m_stage = stage;
    m_begin = now();
}

void Stopwatch::end() {
    if (m_stage.empty()) return;
    const Moment end = now();
    auto total = std::ranges::find(m_totals, m_stage, &Total::stage);
    if (total == m_totals.end()) total = m_totals.insert(total, {m_stage});
    total->wall += end.wall - m_begin.wall;
    total->cpu += end.cpu - m_begin.cpu;
    m_stage.clear();
}

std::wstring Stopwatch::text() const {
    constexpr double least = 0.01;
    std::wstring text;
    for (const Total& total : m_totals) {
        if (std::max(total.wall, total.cpu) < least) continue;
        wchar_t figures[64];
        std::swprintf(figures, std::size(figures), L" %.2f s (CPU %.2f s)", total.wall, total.cpu);
        text += (text.empty() ? L"" : L", ") + total.stage + figures;
    }
    return text;
}

} // namespace zeq::timing
