// What the forms of commands, results and the translator's description share, and how such documents cross
// streams. Internal.
#pragma once

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

inline std::string loggable(const std::wstring& text) { return mp::toUtf8String(text); }
inline int loggable(int number) { return number; }

template <class This, class Member, class Rule>
struct Logged {
    using Owner = This;
    std::wstring_view key;
    Member This::*member;
    const char* label;
    const char* refusal; // thrown as std::invalid_argument when the member is missing; may be null
    Rule rule;

    template <class Members>
    void read(This& object, Members& members) const {
        const auto value = members.find(key);
        if (value && json::Codec<Member>::take(*value, object.*member)) {
            log(object);
        } else if (refusal) {
            throw std::invalid_argument(refusal);
        }
    }
    template <class Sink>
    void write(const This& object, Sink& sink) const {
        if (!rule(object, object.*member)) return;
        sink.member(key, [&](auto&& to) { json::Codec<Member>::give(to, object.*member); });
        log(object);
    }
    json::MemberShape describe() const {
        return {key, json::Codec<Member>::shape(), json::detail::isAlways<Rule>, true, refusal != nullptr};
    }
    void log(const This& object) const { ZEQ_LOG(Debug) << label << loggable(object.*member); }
};

/// A member whose value is logged after `label`, both when it is taken and when it is written.
template <class This, class Member, class Rule>
consteval auto logged(std::wstring_view key, Member This::*member, const char* label, Rule rule) {
    return Logged<This, Member, Rule>{key, member, label, nullptr, rule};
}

/// The same for one that a document must have.
template <class This, class Member>
consteval auto required(std::wstring_view key, Member This::*member, const char* label, const char* refusal) {
    return Logged<This, Member, decltype(json::always)>{key, member, label, refusal, json::always};
}

} // namespace zeq::detail
