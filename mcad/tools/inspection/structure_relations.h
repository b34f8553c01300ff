// What stands between the blocks and references of one product structure.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "inspection/linter.h"

namespace zeq::inspection {

/// The member by which something says to which block it belongs, or which it places.
inline constexpr const wchar_t* blockIdKey = L"block_id";

/// That there is no such block.
std::string noBlock(std::uint64_t id);

/// Looks at a placement and at the identity of an instance.
/// @param pointer where it stands; those of findings begin with it
void checkReference(const JsonValue& reference, const std::string& pointer, const Report& report);
/// Looks at the references of a block.
void checkBlock(const JsonValue& block, const std::string& pointer, const Report& report);
/// Looks at a product structure: ids, where references lead, cycles, and blocks that nothing leads to.
/// @return the ids of its blocks
std::vector<std::uint64_t> checkStructure(const JsonValue& structure, const std::string& pointer,
                                          const Report& report);

} // namespace zeq::inspection
