// JSON text through rapidjson's writers and reader, with the spots closed where unusual input would fail
// there.
#include "zeq_api/json/text_io.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <rapidjson/error/en.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>

#include "zeq_api/json/dom_walk.h"

namespace zeq::json {

namespace {

/// The writers' output. It grows as text arrives; rapidjson's own buffer reserves six units for every unit of
/// a string, counted in 32 bits.
struct TextBuffer {
    using Ch = wchar_t;
    void Put(Ch c) { text.push_back(c); }
    void Flush() {}

    std::wstring text;
};

using PlainWriter = rapidjson::Writer<TextBuffer, JsonEncoding, JsonEncoding>;
using PrettyWriter = rapidjson::PrettyWriter<TextBuffer, JsonEncoding, JsonEncoding>;

constexpr const char* cannotWrite = "Cannot write object into json document";

template <class Writer>
class TextVisitor {
public:
    explicit TextVisitor(TextBuffer& out) : m_writer(out) {}

    void onValue(const JsonValue& value) {
        if (!write(value)) throw std::runtime_error(cannotWrite);
    }
    void onName(const JsonValue& name) { m_writer.Key(name.GetString(), name.GetStringLength()); }
    void onEnd(const JsonValue& container) {
        if (container.IsArray())
            m_writer.EndArray();
        else
            m_writer.EndObject();
    }

private:
    bool write(const JsonValue& value) {
        switch (value.GetType()) {
        case rapidjson::kNullType:
            return m_writer.Null();
        case rapidjson::kFalseType:
            return m_writer.Bool(false);
        case rapidjson::kTrueType:
            return m_writer.Bool(true);
        case rapidjson::kObjectType:
            return m_writer.StartObject();
        case rapidjson::kArrayType:
            return m_writer.StartArray();
        case rapidjson::kStringType:
            return m_writer.String(value.GetString(), value.GetStringLength());
        case rapidjson::kNumberType:
            break;
        }
        if (value.IsDouble()) return m_writer.Double(value.GetDouble());
        return value.IsInt64() ? m_writer.Int64(value.GetInt64()) : m_writer.Uint64(value.GetUint64());
    }

    Writer m_writer;
};

template <class Writer>
std::wstring toText(const JsonValue& value) {
    TextBuffer buffer;
    TextVisitor<Writer> visitor(buffer);
    walk(value, visitor);
    return std::move(buffer.text);
}

/// The reader's input: a text that ends with a NUL.
struct TextSource {
    using Ch = wchar_t;
    Ch Peek() const { return *next; }
    Ch Take() { return *next++; }
    std::size_t Tell() const { return static_cast<std::size_t>(next - begin); }
    // The stream concept asks for these; only parsing in place calls them.
    void Put(Ch) {}
    Ch* PutBegin() { return nullptr; }
    std::size_t PutEnd(Ch*) { return 0; }

