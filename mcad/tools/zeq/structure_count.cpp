// A depth-first walk with a stack of its own; each block is counted once and then remembered.
#include "zeq/structure_count.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace zeq::host {

namespace {

using References = std::vector<ExcBlockReferencePtr>;

std::uint64_t saturatingSum(std::uint64_t a, std::uint64_t b) { return a + std::min(b, mostInstances - a); }

/// What is below one block, or below the root.
struct Subtree {
    std::uint64_t instances = 0;
    std::uint64_t depth = 0;
    bool isOpen = true; ///< the walk is still inside
};

struct Level {
    const References& references;
    std::size_t next;
    Subtree* total;
};

} // namespace

StructureCount count(const ExcProductStructure& structure) {
    StructureCount result;
    Subtree root;
    std::unordered_map<std::uint64_t, Subtree> seen; // nodes stay where they are
    std::vector<Level> path{{structure.rootBlockReferences(), 0, &root}};
    while (!path.empty()) {
        Level& level = path.back();
        if (level.next == level.references.size()) {
            level.total->isOpen = false;
            path.pop_back();
            continue;
        }
        const std::uint64_t id = level.references[level.next]->blockId();
        const ExcBlockPtr block = structure.getBlockById(id);
        Subtree below;
        if (block) {
            const auto [entry, isNew] = seen.try_emplace(id);
            if (isNew) { // counted when the walk comes back to this reference
                path.push_back({block->blockReferences(), 0, &entry->second});
                continue;
            }
            if (!entry->second.isOpen) below = entry->second;
            result.cyclic |= entry->second.isOpen;
        } else {
            ++result.dangling;
        }
        ++level.next;
        level.total->instances = saturatingSum(level.total->instances, saturatingSum(1, below.instances));
        level.total->depth = std::max(level.total->depth, below.depth + 1);
    }
    result.instances = root.instances;
    result.depth = root.depth;
    for (const ExcBlockPtr& block : structure.blocks()) {
        ++result.blocks;
        if (block->isPart()) ++result.parts;
        if (!seen.contains(block->id())) ++result.unused;
    }
    return result;
}

} // namespace zeq::host
