// Gathers the occurrences of each callout, and what places, styles, names and explains it.
#include "step/annotation_graphics.h"

#include <algorithm>
#include <set>
#include <unordered_map>

namespace zeq::step {

namespace {

constexpr std::string_view occurrenceTypes[]{"TESSELLATED_ANNOTATION_OCCURRENCE",
                                             "ANNOTATION_CURVE_OCCURRENCE",
                                             "ANNOTATION_FILL_AREA_OCCURRENCE",
                                             "ANNOTATION_PLACEHOLDER_OCCURRENCE",
                                             "ANNOTATION_PLACEHOLDER_OCCURRENCE_WITH_LEADER_LINE",
                                             "ANNOTATION_TEXT_OCCURRENCE",
                                             "ANNOTATION_SYMBOL_OCCURRENCE"};

bool isPlaceholder(const Instance& occurrence) {
    return occurrence.is("ANNOTATION_PLACEHOLDER_OCCURRENCE") ||
           occurrence.is("ANNOTATION_PLACEHOLDER_OCCURRENCE_WITH_LEADER_LINE");
}

class GraphicsReader {
public:
    explicit GraphicsReader(StepFile& file) : m_file(file), m_invisible(readInvisible(file)) {
        for (const Instance& plane : file.structure().all("ANNOTATION_PLANE"))
            for (const Value& element : attribute(plane, "ANNOTATION_PLANE", 3, 0).items())
                m_planes.try_emplace(element.reference(), plane);
    }

    std::vector<AnnotationGraphics> read() {
        std::vector<Instance> shown = m_file.structure().all("DRAUGHTING_CALLOUT");
        std::set<std::uint64_t> held;
        for (const Instance& callout : shown)
            for (const Value& content : attribute(callout, "DRAUGHTING_CALLOUT", 1, 0).items())
                held.insert(content.reference());
        for (const std::string_view type : occurrenceTypes)
            for (const Instance& occurrence : m_file.structure().all(type))
                if (held.insert(occurrence.number()).second) shown.push_back(occurrence);
        std::vector<AnnotationGraphics> result;
        result.reserve(shown.size());
        for (const Instance& each : shown) result.push_back(readOne(each));
        return result;
    }

private:
    AnnotationGraphics readOne(const Instance& callout) {
        AnnotationGraphics graphics;
        graphics.number = callout.number();
        graphics.name = nameOf(callout);
        const std::vector<Instance> models = modelsOf(callout);
        for (const Instance& model : models)
            if (graphics.product == 0) graphics.product = productOf(model);
        const double unit = unitOf(models);
        graphics.isHidden = isInvisible(callout);
        addDefinitions(callout, graphics);
        addPlane(callout, unit, graphics);
        addText(callout, graphics);
        m_triangles = {};
        if (callout.is("DRAUGHTING_CALLOUT")) {
            for (const Value& content : attribute(callout, "DRAUGHTING_CALLOUT", 1, 0).items())
                if (const Instance occurrence = m_file.at(content)) addOccurrence(occurrence, unit, graphics);
        } else {
            addOccurrence(callout, unit, graphics);
        }
        const double scale = unit / m_file.millimeters();
        if (!m_triangles.corners.empty()) graphics.fill = makeFace(m_triangles, scale);
        if (!graphics.anchor && !m_triangles.vertices.empty())
            graphics.anchor = scale * m_triangles.vertices[0];
        if (!graphics.anchor && m_firstPoint) graphics.anchor = scale * *m_firstPoint;
        m_firstPoint.reset();
        return graphics;
    }

    std::uint64_t productOf(const Instance& model) {
        const auto [known, isNew] = m_products.try_emplace(model.number(), 0);
        if (isNew) known->second = m_file.productOfRepresentation(model).number();
        return known->second;
    }

    /// The draughting models that show it, itself or in its plane.
    std::vector<Instance> modelsOf(const Instance& callout) const {
        std::vector<Instance> models = callout.users("DRAUGHTING_MODEL");
        if (const auto plane = m_planes.find(callout.number()); plane != m_planes.end())
            for (const Instance& model : plane->second.users("DRAUGHTING_MODEL"))
                if (std::ranges::find(models, model) == models.end()) models.push_back(model);
        return models;
    }

    /// The millimetres of the unit that it is drawn in: of its draughting model, or else of the file's first context.
    double unitOf(const std::vector<Instance>& models) {
        for (const Instance& model : models)
            if (const auto unit = m_file.lengthUnit(m_file.at(attribute(model, "REPRESENTATION", 0, 2))))
                return *unit;
        if (m_unit == 0) m_unit = firstUnit();
        return m_unit;
    }

    double firstUnit() const {
        for (const Instance& context : m_file.structure().all("GLOBAL_UNIT_ASSIGNED_CONTEXT"))
            if (const auto unit = m_file.lengthUnit(context)) return *unit;
        return 1;
    }

    bool isInvisible(const Instance& instance) const { return m_invisible.contains(instance.number()); }

    void addDefinitions(const Instance& callout, AnnotationGraphics& graphics) const {
        for (const Instance& user : callout.users()) {
            if (!user.is("DRAUGHTING_MODEL_ITEM_ASSOCIATION") &&
                !user.is("DRAUGHTING_MODEL_ITEM_ASSOCIATION_WITH_PLACEHOLDER"))
                continue;
            const Instance definition = m_file.at(user.parameters()[2]);
            if (!definition ||
                std::ranges::find(graphics.definitions, definition) != graphics.definitions.end())
                continue;
            const bool isLink = nameOf(user) == L"PMI representation to presentation link";
            graphics.definitions.insert(isLink ? graphics.definitions.begin() : graphics.definitions.end(),
                                        definition);
        }
    }

