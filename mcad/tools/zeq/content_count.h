// What the mechanical and the display documents of an import hold, in numbers.
#pragma once

#include <cstdint>
#include <string>

#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq::host {

struct MechanicalCount {
    std::uint64_t annotations = 0;
    std::uint64_t views = 0;
    std::uint64_t captures = 0;
    std::uint64_t layers = 0;
    std::uint64_t materials = 0;
    std::uint64_t features = 0; ///< of machining
    std::uint64_t mappings = 0; ///< of entities to those of the source
    std::uint64_t entities = 0; ///< of which something is said
};
struct DisplayCount {
    std::uint64_t nodes = 0;
    std::uint64_t meshes = 0;
    std::uint64_t polygons = 0;
    std::uint64_t views = 0;
    std::uint64_t captures = 0;
};

class ContentCount {
public:
    /// Counts what is in an object; those of other kinds hold nothing.
    void add(const IExchangeObject& object);

    /// Two lines for people, each only if there is something to tell.
    std::string text() const;
    /// "mechanical":{...},"display":{...}
    std::string jsonMembers() const;

private:
    MechanicalCount m_mechanical;
    DisplayCount m_display;
};

} // namespace zeq::host
