// A property group for each kind, in the order in which users think of them.
#include "convexor/loss_report.h"

#include "convexor/properties.h"
#include "convexor/text.h"

namespace zeq::convexor {

namespace {

constexpr std::string_view kinds[]{"parts",
                                   "instances",
                                   "faces",
                                   "tessellated faces",
                                   "curves",
                                   "points",
                                   "semantic annotations",
                                   "graphical annotations",
                                   "views",
                                   "materials",
                                   "layers",
                                   "colours",
                                   "properties"};

ExcMiscProperty count(const std::wstring& name, std::size_t value) {
    return countProperty(name.c_str(), static_cast<std::int64_t>(value));
}

} // namespace

void LossReport::addLost(std::string_view kind, const std::wstring& reason, std::size_t count,
                         const std::wstring& items) {
    if (count == 0) return;
    Loss& loss = m_kinds[std::string(kind)].losses[reason];
    loss.count += count;
    if (!items.empty()) loss.items += (loss.items.empty() ? L"" : L", ") + items;
}

std::wstring LossReport::itemsText(const std::vector<std::uint64_t>& numbers) {
    constexpr std::size_t most = 1000;
    std::wstring text;
    for (std::size_t i = 0; i < numbers.size() && i < most; ++i) {
        if (numbers[i] == 0) continue;
        text += (text.empty() ? L"#" : L", #") + std::to_wstring(numbers[i]);
    }
    if (numbers.size() > most) text += L" and " + std::to_wstring(numbers.size() - most) + L" more";
    return text;
}

void LossReport::addLost(const step::Losses& losses) {
    for (const auto& [what, numbers] : losses.all()) addLost(what.kind, what.reason, numbers);
}

void LossReport::closeAccount(std::string_view name, const wchar_t* reason) {
    const Kind& kind = m_kinds[std::string(name)];
    std::size_t told = kind.sent;
    for (const auto& [why, loss] : kind.losses) told += loss.count;
    if (kind.held > told) addLost(name, reason, kind.held - told);
}

std::shared_ptr<ExcBlockMechanicalData> LossReport::document() const {
    auto misc = std::make_shared<ExcMechanicalMiscData>();
    for (const std::string_view name : kinds) {
        const auto found = m_kinds.find(name);
        if (found == m_kinds.end()) continue;
        const Kind& kind = found->second;
        ExcMiscPropertiesGroup group;
        group.name() = L"contents of the file: " + wideText(name);
        group.addProperty(count(L"in the file", kind.held));
        group.addProperty(count(L"sent", kind.sent));
        for (const auto& [reason, loss] : kind.losses) {
            group.addProperty(count(L"left out: " + reason, loss.count));
            if (!loss.items.empty())
                group.addProperty(textProperty((L"items: " + reason).c_str(), loss.items));
        }
        misc->miscData().addGroup(std::move(group));
    }
    auto document = std::make_shared<ExcBlockMechanicalData>();
    document->setMiscData(misc);
    return document;
}

} // namespace zeq::convexor
