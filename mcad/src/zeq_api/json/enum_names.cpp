// The one table class under all enumeration names.
#include "zeq_api/json/enum_names.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "zeq_api/json/dom_model.h"

namespace zeq {

EnumTable::EnumTable(const char* enumeration, std::span<const EnumEntry> entries)
    : m_enumeration(enumeration), m_entries(entries) {
    for (const EnumEntry& entry : entries) {
        m_names.emplace(entry.value, entry.name);
        m_values.emplace(entry.name, entry.value);
    }
}

const std::wstring& EnumTable::nameOf(int value) const {
    const auto found = m_names.find(value);
    return (found != m_names.end() ? found : m_names.begin())->second;
}

int EnumTable::valueOf(std::wstring_view name) const {
    const auto found = m_values.find(name);
    return (found != m_values.end() ? found : m_values.begin())->second;
}

int EnumTable::valueOf(const char* units, std::size_t count) const {
    std::array<wchar_t, 64> name; // longer than any
    const std::size_t size = std::min(count, name.size());
    std::memcpy(name.data(), units, size * sizeof(wchar_t));
    return valueOf({name.data(), size});
}

const JsonValue* findString(const JsonValue& object, std::wstring_view key) {
    const JsonValue* member = json::findMember(object, key);
    return member && member->IsString() ? member : nullptr;
}

} // namespace zeq
