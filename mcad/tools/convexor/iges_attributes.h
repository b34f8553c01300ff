// What the directory of an IGES file says of its entities beside their shape.
#pragma once

#include <string>
#include <unordered_map>

#include <IGESData_IGESModel.hxx>

#include "zeq_api/exchange_mechanical/mechanical_data.h"

namespace zeq::convexor {

/// Of one entity; what is not said is 0 or empty.
struct IgesAttributes {
    using ELineType = ExcTopologicalEntityInformation::ELineType;
    int level = 0;
    std::wstring name;
    bool isBlanked = false;
    ELineType lineType = ELineType::unknown;
    double lineWeight = 0; ///< in the unit of the file
};

/// By the numbers of the directory entries; only those that say something.
using IgesDirectory = std::unordered_map<int, IgesAttributes>;
IgesDirectory readIgesDirectory(const Handle(IGESData_IGESModel) & file);

/// Adds to the data of a part a layer for each level, and the names, visibility and lines of its faces and edges.
/// @param mapping what these are in the file
void addIgesData(const IgesDirectory& directory, const ExcMappingData& mapping, ExcBlockMechanicalData& part);

} // namespace zeq::convexor
