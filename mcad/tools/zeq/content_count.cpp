// Counting along the documents.
#include "zeq/content_count.h"

#include <algorithm>
#include <vector>

#include "text/text.h"
#include "zeq/contents_report.h"
#include "zeq/scene_walk.h"

namespace zeq::host {

namespace {

/// A figure with its names for one and for several, and for machines.
struct Figure {
    std::uint64_t value;
    const char* one;
    const char* several;
    const char* key;
};
using Figures = std::vector<Figure>;

std::string line(const char* title, const Figures& figures) {
    std::string text;
    for (const Figure& figure : figures)
        if (figure.value > 0)
            text += (text.empty() ? title : ", ") + text::counted(figure.value, figure.one, figure.several);
    return text.empty() ? text : text + '\n';
}

std::string member(const char* key, const Figures& figures) {
    std::string json;
    for (const Figure& figure : figures)
        json +=
            (json.empty() ? "\"" : ",\"") + std::string(figure.key) + "\":" + std::to_string(figure.value);
    return "\"" + std::string(key) + "\":{" + json + "}";
}

Figures figuresOf(const MechanicalCount& counts) {
    return {{counts.annotations, "annotation", "annotations", "annotations"},
            {counts.views, "annotation view", "annotation views", "views"},
            {counts.captures, "capture", "captures", "captures"},
            {counts.layers, "layer", "layers", "layers"},
            {counts.materials, "material", "materials", "materials"},
            {counts.properties, "property", "properties", "properties"},
            {counts.features, "machining feature", "machining features", "features"},
            {counts.mappings, "mapped entity", "mapped entities", "mapped_entities"},
            {counts.entities, "described entity", "described entities", "described_entities"},
            {counts.named, "named", "named", "named_entities"},
            {counts.hidden, "hidden", "hidden", "hidden_entities"}};
}

Figures figuresOf(const DisplayCount& counts) {
    return {{counts.triangles, "triangle", "triangles", "triangles"},
            {counts.polygons, "polygon", "polygons", "polygons"},
            {counts.faces, "face", "faces", "faces"},
            {counts.edges, "edge", "edges", "edges"},
            {counts.points, "point", "points", "points"},
            {counts.annotations, "annotation", "annotations", "annotations"},
            {counts.meshes, "mesh", "meshes", "meshes"},
            {counts.nodes, "node", "nodes", "nodes"},
            {counts.views, "view", "views", "views"},
            {counts.captures, "capture", "captures", "captures"}};
}

std::uint64_t featuresOf(const ExcMfgData& data) {
    return data.simpleHoles().size() + data.taperHoles().size() + data.counterBoreHoles().size() +
           data.counterSinkHoles().size() + data.counterDrillHoles().size() + data.internalThreads().size() +
           data.externalThreads().size() + data.unclassifiedFeatures().size();
}

bool holdsMesh(const ExcVisuNodePtr& node) { return node->mesh() != nullptr; }

/// Whether something of an annotation is drawn: lines, texts, or, beside it or below it, filled text.
bool isDrawn(const ExcVisuNode& node) {
    return !node.pmi()->edges().empty() || !node.pmi()->texts().empty() || node.mesh() ||
           std::ranges::any_of(node.childNodes(), holdsMesh);
}

} // namespace

void ContentCount::addPMI(BlockId block, const ExcPMIData& pmi) {
    for (const auto& set : pmi.annotationSets()) {
        m_mechanical.captures += set->captures().size();
        for (const auto& capture : set->captures()) m_captures.emplace(block, capture->id());
        m_mechanical.views += set->views().size();
        for (const auto& view : set->views()) {
            const std::uint64_t others = view->notes().size() + view->datums().size() +
                                         view->datumTargets().size() + view->dimensions().size();
            m_mechanical.annotations += others + view->gdts().size() + view->roughness().size();
            m_semantic += others;
            for (const auto& tolerance : view->gdts()) m_semantic += tolerance->gdtRows().size();
        }
    }
}

void ContentCount::addMisc(BlockId block, const ExcMechanicalMiscData& misc) {
    m_mechanical.layers += misc.layers().size();
    for (const auto& layer : misc.layers()) m_layers.emplace(block, layer->name());
    m_mechanical.materials += misc.materials().size();
    for (const ExcMiscPropertiesGroup& group : misc.miscData().groups())
        if (!ContentsReport::isOwn(group)) m_mechanical.properties += group.properties().size();
}

void ContentCount::addColor(const ExcColor& color) {
    using EChannel = ExcColor::EChannel;
    if (color.hasRGB())
        m_colors.emplace(color[EChannel::red], color[EChannel::green], color[EChannel::blue],
                         color.hasAlpha() ? color[EChannel::alpha] : -1);
}

void ContentCount::addScene(BlockId block, const ExcVisualizationData& data) {
    m_display.views += data.views().size();
    m_display.captures += data.captures().size();
    for (const auto& capture : data.captures())
        m_captures.emplace(block, capture->mechanicalId().empty() ? capture->id() : capture->mechanicalId());
    forEachNode(data, [this](const ExcVisuNode& node, bool isAnnotation) {
        ++m_display.nodes;
        if (node.pmi()) {
            ++m_display.annotations;
            m_graphical += isDrawn(node) ? 1 : 0;
        }
        const auto paint = [&](const ExcColor& color) {
            if (!isAnnotation) addColor(color);
        };
        const auto addEdges = [&](const std::vector<ExcVisuEdgePtr>& edges) {
            m_display.edges += isAnnotation ? 0 : edges.size();
            for (const auto& edge : edges) paint(edge->color());
        };
        if (node.attributes() && node.attributes()->color()) paint(*node.attributes()->color());
        if (node.mesh()) {
            ++m_display.meshes;
            m_display.faces += isAnnotation ? 0 : node.mesh()->faces().size();
            for (const auto& face : node.mesh()->faces()) {
                paint(face->color());
                for (const ExcVisuFace::Polygon& polygon : face->polygons()) {
                    constexpr int listOfTriangles = 4;
                    if (polygon.type == listOfTriangles)
                        m_display.triangles += polygon.indices.size() / 3;
                    else
                        ++m_display.polygons;
                }
            }
            addEdges(node.mesh()->edges());
        }
        if (node.wire()) addEdges(node.wire()->edges());
        if (node.pointSet())
            for (const auto& points : node.pointSet()->points())
                m_display.points += points->points().size() / 3;
    });
}

void ContentCount::add(const IExchangeObject& object) {
    if (const auto* root = dynamic_cast<const ExcRootMechanicalData*>(&object)) {
        m_isEmpty = false;
        if (root->pmiData()) addPMI(0, *root->pmiData());
    } else if (const auto* block = dynamic_cast<const ExcBlockMechanicalData*>(&object)) {
        m_isEmpty = false;
        const std::uint64_t id = block->blockId();
        if (block->pmiData()) addPMI(id, *block->pmiData());
        if (block->miscData()) addMisc(id, *block->miscData());
        if (const auto& features = block->manufacturingData()) m_mechanical.features += featuresOf(*features);
        if (const auto& mapping = block->mappingData()) m_mechanical.mappings += mapping->mapping().size();
        if (const auto& entities = block->entityData()) {
            m_mechanical.entities += entities->data().size();
            for (const auto& entity : entities->data()) {
                m_mechanical.named += entity->name().empty() ? 0 : 1;
                m_mechanical.hidden += entity->isHidden() ? 1 : 0;
            }
        }
    } else if (const auto* scene = dynamic_cast<const ExcBlockVisualization*>(&object)) {
        m_isEmpty = false;
        if (scene->visualizationData()) addScene(scene->blockId(), *scene->visualizationData());
    } else if (const auto* assembly = dynamic_cast<const ExcRootAssemblyVisualization*>(&object)) {
        m_isEmpty = false;
        if (assembly->visualizationData()) addScene(0, *assembly->visualizationData());
    }
}

std::map<std::wstring, std::uint64_t> ContentCount::byKind() const {
    return {{L"semantic annotations", m_semantic},
            {L"graphical annotations", m_graphical},
            {L"views", m_captures.size()},
            {L"materials", m_mechanical.materials},
            {L"layers", m_layers.size()},
            {L"colours", m_colors.size()},
            {L"properties", m_mechanical.properties}};
}

std::string ContentCount::text() const {
    return line("Mechanical ", figuresOf(m_mechanical)) + line("Display    ", figuresOf(m_display));
}

std::string ContentCount::jsonMembers() const {
    return member("mechanical", figuresOf(m_mechanical)) + "," + member("display", figuresOf(m_display));
}

} // namespace zeq::host
