// Annotations and cameras are given free indices as they come up, behind all instances.
#include "gltf/nodes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "gltf/properties.h"
#include "gltf/rigid_parts.h"

namespace zeq::gltf {

using scene::Annotation;
using scene::Instance;
using scene::Look;
using scene::Part;
using scene::Placement;
using scene::Vec;
using scene::View;
using text::JsonWriter;

namespace {

constexpr scene::Color annotationColor{25, 51, 191, 255}; ///< of one that has none

void writeMatrix(JsonWriter& json, const Placement& placement, const Vec& origin) {
    json.key("matrix").open('[');
    for (const Vec& column : {placement.x, placement.y, placement.z})
        json.value(column.x).value(column.y).value(column.z).value(0.0);
    json.value(origin.x).value(origin.y).value(origin.z).value(1.0).close(']');
}

/// What a node shows, and the nodes below it.
void writeContent(JsonWriter& json, std::uint32_t mesh, const std::vector<std::uint32_t>& children) {
    if (mesh != scene::none) json.member("mesh", mesh);
    if (children.empty()) return;
    json.key("children").open('[');
    for (const std::uint32_t child : children) json.value(child);
    json.close(']');
}

bool isIdentity(const Placement& placement) {
    const auto same = [](const Vec& a, const Vec& b) { return a.x == b.x && a.y == b.y && a.z == b.z; };
    const Placement identity;
    return same(placement.x, identity.x) && same(placement.y, identity.y) && same(placement.z, identity.z) &&
           same(placement.origin, identity.origin);
}

} // namespace

Nodes::Nodes(const scene::Scene& scene, double meters, bool withHidden)
    : m_scene(scene), m_meters(meters), m_withHidden(withHidden), m_parts(scene.parts.size()),
      m_children(scene.instances.size()), m_hasCameras(scene.parts.size()) {}

void Nodes::write() {
    planShapes();
    m_packer.pack(m_meters);
    findExtent();
    for (std::uint32_t i = 1; i < m_scene.instances.size(); ++i)
        m_children[m_scene.instances[i].parent].push_back(i);
    for (std::uint32_t i = 0; i < m_scene.instances.size(); ++i) writeInstance(i);
    if (!m_later.elements.isEmpty()) m_nodes.elements.raw(m_later.elements.text());
    m_nodes.count += m_later.count;
}

void Nodes::planShapes() {
    for (const Instance& instance : m_scene.instances) {
        PartShapes& shapes = m_parts[instance.part];
        if (!isDrawn(instance.isHidden) || shapes.shape != scene::none) continue;
        const Part& part = m_scene.parts[instance.part];
        shapes.shape = m_packer.add(part.shape);
        m_hidden += m_packer[shapes.shape].hidden;
        for (const Annotation& annotation : part.annotations) {
            const bool drawn = isDrawn(annotation.isHidden);
            m_hidden += drawn ? 0 : 1;
            shapes.annotations.push_back(drawn ? m_packer.add(annotation.shape) : scene::none);
        }
    }
}

void Nodes::findExtent() {
    constexpr double far = 1e300;
    Vec low{far, far, far}, high{-far, -far, -far};
    for (const Instance& instance : m_scene.instances) {
        if (instance.isHidden || m_packer[m_parts[instance.part].shape].isEmpty()) continue;
        const PackedShape& shape = m_packer[m_parts[instance.part].shape];
        Placement world = instance.world;
        world.origin = m_meters * world.origin;
        for (unsigned corner = 0; corner < 8; ++corner) {
            const auto side = [&](std::size_t k) { return (corner >> k & 1 ? shape.high : shape.low)[k]; };
            const Vec point = world(Vec{side(0), side(1), side(2)});
            low = {std::min(low.x, point.x), std::min(low.y, point.y), std::min(low.z, point.z)};
            high = {std::max(high.x, point.x), std::max(high.y, point.y), std::max(high.z, point.z)};
        }
    }
    if (low.x > high.x) return;
    m_middle = 0.5 * (low + high);
    m_radius = std::max(0.5 * length(high - low), 1e-6);
}

void Nodes::writeExtras(const Instance& instance) {
    JsonWriter& json = m_nodes.elements;
    json.key("extras").open('{').member("block", m_scene.parts[instance.part].block);
    writeTextUnlessEmpty(json, "id", instance.id);
    if (instance.isHidden) json.key("hidden").raw("true");
    writeProperties(json, instance.properties);
    json.close('}');
}

void Nodes::writeInstance(std::uint32_t index) {
    const Instance& instance = m_scene.instances[index];
    Children children = std::move(m_children[index]);
    std::uint32_t mesh = scene::none;
    if (!isDrawn(instance.isHidden)) {
        ++m_hidden;
    } else {
        const PartShapes& shapes = m_parts[instance.part];
        const Part& part = m_scene.parts[instance.part];
        mesh = meshOf(shapes.shape, part.name, instance.look, false);
        if (mesh != scene::none) m_triangles += m_packer[shapes.shape].triangles;
        const Children annotations = addAnnotations(instance);
        children.insert(children.end(), annotations.begin(), annotations.end());
        if (!instance.isHidden && !m_hasCameras[instance.part]) {
            for (const View& view : part.views) children.push_back(addCamera(part, view, instance.world));
            m_hasCameras[instance.part] = true;
        }
    }

    JsonWriter& json = m_nodes.elements;
    m_nodes.next();
    json.open('{').member("name", instance.name);
    const auto split = rigidParts(instance.local);
    if (index == 0 && m_scene.up != EWorldOrientation::up_y) { // glTF looks up along y
        const double half = std::numbers::sqrt2 / 2;
        const bool isX = m_scene.up == EWorldOrientation::up_x;
        json.key("rotation").open('[').value(isX ? 0.0 : -half).value(0.0).value(isX ? half : 0.0);
        json.value(half).close(']');
    }
    const Placement& placement = split ? split->outer : instance.local;
    if (!isIdentity(placement)) writeMatrix(json, placement, m_meters * placement.origin);
    if (split) { // what is not rigid takes two nodes
        JsonWriter inner;
        writeMatrix(inner.open('{'), split->inner, {});
        writeContent(inner, mesh, children);
        children = {addNode(inner.close('}'))};
        mesh = scene::none;
    }
    writeContent(json, mesh, children);
    writeExtras(instance);
    json.close('}');
}

std::uint32_t Nodes::addNode(const JsonWriter& node) {
    m_later.elements.raw(node.text());
    return static_cast<std::uint32_t>(m_scene.instances.size()) + m_later.next();
}

std::uint32_t Nodes::meshOf(std::uint32_t shape, const std::string& name, const Look& around,
                            bool isAnnotation) {
    const PackedShape& packed = m_packer[shape];
    if (packed.isEmpty()) return scene::none;
    const bool hasColor = packed.inheritsColor && around.hasColor;
    const bool hasOpacity = packed.inheritsOpacity && around.hasOpacity;
    const scene::Color color{
        hasColor ? around.color.red : std::uint8_t{}, hasColor ? around.color.green : std::uint8_t{},
        hasColor ? around.color.blue : std::uint8_t{}, hasOpacity ? around.color.alpha : std::uint8_t{}};
    const auto [entry, isNew] = m_meshOf.try_emplace({shape, hasColor, hasOpacity, color}, m_meshes.count);
    if (!isNew) return entry->second;
    JsonWriter& json = m_meshes.elements;
    json.open('{').member("name", name).key("primitives").open('[');
    for (const Primitive& primitive : packed.primitives) {
        const bool isSurface = primitive.mode == Primitive::Mode::triangles;
        const scene::Color otherwise = isAnnotation ? annotationColor
                                       : isSurface  ? scene::plainSurface
                                                    : scene::plainLine;
        // The colour of a part is that of its surfaces; its edges are to stand out against them.
        const Look look = isSurface || isAnnotation ? primitive.look.within(around) : primitive.look;
        json.open('{').key("attributes").open('{').member("POSITION", primitive.positions);
        if (isSurface) json.member("NORMAL", primitive.normals);
        json.close('}');
        if (primitive.indices != scene::none) json.member("indices", primitive.indices);
        json.member("material", m_materials.of(look.shown(otherwise), isAnnotation || !isSurface));
        if (!isSurface) json.member("mode", static_cast<unsigned>(primitive.mode));
        if (!primitive.extras.empty() && !isAnnotation) json.key("extras").raw(primitive.extras);
        json.close('}');
    }
    json.close(']').close('}');
    return m_meshes.next();
}

Nodes::Children Nodes::addAnnotations(const Instance& instance) {
    const Part& part = m_scene.parts[instance.part];
    const PartShapes& shapes = m_parts[instance.part];
    std::vector<std::vector<std::string>> views(part.annotations.size()); // that show them
    for (const View& view : part.views)
        for (const std::uint32_t each : view.annotations) views[each].push_back(view.name);
    Children result;
    for (std::size_t i = 0; i < part.annotations.size(); ++i) {
        const Annotation& annotation = part.annotations[i];
        JsonWriter json;
        json.open('{').member("name", annotation.name.empty() ? annotation.id : annotation.name);
        if (const std::uint32_t shape = shapes.annotations[i]; shape != scene::none)
            writeContent(json, meshOf(shape, annotation.name, annotation.look, true), {});
        json.key("extras").open('{');
        if (annotation.isHidden) json.key("hidden").raw("true");
        json.member("kind", annotation.kind);
        writeTextUnlessEmpty(json, "id", annotation.id);
        writeTextUnlessEmpty(json, "value", annotation.value);
        std::vector<std::string> faces, edges;
        for (const scene::Link& link : annotation.links) {
            if (link.kind == scene::Link::Kind::face) faces.push_back(link.id);
            if (link.kind == scene::Link::Kind::edge) edges.push_back(link.id);
        }
        writeTexts(json, "faces", faces);
        writeTexts(json, "edges", edges);
        writeTexts(json, "views", views[i]);
        result.push_back(addNode(json.close('}').close('}')));
    }
    return result;
}

std::uint32_t Nodes::addCamera(const Part& part, const View& view, const Placement& world) {
    const scene::Camera& camera = view.camera;
    const Vec z = unit(camera.eye - camera.target), x = unit(cross(camera.up, z)), y = cross(z, x);
    Vec eye = m_meters * camera.eye;
    Placement meters = world;
    meters.origin = m_meters * world.origin;
    const auto depth = [&] { return dot(meters(eye) - m_middle, unit(meters.direction(z))); };
    JsonWriter& json = m_cameras.elements;
    json.open('{').member("name", view.name);
    if (camera.isPerspective) {
        const double angle = camera.angle > 0 && camera.angle < 179 ? camera.angle : 45;
        const double near = std::max(1e-3 * m_radius, 1e-6);
        json.member("type", std::string_view("perspective")).key("perspective").open('{');
        json.member("yfov", angle * std::numbers::pi / 180).member("znear", near);
        json.member("zfar", std::max(depth() + 2 * m_radius, 10 * near));
    } else { // what is seen does not change with the distance, so nothing need be behind the camera
        eye = eye + std::max(0.0, 2 * m_radius - depth()) * z;
        const double half = camera.height > 0 ? m_meters * camera.height / 2 : m_radius;
        json.member("type", std::string_view("orthographic")).key("orthographic").open('{');
        json.member("xmag", half).member("ymag", half).member("znear", 0.0);
        json.member("zfar", depth() + 2 * m_radius);
    }
    json.close('}').close('}');

    JsonWriter node;
    node.open('{').member("name", view.name).member("camera", m_cameras.next());
    writeMatrix(node, {x, y, z, {}}, eye);
    node.key("extras").open('{').member("id", view.id);
    if (view.isActive) node.key("active").raw("true");
    if (view.clipping) {
        const auto [a, b, c, d] = *view.clipping;
        node.key("clipping").open('[').value(a).value(b).value(c).value(m_meters * d).close(']');
    }
    std::vector<std::string> ids;
    for (const std::uint32_t each : view.annotations) ids.push_back(part.annotations[each].id);
    writeTexts(node, "annotations", ids);
    return addNode(node.close('}').close('}'));
}

} // namespace zeq::gltf
