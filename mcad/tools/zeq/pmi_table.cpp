// What captures and datums say is looked up by identifiers, within the part.
#include "zeq/pmi_table.h"

#include <algorithm>
#include <array>

#include "pmi/value_text.h"
#include "text/table.h"
#include "text/text.h"
#include "zeq/block_name.h"

namespace zeq::host {

namespace {

constexpr std::size_t mostRows = 100;
constexpr std::size_t mostLinked = 6;
constexpr std::size_t elementsInLine = 8;
constexpr std::size_t mostColumns = 60; ///< of a name or a text; frames are not cut

std::string elementText(const ExcEntity& element) {
    const auto& path = element.fsp();
    const std::string description = text::printable(element.description());
    if (element.type() != ExcEntity::EType::fsp || !path)
        return text::printable(element.id()) + (description.empty() ? "" : " " + description);
    constexpr std::array kinds{"? ", "", "edge ",
                               "vertex "}; // in the order of ExcFullSubentPath::ESubentType
    const auto kind = static_cast<std::size_t>(path->subentType());
    return kinds[kind < kinds.size() ? kind : 0] + std::to_string(path->subentId()) +
           (description.empty() ? "" : " (" + description + ")");
}

/// All annotations of one part.
class PartTable {
public:
    PartTable(const std::vector<ExcPMIDataPtr>& data, ELengthUnitType unit) {
        for (const ExcPMIDataPtr& each : data)
            for (const ExcPMIAnnotationSetPtr& set : each->annotationSets()) collect(*set);
        m_context = pmi::contextOf(m_annotations, unit);
        std::ranges::stable_sort(m_annotations, {},
                                 [](const ExcPMIAnnotationPtr& annotation) { return rank(*annotation); });
    }

    std::size_t size() const { return m_annotations.size(); }
    /// "(mm): 43 annotations, 12 views".
    std::string heading() const {
        const std::string unit = pmi::unitName(m_context.unit);
        return (unit.empty() ? ": " : " (" + unit + "): ") +
               text::counted(m_annotations.size(), "annotation", "annotations") +
               (m_captures == 0 ? "" : ", " + text::counted(m_captures, "view", "views")) + "\n";
    }
    std::string rows(std::size_t most, bool all) const;

private:
    void collect(const ExcPMIAnnotationSet& set);
    /// Sizes, tolerances, datums, their targets, and then the rest.
    static int rank(const ExcPMIAnnotation& annotation);

    std::vector<ExcPMIAnnotationPtr> m_annotations;
    std::map<std::wstring, std::string> m_shownIn; ///< names of captures by annotation
    std::size_t m_captures = 0;
    pmi::Context m_context;
};

void PartTable::collect(const ExcPMIAnnotationSet& set) {
    for (const ExcPMIAnnotationViewPtr& view : set.views()) {
        const auto annotations = pmi::annotationsOf(*view);
        m_annotations.insert(m_annotations.end(), annotations.begin(), annotations.end());
    }
    for (const ExcPMICapturePtr& capture : set.captures()) {
        ++m_captures;
        const std::string name = text::printable(capture->name().empty() ? capture->id() : capture->name());
        for (const std::wstring& id : capture->annotationIds()) {
            std::string& names = m_shownIn[id];
            names += (names.empty() ? "" : ", ") + name;
        }
    }
}

int PartTable::rank(const ExcPMIAnnotation& annotation) {
    using EType = EPMIAnnotationType;
    constexpr std::array order{EType::dimension, EType::GDT, EType::datum, EType::datum_target,
                               EType::roughness};
    return static_cast<int>(std::ranges::find(order, annotation.type()) - order.begin());
}

std::string PartTable::rows(std::size_t most, bool all) const {
    text::Table table({{"Kind"}, {"Name"}, {"Value"}, {"Faces"}, {"Views"}});
    const auto brief = [all](const std::string& text) {
        return all ? text : text::shortened(text, mostColumns);
    };
    for (const ExcPMIAnnotationPtr& annotation : m_annotations) {
        if (table.rows() == most) break;
        const bool isText = annotation->type() == EPMIAnnotationType::note;
        const std::string value = pmi::valueText(*annotation, m_context);
        const auto shown = m_shownIn.find(annotation->id());
        const std::string kind = pmi::kindOf(*annotation), name = text::printable(annotation->name());
        table.addRow({kind + (annotation->isHidden() ? " (hidden)" : ""), name == kind ? "" : brief(name),
                      isText ? brief(value) : value, linkedText(annotation->linkedElements(), all),
                      shown == m_shownIn.end() ? "" : brief(shown->second)});
    }
    return table.text();
}

} // namespace

std::string linkedText(const std::vector<ExcEntityPtr>& elements, bool all) {
    std::string text;
    const std::size_t shown = all || elements.size() <= mostLinked ? elements.size() : mostLinked - 1;
    for (std::size_t i = 0; i < shown; ++i)
        text += (i == 0 ? "" : i % elementsInLine == 0 ? ",\n" : ", ") + elementText(*elements[i]);
    if (shown < elements.size()) text += " + " + std::to_string(elements.size() - shown) + " more";
    return text;
}

void PMITables::add(std::optional<std::uint64_t> blockId, const ExcPMIDataPtr& data) {
    if (data) m_data[blockId].push_back(data);
}

std::string PMITables::text(const ExcProductStructure* structure, bool all) const {
    const ELengthUnitType unit = structure ? structure->units() : ELengthUnitType::unknown;
    std::string text;
    std::size_t shown = 0, left = 0;
    for (const auto& [blockId, data] : m_data) {
        const PartTable part(data, unit);
        const std::size_t most = all ? part.size() : std::min(part.size(), mostRows - shown);
        left += part.size() - most;
        if (most == 0) continue;
        shown += most;
        text += "\nPMI of " + (blockId ? "block " + blockName(*blockId, structure) : "the assembly") +
                part.heading() + part.rows(most, all);
    }
    if (left > 0)
        text +=
            "... and " + text::counted(left, "more annotation", "more annotations") + "; --all shows them\n";
    return text;
}

} // namespace zeq::host
