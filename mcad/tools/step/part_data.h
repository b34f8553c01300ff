// What a STEP file says of its parts beside shape and annotations: layers, materials, properties, coordinate systems,
// and names, visibility and lines of single faces and edges.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "step/step_file.h"
#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_mechanical/entity_data.h"
#include "zeq_api/exchange_mechanical/mechanical_misc_data.h"

namespace zeq::step {

/// Of one product.
struct PartData {
    ExcMechanicalMiscDataPtr misc; ///< null when the file says nothing of the kind
    ExcEntityDataPtr entities;     ///< likewise
};

struct PartContents {
    std::map<std::uint64_t, PartData> parts; ///< by the numbers of the PRODUCT_DEFINITIONs
    /// The instances behind what the file holds, by kind: "materials", "layers", "colours", "properties". One number
    /// for each material of a part or body, layer of a part, colour and property. Where several instances make one
    /// such thing, the first.
    std::map<std::string, std::vector<std::uint64_t>> inFile;
    /// Of faces and edges that have one of their own, and of edges whose curves have; by their numbers.
    std::unordered_map<std::uint64_t, ExcColor> colors;
};

/// What cannot travel is told by the losses of the file. Lengths, areas, volumes and angles are in the unit that
/// travels, other quantities in the units that the file gives them in.
/// @param lengthSymbol of the unit of length that travels: "mm"
PartContents readPartData(StepFile& file, const std::wstring& lengthSymbol);

} // namespace zeq::step
