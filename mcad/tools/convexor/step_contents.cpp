// Runs the readers of the text one after another and accounts for what they leave.
#include "convexor/step_contents.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <utility>

#include "convexor/text.h"
#include "step/contents.h"
#include "step/products.h"
#include "step/spared_graphics.h"
#include "step/tessellated_shapes.h"

namespace zeq::convexor {

namespace {

std::string readWhole(const InputFile& input) {
    std::ifstream stream(input.plainPath(), std::ios::binary);
    std::string text;
    stream.seekg(0, std::ios::end);
    text.resize(static_cast<std::size_t>(std::max<std::streamoff>(stream.tellg(), 0)));
    stream.seekg(0);
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(stream.gcount(), 0)));
    if (stream.bad()) cannotRead(input.path(), "its content cannot be read");
    return text;
}

/// How many instances of the file an annotation stands for.
std::size_t countOf(const ExcPMIAnnotation& annotation) {
    const auto* tolerance = dynamic_cast<const ExcPMIGDT*>(&annotation);
    return tolerance ? tolerance->gdtRows().size() : 1;
}

/// Reads the text of one file.
class ContentsReader {
public:
    ContentsReader(const part21::ExchangeStructure& structure, const ImportSettings& settings,
                   StepContents& contents)
        : m_file(structure, contents.lengthUnit.millimeters), m_settings(settings), m_contents(contents),
          m_products(step::readProducts(m_file)), m_held(step::readContents(m_file, m_products)) {}

    void read() {
        for (const step::Products::Product& product : m_products.all) {
            const std::uint64_t number = product.definition.number();
            productOf(number).isRootAssembly = product.isRoot && product.isAssembly;
            m_contents.known[number] = {m_products.blockId(number), product.isAssembly};
        }
        LossReport& report = m_contents.report;
        report.addHeld("parts", m_held.parts.size());
        report.addHeld("instances", m_held.instances.size());
        report.addHeld("faces", m_held.faces.size());
        m_contents.faces = m_held.faces;
        readAnnotations();
        readData();
        if (m_settings.display) readTessellation();
        report.addLost(m_file.losses());
        for (const char* const kind : {"views", "materials", "layers", "properties"})
            report.closeAccount(kind);
        m_contents.spared = step::findSparedUsages(m_file, m_products);
    }

private:
    void readAnnotations() {
        std::vector<step::SemanticAnnotation> semantic;
        std::vector<step::AnnotationGraphics> graphics;
        std::vector<step::SavedView> views;
        if (m_settings.semanticPMI) semantic = step::readSemanticPMI(m_file);
        if (m_settings.graphicalPMI) {
            graphics = step::readAnnotationGraphics(m_file);
            views = step::readSavedViews(m_file);
        }
        accountForSemantic(semantic);
        accountForGraphics(graphics);
        const std::size_t notes = placeAnnotations(semantic, graphics, views);
        LossReport& report = m_contents.report;
        report.addHeld("semantic annotations", m_held.semanticAnnotations.size() + notes);
        report.addSent("semantic annotations", notes);
        report.addHeld("graphical annotations", m_held.graphicalAnnotations.size());
        report.addHeld("views", m_held.views.size());
        if (!m_settings.graphicalPMI || !m_settings.display)
            report.addLost("graphical annotations", LossReport::switchedOff,
                           m_held.graphicalAnnotations.size());
        if (!m_settings.graphicalPMI) report.addLost("views", LossReport::switchedOff, m_held.views.size());
        report.addSent("views", views.size());
    }

    void accountForSemantic(const std::vector<step::SemanticAnnotation>& semantic) {
        LossReport& report = m_contents.report;
        if (!m_settings.semanticPMI)
            return report.addLost("semantic annotations", LossReport::switchedOff,
                                  m_held.semanticAnnotations.size());
        std::set<std::uint64_t> rest(m_held.semanticAnnotations.begin(), m_held.semanticAnnotations.end());
        for (const step::SemanticAnnotation& each : semantic) {
            report.addSent("semantic annotations", countOf(*each.annotation));
            for (const std::uint64_t number : each.numbers) rest.erase(number);
        }
        for (const auto& [what, numbers] : m_file.losses().all())
            for (const std::uint64_t number : numbers) rest.erase(number);
        for (const std::uint64_t number : rest)
            m_file.losses().add("semantic annotations", LossReport::noReason, number);
    }

    /// Gives each product its annotations, and returns how many are notes that are only drawn.
    std::size_t placeAnnotations(std::vector<step::SemanticAnnotation> semantic,
                                 std::vector<step::AnnotationGraphics> graphics,
                                 std::vector<step::SavedView> views) {
        if (m_products.all.empty()) return 0;
        // What is about a product that becomes no block is about the whole.
        const std::uint64_t root = m_products.all.front().definition.number();
        const auto toBlocks = [&](auto& all) {
            for (auto& each : all)
                if (m_products.blockId(each.product) == 0) each.product = root;
        };
        toBlocks(semantic);
        toBlocks(graphics);
        toBlocks(views);
        std::size_t onlyDrawn = 0;
        for (auto& [number, annotations] : organizeAnnotations(semantic, graphics, views, m_file)) {
            onlyDrawn += annotations.onlyDrawn;
            annotations.set->setBlockId(m_products.blockId(number));
            productOf(number).annotations = std::move(annotations);
        }
        return onlyDrawn;
    }

