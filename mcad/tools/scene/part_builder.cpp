// Walks the nodes of a scene with a stack of its own.
#include "scene/part_builder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <utility>

#include "pmi/value_text.h"
#include "scene/flat_shapes.h"
#include "strokes/annotation.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq_api/exchange_pmi/annotation_view.h"

namespace zeq::scene {

namespace {

using NodeType = ExcVisuNode::EType;

/// More nodes than any document can have: the scene refers to itself.
constexpr std::size_t mostNodes = 20'000'000;

Look lookOfNode(const ExcVisuAttributes& attributes) {
    const Look look = attributes.color() ? lookOf(*attributes.color()) : Look();
    if (look.hasColor || attributes.materials().empty()) return look;
    using Kind = ExcVisuMaterial::EColorType;
    const ExcVisuMaterial::Color& diffuse =
        std::as_const(*attributes.materials().front()).color(Kind::diffuse);
    if (diffuse == ExcVisuMaterial::Color()) return look; // it says nothing
    const auto byte = [](float part) {
        return static_cast<std::uint8_t>(part > 0 ? std::lround(255 * std::min(part, 1.0F)) : 0);
    };
    const Look ofMaterial{
        {byte(diffuse.red), byte(diffuse.green), byte(diffuse.blue), byte(diffuse.alpha)}, true, true};
    return look.within(ofMaterial);
}

/// "DIMENSION_DIAMETER" as "dimension diameter".
std::string words(const std::wstring& name) {
    std::string text = text::validUtf8(name);
    for (char& c : text) {
        if (c == '_') c = ' ';
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

std::vector<Link> linksOf(const std::vector<ExcEntityPtr>& entities) {
    std::vector<Link> links;
    for (const ExcEntityPtr& entity : entities) {
        Link link{Link::Kind::other, text::validUtf8(entity->id())};
        if (entity->type() == ExcEntity::EType::fsp && entity->fsp()) {
            constexpr std::array kinds{Link::Kind::other, Link::Kind::face, Link::Kind::edge,
                                       Link::Kind::vertex}; // in the order of ESubentType
            const auto type = static_cast<std::size_t>(entity->fsp()->subentType());
            link = {kinds[type < kinds.size() ? type : 0], std::to_string(entity->fsp()->subentId())};
        }
        links.push_back(std::move(link));
    }
    return links;
}

Camera cameraOf(const ExcCamera& from, double scale) {
    Camera camera;
    camera.isPerspective = from.type() == ExcCamera::EType::perspective;
    camera.angle = from.perspectiveViewAngle();
    camera.height = scale * from.orthographicZoomFactor();
    camera.eye = scale * toVec(from.eye());
    camera.target = scale * toVec(from.target());
    camera.up = unit(toVec(from.up()));
    return camera;
}

/// Whether what is drawn in the plane, with letters of that height, has coordinates that a float holds.
bool isDrawable(const Placement& plane, double height) {
    constexpr double farthest = 1e30;
    return plane.isUsable() && length(plane.origin) < farthest && height > 0 && height < farthest;
}

/// Nothing if there is no clipping, or no sense in it.
std::optional<std::array<double, 4>> clippingOf(const ExcClippingPlane& from, double scale) {
    Vec normal;
    double distance = 0;
    if (from.hasCoefficients()) {
        const auto& [a, b, c, d] = from.coefficients();
        const double size = length(Vec{a, b, c});
        normal = unit(Vec{a, b, c});
        distance = size > 0 ? scale * d / size : 0;
    } else if (from.hasPlane()) {
        normal = unit(cross(toVec(from.vectorU()), toVec(from.vectorV())));
        distance = -scale * dot(normal, toVec(from.origin()));
    }
    if (!(length(normal) > 0.5) || !std::isfinite(distance)) return std::nullopt;
    return std::array{normal.x, normal.y, normal.z, distance};
}

} // namespace

double millimeters(ELengthUnitType unit) {
    using enum ELengthUnitType;
    switch (unit) {
    case nanometer:
        return 1e-6;
    case micrometer:
        return 1e-3;
    case millimeter:
        return 1;
    case centimeter:
        return 10;
    case decimeter:
        return 100;
    case meter:
        return 1e3;
    case kilometer:
        return 1e6;
    case microinch:
        return 25.4e-6;
    case milliinch:
        return 25.4e-3;
    case inch:
        return 25.4;
    case foot:
        return 304.8;
    case mile:
        return 1609344;
    case unknown:
    case model_unit:
        break;
    }
    return 0;
}

void appendProperties(const ExcMiscData& data, std::vector<PropertyGroup>& groups) {
    for (const ExcMiscPropertiesGroup& group : data.groups()) {
        PropertyGroup& result = groups.emplace_back();
        result.name = text::validUtf8(group.name());
        for (const ExcMiscProperty& property : group.properties())
            result.properties.push_back({text::validUtf8(property.name()), text::validUtf8(property.value()),
                                         text::validUtf8(property.unit())});
    }
}

void PartBuilder::add(const ExcVisualizationData& display) {
    const double own = millimeters(display.units());
    const double scale = own > 0 ? own / m_millimeters : 1;
    std::vector<Level> pending;
    const auto wait = [&pending](const std::vector<ExcVisuNodePtr>& nodes, const Level& around) {
        for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) { // the first one is visited first
            pending.push_back(around);
            pending.back().node = node->get();
        }
    };
    Level outside;
    outside.drawn.placement = Placement::scaling(scale);
    wait(display.sceneRootNodes(), outside);
    for (std::size_t count = 0; !pending.empty(); ++count) {
        if (count == mostNodes) {
            m_warnings.add(m_owner + ": its scene does not end");
            break;
        }
        Level level = pending.back();
        pending.pop_back();
        const ExcVisuNode& node = *level.node;
        visit(node, level);
        wait(node.childNodes(), level);
    }
    for (const ExcVisuCapturePtr& capture : display.captures()) {
        View view{text::validUtf8(capture->id()),
                  text::validUtf8(capture->displayName()),
                  capture->isActive(),
                  {},
                  {},
                  {}};
        std::vector<std::wstring> ids = capture->annotationIds();
        ids.insert(ids.end(), capture->ftaConstructedGeometryIds().begin(),
                   capture->ftaConstructedGeometryIds().end());
        addView(std::move(view), capture->camera(), &capture->clippingPlane(), scale, std::move(ids));
    }
}

void PartBuilder::visit(const ExcVisuNode& node, Level& level) {
    Drawn& drawn = level.drawn;
    if (node.transformation()) {
        const Placement placement = Placement::of(*node.transformation());
        if (placement.isFinite())
            drawn.placement = drawn.placement * placement;
        else
            m_warnings.add(m_owner + ", node '" + text::printable(node.groupName()) +
                           "': its placement is not of numbers and is ignored");
    }
    if (const ExcVisuAttributesPtr& attributes = node.attributes()) {
        Look& look = node.type() == NodeType::ROOT ? m_part.look : drawn.look;
        look = lookOfNode(*attributes).within(look);
        drawn.isHidden = drawn.isHidden || attributes->isHidden();
        if (attributes->lineAttribute()) level.lineWidth = attributes->lineAttribute()->lineWeight();
    }
    level.isPMI = level.isPMI || node.type() == NodeType::PMI;
    if (node.pmi()) addAnnotation(*node.pmi(), level);
    if (node.mesh()) addMesh(*node.mesh(), level);
    if (node.wire()) {
        Drawn ofWire = drawn; // without surfaces, it has their colour
        ofWire.look = drawn.look.within(m_part.look);
        for (const ExcVisuEdgePtr& edge : node.wire()->edges())
            m_shapes.addLine(*edge, ofWire, shapeOf(level));
    }
    if (node.pointSet())
        for (const ExcVisuPointsPtr& points : node.pointSet()->points())
            m_shapes.addMarkers(*points, node.pointSet()->mechanicalId(), drawn, shapeOf(level));
}

Shape& PartBuilder::shapeOf(const Level& level) {
    return level.annotation == none ? m_part.shape : m_part.annotations[level.annotation].shape;
}

Annotation& PartBuilder::newAnnotation(const std::wstring& id, const std::wstring& name, Level& level) {
    level.annotation = static_cast<std::uint32_t>(m_part.annotations.size());
    m_byId.emplace(id, level.annotation);
    Annotation& annotation = m_part.annotations.emplace_back();
    annotation.id = text::validUtf8(id);
    annotation.name = text::validUtf8(name);
    annotation.look = level.drawn.look;
    annotation.isHidden = std::exchange(level.drawn.isHidden, false); // as a whole
    annotation.lineWidth = level.lineWidth;
    if (level.node) annotation.kind = words(enumToString(level.node->type()));
    return annotation;
}

void PartBuilder::addAnnotation(const ExcVisuPMI& pmi, Level& level) {
    Annotation& annotation =
        newAnnotation(pmi.mechanicalId().empty() ? pmi.id() : pmi.mechanicalId(), pmi.displayName(), level);
    annotation.links = linksOf(pmi.linkedElements());
    for (const ExcVisuEdgePtr& edge : pmi.edges()) m_shapes.addLine(*edge, level.drawn, annotation.shape);
    for (const ExcVisuTextPtr& text : pmi.texts()) addText(*text, level.drawn, annotation);
}

void PartBuilder::addText(const ExcVisuText& text, const Drawn& drawn, Annotation& annotation) {
    const Vec x = unit(drawn.placement.direction(toVec(text.direction())));
    const Vec z = unit(drawn.placement.normal(toVec(text.normal())));
    const Placement plane{x, unit(cross(z, x)), z, drawn.placement(toVec(text.anchorPoint()))};
    const double height =
        length(drawn.placement.direction(text.font().textHeight() * unit(toVec(text.direction()))));
    if (!isDrawable(plane, height)) {
        m_warnings.add(m_owner + ", annotation " + annotation.id + ": a text is nowhere");
        return;
    }
    annotation.value += (annotation.value.empty() ? "" : "\n") + text::validUtf8(text.text());
    addFigure(strokes::layout(text.text(), static_cast<float>(height)), plane,
              lookOf(text.color()).within(drawn.look), annotation.shape);
}

void PartBuilder::addMesh(const ExcVisuMesh& mesh, Level& level) {
    const bool isFill = level.isPMI || mesh.geometryType() == EVisuGeometryType::fta_constructed;
    if (isFill && level.annotation == none)
        newAnnotation(mesh.mechanicalId().empty() ? mesh.id() : mesh.mechanicalId(), mesh.displayName(),
                      level);
    for (const ExcVisuFacePtr& face : mesh.faces()) m_shapes.addFace(*face, level.drawn, shapeOf(level));
    Drawn ofEdges = level.drawn;
    if (!isFill) ofEdges.look = Look{plainLine, true, false}.within(level.drawn.look);
    for (const ExcVisuEdgePtr& edge : mesh.edges()) m_shapes.addLine(*edge, ofEdges, shapeOf(level));
}

void PartBuilder::addView(View view, const ExcCamera& camera, const ExcClippingPlane* clipping, double scale,
                          std::vector<std::wstring> annotationIds) {
    view.camera = cameraOf(camera, scale);
    if (clipping) view.clipping = clippingOf(*clipping, scale);
    const Vec& up = view.camera.up;
    const Vec sight = view.camera.target - view.camera.eye;
    if (!sight.isFinite() || !(length(cross(sight, up)) > 1e-9 * length(sight))) {
        m_warnings.add(m_owner + ", view '" + text::printable(view.name) + "': its camera looks nowhere");
        return;
    }
    m_part.views.push_back(std::move(view));
    m_shownIds.push_back(std::move(annotationIds));
}

void PartBuilder::add(const ExcPMIData& data) {
    for (const ExcPMIAnnotationSetPtr& set : data.annotationSets()) {
        for (const ExcPMIAnnotationViewPtr& view : set->views())
            for (const ExcPMIAnnotationPtr& each : pmi::annotationsOf(*view)) describe(each, *view);
        for (const ExcPMICapturePtr& capture : set->captures()) {
            const std::string id = text::validUtf8(capture->id());
            if (!capture->camera() || std::ranges::find(m_part.views, id, &View::id) != m_part.views.end())
                continue;
            View view{id, text::validUtf8(capture->name()), capture->isCurrent(), {}, {}, {}};
            addView(std::move(view), *capture->camera(), capture->clippingPlane().get(), 1,
                    capture->annotationIds());
        }
    }
}

void PartBuilder::describe(const ExcPMIAnnotationPtr& semantic, const ExcPMIAnnotationView& view) {
    auto [from, to] = m_byId.equal_range(semantic->id());
    if (from == to) {
        Level level;
        level.drawn.isHidden = semantic->isHidden();
        newAnnotation(semantic->id(), semantic->name(), level).kind = words(enumToString(semantic->type()));
        std::tie(from, to) = m_byId.equal_range(semantic->id());
    }
    m_semantics.push_back(semantic);
    const Vec u = toVec(view.vectorU()), v = toVec(view.vectorV()), normal = cross(u, v);
    const Vec anchor = toVec(view.origin()) + semantic->position().x() * u + semantic->position().y() * v +
                       semantic->zDepth() * normal;
    for (; from != to; ++from) {
        Annotation& annotation = m_part.annotations[from->second];
        annotation.semantic = semantic;
        annotation.plane = {u, v, normal, anchor};
        if (annotation.links.empty()) annotation.links = linksOf(semantic->linkedElements());
        if (annotation.name.empty()) annotation.name = text::validUtf8(semantic->name());
    }
}

void PartBuilder::add(const ExcMechanicalMiscData& data) {
    appendProperties(data.miscData(), m_part.properties);
    for (const ExcMiscMaterialPtr& material : data.materials()) {
        PropertyGroup& group = m_part.properties.emplace_back();
        group.name = "material";
        group.properties.push_back({"name", text::validUtf8(material->name()), {}});
        for (const EnumEntry& entry : enumTable(ExcMiscMaterial::EProperty{}).entries()) {
            const auto property = material->get(static_cast<ExcMiscMaterial::EProperty>(entry.value));
            if (!property) continue;
            const auto& unit = property->unit().materialUnits;
            group.properties.push_back({words(entry.name), text::number(property->value()),
                                        unit ? text::validUtf8(unit->units()) : std::string()});
        }
    }
    for (const ExcMiscLayerPtr& layer : data.layers()) {
        PropertyGroup& group = m_part.properties.emplace_back();
        group.name = "layer";
        group.properties.push_back({"name", text::validUtf8(layer->name()), {}});
    }
}

void PartBuilder::finish(ELengthUnitType unit) {
    for (std::size_t i = 0; i < m_part.views.size(); ++i) {
        std::vector<std::uint32_t>& shown = m_part.views[i].annotations;
        for (const std::wstring& id : m_shownIds[i]) {
            const auto [from, to] = m_byId.equal_range(id);
            for (auto each = from; each != to; ++each) shown.push_back(each->second);
        }
        std::ranges::sort(shown);
        shown.erase(std::unique(shown.begin(), shown.end()), shown.end());
    }
    const pmi::Context context = pmi::contextOf(m_semantics, unit);
    const double height = textHeight();
    for (Annotation& annotation : m_part.annotations) {
        if (!annotation.semantic) continue;
        if (std::string value = pmi::valueText(*annotation.semantic, context); !value.empty())
            annotation.value = std::move(value);
        if (!annotation.isDrawn()) drawValue(annotation, height);
    }
}

/// That of the texts of notes, or a share of the part.
double PartBuilder::textHeight() const {
    for (const ExcPMIAnnotationPtr& semantic : m_semantics)
        if (const auto* const note = dynamic_cast<const ExcPMINote*>(semantic.get()))
            for (const auto& text : note->texts())
                if (text && text->height() > 0 && std::isfinite(text->height())) return text->height();
    constexpr double usual = 3.5; // millimetres (ISO 3098)
    const double size = diagonalOf(m_part.shape);
    return size > 0 ? size / 60 : usual / m_millimeters;
}

void PartBuilder::drawValue(Annotation& annotation, double textHeight) {
    const ExcPMIAnnotation& semantic = *annotation.semantic;
    const Placement& given = annotation.plane;
    const Vec x = unit(given.x), z = unit(cross(given.x, given.y));
    const Placement plane{x, cross(z, x), z, given.origin};
    const bool hasPlace = length(plane.origin) > 0 || !semantic.leaders().empty();
    if (annotation.value.empty() || !hasPlace || !isDrawable(plane, textHeight)) return;
    const auto height = static_cast<float>(textHeight);
    const auto angle = [&] {
        if (semantic.orientation() == EPMIOrientation::vertical) return std::numbers::pi / 2;
        return semantic.orientation() == EPMIOrientation::dim_angle
                   ? semantic.angle() * std::numbers::pi / 180
                   : 0.0;
    }();
    const Placement turned{std::cos(angle) * plane.x + std::sin(angle) * plane.y,
                           std::cos(angle) * plane.y - std::sin(angle) * plane.x, plane.z, plane.origin};
    const bool isDatum = semantic.type() == EPMIAnnotationType::datum;
    const std::string text = isDatum ? "[" + annotation.value + "]" : annotation.value; // in a box
    addFigure(strokes::layoutAnnotation(transport::fromUtf8(text), height), turned, Look(), annotation.shape);
    const auto end = isDatum ? strokes::LeaderEnd::triangle : strokes::LeaderEnd::arrow;
    for (const ExcPMILeaderPtr& leader : semantic.leaders()) {
        std::vector<strokes::Point> points;
        for (const ExcVector2d& point : leader->points())
            points.push_back({static_cast<float>(length(given.x) * (point.x() - semantic.position().x())),
                              static_cast<float>(length(given.y) * (point.y() - semantic.position().y()))});
        constexpr float farthest = 1e30F;
        const bool isNear = std::ranges::all_of(points, [](const strokes::Point& point) {
            return std::abs(point.x) < farthest && std::abs(point.y) < farthest;
        });
        if (points.size() < 2 || !isNear) continue;
        const auto distance = [](const strokes::Point& point) { return std::hypot(point.x, point.y); };
        if (distance(points.front()) < distance(points.back())) std::ranges::reverse(points);
        addFigure(strokes::leader(points, end, height), plane, Look(), annotation.shape);
    }
}

} // namespace zeq::scene
