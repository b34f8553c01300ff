// What annotations say, as a drawing would: values with their tolerances, and feature control frames.
#pragma once

#include <map>
#include <string>

#include "zeq_api/exchange_common/units.h"
#include "zeq_api/exchange_pmi/annotation_view.h"

namespace zeq::host {

/// What the text of an annotation depends on beside itself.
struct PMIContext {
    using EUnit = ExcPMIDimension::EDimUnit;
    EUnit unit = EUnit::none;                    ///< of lengths; those in another unit name it
    std::map<std::wstring, std::wstring> labels; ///< of datums and datum targets, by their identifiers
};

/// The unit of dimensions that a unit of length is; `none` for one that no dimension has.
ExcPMIDimension::EDimUnit dimensionUnit(ELengthUnitType unit);
/// "mm"; empty for `none`.
std::string unitName(ExcPMIDimension::EDimUnit unit);

/// "diameter", "position", "datum target", "flag note".
std::string kindOf(const ExcPMIAnnotation& annotation);

/// The content of an annotation in printable UTF-8: "⌀35 +0.2/0", "[2]", "⌖ | ⌀0.2 Ⓜ | A | B Ⓜ | C". Rows of a frame
/// and lines of a text are separated by line feeds. Lengths have as many decimals as their dimension asks for, or nine
/// digits at most.
std::string valueText(const ExcPMIAnnotation& annotation, const PMIContext& context);

} // namespace zeq::host
