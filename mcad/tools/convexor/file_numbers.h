// Which entity of the file became which shape.
#pragma once

#include <cstdint>
#include <unordered_map>

#include <NCollection_DataMap.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <XCAFDoc_DataMapOfShapeLabel.hxx>
#include <XSControl_WorkSession.hxx>

#include "convexor/numbering.h"

namespace zeq::convexor {

/// Adds what the faces and edges that a session has translated are in its file: those of a face or an edge
/// entity, and those that another entity has become alone, as a curve that bounds no face.
void addOrigins(const Handle(XSControl_WorkSession) & session, Origins& origins);

/// The numbers of the product definitions of a STEP file, by the labels of the parts and assemblies that they
/// have become.
/// @param labels of the shapes that the reader has put into the document
NCollection_DataMap<TDF_Label, int, TDF_LabelMapHasher>
productDefinitions(const Handle(XSControl_WorkSession) & session, const XCAFDoc_DataMapOfShapeLabel& labels);

/// The millimetres of the unit of length of each representation in a STEP file, as the kernel converts it.
std::unordered_map<std::uint64_t, double> lengthFactors(const Handle(XSControl_WorkSession) & session);

} // namespace zeq::convexor
