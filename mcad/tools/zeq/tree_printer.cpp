// A depth-first walk over instances, with a stack of its own and, unless all is asked for, with bounds.
#include "zeq/tree_printer.h"

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "text/text.h"
#include "zeq/placement.h"

namespace zeq::host {

namespace {

constexpr std::uint64_t mostLines = 1000;
constexpr std::size_t deepestLevel = 50;

std::uint64_t propertyCount(const ExcMiscData& data) {
    std::uint64_t count = 0;
    for (const ExcMiscPropertiesGroup& group : data.groups()) count += group.properties().size();
    return count;
}

std::string shownName(const std::wstring& name) { return name.empty() ? "(unnamed)" : text::printable(name); }

class TreePrinter {
public:
    TreePrinter(const ExcProductStructure& structure, const StructureCount& figures, const TreeStyle& style,
                Output& output)
        : m_structure(structure), m_figures(figures), m_style(style), m_output(output) {}

    void print();

private:
    struct Level {
        const std::vector<ExcBlockReferencePtr>* references;
        std::size_t next;
        std::optional<std::uint64_t> blockId; ///< none for the product itself
        std::size_t indentSize;
    };

    std::string productLine() const;
    std::string instanceLine(const ExcBlockReference& reference, const ExcBlock* block, bool isRoot,
                             bool containsItself) const;
    void printRest();
    std::string emphasized(const std::string& text) const;
    std::string swatch(const ShownColor& color) const;

    const ExcProductStructure& m_structure;
    const StructureCount& m_figures;
    TreeStyle m_style;
    Output& m_output;
    std::uint64_t m_lines = 0;
};

/// Details of a line, two blanks apart.
class Details {
public:
    void add(const std::string& detail) {
        if (!detail.empty()) m_text += "  " + detail;
    }
    void addProperties(std::uint64_t count) {
        if (count > 0) add(text::counted(count, "property", "properties"));
    }
    void addNamed(const char* what, const std::wstring& value) {
        if (!value.empty()) add(std::string(what) + " '" + text::printable(value) + "'");
    }
    const std::string& text() const { return m_text; }

private:
    std::string m_text;
};

void TreePrinter::print() {
    m_output.write(productLine() + "\n");
    std::vector<Level> path{{&m_structure.rootBlockReferences(), 0, std::nullopt, 0}};
    std::unordered_set<std::uint64_t> containing; // the blocks on the path
    std::string indent;
    while (!path.empty()) {
        Level& level = path.back();
        indent.resize(level.indentSize);
        if (level.next == level.references->size()) {
            if (level.blockId) containing.erase(*level.blockId);
            path.pop_back();
            continue;
        }
        if (!m_style.all && m_lines == mostLines) return printRest();
        const ExcBlockReference& reference = *(*level.references)[level.next++];
        const bool isLast = level.next == level.references->size();
        const ExcBlockPtr block = m_structure.getBlockById(reference.blockId());
        const bool containsItself = block && containing.contains(block->id());
        m_output.write(indent + (isLast ? "└── " : "├── ") +
                       instanceLine(reference, block.get(), path.size() == 1, containsItself) + "\n");
        ++m_lines;
        if (!block || containsItself || block->blockReferences().empty()) continue;
        indent += isLast ? "    " : "│   ";
        if (!m_style.all && path.size() == deepestLevel) {
            m_output.write(indent + "└── … deeper levels left out; --all shows them\n");
            continue;
        }
        containing.insert(block->id());
        path.push_back({&block->blockReferences(), 0, block->id(), indent.size()});
    }
}

std::string TreePrinter::productLine() const {
    std::wstring name = m_structure.productName();
    if (m_structure.isPart()) { // its product and instance have names that only say so
        const auto& references = m_structure.rootBlockReferences();
        const ExcBlockPtr block =
            references.empty() ? nullptr : m_structure.getBlockById(references[0]->blockId());
        name = block ? block->name() : std::wstring();
    }
    Details details;
    details.addNamed("configuration", m_structure.productConfigurationName());
    if (m_structure.units() != ELengthUnitType::unknown)
        details.add(text::printable(enumToString(m_structure.units())));
    if (m_structure.worldOrientation() != EWorldOrientation::unknown)
        details.add(text::printable(enumToString(m_structure.worldOrientation())));
    details.addProperties(propertyCount(m_structure.miscData()));
    return (m_structure.isPart() ? "Part " : "Assembly ") + emphasized(shownName(name)) + details.text();
}

std::string TreePrinter::instanceLine(const ExcBlockReference& reference, const ExcBlock* block, bool isRoot,
                                      bool containsItself) const {
    std::wstring name = reference.name();
    if (block && (name.empty() || (isRoot && m_structure.isPart()))) name = block->name();
    std::string text = emphasized(shownName(name));
    if (block && block->name() != name) text += " (" + shownName(block->name()) + ")";

    Details details;
    details.add("block " + std::to_string(reference.blockId()));
    details.addNamed("id", reference.persistentId());
    details.add(describe(reference.transformation()));
    const ShownColor color(reference.color());
    if (!color.name.empty()) details.add(swatch(color) + "colour " + color.name);
    details.add(color.opacity);
    details.addNamed("configuration", reference.configurationName());
    if (reference.isHidden()) details.add("hidden");
    if (reference.isSuppressed()) details.add("suppressed");
    details.addProperties(propertyCount(reference.miscData()) +
                          (block ? propertyCount(block->miscData()) : 0));
    if (!block) details.add("(this block is missing)");
    if (containsItself) details.add("(contains itself)");
    return text + details.text();
}

void TreePrinter::printRest() {
    const bool known = !m_figures.cyclic && m_figures.instances != mostInstances;
    const std::string rest =
        known ? text::counted(m_figures.instances - m_lines, "more instance", "more instances")
              : "more instances";
    m_output.write("… " + rest + " left out; --all shows them\n");
}

std::string TreePrinter::emphasized(const std::string& text) const {
    return m_style.color ? "\033[1m" + text + "\033[0m" : text;
}

std::string TreePrinter::swatch(const ShownColor& color) const {
    return m_style.color ? "\033[38;2" + color.terminal + "m■\033[0m " : "";
}

} // namespace

void printTree(const ExcProductStructure& structure, const StructureCount& figures, const TreeStyle& style,
               Output& output) {
    TreePrinter(structure, figures, style, output).print();
}

} // namespace zeq::host