    void addPlane(const Instance& callout, double unit, AnnotationGraphics& graphics) const {
        const auto found = m_planes.find(callout.number());
        if (found == m_planes.end()) return;
        const Instance item = m_file.at(attribute(found->second, "STYLED_ITEM", 1, 1));
        graphics.plane = readPlacement(m_file, item);
        if (graphics.plane) graphics.plane->origin = (unit / m_file.millimeters()) * graphics.plane->origin;
        graphics.isHidden = graphics.isHidden || isInvisible(found->second);
    }

    /// The characters of an annotation, which stand in the properties that its drawing is checked by.
    void addText(const Instance& callout, AnnotationGraphics& graphics) const {
        for (const Instance& item : callout.users("CHARACTERIZED_ITEM_WITHIN_REPRESENTATION"))
            for (const Instance& property : item.users("PROPERTY_DEFINITION"))
                for (const Instance& link : property.users("PROPERTY_DEFINITION_REPRESENTATION"))
                    for (const Instance& each : m_file.at(link.parameters()[1]).references()) {
                        if (!each.is("DESCRIPTIVE_REPRESENTATION_ITEM")) continue;
                        const std::wstring name = nameOf(each);
                        const std::wstring text =
                            attribute(each, "DESCRIPTIVE_REPRESENTATION_ITEM", 1, 0).text();
                        if (name == L"equivalent unicode string") graphics.text = text;
                        if (name == L"font name") graphics.style.font = text;
                    }
    }

    void addOccurrence(const Instance& occurrence, double unit, AnnotationGraphics& graphics) {
        graphics.isHidden = graphics.isHidden || isInvisible(occurrence);
        if (isPlaceholder(occurrence)) return addPlaceholder(occurrence, unit, graphics);
        const Style style = readStyle(m_file, occurrence);
        if (!graphics.style.color) graphics.style.color = style.color;
        if (graphics.style.width == 0) graphics.style.width = style.width * unit / m_file.millimeters();
        if (graphics.style.font.empty()) graphics.style.font = style.font;
        const Instance item = m_file.at(attribute(occurrence, "STYLED_ITEM", 1, 1));
        if (occurrence.is("ANNOTATION_TEXT_OCCURRENCE") || item.is("TEXT_LITERAL")) {
            if (graphics.text.empty()) graphics.text = attribute(item, "TEXT_LITERAL", 1, 0).text();
            return;
        }
        const Drawing drawing = draw(m_file, item);
        const double scale = unit / m_file.millimeters();
        const auto add = [&](const std::vector<std::vector<Vec>>& lines, bool isFilled) {
            for (const std::vector<Vec>& points : lines) {
                if (!m_firstPoint) m_firstPoint = points.front();
                const ExcVisuEdgePtr edge = makeEdge(points, scale, isFilled);
                if (style.color) edge->setColor(*style.color);
                graphics.edges.push_back(edge);
            }
        };
        add(drawing.strokes, false);
        add(drawing.outlines, true);
        const auto first = static_cast<int>(m_triangles.vertices.size());
        for (const int corner : drawing.triangles.corners) m_triangles.corners.push_back(first + corner);
        const auto append = [](std::vector<Vec>& to, const std::vector<Vec>& from) {
            to.insert(to.end(), from.begin(), from.end());
        };
        append(m_triangles.vertices, drawing.triangles.vertices);
        append(m_triangles.normals, drawing.triangles.normals);
        for (const std::string& type : drawing.unknown) {
            std::wstring reason = L"it has geometry that is not drawn: ";
            for (const char c : type) reason += static_cast<wchar_t>(c);
            if (type.empty()) reason = L"it has no geometry to draw";
            m_file.losses().add("graphical annotations", reason, graphics.number);
        }
    }

    void addPlaceholder(const Instance& occurrence, double unit, AnnotationGraphics& graphics) {
        const double scale = unit / m_file.millimeters();
        const Instance geometry = m_file.at(attribute(occurrence, "STYLED_ITEM", 1, 1));
        for (const Instance& element : geometry.references())
            if (const auto placement = readPlacement(m_file, element)) {
                graphics.anchor = scale * placement->origin;
                if (!graphics.plane) {
                    graphics.plane = placement;
                    graphics.plane->origin = *graphics.anchor;
                }
            }
        const std::string_view type = "ANNOTATION_PLACEHOLDER_OCCURRENCE";
        graphics.height = attribute(occurrence, type, 3, 1).number().value_or(0) * scale;
        for (const Instance& line : occurrence.references()) {
            if (line.type().find("LEADER_LINE") == std::string_view::npos) continue;
            std::vector<Vec> points;
            for (const Instance& point : line.references())
                if (const auto at = readVector(point)) points.push_back(scale * *at);
            if (points.size() > 1) graphics.leaders.push_back(std::move(points));
        }
    }

    StepFile& m_file;
    const std::unordered_set<std::uint64_t> m_invisible;
    std::unordered_map<std::uint64_t, Instance> m_planes;        ///< of what they hold
    std::unordered_map<std::uint64_t, std::uint64_t> m_products; ///< of draughting models
    double m_unit = 0;
    Triangles m_triangles; ///< of the callout under way
    std::optional<Vec> m_firstPoint;
};

} // namespace

std::vector<AnnotationGraphics> readAnnotationGraphics(StepFile& file) { return GraphicsReader(file).read(); }

} // namespace zeq::step
