// Whether the faces and edges that other data name are in the exact geometry.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "platform/acis/acis.h"
#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::host {

/// Takes the data of all blocks in any order, and compares the numbers of faces and edges in the end.
class EntityLinks {
public:
    /// The numbers that tag the entities, or their places where nothing tags them.
    void addGeometry(std::uint64_t blockId, const ENTITY_LIST& entities);
    /// What annotations, layers, materials and entity data are linked with.
    void add(const ExcBlockMechanicalData& data);
    /// The exact faces and edges that those of meshes name.
    void add(const ExcBlockVisualization& data);

    /// What names something that is not there, in sentences. Blocks whose geometry did not come are left out.
    std::vector<std::string> faults() const;

private:
    /// Their numbers, in any order and as often as they were told: there may be millions.
    struct Entities {
        std::vector<std::uint64_t> faces;
        std::vector<std::uint64_t> edges;

        void add(const ExcEntity* entity);
    };
    struct Block {
        bool hasGeometry = false;
        Entities geometry;
        Entities linked;
        Entities shown;
    };

    std::map<std::uint64_t, Block> m_blocks;
};

} // namespace zeq::host
