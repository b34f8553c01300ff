// One walk along the shapes of the forms, not recursive: documents may be nested as deeply as they like.
#include "inspection/linter.h"

#include <algorithm>
#include <charconv>
#include <deque>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <typeindex>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "mp/exception.h"
#include "mp/shared_buffer.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq_api/codec/base64.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/codec/compressor.h"

namespace zeq::inspection {

namespace {

using json::ChoiceShape;
using json::FormInfo;
using json::MemberShape;
using json::ObjectShape;
using json::Shape;

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

std::wstring_view keyOf(const JsonValue::Member& member) {
    return {member.name.GetString(), member.name.GetStringLength()};
}

std::wstring wide(const JsonValue& string) { return {string.GetString(), string.GetStringLength()}; }

std::string inQuotes(std::wstring_view text) {
    constexpr std::size_t most = 60;
    const std::string shown = text::printable(text.substr(0, most));
    return '\'' + shown + (text.size() > most ? "...'" : "'");
}

std::string numberText(const JsonValue& number) {
    if (number.IsInt64()) return std::to_string(number.GetInt64());
    if (number.IsUint64()) return std::to_string(number.GetUint64());
    const std::string shown = text::number(number.GetDouble());
    return shown.find_first_of(".en") == shown.npos ? shown + ".0" : shown;
}

/// What stands there, as messages call it.
std::string described(const JsonValue& value) {
    switch (value.GetType()) {
    case rapidjson::kNullType:
        return "null";
    case rapidjson::kFalseType:
        return "the boolean false";
    case rapidjson::kTrueType:
        return "the boolean true";
    case rapidjson::kObjectType:
        return "an object";
    case rapidjson::kArrayType:
        return "an array";
    case rapidjson::kStringType:
        return "the string " + inQuotes(wide(value));
    case rapidjson::kNumberType:
        break;
    }
    return (value.IsDouble() ? "the floating-point number " : "the integer ") + numberText(value);
}

std::vector<std::string> namesIn(const EnumTable& table) {
    std::vector<std::string> names;
    for (const EnumEntry& entry : table.entries()) names.push_back(text::printable(entry.name));
    return names;
}

std::string token(std::wstring_view key) {
    std::wstring escaped;
    for (const wchar_t unit : key)
        if (unit == L'~')
            escaped += L"~0";
        else if (unit == L'/')
            escaped += L"~1";
        else
            escaped += unit;
    return text::validUtf8(escaped);
}

/// A member or an element within its parent; neither for the document itself.
struct Step {
    std::wstring_view key{};
    std::optional<std::size_t> index{};
    bool isRoot = false;

    std::string text() const {
        return isRoot ? std::string() : '/' + (index ? std::to_string(*index) : token(key));
    }
};

/// An object or an array that is being looked into.
struct Frame {
    const JsonValue* value;
    const Shape* shape; ///< an ObjectShape, an ArrayShape or a MapShape
    const std::string* className;
    Step step;
    rapidjson::SizeType next = 0; ///< the member or element to be visited next
    std::vector<bool> seen{};     ///< the members of an ObjectShape
};

/// A place of the document. Its pointer is put together only when something is found there: documents may be
/// nested too deeply for one to be kept at each level.
struct Path {
    const std::deque<Frame>& parents;
    Step step{};

    std::string text() const {
        std::string pointer;
        for (const Frame& frame : parents) pointer += frame.step.text();
        return pointer + step.text();
    }
};

/// A class with its shape.
struct KnownClass {
    std::string name;
    Shape shape;
};

class Linter {
public:
    Linter(const Report& report, const OpenBuffer& openBuffer) : m_report(report), m_openBuffer(openBuffer) {}

    void check(const JsonValue& document, const FormInfo& form);

private:
    const KnownClass* knownClass(const std::type_info& type);

    void visit(const JsonValue& value, const Shape& shape, const std::string& className,
               const JsonValue& siblings, const Path& path);
    void enter(const JsonValue& value, const Shape& shape, const std::string& className, const Step& step);
    void visitNext(Frame& place);
    void visitMember(Frame& place, const JsonValue::Member& member);

