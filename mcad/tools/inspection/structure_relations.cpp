// A walk over the document, as the classes would read it; not recursive, as assemblies nest as deep as they
// like.
#include "inspection/structure_relations.h"

#include <array>
#include <cmath>
#include <cwctype>
#include <optional>
#include <unordered_map>

#include "inspection/dom_walk.h"
#include "text/text.h"
#include "zeq_api/json/enum_names.h"

namespace zeq::inspection {

namespace {

std::string at(const std::string& pointer, const char* list, std::size_t index) {
    return pointer + '/' + list + '/' + std::to_string(index);
}

/// Whether three vectors lie in a plane, but for rounding.
bool areFlat(const std::array<std::array<double, 3>, 3>& m) {
    double lengths = 1;
    for (const auto& row : m) lengths *= std::hypot(row[0], row[1], row[2]);
    const double volume = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                          m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                          m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
    return std::abs(volume) <= 1e-12 * lengths;
}

/// Whether the matrix, as far as it is one, maps all of space into a plane.
bool isSingular(const JsonValue& matrix) {
    if (!matrix.IsArray() || matrix.Size() != 3) return false;
    std::array<std::array<double, 3>, 3> rows;
    for (rapidjson::SizeType i = 0; i < 3; ++i) {
        if (!matrix[i].IsArray() || matrix[i].Size() != 3) return false;
        for (rapidjson::SizeType j = 0; j < 3; ++j) {
            if (!matrix[i][j].IsDouble()) return false;
            rows[i][j] = matrix[i][j].GetDouble();
        }
    }
    return areFlat(rows);
}

/// In lower case; as it is when it is none: 8, 4, 4, 4 and 12 hexadecimal digits.
std::wstring canonicalGuid(const std::wstring& text, bool& isGuid) {
    static constexpr std::wstring_view form = L"xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    std::wstring guid =
        text.starts_with(L'{') && text.ends_with(L'}') ? text.substr(1, text.size() - 2) : text;
    isGuid = guid.size() == form.size();
    for (std::size_t i = 0; isGuid && i < form.size(); ++i) {
        isGuid = form[i] == L'-' ? guid[i] == L'-'
                                 : guid[i] < 0x80 && std::iswxdigit(static_cast<wint_t>(guid[i]));
        guid[i] = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(guid[i])));
    }
    return isGuid ? guid : text;
}

class StructureCheck {
public:
    StructureCheck(const JsonValue& structure, const std::string& pointer, const Report& report)
        : m_structure(structure), m_pointer(pointer), m_report(report) {}

    std::vector<std::uint64_t> run();

private:
    struct Block {
        std::vector<const JsonValue*> references;
        bool isOpen = false; ///< on the path of the walk
        bool isDone = false;
    };
    struct Level {
        const std::vector<const JsonValue*>& references;
        std::string list; ///< pointer of the array
        std::size_t next = 0;
        std::optional<std::size_t> block; ///< none for the product itself
    };

    void readBlocks();
    void walk();
    void checkGuid(const JsonValue& reference, const std::string& pointer);
    void reportCycle(const std::vector<Level>& path, std::size_t block, const std::string& pointer);
    void reportUnused();
    std::string blockPointer(std::size_t index) const { return at(m_pointer, "blocks", index); }
    void report(Severity severity, std::string pointer, std::string text) const {
        m_report({severity, {}, std::move(pointer), std::move(text), {}, {}});
    }

    const JsonValue& m_structure;
    const std::string& m_pointer;
    const Report& m_report;
    std::vector<Block> m_blocks;
    std::vector<std::uint64_t> m_ids;
    std::unordered_map<std::uint64_t, std::size_t> m_index; ///< the last block of each id
    std::unordered_map<std::wstring, std::string> m_guids;
    std::size_t m_nameless = 0; ///< instances without a GUID
};

std::vector<std::uint64_t> StructureCheck::run() {
    readBlocks();
    walk();
    reportUnused();
    if (m_nameless > 0)
        report(Severity::note, m_pointer,
               text::counted(m_nameless, "instance has", "instances have") + " no GUID");
    return m_ids;
}

void StructureCheck::readBlocks() {
    for (const JsonValue* const block : elements(m_structure, L"blocks")) {
        const std::size_t index = m_blocks.size();
        m_blocks.push_back({elements(*block, L"block_references")});
        const std::optional<std::uint64_t> id = idIn(*block, L"id");
        if (!id) report(Severity::error, blockPointer(index), "the block has no id; it is read as 0");
        m_ids.push_back(id.value_or(0));
        const auto [known, isNew] = m_index.try_emplace(m_ids.back(), index);
        if (isNew) continue;
        report(Severity::error, blockPointer(index),
               "the id " + std::to_string(m_ids.back()) + " is that of " + blockPointer(known->second) +
                   " too, to which no reference leads any more");
        known->second = index;
    }
}

