// The assembly tree as text.
#pragma once

#include "zeq/output.h"
#include "zeq/structure_count.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

struct TreeStyle {
    bool color = false;
    /// Show every line; otherwise their number and the depth of the tree are bounded.
    bool all = false;
};

/// One line for the product, then one for each instance, below the instance that contains it.
void printTree(const ExcProductStructure& structure, const StructureCount& figures, const TreeStyle& style,
               Output& output);

} // namespace zeq::host
