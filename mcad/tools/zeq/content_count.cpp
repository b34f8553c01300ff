// Counting along the documents, scenes without recursion.
#include "zeq/content_count.h"

#include <vector>

#include "text/text.h"
#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_visualization/scene.h"

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

void addPMI(MechanicalCount& counts, const ExcPMIDataPtr& pmi) {
    if (!pmi) return;
    for (const auto& set : pmi->annotationSets()) {
        counts.captures += set->captures().size();
        counts.views += set->views().size();
        for (const auto& view : set->views())
            counts.annotations += view->notes().size() + view->datums().size() + view->datumTargets().size() +
                                  view->gdts().size() + view->dimensions().size() + view->roughness().size();
    }
}

Figures figuresOf(const MechanicalCount& counts) {
    return {{counts.annotations, "annotation", "annotations", "annotations"},
            {counts.views, "annotation view", "annotation views", "views"},
            {counts.captures, "capture", "captures", "captures"},
            {counts.layers, "layer", "layers", "layers"},
            {counts.materials, "material", "materials", "materials"},
            {counts.features, "machining feature", "machining features", "features"},
            {counts.mappings, "mapped entity", "mapped entities", "mapped_entities"},
            {counts.entities, "described entity", "described entities", "described_entities"}};
}

Figures figuresOf(const DisplayCount& counts) {
    return {{counts.meshes, "mesh", "meshes", "meshes"},
            {counts.polygons, "polygon", "polygons", "polygons"},
            {counts.nodes, "node", "nodes", "nodes"},
            {counts.views, "view", "views", "views"},
            {counts.captures, "capture", "captures", "captures"}};
}

std::uint64_t featuresOf(const ExcMfgData& data) {
    return data.simpleHoles().size() + data.taperHoles().size() + data.counterBoreHoles().size() +
           data.counterSinkHoles().size() + data.counterDrillHoles().size() + data.internalThreads().size() +
           data.externalThreads().size() + data.unclassifiedFeatures().size();
}

void addScene(DisplayCount& counts, const ExcVisualizationDataPtr& data) {
    if (!data) return;
    counts.views += data->views().size();
    counts.captures += data->captures().size();
    std::vector<const ExcVisuNode*> pending;
    const auto wait = [&pending](const std::vector<ExcVisuNodePtr>& nodes) {
        for (const ExcVisuNodePtr& node : nodes) pending.push_back(node.get());
    };
    wait(data->sceneRootNodes());
    while (!pending.empty()) {
        const ExcVisuNode& node = *pending.back();
        pending.pop_back();
        ++counts.nodes;
        if (node.mesh()) {
            ++counts.meshes;
            for (const auto& face : node.mesh()->faces()) counts.polygons += face->polygons().size();
        }
        wait(node.childNodes());
    }
}

} // namespace

void ContentCount::add(const IExchangeObject& object) {
    if (const auto* root = dynamic_cast<const ExcRootMechanicalData*>(&object)) {
        addPMI(m_mechanical, root->pmiData());
    } else if (const auto* block = dynamic_cast<const ExcBlockMechanicalData*>(&object)) {
        addPMI(m_mechanical, block->pmiData());
        if (const auto& misc = block->miscData()) {
            m_mechanical.layers += misc->layers().size();
            m_mechanical.materials += misc->materials().size();
        }
        if (const auto& features = block->manufacturingData()) m_mechanical.features += featuresOf(*features);
        if (const auto& mapping = block->mappingData()) m_mechanical.mappings += mapping->mapping().size();
        if (const auto& entities = block->entityData()) m_mechanical.entities += entities->data().size();
    } else if (const auto* scene = dynamic_cast<const ExcBlockVisualization*>(&object)) {
        addScene(m_display, scene->visualizationData());
    } else if (const auto* assembly = dynamic_cast<const ExcRootAssemblyVisualization*>(&object)) {
        addScene(m_display, assembly->visualizationData());
    }
}

std::string ContentCount::text() const {
    return line("Mechanical ", figuresOf(m_mechanical)) + line("Display    ", figuresOf(m_display));
}

std::string ContentCount::jsonMembers() const {
    return member("mechanical", figuresOf(m_mechanical)) + "," + member("display", figuresOf(m_display));
}

} // namespace zeq::host