    void checkInteger(const JsonValue& value, const json::IntegerShape& range, const Path& path);
    void checkReal(const JsonValue& value, const Path& path);
    void checkString(const JsonValue& value, const json::StringShape& shape, const Path& path);
    void checkName(const JsonValue& value, const json::NameShape& shape, const Path& path);
    void checkKey(const JsonValue::Member& member, const EnumTable& names, const Path& path);
    void checkBulk(const JsonValue& value, const json::BulkShape& bulk, const std::string& className,
                   const Path& path);
    void checkRequired(const Frame& place, const ObjectShape& object);
    void checkBuffer(const JsonValue& value, const json::BufferShape& shape, const Path& path);
    void visitChoice(const JsonValue& value, const ChoiceShape& choice, const std::string& className,
                     const JsonValue& siblings, const Path& path);

    /// The pointer of the object or array that is being looked into.
    std::string here() const { return Path{m_frames, {.isRoot = true}}.text(); }
    void mistyped(const std::string& expected, const JsonValue& value, const Path& path);
    void report(Severity severity, std::string pointer, std::string text, const std::string& word = {},
                std::vector<std::string> allowed = {});

    const Report& m_report;
    const OpenBuffer& m_openBuffer;
    std::unordered_map<std::type_index, KnownClass> m_classes;
    std::deque<Frame> m_frames; ///< a deque because visiting pushes
};

const KnownClass* Linter::knownClass(const std::type_info& type) {
    const auto known = m_classes.find(type);
    if (known != m_classes.end()) return &known->second;
    const FormInfo* form = json::findForm(type);
    return form ? &m_classes.emplace(type, KnownClass{form->className(), form->shape()}).first->second
                : nullptr;
}

void Linter::check(const JsonValue& document, const FormInfo& form) {
    const KnownClass& root = *knownClass(*form.type);
    visit(document, root.shape, root.name, document, {m_frames, {.isRoot = true}});
    while (!m_frames.empty()) {
        Frame& place = m_frames.back();
        const auto size = place.value->IsArray() ? place.value->Size() : place.value->MemberCount();
        if (place.next == size)
            m_frames.pop_back();
        else
            visitNext(place);
    }
}

void Linter::visit(const JsonValue& value, const Shape& shape, const std::string& className,
                   const JsonValue& siblings, const Path& path) {
    if (value.IsNull() && shape.mayBeNull) return;
    const auto enterIf = [&](bool isOfType, const char* expected) {
        if (isOfType)
            enter(value, shape, className, path.step);
        else
            mistyped(expected, value, path);
    };
    std::visit(
        Overloaded{[](const json::AnyShape&) {},
                   [&](const json::BooleanShape&) {
                       if (!value.IsBool()) mistyped("a boolean", value, path);
                   },
                   [&](const json::IntegerShape& range) { checkInteger(value, range, path); },
                   [&](const json::RealShape&) { checkReal(value, path); },
                   [&](const json::StringShape& string) { checkString(value, string, path); },
                   [&](const json::NameShape& name) { checkName(value, name, path); },
                   [&](const json::ArrayShape&) { enterIf(value.IsArray(), "an array"); },
                   [&](const json::MapShape&) { enterIf(value.IsObject(), "an object"); },
                   [&](const json::BulkShape& bulk) { checkBulk(value, bulk, className, path); },
                   [&](const ObjectShape&) { enterIf(value.IsObject(), "an object"); },
                   [&](const json::ClassShape& named) {
                       if (const KnownClass* known = knownClass(*named.type))
                           visit(value, known->shape, known->name, siblings, path);
                   },
                   [&](const json::BufferShape& buffer) { checkBuffer(value, buffer, path); },
                   [&](const ChoiceShape& choice) { visitChoice(value, choice, className, siblings, path); }},
        shape.is);
}

void Linter::enter(const JsonValue& value, const Shape& shape, const std::string& className,
                   const Step& step) {
    Frame& place = m_frames.emplace_back(Frame{&value, &shape, &className, step});
    if (const auto* object = std::get_if<ObjectShape>(&shape.is)) {
        place.seen.resize(object->members.size());
        checkRequired(place, *object);
    } else if (const auto* array = std::get_if<json::ArrayShape>(&shape.is)) {
        if (array->size && value.Size() != *array->size)
            report(Severity::error, here(),
                   "should have " + std::to_string(*array->size) + " elements, but has " +
                       std::to_string(value.Size()));
    } else {
        std::unordered_set<std::wstring_view> names;
        for (const auto& member : value.GetObject())
            if (!names.insert(keyOf(member)).second)
                report(Severity::warning, Path{m_frames, {keyOf(member)}}.text(),
                       "the member appears again; only the last one is read");
    }
}

void Linter::visitNext(Frame& place) {
    const JsonValue& value = *place.value;
    const rapidjson::SizeType i = place.next++;
    if (const auto* array = std::get_if<json::ArrayShape>(&place.shape->is))
        return visit(value[i], *array->element, *place.className, value, {m_frames, {.index = i}});
    const JsonValue::Member& member = value.MemberBegin()[i];
    const auto* map = std::get_if<json::MapShape>(&place.shape->is);
    if (!map) return visitMember(place, member);
    const Path path{m_frames, {keyOf(member)}};
    if (map->names) checkKey(member, *map->names, path);
    visit(member.value, *map->value, *place.className, value, path);
}

void Linter::visitMember(Frame& place, const JsonValue::Member& member) {
    const auto& members = std::get<ObjectShape>(place.shape->is).members;
    const std::wstring_view key = keyOf(member);
    const Path path{m_frames, {key}};
    const auto known = std::ranges::find(members, key, &MemberShape::key);
    if (known == members.end()) {
        std::vector<std::string> names;
        names.reserve(members.size());
        for (const MemberShape& other : members) names.push_back(text::printable(other.key));
        return report(Severity::warning, path.text(), *place.className + " has no member " + inQuotes(key),
                      text::printable(key), std::move(names));
    }
    const auto index = static_cast<std::size_t>(known - members.begin());
    if (place.seen[index])
        return report(Severity::warning, path.text(), "the member appears again; only the first one is read");
    place.seen[index] = true;
    if (!known->isRead)
        report(Severity::note, path.text(), *place.className + " writes this member and never reads it");
    visit(member.value, known->shape, *place.className, *place.value, path);
}

void Linter::checkInteger(const JsonValue& value, const json::IntegerShape& range, const Path& path) {
    const std::string bounds = std::to_string(range.least) + " to " + std::to_string(range.most);
    if (!value.IsInt64() && !value.IsUint64()) return mistyped("an integer from " + bounds, value, path);
    const bool isInRange = value.IsInt64() ? value.GetInt64() >= range.least &&
                                                 (value.GetInt64() < 0 || value.GetUint64() <= range.most)
                                           : value.GetUint64() <= range.most;
    if (isInRange) return;
    const std::string outside = numberText(value) + " is out of the range " + bounds;
    // What wraps is an unsigned number of 32 bits of which the low ones count.
    if (range.wraps && value.IsUint())
        report(Severity::error, path.text(),
               outside + "; it is read as " + std::to_string(value.GetUint() & range.most));
    else
        report(Severity::error, path.text(), outside + "; it is not read");
}

void Linter::checkReal(const JsonValue& value, const Path& path) {
    if (value.IsDouble()) return;
    if (!value.IsNumber()) return mistyped("a floating-point number", value, path);
    report(Severity::error, path.text(),
           "should be a floating-point number such as " + numberText(value) +
               ".0, but is the integer literal " + numberText(value) + "; it is not read");
}

void Linter::checkString(const JsonValue& value, const json::StringShape& shape, const Path& path) {
    if (!value.IsString()) return mistyped("a string", value, path);
    if (shape.length && value.GetStringLength() != *shape.length)
        report(Severity::error, path.text(),
               "should be a string of " + text::counted(*shape.length, "character", "characters") +
                   ", but has " + std::to_string(value.GetStringLength()));
    const std::wstring text = wide(value);
    if (shape.registered.empty() || std::ranges::find(shape.registered, text) != shape.registered.end())
        return;
    std::vector<std::string> names;
    for (const std::wstring& name : shape.registered) names.push_back(text::printable(name));
    report(Severity::error, path.text(), "no class is registered by the name " + inQuotes(text),
           text::printable(text), std::move(names));
}

void Linter::checkName(const JsonValue& value, const json::NameShape& shape, const Path& path) {
    if (!value.IsString())
        return mistyped(std::string("a string, one of the names of ") + shape.names->enumeration(), value,
                        path);
    const std::wstring name = wide(value);
    if (shape.names->hasName(name)) return;
    report(Severity::error, path.text(),
           inQuotes(name) + " is no name of " + shape.names->enumeration() + "; it is read as " +
               inQuotes(shape.names->nameOf(shape.valueOf(name))),
           text::printable(name), namesIn(*shape.names));
}

void Linter::checkKey(const JsonValue::Member& member, const EnumTable& names, const Path& path) {
    checkName(member.name, {&names}, path);
}

void Linter::checkBulk(const JsonValue& value, const json::BulkShape& bulk, const std::string& className,
                       const Path& path) {
    if (value.IsArray()) return enter(value, *bulk.array, className, path.step);
    if (!value.IsString()) return mistyped("Base64 text or an array", value, path);
    const std::wstring text = wide(value);
    std::vector<char> bytes(Base64::decodedSize(text.size()) + 2);
    const auto [size, read] = Base64::decodeWide(bytes.data(), text.data(), text.size());
    if (text.find_first_not_of(L'=', read) != text.npos)
        report(Severity::error, path.text(),
               "the character at " + std::to_string(read) + " is not of Base64; what follows is not read");
    else if (size % 4 != 0)
        report(Severity::error, path.text(),
               "should encode numbers of 4 bytes, but encodes " + std::to_string(size) +
                   " bytes; the last ones are not read");
}

/// The alternative whose conditions the members of `object` fulfil; null when there is none.
const json::Alternative* choose(const ChoiceShape& choice, const JsonValue& object) {
    const auto holds = [&object](const json::Condition& condition) {
        const JsonValue* value = json::findMember(object, condition.key);
        if (!value) return false;
        if (const bool* boolean = std::get_if<bool>(&condition.value))
            return value->IsBool() && value->GetBool() == *boolean;
        if (!value->IsString()) return false;
        const auto& expected = std::get<std::wstring>(condition.value);
        return condition.names ? condition.names->valueOf(wide(*value)) == condition.names->valueOf(expected)
                               : wide(*value) == expected;
    };
    const auto found = std::ranges::find_if(choice.alternatives, [&](const json::Alternative& alternative) {
        return std::ranges::all_of(alternative.conditions, holds);
    });
    return found == choice.alternatives.end() ? nullptr : &*found;
}

/// "'command' is 'ping'", for the members that the choice asks for.
std::string answers(const ChoiceShape& choice, const JsonValue& object) {
    std::string text;
    for (const json::Condition& condition : choice.alternatives.back().conditions) { // the most general
        const JsonValue* name = findString(object, condition.key);
        text += (text.empty() ? "" : " and ") + inQuotes(condition.key) +
                (name ? " is " + inQuotes(wide(*name)) : std::string(" is missing"));
    }
    return text;
}

void Linter::visitChoice(const JsonValue& value, const ChoiceShape& choice, const std::string& className,
                         const JsonValue& siblings, const Path& path) {
    const bool asksItself = choice.asked == ChoiceShape::Asked::itself;
    if (asksItself && !value.IsObject()) return mistyped("an object", value, path);
    const JsonValue& asked = asksItself ? value : siblings;
    if (const json::Alternative* chosen = choose(choice, asked))
        return visit(value, chosen->shape, className, siblings, path);
    if (choice.alternatives.empty()) return;
    if (!asksItself) {
        // A name that is not registered has been reported where it stands.
        if (!choice.alternatives.front().conditions.front().names) return;
        return report(Severity::warning, path.text(), "is not read when " + answers(choice, asked));
    }
    std::vector<std::string> allowed;
    for (const json::Alternative& alternative : choice.alternatives) {
        std::string& text = allowed.emplace_back();
        for (const json::Condition& condition : alternative.conditions)
            text += (text.empty() ? "" : " ") + text::printable(std::get<std::wstring>(condition.value));
    }
    report(Severity::error, path.text(),
           "no class is registered for an object whose " + answers(choice, asked), {}, std::move(allowed));
}

void Linter::checkRequired(const Frame& place, const ObjectShape& object) {
    for (const MemberShape& member : object.members) {
        if (!member.isRequired || json::findMember(*place.value, member.key)) continue;
        const auto* choice = std::get_if<ChoiceShape>(&member.shape.is);
        if (choice && !choose(*choice, *place.value)) continue;
        report(Severity::error, here(),
               "the member " + inQuotes(member.key) + " is missing; without it this " + *place.className +
                   " is not read");
    }
}

void Linter::checkBuffer(const JsonValue& value, const json::BufferShape& shape, const Path& path) {
    if (!value.IsString()) return mistyped("the name of a shared buffer", value, path);
    const std::wstring name = wide(value);
    const auto refuse = [&](const std::string& reason) {
        report(Severity::error, path.text(),
               "the shared buffer " + inQuotes(name) + " cannot be read: " + reason);
    };
    JsonDocument content;
    try {
        m_openBuffer(name, content);
    } catch (const mp::Exception& error) {
        return refuse(text::printable(error.message()));
    } catch (const std::exception& error) {
        return refuse(text::printable(error.what()));
    }
    if (const FormInfo* form = json::findForm(*shape.type)) {
        const Report inBuffer = [&](const Finding& finding) {
            Finding placed = finding;
            placed.buffer = name;
            m_report(placed);
        };
        lint(content, *form, inBuffer, m_openBuffer);
    }
}

void Linter::mistyped(const std::string& expected, const JsonValue& value, const Path& path) {
    report(Severity::error, path.text(),
           "should be " + expected + ", but is " + described(value) + "; it is not read");
}

void Linter::report(Severity severity, std::string pointer, std::string text, const std::string& word,
                    std::vector<std::string> allowed) {
    const std::string nearest = word.empty() ? word : text::nearest(word, allowed);
    m_report({severity, {}, std::move(pointer), std::move(text), nearest, std::move(allowed)});
}

} // namespace

const char* nameOf(Severity severity) {
    switch (severity) {
    case Severity::error:
        return "error";
    case Severity::warning:
        return "warning";
    case Severity::note:
        break;
    }
    return "note";
}

void openSharedBuffer(const std::wstring& name, JsonDocument& content) {
    // Opening a buffer makes it, and there must be none afterwards that was not there before.
    const std::string path = mp::sharedDirectory() + '/' + transport::toUtf8(name);
    if (std::error_code error; !std::filesystem::is_regular_file(path, error))
        throw std::runtime_error("there is none of that name");
    std::vector<char> bytes;
    mp::SharedBuffer<char>(name, false).get(bytes);
    Compressor::makePlain(bytes);
    JsonBinaryIO::decode(bytes.data(), bytes.size(), content, content.GetAllocator());
}

void lint(const JsonValue& document, const json::FormInfo& form, const Report& report,
          const OpenBuffer& openBuffer) {
    Linter(report, openBuffer).check(document, form);
}

std::string fullText(const Finding& finding) {
    constexpr std::size_t mostNames = 40;
    std::string text = finding.text;
    if (!finding.nearest.empty()) text += "; did you mean '" + finding.nearest + "'?";
    if (finding.allowed.empty()) return text;
    text += finding.nearest.empty() ? "; there are " : " There are ";
    for (std::size_t i = 0; i < std::min(finding.allowed.size(), mostNames); ++i)
        text += (i == 0 ? "" : ", ") + finding.allowed[i];
    if (finding.allowed.size() > mostNames)
        text += " and " + std::to_string(finding.allowed.size() - mostNames) + " more";
    return text;
}

} // namespace zeq::inspection
