// How blocks are called in what zeq prints.
#pragma once

#include <cstdint>
#include <string>

#include "text/text.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

/// "3  Plate", or "3  (unnamed)"; without a structure the number alone.
inline std::string blockName(std::uint64_t id, const ExcProductStructure* structure) {
    std::string text = std::to_string(id);
    if (!structure) return text;
    const ExcBlockPtr block = structure->getBlockById(id);
    return text + "  " + (block && !block->name().empty() ? text::printable(block->name()) : "(unnamed)");
}

} // namespace zeq::host
