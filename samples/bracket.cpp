// What is annotated on the bracket, where it is drawn and from where it is seen.
#include "bracket.h"

#include <cmath>
#include <stdexcept>

#include <BRepAdaptor_Surface.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>

#include "parts.h"
#include "pmi_meaning.h"
#include "pmi_presentation.h"

namespace samples {

namespace {

/// The face of a shape that lies on a plane through a point across an axis, or on a cylinder about a line along an axis.
TopoDS_Face faceAt(const TopoDS_Shape& shape, GeomAbs_SurfaceType type, const gp_Pnt& point,
                   const gp_Dir& axis) {
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        TopoDS_Face face = TopoDS::Face(faces.Current());
        const BRepAdaptor_Surface surface(face);
        if (surface.GetType() != type) continue;
        const gp_Ax1 found = type == GeomAbs_Plane ? surface.Plane().Axis() : surface.Cylinder().Axis();
        const gp_Vec between(found.Location(), point);
        const double off = type == GeomAbs_Plane ? std::abs(between.Dot(gp_Vec(axis)))
                                                 : between.Crossed(gp_Vec(axis)).Magnitude();
        if (found.Direction().IsParallel(axis, 1e-6) && off < 1e-6) return face;
    }
    throw std::runtime_error("the bracket lacks a face");
}

enum Face {
    bottom,
    back,
    left,
    right,
    firstBore,
    secondBore,
    wallBore
};

std::vector<TopoDS_Shape> findFaces(const TopoDS_Shape& shape) {
    return {faceAt(shape, GeomAbs_Plane, {0, 0, 0}, gp::DZ()),
            faceAt(shape, GeomAbs_Plane, {0, 50, 0}, gp::DY()),
            faceAt(shape, GeomAbs_Plane, {0, 0, 0}, gp::DX()),
            faceAt(shape, GeomAbs_Plane, {80, 0, 0}, gp::DX()),
            faceAt(shape, GeomAbs_Cylinder, {20, 18, 0}, gp::DZ()),
            faceAt(shape, GeomAbs_Cylinder, {60, 18, 0}, gp::DZ()),
            faceAt(shape, GeomAbs_Cylinder, {40, 0, 32}, gp::DY())};
}

using Kind = PmiPresentation::Kind;
constexpr PmiPresentation::Look sizeLook{Kind::polylines, {20, 60, 140}};
constexpr PmiPresentation::Look toleranceLook{Kind::tessellated, {150, 30, 30}};
constexpr PmiPresentation::Look datumLook{Kind::tessellated, {30, 110, 60}};

void annotate(Instances& instances, const StepNumbers& file) {
    PmiMeaning meaning(instances, file);
    PmiPresentation presentation(instances, file);
    const std::vector<int>& faces = file.faces;
    meaning.material(
        {"EN AW-6082", "Aluminium alloy", 2.7}); // the kernel writes a unit that is none of a density

    const Datum a = meaning.datum("A", faces[bottom]);
    const Datum b = meaning.datum("B", faces[back]);
    const Datum c = meaning.datum("C", faces[left]);
    const int bores = meaning.feature("bores", {faces[firstBore], faces[secondBore]});
    const int wallBoreFeature = meaning.feature("bore of the wall", {faces[wallBore]});
    const int rightFeature = meaning.feature("right", {faces[right]});

    std::vector<int> inFront, above;
    // In front of the part, to be read from there.
    const gp_Ax2 front(gp_Pnt(0, -5, 0), -gp::DY(), gp::DX());
    const auto drawInFront = [&](const char* name, int said, const Drawing& drawing,
                                 const PmiPresentation::Look& look) {
        inFront.push_back(presentation.annotation(name, said, drawing, front, look));
    };
    Drawing length;
    length.dimension({0, 0}, {80, 0}, -26, U"79.8-80.1");
    drawInFront("length", meaning.distance(c.feature, rightFeature, 80, {79.8, 80.1}), length, sizeLook);

    Drawing height;
    height.dimension({80, 0}, {48, 32}, 98, U"", true);
    height.frame({100, 14}, {U"32"});
    drawInFront("height of the bore", meaning.exactDistance(a.feature, wallBoreFeature, 32), height,
                sizeLook);

    Drawing fit;
    fit.arrow({62, 62}, {40 + 8 * std::sqrt(0.5), 32 + 8 * std::sqrt(0.5)});
    fit.line({{62, 62}, {66, 62}});
    fit.text({67, 60.5}, U"⌀16 H7");
    drawInFront("fit", meaning.diameterWithFit(wallBoreFeature, 16, "H", "7"), fit, sizeLook);

    Drawing datumA;
    datumA.datum({20, 0}, {17, -14}, U'A');
    drawInFront("datum A", a.feature, datumA, datumLook);
    Drawing datumC;
    datumC.datum({0, 25}, {-15, 22.5}, U'C');
    drawInFront("datum C", c.feature, datumC, datumLook);

    Drawing flatness;
    flatness.frame({44, -16}, {U"⏥", U"0.05"});
    flatness.arrow({50, -11}, {50, 0});
    drawInFront("flatness", meaning.flatness(a.feature, 0.05), flatness, toleranceLook);

    Drawing note;
    note.text({-10, 62}, U"BREAK EDGES 0.3");
    drawInFront("edges", meaning.note(rightFeature, U"BREAK EDGES 0.3"), note, sizeLook);

    // Above the part, to be read from there.
    const gp_Ax2 top(gp_Pnt(0, 0, 60), gp::DZ(), gp::DX());
    const auto drawAbove = [&](const char* name, int said, const Drawing& drawing,
                               const PmiPresentation::Look& look) {
        above.push_back(presentation.annotation(name, said, drawing, top, look));
    };
    Drawing diameter;
    diameter.arrow({38, -12}, {20 + 5 * std::sqrt(0.5), 18 - 5 * std::sqrt(0.5)});
    diameter.line({{38, -12}, {41, -12}});
    diameter.text({42, -13.5}, U"2X ⌀10 ±0.1");
    drawAbove("diameter", meaning.diameter(bores, 10, {-0.1, 0.1}), diameter, sizeLook);

    Drawing position;
    position.frame({42, -20}, {U"⌖", U"⌀0.2Ⓜ", U"A", U"B", U"C"});
    drawAbove("position", meaning.position(bores, 0.2, {a, b, c}), position, toleranceLook);

    Drawing datumB;
    datumB.datum({15, 50}, {12, 60}, U'B');
    drawAbove("datum B", b.feature, datumB, datumLook);
    Drawing perpendicularity;
    perpendicularity.frame({40, 62}, {U"⟂", U"0.1", U"A"});
    perpendicularity.arrow({46, 62}, {46, 50});
    drawAbove("perpendicularity", meaning.perpendicularity(b.feature, 0.1, a), perpendicularity,
              toleranceLook);

    presentation.view("FRONT", {{40, -200, 20}, {40, 20, 20}, gp::DZ(), 160, 120}, inFront, std::nullopt);
    presentation.view("SECTION FROM ABOVE", {{40, 25, 250}, {40, 25, 0}, gp::DY(), 160, 120}, above,
                      gp_Pln(gp_Pnt(0, 0, 32), gp::DZ()));
    presentation.finish();
}

} // namespace

void writeBracket(const std::filesystem::path& path) {
    const TopoDS_Shape shape = makeBracket();
    const std::vector<TopoDS_Shape> faces = findFaces(shape);
    Model model;
    const TDF_Label part = model.addPart("Bracket", shape);
    model.paint(part, {168, 172, 178});
    for (const Face bore : {firstBore, secondBore, wallBore})
        model.paintFace(part, faces[bore], {214, 172, 70});
    model.paintFace(part, faces[bottom], {38, 92, 72});
    model.putOnLayer(part, "BODY");

    const StepNumbers file = writeStep(model, path, faces);
    Instances instances(file.last);
    annotate(instances, file);
    instances.appendTo(path);
}

} // namespace samples
