// What a block and a product do alike with their references. Internal.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "mv_cvx/logger.h"
#include "zeq_api/exchange_structure/block.h"

namespace zeq::detail {

/// Appends a reference; null is refused with that warning.
inline void appendReference(std::vector<ExcBlockReferencePtr>& list, ExcBlockReferencePtr reference,
                            const char* warning) {
    if (reference)
        list.push_back(std::move(reference));
    else
        ZEQ_LOG(Warning) << warning;
}

/// Removes the first reference that places the block.
inline void removeReference(std::vector<ExcBlockReferencePtr>& list, std::uint64_t blockId) {
    const auto found =
        std::find_if(list.begin(), list.end(), [blockId](const auto& r) { return r->blockId() == blockId; });
    if (found != list.end()) list.erase(found);
}

} // namespace zeq::detail
