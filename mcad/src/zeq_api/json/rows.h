// Rows of forms: what becomes of one member. special_rows.h has the rarer ones, form.h the engine that walks them. The
// common ones are inlined into that, so that each name is a constant where it is copied or compared.
#pragma once

#include <memory>
#include <string_view>
#include <type_traits>
#include <utility>

#include "zeq_api/json/codecs.h"

namespace zeq::json {

// Rules: whether a member is written, given its object and its value.

inline constexpr auto always = [](const auto&, const auto&) { return true; };
inline constexpr auto unlessEmpty = [](const auto&, const auto& value) {
    if constexpr (requires { value.empty(); })
        return !value.empty();
    else
        return !value.isEmpty();
};
/// Written only when it is true, or a pointer that is not null.
inline constexpr auto whenSet = [](const auto&, const auto& value) { return static_cast<bool>(value); };
/// Written unless it has this value.
template <class T>
constexpr auto unless(T excluded) {
    return [excluded](const auto&, const auto& value) { return value != excluded; };
}
/// Written only when the object says so.
template <class This>
constexpr auto when(bool (This::*predicate)() const) {
    return [predicate](const This& object, const auto&) { return (object.*predicate)(); };
}

/// Not written, only read.
inline constexpr auto never = [](const auto&, const auto&) { return false; };

namespace detail {

template <class Rule>
inline constexpr bool isAlways = std::is_same_v<const Rule, decltype(always)>;

} // namespace detail

// Rows. `Owner` is the class whose member a row names; `describe` says what stands in documents.

template <class This, class Member, class Rule>
struct Field {
    using Owner = This;
    std::wstring_view key;
    Member This::*member;
    Rule rule;

    /// Whether the member was taken.
    template <class Members>
    [[gnu::always_inline]] bool read(This& object, Members& members) const {
        const auto value = members.find(key);
        return value && Codec<Member>::take(*value, object.*member);
    }
    /// Whether the member was written.
    template <class Sink>
    [[gnu::always_inline]] bool write(const This& object, Sink& sink) const {
        if (!rule(object, object.*member)) return false;
        sink.member(key, [&](auto&& to) { Codec<Member>::give(to, object.*member); });
        return true;
    }
    MemberShape describe() const { return {key, Codec<Member>::shape(), detail::isAlways<Rule>}; }
};

/// A member that is taken when it has its type's JSON form, nested objects included.
template <class This, class Member, class Rule = decltype(always)>
consteval auto field(std::wstring_view key, Member This::*member, Rule rule = always) {
    return Field<This, Member, Rule>{key, member, rule};
}

template <class This, class Member, class Rule>
struct Nested : Field<This, Member, Rule> {
    template <class Members>
    [[gnu::always_inline]] void read(This& object, Members& members) const {
        if (const auto value = members.find(this->key)) readNested(object.*(this->member), *value);
    }
};

/// A nested object whose own reader is given whatever stands there, and complains of a wrong type itself.
template <class This, class Member, class Rule = decltype(always)>
consteval auto nested(std::wstring_view key, Member This::*member, Rule rule = always) {
    return Nested<This, Member, Rule>{{key, member, rule}};
}

template <class This, class Value>
struct Computed {
    using Owner = This;
    std::wstring_view key;
    Value (This::*getter)() const;

