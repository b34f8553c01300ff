// The products of a STEP file and how they use each other, before any kernel has read it.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

#include "step/step_file.h"

namespace zeq::step {

struct Products {
    struct Product {
        Instance definition; ///< a PRODUCT_DEFINITION
        bool isAssembly;     ///< whether it uses others
        bool isRoot;         ///< whether none uses it
    };

    struct Usage {
        Instance occurrence; ///< a NEXT_ASSEMBLY_USAGE_OCCURRENCE
        Instance user;       ///< a PRODUCT_DEFINITION
        Instance part;       ///< another, which it uses
    };

    std::vector<Product> all;  ///< in the order of the blocks: level by level from the roots
    std::vector<Usage> usages; ///< in the order of the file
    std::map<std::uint64_t, std::uint64_t> blockIds; ///< of the numbers of the definitions, from 1

    /// 0 for one that is not there.
    std::uint64_t blockId(std::uint64_t definition) const;
};

/// Products without shape that are used nowhere, such as those of documents, are left out.
Products readProducts(const StepFile& file);

/// The millimetres of the unit of length that all shapes of the file agree on; 0 if there is none, or they disagree.
double commonLengthUnit(const part21::ExchangeStructure& file);

} // namespace zeq::step
