// One walk along the shapes of the forms. A class refers to others by their names, so that the walk is never
// deeper than what one form says.
#include "inspection/schema.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace zeq::inspection {

namespace {

using json::Alternative;
using json::ChoiceShape;
using json::Condition;
using json::FormInfo;
using json::MemberShape;
using json::Shape;

/// The names of classes and enumerations are ASCII.
std::wstring wide(const std::string& name) { return {name.begin(), name.end()}; }

/// The reference to a definition. In a URI, the angle brackets of a class template's arguments are escaped.
std::wstring pointerTo(const std::wstring& definition) {
    std::wstring pointer = L"#/$defs/";
    for (const wchar_t unit : definition)
        if (unit == L'<')
            pointer += L"%3C";
        else if (unit == L'>')
            pointer += L"%3E";
        else
            pointer += unit;
    return pointer;
}

/// Adds one element to a list for people.
void append(std::wstring& list, std::wstring_view element) {
    (list += list.empty() ? L"" : L", ") += element;
}

/// What every name that the table does not know is read as.
int valueOfUnknown(const EnumTable& table) {
    const auto name = [](const EnumEntry& entry) { return std::wstring_view(entry.name); };
    return table.valueOf(std::ranges::min(table.entries(), {}, name).name);
}

/// The names that fulfil the condition, in the order of the table.
std::vector<std::wstring_view> namesThatFulfil(const Condition& condition) {
    const auto& expected = std::get<std::wstring>(condition.value);
    if (!condition.names) return {expected};
    std::vector<std::wstring_view> names;
    for (const EnumEntry& entry : condition.names->names->entries())
        if (condition.names->valueOf(entry.name) == condition.names->valueOf(expected) &&
            std::ranges::find(names, entry.name) == names.end())
            names.emplace_back(entry.name);
    return names;
}

/// Whether an object without the member fulfils the condition.
bool holdsWhenMissing(const Condition& condition) {
    return condition.names && condition.names->unknownIsZero &&
           condition.names->valueOf(std::get<std::wstring>(condition.value)) == 0;
}

bool areSame(const Condition& a, const Condition& b) {
    if (a.key != b.key || a.value.index() != b.value.index()) return false;
    if (std::holds_alternative<bool>(a.value)) return a.value == b.value;
    return namesThatFulfil(a) == namesThatFulfil(b);
}

/// Whether an object that fulfils one never fulfils the other.
bool areContrary(const std::vector<Condition>& some, const std::vector<Condition>& others) {
    return std::ranges::any_of(some, [&others](const Condition& one) {
        return std::ranges::any_of(
            others, [&one](const Condition& other) { return one.key == other.key && !areSame(one, other); });
    });
}

class SchemaMaker {
public:
    SchemaMaker() : m_allocator(m_document.GetAllocator()) {}

    JsonDocument make(const FormInfo* form);

private:
    JsonValue text(std::wstring_view value) {
        return {value.data(), static_cast<rapidjson::SizeType>(value.size()), m_allocator};
    }
    void add(JsonValue& object, std::wstring_view key, JsonValue value) {
        object.AddMember(text(key), value, m_allocator);
    }
    void push(JsonValue& array, JsonValue element) { array.PushBack(element, m_allocator); }
    /// An object with one member.
    JsonValue with(std::wstring_view key, JsonValue value) {
        JsonValue object(rapidjson::kObjectType);
        add(object, key, std::move(value));
        return object;
    }
    JsonValue typed(std::wstring_view type) { return with(L"type", text(type)); }
    template <class Texts>
    JsonValue array(const Texts& texts) {
        JsonValue array(rapidjson::kArrayType);
        for (const auto& element : texts) push(array, text(element));
        return array;
    }
    void comment(JsonValue& schema, const std::wstring& sentences) {
        add(schema, L"$comment", text(sentences));
    }

