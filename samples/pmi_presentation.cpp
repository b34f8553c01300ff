// Callouts on annotation planes, and draughting models of all annotations and of those of each view.
#include "pmi_presentation.h"

#include <algorithm>

namespace samples {

namespace {

gp_Pnt inSpace(const gp_Ax2& plane, const Point& point) {
    return plane.Location().Translated(gp_Vec(plane.XDirection()) * point.x +
                                       gp_Vec(plane.YDirection()) * point.y);
}

std::string coordinates(double x, double y, double z) {
    return '(' + real(x) + ',' + real(y) + ',' + real(z) + ')';
}

/// A list of points in a plane, and how many there are.
struct Coordinates {
    std::string text;
    int count = 0;
    /// The place of the point in the list, from 1.
    int add(const Point& point) {
        text += (count == 0 ? "" : ",") + coordinates(point.x, point.y, 0);
        return ++count;
    }
};

/// "(1,2,3)" of the places of points.
template <class Points>
std::string path(Coordinates& list, const Points& points) {
    std::string text = "(";
    for (const Point& each : points) text += (text.size() > 1 ? "," : "") + std::to_string(list.add(each));
    return text + ')';
}

void append(std::string& list, const std::string& element) { list += (list.empty() ? "" : ",") + element; }

} // namespace

PmiPresentation::PmiPresentation(Instances& instances, const StepNumbers& file)
    : m_instances(instances), m_file(file) {}

int PmiPresentation::annotation(const std::string& name, int meaning, const Drawing& drawing,
                                const gp_Ax2& plane, const Look& look) {
    const std::string quotedName = '\'' + name + '\'';
    const std::string styles = '(' + ref(style(look.color)) + ')';
    const bool isTessellated = look.kind == Kind::tessellated;
    const int graphics = isTessellated ? tessellation(name, drawing, plane) : curves(name, drawing, plane);
    Annotation added{};
    added.meaning = meaning;
    added.occurrence = m_instances.add(
        (isTessellated ? "TESSELLATED_ANNOTATION_OCCURRENCE(" : "ANNOTATION_CURVE_OCCURRENCE(") + quotedName +
        ',' + styles + ',' + ref(graphics) + ')');
    added.callout = m_instances.add("DRAUGHTING_CALLOUT(" + quotedName + ",(" + ref(added.occurrence) + "))");
    const int surface = m_instances.add("PLANE(" + quotedName + ',' + ref(placement(plane)) + ')');
    const int noStyle = m_instances.add("PRESENTATION_STYLE_ASSIGNMENT((NULL_STYLE(.NULL.)))");
    added.plane = m_instances.add("ANNOTATION_PLANE(" + quotedName + ",(" + ref(noStyle) + ")," +
                                  ref(surface) + ",(" + ref(added.callout) + "))");
    m_annotations.push_back(added);
    return added.callout;
}

void PmiPresentation::view(const std::string& name, const Camera& camera, const std::vector<int>& annotations,
                           const std::optional<gp_Pln>& section) {
    const std::string quotedName = '\'' + name + '\'';
    const gp_Vec sight(camera.eye, camera.target);
    const double distance = sight.Magnitude();
    // The view looks along its third axis; the second is upwards, so that the first points to the left.
    const int system = placement(gp_Ax2(camera.eye, sight, gp_Vec(camera.up).Crossed(sight)));
    const int corner =
        placement(gp_Ax2(gp_Pnt(-camera.width / 2, -camera.height / 2, distance), gp::DZ(), gp::DX()));
    const int window = m_instances.add("PLANAR_BOX(''," + real(camera.width) + ',' + real(camera.height) +
                                       ',' + ref(corner) + ')');
    const int volume = m_instances.add("VIEW_VOLUME(.PARALLEL.," + ref(point(gp::Origin())) + ',' +
                                       real(distance) + ",0.,.F.,0.,.F.,.F.," + ref(window) + ')');
    const std::string model = quotedName + ',' + ref(system) + ',' + ref(volume);
    int number = 0;
    if (section) {
        const int plane = m_instances.add("PLANE(''," + ref(placement(section->Position().Ax2())) + ')');
        number = m_instances.add("CAMERA_MODEL_D3_MULTI_CLIPPING(" + model + ",(" + ref(plane) + "))");
    } else {
        number = m_instances.add("CAMERA_MODEL_D3(" + model + ')');
    }
    std::vector<int> items{number};
    for (const Annotation& each : m_annotations)
        if (std::ranges::find(annotations, each.callout) != annotations.end())
            items.insert(items.end(), {each.plane, each.callout});
    m_views.push_back(m_instances.add("DRAUGHTING_MODEL(" + quotedName + ',' + refs(items) + ',' +
                                      ref(m_file.context) + ')'));
    m_instances.add("MODEL_GEOMETRIC_VIEW(" + quotedName + ",''," + ref(number) + ',' + ref(m_views.back()) +
                    ')');
}

void PmiPresentation::finish() {
    std::vector<int> items, occurrences;
    for (const Annotation& each : m_annotations) {
        items.insert(items.end(), {each.plane, each.callout});
        occurrences.push_back(each.occurrence);
    }
    const int model = m_instances.add("DRAUGHTING_MODEL(''," + refs(items) + ',' + ref(m_file.context) + ')');
    const auto relate = [this](int one, int other) {
        m_instances.add("MECHANICAL_DESIGN_AND_DRAUGHTING_RELATIONSHIP('',''," + ref(one) + ',' + ref(other) +
                        ')');
    };
    relate(model, m_file.representation);
    for (const int view : m_views) relate(view, model);
    for (const Annotation& each : m_annotations)
        m_instances.add("DRAUGHTING_MODEL_ITEM_ASSOCIATION('PMI representation to presentation link',''," +
                        ref(each.meaning) + ',' + ref(model) + ',' + ref(each.callout) + ')');
    m_instances.add("PRESENTATION_LAYER_ASSIGNMENT('PMI','annotations'," + refs(occurrences) + ')');
}

int PmiPresentation::point(const gp_Pnt& point) {
    return m_instances.add("CARTESIAN_POINT(''," + coordinates(point.X(), point.Y(), point.Z()) + ')');
}

int PmiPresentation::placement(const gp_Ax2& axes) {
    const auto direction = [this](const gp_Dir& d) {
        return ref(m_instances.add("DIRECTION(''," + coordinates(d.X(), d.Y(), d.Z()) + ')'));
    };
    const std::string origin = ref(point(axes.Location()));
    const std::string axis = direction(axes.Direction());
    return m_instances.add("AXIS2_PLACEMENT_3D(''," + origin + ',' + axis + ',' +
                           direction(axes.XDirection()) + ')');
}

int PmiPresentation::style(const Color& color) {
    const int rgb = m_instances.add("COLOUR_RGB(''," + real(color.red / 255.0) + ',' +
                                    real(color.green / 255.0) + ',' + real(color.blue / 255.0) + ')');
    const int font = m_instances.add("DRAUGHTING_PRE_DEFINED_CURVE_FONT('continuous')");
    const int curve =
        m_instances.add("CURVE_STYLE(''," + ref(font) + ",POSITIVE_LENGTH_MEASURE(0.25)," + ref(rgb) + ')');
    return m_instances.add("PRESENTATION_STYLE_ASSIGNMENT((" + ref(curve) + "))");
}

int PmiPresentation::tessellation(const std::string& name, const Drawing& drawing, const gp_Ax2& plane) {
    const auto addSet = [&](const std::string& entity, const Coordinates& list, const std::string& rest) {
        const int points =
            m_instances.add("COORDINATES_LIST(''," + std::to_string(list.count) + ",(" + list.text + "))");
        return m_instances.add(entity + "(''," + ref(points) + rest + ')');
    };
    std::vector<int> sets;
    Coordinates ends;
    std::string strokes;
    for (const auto& line : drawing.lines()) append(strokes, path(ends, line));
    sets.push_back(addSet("TESSELLATED_CURVE_SET", ends, ",(" + strokes + ')'));
    if (!drawing.triangles().empty()) {
        Coordinates corners;
        std::string fans;
        for (const auto& triangle : drawing.triangles()) append(fans, path(corners, triangle));
        sets.push_back(addSet("COMPLEX_TRIANGULATED_SURFACE_SET", corners,
                              ',' + std::to_string(corners.count) + ",((0.,0.,1.)),(),(),(" + fans + ')'));
    }
    // The points are those of the plane, which the placement puts into space.
    return m_instances.add("(GEOMETRIC_REPRESENTATION_ITEM()REPOSITIONED_TESSELLATED_ITEM(" +
                           ref(placement(plane)) + ")REPRESENTATION_ITEM('" + name +
                           "')TESSELLATED_GEOMETRIC_SET(" + refs(sets) + ")TESSELLATED_ITEM())");
}

int PmiPresentation::curves(const std::string& name, const Drawing& drawing, const gp_Ax2& plane) {
    std::vector<int> lines;
    const auto add = [&](const auto& corners, bool isClosed) {
        std::vector<int> points;
        for (const Point& each : corners) points.push_back(point(inSpace(plane, each)));
        if (isClosed) points.push_back(points.front());
        lines.push_back(m_instances.add("POLYLINE(''," + refs(points) + ')'));
    };
    for (const auto& line : drawing.lines()) add(line, false);
    for (const auto& triangle : drawing.triangles()) add(triangle, true);
    return m_instances.add("GEOMETRIC_CURVE_SET('" + name + "'," + refs(lines) + ')');
}

} // namespace samples
