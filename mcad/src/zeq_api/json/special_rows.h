// Rarer rows of forms: members that share a JSON value, share a flag, or choose their class.
#pragma once

#include <array>
#include <map>
#include <span>
#include <string>
#include <tuple>
#include <typeinfo>
#include <utility>
#include <vector>

#include "mv_cvx/logger.h"
#include "zeq_api/json/rows.h"

namespace zeq::json {

template <class This, class Member, class Rule>
struct Replaced : Field<This, Member, Rule> {
    template <class Members>
    void read(This& object, Members& members) const {
        Member made{};
        const auto value = members.find(this->key);
        if (value && Codec<Member>::take(*value, made)) object.*(this->member) = std::move(made);
    }
};

/// A held object that is replaced by a new one when it is taken, rather than read into.
template <class This, class Member, class Rule = decltype(always)>
consteval auto replaced(std::wstring_view key, Member This::*member, Rule rule = always) {
    return Replaced<This, Member, Rule>{{key, member, rule}};
}

template <class This, class Member>
struct Flagged {
    using Owner = This;
    std::wstring_view key;
    Member This::*member;
    bool This::*isSet;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        object.*isSet = value && Codec<Member>::take(*value, object.*member);
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        if (object.*isSet) sink.member(key, [&](auto&& to) { Codec<Member>::give(to, object.*member); });
    }
    MemberShape describe() const { return {key, Codec<Member>::shape(), false}; }
};

/// A member that is written when its flag is set; reading sets the flag, and clears it when nothing is taken.
template <class This, class Member>
consteval auto flagged(std::wstring_view key, Member This::*member, bool This::*isSet) {
    return Flagged<This, Member>{key, member, isSet};
}

template <class This, class Section>
struct ArrayReadAsObject {
    using Owner = This;
    std::wstring_view key;
    std::shared_ptr<Section> This::*member;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (!value || value->kind() != Kind::object) return;
        object.*member = std::make_shared<Section>();
        readNested(*(object.*member), *value);
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        if (const auto& section = object.*member)
            sink.member(key, [&](auto&& to) { writeNested(*section, to); });
    }
    MemberShape describe() const { return {key, Codec<Section>::shape(), false, false}; }
};

/// A held object of an array form that is read only from an object, which its own reader refuses: so what is
/// written does not come back. // sic
template <class This, class Section>
consteval auto arrayReadAsObject(std::wstring_view key, std::shared_ptr<Section> This::*member) {
    return ArrayReadAsObject<This, Section>{key, member};
}

// What becomes of an element of a pair that is of another type.

struct KeptElement {
    template <class View, class T>
    static void take(const View& view, T& out) {
        Codec<T>::take(view, out);
    }
};
struct ZeroedElement {
    template <class View, class T>
    static void take(const View& view, T& out) {
        if (!Codec<T>::take(view, out)) out = T{};
    }
};
/// Its own reader is given whatever stands there.
struct NestedElement {
    template <class View, class T>
    static void take(const View& view, T& out) {
        readNested(out, view);
    }
};

template <class Element, class This, class Member>
struct Pair {
    using Owner = This;
    std::wstring_view key;
    Member This::*first;
    Member This::*second;
    const char* warning;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != Kind::array) return;
        if (array->size() != 2) {
            ZEQ_LOG(Warning) << warning;
            return;
        }
        Member This::*next = first;
        array->forEach([&](const auto& element) {
            Element::take(element, object.*next);
            next = second;
            return true;
        });
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        sink.member(key, [&](auto&& to) {
            to.array([&](auto& array) {
                for (Member This::*const member : {first, second})
                    array.element([&](auto&& element) { Codec<Member>::give(element, object.*member); });
            });
        });
    }
    MemberShape describe() const { return {key, arrayShape(Codec<Member>::shape(), 2)}; }
};

/// Two members in an array of exactly two elements; another size is refused with the warning.
template <class Element = KeptElement, class This, class Member>
consteval auto pair(std::wstring_view key, Member This::*first, Member This::*second, const char* warning) {
    return Pair<Element, This, Member>{key, first, second, warning};
}

template <class This, class T>
struct Pairs {
    using Owner = This;
    std::wstring_view key;
    std::vector<std::pair<T, T>> This::*list;
    const char* warning;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != Kind::array) return;
        array->forEach([&](const auto& item) {
            if (item.kind() != Kind::array) return true;
            if (item.size() != 2) {
                ZEQ_LOG(Warning) << warning;
                return true;
            }
            std::array<T, 2> pair{};
            std::size_t taken = 0;
            item.forEach([&](const auto& element) {
                return Codec<T>::take(element, pair[taken]) && ++taken < pair.size();
            });
            if (taken == pair.size()) (object.*list).emplace_back(pair[0], pair[1]);
            return true;
        });
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        if ((object.*list).empty()) return;
        sink.member(key, [&](auto&& to) {
            to.array([&](auto& array) {
                for (const auto& [first, second] : object.*list)
                    array.element([pair = std::array<T, 2>{first, second}](auto&& item) {
                        Codec<std::array<T, 2>>::give(item, pair);
                    });
            });
        });
    }
    MemberShape describe() const { return {key, arrayShape(Codec<std::array<T, 2>>::shape()), false}; }
};

/// A list of pairs, each an array of exactly two elements. An array of another size is skipped with the warning,
/// everything else that is no pair without a word.
template <class This, class T>
consteval auto pairs(std::wstring_view key, std::vector<std::pair<T, T>> This::*list, const char* warning) {
    return Pairs<This, T>{key, list, warning};
}

