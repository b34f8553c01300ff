#include "tools/fake_model.h"

#include <initializer_list>
#include <string>
#include <utility>

#include "zeq_api/exchange_mechanical/mechanical_data.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::test {

namespace {

constexpr std::uint64_t wheel = 4;

ExcEntityPtr face(std::uint64_t number) {
    auto entity = std::make_shared<ExcEntity>();
    entity->setType(ExcEntity::EType::fsp);
    entity->fsp() = std::make_shared<ExcFullSubentPath>(number);
    entity->fsp()->setSubentType(ExcFullSubentPath::ESubentType::face);
    return entity;
}

template <class T>
std::shared_ptr<T> annotation(const std::wstring& id, const std::wstring& name,
                              std::initializer_list<int> faces) {
    auto result = std::make_shared<T>();
    result->setId(id);
    result->setName(name);
    for (const int number : faces) result->addLinkedElement(face(static_cast<std::uint64_t>(number)));
    return result;
}

ExcPMIDataPtr annotations() {
    const auto bore = annotation<ExcPMIDimension>(L"101", L"Bore", {11, 12});
    bore->setSubType(ExcPMIDimension::ESubType::diameter);
    bore->setMainType(ExcPMIDimension::EMainType::tolerance);
    bore->setUnit(ExcPMIDimension::EDimUnit::mm);
    bore->setValue(30);
    bore->setNumericalToleranceUpper(0.2);
    const auto position = annotation<ExcPMIGDT>(L"102", L"Position", {11, 12, 13, 14, 15, 16, 17, 18});
    position->setToleranceType(ExcPMIGDT::EToleranceType::location_true_position);
    ExcPMIGDT::ModifiedDatum letter;
    letter.setDatumId(L"103");
    ExcPMIGDT::DatumRef compartment;
    compartment.addModifiedDatum(letter);
    for (const double value : {0.5, 0.2}) {
        const auto row = std::make_shared<ExcPMIGDT::Row>();
        row->setToleranceValueType(ExcPMIGDT::EToleranceValueType::diameter);
        row->setToleranceValue(value);
        row->addZoneModifier(ExcPMIGDT::EToleranceModifier::material_condition_maximum);
        const auto frame = std::make_shared<ExcPMIGDT::Frame>();
        frame->addDatumRef(compartment);
        row->setReferenceFrame(frame);
        position->addGdtRow(row);
    }
    const auto datum = annotation<ExcPMIDatum>(L"103", L"", {20});
    datum->setLabel(L"A");
    const auto note = annotation<ExcPMINote>(L"104", L"", {});
    const auto text = std::make_shared<ExcPMINote::Text>();
    text->setLabel(L"SIX\x1B[2J SPOKES\r\n注");
    note->addText(text);
    const auto view = std::make_shared<ExcPMIAnnotationView>();
    view->addNote(note);
    view->addDatum(datum);
    view->addGdt(position);
    view->addDimension(bore);
    const auto capture = std::make_shared<ExcPMICapture>();
    capture->setId(L"201");
    capture->setName(L"MBD_A");
    for (const wchar_t* const id : {L"101", L"103"}) capture->addAnnotationId(id);
    const auto set = std::make_shared<ExcPMIAnnotationSet>();
    set->addView(view);
    set->addCapture(capture);
    auto pmi = std::make_shared<ExcPMIData>();
    pmi->addAnnotationSet(set);
    return pmi;
}

ExcMiscPropertiesGroup group(const std::wstring& name,
                             std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> properties) {
    ExcMiscPropertiesGroup result;
    result.name() = name;
    for (const auto& [key, value] : properties) {
        ExcMiscProperty property;
        property.name() = key;
        property.value() = value;
        result.addProperty(property);
    }
    return result;
}

} // namespace

