// What the forms of commands, results and the translator's description share, and how such documents cross
// streams. Internal.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

#include "mp/serializable.h"
#include "mp/string.h"
#include "mv_cvx/logger.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/text_io.h"

namespace zeq::detail {

/// The body of readObject. A stream that is not one JSON document counts as null, which no form takes.
template <class JsonForm>
void readStream(typename JsonForm::This& object, mp::InputStream& stream) {
    JsonDocument document;
    JsonTextIO::read(stream, document);
    json::read<JsonForm>(object, document);
}

/// The body of writeObject.
template <class JsonForm>
void writeStream(const typename JsonForm::This& object, mp::OutputStream& stream) {
    JsonDocument document;
    json::write<JsonForm>(object, document, document.GetAllocator());
    JsonTextIO::write(stream, document, 1);
}

/// What happens to a member's field when the document has no string for it.
struct WhenMissing {
    bool resets = false;
    const char* refusal = nullptr; // thrown as std::invalid_argument
};
inline constexpr WhenMissing keepsValue{};
inline constexpr WhenMissing becomesDefault{true, nullptr};
constexpr WhenMissing refused(const char* message) { return {false, message}; }

template <class This, class E>
struct ExactName {
    using Owner = This;
    std::wstring_view key;
    E This::*member;
    WhenMissing whenMissing;

    template <class Members>
    void read(This& object, Members& members) const {
        std::wstring name;
        if (const auto value = members.find(key); value && value->take(name)) {
            object.*member = enumTable(E{}).hasName(name) ? enumFromString<E>(name) : E{};
        } else if (whenMissing.refusal) {
            throw std::invalid_argument(whenMissing.refusal);
        } else if (whenMissing.resets) {
            object.*member = E{};
        }
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        sink.member(key, [&](auto&& to) { json::Codec<E>::give(to, object.*member); });
    }
    json::MemberShape describe() const {
        return {key, {json::NameShape{&enumTable(E{}), true}}, true, true, whenMissing.refusal != nullptr};
    }
};

/// An enumeration whose value 0 stands for whatever has no name, written or read.
template <class This, class E>
consteval auto exactName(std::wstring_view key, E This::*member, WhenMissing whenMissing = keepsValue) {
    return ExactName<This, E>{key, member, whenMissing};
}

template <class This, class Member>
struct Mandatory : json::Field<This, Member, decltype(json::always)> {
    using Field = json::Field<This, Member, decltype(json::always)>;
    const char* refusal;

    template <class Members>
    bool read(This& object, Members& members) const {
        if (!Field::read(object, members)) throw std::invalid_argument(refusal);
        return true;
    }
    json::MemberShape describe() const {
        json::MemberShape shape = Field::describe();
        shape.isRequired = true;
        return shape;
    }
};

/// A field that a document must have; otherwise std::invalid_argument with the text `refusal` is thrown.
template <class This, class Member>
consteval auto mandatory(std::wstring_view key, Member This::*member, const char* refusal) {
    return Mandatory<This, Member>{{key, member, json::always}, refusal};
}

inline std::string loggable(const std::wstring& text) { return mp::toUtf8String(text); }
inline int loggable(int number) { return number; }
template <NamedEnum E>
std::string loggable(E value) {
    return loggable(enumToString(value));
}

template <class T>
void logValue(const char* label, const T& value) {
    ZEQ_LOG(Debug) << label << loggable(value);
}
inline void logValue(const char* label, const std::map<std::wstring, std::wstring>& texts) {
    for (const auto& [key, text] : texts) ZEQ_LOG(Debug) << label << loggable(key) << " = " << loggable(text);
}

template <class Row>
struct Logged : Row {
    using This = typename Row::Owner;
    const char* label;

    template <class Members>
    void read(This& object, Members& members) const {
        if (Row::read(object, members)) logValue(label, object.*(this->member));
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        if (Row::write(object, sink)) logValue(label, object.*(this->member));
    }
};

/// A field whose value is logged after `label`, both when it is taken and when it is written.
template <class Row>
consteval auto logged(const char* label, Row row) {
    return Logged<Row>{row, label};
}

template <class Row>
struct InForce : Row {
    using This = typename Row::Owner;
    const char* label;

    template <class Members>
    void read(This& object, Members& members) const {
        Row::read(object, members);
        logValue(label, object.*(this->member));
    }
};

/// A field whose value is logged after reading, whether it was taken or kept. Of a table each entry is
/// logged.
template <class Row>
consteval auto inForce(const char* label, Row row) {
    return InForce<Row>{row, label};
}

} // namespace zeq::detail
