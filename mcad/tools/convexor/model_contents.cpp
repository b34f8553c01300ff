// Counts entities by the names of their types: of most, the kernel knows no more than that.
#include "convexor/model_contents.h"

#include <algorithm>
#include <string_view>

#include <NCollection_DataMap.hxx>
#include <STEPCAFControl_ExternFile.hxx>
#include <StepData_UndefinedEntity.hxx>
#include <StepShape_FaceBasedSurfaceModel.hxx>
#include <StepShape_ManifoldSolidBrep.hxx>
#include <StepShape_ShellBasedSurfaceModel.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <Transfer_Binder.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include "convexor/text.h"

namespace zeq::convexor {

namespace {

struct Kind {
    std::vector<std::string_view> types; ///< as the file has them, or the class that the kernel has for them
    const wchar_t* singular;
    const wchar_t* plural;
};

const Kind kinds[]{
    {{"StepShape_BooleanResult", "IGESSolid_BooleanTree"}, L"Boolean operation", L"Boolean operations"},
    {{"StepShape_Block", "StepShape_RightAngularWedge", "StepShape_Sphere", "StepShape_Torus",
      "StepShape_RightCircularCone", "StepShape_RightCircularCylinder", "IGESSolid_Block",
      "IGESSolid_RightAngularWedge", "IGESSolid_Sphere", "IGESSolid_Torus", "IGESSolid_ConeFrustum",
      "IGESSolid_Cylinder", "IGESSolid_Ellipsoid"},
     L"primitive solid",
     L"primitive solids"},
    {{"StepShape_ExtrudedAreaSolid", "StepShape_RevolvedAreaSolid", "StepShape_ExtrudedFaceSolid",
      "StepShape_RevolvedFaceSolid", "IGESSolid_SolidOfRevolution", "IGESSolid_SolidOfLinearExtrusion"},
     L"swept solid",
     L"swept solids"},
    {{"IGESAppli_FiniteElement"}, L"finite element", L"finite elements"},
    {{"IGESBasic_ExternalRefFile", "IGESBasic_ExternalRefFileIndex", "IGESBasic_ExternalRefFileName",
      "IGESBasic_ExternalRefName", "IGESBasic_ExternalRefLibName"},
     L"reference to another file",
     L"references to other files"},
};

std::string_view typeOf(const Handle(Standard_Transient) & entity) {
    if (const auto undefined = Handle(StepData_UndefinedEntity)::DownCast(entity))
        return undefined->StepType();
    return entity->DynamicType()->Name();
}

} // namespace

std::vector<std::wstring> passedOver(const Handle(Interface_InterfaceModel) & file) {
    std::vector<std::size_t> counts(std::size(kinds));
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const std::string_view type = typeOf(file->Value(i));
        for (std::size_t kind = 0; kind < counts.size(); ++kind)
            counts[kind] += std::count(kinds[kind].types.begin(), kinds[kind].types.end(), type);
    }
    std::vector<std::wstring> result;
    for (std::size_t kind = 0; kind < counts.size(); ++kind)
        if (counts[kind] == 1)
            result.push_back(L"holds a " + std::wstring(kinds[kind].singular) +
                             L", which does not travel yet");
        else if (counts[kind] > 1)
            result.push_back(L"holds " + std::to_wstring(counts[kind]) + L" " + kinds[kind].plural +
                             L", which do not travel yet");
    return result;
}

ReferredFiles referredFiles(const STEPCAFControl_Reader& reader) {
    ReferredFiles result;
    using Files = NCollection_DataMap<TCollection_AsciiString, Handle(STEPCAFControl_ExternFile)>;
    for (Files::Iterator file(reader.ExternFiles()); file.More(); file.Next())
        if (file.Value().IsNull() || file.Value()->GetLoadStatus() != IFSelect_RetDone)
            result.missing.push_back(wideText(file.Key().ToCString()));
        else
            result.sessions.push_back(file.Value()->GetWS());
    return result;
}

int addUnreferenced(STEPCAFControl_Reader& reader, const Handle(TDocStd_Document) & document) {
    const Handle(XSControl_WorkSession) session = reader.ChangeReader().WS();
    const Handle(XSControl_TransferReader) transfer = session->TransferReader();
    const Handle(Interface_InterfaceModel) file = session->Model();
    const auto shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    int added = 0;
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const Handle(Standard_Transient) entity = file->Value(i);
        if (!entity->IsKind(STANDARD_TYPE(StepShape_ManifoldSolidBrep)) &&
            !entity->IsKind(STANDARD_TYPE(StepShape_ShellBasedSurfaceModel)) &&
            !entity->IsKind(STANDARD_TYPE(StepShape_FaceBasedSurfaceModel)))
            continue;
        if (!transfer->TransientProcess()->Find(entity).IsNull()) continue; // the kernel has tried
        if (transfer->TransferOne(entity) == 0) continue;
        const TopoDS_Shape shape = transfer->ShapeResult(entity);
        if (shape.IsNull()) continue;
        const TDF_Label label = shapes->AddShape(shape, Standard_False);
        TDataStd_Name::Set(label, TCollection_ExtendedString(file->StringLabel(entity)->ToCString()));
        ++added;
    }
    return added;
}

} // namespace zeq::convexor
