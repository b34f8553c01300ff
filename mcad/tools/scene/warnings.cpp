// Counts what is too much.
#include "scene/warnings.h"

#include <utility>

namespace zeq::scene {

namespace {
constexpr std::size_t most = 100;
}

void Warnings::add(std::string warning) {
    if (m_warnings.size() < most)
        m_warnings.push_back(std::move(warning));
    else
        ++m_more;
}

std::vector<std::string> Warnings::take() {
    if (m_more > 0) m_warnings.push_back(std::to_string(m_more) + " more faults of display data");
    m_more = 0;
    return std::move(m_warnings);
}

} // namespace zeq::scene