Documents mechanicalDocuments() {
    const auto pmi = std::make_shared<ExcBlockMechanicalData>();
    pmi->setBlockId(wheel);
    pmi->setPMIData(annotations());

    const auto misc = std::make_shared<ExcMechanicalMiscData>();
    misc->miscData().addGroup(group(L"attributes", {{L"supplier", L"us"}}));
    for (const auto& [name, entities] : {std::pair(L"DIM", 2), std::pair(L"TYRE", 1)}) {
        const auto layer = std::make_shared<ExcMiscLayer>();
        layer->setName(name);
        for (int i = 0; i < entities; ++i) layer->addEntity(face(11));
        misc->addLayer(layer);
    }
    const auto material = std::make_shared<ExcMiscMaterial>();
    material->setName(L"Steel");
    material->setPartLevelMaterial(true);
    const auto density = std::make_shared<ExcMiscMaterialProperty>();
    density->setValue(7850);
    density->unit().mass = std::make_shared<ExcMiscMaterialPropertyUnit>();
    density->unit().mass->setUnits(L"kg");
    density->unit().length = std::make_shared<ExcMiscMaterialPropertyUnit>();
    density->unit().length->setUnits(L"m");
    material->set(ExcMiscMaterial::EProperty::density, density);
    misc->addMaterial(material);
    const auto spoke = std::make_shared<ExcTopologicalEntityInformation>();
    spoke->setEntity(face(12));
    spoke->setName(L"spoke");
    spoke->setHidden(true);
    const auto entities = std::make_shared<ExcEntityData>();
    entities->addData(spoke);
    const auto other = std::make_shared<ExcBlockMechanicalData>();
    other->setBlockId(wheel);
    other->setMiscData(misc);
    other->setEntityData(entities);
    return {pmi, other};
}

Documents displayDocuments() {
    const auto mesh = std::make_shared<ExcVisuMesh>();
    for (const std::uint16_t red : {0x1000, 0x2000}) {
        const auto triangle = std::make_shared<ExcVisuFace>();
        triangle->setPolygons({{4, {0, 1, 2}}});
        triangle->setColor(ExcColor(red, 0, 0));
        triangle->setMechanicalId(red == 0x1000 ? L"12" : L"13");
        mesh->addFace(triangle);
    }
    const auto edge = std::make_shared<ExcVisuEdge>();
    edge->setColor(ExcColor(0, 0, 0x7000));
    mesh->addEdge(edge);
    const auto drawn = std::make_shared<ExcVisuPMI>();
    drawn->setId(L"101");
    drawn->addEdge(edge);
    const auto body = std::make_shared<ExcVisuNode>(), line = std::make_shared<ExcVisuNode>();
    const auto root = std::make_shared<ExcVisuNode>();
    body->setMesh(mesh);
    line->setPMI(drawn);
    line->setAttributes(std::make_shared<ExcVisuAttributes>());
    line->attributes()->setColor(std::make_shared<ExcColor>(0, 0xFFFF, 0)); // of no surface
    root->setChildNodes({body, line});
    const auto scene = std::make_shared<ExcVisualizationData>();
    scene->addSceneRootNode(root);
    const auto display = std::make_shared<ExcBlockVisualization>();
    display->setBlockId(wheel);
    display->setVisualizationData(scene);
    return {display};
}

std::shared_ptr<IExchangeObject> contentsReport() {
    const auto misc = std::make_shared<ExcMechanicalMiscData>();
    const auto add = [&misc](const wchar_t* kind,
                             std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> properties) {
        misc->miscData().addGroup(group(std::wstring(L"contents of the file: ") + kind, properties));
    };
    add(L"parts", {{L"in the file", L"2"}, {L"sent", L"2"}});
    add(L"instances", {{L"in the file", L"5"}, {L"sent", L"5"}});
    add(L"semantic annotations", {{L"in the file", L"6"},
                                  {L"sent", L"5"},
                                  {L"left out: the value cannot be read", L"1"},
                                  {L"items: the value cannot be read", L"#105"}});
    add(L"views", {{L"in the file", L"2"}, {L"sent", L"2"}});
    add(L"graphical annotations",
        {{L"in the file", L"8"}, {L"sent", L"1"}, {L"left out: annotations are switched off", L"7"}});
    add(L"layers", {{L"in the file", L"2"}, {L"sent", L"2"}});
    add(L"materials", {{L"in the file", L"1"}, {L"sent", L"1"}});
    add(L"colours", {{L"in the file", L"3"}, {L"sent", L"3"}});
    add(L"properties", {{L"in the file", L"1"}, {L"sent", L"1"}});
    add(L"tomorrow's", {{L"in the file", L"4"}, {L"sent", L"4"}});
    auto file = std::make_shared<ExcBlockMechanicalData>();
    file->setMiscData(misc);
    return file;
}

} // namespace zeq::test
