// The pipelines that are compared.
#include "pipelines.h"

#include <sstream>
#include <stdexcept>
#include <vector>

#include <zlib.h>

#include "mp/shared_buffer.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/json/binary_format.h"
#include "zeq_api/zeq_api.h"

namespace zeq::bench {

namespace {

using json::Tag;

std::wstring publish(const char* data, std::size_t size) {
    std::wstring name = IExchangeObject::generateUUID();
    mp::SharedBuffer<char>(name, false).setBuffer(data, size);
    return name;
}

std::vector<char> take(const std::wstring& name) {
    std::vector<char> bytes;
    mp::SharedBuffer<char>(name, true).get(bytes);
    return bytes;
}

std::string imageOf(const IExchangeObject& object) {
    JsonDocument document;
    object.writeObject(document, document.GetAllocator());
    std::string bytes;
    JsonBinaryIO::encode(document, bytes);
    return bytes;
}

class Copying : public Pipeline {
public:
    explicit Copying(const IExchangeObject& object) : m_image(imageOf(object)) {}
    const char* name() const override { return "copy"; }
    std::wstring write(const IExchangeObject&) override { return publish(m_image.data(), m_image.size()); }
    std::shared_ptr<IExchangeObject> read(const std::wstring& written, const IExchangeObject&) override {
        if (take(written).size() != m_image.size()) throw std::runtime_error("the copy is not whole");
        return nullptr;
    }

private:
    std::string m_image;
};

template <class T>
void put(std::ostream& out, const T& value) {
    out.write(reinterpret_cast<const char*>(&value), sizeof value);
}

void writeValue(std::ostream& out, const JsonValue& value);

template <class Fill>
void writeContainer(std::ostream& out, Tag tag, Fill fill) {
    put(out, tag);
    const auto place = out.tellp();
    put(out, std::uint64_t{0});
    fill();
    const auto end = out.tellp();
    out.seekp(place);
    put(out, static_cast<std::uint64_t>(end - place) - 8);
    out.seekp(end);
}

void writeNumber(std::ostream& out, const JsonValue& value) {
    const auto number = [&out](Tag tag, auto it) {
        put(out, tag);
        put(out, it);
    };
    if (value.IsInt()) return number(Tag::int32, value.GetInt());
    if (value.IsUint()) return number(Tag::uint32, value.GetUint());
    if (value.IsInt64()) return number(Tag::int64, value.GetInt64());
    if (value.IsUint64()) return number(Tag::uint64, value.GetUint64());
    number(Tag::real, value.GetDouble());
}

void writeValue(std::ostream& out, const JsonValue& value) {
    switch (value.GetType()) {
    case rapidjson::kNullType:
        return put(out, Tag::null);
    case rapidjson::kFalseType:
        return put(out, Tag::boolFalse);
    case rapidjson::kTrueType:
        return put(out, Tag::boolTrue);
    case rapidjson::kObjectType:
        return writeContainer(out, Tag::object, [&] {
            for (const auto& member : value.GetObject()) {
                writeValue(out, member.name);
                writeValue(out, member.value);
            }
        });
    case rapidjson::kArrayType:
        return writeContainer(out, Tag::array, [&] {
            for (const JsonValue& element : value.GetArray()) writeValue(out, element);
        });
    case rapidjson::kStringType:
        put(out, Tag::string);
        put(out, std::uint64_t{value.GetStringLength()});
        out.write(reinterpret_cast<const char*>(value.GetString()),
                  static_cast<std::streamsize>(value.GetStringLength() * sizeof(wchar_t)));
        return;
    case rapidjson::kNumberType:
        return writeNumber(out, value);
    }
}

template <class T>
T get(std::istream& in) {
    T value;
    if (in.readsome(reinterpret_cast<char*>(&value), sizeof value) != sizeof value)
        throw std::runtime_error("too short");
    return value;
}

std::wstring readText(std::istream& in) {
    std::wstring text(get<std::uint64_t>(in), L'\0');
    in.readsome(reinterpret_cast<char*>(text.data()),
                static_cast<std::streamsize>(text.size() * sizeof(wchar_t)));
    return text;
}

JsonValue readValue(std::istream& in, JsonAllocator& allocator) {
    const auto string = [&] {
        const std::wstring text = readText(in);
        return JsonValue(text.data(), static_cast<rapidjson::SizeType>(text.size()), allocator);
    };
    const Tag tag = get<Tag>(in);
    switch (tag) {
    case Tag::null:
        return {};
    case Tag::boolFalse:
    case Tag::boolTrue:
        return JsonValue(tag == Tag::boolTrue);
    case Tag::object:
    case Tag::array: {
        JsonValue made(tag == Tag::object ? rapidjson::kObjectType : rapidjson::kArrayType);
        const auto size = static_cast<std::streamoff>(get<std::uint64_t>(in));
        const auto start = in.tellg();
        while (in.tellg() - start < size) {
            if (tag == Tag::array) {
                made.PushBack(readValue(in, allocator), allocator);
            } else {
                JsonValue name = readValue(in, allocator);
                JsonValue value = readValue(in, allocator);
                made.AddMember(name, value, allocator);
            }
        }
        return made;
    }
    case Tag::string:
        return string();
    case Tag::int32:
        return JsonValue(get<int>(in));
    case Tag::uint32:
        return JsonValue(get<unsigned>(in));
    case Tag::int64:
        return JsonValue(std::int64_t{get<std::int64_t>(in)});
    case Tag::uint64:
        return JsonValue(std::uint64_t{get<std::uint64_t>(in)});
    case Tag::real:
        return JsonValue(get<double>(in));
    }
    throw std::runtime_error("unknown type");
}

std::vector<char> deflated(const std::string& bytes) {
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 31, 8, Z_DEFAULT_STRATEGY);
    std::vector<char> out;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    do {
        const std::size_t size = out.size();
        out.resize(size + bytes.size() / 2 + 1024);
        stream.next_out = reinterpret_cast<Bytef*>(out.data() + size);
        stream.avail_out = static_cast<uInt>(out.size() - size);
        deflate(&stream, Z_FINISH);
    } while (stream.avail_out == 0);
    out.resize(out.size() - stream.avail_out);
    deflateEnd(&stream);
    return out;
}

std::string inflated(const std::vector<char>& bytes) {
    z_stream stream{};
    inflateInit2(&stream, 47);
    std::string out;
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    do {
        const std::size_t size = out.size();
        out.resize(size + 2 * bytes.size());
        stream.next_out = reinterpret_cast<Bytef*>(out.data() + size);
        stream.avail_out = static_cast<uInt>(out.size() - size);
        inflate(&stream, Z_FINISH);
    } while (stream.avail_out == 0);
    out.resize(out.size() - stream.avail_out);
    inflateEnd(&stream);
    return out;
}

/// Reads the sections of mechanical data too, which readObject() leaves out.
void readWithSections(IExchangeObject& object, const JsonValue& document) {
    object.readObject(document);
    if (auto* root = dynamic_cast<ExcRootMechanicalData*>(&object)) root->setPMIData(readPMIData(document));
}

class Straightforward : public Pipeline {
public:
    const char* name() const override { return "straightforward"; }
    std::wstring write(const IExchangeObject& object) override {
        JsonDocument document;
        object.writeObject(document, document.GetAllocator());
        std::stringstream stream;
        writeValue(stream, document);
        const std::vector<char> packed = deflated(stream.str());
        return publish(packed.data(), packed.size());
    }
    std::shared_ptr<IExchangeObject> read(const std::wstring& written, const IExchangeObject& like) override {
        std::istringstream stream(inflated(take(written)));
        JsonDocument document;
        static_cast<JsonValue&>(document) = readValue(stream, document.GetAllocator());
        auto object = like.clone();
        readWithSections(*object, document);
        return object;
    }
};

class Library : public Pipeline {
public:
    const char* name() const override { return "library"; }
    std::wstring write(const IExchangeObject& object) override {
        ExchangeObjectWrapper wrapper;
        wrapper.set({std::shared_ptr<void>(), const_cast<IExchangeObject*>(&object)});
        std::wostringstream stream;
        wrapper.writeObject(stream);
        return stream.str();
    }
    std::shared_ptr<IExchangeObject> read(const std::wstring& written, const IExchangeObject&) override {
        std::wistringstream stream(written);
        ExchangeObjectWrapper wrapper;
        wrapper.setDelayedLoading(true);
        wrapper.readObject(stream);
        loadWithSections(*wrapper.get());
        return wrapper.get();
    }
};

} // namespace

std::unique_ptr<Pipeline> copying(const IExchangeObject& object) { return std::make_unique<Copying>(object); }
std::unique_ptr<Pipeline> straightforward() { return std::make_unique<Straightforward>(); }
std::unique_ptr<Pipeline> library() { return std::make_unique<Library>(); }

std::size_t imageSize(const IExchangeObject& object) { return imageOf(object).size(); }

} // namespace zeq::bench
