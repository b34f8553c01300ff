// Forms: the JSON form of a document class as one constexpr table, and the one engine that reads and writes
// all of them, from and to the document model and the binary byte stream alike.
//
//     struct ExcBlock::JsonForm {
//         using This = ExcBlock;
//         static constexpr json::Form form{
//             json::Head{"ExcBlock", area::exchangeStructure},
//             json::field(L"id", &This::m_id),
//             json::field(L"name", &This::m_name, json::unlessEmpty),
//             json::children(L"block_references", &This::m_references, &This::addBlockReference)};
//     };
//     void ExcBlock::readObject(const JsonValue& object) { json::read<JsonForm>(*this, object); }
//     void ExcBlock::writeObject(JsonValue& out, JsonAllocator& alloc) const { json::write<JsonForm>(*this,
//     out, alloc); }
//
// Rows are read and written in the order of the table. A row says where a member lives and, as its last
// argument, the rule by which it is written. Using a form registers it, so that its objects cross to bytes
// directly.
#pragma once

#include <string_view>
#include <type_traits>
#include <utility>

#include "mp/serializable.h"
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
    bool read(This& object, Members& members) const {
        const auto value = members.find(key);
        return value && Codec<Member>::take(*value, object.*member);
    }
    /// Whether the member was written.
    template <class Sink>
    bool write(const This& object, Sink& sink) const {
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
    void read(This& object, Members& members) const {
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
    void read(This&, Members&) const {}
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        sink.member(key, [&](auto&& to) { Codec<std::remove_cvref_t<Value>>::give(to, (object.*getter)()); });
    }
    MemberShape describe() const { return {key, Codec<std::remove_cvref_t<Value>>::shape(), true, false}; }
};

/// A member that is written and never read.
template <class This, class Value>
consteval auto computed(std::wstring_view key, Value (This::*getter)() const) {
    return Computed<This, Value>{key, getter};
}

/// Which elements of an array become children: JSON objects only, the others skipped silently; or all of
/// them, so that the child's own reader complains of a wrong one and stays at its defaults.
enum class Elements {
    objects,
    any
};
inline constexpr Elements objectElements = Elements::objects;
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
        if (elements == Elements::any || element.kind() == Kind::object) {
            auto child = ChildOf<Child>::make();
            readNested(ChildOf<Child>::object(child), element);
            add(std::move(child));
        }
        return true;
    });
}