    explicit TextSource(const std::wstring& text) : begin(text.c_str()), next(begin) {}
    const Ch* begin;
    const Ch* next;
    std::string number; // what readNumber() gathers
};

/// The reader's encoding, of its input as well, so that units are copied unseen. It is UTF16<wchar_t>, but
/// keeps the escape of a low surrogate that stands alone as a unit, where that one stops with an assertion.
struct KeptUnits : JsonEncoding {
    template <class Output>
    static void Encode(Output& out, unsigned codepoint) {
        if (codepoint <= 0xFFFF)
            out.Put(static_cast<Ch>(codepoint));
        else
            JsonEncoding::Encode(out, codepoint);
    }
};

/// Takes the longest text of a JSON number.
/// @return an error, or none
rapidjson::ParseErrorCode takeNumber(TextSource& source, bool& isInteger) {
    std::string& text = source.number;
    text.clear();
    const auto take = [&] { text.push_back(static_cast<char>(source.Take())); };
    const auto takeOneOf = [&](std::wstring_view units) {
        const bool found = units.find(source.Peek()) != units.npos;
        if (found) take();
        return found;
    };
    const auto takeDigits = [&] {
        const std::size_t before = text.size();
        while (source.Peek() >= L'0' && source.Peek() <= L'9') take();
        return text.size() != before;
    };

    takeOneOf(L"-");
    if (!takeOneOf(L"0") && !takeDigits()) return rapidjson::kParseErrorValueInvalid;
    isInteger = true;
    if (takeOneOf(L".")) {
        isInteger = false;
        if (!takeDigits()) return rapidjson::kParseErrorNumberMissFraction;
    }
    if (takeOneOf(L"eE")) {
        isInteger = false;
        takeOneOf(L"+-");
        if (!takeDigits()) return rapidjson::kParseErrorNumberMissExponent;
    }
    return rapidjson::kParseErrorNone;
}

/// Takes a number as a value of the narrowest kind that holds it exactly, else as a double.
rapidjson::ParseErrorCode readNumber(TextSource& source, JsonDocument& document) {
    bool isInteger = false;
    if (const auto error = takeNumber(source, isInteger)) return error;

    const char* const begin = source.number.data();
    const char* const end = begin + source.number.size();
    const auto parse = [&](auto& number) { return std::from_chars(begin, end, number).ec == std::errc(); };
    if (isInteger) {
        if (std::int64_t number = 0; parse(number)) {
            document.Int64(number);
            return rapidjson::kParseErrorNone;
        }
        if (std::uint64_t number = 0; *begin != '-' && parse(number)) {
            document.Uint64(number);
            return rapidjson::kParseErrorNone;
        }
    }
    double number = 0;
    if (!parse(number)) {
        // Out of range. A stream fails for a number that is too large and rounds one that is too small.
        std::istringstream stream(source.number);
        stream.imbue(std::locale::classic());
        if (!(stream >> number)) return rapidjson::kParseErrorNumberTooBig;
    }
    document.Double(number);
    return rapidjson::kParseErrorNone;
}

using TextReader = rapidjson::GenericReader<KeptUnits, KeptUnits>;

std::wstring readAll(std::wistream& stream) {
    constexpr std::size_t block = 1 << 12;
    std::wstring text;
    std::size_t size = 0;
    while (stream) {
        if (text.size() - size < block) text.resize(2 * size + block);
        stream.read(text.data() + size, static_cast<std::streamsize>(text.size() - size));
        size += static_cast<std::size_t>(stream.gcount());
    }
    text.resize(size);
    return text;
}

std::string placeIn(const std::wstring& text, std::size_t offset) {
    const auto place = text.begin() + static_cast<std::ptrdiff_t>(offset);
    const auto line = std::count(text.begin(), place, L'\n') + 1;
    const std::size_t before = offset == 0 ? text.npos : text.rfind(L'\n', offset - 1);
    const std::size_t column = before == text.npos ? offset + 1 : offset - before;
    return "line " + std::to_string(line) + ", character " + std::to_string(column) + ": ";
}

} // namespace

} // namespace zeq::json

namespace rapidjson {

// rapidjson's own function adds the digits of the fraction to the exponent in an int, which may overflow, and
// takes some numbers beyond the range of double for infinity.
template <>
template <>
inline void zeq::json::TextReader::ParseNumber<kParseIterativeFlag>(zeq::json::TextSource& source,
                                                                    zeq::JsonDocument& document) {
    const std::size_t start = source.Tell();
    if (const auto error = zeq::json::readNumber(source, document)) SetParseError(error, start);
}

} // namespace rapidjson

namespace zeq {

void JsonTextIO::write(std::wostream& stream, const JsonDocument& document, int pretty) {
    const std::wstring text =
        pretty ? json::toText<json::PrettyWriter>(document) : json::toText<json::PlainWriter>(document);
    stream.write(text.data(), static_cast<std::streamsize>(text.size())).flush();
    if (!stream) throw std::runtime_error(json::cannotWrite);
}

bool JsonTextIO::read(std::wistream& stream, JsonDocument& document, std::string* problem) {
    const auto refuse = [problem](const std::string& reason) {
        if (problem) *problem = reason;
        return false;
    };
    const std::wstring text = json::readAll(stream);
    if (stream.bad()) return refuse("it cannot be read to its end");
    // rapidjson counts units in 32 bits.
    if (text.size() > std::numeric_limits<rapidjson::SizeType>::max()) return refuse("it is too long");

    rapidjson::ParseResult result;
    std::size_t end = 0;
    const auto parse = [&](JsonDocument& handler) {
        json::TextSource source(text);
        json::TextReader reader;
        result = reader.Parse<rapidjson::kParseIterativeFlag>(source, handler);
        end = source.Tell();
        return !result.IsError() && end == text.size(); // the reader stops at a NUL
    };
    document.Populate(parse);
    if (result.IsError())
        return refuse(json::placeIn(text, result.Offset()) + rapidjson::GetParseError_En(result.Code()));
    return end == text.size() || refuse(json::placeIn(text, end) + "A NUL stands after the document.");
}

} // namespace zeq
