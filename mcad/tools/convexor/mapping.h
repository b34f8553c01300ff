// Tells the host what the faces and edges of a part are in the file.
#pragma once

#include <memory>

#include "convexor/numbering.h"
#include "zeq_api/exchange_mechanical/mechanical_sections.h"

namespace zeq::convexor {

/// A pair for each face and edge that comes from the file: its number, and "#1234", the instance or directory
/// entry, with the type in lower case ("advanced_face") for a description. Null if there is none.
std::shared_ptr<ExcMappingData> buildMapping(const TopoDS_Shape& part, const Numbering& numbering,
                                             const Origins& origins);

} // namespace zeq::convexor