/// Writes children as an array; empty pointers are skipped.
template <class List, class Sink>
void writeChildren(const List& list, Sink& sink) {
    using Child = typename List::value_type;
    sink.array([&](auto& array) {
        for (const Child& child : list)
            if (const auto* object = ChildOf<Child>::find(child))
                array.element([&](auto&& to) { writeNested(*object, to); });
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
    void read(This& object, Members& members) const {
        const auto array = members.find(key);
        if (!array || array->kind() != Kind::array) return;
        detail::readChildren<typename List::value_type>(*array, elements, [&](auto child) {
            if constexpr (std::is_member_function_pointer_v<Add>)
                (object.*add)(std::move(child));
            else
                (object.*list).push_back(std::move(child));
        });
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
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
                        Elements elements = objectElements, Rule rule = unlessEmpty) {
    return Children<This, List, void (This::*)(Argument), Rule>{key, list, add, elements, rule};
}

struct Append {};
/// The same for a class whose list needs no more than push_back.
template <class This, class List, class Rule = decltype(unlessEmpty)>
consteval auto children(std::wstring_view key, List This::*list, Elements elements = objectElements,
                        Rule rule = unlessEmpty) {
    return Children<This, List, Append, Rule>{key, list, {}, elements, rule};
}

template <class Special, class Rule>
struct Custom {
    std::wstring_view key;
    Special special;
    Rule rule;

    template <class This, class Members>
    void read(This& object, Members& members) const {
        if (const auto value = members.find(key)) special.take(*value, object);
    }
    template <class This, class Sink>
    void write(const This& object, Sink& sink) const {
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

template <class Base>
struct BaseRow {};
/// First row of a derived class: B's own reading and writing, qualified.
template <class Base>
inline constexpr BaseRow<Base> base{};

template <class This>
struct OptionalObject {
    using Owner = This;
    bool (This::*isSet)() const;
    void (This::*clear)();
};
/// The class is written as null unless `isSet`, and cleared before anything is read.
template <class This>
consteval auto nullUnless(bool (This::*isSet)() const, void (This::*clear)()) {
    return OptionalObject<This>{isSet, clear};
}

template <class Special>
struct WholeSpecial {
    Special special;
};
template <class This, class Member>
struct WholeMember {
    using Owner = This;
    Member This::*member;
};
template <class This, class List>
struct WholeList {
    using Owner = This;
    List This::*list;
};

/// The only row of a form that is no object: the value is that of one member.
template <class This, class Member>
consteval auto whole(Member This::*member) {
    return WholeMember<This, Member>{member};
}
/// The only row of a form that is an array of children; every element becomes one.
template <class This, class List>
consteval auto wholeList(List This::*list) {
    return WholeList<This, List>{list};
}
/// The only row of an array form that no codec can say; `Special` as for custom().
template <class Special>
consteval auto wholeArray(Special special) {
    return WholeSpecial<Special>{special};
}

namespace detail {

template <class Row>
inline constexpr bool isBase = false;
template <class Base>
inline constexpr bool isBase<BaseRow<Base>> = true;

template <class Row>
inline constexpr bool isWhole = false;
template <class Special>
inline constexpr bool isWhole<WholeSpecial<Special>> = true;
template <class This, class Member>
inline constexpr bool isWhole<WholeMember<This, Member>> = true;
template <class This, class List>
inline constexpr bool isWhole<WholeList<This, List>> = true;

template <class Row>
concept MemberRow = requires(const Row& row) {
    row.key;
};
template <class Row>
concept ObjectState = requires(const Row& row) {
    row.clear;
};

template <class Row, class This>
inline constexpr bool isRowOf = true;
template <class Row, class This>
requires requires { typename Row::Owner; }
inline constexpr bool isRowOf<Row, This> = std::is_same_v<typename Row::Owner, This>;
template <class Base, class This>
inline constexpr bool isRowOf<BaseRow<Base>, This> =
    std::is_base_of_v<Base, This> && !std::is_same_v<Base, This>;

template <std::size_t I, class Row>
struct Slot {
    Row slotRow;
};

} // namespace detail

// The rows as a list of bases: cheaper to compile than std::tuple with std::apply.
template <class Indexes, class... Rows>
struct Slots;
template <std::size_t... I, class... Rows>
struct Slots<std::index_sequence<I...>, Rows...> : detail::Slot<I, Rows>... {
    constexpr explicit Slots(Rows... rows) : detail::Slot<I, Rows>{rows}... {}

    template <class Visit>
    constexpr void forEach(Visit&& visit) const {
        (visit(static_cast<const detail::Slot<I, Rows>&>(*this).slotRow), ...);
    }
};

/// The JSON form of a class. Two rows of one key, and a base row that is not the first, do not compile.
template <class... Rows>
struct Form : Slots<std::index_sequence_for<Rows...>, Rows...> {
    consteval explicit Form(Head formHead, Rows... rows)
        : Slots<std::index_sequence_for<Rows...>, Rows...>(rows...), head(formHead) {
        constexpr std::size_t n = sizeof...(Rows);
        const bool isBase[n] = {detail::isBase<Rows>...};
        for (std::size_t i = 1; i < n; ++i)
            if (isBase[i]) throw "a base row must be the first row";
        std::wstring_view keys[n];
        std::size_t count = 0;
        this->forEach([&](const auto& row) {
            if constexpr (detail::MemberRow<std::remove_cvref_t<decltype(row)>>) keys[count++] = row.key;
        });
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t k = 0; k < i; ++k)
                if (keys[i] == keys[k]) throw "two rows have the same key";
    }

    /// Whether the form is a value of its own and no object with members.
    static constexpr bool isWhole = (detail::isWhole<Rows> || ...);

    template <class This>
    static constexpr bool belongsTo = (detail::isRowOf<Rows, This> && ...);

    Head head;
};
template <class... Rows>
Form(Head, Rows...) -> Form<Rows...>;

namespace detail {

template <class Base>
void readBase(Base& object, const DomView& view) {
    object.Base::readObject(view.value());
}
template <class Base>
void readBase(Base& object, const ByteView& view) {
    if (const FormInfo* form = findForm(typeid(Base))) return form->read(&object, view);
    JsonDocument scratch;
    object.Base::readObject(view.dom(scratch));
}
template <class Base>
void writeBase(const Base& object, DomSink& sink) {
    object.Base::writeObject(sink.out(), sink.allocator());
}
template <class Base>
void writeBase(const Base& object, ByteSink& sink) {
    if (const FormInfo* form = findForm(typeid(Base))) return form->write(&object, sink);
    JsonDocument scratch;
    object.Base::writeObject(scratch, scratch.GetAllocator());
    sink.dom(scratch);
}

template <class This, class View, class Special>
bool readWhole(This& object, const View& view, const WholeSpecial<Special>& row) {
    if (view.kind() != Kind::array) return false;
    row.special.take(view, object);
    return true;
}
template <class This, class View, class Member>
bool readWhole(This& object, const View& view, const WholeMember<This, Member>& row) {
    return Codec<Member>::take(view, object.*row.member);
}
template <class This, class View, class List>
bool readWhole(This& object, const View& view, const WholeList<This, List>& row) {
    if (view.kind() != Kind::array) return false;
    readChildren<typename List::value_type>(
        view, Elements::any, [&](auto child) { (object.*row.list).push_back(std::move(child)); });
    return true;
}

template <class This, class Sink, class Special>
void writeWhole(const This& object, Sink& sink, const WholeSpecial<Special>& row) {
    row.special.give(sink, object);
}
template <class This, class Sink, class Member>
void writeWhole(const This& object, Sink& sink, const WholeMember<This, Member>& row) {
    Codec<Member>::give(sink, object.*row.member);
}
template <class This, class Sink, class List>
void writeWhole(const This& object, Sink& sink, const WholeList<This, List>& row) {
    writeChildren(object.*row.list, sink);
}

template <class JsonForm, class View>
void readForm(typename JsonForm::This& object, const View& view) {
    using This = typename JsonForm::This;
    constexpr const auto& form = JsonForm::form;
    using FormType = std::remove_cvref_t<decltype(form)>;
    static_assert(FormType::template belongsTo<This>, "a row of the form belongs to another class");

    traceRead(form.head);
    form.forEach([&](const auto& row) {
        if constexpr (ObjectState<std::remove_cvref_t<decltype(row)>>) (object.*row.clear)();
    });
    if constexpr (FormType::isWhole) {
        form.forEach([&](const auto& row) {
            if (!readWhole(object, view, row)) reportMismatch(JsonForm::form.head);
        });
    } else {
        if (view.kind() != Kind::object) return reportMismatch(form.head);
        auto members = view.members();
        form.forEach([&]<class Row>(const Row& row) {
            if constexpr (isBase<Row>)
                [&]<class Base>(const BaseRow<Base>&) { readBase<Base>(object, view); }(row);
            else if constexpr (MemberRow<Row>)
                row.read(object, members);
        });
    }
}

template <class JsonForm, class Sink>
void writeForm(const typename JsonForm::This& object, Sink& sink) {
    constexpr const auto& form = JsonForm::form;
    using FormType = std::remove_cvref_t<decltype(form)>;

    traceWrite(form.head);
    if constexpr (FormType::isWhole) {
        form.forEach([&](const auto& row) { writeWhole(object, sink, row); });
    } else {
        bool isNull = false;
        bool isExtension = false;
        form.forEach([&]<class Row>(const Row& row) {
            if constexpr (ObjectState<Row>) isNull = !(object.*row.isSet)();
            if constexpr (isBase<Row>) {
                [&]<class Base>(const BaseRow<Base>&) { writeBase<Base>(object, sink); }(row);
                isExtension = true;
            }
        });
        if (isNull) return sink.null();
        const auto fill = [&object](auto& to) {
            JsonForm::form.forEach([&]<class Row>(const Row& row) {
                if constexpr (MemberRow<Row>) row.write(object, to);
            });
        };
        if (isExtension)
            sink.extend(fill);
        else
            sink.object(fill);
    }
}

template <class Special>
Shape wholeShape(const WholeSpecial<Special>& row) {
    return row.special.shape();
}
template <class This, class Member>
Shape wholeShape(const WholeMember<This, Member>&) {
    return Codec<Member>::shape();
}
template <class This, class List>
Shape wholeShape(const WholeList<This, List>&) {
    return childrenShape<typename List::value_type>();
}

/// The shape of a form, with the members of its base before its own.
template <class JsonForm>
Shape describeForm() {
    Shape shape;
    ObjectShape object;
    JsonForm::form.forEach([&]<class Row>(const Row& row) {
        if constexpr (isWhole<Row>) {
            shape = wholeShape(row);
        } else if constexpr (ObjectState<Row>) {
            shape.mayBeNull = true;
        } else if constexpr (isBase<Row>) {
            [&]<class Base>(const BaseRow<Base>&) {
                if (const FormInfo* form = findForm(typeid(Base)))
                    object = std::get<ObjectShape>(form->shape().is);
            }(row);
        } else {
            object.members.push_back(row.describe());
        }
    });
    if constexpr (!std::remove_cvref_t<decltype(JsonForm::form)>::isWhole) shape.is = std::move(object);
    return shape;
}

template <class Row>
constexpr Kind wholeKind(const Row&) {
    return Kind::array;
}
template <class This, NamedEnum E>
constexpr Kind wholeKind(const WholeMember<This, E>&) {
    return Kind::string;
}

template <class JsonForm>
constexpr Kind kindOfForm() {
    Kind kind = Kind::object;
    if constexpr (std::remove_cvref_t<decltype(JsonForm::form)>::isWhole)
        JsonForm::form.forEach([&kind](const auto& row) { kind = wholeKind(row); });
    return kind;
}

/// Registers the form once, during static initialisation, wherever it is used.
template <class JsonForm>
struct Registration {
    using This = typename JsonForm::This;
    static inline const bool done = registerForm(
        {&typeid(This), &JsonForm::form.head, kindOfForm<JsonForm>(),
         [](void* object, const ByteView& view) { readForm<JsonForm>(*static_cast<This*>(object), view); },
         [](const void* object, ByteSink& sink) {
             writeForm<JsonForm>(*static_cast<const This*>(object), sink);
         },
         &describeForm<JsonForm>, std::is_base_of_v<mp::ISerializable, This>});
};

} // namespace detail

/// The body of readObject: takes what the form says from a value of the document model.
template <class JsonForm>
void read(typename JsonForm::This& object, const JsonValue& value) {
    static_cast<void>(&detail::Registration<JsonForm>::done);
    detail::readForm<JsonForm>(object, DomView(value));
}

/// The body of writeObject.
template <class JsonForm>
void write(const typename JsonForm::This& object, JsonValue& out, JsonAllocator& allocator) {
    static_cast<void>(&detail::Registration<JsonForm>::done);
    DomSink sink(out, allocator);
    detail::writeForm<JsonForm>(object, sink);
}

} // namespace zeq::json
