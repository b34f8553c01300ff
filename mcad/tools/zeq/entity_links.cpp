// Collects numbers.
#include "zeq/entity_links.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>

#include "brep/parts.h"
#include "pmi/value_text.h"
#include "text/text.h"
#include "zeq/scene_walk.h"

namespace zeq::host {

namespace {

using Numbers = std::vector<std::uint64_t>;

/// In ascending order, each once.
Numbers sorted(Numbers numbers) {
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

/// The number that an identifier is; none for other texts.
std::optional<std::uint64_t> numberIn(const std::wstring& id) {
    const std::string text = text::printable(id);
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

/// "2 faces (12, 15)": what is named and not there; empty when all is there.
std::string absent(const Numbers& named, const Numbers& there, const char* one, const char* several) {
    constexpr std::size_t mostShown = 5;
    Numbers numbers;
    std::ranges::set_difference(sorted(named), sorted(there), std::back_inserter(numbers));
    if (numbers.empty()) return "";
    std::string text = text::counted(numbers.size(), one, several) + " (";
    for (std::size_t i = 0; i < std::min(numbers.size(), mostShown); ++i)
        text += (i == 0 ? "" : ", ") + std::to_string(numbers[i]);
    return text + (numbers.size() > mostShown ? ", ...)" : ")");
}

} // namespace

void EntityLinks::Entities::add(const ExcEntity* entity) {
    if (!entity || entity->type() != ExcEntity::EType::fsp || !entity->fsp()) return;
    using EKind = ExcFullSubentPath::ESubentType;
    if (entity->fsp()->subentType() == EKind::face) faces.push_back(entity->fsp()->subentId());
    if (entity->fsp()->subentType() == EKind::edge) edges.push_back(entity->fsp()->subentId());
}

void EntityLinks::addGeometry(std::uint64_t blockId, const ENTITY_LIST& entities) {
    Block& block = m_blocks[blockId];
    block.hasGeometry = true;
    const brep::Parts parts(entities);
    block.geometry.faces.reserve(parts.faces());
    block.geometry.edges.reserve(parts.edges());
    for (std::size_t i = 0; i < parts.faces(); ++i)
        block.geometry.faces.push_back(static_cast<std::uint64_t>(parts.number(parts.face(i))));
    for (std::size_t i = 0; i < parts.edges(); ++i)
        block.geometry.edges.push_back(static_cast<std::uint64_t>(parts.number(parts.edge(i))));
}

void EntityLinks::add(const ExcBlockMechanicalData& data) {
    Entities& linked = m_blocks[data.blockId()].linked;
    const auto addAll = [&linked](const std::vector<ExcEntityPtr>& entities) {
        for (const ExcEntityPtr& entity : entities) linked.add(entity.get());
    };
    if (data.pmiData())
        for (const auto& set : data.pmiData()->annotationSets())
            for (const auto& view : set->views())
                for (const ExcPMIAnnotationPtr& annotation : pmi::annotationsOf(*view))
                    addAll(annotation->linkedElements());
    if (data.miscData()) {
        for (const auto& layer : data.miscData()->layers()) addAll(layer->entities());
        for (const auto& material : data.miscData()->materials()) addAll(material->linkedElements());
    }
    if (data.entityData())
        for (const auto& information : data.entityData()->data()) linked.add(information->entity().get());
}

void EntityLinks::add(const ExcBlockVisualization& data) {
    if (!data.visualizationData()) return;
    Entities& shown = m_blocks[data.blockId()].shown;
    const auto note = [](Numbers& numbers, const std::wstring& id) {
        if (const auto number = numberIn(id)) numbers.push_back(*number);
    };
    forEachNode(*data.visualizationData(), [&](const ExcVisuNode& node, bool isAnnotation) {
        if (isAnnotation || !node.mesh()) return;
        for (const auto& face : node.mesh()->faces()) note(shown.faces, face->mechanicalId());
        for (const auto& edge : node.mesh()->edges()) note(shown.edges, edge->mechanicalId());
    });
}

std::vector<std::string> EntityLinks::faults() const {
    std::vector<std::string> faults;
    const auto compare = [&faults](const Entities& named, const Entities& there, const std::string& subject) {
        const std::string faces = absent(named.faces, there.faces, "face", "faces"),
                          edges = absent(named.edges, there.edges, "edge", "edges");
        if (faces.empty() && edges.empty()) return;
        faults.push_back(subject + faces);
        if (!faces.empty() && !edges.empty()) faults.back() += ", ";
        faults.back() += edges + " that its geometry does not have";
    };
    for (const auto& [id, block] : m_blocks) {
        if (!block.hasGeometry) continue;
        const std::string name = " of block " + std::to_string(id) + ": ";
        compare(block.linked, block.geometry, "links" + name);
        compare(block.shown, block.geometry, "display data" + name);
    }
    return faults;
}

} // namespace zeq::host
