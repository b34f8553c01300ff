// Documents of a small model: a plate with one face of two triangles, one edge and one point, placed by the product.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "scene/build.h"

namespace zeq::test {

struct Model {
    std::shared_ptr<ExcProductStructure> structure = std::make_shared<ExcProductStructure>();
    ExcBlockPtr plate = addBlock(3, L"Plate");
    ExcBlockReferencePtr reference = place(3, L"Plate:1", nullptr);
    ExcVisuFacePtr face = std::make_shared<ExcVisuFace>();
    ExcVisuEdgePtr edge = std::make_shared<ExcVisuEdge>();
    ExcVisuPointsPtr points = std::make_shared<ExcVisuPoints>();
    ExcVisuNodePtr node = std::make_shared<ExcVisuNode>();
    ExcVisualizationDataPtr display = std::make_shared<ExcVisualizationData>();
    std::vector<std::shared_ptr<IExchangeObject>> more;

    Model() {
        structure->setProductName(L"Product");
        structure->setUnits(ELengthUnitType::millimeter);
        display->setUnits(ELengthUnitType::millimeter);
        face->setMechanicalId(L"17");
        face->setVertices(std::vector<float>{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0});
        face->setNormals(std::vector<float>{0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1});
        face->setPolygons({{4, {0, 1, 2, 0, 2, 3}}});
        edge->setMechanicalId(L"18");
        edge->setPoints({0, 0, 0, 1, 0, 0});
        edge->setLineIndices({0, 1});
        edge->setLineType(ExcVisuEdge::ELineType::line_strip);
        points->setPoint({0, 0, 5});
        points->setPointIndices({0});
        auto mesh = std::make_shared<ExcVisuMesh>();
        mesh->addFace(face);
        mesh->addEdge(edge);
        auto set = std::make_shared<ExcVisuPointSet>();
        set->addPoints(points);
        node->setType(ExcVisuNode::EType::MESH);
        node->setMesh(mesh);
        node->setPointSet(set);
        display->addSceneRootNode(node);
    }

    ExcBlockPtr addBlock(std::uint64_t id, const std::wstring& name) {
        auto block = std::make_shared<ExcBlock>();
        block->setId(id);
        block->setName(name);
        block->setPart(true);
        structure->addBlock(block);
        return block;
    }
    /// In a block, or at the top.
    ExcBlockReferencePtr place(std::uint64_t id, const std::wstring& name, const ExcBlockPtr& in) {
        auto placed = std::make_shared<ExcBlockReference>();
        placed->setBlockId(id);
        placed->setName(name);
        if (in)
            in->addBlockReference(placed);
        else
            structure->addRootBlockReference(placed);
        return placed;
    }
    /// A drawn annotation with a stroke, below the node.
    ExcVisuPMIPtr addAnnotation(const std::wstring& id) const {
        auto pmi = std::make_shared<ExcVisuPMI>();
        pmi->setId(id);
        pmi->setMechanicalId(id);
        pmi->setDisplayName(L"Note " + id);
        auto stroke = std::make_shared<ExcVisuEdge>();
        stroke->setPoints({0, 0, 9, 1, 0, 9, 1, 1, 9});
        stroke->setLineType(ExcVisuEdge::ELineType::line_loop);
        pmi->addEdge(stroke);
        auto child = std::make_shared<ExcVisuNode>();
        child->setType(ExcVisuNode::EType::DIMENSION_DIAMETER);
        child->setPMI(pmi);
        node->addChildNode(child);
        return pmi;
    }
    ExcVisuCapturePtr addView(const std::wstring& name, const std::vector<std::wstring>& annotations) const {
        auto capture = std::make_shared<ExcVisuCapture>();
        capture->setId(name);
        capture->setDisplayName(name);
        ExcCamera camera;
        camera.setType(ExcCamera::EType::orthographic);
        camera.setOrthographicZoomFactor(40);
        camera.setEye({0, 0, 100});
        camera.setUp({0, 1, 0});
        capture->setCamera(camera);
        capture->setAnnotationIds(annotations);
        display->addCapture(capture);
        return capture;
    }

    scene::Scene build() const {
        scene::Documents documents;
        documents.add(structure);
        auto block = std::make_shared<ExcBlockVisualization>();
        block->setBlockId(3);
        block->setVisualizationData(display);
        documents.add(block);
        for (const auto& object : more) documents.add(object);
        return scene::build(std::move(documents));
    }
};

} // namespace zeq::test
