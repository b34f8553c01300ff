// Walks the product structure level by level.
#include "convexor/assembly_scene.h"

#include <deque>
#include <unordered_map>

#include "convexor/scene_node.h"

namespace zeq::convexor {

ExcVisualizationDataPtr buildAssemblyScene(const ExcProductStructure& product, std::size_t most,
                                           std::size_t& leftOut) {
    std::unordered_map<std::uint64_t, const ExcBlock*> blocks;
    for (const ExcBlockPtr& block : product.blocks()) blocks.emplace(block->id(), block.get());

    struct Pending {
        ExcVisuNodePtr node;
        const std::vector<ExcBlockReferencePtr>& references;
    };
    const ExcVisuNodePtr root = makeNode(ExcVisuNode::EType::ROOT);
    root->setGroupName(product.productName());
    std::deque<Pending> pending{{root, product.rootBlockReferences()}};
    std::size_t count = 0;
    leftOut = 0;
    for (; !pending.empty(); pending.pop_front())
        for (const ExcBlockReferencePtr& reference : pending.front().references) {
            if (count == most) {
                ++leftOut;
                continue;
            }
            ++count;
            const ExcVisuNodePtr group =
                makeNode(ExcVisuNode::EType::GROUP, {reference->color(), reference->isHidden()});
            group->setGroupName(reference->name());
            group->setTransformation(std::make_shared<ExcTransformation>(reference->transformation()));
            pending.front().node->addChildNode(group);
            if (const auto block = blocks.find(reference->blockId()); block != blocks.end())
                pending.push_back({group, block->second->blockReferences()});
        }

    auto scene = std::make_shared<ExcVisualizationData>();
    scene->setUnits(product.units());
    scene->addSceneRootNode(root);
    return scene;
}

} // namespace zeq::convexor
