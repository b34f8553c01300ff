// What a file holds that the kernel passes over, and getting at some of it.
#pragma once

#include <string>
#include <vector>

#include <Interface_InterfaceModel.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDocStd_Document.hxx>
#include <XSControl_WorkSession.hxx>

namespace zeq::convexor {

/// A clause for each kind of shape in a file that does not travel: "holds 4 swept solids, which do not travel yet".
std::vector<std::wstring> passedOver(const Handle(Interface_InterfaceModel) & file);

/// The files that a STEP file refers to for shapes.
struct ReferredFiles {
    std::vector<Handle(XSControl_WorkSession)> sessions; ///< of those that the reader has found and read
    std::vector<std::wstring> missing;                   ///< names of the others
};
ReferredFiles referredFiles(const STEPCAFControl_Reader& reader);

/// Translates the solids and surface models of a STEP file that no part refers to, and adds them to the
/// document as parts of their own.
/// @return how many there are
int addUnreferenced(STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document);

} // namespace zeq::convexor
