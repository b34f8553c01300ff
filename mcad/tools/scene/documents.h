// The documents that a scene is made from, collected in whatever order they come.
#pragma once

#include <memory>
#include <vector>

#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_structure/product_structure.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::scene {

struct Documents {
    /// Keeps an object that a scene is made from, and no other.
    void add(const std::shared_ptr<IExchangeObject>& object);

    std::shared_ptr<const ExcProductStructure> structure; ///< the last one
    std::vector<std::shared_ptr<const ExcBlockVisualization>> blocks;
    std::vector<std::shared_ptr<const ExcRootAssemblyVisualization>> roots;
    std::vector<std::shared_ptr<const ExcBlockMechanicalData>> blockData;
    std::vector<std::shared_ptr<const ExcRootMechanicalData>> rootData;
};

} // namespace zeq::scene