    template <class Members>
    [[gnu::always_inline]] void read(This&, Members& members) const {
        members.find(key); // passed by, so that what follows is found without a search
    }
    template <class Sink>
    [[gnu::always_inline]] void write(const This& object, Sink& sink) const {
        sink.member(key, [&](auto&& to) { Codec<std::remove_cvref_t<Value>>::give(to, (object.*getter)()); });
    }
    MemberShape describe() const { return {key, Codec<std::remove_cvref_t<Value>>::shape(), true, false}; }
};

/// A member that is written and never read.
template <class This, class Value>
consteval auto computed(std::wstring_view key, Value (This::*getter)() const) {
    return Computed<This, Value>{key, getter};
}

/// Which elements of an array become children: those of the JSON type of the children's class, the others
/// skipped silently; or all of them, so that the child's own reader complains of a wrong one and stays at its
/// defaults.
enum class Elements {
    matching,
    any
};
inline constexpr Elements matchingElements = Elements::matching;
inline constexpr Elements anyElements = Elements::any;

namespace detail {

template <class T>
struct ChildOf {
    using Type = T;
    static T make() { return {}; }
    static T& object(T& child) { return child; }
    static const T* find(const T& child) { return &child; }
};
template <class T>
struct ChildOf<std::shared_ptr<T>> {
    using Type = T;
    static std::shared_ptr<T> make() { return std::make_shared<T>(); }
    static T& object(const std::shared_ptr<T>& child) { return *child; }
    static const T* find(const std::shared_ptr<T>& child) { return child.get(); }
};

/// Reads the elements of an array into new children, each given to `add`.
template <class Child, class View, class Add>
void readChildren(const View& array, Elements elements, Add&& add) {
    array.forEach([&](const auto& element) {
        if (elements == Elements::any || element.kind() == kindOf<typename ChildOf<Child>::Type>()) {
            auto child = ChildOf<Child>::make();
            readNested(ChildOf<Child>::object(child), element);
            add(std::move(child));
        }
        return true;
    });
}

/// Has an object fetched that is soon needed, with what was allocated right after it: mostly its texts.
template <class T>
void fetchAhead(const T* object) {
    constexpr std::size_t line = 64, texts = 256;
    if (!object) return;
    for (std::size_t at = 0; at < sizeof(T) + texts; at += line)
        __builtin_prefetch(reinterpret_cast<const char*>(object) + at);
}

/// Writes children as an array; empty pointers are skipped.
template <class List, class Sink>
void writeChildren(const List& list, Sink& sink) {
    using Child = ChildOf<typename List::value_type>;
    constexpr std::size_t ahead = 4;
    sink.array([&list](auto& array) {
        for (std::size_t i = 0; i < list.size(); ++i) {
            if (i + ahead < list.size()) fetchAhead(Child::find(list[i + ahead]));
            if (const auto* object = Child::find(list[i]))
                array.element([object](auto&& to) { writeNested(*object, to); });
        }
    });
}

template <class Child>
Shape childrenShape() {
    return arrayShape({ClassShape{&typeid(typename ChildOf<Child>::Type)}});
}

} // namespace detail

template <class This, class List, class Add, class Rule>
struct Children {
    using Owner = This;
    std::wstring_view key;
    List This::*list;
    Add add;
    Elements elements;
    Rule rule;

    template <class Members>
    [[gnu::always_inline]] void read(This& object, Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != Kind::array) return;
        detail::readChildren<typename List::value_type>(*array, elements, [&](auto child) {
            if constexpr (std::is_member_function_pointer_v<Add>)
                (object.*add)(std::move(child));
            else
                add(object, object.*list, std::move(child));
        });
    }
    template <class Sink>
    [[gnu::always_inline]] void write(const This& object, Sink& sink) const {
        if (rule(object, object.*list))
            sink.member(key, [&](auto&& to) { detail::writeChildren(object.*list, to); });
    }
    MemberShape describe() const {
        return {key, detail::childrenShape<typename List::value_type>(), detail::isAlways<Rule>};
    }
};

/// A list of nested objects, or of pointers to them; a new child goes through `add` of the class.
template <class This, class List, class Argument, class Rule = decltype(unlessEmpty)>
consteval auto children(std::wstring_view key, List This::*list, void (This::*add)(Argument),
                        Elements elements = matchingElements, Rule rule = unlessEmpty) {
    return Children<This, List, void (This::*)(Argument), Rule>{key, list, add, elements, rule};
}

/// The same with `add(object, list, child)`.
template <class This, class List, class Add, class Rule = decltype(unlessEmpty)>
requires std::is_class_v<Add> && std::is_invocable_v<const Add&, This&, List&, typename List::value_type>
consteval auto children(std::wstring_view key, List This::*list, Add add,
                        Elements elements = matchingElements, Rule rule = unlessEmpty) {
    return Children<This, List, Add, Rule>{key, list, add, elements, rule};
}

inline constexpr auto append = [](auto&, auto& list, auto child) { list.push_back(std::move(child)); };
/// The same for a class whose list needs no more than push_back.
template <class This, class List, class Rule = decltype(unlessEmpty)>
consteval auto children(std::wstring_view key, List This::*list, Elements elements = matchingElements,
                        Rule rule = unlessEmpty) {
    return Children<This, List, decltype(append), Rule>{key, list, append, elements, rule};
}

template <class Special, class Rule>
struct Custom {
    std::wstring_view key;
    Special special;
    Rule rule;

    template <class This, class Members>
    [[gnu::always_inline]] void read(This& object, Members& members) const {
        if (const auto value = members.find(key)) special.take(*value, object);
    }
    template <class This, class Sink>
    [[gnu::always_inline]] void write(const This& object, Sink& sink) const {
        if (rule(object, object)) sink.member(key, [&](auto&& to) { special.give(to, object); });
    }
    MemberShape describe() const { return {key, special.shape(), detail::isAlways<Rule>}; }
};

/// A member that no codec can say. `Special` has `static void take(const auto& view, This&)`, `static void
/// give(auto& sink, const This&)` and `static json::Shape shape()`.
template <class Special, class Rule = decltype(always)>
consteval auto custom(std::wstring_view key, Special special, Rule rule = always) {
    return Custom<Special, Rule>{key, special, rule};
}

} // namespace zeq::json
