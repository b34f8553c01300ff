// The documents of the benchmarks. Their numbers vary as those of models do, so that compression finds no more
// in them than there.
#include "workloads.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/zeq_api.h"

namespace zeq::bench {

namespace {

constexpr int trianglesOfMesh = 10'000;

/// A wavy sheet of triangles with normals.
ExcVisuFacePtr sheet(int number) {
    constexpr int side = 71; // 2 * 70 * 71.4 triangles
    std::vector<float> vertices;
    std::vector<float> normals;
    for (int y = 0; y <= side; ++y)
        for (int x = 0; x <= side + 1; ++x) {
            const auto at = static_cast<float>(x * 37 + y * 11 + number) / 100;
            vertices.insert(vertices.end(),
                            {static_cast<float>(x) / 7, static_cast<float>(y) / 3, std::sin(at)});
            normals.insert(normals.end(), {-std::cos(at), std::sin(at) / 2, 0.5F});
        }
    std::vector<ExcVisuFace::Polygon> polygons;
    for (int i = 0; i < trianglesOfMesh; ++i) {
        const int corner = i / 2 % (side * (side + 1));
        polygons.push_back({4, {corner, corner + 1 + i % 2, corner + side + 2}});
    }
    auto face = std::make_shared<ExcVisuFace>();
    face->setVertices(std::move(vertices));
    face->setNormals(std::move(normals));
    face->setPolygons(std::move(polygons));
    face->setMechanicalId(std::to_wstring(number));
    return face;
}

void place(ExcPMIAnnotation& annotation, int number) {
    annotation.setId(L"annotation " + std::to_wstring(number));
    annotation.setName(L"Characteristic " + std::to_wstring(number % 1000));
    ExcVector2d position;
    position.set(0.37 * number, 1000.0 / (number + 1));
    annotation.setPosition(position);
    auto leader = std::make_shared<ExcPMILeader>();
    leader->addPoint(position);
    position.set(0.37 * number + 12.5, 3.75);
    leader->addPoint(position);
    annotation.addLeader(leader);
}

ExcPMIDimensionPtr dimension(int number) {
    auto made = std::make_shared<ExcPMIDimension>();
    place(*made, number);
    made->setValue(0.1 * number);
    made->setNumericalToleranceUpper(0.05);
    made->setNumericalToleranceLower(-0.001 * (number % 100));
    auto note = std::make_shared<ExcPMIText>();
    note->setPrefixString(std::to_wstring(number % 8) + L"x");
    made->setNote(note);
    return made;
}

ExcPMIGDTPtr tolerance(int number) {
    auto made = std::make_shared<ExcPMIGDT>();
    place(*made, number);
    auto row = std::make_shared<ExcPMIGDT::Row>();
    row->setToleranceValue(0.01 * (number % 37));
    made->addGdtRow(std::move(row));
    return made;
}

ExcPMINotePtr note(int number) {
    auto made = std::make_shared<ExcPMINote>();
    place(*made, number);
    auto text = std::make_shared<ExcPMINote::Text>();
    text->setLabel(L"Break all sharp edges, see sheet " + std::to_wstring(number));
    made->addText(text);
    return made;
}

ExcPMIDatumPtr datum(int number) {
    auto made = std::make_shared<ExcPMIDatum>();
    place(*made, number);
    made->setLabel(std::wstring(1, static_cast<wchar_t>(L'A' + number % 26)));
    return made;
}

} // namespace

std::shared_ptr<IExchangeObject> structure(long references) {
    auto made = std::make_shared<ExcProductStructure>();
    made->setProductName(L"benchmark");
    auto block = std::make_shared<ExcBlock>();
    block->setId(1);
    for (long i = 0; i < references; ++i) {
        auto reference = std::make_shared<ExcBlockReference>();
        const std::wstring number = std::to_wstring(i);
        reference->setGuid(L"1b4e28ba-2fa1-41d2-883f-" + std::wstring(12 - number.size(), L'0') + number);
        reference->setPersistentId(L"0:1:1:" + number);
        reference->setName(L"Bolt M8x40:" + number);
        reference->setBlockId(static_cast<unsigned>(i % 100) + 2);
        ExcTransformation placed;
        placed.translation().set(0.5 * static_cast<double>(i), 12.25 / static_cast<double>(i + 1), -3.0);
        reference->setTransformation(placed);
        reference->setColor({static_cast<std::uint16_t>(i % 256), 128, 64});
        block->addBlockReference(std::move(reference));
    }
    made->addBlock(std::move(block));
    return made;
}

std::shared_ptr<IExchangeObject> scene(int meshes) {
    auto root = std::make_shared<ExcVisuNode>();
    for (int i = 0; i < meshes; ++i) {
        auto mesh = std::make_shared<ExcVisuMesh>();
        mesh->addFace(sheet(i));
        auto node = std::make_shared<ExcVisuNode>();
        node->setMesh(mesh);
        root->addChildNode(node);
    }
    auto data = std::make_shared<ExcVisualizationData>();
    data->addSceneRootNode(root);
    auto object = std::make_shared<ExcBlockVisualization>();
    object->setVisualizationData(data);
    return object;
}

std::shared_ptr<IExchangeObject> annotations(int count) {
    auto view = std::make_shared<ExcPMIAnnotationView>();
    for (int i = 0; i < count; ++i) {
        if (i % 4 == 0) view->addDimension(dimension(i));
        if (i % 4 == 1) view->addGdt(tolerance(i));
        if (i % 4 == 2) view->addNote(note(i));
        if (i % 4 == 3) view->addDatum(datum(i));
    }
    auto set = std::make_shared<ExcPMIAnnotationSet>();
    set->addView(view);
    auto pmi = std::make_shared<ExcPMIData>();
    pmi->addAnnotationSet(set);
    auto object = std::make_shared<ExcRootMechanicalData>();
    object->setPMIData(pmi);
    return object;
}

} // namespace zeq::bench
