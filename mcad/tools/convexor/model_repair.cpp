// Walks all entities of a file that is in memory.
#include "convexor/model_repair.h"

#include <unordered_set>
#include <vector>

#include <IGESBasic_SubfigureDef.hxx>
#include <IGESData_HArray1OfIGESEntity.hxx>
#include <StepShape_ConnectedFaceSet.hxx>
#include <StepShape_Edge.hxx>
#include <StepShape_EdgeLoop.hxx>
#include <StepShape_Face.hxx>
#include <StepShape_FaceBound.hxx>
#include <StepShape_HArray1OfFace.hxx>
#include <StepShape_HArray1OfFaceBound.hxx>
#include <StepShape_HArray1OfOrientedEdge.hxx>
#include <StepShape_OrientedEdge.hxx>
#include <StepShape_Vertex.hxx>
#include <TCollection_HAsciiString.hxx>

#include "convexor/text.h"

namespace zeq::convexor {

namespace {

/// The vertex where a use of an edge begins or ends; null if it is not there.
Handle(StepShape_Vertex) endOf(const Handle(StepShape_OrientedEdge) & use, bool isStart) {
    if (use.IsNull() || use->EdgeElement().IsNull()) return {};
    return isStart == static_cast<bool>(use->Orientation()) ? use->EdgeElement()->EdgeStart()
                                                            : use->EdgeElement()->EdgeEnd();
}

/// Gives an edge of a loop that lacks an end the one where its neighbour begins or ends.
void joinToNeighbours(const Handle(StepShape_EdgeLoop) & loop) {
    const int count = loop->NbEdgeList();
    for (int i = 1; i <= count; ++i) {
        const Handle(StepShape_OrientedEdge) use = loop->EdgeListValue(i);
        if (use.IsNull() || use->EdgeElement().IsNull()) continue;
        const auto set = [&](bool isStart, const Handle(StepShape_Vertex) & vertex) {
            if (isStart == static_cast<bool>(use->Orientation()))
                use->EdgeElement()->SetEdgeStart(vertex);
            else
                use->EdgeElement()->SetEdgeEnd(vertex);
        };
        if (endOf(use, true).IsNull()) set(true, endOf(loop->EdgeListValue(i > 1 ? i - 1 : count), false));
        if (endOf(use, false).IsNull()) set(false, endOf(loop->EdgeListValue(i < count ? i + 1 : 1), true));
    }
}

/// Whether the use of an edge and what it needs is there.
bool hasEnds(const Handle(StepShape_OrientedEdge) & use) {
    if (use.IsNull() || use->EdgeElement().IsNull()) return false;
    return !use->EdgeElement()->EdgeStart().IsNull() && !use->EdgeElement()->EdgeEnd().IsNull();
}
bool hasLoop(const Handle(StepShape_FaceBound) & bound) {
    if (bound.IsNull() || bound->Bound().IsNull()) return false;
    const auto loop = Handle(StepShape_EdgeLoop)::DownCast(bound->Bound());
    return loop.IsNull() || loop->NbEdgeList() > 0;
}

/// The values of an array for which something holds; null if that is none of them.
template <class Array, class Holds>
opencascade::handle<Array> filtered(const opencascade::handle<Array>& all, const Holds& holds) {
    std::vector<typename Array::value_type> kept;
    for (const auto& each : all->Array1())
        if (holds(each)) kept.push_back(each);
    if (kept.empty()) return {};
    opencascade::handle<Array> result = new Array(1, static_cast<int>(kept.size()));
    for (std::size_t i = 0; i < kept.size(); ++i) result->SetValue(static_cast<int>(i) + 1, kept[i]);
    return result;
}

} // namespace

int dropMissing(const Handle(Interface_InterfaceModel) & file, Reporter& reporter) {
    int dropped = 0;
    const auto report = [&](const Handle(Standard_Transient) & entity, const wchar_t* text) {
        ++dropped;
        reporter.log(ELogEventLevelType::error,
                     L"Error at " + wideText(file->StringLabel(entity)->ToCString()) + L": " + text);
    };
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const auto loop = Handle(StepShape_EdgeLoop)::DownCast(file->Value(i));
        if (loop.IsNull() || loop->NbEdgeList() == 0) continue;
        auto held = filtered(loop->EdgeList(), hasEnds);
        if (!held.IsNull() && held->Length() == loop->NbEdgeList()) continue;
        joinToNeighbours(loop);
        held = filtered(loop->EdgeList(), hasEnds);
        loop->SetEdgeList(held);
        report(loop, L"an edge of the boundary, or an end of it, is not in the file");
    }
    std::unordered_set<const Standard_Transient*> unbounded;
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const auto face = Handle(StepShape_Face)::DownCast(file->Value(i));
        if (face.IsNull() || face->NbBounds() == 0) continue;
        const auto held = filtered(face->Bounds(), hasLoop);
        if (!held.IsNull() && held->Length() == face->NbBounds()) continue;
        face->SetBounds(held);
        if (held.IsNull()) unbounded.insert(face.get());
        report(face, L"a boundary of the face is not in the file");
    }
    for (int i = 1; i <= file->NbEntities() && !unbounded.empty(); ++i) {
        const auto shell = Handle(StepShape_ConnectedFaceSet)::DownCast(file->Value(i));
        if (shell.IsNull() || shell->NbCfsFaces() == 0) continue;
        const auto held = filtered(shell->CfsFaces(), [&](const Handle(StepShape_Face) & face) {
            return !unbounded.contains(face.get());
        });
        if (held.IsNull() || held->Length() == shell->NbCfsFaces()) continue;
        shell->SetCfsFaces(held);
        report(shell, L"faces without a boundary are left out of the shell");
    }
    return dropped;
}

int nameGroups(const Handle(IGESData_IGESModel) & file, Reporter& reporter) {
    int named = 0;
    for (int i = 1; i <= file->NbEntities(); ++i) {
        const auto group = Handle(IGESBasic_SubfigureDef)::DownCast(file->Entity(i));
        if (group.IsNull() || !group->Name().IsNull()) continue;
        ++named;
        reporter.log(ELogEventLevelType::error, L"Error at " +
                                                    wideText(file->StringLabel(group)->ToCString()) +
                                                    L": the group has no name");
        Handle(IGESData_HArray1OfIGESEntity) members;
        if (group->NbEntities() > 0) members = new IGESData_HArray1OfIGESEntity(1, group->NbEntities());
        for (int member = 1; member <= group->NbEntities(); ++member)
            members->SetValue(member, group->AssociatedEntity(member));
        group->Init(group->Depth(), new TCollection_HAsciiString(""), members);
    }
    return named;
}

} // namespace zeq::convexor
