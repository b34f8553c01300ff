// Sends part after part, so that the host can work on what has arrived.
#include "convexor/import_job.h"

#include <memory>
#include <unordered_map>
#include <utility>

#include <BRepTools.hxx>
#include <Standard_Failure.hxx>

#include "convexor/assembly_scene.h"
#include "convexor/attributes.h"
#include "convexor/geometry_figures.h"
#include "convexor/in_time.h"
#include "convexor/mapping.h"
#include "convexor/scene_builder.h"
#include "convexor/scene_colors.h"
#include "convexor/scene_node.h"
#include "convexor/text.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"
#include "zeq_api/exchange_object/messages.h"

namespace zeq::convexor {

namespace {

std::wstring countText(std::size_t count, const wchar_t* noun) {
    return std::to_wstring(count) + L' ' + noun + (count == 1 ? L"" : L"s");
}

std::size_t instanceCount(const ExcProductStructure& product) {
    std::size_t count = 0;
    for (const ExcBlockPtr& block : product.blocks()) count += block->blockReferences().size();
    return count;
}

std::wstring summary(const ExcProductStructure& product) {
    const std::size_t references = product.rootBlockReferences().size() + instanceCount(product);
    return countText(product.blocks().size(), L"block") + L", " + countText(references, L"reference");
}

/// The root of a scene, which is made if there is none.
ExcVisuNode& rootOf(ExcVisualizationDataPtr& scene) {
    if (!scene) {
        scene = std::make_shared<ExcVisualizationData>();
        scene->addSceneRootNode(makeNode(ExcVisuNode::EType::ROOT));
    }
    return *scene->sceneRootNodes().front();
}

void addTriangles(const ExcVisuMeshPtr& mesh, ExcVisualizationDataPtr& scene) {
    const ExcVisuNodePtr leaf = makeNode(ExcVisuNode::EType::MESH);
    leaf->setLeaf(true);
    leaf->setMesh(mesh);
    const ExcVisuNodePtr meshes = makeNode(ExcVisuNode::EType::MESHES);
    meshes->addChildNode(leaf);
    rootOf(scene).addChildNode(meshes);
}

void addAnnotations(const ProductAnnotations& annotations, ExcVisualizationDataPtr& scene) {
    if (!annotations.node && annotations.captures.empty()) return;
    ExcVisuNode& root = rootOf(scene);
    if (annotations.node) root.addChildNode(annotations.node);
    scene->addViews(annotations.views);
    scene->addCaptures(annotations.captures);
}

} // namespace

int ImportJob::run(const InputFile& input) {
    const std::wstring name = wideText(input.path().filename().string());
    readContents(input);
    readStructure(input, name);
    if (m_settings.miscData && m_settings.geometry) measureGeometry();
    sendStructure(name);
    int errors = m_model.errors;
    if (m_settings.geometry) errors += sendGeometry();
    if (m_settings.display) {
        errors += sendScenes();
        sendScenesOfAssemblies();
    }
    const bool isNamed = m_settings.mapping || !m_model.directory.empty();
    if (isNamed && (m_settings.geometry || m_settings.display)) sendMappings();
    if (m_settings.rootDisplay) sendRootScene();
    sendReport();
    m_reporter.logTimes();
    return errors;
}

void ImportJob::readContents(const InputFile& input) {
    if (formatOf(input) != EFormatType::STEP) return;
    try {
        m_contents = readStepContents(input, m_settings, m_reporter);
        m_isStep = true;
    } catch (const part21::ReadError&) { // the kernel gives its own reason when it refuses the file
        return;
    }
    sendMechanicalData(m_contents, m_channel);
}

void ImportJob::readStructure(const InputFile& input, const std::wstring& name) {
    const step::SparedUsages spared = std::move(m_contents.spared);
    if (const std::optional<InputFile> sparing = std::exchange(m_contents.sparing, std::nullopt)) {
        std::string problem;
        try {
            return readStructure(*sparing, name, spared);
        } catch (const std::runtime_error& error) {
            problem = error.what();
        } catch (const Standard_Failure& error) {
            problem = error.GetMessageString();
        }
        m_reporter.log(ELogEventLevelType::information, L"Reading once more: " + wideText(problem));
    }
    readStructure(input, name, {});
}

void ImportJob::readStructure(const InputFile& input, const std::wstring& name,
                              const step::SparedUsages& spared) {
    m_model = readModel(input, m_settings, m_reporter);
    if (m_isStep) m_model.lengthUnit = m_contents.lengthUnit;
    if (!spared.byUser.empty()) m_model.origins.setLargest(static_cast<int>(m_contents.largestNumber));
    m_reporter.beginPulse(L"Building the product structure");
    m_structure = buildProductStructure(m_model, name, m_settings, m_contents.known, spared);
}

void ImportJob::sendStructure(const std::wstring& name) {
    const std::wstring quoted = L"'" + name + L"'";
    m_reporter.message(quoted + L": " + summary(*m_structure.product));
    for (const std::wstring& remark : m_model.remarks)
        m_reporter.message(std::wstring(quoted).append(L" ").append(remark));
    m_reporter.beginPulse(L"Sending the product structure");
    m_channel.send(m_structure.product);
    m_channel.send(std::make_shared<ExcStageFinished>(ExcStageFinished::EStage::product_structure));
}

template <class Work>
int ImportJob::forEachPart(const wchar_t* thing, ELogEventLevelType level, const Work& work) {
    int errors = 0;
    std::size_t done = 0;
    for (const Structure::Part& part : m_structure.parts) {
        const auto report = [&](const std::wstring& reason) {
            ++errors;
            m_reporter.log(level, L"Block '" + part.block->name() + L"' has no " + thing + L": " + reason);
        };
        try {
            work(part);
        } catch (const std::runtime_error& error) {
            report(wideText(error.what()));
        } catch (const Standard_Failure& error) {
            report(wideText(error.DynamicType()->Name()) + L" " + wideText(error.GetMessageString()));
        }
        m_reporter.advance(static_cast<double>(++done) / static_cast<double>(m_structure.parts.size()));
    }
    return errors;
}

template <class Result>
InOrder<Result> ImportJob::fromEachPart(Result (ImportJob::*work)(const Structure::Part&)) {
    return {m_structure.parts.size(), !arePartsEntangled(),
            [this, work](std::size_t index) { return (this->*work)(m_structure.parts[index]); }};
}

bool ImportJob::arePartsEntangled() const {
    std::unordered_map<const TopoDS_TShape*, const Structure::Part*> owners;
    bool result = false;
    for (const Structure::Part& part : m_structure.parts)
        part.numbering.forEach([&](const TopoDS_Shape& shape, int) {
            result = result || owners.try_emplace(shape.TShape().get(), &part).first->second != &part;
        });
    return result;
}

void ImportJob::measureGeometry() {
    m_reporter.beginStage(L"Measuring geometry");
    auto measured = fromEachPart(&ImportJob::measure);
    const auto add = [&measured](const Structure::Part& part) {
        ExcMiscPropertiesGroup figures = measured.next();
        if (!figures.properties().empty()) part.block->miscData().addGroup(std::move(figures));
    };
    forEachPart(L"figures of its geometry", ELogEventLevelType::warning, add);
}

ExcMiscPropertiesGroup ImportJob::measure(const Structure::Part& part) {
    auto figures = inTime(timeFor(part.shape), [shape = part.shape, unit = m_model.lengthUnit] {
        return geometryFigures(shape, unit);
    });
    if (!figures.valid()) throw std::runtime_error("the kernel finds no end in measuring it");
    return figures.get();
}

int ImportJob::sendGeometry() {
    m_reporter.beginStage(L"Sending geometry");
    BuildNotes all;
    const auto send = [&](const Structure::Part& part) {
        BuildNotes notes;
        std::optional<timing::Lap> lap(std::in_place, m_reporter.watch(), L"Converting geometry");
        const OwnedEntities entities(
            buildBody(part.shape, part.numbering, 1 / m_model.lengthUnit.millimeters, &notes));
        lap.reset();
        const auto report = [&](ELogEventLevelType level, const std::vector<std::string>& lines) {
            for (const std::string& line : lines)
                m_reporter.log(level, L"Block '" + part.block->name() + L"': " + wideText(line));
        };
        report(ELogEventLevelType::error, notes.errors);
        report(ELogEventLevelType::warning, notes.warnings);
        all.lost += notes.lost;
        account(notes);
        if (entities.list.count() == 0) return;
        const auto geometry = std::make_shared<ExcBlockGeometry>();
        geometry->setBlockId(part.block->id());
        m_channel.send(geometry, entities.list, m_compress);
        all.faces += notes.faces;
        all.wires += notes.wires;
    };
    const int failures = forEachPart(L"geometry", ELogEventLevelType::error, send);
    m_contents.report.addSent("faces", static_cast<std::size_t>(all.faces));
    if (all.faces + all.wires + all.lost == 0) m_reporter.message(L"There is no exact geometry in this file");
    if (all.wires > 0 || all.lost > 0)
        m_reporter.message(L"Sent " + countText(all.faces, L"face") + L" and " +
                           countText(all.wires, L"wire") + L"; " + std::to_wstring(all.lost) + L" left out");
    return failures + all.lost;
}

void ImportJob::account(const BuildNotes& notes) {
    m_iges.lostWires += static_cast<std::size_t>(notes.lost) - notes.lostFaces.size();
    for (const BuildNotes::LostFace& face : notes.lostFaces)
        m_contents.report.addLost("faces", wideText(face.reason), 1, L"#" + std::to_wstring(face.number));
}

void ImportJob::sendScene(const ExcBlock& block, const ExcVisualizationDataPtr& scene) {
    scene->setUnits(m_model.lengthUnit.type);
    scene->sceneRootNodes().front()->setGroupName(block.name());
    const auto display = std::make_shared<ExcBlockVisualization>();
    display->setBlockId(block.id());
    display->setVisualizationData(scene);
    m_channel.send(display);
}

void ImportJob::sendScenesOfAssemblies() {
    for (const auto& [blockId, product] : m_contents.products) {
        const ExcBlockPtr block = m_structure.product->getBlockById(blockId);
        ExcVisualizationDataPtr scene;
        if (!block || block->isPart() || product.isRootAssembly) continue;
        addAnnotations(product.annotations, scene);
        if (scene) sendScene(*block, scene);
    }
}

int ImportJob::sendScenes() {
    m_reporter.beginStage(L"Sending display data");
    const auto sendWhole = [&](const Structure::Part& part, const ExcVisualizationDataPtr& shape) {
        if (const ExcVisualizationDataPtr scene = complete(part, shape)) sendScene(*part.block, scene);
    };
    auto shown = fromEachPart(&ImportJob::showShape);
    const auto send = [&](const Structure::Part& part) {
        ShownShape shape;
        try {
            shape = shown.next();
        } catch (...) { // what else there is to show travels all the same
            sendWhole(part, nullptr);
            throw;
        }
        for (const std::string& loss : shape.losses)
            m_reporter.log(ELogEventLevelType::warning,
                           L"Block '" + part.block->name() + L"': " + wideText(loss));
        sendWhole(part, shape.scene);
    };
    return forEachPart(L"display data of its shape", ELogEventLevelType::error, send);
}

ImportJob::ShownShape ImportJob::showShape(const Structure::Part& part) {
    if (!m_settings.tessellation) return {};
    const Fineness fineness = finenessFor(part.shape, m_settings.chord * m_model.lengthUnit.millimeters);
    if (!tessellateInTime(part.shape, fineness))
        throw std::runtime_error("the kernel finds no end in tessellating it");
    const auto look = [&] {
        const std::lock_guard reading(m_document);
        return Attributes(m_model).appearance(part.label);
    };
    ShownShape shown;
    shown.scene = buildScene(part.shape, part.numbering, look(), fineness,
                             {m_model.lengthUnit, m_settings.hiddenEntities}, shown.losses);
    BRepTools::Clean(part.shape);
    if (shown.scene && m_isStep) paint(*shown.scene, m_contents.colors);
    return shown;
}

ExcVisualizationDataPtr ImportJob::complete(const Structure::Part& part, ExcVisualizationDataPtr scene) {
    const auto product = m_contents.products.find(part.block->id());
    const bool isKnown = product != m_contents.products.end();
    if (isKnown && product->second.mesh) addTriangles(product->second.mesh, scene);
    if (scene) addColors(*scene, m_colors);
    if (isKnown) addAnnotations(product->second.annotations, scene);
    return scene;
}

void ImportJob::sendMappings() {
    m_reporter.watch().begin(L"Sending mappings");
    for (const Structure::Part& part : m_structure.parts) {
        const auto mapping = buildMapping(part.shape, part.numbering, m_model.origins);
        if (!mapping) continue;
        const auto document = std::make_shared<ExcBlockMechanicalData>();
        document->setBlockId(part.block->id());
        if (m_settings.mapping) document->setMappingData(mapping);
        addIgesData(m_model.directory, *mapping, *document);
        if (document->miscData())
            for (const ExcMiscLayerPtr& layer : document->miscData()->layers()) {
                m_iges.sentLevels.insert(layer->id());
                m_contents.report.addHeld("layers", 1); // one that stands in several parts counts in each
                m_contents.report.addSent("layers", 1);
            }
        m_channel.send(document);
    }
}

void ImportJob::sendRootScene() {
    constexpr std::size_t most = 10000;
    std::size_t leftOut = 0;
    ExcVisualizationDataPtr scene = buildAssemblyScene(*m_structure.product, most, leftOut);
    if (leftOut > 0)
        m_reporter.log(ELogEventLevelType::warning, L"The scene of the assembly ends after " +
                                                        countText(most, L"node") +
                                                        L"; the product structure has them all");
    addColors(*scene, m_colors);
    for (const auto& [blockId, product] : m_contents.products)
        if (product.isRootAssembly) addAnnotations(product.annotations, scene);
    const auto display = std::make_shared<ExcRootAssemblyVisualization>();
    display->setVisualizationData(scene);
    m_channel.send(display);
}

void ImportJob::sendReport() {
    m_reporter.watch().begin(L"Accounting");
    LossReport& report = m_contents.report;
    if (m_isStep) {
        accountForStep();
    } else if (m_model.iges) {
        for (const Structure::Part& part : m_structure.parts) m_iges.parts.push_back(part.shape);
        accountForIges(*m_model.iges, m_iges, m_settings, report);
    } else {
        return;
    }
    report.addSent("colours", m_colors.size());
    report.closeAccount("colours", m_settings.display && m_settings.tessellation
                                       ? L"nothing that is shown has it"
                                       : LossReport::switchedOff);
    report.closeAccount("faces");
    m_channel.send(report.document());
}

void ImportJob::accountForStep() {
    LossReport& report = m_contents.report;
    report.addSent("parts", m_structure.parts.size());
    report.addSent("instances", instanceCount(*m_structure.product));
    std::set<std::uint64_t> unread(m_contents.faces.begin(), m_contents.faces.end());
    for (const Structure::Part& part : m_structure.parts)
        part.numbering.forEach([&unread](const TopoDS_Shape& shape, int number) {
            if (shape.ShapeType() == TopAbs_FACE) unread.erase(static_cast<std::uint64_t>(number));
        });
    report.addLost("faces", L"the kernel made no shape of it, or no product has it", unread);
    if (!m_settings.geometry)
        report.addLost("faces", LossReport::switchedOff, m_contents.faces.size() - unread.size());
    for (const char* const kind : {"parts", "instances"}) report.closeAccount(kind);
}

} // namespace zeq::convexor
