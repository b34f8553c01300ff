// Changes are collected for the whole part, so that faces still share their edges afterwards.
#include "convexor/geometry_mending.h"

#include <BRepBuilderAPI_Copy.hxx>
#include <ShapeBuild_ReShape.hxx>
#include <ShapeFix_Face.hxx>
#include <Standard_Failure.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

namespace zeq::convexor {

MendedPart mend(const TopoDS_Shape& part, const Numbering& numbering,
                const std::vector<Draft::Loss>& losses) {
    try {
        BRepBuilderAPI_Copy copy(part, false);
        const Handle(ShapeBuild_ReShape) changes = new ShapeBuild_ReShape;
        for (const Draft::Loss& loss : losses) {
            const TopoDS_Shape faces = changes->Apply(copy.ModifiedShape(loss.shape));
            for (TopExp_Explorer face(faces, TopAbs_FACE); face.More(); face.Next()) {
                const Handle(ShapeFix_Face) healing = new ShapeFix_Face(TopoDS::Face(face.Current()));
                healing->SetContext(changes);
                healing->Perform();
            }
        }
        const auto mended = [&](const TopoDS_Shape& original) {
            return changes->Apply(copy.ModifiedShape(original));
        };
        return {changes->Apply(copy.Shape()), numbering.onCopy(mended)};
    } catch (const Standard_Failure&) {
        return {part, numbering};
    }
}

} // namespace zeq::convexor
