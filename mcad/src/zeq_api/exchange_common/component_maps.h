// Tables by component, which travel as arrays of objects that begin with the component's handle. Internal.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "platform/oda/od_db_handle.h"
#include "zeq_api/json/codecs.h"

namespace zeq::detail {

inline constexpr std::wstring_view handleKey = L"component_handle";

template <class T>
bool takeMember(auto& members, std::wstring_view key, T& out) {
    const auto value = members.find(key);
    return value && json::Codec<T>::take(*value, out);
}

template <class T>
void giveMember(auto& object, std::wstring_view key, const T& value) {
    object.member(key, [&](auto&& to) { json::Codec<T>::give(to, value); });
}

/// Calls `take(handle, members)` for each element that is an object with a handle.
void forEachEntry(const auto& array, auto&& take) {
    array.forEach([&](const auto& element) {
        if (element.kind() != json::Kind::object) return true;
        auto members = element.members();
        if (OdDbHandle handle = 0; takeMember(members, handleKey, handle)) take(handle, members);
        return true;
    });
}

/// Writes an array of objects, each with its handle and what `give(object, value)` adds.
void giveEntries(auto& sink, const auto& map, auto&& give) {
    sink.array([&](auto& array) {
        for (const auto& entry : map)
            array.element([&](auto&& element) {
                element.object([&](auto& object) {
                    giveMember(object, handleKey, entry.first);
                    give(object, entry.second);
                });
            });
    });
}

/// Each entry needs its handle and its value, or is skipped.
inline json::Shape entriesShape(json::MemberShape value) {
    value.isRequired = true;
    return json::arrayShape({json::ObjectShape{
        {{handleKey, json::Codec<OdDbHandle>::shape(), true, true, true}, std::move(value)}}});
}

} // namespace zeq::detail

namespace zeq::json {

/// Names of components: they are added, and of the entries with the same handle the last one counts.
template <>
struct Codec<std::map<OdDbHandle, std::wstring>> {
    using Names = std::map<OdDbHandle, std::wstring>;
    static constexpr std::wstring_view nameKey = L"component_name";

    template <class View>
    static bool take(const View& view, Names& names) {
        if (view.kind() != Kind::array) return false;
        zeq::detail::forEachEntry(view, [&](OdDbHandle handle, auto& members) {
            if (std::wstring name; zeq::detail::takeMember(members, nameKey, name))
                names.insert_or_assign(handle, std::move(name));
        });
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, const Names& names) {
        zeq::detail::giveEntries(sink, names, [](auto& object, const std::wstring& name) {
            zeq::detail::giveMember(object, nameKey, name);
        });
    }
    static Shape shape() { return zeq::detail::entriesShape({nameKey, Codec<std::wstring>::shape()}); }
};

} // namespace zeq::json
