// How a STEP file has things drawn: colours, lines, visibility.
#pragma once

#include <optional>
#include <unordered_set>

#include "step/step_file.h"
#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_visualization/attributes.h"

namespace zeq::step {

struct Style {
    std::optional<ExcColor> color;
    double width = 0; ///< of lines, in the unit of the file; 0 for none said
    ExcVisuLineAttribute::ELineStyle line = ExcVisuLineAttribute::ELineStyle::undefined;
    std::wstring font; ///< of texts; empty for none said
};

/// What the styles of a STYLED_ITEM or one of its kinds, such as an annotation occurrence, say together.
Style readStyle(const StepFile& file, const Instance& styledItem);

/// The style of a predefined curve font: "continuous", "dashed", "chain" ... (ISO 10303-46).
ExcVisuLineAttribute::ELineStyle lineStyle(const std::wstring& curveFont);

/// What the file makes invisible: the numbers of the items of its INVISIBILITY instances.
std::unordered_set<std::uint64_t> readInvisible(const StepFile& file);

} // namespace zeq::step
