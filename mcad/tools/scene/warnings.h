// What cannot be shown, told in bounded length.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zeq::scene {

/// Collects sentences; of very many only the first, and how many more there are.
class Warnings {
public:
    void add(std::string warning);
    std::vector<std::string> take();

private:
    std::vector<std::string> m_warnings;
    std::size_t m_more = 0;
};

} // namespace zeq::scene
