// One display face for each triangulated face.
#include "step/tessellated_shapes.h"

#include "step/drawing.h"
#include "step/owners.h"
#include "step/styles.h"

namespace zeq::step {

namespace {

constexpr std::string_view faceTypes[]{"TRIANGULATED_FACE", "COMPLEX_TRIANGULATED_FACE"};
constexpr const char* kind = "tessellated faces";

ExcColor colorOf(const StepFile& file, const Instance& face) {
    for (const std::string_view type : {"OVER_RIDING_STYLED_ITEM", "STYLED_ITEM"})
        for (const Instance& styled : face.users(type))
            if (const auto color = readStyle(file, styled).color) return *color;
    return {};
}

} // namespace

TessellatedShapes readTessellatedShapes(StepFile& file) {
    TessellatedShapes shapes;
    std::vector<Instance> faces;
    for (const std::string_view type : faceTypes)
        for (const Instance& face : file.structure().all(type))
            if (!file.at(attribute(face, "TESSELLATED_FACE", 1, 3))) faces.push_back(face);
    shapes.facesInFile = faces.size();
    if (faces.empty()) return shapes;
    Owners owners(file);
    for (const Instance& each : faces) {
        const Owners::Owner owner = owners.ofItem(each);
        Triangles triangles;
        if (!owner.product)
            file.losses().add(kind, L"it belongs to no part", each.number());
        else if (!readTriangles(file, each, {}, triangles))
            file.losses().add(kind, L"it has no triangles that can be read", each.number());
        if (!owner.product || triangles.corners.empty()) continue;
        const double unit = owner.millimeters > 0 ? owner.millimeters : 1;
        const ExcVisuFacePtr face = makeFace(triangles, unit / file.millimeters());
        face->setId(idOf(each));
        face->setMechanicalId(idOf(each));
        face->setColor(colorOf(file, each));
        ExcVisuMeshPtr& mesh = shapes.meshes[owner.product.number()];
        if (!mesh) {
            mesh = std::make_shared<ExcVisuMesh>();
            mesh->setId(idOf(owner.product));
            mesh->setGeometryType(EVisuGeometryType::part);
        }
        mesh->addFace(face);
        ++shapes.faces;
    }
    return shapes;
}

} // namespace zeq::step