template <class This, class T, std::size_t N>
struct PerKey {
    using Owner = This;
    std::wstring_view key;
    std::array<T, N> This::*member;
    std::array<std::wstring_view, N> keys;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (!value || value->kind() != Kind::object) return;
        auto inner = value->members();
        for (std::size_t i = 0; i < N; ++i)
            if (const auto each = inner.find(keys[i])) Codec<T>::take(*each, (object.*member)[i]);
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        sink.member(key, [&](auto&& to) {
            to.object([&](auto& inner) {
                for (std::size_t i = 0; i < N; ++i)
                    inner.member(keys[i], [&](auto&& each) { Codec<T>::give(each, (object.*member)[i]); });
            });
        });
    }
    MemberShape describe() const {
        ObjectShape shape;
        for (const std::wstring_view each : keys) shape.members.push_back({each, Codec<T>::shape()});
        return {key, {std::move(shape)}};
    }
};

/// An array of values as an object with a member for each, such as {"u": 0.0, "v": 0.0}.
template <class This, class T, std::size_t N, class... Keys>
requires(sizeof...(Keys) == N) consteval auto perKey(std::wstring_view key, std::array<T, N> This::*member,
                                                     Keys... keys) {
    return PerKey<This, T, N>{key, member, {std::wstring_view(keys)...}};
}

template <class This, class Inner, class... Rows>
struct Inline {
    using Owner = This;
    std::wstring_view key;
    Inner This::*member;
    std::tuple<Rows...> rows;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (!value || value->kind() != Kind::object) return;
        auto inner = value->members();
        std::apply([&](const auto&... row) { (row.read(object.*member, inner), ...); }, rows);
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        sink.member(key, [&](auto&& to) {
            to.object([&](auto& inner) {
                std::apply([&](const auto&... row) { (row.write(object.*member, inner), ...); }, rows);
            });
        });
    }
    MemberShape describe() const {
        return {key, {std::apply([](const auto&... row) { return ObjectShape{{row.describe()...}}; }, rows)}};
    }
};

/// A plain struct as an object of its own; its rows name the members of the struct.
template <class This, class Inner, class... Rows>
consteval auto object(std::wstring_view key, Inner This::*member, Rows... rows) {
    return Inline<This, Inner, Rows...>{key, member, {rows...}};
}

template <class This, class E, class T>
struct EnumMembers {
    using Owner = This;
    std::map<E, std::shared_ptr<T>> This::*map;

    template <class Members>
    void read(This& object, Members& members) const {
        for (const EnumEntry& entry : enumTable(E{}).entries()) {
            std::shared_ptr<T> made;
            const auto value = members.find(entry.name);
            if (value && Codec<std::shared_ptr<T>>::take(*value, made))
                (object.*map)[static_cast<E>(entry.value)] = std::move(made);
        }
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        for (const auto& [key, child] : object.*map)
            if (child)
                sink.ownedMember(enumToString(key), [&each = *child](auto&& to) { writeNested(each, to); });
    }
    void describe(std::vector<MemberShape>& members) const {
        for (const EnumEntry& entry : enumTable(E{}).entries())
            members.push_back({entry.name, Codec<T>::shape(), false});
    }
};

/// Held objects, each a member of its own by the name of its key; null ones are not written.
template <class This, class E, class T>
consteval auto enumMembers(std::map<E, std::shared_ptr<T>> This::*map) {
    return EnumMembers<This, E, T>{map};
}

/// One class of a polymorphic child.
template <class Base>
struct Variety {
    std::wstring_view name;
    std::shared_ptr<Base> (*make)(); ///< null for the name that stands for no child
    const std::type_info* type;
};

/// The classes of a polymorphic child, chosen by the string member "type", and the errors that are logged.
template <class Base>
struct Varieties {
    std::span<const Variety<Base>> all;
    const char* whenMissing;
    const char* whenUnknown;
};

template <class Derived, class Base>
constexpr Variety<Base> variety(std::wstring_view name) {
    return {name, [] { return std::shared_ptr<Base>(std::make_shared<Derived>()); }, &typeid(Derived)};
}

/// A new child of the class that the object asks for; null when it asks for none, or for one there is not.
template <class Base, class View>
std::shared_ptr<Base> readVariety(const View& object, const Varieties<Base>& varieties) {
    std::wstring name;
    if (!object.takeMember(L"type", name)) {
        ZEQ_LOG(Error) << varieties.whenMissing;
        return nullptr;
    }
    for (const Variety<Base>& each : varieties.all) {
        if (each.name != name) continue;
        if (!each.make) return nullptr;
        std::shared_ptr<Base> made = each.make();
        readNested(*made, object);
        return made;
    }
    ZEQ_LOG(Error) << varieties.whenUnknown;
    return nullptr;
}

template <class This, class Base>
struct Polymorphic {
    using Owner = This;
    std::wstring_view key;
    std::shared_ptr<Base> This::*member;
    const Varieties<Base>& (*varieties)();

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (value && value->kind() == Kind::object) object.*member = readVariety(*value, varieties());
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        if (const auto& child = object.*member) sink.member(key, [&](auto&& to) { writeNested(*child, to); });
    }
    MemberShape describe() const {
        ChoiceShape choice{ChoiceShape::Asked::itself, {}};
        for (const Variety<Base>& each : varieties().all)
            choice.alternatives.push_back({{{L"type", std::wstring(each.name), {}}},
                                           {each.make ? Shape{ClassShape{each.type}} : Shape{}}});
        return {key, {std::move(choice)}, false};
    }
};

/// A held object whose class its member "type" chooses; an object that asks for none clears it.
template <class This, class Base>
consteval auto polymorphic(std::wstring_view key, std::shared_ptr<Base> This::*member,
                           const Varieties<Base>& (*varieties)()) {
    return Polymorphic<This, Base>{key, member, varieties};
}

} // namespace zeq::json
