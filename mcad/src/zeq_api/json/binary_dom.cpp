// Writing of the document model into a byte buffer, and reading from one.
#include "zeq_api/json/binary_dom.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "zeq_api/json/binary_format.h"
#include "zeq_api/json/byte_model.h"
#include "zeq_api/json/dom_walk.h"

namespace zeq {

using json::Tag;
namespace binary_error = json::binary_error;

class JsonBinaryIOImpl::Writer {
public:
    explicit Writer(json::ByteSink& sink) : m_sink(sink) {}

    void onValue(const JsonValue& value) {
        switch (value.GetType()) {
        case rapidjson::kNullType:
            return m_sink.null();
        case rapidjson::kFalseType:
        case rapidjson::kTrueType:
            return m_sink.value(value.IsTrue());
        case rapidjson::kObjectType:
            return m_bodies.push_back(m_sink.open(Tag::object));
        case rapidjson::kArrayType:
            return m_bodies.push_back(m_sink.open(Tag::array));
        case rapidjson::kStringType:
            return m_sink.value(textOf(value));
        case rapidjson::kNumberType:
            break;
        }
        if (value.IsInt64())
            m_sink.value(static_cast<long long>(value.GetInt64()));
        else if (value.IsUint64())
            m_sink.value(static_cast<unsigned long long>(value.GetUint64()));
        else if (value.IsDouble())
            m_sink.value(value.GetDouble());
        else
            throw std::invalid_argument(binary_error::unknownNumber);
    }

    void onName(const JsonValue& name) { m_sink.name(textOf(name)); }

    void onEnd(const JsonValue& /*container*/) {
        m_sink.close(m_bodies.back());
        m_bodies.pop_back();
    }

private:
    static std::wstring_view textOf(const JsonValue& string) {
        return {string.GetString(), string.GetStringLength()};
    }

    json::ByteSink& m_sink;
    std::vector<json::ByteSink::Body> m_bodies; // of the open containers
};

class JsonBinaryIOImpl::Reader {
public:
    Reader(const char* data, std::size_t size, JsonAllocator& alloc)
        : m_begin(data), m_next(data), m_end(data + size), m_document(&alloc) {}

    std::size_t read(JsonValue& value) {
        const auto readOne = [this](JsonDocument&) {
            onValue();
            while (!m_levels.empty()) onNext();
            return true;
        };
        value = static_cast<JsonValue&>(m_document.Populate(readOne));
        return static_cast<std::size_t>(m_next - m_begin);
    }

private:
    struct Level {
        bool isObject;
        std::uint64_t length;
        const char* body;
        std::uint64_t children;
    };

    /// Reads the next child of the innermost container, or ends that.
    void onNext() {
        Level& level = m_levels.back();
        // A last child may run past the end of its container: the parent goes on from where the child ended.
        if (static_cast<std::uint64_t>(m_next - level.body) >= level.length) {
            if (level.isObject)
                m_document.EndObject(domSize(level.children));
            else
                m_document.EndArray(domSize(level.children));
            m_levels.pop_back();
            return;
        }
        ++level.children;
        if (level.isObject && takeTag() != Tag::string)
            throw std::invalid_argument(binary_error::nameNotString);
        if (level.isObject) onString();
        onValue();
    }

    void onValue() {
        switch (takeTag()) {
        case Tag::null:
            m_document.Null();
            return;
        case Tag::boolFalse:
            m_document.Bool(false);
            return;
        case Tag::boolTrue:
            m_document.Bool(true);
            return;
        case Tag::object:
            return onObject();
        case Tag::array:
            return onArray();
        case Tag::string:
            return onString();
        case Tag::int32:
            return onInt64(take<std::int32_t>());
        case Tag::uint32:
            return onInt64(take<std::uint32_t>());
        case Tag::int64:
            return onInt64(take<std::int64_t>());
        case Tag::uint64:
            return onUint64(take<std::uint64_t>());
        case Tag::real:
            return onDouble(take<double>());
        }
    }
    void onObject() {
        m_document.StartObject();
        open(true);
    }
    void onArray() {
        m_document.StartArray();
        open(false);
    }
    void onString() {
        const auto count = take<std::uint64_t>();
        if (count > left() / sizeof(wchar_t)) throw std::length_error(binary_error::shortString);
        // The units may lie at any address: rapidjson copies them as bytes.
        m_document.String(reinterpret_cast<const wchar_t*>(m_next), domSize(count), true);
        m_next += count * sizeof(wchar_t);
    }
    void onInt64(std::int64_t number) { m_document.Int64(number); }
    void onUint64(std::uint64_t number) { m_document.Uint64(number); }
    void onDouble(double number) { m_document.Double(number); }

    void open(bool isObject) {
        const auto length = take<std::uint64_t>();
        m_levels.push_back({isObject, length, m_next, 0});
    }

    /// The document model counts in 32 bits.
    static rapidjson::SizeType domSize(std::uint64_t count) {
        if (count >= std::numeric_limits<rapidjson::SizeType>::max()) throw std::bad_alloc();
        return static_cast<rapidjson::SizeType>(count);
    }

    Tag takeTag() {
        if (left() == 0) throw std::length_error(binary_error::noType);
        const auto tag = static_cast<unsigned char>(*m_next++);
        if (tag >= json::tagCount) throw std::invalid_argument(binary_error::unknownType);
        return static_cast<Tag>(tag);
    }
    template <class Number>
    Number take() {
        if (left() < sizeof(Number)) throw std::length_error(binary_error::shortNumber);
        Number number;
        std::memcpy(&number, m_next, sizeof number);
        m_next += sizeof number;
        return number;
    }
    std::size_t left() const { return static_cast<std::size_t>(m_end - m_next); }

    const char* m_begin;
    const char* m_next;
    const char* m_end;
    JsonDocument m_document;     // gathers children and makes containers of exactly their number
    std::vector<Level> m_levels; // the open containers
};

void JsonBinaryIOImpl::encode(const JsonValue& value, std::string& out) {
    json::encode(out, [&value](json::ByteSink& sink) { write(value, sink); });
}

void JsonBinaryIOImpl::write(const JsonValue& value, json::ByteSink& sink) {
    Writer writer(sink);
    json::walk(value, writer);
}

std::size_t JsonBinaryIOImpl::decode(const char* data, std::size_t size, JsonValue& value,
                                     JsonAllocator& alloc) {
    return Reader(data, size, alloc).read(value);
}

} // namespace zeq
