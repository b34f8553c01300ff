// What annotations say, as a drawing would: values with their tolerances, and feature control frames.
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/units.h"
#include "zeq_api/exchange_pmi/annotation_view.h"

namespace zeq::pmi {

/// What the text of an annotation depends on beside itself.
struct Context {
    using EUnit = ExcPMIDimension::EDimUnit;
    EUnit unit = EUnit::none;                    ///< of lengths; those in another unit name it
    std::map<std::wstring, std::wstring> labels; ///< of datums and datum targets, by their identifiers
};

/// All annotations of a view: sizes, tolerances, datums, their targets, and the rest.
std::vector<ExcPMIAnnotationPtr> annotationsOf(const ExcPMIAnnotationView& view);

/// What the annotations of one part have in common.
/// @param unit of the model; where no dimension has it, that of the first length counts
Context contextOf(std::span<const ExcPMIAnnotationPtr> annotations, ELengthUnitType unit);

/// "mm"; empty for `none`.
std::string unitName(ExcPMIDimension::EDimUnit unit);

/// "diameter", "position", "datum target", "flag note".
std::string kindOf(const ExcPMIAnnotation& annotation);

/// The content of an annotation in printable UTF-8: "⌀35 +0.2/0", "[2]", "⌖ | ⌀0.2 Ⓜ | A | B Ⓜ | C". Rows of a frame
/// and lines of a text are separated by line feeds. Lengths have as many decimals as their dimension asks for, or nine
/// digits at most.
std::string valueText(const ExcPMIAnnotation& annotation, const Context& context);

} // namespace zeq::pmi