    void accountForGraphics(const std::vector<step::AnnotationGraphics>& graphics) {
        if (!m_settings.display) return;
        std::set<std::uint64_t> told;
        for (const auto& [what, numbers] : m_file.losses().all())
            if (what.kind == "graphical annotations") told.insert(numbers.begin(), numbers.end());
        for (const step::AnnotationGraphics& each : graphics)
            if (each.isDrawn())
                m_contents.report.addSent("graphical annotations", 1);
            else if (!told.contains(each.number))
                m_file.losses().add("graphical annotations", L"the file draws nothing for it", each.number);
    }

    void readData() {
        step::PartContents contents = step::readPartData(m_file, m_contents.lengthUnit.symbol);
        m_contents.colors = std::move(contents.colors);
        LossReport& report = m_contents.report;
        for (const auto& [kind, numbers] : contents.inFile) {
            report.addHeld(kind, numbers.size());
            if (kind != "colours" && !m_settings.miscData)
                report.addLost(kind, LossReport::switchedOff, numbers.size());
        }
        if (!m_settings.miscData) return;
        for (auto& [number, data] : contents.parts) {
            if (m_products.blockId(number) == 0) continue;
            StepProduct& product = productOf(number);
            product.data = std::move(data);
            if (!product.data.misc) continue;
            const ExcMechanicalMiscData& misc = *product.data.misc;
            report.addSent("materials", misc.materials().size());
            m_contents.known[number].hasMaterial = !misc.materials().empty();
            report.addSent("layers", misc.layers().size());
            for (const ExcMiscPropertiesGroup& group : misc.miscData().groups())
                report.addSent("properties", group.properties().size());
        }
    }

    void readTessellation() {
        step::TessellatedShapes shapes = step::readTessellatedShapes(m_file);
        if (shapes.facesInFile == 0) return;
        m_contents.report.addHeld("tessellated faces", shapes.facesInFile);
        m_contents.report.addSent("tessellated faces", shapes.faces);
        for (auto& [number, mesh] : shapes.meshes)
            if (m_products.blockId(number) != 0) productOf(number).mesh = std::move(mesh);
    }

    StepProduct& productOf(std::uint64_t definition) {
        return m_contents.products[m_products.blockId(definition)];
    }

    step::StepFile m_file;
    const ImportSettings& m_settings;
    StepContents& m_contents;
    const step::Products m_products;
    const step::Contents m_held;
};

} // namespace

StepContents readStepContents(const InputFile& input, const ImportSettings& settings, Reporter& reporter) {
    reporter.beginPulse(L"Reading annotations and properties");
    const part21::ExchangeStructure structure(readWhole(input));
    for (const std::string& problem : structure.problems())
        reporter.log(ELogEventLevelType::warning, L"Passed over in the file: " + wideText(problem));
    StepContents contents;
    contents.lengthUnit = chooseLengthUnit(settings.lengthUnit, step::commonLengthUnit(structure), reporter);
    ContentsReader(structure, settings, contents).read();
    contents.largestNumber = structure.largestNumber();
    const std::vector<step::Instance> leftOut = std::exchange(contents.spared.leftOut, {});
    const std::vector<step::Instance> shortened = step::findSparedGraphics(step::StepFile(structure, 1));
    if (!leftOut.empty() || !shortened.empty())
        contents.sparing.emplace(input.path(), structure.textWithout(leftOut, shortened));
    if (!leftOut.empty())
        reporter.log(ELogEventLevelType::information,
                     L"The kernel is spared " + std::to_wstring(contents.spared.count) + L" of " +
                         std::to_wstring(structure.count("NEXT_ASSEMBLY_USAGE_OCCURRENCE")) +
                         L" usages of products");
    return contents;
}

void sendMechanicalData(const StepContents& contents, Channel& channel) {
    for (const auto& [blockId, product] : contents.products) {
        ExcPMIDataPtr pmi;
        if (product.annotations.set) {
            pmi = std::make_shared<ExcPMIData>();
            pmi->addAnnotationSet(product.annotations.set);
        }
        const bool isOfRoot = pmi && product.isRootAssembly;
        if (isOfRoot) {
            const auto root = std::make_shared<ExcRootMechanicalData>();
            root->setPMIData(pmi);
            channel.send(root);
        }
        const bool hasPMI = pmi && !isOfRoot;
        if (!hasPMI && !product.data.misc && !product.data.entities) continue;
        const auto block = std::make_shared<ExcBlockMechanicalData>();
        block->setBlockId(blockId);
        if (hasPMI) block->setPMIData(pmi);
        block->setMiscData(product.data.misc);
        block->setEntityData(product.data.entities);
        channel.send(block);
    }
}

} // namespace zeq::convexor