void StructureCheck::walk() {
    const std::vector<const JsonValue*> roots = elements(m_structure, L"root_block_references");
    // The blocks too are where a walk begins: what no root leads to is looked at all the same.
    for (std::size_t start = 0; start <= m_blocks.size(); ++start) {
        std::vector<Level> path;
        if (start == 0)
            path.push_back({roots, m_pointer + "/root_block_references", 0, {}});
        else if (Block& block = m_blocks[start - 1]; !block.isDone) {
            block.isOpen = true;
            path.push_back({block.references, blockPointer(start - 1) + "/block_references", 0, start - 1});
        }
        while (!path.empty()) {
            Level& level = path.back();
            if (level.next == level.references.size()) {
                if (level.block) {
                    m_blocks[*level.block].isOpen = false;
                    m_blocks[*level.block].isDone = true;
                }
                path.pop_back();
                continue;
            }
            const JsonValue& reference = *level.references[level.next];
            const std::string pointer = level.list + '/' + std::to_string(level.next++);
            checkReference(reference, pointer, m_report);
            checkGuid(reference, pointer);
            const std::optional<std::uint64_t> id = idIn(reference, blockIdKey);
            if (!id) report(Severity::error, pointer, "the reference names no block; it is read as 0");
            const auto target = m_index.find(id.value_or(0));
            if (target == m_index.end()) {
                if (id) report(Severity::error, pointer + "/block_id", noBlock(*id));
                continue;
            }
            Block& block = m_blocks[target->second];
            if (block.isOpen)
                reportCycle(path, target->second, pointer);
            else if (!block.isDone) {
                block.isOpen = true;
                path.push_back({block.references, blockPointer(target->second) + "/block_references", 0,
                                target->second});
            }
        }
    }
}

void StructureCheck::checkGuid(const JsonValue& reference, const std::string& pointer) {
    const JsonValue* const guid = findString(reference, L"guid");
    if (!guid || guid->GetStringLength() == 0) {
        ++m_nameless;
        return;
    }
    bool isGuid = false;
    const std::wstring key = canonicalGuid({guid->GetString(), guid->GetStringLength()}, isGuid);
    const auto [known, isNew] = m_guids.try_emplace(key, pointer);
    if (!isNew) report(Severity::warning, pointer + "/guid", "the GUID is that of " + known->second + " too");
}

void StructureCheck::reportCycle(const std::vector<Level>& path, std::size_t block,
                                 const std::string& pointer) {
    constexpr std::size_t mostShown = 10;
    std::string circle;
    std::size_t length = 0;
    for (auto level = path.rbegin(); level != path.rend(); ++level) {
        if (++length <= mostShown) circle.insert(0, std::to_string(m_ids[*level->block]) + " > ");
        if (level->block == block) break;
    }
    if (length > mostShown) circle.insert(0, "... > ");
    report(Severity::error, pointer + "/block_id",
           "the block contains itself: " + circle + std::to_string(m_ids[block]));
}

void StructureCheck::reportUnused() {
    if (m_blocks.empty()) return;
    std::vector<bool> isUsed(m_blocks.size());
    std::vector<std::size_t> reached;
    const auto follow = [&](const std::vector<const JsonValue*>& references) {
        for (const JsonValue* const reference : references) {
            const auto target = m_index.find(idIn(*reference, blockIdKey).value_or(0));
            if (target == m_index.end() || isUsed[target->second]) continue;
            isUsed[target->second] = true;
            reached.push_back(target->second);
        }
    };
    const std::vector<const JsonValue*> roots = elements(m_structure, L"root_block_references");
    if (roots.empty())
        return report(Severity::warning, m_pointer,
                      "there is no root reference, so the product is empty, whatever blocks there are");
    follow(roots);
    while (!reached.empty()) {
        const std::size_t index = reached.back();
        reached.pop_back();
        follow(m_blocks[index].references);
    }
    for (std::size_t i = 0; i < m_blocks.size(); ++i)
        if (!isUsed[i]) report(Severity::warning, blockPointer(i), "no root reference leads to this block");
}

} // namespace

std::string noBlock(std::uint64_t id) { return "there is no block with the id " + std::to_string(id); }

void checkReference(const JsonValue& reference, const std::string& pointer, const Report& report) {
    const JsonValue* const placement = json::findMember(reference, L"transformation");
    const JsonValue* const matrix = placement ? json::findMember(*placement, L"affine") : nullptr;
    if (matrix && isSingular(*matrix))
        report({Severity::error,
                {},
                pointer + "/transformation/affine",
                "the matrix is singular: it flattens what is placed",
                {},
                {}});
    const JsonValue* const guid = findString(reference, L"guid");
    if (!guid || guid->GetStringLength() == 0) return;
    bool isGuid = false;
    const std::wstring text(guid->GetString(), guid->GetStringLength());
    canonicalGuid(text, isGuid);
    if (!isGuid)
        report({Severity::warning,
                {},
                pointer + "/guid",
                "'" + text::printable(text) + "' is no GUID of 8, 4, 4, 4 and 12 hexadecimal digits",
                {},
                {}});
}

void checkBlock(const JsonValue& block, const std::string& pointer, const Report& report) {
    std::size_t index = 0;
    for (const JsonValue* const reference : elements(block, L"block_references"))
        checkReference(*reference, at(pointer, "block_references", index++), report);
}

std::vector<std::uint64_t> checkStructure(const JsonValue& structure, const std::string& pointer,
                                          const Report& report) {
    return StructureCheck(structure, pointer, report).run();
}

} // namespace zeq::inspection
