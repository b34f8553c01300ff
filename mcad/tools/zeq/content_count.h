// What the mechanical and the display documents of an import hold, in numbers.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::host {

struct MechanicalCount {
    std::uint64_t annotations = 0;
    std::uint64_t views = 0;
    std::uint64_t captures = 0;
    std::uint64_t layers = 0;
    std::uint64_t materials = 0;
    std::uint64_t properties = 0;
    std::uint64_t features = 0; ///< of machining
    std::uint64_t mappings = 0; ///< of entities to those of the source
    std::uint64_t entities = 0; ///< of which something is said
    std::uint64_t named = 0;    ///< of these, those with a name
    std::uint64_t hidden = 0;   ///< of these, those that are hidden
};
struct DisplayCount {
    std::uint64_t triangles = 0;
    std::uint64_t polygons = 0; ///< primitives that are no lists of triangles
    std::uint64_t faces = 0;    ///< but those of filled texts of annotations
    std::uint64_t edges = 0;    ///< of meshes and wires
    std::uint64_t points = 0;
    std::uint64_t annotations = 0;
    std::uint64_t meshes = 0;
    std::uint64_t nodes = 0;
    std::uint64_t views = 0;
    std::uint64_t captures = 0;
};

class ContentCount {
public:
    /// Counts what is in an object; those of other kinds hold nothing.
    void add(const IExchangeObject& object);
    bool isEmpty() const { return m_isEmpty; }

    /// What a report of contents calls "semantic annotations", "graphical annotations", "views", "materials",
    /// "layers", "colours" and "properties".
    std::map<std::wstring, std::uint64_t> byKind() const;

    /// Two lines for people, each only if there is something to tell.
    std::string text() const;
    /// "mechanical":{...},"display":{...}
    std::string jsonMembers() const;

private:
    using BlockId = std::uint64_t; ///< 0 for the whole assembly
    using Color = std::tuple<int, int, int, int>;

    void addPMI(BlockId block, const ExcPMIData& pmi);
    void addMisc(BlockId block, const ExcMechanicalMiscData& misc);
    void addScene(BlockId block, const ExcVisualizationData& data);
    void addColor(const ExcColor& color);

    bool m_isEmpty = true;
    MechanicalCount m_mechanical;
    DisplayCount m_display;
    std::uint64_t m_semantic = 0;
    std::uint64_t m_graphical = 0;
    std::set<std::pair<BlockId, std::wstring>> m_layers;   ///< by name
    std::set<std::pair<BlockId, std::wstring>> m_captures; ///< by identifier, semantic and displayed ones
    std::set<Color> m_colors;
};

} // namespace zeq::host
