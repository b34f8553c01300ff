// Blocks become parts, then the structure places them.
#include "scene/build.h"

#include <algorithm>

#include "scene/instance_tree.h"
#include "scene/part_builder.h"
#include "text/text.h"

namespace zeq::scene {

namespace {

class SceneBuilder {
public:
    explicit SceneBuilder(Documents& documents) : m_documents(documents) {}

    Scene build() {
        begin();
        for (auto& display : m_documents.roots) { // each is given free
            if (display->visualizationData()) m_builders.front().add(*display->visualizationData());
            display.reset();
        }
        for (auto& display : m_documents.blocks) {
            PartBuilder* const part = builderOf(display->blockId(), "display data");
            if (part && display->visualizationData()) part->add(*display->visualizationData());
            display.reset();
        }
        for (const auto& data : m_documents.rootData)
            if (data->pmiData()) m_builders.front().add(*data->pmiData());
        for (const auto& data : m_documents.blockData) {
            PartBuilder* const part = builderOf(data->blockId(), "mechanical data");
            if (part && data->pmiData()) part->add(*data->pmiData());
            if (part && data->miscData()) part->add(*data->miscData());
        }
        for (PartBuilder& builder : m_builders) builder.finish(m_unit);
        place();
        m_scene.warnings = m_warnings.take();
        return std::move(m_scene);
    }

private:
    /// A part for the product and one for each block, so that they stay where they are.
    void begin() {
        const ExcProductStructure* const structure = m_documents.structure.get();
        m_scene.parts.emplace_back();
        m_parts.emplace(0, 0); // the file as a whole, unless a block has that number
        if (structure) {
            beginProduct(*structure);
            for (const ExcBlockPtr& block : structure->blocks())
                beginPart(block->id(), structure->getBlockById(block->id()).get());
        } else {
            m_warnings.add("there is no product structure; every block is shown once");
            for (const auto& display : m_documents.blocks) beginPart(display->blockId(), nullptr);
        }
        for (std::size_t i = 0; i < m_scene.parts.size(); ++i) {
            Part& part = m_scene.parts[i];
            std::string owner = i == 0 ? "the product" : "block " + std::to_string(part.block);
            if (i > 0 && !part.name.empty()) owner += " '" + text::printable(part.name) + "'";
            m_builders.emplace_back(part, owner, m_scene.millimeters, m_warnings);
        }
    }

    void beginProduct(const ExcProductStructure& structure) {
        ELengthUnitType unit = structure.units();
        for (auto display = m_documents.blocks.begin();
             millimeters(unit) == 0 && display != m_documents.blocks.end(); ++display)
            if ((*display)->visualizationData()) unit = (*display)->visualizationData()->units();
        if (millimeters(unit) > 0) m_scene.millimeters = millimeters(unit);
        m_unit = unit;
        if (structure.worldOrientation() != EWorldOrientation::unknown)
            m_scene.up = structure.worldOrientation();
        Part& product = m_scene.parts.front();
        product.name = text::validUtf8(structure.productName());
        if (structure.isPart() && !structure.rootBlockReferences().empty()) { // the name only says so
            const ExcBlockPtr block =
                structure.getBlockById(structure.rootBlockReferences().front()->blockId());
            product.name = block ? text::validUtf8(block->name()) : std::string();
        }
        product.isAssembly = true;
        appendProperties(structure.miscData(), product.properties);
    }

    void beginPart(std::uint64_t id, const ExcBlock* block) {
        const auto index = static_cast<std::uint32_t>(m_scene.parts.size());
        const auto [entry, isNew] = m_parts.emplace(id, index);
        if (!isNew && entry->second != 0) return;
        entry->second = index;
        Part& part = m_scene.parts.emplace_back();
        part.block = id;
        if (!block) return;
        part.name = text::validUtf8(block->name());
        part.isAssembly = !block->isPart();
        appendProperties(block->miscData(), part.properties);
    }

    /// Null, with a warning, for a block that is not in the structure.
    PartBuilder* builderOf(std::uint64_t block, const char* what) {
        const auto part = m_parts.find(block);
        if (part != m_parts.end()) return &m_builders[part->second];
        m_warnings.add("block " + std::to_string(block) + " has " + what + " and is not in the structure");
        return nullptr;
    }

    void place() {
        Instance& product = m_scene.instances.emplace_back();
        product.name = m_scene.parts.front().name;
        if (m_documents.structure) {
            const std::uint32_t ofProduct = m_parts.at(0);
            if (ofProduct == 0) m_parts.erase(0); // no reference can mean the file as a whole
            addInstances(*m_documents.structure, m_parts, m_scene, m_warnings);
            return;
        }
        for (std::uint32_t i = 1; i < m_scene.parts.size(); ++i) {
            Instance& instance = m_scene.instances.emplace_back();
            instance.name = m_scene.parts[i].name;
            instance.parent = 0;
            instance.part = i;
        }
    }

    Documents& m_documents;
    Scene m_scene;
    Warnings m_warnings;
    PartOfBlock m_parts;
    ELengthUnitType m_unit = ELengthUnitType::unknown;
    std::vector<PartBuilder> m_builders; ///< one for each part
};

} // namespace

Scene build(Documents documents) { return SceneBuilder(documents).build(); }

} // namespace zeq::scene
