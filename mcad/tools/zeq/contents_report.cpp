// The rows of the table, and how its figures compare.
#include "zeq/contents_report.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

#include "text/table.h"
#include "text/text.h"

namespace zeq::host {

namespace {

constexpr std::wstring_view groupPrefix = L"contents of the file: ";
constexpr std::wstring_view leftOutPrefix = L"left out: ";
constexpr std::wstring_view itemsPrefix = L"items: ";
constexpr std::wstring_view choice = L"switched off";
constexpr std::size_t mostColumns = 60;

std::optional<std::uint64_t> figureIn(const ExcMiscProperty& property) {
    const std::string text = text::printable(property.value());
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::string shown(const std::optional<std::uint64_t>& figure, const char* none) {
    return figure ? std::to_string(*figure) : none;
}

std::uint64_t excess(const std::optional<std::uint64_t>& more, const std::optional<std::uint64_t>& less) {
    return more && less && *more > *less ? *more - *less : 0;
}

} // namespace

bool ContentsReport::isOwn(const ExcMiscPropertiesGroup& group) {
    return group.name().starts_with(groupPrefix);
}

void ContentsReport::add(const ExcMiscData& properties) {
    for (const ExcMiscPropertiesGroup& group : properties.groups()) {
        if (!isOwn(group)) continue;
        Row row;
        row.kind = group.name().substr(groupPrefix.size());
        for (const ExcMiscProperty& property : group.properties()) {
            const std::wstring& name = property.name();
            if (name == L"in the file")
                row.inFile = figureIn(property);
            else if (name == L"sent")
                row.sent = figureIn(property);
            else if (name.starts_with(leftOutPrefix))
                row.reason(name.substr(leftOutPrefix.size())).count = figureIn(property).value_or(0);
            else if (name.starts_with(itemsPrefix))
                row.reason(name.substr(itemsPrefix.size())).items = property.value();
        }
        m_rows.push_back(std::move(row));
    }
}

void ContentsReport::compare(const std::map<std::wstring, std::uint64_t>& arrived) {
    for (Row& row : m_rows)
        if (const auto known = arrived.find(row.kind); known != arrived.end()) row.arrived = known->second;
}

std::map<std::string, std::uint64_t> ContentsReport::missing() const {
    std::map<std::string, std::uint64_t> result;
    for (const Row& row : m_rows)
        if (const std::uint64_t count = row.missing(); count > 0) result[text::printable(row.kind)] += count;
    return result;
}

std::string ContentsReport::text(bool all) const {
    text::Table table({{"Contents"}, {"In the file", true}, {"Sent", true}, {"Arrived", true}, {""}});
    std::string reasons;
    for (const Row& row : m_rows) {
        const std::string kind = text::printable(row.kind);
        table.addRow(
            {kind, shown(row.inFile, "-"), shown(row.sent, "-"), shown(row.arrived, "-"), row.remark()});
        for (const std::string& each : row.explanations(all))
            reasons.append("  ").append(kind).append(": ").append(each).append("\n");
    }
    return table.text() + reasons;
}

void ContentsReport::writeLosses(text::JsonWriter& json) const {
    for (const Row& row : m_rows) {
        json.open('{').member("what", text::printable(row.kind));
        for (const auto& [name, figure] :
             {std::pair("file", row.inFile), std::pair("sent", row.sent), std::pair("arrived", row.arrived)})
            if (figure) json.member(name, *figure);
        json.key("reasons").open('[');
        for (const std::string& each : row.explanations(true)) json.value(each);
        json.close(']').close('}');
    }
}

std::string ContentsReport::jsonMember() const {
    std::string rows;
    for (const Row& row : m_rows) {
        std::string reasons;
        for (const Reason& reason : row.reasons)
            reasons += std::string(reasons.empty() ? "" : ",") +
                       "{\"reason\":" + text::jsonString(reason.text) +
                       ",\"count\":" + std::to_string(reason.count) +
                       ",\"items\":" + text::jsonString(reason.items) + "}";
        rows += std::string(rows.empty() ? "" : ",") + "{\"kind\":" + text::jsonString(row.kind) +
                ",\"in_file\":" + shown(row.inFile, "null") + ",\"sent\":" + shown(row.sent, "null") +
                ",\"arrived\":" + shown(row.arrived, "null") +
                ",\"missing\":" + std::to_string(row.missing()) + ",\"left_out\":[" + reasons + "]}";
    }
    return "\"contents\":[" + rows + "]";
}

ContentsReport::Reason& ContentsReport::Row::reason(const std::wstring& text) {
    const auto known = std::ranges::find(reasons, text, &Reason::text);
    if (known != reasons.end()) return *known;
    reasons.push_back({text, 0, {}});
    return reasons.back();
}

std::vector<std::string> ContentsReport::Row::explanations(bool all) const {
    std::vector<std::string> texts;
    for (const Reason& each : reasons) {
        if (each.count == 0) continue;
        const std::string items = text::printable(each.items);
        texts.push_back(
            std::to_string(each.count) + " left out: " + text::printable(each.text) +
            (items.empty() ? "" : " (" + (all ? items : text::shortened(items, mostColumns)) + ")"));
    }
    if (const std::uint64_t told = explained(false); unsent() > told)
        texts.push_back(std::to_string(unsent() - told) + " left out for no stated reason");
    return texts;
}

std::uint64_t ContentsReport::Row::unsent() const { return excess(inFile, sent); }

std::uint64_t ContentsReport::Row::explained(bool onlySwitchedOff) const {
    std::uint64_t count = 0;
    for (const Reason& reason : reasons)
        if (!onlySwitchedOff || reason.text.find(choice) != std::wstring::npos)
            count += std::min(reason.count, unsent() - count);
    return count;
}

std::uint64_t ContentsReport::Row::lost() const { return excess(sent, arrived); }

std::uint64_t ContentsReport::Row::missing() const { return unsent() - explained(true) + lost(); }

std::string ContentsReport::Row::remark() const {
    std::string text;
    const auto add = [&text](std::uint64_t count, const char* what) {
        if (count > 0) text += (text.empty() ? "<- " : ", ") + std::to_string(count) + " " + what;
    };
    const std::uint64_t off = explained(true);
    add(off, "switched off");
    add(unsent() - off, "left out");
    add(lost(), "lost");
    add(excess(sent, inFile), "more than in the file");
    add(excess(arrived, sent), "more than sent");
    return text;
}

} // namespace zeq::host
