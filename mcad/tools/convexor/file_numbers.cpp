// Walks what the kernel has bound to the entities of a file.
#include "convexor/file_numbers.h"

#include <algorithm>

#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <STEPControl_ActorRead.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepData_GlobalFactors.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_Representation.hxx>
#include <StepRepr_RepresentationContext.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_FaceSurface.hxx>
#include <TopExp_Explorer.hxx>
#include <TransferBRep.hxx>
#include <Transfer_TransientProcess.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XSControl_TransferReader.hxx>

namespace zeq::convexor {

namespace {

/// An entity's number in the file, 0 if it has none.
int numberOf(const Handle(Standard_Transient) & entity, const Handle(Interface_InterfaceModel) & file) {
    if (const auto step = Handle(StepData_StepModel)::DownCast(file)) return step->IdentLabel(entity);
    const auto iges = Handle(IGESData_IGESModel)::DownCast(file);
    const auto directed = Handle(IGESData_IGESEntity)::DownCast(entity);
    return iges.IsNull() || directed.IsNull() ? 0 : iges->DNum(directed);
}

/// What the entity stands for by its type; TopAbs_SHAPE if that is neither a face nor an edge.
TopAbs_ShapeEnum kindOf(const Handle(Standard_Transient) & entity) {
    if (entity->IsKind(STANDARD_TYPE(StepShape_FaceSurface))) return TopAbs_FACE;
    if (entity->IsKind(STANDARD_TYPE(StepShape_EdgeCurve))) return TopAbs_EDGE;
    const auto iges = Handle(IGESData_IGESEntity)::DownCast(entity);
    if (iges.IsNull()) return TopAbs_SHAPE;
    switch (iges->TypeNumber()) {
    case 143: // bounded surface
    case 144: // trimmed surface
    case 510: // face
        return TopAbs_FACE;
    default:
        return TopAbs_SHAPE;
    }
}

template <class Work>
void forEachResult(const Handle(XSControl_WorkSession) & session, const Work& work) {
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    for (int i = 1; i <= process->NbMapped(); ++i)
        if (const TopoDS_Shape shape = TransferBRep::ShapeResult(process->MapItem(i)); !shape.IsNull())
            work(process->Mapped(i), shape);
}

} // namespace

void addOrigins(const Handle(XSControl_WorkSession) & session, Origins& origins) {
    const Handle(Interface_InterfaceModel) file = session->Model();
    const auto add = [&](const Handle(Standard_Transient) & entity, const TopoDS_Shape& shape) {
        if (const int number = numberOf(entity, file))
            origins.add(shape, {number, entity->DynamicType()->Name()});
    };
    // A face entity comes before an instance of it, which has the same face for its result.
    forEachResult(session, [&](const Handle(Standard_Transient) & entity, const TopoDS_Shape& shape) {
        const TopAbs_ShapeEnum kind = kindOf(entity);
        if (kind == TopAbs_SHAPE) return;
        for (TopExp_Explorer each(shape, kind); each.More(); each.Next()) add(entity, each.Current());
    });
    forEachResult(session, [&](const Handle(Standard_Transient) & entity, const TopoDS_Shape& shape) {
        if (shape.ShapeType() == TopAbs_FACE || shape.ShapeType() == TopAbs_EDGE) add(entity, shape);
    });
    for (int i = 1; i <= file->NbEntities(); ++i)
        origins.setLargest(std::max(origins.largest(), numberOf(file->Value(i), file)));
}

NCollection_DataMap<TDF_Label, int, TDF_LabelMapHasher>
productDefinitions(const Handle(XSControl_WorkSession) & session, const XCAFDoc_DataMapOfShapeLabel& labels) {
    NCollection_DataMap<TDF_Label, int, TDF_LabelMapHasher> result;
    forEachResult(session, [&](const Handle(Standard_Transient) & entity, const TopoDS_Shape& shape) {
        if (!entity->IsKind(STANDARD_TYPE(StepBasic_ProductDefinition))) return;
        const TDF_Label* label = labels.Seek(shape);
        if (!label) label = labels.Seek(shape.Located(TopLoc_Location()));
        if (label) result.Bind(*label, numberOf(entity, session->Model()));
    });
    return result;
}

std::unordered_map<std::uint64_t, double> lengthFactors(const Handle(XSControl_WorkSession) & session) {
    const Handle(Interface_InterfaceModel) file = session->Model();
    const Handle(Transfer_TransientProcess) process = session->TransferReader()->TransientProcess();
    std::unordered_map<std::uint64_t, double> result;
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const auto representation = Handle(StepRepr_Representation)::DownCast(file->Value(i));
        if (representation.IsNull() || representation->ContextOfItems().IsNull()) continue;
        STEPControl_ActorRead().PrepareUnits(representation, process);
        result.emplace(static_cast<std::uint64_t>(numberOf(representation, file)),
                       StepData_GlobalFactors::Intance().LengthFactor());
    }
    return result;
}

} // namespace zeq::convexor
