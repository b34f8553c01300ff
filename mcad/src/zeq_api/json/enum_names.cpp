// The one table class under all enumeration names.
#include "zeq_api/json/enum_names.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "zeq_api/json/dom_model.h"

namespace zeq {

namespace {

/// In some order, in which sizes are compared first: they differ sooner than texts.
bool isBefore(std::wstring_view name, const char* units, std::size_t count) {
    return name.size() != count ? name.size() < count
                                : std::memcmp(name.data(), units, count * sizeof(wchar_t)) < 0;
}

const char* bytesOf(std::wstring_view name) { return reinterpret_cast<const char*>(name.data()); }

/// Rows that are equivalent to one before them are dropped.
template <class Rows, class Less>
void sortOnce(Rows& rows, Less less) {
    std::ranges::stable_sort(rows, less);
    const auto same = [&less](const auto& a, const auto& b) { return !less(a, b); };
    rows.erase(std::unique(rows.begin(), rows.end(), same), rows.end());
}

} // namespace

EnumTable::EnumTable(const char* enumeration, std::span<const EnumEntry> entries)
    : m_enumeration(enumeration), m_entries(entries) {
    for (const EnumEntry& entry : entries) {
        m_names.emplace_back(entry.value, entry.name);
        m_values.emplace_back(entry.name, entry.value);
    }
    sortOnce(m_names, [](const auto& a, const auto& b) { return a.first < b.first; });
    sortOnce(m_values, [](const auto& a, const auto& b) {
        return isBefore(a.first, bytesOf(b.first), b.first.size());
    });
    m_first = std::ranges::min(m_values, {}, [](const auto& row) { return row.first; }).second;
}

const std::wstring& EnumTable::nameOf(int value) const {
    // Values mostly have no gaps between them.
    const auto guess = static_cast<std::size_t>(std::int64_t{value} - m_names.front().first);
    if (guess < m_names.size() && m_names[guess].first == value) return m_names[guess].second;
    const auto found = std::ranges::find(m_names, value, [](const auto& row) { return row.first; });
    return (found != m_names.end() ? found : m_names.begin())->second;
}

const int* EnumTable::find(const char* units, std::size_t count) const {
    const auto row = std::partition_point(m_values.begin(), m_values.end(), [units, count](const auto& one) {
        return isBefore(one.first, units, count);
    });
    if (row == m_values.end() || row->first.size() != count) return nullptr;
    return std::memcmp(row->first.data(), units, count * sizeof(wchar_t)) == 0 ? &row->second : nullptr;
}

bool EnumTable::hasName(std::wstring_view name) const { return find(bytesOf(name), name.size()) != nullptr; }

int EnumTable::valueOf(std::wstring_view name) const { return valueOf(bytesOf(name), name.size()); }

int EnumTable::valueOf(const char* units, std::size_t count) const {
    const int* const found = find(units, count);
    return found ? *found : m_first;
}

const JsonValue* findString(const JsonValue& object, std::wstring_view key) {
    const JsonValue* member = json::findMember(object, key);
    return member && member->IsString() ? member : nullptr;
}

} // namespace zeq
