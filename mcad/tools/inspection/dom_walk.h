// Small steps through a document that may hold anything.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "zeq_api/json/dom_model.h"

namespace zeq::inspection {

/// Where something stands: a JSON pointer in a document or in a shared buffer.
struct Place {
    std::wstring buffer; ///< empty for a document
    std::string pointer;

    /// The element of a list that is a member.
    Place at(const char* list, std::size_t index) const {
        return {buffer, pointer + '/' + list + '/' + std::to_string(index)};
    }
};

/// Empty for null.
inline std::wstring wide(const JsonValue* text) {
    return text ? std::wstring(text->GetString(), text->GetStringLength()) : std::wstring();
}

/// The elements of an array that is a member; none if there is no such array.
inline std::vector<const JsonValue*> elements(const JsonValue& object, std::wstring_view key) {
    std::vector<const JsonValue*> result;
    const JsonValue* const array = json::findMember(object, key);
    if (!array || !array->IsArray()) return result;
    for (const JsonValue& element : array->GetArray()) result.push_back(&element);
    return result;
}

inline std::optional<std::uint64_t> idIn(const JsonValue& object, std::wstring_view key) {
    const JsonValue* const id = json::findMember(object, key);
    return id && id->IsUint64() ? std::optional(id->GetUint64()) : std::nullopt;
}

} // namespace zeq::inspection
