// Sorts documents by their classes.
#include "scene/documents.h"

namespace zeq::scene {

void Documents::add(const std::shared_ptr<IExchangeObject>& object) {
    if (auto product = std::dynamic_pointer_cast<ExcProductStructure>(object))
        structure = std::move(product);
    else if (auto block = std::dynamic_pointer_cast<ExcBlockVisualization>(object))
        blocks.push_back(std::move(block));
    else if (auto root = std::dynamic_pointer_cast<ExcRootAssemblyVisualization>(object))
        roots.push_back(std::move(root));
    else if (auto data = std::dynamic_pointer_cast<ExcBlockMechanicalData>(object))
        blockData.push_back(std::move(data));
    else if (auto rootMechanical = std::dynamic_pointer_cast<ExcRootMechanicalData>(object))
        rootData.push_back(std::move(rootMechanical));
}

} // namespace zeq::scene
