// One codec for each member type: whether a JSON value is taken, and what is written. The strict rules of
// reading live here and in the models' `take`, and nowhere else.
#pragma once

#include <array>
#include <concepts>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/form_registry.h"
#include "zeq_api/json/json_object.h"
#include "zeq_api/json/shape.h"

namespace zeq::json {

/// `take(view, out)` assigns when the value is of the type's JSON form and tells whether it was; `give(sink,
/// value)` writes; `shape()` says what is taken.
template <class T>
struct Codec {
    static_assert(sizeof(T) == 0,
                  "this type has no JSON form: a class derives from IJsonObject, an enumeration "
                  "has an enumTable() or travelsAsNumber() beside it, others have a Codec");
    // Declared so that the assertion is all that the compiler says.
    template <class View>
    static bool take(const View& view, T& out);
    template <class Sink>
    static void give(Sink&& sink, const T& value);
    static Shape shape();
};

template <class T>
concept Scalar = std::same_as<T, bool> || std::same_as<T, int> || std::same_as<T, unsigned> ||
    std::same_as<T, long long> || std::same_as<T, unsigned long long> || std::same_as<T, double>;

template <Scalar T>
struct Codec<T> {
    template <class View>
    static bool take(const View& view, T& out) {
        return view.take(out);
    }
    template <class Sink>
    static void give(Sink&& sink, T value) {
        sink.value(value);
    }
    static Shape shape() {
        if constexpr (std::same_as<T, bool>)
            return {BooleanShape{}};
        else if constexpr (std::same_as<T, double>)
            return {RealShape{}};
        else
            return integerShape<T>();
    }
};

template <>
struct Codec<std::wstring> {
    template <class View>
    static bool take(const View& view, std::wstring& out) {
        return view.take(out);
    }
    template <class Sink>
    static void give(Sink&& sink, const std::wstring& value) {
        sink.value(std::wstring_view(value));
    }
    static Shape shape() { return {StringShape{}}; }
};

/// The other types that the platform calls a 64-bit unsigned integer.
template <>
struct Codec<unsigned long> {
    template <class View>
    static bool take(const View& view, unsigned long& out) {
        unsigned long long number = 0;
        if (!view.take(number)) return false;
        out = number;
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, unsigned long value) {
        sink.value(static_cast<unsigned long long>(value));
    }
    static Shape shape() { return integerShape<unsigned long>(); }
};

template <NamedEnum E>
struct Codec<E> {
    template <class View>
    static bool take(const View& view, E& out) {
        Units name;
        if (!view.take(name)) return false;
        out = static_cast<E>(enumTable(E{}).valueOf(name.bytes, name.count));
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, E value) {
        sink.value(std::wstring_view(enumToString(value)));
    }
    static Shape shape() { return {NameShape{&enumTable(E{})}}; }
};

/// The condition that the member `key` has that name, or one that is read as the same value.
template <NamedEnum E>
Condition isName(std::wstring_view key, E value, bool unknownIsZero = false) {
    return {key, enumToString(value), NameShape{&enumTable(E{}), unknownIsZero}};
}

/// An enumeration with a declaration of `void travelsAsNumber(E)` beside it.
template <class E>
concept NumberedEnum = std::is_enum_v<E> && requires(E value) {
    travelsAsNumber(value);
};

template <NumberedEnum E>
struct Codec<E> {
    template <class View>
    static bool take(const View& view, E& out) {
        int number = 0;
        if (!view.take(number)) return false;
        out = static_cast<E>(number);
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, E value) {
        sink.value(static_cast<int>(value));
    }
    static Shape shape() { return integerShape<int>(); }
};

/// Elements in order, while they are there and taken.
template <class T, std::size_t N>
struct Codec<std::array<T, N>> {
    template <class View>
    static bool take(const View& view, std::array<T, N>& out) {
        if (view.kind() != Kind::array) return false;
        std::size_t i = 0;
        view.forEach([&](const auto& element) { return i < N && Codec<T>::take(element, out[i++]); });
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, const std::array<T, N>& value) {
        sink.array([&](auto& array) {
            for (const T& element : value) array.element([&](auto&& to) { Codec<T>::give(to, element); });
        });
    }
    static Shape shape() { return arrayShape(Codec<T>::shape(), N); }
};

/// Takes the elements of an array into as many values; an element of another type leaves its value alone.
template <class View, class T, std::size_t N>
void takeEach(const View& array, std::array<T, N>& out) {
    std::size_t i = 0;
    array.forEach([&](const auto& element) {
        if (i < N) Codec<T>::take(element, out[i]);
        return ++i < N;
    });
}

/// Every element that is taken is appended; the others are skipped.
template <class T>
struct Codec<std::vector<T>> {
    template <class View>
    static bool take(const View& view, std::vector<T>& out) {
        if (view.kind() != Kind::array) return false;
        view.forEach([&out](const auto& element) {
            T value{};
            if (Codec<T>::take(element, value)) out.push_back(std::move(value));
            return true;
        });
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, const std::vector<T>& value) {
        sink.array([&](auto& array) {
            for (const T& element : value) array.element([&](auto&& to) { Codec<T>::give(to, element); });
        });
    }
    static Shape shape() { return arrayShape(Codec<T>::shape()); }
};

/// An object with one member for each key. Every member that is taken is added, or replaces the one with its
/// key; the others are skipped.
template <class T>
struct Codec<std::map<std::wstring, T>> {
    template <class View>
    static bool take(const View& view, std::map<std::wstring, T>& out) {
        if (view.kind() != Kind::object) return false;
        view.forEachMember([&out](std::wstring key, const auto& member) {
            T value{};
            if (Codec<T>::take(member, value)) out.insert_or_assign(std::move(key), std::move(value));
        });
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, const std::map<std::wstring, T>& map) {
        sink.object([&](auto& object) {
            for (const auto& [key, value] : map)
                object.ownedMember(key, [&member = value](auto&& to) { Codec<T>::give(to, member); });
        });
    }
    static Shape shape() { return mapShape(Codec<T>::shape()); }
};

/// The form of a static type; null when it has none.
template <class T>
const FormInfo* formOf() {
    static const FormInfo* const form = findForm(typeid(T));
    return form;
}
/// The form of the dynamic type, which mostly is the static one.
template <class T>
const FormInfo* formOf(const T& object) {
    return typeid(object) == typeid(T) ? formOf<T>() : findForm(typeid(object));
}

/// Hands the value to the object's own reader, whatever its JSON type.
template <std::derived_from<IJsonObject> T>
void readNested(T& object, const DomView& view) {
    object.readObject(view.value());
}
template <std::derived_from<IJsonObject> T>
void readNested(T& object, const ByteView& view) {
    if (const FormInfo* form = formOf(object)) return form->read(dynamic_cast<void*>(&object), view);
    JsonDocument scratch; // a class of the library's user, without a form
    object.readObject(view.dom(scratch));
}

template <std::derived_from<IJsonObject> T>
void writeNested(const T& object, DomSink& sink) {
    object.writeObject(sink.out(), sink.allocator());
}
template <std::derived_from<IJsonObject> T>
void writeNested(const T& object, ByteSink& sink) {
    if (const FormInfo* form = formOf(object)) return form->write(dynamic_cast<const void*>(&object), sink);
    JsonDocument scratch;
    object.writeObject(scratch, scratch.GetAllocator());
    sink.dom(scratch);
}

/// The JSON type of a document class.
template <std::derived_from<IJsonObject> T>
Kind kindOf() {
    const FormInfo* form = formOf<T>();
    return form ? form->kind : Kind::object;
}

/// A document object is read only from its own JSON type.
template <std::derived_from<IJsonObject> T>
struct Codec<T> {
    template <class View>
    static bool take(const View& view, T& out) {
        if (view.kind() != kindOf<T>()) return false;
        readNested(out, view);
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, const T& value) {
        writeNested(value, sink);
    }
    static Shape shape() { return {ClassShape{&typeid(T)}}; }
};

/// A held object is replaced by a new one; an empty pointer is written as null.
template <std::derived_from<IJsonObject> T>
struct Codec<std::shared_ptr<T>> {
    template <class View>
    static bool take(const View& view, std::shared_ptr<T>& out) {
        if (view.kind() != kindOf<T>()) return false;
        auto made = std::make_shared<T>();
        readNested(*made, view);
        out = std::move(made);
        return true;
    }
    template <class Sink>
    static void give(Sink&& sink, const std::shared_ptr<T>& value) {
        if (value)
            writeNested(*value, sink);
        else
            sink.null();
    }
    static Shape shape() { return {ClassShape{&typeid(T)}, true}; }
};

} // namespace zeq::json