    JsonValue reference(const std::wstring& name) { return with(L"$ref", text(pointerTo(name))); }
    JsonValue reference(const FormInfo& form);
    JsonValue reference(const EnumTable& table);

    JsonValue schemaOf(const Shape& shape);
    JsonValue schemaOf(const MemberShape& member);
    JsonValue schemaOf(const json::AnyShape&) { return JsonValue(rapidjson::kObjectType); }
    JsonValue schemaOf(const json::BooleanShape&) { return typed(L"boolean"); }
    JsonValue schemaOf(const json::IntegerShape& range);
    JsonValue schemaOf(const json::RealShape&);
    JsonValue schemaOf(const json::StringShape& string);
    JsonValue schemaOf(const json::NameShape& name);
    JsonValue schemaOf(const json::ArrayShape& array);
    JsonValue schemaOf(const json::MapShape& map);
    JsonValue schemaOf(const json::BulkShape& bulk);
    JsonValue schemaOf(const json::ObjectShape& object);
    JsonValue schemaOf(const json::ClassShape& named);
    JsonValue schemaOf(const json::BufferShape& buffer);
    JsonValue schemaOf(const ChoiceShape& choice);

    JsonValue fulfilling(const std::vector<Condition>& conditions);
    void addConsequences(JsonValue& allOf, const MemberShape& member, const ChoiceShape& choice);

