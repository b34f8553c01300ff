// The parts of bodies are measured one by one, and their figures added up.
#include "brep/measure.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "brep/area.h"
#include "brep/boundary.h"
#include "brep/extent.h"
#include "brep/parts.h"

namespace zeq::brep {

std::optional<double> lengthOf(const EDGE& edge) {
    const CURVE* const curve = edge.geometry();
    if (!curve) return 0;
    if (!curve->evaluable()) return std::nullopt;
    return std::abs(integral(Integrand{[curve](double t) { return curve->eval_deriv(t).len(); },
                                       smoothPieces(*curve, rangeOf(edge))}));
}

namespace {

class BodyMeasure {
public:
    BodyMeasure(const BODY& body, const SPAbox& box, const Work& work)
        : m_transform(body.transform() ? body.transform()->transform() : SPAtransf()),
          m_scale(std::abs(m_transform.scaling())), m_box(box), m_extent(m_transform, m_box, work),
          m_work(work) {}

    void add(const EDGE& edge, Measure& result) {
        if (const auto length = lengthOf(edge))
            result.length = m_scale * *length;
        else
            result.unmeasured = 1;
        m_extent.add(edge);
        result.box = m_box;
    }

    void add(const FACE& face, Measure& result) {
        const auto boundary = m_transform.shear() ? std::nullopt : Boundary::of(face);
        const auto area = boundary ? areaOf(*face.geometry(), *boundary, m_work) : std::nullopt;
        if (!area) {
            result.unmeasured = 1;
            return;
        }
        result.area = m_scale * m_scale * *area;
        m_extent.add(*face.geometry(), *boundary);
        result.box = m_box;
    }

private:
    const SPAtransf m_transform;
    const double m_scale;
    SPAbox m_box;
    Extent m_extent;
    const Work& m_work;
};

} // namespace

Measure measure(const ENTITY_LIST& entities, Supervisor* supervisor) {
    const Parts parts(entities);
    Measure result;
    result.faces = parts.faces();
    result.edges = parts.edges();
    result.vertices = parts.vertices();
    std::vector<Measure> found(std::max(parts.edges(), parts.faces()));
    const auto addFound = [&](std::size_t i) {
        result.length += found[i].length;
        result.area += std::abs(found[i].area);
        result.unmeasured += found[i].unmeasured;
        if (found[i].box.empty()) return;
        result.box.add(found[i].box.low());
        result.box.add(found[i].box.high());
    };
    Work work(supervisor);
    // First the edges: inside of a face only what lies beyond all of them is looked for.
    work.forEach(parts.edges(), [&](std::size_t i) {
        BodyMeasure(parts.bodyOfEdge(i), SPAbox(), work).add(parts.edge(i), found[i]);
    });
    for (std::size_t i = 0; i < parts.edges(); ++i) addFound(i);
    found.assign(found.size(), Measure());
    const SPAbox box = result.box;
    work.forEach(parts.faces(), [&](std::size_t i) {
        BodyMeasure(parts.bodyOfFace(i), box, work).add(parts.face(i), found[i]);
    });
    for (std::size_t i = 0; i < parts.faces(); ++i) {
        addFound(i);
        if (found[i].area < 0)
            result.inverted.push_back({"inverted face",
                                       parts.name(parts.face(i)) + " lies outside of its boundary",
                                       parts.number(parts.face(i)), std::nullopt, 0});
    }
    return result;
}

} // namespace zeq::brep
