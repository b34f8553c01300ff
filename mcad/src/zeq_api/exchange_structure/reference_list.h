// What a block and a product do alike with their references. Internal.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "zeq_api/exchange_structure/block.h"

namespace zeq::detail {

/// Removes the first reference that places the block.
inline void removeReference(std::vector<ExcBlockReferencePtr>& list, std::uint64_t blockId) {
    const auto found =
        std::find_if(list.begin(), list.end(), [blockId](const auto& r) { return r->blockId() == blockId; });
    if (found != list.end()) list.erase(found);
}

} // namespace zeq::detail