    JsonDocument m_document;
    JsonAllocator& m_allocator;
    std::map<std::wstring, JsonValue> m_definitions;
    std::vector<const FormInfo*> m_pending; ///< classes that are referred to, and not defined yet
};

JsonDocument SchemaMaker::make(const FormInfo* form) {
    m_document.SetObject();
    add(m_document, L"$schema", text(L"https://json-schema.org/draft/2020-12/schema"));
    add(m_document, L"title",
        text(form ? wide(form->className()) : L"The documents between a host and its translator"));
    comment(m_document, L"Stricter than the library, which skips members that it does not know and values "
                        L"that it does not take.");
    if (form) {
        m_document.AddMember(L"$ref", reference(*form)[L"$ref"], m_allocator);
    } else {
        JsonValue anyOf(rapidjson::kArrayType);
        for (const FormInfo* each : json::allForms()) {
            if (!each->make) continue; // no document is of an abstract class
            JsonValue toThis = reference(*each);
            if (each->isWholeDocument) push(anyOf, std::move(toThis));
        }
        add(m_document, L"anyOf", std::move(anyOf));
    }
    while (!m_pending.empty()) {
        const FormInfo& next = *m_pending.back();
        m_pending.pop_back();
        m_definitions[wide(next.className())] = schemaOf(next.shape());
    }
    JsonValue definitions(rapidjson::kObjectType);
    for (auto& [name, definition] : m_definitions) add(definitions, name, std::move(definition));
    add(m_document, L"$defs", std::move(definitions));
    return std::move(m_document);
}

JsonValue SchemaMaker::reference(const FormInfo& form) {
    const std::wstring name = wide(form.className());
    if (m_definitions.try_emplace(name).second) m_pending.push_back(&form);
    return reference(name);
}

JsonValue SchemaMaker::reference(const EnumTable& table) {
    const std::wstring enumeration = wide(table.enumeration());
    const auto [definition, isNew] = m_definitions.try_emplace(enumeration);
    if (isNew) {
        std::vector<std::wstring_view> names;
        std::wstring values;
        for (const EnumEntry& entry : table.entries()) {
            if (std::ranges::find(names, entry.name) != names.end()) continue;
            names.emplace_back(entry.name);
            append(values, std::to_wstring(table.valueOf(entry.name)) + L" = " + entry.name);
        }
        definition->second = with(L"enum", array(names));
        comment(definition->second,
                values + L". An unknown name is read as '" + table.nameOf(valueOfUnknown(table)) + L"'.");
    }
    return reference(enumeration);
}

JsonValue SchemaMaker::schemaOf(const Shape& shape) {
    JsonValue schema = std::visit([this](const auto& is) { return schemaOf(is); }, shape.is);
    if (!shape.mayBeNull) return schema;
    JsonValue anyOf(rapidjson::kArrayType);
    push(anyOf, std::move(schema));
    push(anyOf, typed(L"null"));
    return with(L"anyOf", std::move(anyOf));
}

JsonValue SchemaMaker::schemaOf(const MemberShape& member) {
    JsonValue schema = schemaOf(member.shape);
    if (member.isRead) return schema;
    const std::wstring known = findString(schema, L"$comment") ? schema[L"$comment"].GetString() : L"";
    schema.RemoveMember(L"$comment");
    comment(schema, (known.empty() ? known : known + L' ') + L"Written and never read.");
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::IntegerShape& range) {
    JsonValue schema = typed(L"integer");
    add(schema, L"minimum", JsonValue(static_cast<std::int64_t>(range.least)));
    add(schema, L"maximum", JsonValue(static_cast<std::uint64_t>(range.most)));
    if (range.wraps)
        comment(schema,
                L"A larger number of 32 bits is read modulo " + std::to_wstring(range.most + 1) + L'.');
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::RealShape&) {
    JsonValue schema = typed(L"number");
    comment(schema, L"Needs a fraction or an exponent: 1.0 is read, 1 is not.");
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::StringShape& string) {
    JsonValue schema = typed(L"string");
    if (string.length)
        for (const wchar_t* bound : {L"minLength", L"maxLength"})
            add(schema, bound, JsonValue(static_cast<std::uint64_t>(*string.length)));
    if (!string.registered.empty()) add(schema, L"enum", array(string.registered));
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::NameShape& name) {
    JsonValue schema = reference(*name.names);
    if (name.unknownIsZero && valueOfUnknown(*name.names) != 0)
        comment(schema, L"Here an unknown name is read as '" + name.names->nameOf(0) + L"'.");
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::ArrayShape& array) {
    JsonValue schema = typed(L"array");
    add(schema, L"items", schemaOf(*array.element));
    if (array.size)
        for (const wchar_t* bound : {L"minItems", L"maxItems"})
            add(schema, bound, JsonValue(static_cast<std::uint64_t>(*array.size)));
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::MapShape& map) {
    JsonValue schema = typed(L"object");
    if (map.names) add(schema, L"propertyNames", reference(*map.names));
    add(schema, L"additionalProperties", schemaOf(*map.value));
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::BulkShape& bulk) {
    JsonValue text = typed(L"string");
    add(text, L"contentEncoding", this->text(L"base64"));
    comment(text, L"Numbers of 4 bytes, the low one first.");
    JsonValue anyOf(rapidjson::kArrayType);
    push(anyOf, std::move(text));
    push(anyOf, schemaOf(*bulk.array));
    return with(L"anyOf", std::move(anyOf));
}

JsonValue SchemaMaker::schemaOf(const json::ObjectShape& object) {
    JsonValue properties(rapidjson::kObjectType);
    JsonValue allOf(rapidjson::kArrayType);
    std::vector<std::wstring_view> required;
    std::wstring order;
    std::wstring always;
    for (const MemberShape& member : object.members) {
        add(properties, member.key, schemaOf(member));
        append(order, member.key);
        if (member.isAlwaysWritten) append(always, member.key);
        const auto* choice = std::get_if<ChoiceShape>(&member.shape.is);
        if (choice && choice->asked == ChoiceShape::Asked::siblings)
            addConsequences(allOf, member, *choice);
        else if (member.isRequired)
            required.push_back(member.key);
    }
    JsonValue schema = typed(L"object");
    comment(schema, L"Order: " + order +
                        (always.empty()    ? L". None is always written."
                         : always == order ? L". All are always written."
                                           : L". Always written: " + always + L'.'));
    add(schema, L"properties", std::move(properties));
    add(schema, L"additionalProperties", JsonValue(false));
    if (!required.empty()) add(schema, L"required", array(required));
    if (!allOf.Empty()) add(schema, L"allOf", std::move(allOf));
    return schema;
}

JsonValue SchemaMaker::schemaOf(const json::ClassShape& named) {
    const FormInfo* form = json::findForm(*named.type);
    return form ? reference(*form) : schemaOf(json::AnyShape());
}

JsonValue SchemaMaker::schemaOf(const json::BufferShape& buffer) {
    JsonValue schema = typed(L"string");
    const FormInfo* form = json::findForm(*buffer.type);
    comment(schema, L"The name of a shared buffer that holds " +
                        (form ? L"the class " + wide(form->className()) : std::wstring(L"the object")) +
                        L" in the binary form.");
    return schema;
}

/// What the members beside a value choose is said where they stand.
JsonValue SchemaMaker::schemaOf(const ChoiceShape& choice) {
    if (choice.asked == ChoiceShape::Asked::siblings) return schemaOf(json::AnyShape());
    JsonValue anyOf(rapidjson::kArrayType);
    for (const Alternative& alternative : choice.alternatives) {
        JsonValue schema = schemaOf(alternative.shape);
        const JsonValue condition = fulfilling(alternative.conditions);
        for (const auto& member : condition.GetObject())
            schema.AddMember(JsonValue(member.name, m_allocator), JsonValue(member.value, m_allocator),
                             m_allocator);
        push(anyOf, std::move(schema));
    }
    return with(L"anyOf", std::move(anyOf));
}

/// That all conditions hold. A name that the enumeration does not know is refused where it stands.
JsonValue SchemaMaker::fulfilling(const std::vector<Condition>& conditions) {
    JsonValue properties(rapidjson::kObjectType);
    std::vector<std::wstring_view> required;
    for (const Condition& condition : conditions) {
        JsonValue value;
        if (const bool* boolean = std::get_if<bool>(&condition.value)) {
            value = with(L"const", JsonValue(*boolean));
        } else {
            const std::vector<std::wstring_view> names = namesThatFulfil(condition);
            value = names.size() == 1 ? with(L"const", text(names.front())) : with(L"enum", array(names));
        }
        add(properties, condition.key, std::move(value));
        if (!holdsWhenMissing(condition)) required.push_back(condition.key);
    }
    JsonValue schema = with(L"properties", std::move(properties));
    if (!required.empty()) add(schema, L"required", array(required));
    return schema;
}

/// For each alternative, what follows when it is the first of which all conditions hold.
void SchemaMaker::addConsequences(JsonValue& allOf, const MemberShape& member, const ChoiceShape& choice) {
    for (auto chosen = choice.alternatives.begin(); chosen != choice.alternatives.end(); ++chosen) {
        JsonValue earlier(rapidjson::kArrayType);
        for (auto other = choice.alternatives.begin(); other != chosen; ++other) {
            if (areContrary(other->conditions, chosen->conditions)) continue;
            std::vector<Condition> further = other->conditions;
            std::erase_if(further, [&chosen](const Condition& one) {
                return std::ranges::any_of(chosen->conditions,
                                           [&one](const Condition& has) { return areSame(one, has); });
            });
            push(earlier, fulfilling(further));
        }
        JsonValue condition = fulfilling(chosen->conditions);
        if (earlier.Size() == 1)
            add(condition, L"not", std::move(earlier[0]));
        else if (!earlier.Empty())
            add(condition, L"not", with(L"anyOf", std::move(earlier)));
        JsonValue consequence = with(L"properties", with(member.key, schemaOf(chosen->shape)));
        if (member.isRequired) add(consequence, L"required", array(std::vector{member.key}));
        JsonValue rule = with(L"if", std::move(condition));
        add(rule, L"then", std::move(consequence));
        push(allOf, std::move(rule));
    }
}

} // namespace

JsonDocument makeSchema(const json::FormInfo* form) { return SchemaMaker().make(form); }

} // namespace zeq::inspection
