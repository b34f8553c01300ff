// A way through scenes that nest as deep as they like.
#pragma once

#include <utility>
#include <vector>

#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::host {

/// Calls `visit(node, isAnnotation)` for every node of a scene; annotations are the nodes that show one, and everything
/// below them or below a node that gathers them.
template <class Visit>
void forEachNode(const ExcVisualizationData& scene, const Visit& visit) {
    std::vector<std::pair<const ExcVisuNode*, bool>> pending;
    const auto wait = [&pending](const std::vector<ExcVisuNodePtr>& nodes, bool areAnnotations) {
        for (const ExcVisuNodePtr& node : nodes) pending.emplace_back(node.get(), areAnnotations);
    };
    wait(scene.sceneRootNodes(), false);
    while (!pending.empty()) {
        const ExcVisuNode& node = *pending.back().first;
        const bool isAnnotation =
            pending.back().second || node.pmi() || node.type() == ExcVisuNode::EType::PMI;
        pending.pop_back();
        visit(node, isAnnotation);
        wait(node.childNodes(), isAnnotation);
    }
}

} // namespace zeq::host
