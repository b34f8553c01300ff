// What a file holds that the kernel passes over.
#pragma once

#include <string>
#include <vector>

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>

namespace zeq::convexor {

/// A clause for each kind of shape in a STEP file that does not travel: "holds 4 tessellated faces, which do
/// not travel yet".
std::vector<std::wstring> passedOver(const Handle(Interface_InterfaceModel) & file);

/// The files that a STEP file refers to for shapes, without those that the reader has found and read.
std::vector<std::wstring> missingFiles(const STEPCAFControl_Reader& reader);

} // namespace zeq::convexor
