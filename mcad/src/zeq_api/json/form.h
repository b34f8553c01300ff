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
//     ZEQ_JSON_OBJECT(ExcBlock)
//
// Rows are read and written in the order of the table. A row says where a member lives and, as its last
// argument, the rule by which it is written. Using a form registers it, so that its objects cross to bytes
// directly.
#pragma once

#include <concepts>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "zeq_api/json/rows.h"

namespace zeq::json {

template <class Base>
struct BaseRow {};
/// First row of a derived class: the rows of its base, which has a form.
template <class Base>
inline constexpr BaseRow<Base> base{};

template <class This>
struct OptionalObject {
    using Owner = This;
    bool (This::*isSet)() const;
    void (This::*clear)();
};
/// The class is written as null unless `isSet`; with `clear`, that is called before anything is read.
template <class This>
consteval auto nullUnless(bool (This::*isSet)() const, void (This::*clear)() = nullptr) {
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
concept KeyedRow = requires(const Row& row) {
    row.key;
};
/// A row with several members.
template <class Row>
concept SpreadRow = requires(const Row& row, std::vector<MemberShape>& members) {
    row.describe(members);
};
template <class Row>
concept MemberRow = KeyedRow<Row> || SpreadRow<Row>;
template <class Row>
concept ObjectState = requires(const Row& row) {
    row.clear;
};
/// A row that goes on after the object's other members, as tree() does.
template <class Row>
concept LastRow = requires(const Row& row) {
    row.mustBeLast;
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
    [[gnu::always_inline]] constexpr void forEach(Visit&& visit) const {
        (visit(static_cast<const detail::Slot<I, Rows>&>(*this).slotRow), ...);
    }
};

/// The JSON form of a class. Two rows of one key, a base row that is not the first, and a tree row that is not
/// the last do not compile.
template <class... Rows>
struct Form : Slots<std::index_sequence_for<Rows...>, Rows...> {
    consteval explicit Form(Head formHead, Rows... rows)
        : Slots<std::index_sequence_for<Rows...>, Rows...>(rows...), head(formHead) {
        constexpr std::size_t n = sizeof...(Rows);
        const bool isBase[n] = {detail::isBase<Rows>...};
        for (std::size_t i = 1; i < n; ++i)
            if (isBase[i]) throw "a base row must be the first row";
        const bool isLast[n] = {detail::LastRow<Rows>...};
        for (std::size_t i = 0; i + 1 < n; ++i)
            if (isLast[i]) throw "a tree row must be the last row";
        std::wstring_view keys[n];
        std::size_t count = 0;
        this->forEach([&](const auto& row) {
            if constexpr (detail::KeyedRow<std::remove_cvref_t<decltype(row)>>) keys[count++] = row.key;
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

/// The form of a class. g++ 12 does not look into a constant whose template arguments are deduced, as those of
/// JsonForm::form are; of this one it knows every key where it is read or written.
template <class JsonForm>
inline constexpr std::remove_cvref_t<decltype(JsonForm::form)> theForm = JsonForm::form;

inline void readMembers(const FormInfo& form, void* object, DomView::Members& members) {
    form.readDomMembers(object, members);
}
inline void readMembers(const FormInfo& form, void* object, ByteView::Members& members) {
    form.readByteMembers(object, members);
}
inline void writeMembers(const FormInfo& form, const void* object, DomSink& sink) {
    form.writeDomMembers(object, sink);
}
inline void writeMembers(const FormInfo& form, const void* object, ByteSink& sink) {
    form.writeByteMembers(object, sink);
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

/// What happens before anything is read.
template <class JsonForm>
void beginReading(typename JsonForm::This& object) {
    traceRead(theForm<JsonForm>.head);
    theForm<JsonForm>.forEach([&](const auto& row) {
        if constexpr (ObjectState<std::remove_cvref_t<decltype(row)>>)
            if (row.clear) (object.*row.clear)();
    });
}

/// Reads the members of the base, then those of the class, all with one cursor.
template <class JsonForm, class Members>
void readMembers(typename JsonForm::This& object, Members& members) {
    beginReading<JsonForm>(object);
    theForm<JsonForm>.forEach([&]<class Row>(const Row& row) __attribute__((always_inline)) {
        if constexpr (isBase<Row>)
            [&]<class Base>(const BaseRow<Base>&) {
                readMembers(*formOf<Base>(), static_cast<Base*>(&object), members);
            }(row);
        else if constexpr (MemberRow<Row>)
            row.read(object, members);
    });
}

template <class JsonForm, class Sink>
void writeMembers(const typename JsonForm::This& object, Sink& sink) {
    traceWrite(theForm<JsonForm>.head);
    theForm<JsonForm>.forEach([&]<class Row>(const Row& row) __attribute__((always_inline)) {
        if constexpr (isBase<Row>)
            [&]<class Base>(const BaseRow<Base>&) {
                writeMembers(*formOf<Base>(), static_cast<const Base*>(&object), sink);
            }(row);
        else if constexpr (MemberRow<Row>)
            row.write(object, sink);
    });
}

template <class JsonForm, class View>
void readForm(typename JsonForm::This& object, const View& view) {
    using This = typename JsonForm::This;
    using FormType = std::remove_cvref_t<decltype(JsonForm::form)>;
    static_assert(FormType::template belongsTo<This>, "a row of the form belongs to another class");

    if constexpr (FormType::isWhole) {
        beginReading<JsonForm>(object);
        theForm<JsonForm>.forEach([&](const auto& row) {
            if (!readWhole(object, view, row)) reportMismatch(theForm<JsonForm>.head);
        });
    } else if (view.kind() == Kind::object) {
        auto members = view.members();
        readMembers<JsonForm>(object, members);
        members.finish();
    } else {
        beginReading<JsonForm>(object);
        reportMismatch(theForm<JsonForm>.head);
    }
}

template <class JsonForm, class Sink>
void writeForm(const typename JsonForm::This& object, Sink& sink) {
    if constexpr (std::remove_cvref_t<decltype(JsonForm::form)>::isWhole) {
        traceWrite(theForm<JsonForm>.head);
        theForm<JsonForm>.forEach([&](const auto& row) { writeWhole(object, sink, row); });
    } else {
        bool isNull = false;
        theForm<JsonForm>.forEach([&](const auto& row) {
            if constexpr (ObjectState<std::remove_cvref_t<decltype(row)>>) isNull = !(object.*row.isSet)();
        });
        if (isNull) {
            traceWrite(theForm<JsonForm>.head);
            sink.null();
        } else {
            sink.object([&object](auto& to) { writeMembers<JsonForm>(object, to); });
        }
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
    theForm<JsonForm>.forEach([&]<class Row>(const Row& row) {
        if constexpr (isWhole<Row>) {
            shape = wholeShape(row);
        } else if constexpr (ObjectState<Row>) {
            shape.mayBeNull = true;
        } else if constexpr (isBase<Row>) {
            [&]<class Base>(const BaseRow<Base>&) {
                object = std::get<ObjectShape>(formOf<Base>()->shape().is);
            }(row);
        } else if constexpr (SpreadRow<Row>) {
            row.describe(object.members);
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
        theForm<JsonForm>.forEach([&kind](const auto& row) { kind = wholeKind(row); });
    return kind;
}

template <class JsonForm>
constexpr const std::type_info* baseOfForm() {
    const std::type_info* found = nullptr;
    theForm<JsonForm>.forEach([&found]<class Row>(const Row& row) {
        if constexpr (isBase<Row>) [&found]<class Base>(const BaseRow<Base>&) { found = &typeid(Base); }(row);
    });
    return found;
}

template <class This>
constexpr auto maker() -> MadeObject (*)() {
    if constexpr (std::is_default_constructible_v<This>)
        return [] { return MadeObject(std::make_shared<This>()); };
    else
        return nullptr;
}

/// A class of objects that load themselves from a buffer.
template <class This>
concept Loadable = std::copyable<This> && requires(This& object) {
    object.load();
};

/// Registers the form once, during static initialisation, wherever it is used.
template <class JsonForm>
struct Registration {
    using This = typename JsonForm::This;

    static FormInfo info() {
        FormInfo info{};
        info.type = &typeid(This);
        info.base = baseOfForm<JsonForm>();
        info.head = &theForm<JsonForm>.head;
        info.kind = kindOfForm<JsonForm>();
        info.shape = &describeForm<JsonForm>;
        info.make = maker<This>();
        info.isWholeDocument = std::is_base_of_v<mp::ISerializable, This>;
        if constexpr (Loadable<This>)
            info.keep = [](void* object) -> std::function<void()> {
                This* const kept = static_cast<This*>(object);
                return [kept, state = *kept]() mutable { *kept = std::move(state); };
            };
        info.read = [](void* object, const ByteView& view) {
            readForm<JsonForm>(*static_cast<This*>(object), view);
        };
        info.write = [](const void* object, ByteSink& sink) {
            writeForm<JsonForm>(*static_cast<const This*>(object), sink);
        };
        if constexpr (!std::remove_cvref_t<decltype(JsonForm::form)>::isWhole) {
            info.readDomMembers = [](void* object, DomView::Members& members) {
                readMembers<JsonForm>(*static_cast<This*>(object), members);
            };
            info.readByteMembers = [](void* object, ByteView::Members& members) {
                readMembers<JsonForm>(*static_cast<This*>(object), members);
            };
            info.writeDomMembers = [](const void* object, DomSink& sink) {
                writeMembers<JsonForm>(*static_cast<const This*>(object), sink);
            };
            info.writeByteMembers = [](const void* object, ByteSink& sink) {
                writeMembers<JsonForm>(*static_cast<const This*>(object), sink);
            };
        }
        return info;
    }

    static inline const bool done = registerForm(info());
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

/// The bodies of readObject and writeObject of a class with a form.
#define ZEQ_JSON_OBJECT(Class)                                                                               \
    void Class::readObject(const JsonValue& value) { json::read<Class::JsonForm>(*this, value); }            \
    void Class::writeObject(JsonValue& out, JsonAllocator& alloc) const {                                    \
        json::write<Class::JsonForm>(*this, out, alloc);                                                     \
    }
