// How enumerations travel: as wide names, through one table of (value, name) pairs for each enumeration. Any
// thread may use the names.
#pragma once

#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "zeq_api/json/json_value.h"

namespace zeq {

/// One row of an enumeration's table.
struct EnumEntry {
    template <class E>
    requires std::is_enum_v<E>
    constexpr EnumEntry(E enumerator, const wchar_t* enumeratorName)
        : value(static_cast<int>(enumerator)), name(enumeratorName) {}

    int value;
    const wchar_t* name;
};

/// The names of one enumeration. A value listed twice keeps its first name, a name listed twice its first
/// value.
class EnumTable {
public:
    EnumTable(const char* enumeration, std::span<const EnumEntry> entries);

    /// The enumeration's C++ name.
    const char* enumeration() const { return m_enumeration; }
    /// The rows in the order of the table.
    std::span<const EnumEntry> entries() const { return m_entries; }

    /// The name of `value`; of a value without a name, the name of the smallest value.
    const std::wstring& nameOf(int value) const;
    /// The value of `name`; of an unknown name, the value whose name comes first in code-unit order.
    int valueOf(std::wstring_view name) const;
    /// The same for so many units at any address.
    int valueOf(const char* units, std::size_t count) const;
    bool hasName(std::wstring_view name) const;

private:
    const int* find(const char* units, std::size_t count) const;

    const char* m_enumeration;
    std::span<const EnumEntry> m_entries;
    std::vector<std::pair<int, std::wstring>> m_names;       // by value
    std::vector<std::pair<std::wstring_view, int>> m_values; // by size, then by bytes
    int m_first = 0;                                         // whose name comes first in code-unit order
};

/// An enumeration with an `enumTable(E)` function beside it.
template <class E>
concept NamedEnum = std::is_enum_v<E> && requires(E value) {
    { enumTable(value) } -> std::same_as<const EnumTable&>;
};

/// Maps the values of `E` to their names.
template <NamedEnum E>
class EnumToStringConverter {
public:
    const std::wstring& operator()(E value) const { return m_table.nameOf(static_cast<int>(value)); }

private:
    const EnumTable& m_table = enumTable(E{});
};

/// Maps the names of `E` to their values.
template <NamedEnum E>
class EnumFromStringConverter {
public:
    E operator()(const std::wstring& name) const { return static_cast<E>(m_table.valueOf(name)); }

private:
    const EnumTable& m_table = enumTable(E{});
};

/// The name of `value`; of a value without a name, the name of the table's smallest value.
template <NamedEnum E>
const std::wstring& enumToString(E value) {
    static const EnumToStringConverter<E> converter;
    return converter(value);
}

/// The value with exactly this name; of an unknown name, the value whose name is first in code-unit order.
template <NamedEnum E>
E enumFromString(const std::wstring& name) {
    static const EnumFromStringConverter<E> converter;
    return converter(name);
}

/// The string member `key` of `object`; null when there is none.
const JsonValue* findString(const JsonValue& object, std::wstring_view key);

/// Sets `out` from the string member `key` of `object`.
/// @return false, leaving `out` alone, if `object` is no object or has no such string member
template <NamedEnum E>
bool readEnum(const JsonValue& object, const wchar_t* key, E& out) {
    const JsonValue* text = findString(object, key);
    if (text) out = enumFromString<E>({text->GetString(), text->GetStringLength()});
    return text != nullptr;
}

} // namespace zeq
