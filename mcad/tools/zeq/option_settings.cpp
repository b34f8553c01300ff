// The options are completed as a document, which is checked like any other and then read by their own class.
#include "zeq/option_settings.h"

#include <algorithm>
#include <charconv>
#include <sstream>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "inspection/linter.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq/failure.h"
#include "zeq/json_file.h"
#include "zeq_api/format_options/common_options.h"
#include "zeq_api/json/codecs.h"
#include "zeq_api/json/text_io.h"

namespace zeq::host {

namespace {

constexpr const wchar_t* groupsKey = L"format_options";
constexpr const wchar_t* operationKey = L"operation_type";
constexpr const wchar_t* formatKey = L"format_type";
/// Keys whose default in the classes is not what a user means who does not mention them.
constexpr const wchar_t* geometryKey = L"import_geometry";
constexpr const wchar_t* displayKeys[] = {L"import_visualization", L"import_root_visualization"};
/// What says it for formats whose groups have none of these keys.
constexpr const wchar_t* tessellationKey = L"visu_brep_tesselation_mode";

using inspection::Finding;

/// The first finding below that place which is more than a note is handed to `refuse`.
template <class Refuse>
void requireClean(const JsonValue& document, const json::FormInfo& form, const std::string& below,
                  Refuse refuse) {
    inspection::lint(document, form, [&](const Finding& finding) {
        if (finding.severity != inspection::Severity::note && finding.pointer.starts_with(below))
            refuse(finding);
    });
}

bool hasMember(const json::FormInfo& form, std::wstring_view key) {
    const json::Shape shape = form.shape();
    return std::ranges::find(std::get<json::ObjectShape>(shape.is).members, key, &json::MemberShape::key) !=
           std::get<json::ObjectShape>(shape.is).members.end();
}

/// The text as a value of that shape. What cannot be one becomes something that the linter refuses.
JsonValue valueOf(const std::string& text, const json::Shape* shape, JsonAllocator& alloc) {
    const std::wstring wide = transport::fromUtf8(text);
    const bool isString = !shape || std::holds_alternative<json::NameShape>(shape->is) ||
                          std::holds_alternative<json::StringShape>(shape->is);
    if (shape && std::holds_alternative<json::RealShape>(shape->is)) {
        double number = 0;
        const char* const end = text.data() + text.size();
        if (std::from_chars(text.data(), end, number).ptr == end && !text.empty()) return JsonValue(number);
    } else if (!isString) {
        JsonDocument parsed(&alloc);
        std::wistringstream stream(wide);
        if (JsonTextIO::read(stream, parsed)) return JsonValue(std::move(static_cast<JsonValue&>(parsed)));
    }
    return {wide.data(), static_cast<rapidjson::SizeType>(wide.size()), alloc};
}

/// The options of one command, as a document.
class OptionsDocument {
public:
    explicit OptionsDocument(const ConvexorOptions& options)
        : m_form(*json::findForm(typeid(options))), m_operation(options.operationType()) {
        options.writeObject(m_document, m_alloc);
    }

    void addGroups(const std::string& path, transport::SignalPipe& signals);
    void set(const std::string& assignment);
    /// Says in each group that can whether geometry and display data are wanted, unless the user has said it.
    /// Where one of them is not, all groups that can are there to say so.
    void askFor(bool geometry, bool display);
    const JsonValue& value() const { return m_document; }

private:
    struct Place {
        JsonValue* object;
        const json::FormInfo* form;
    };

    /// The group of that name, made when it is not there yet.
    Place group(const std::string& name, const std::string& assignment);
    /// The group of that kind; null when it is not there.
    JsonValue* find(EOperationType operation, EFormatType format);
    JsonValue& add(EOperationType operation, EFormatType format);
    JsonValue& groups();
    JsonValue text(const std::wstring& value) {
        return {value.data(), static_cast<rapidjson::SizeType>(value.size()), m_alloc};
    }

    const json::FormInfo& m_form;
    const EOperationType m_operation;
    JsonDocument m_document;
    JsonAllocator& m_alloc = m_document.GetAllocator();
};

void OptionsDocument::addGroups(const std::string& path, transport::SignalPipe& signals) {
    const auto refuse = [&path](const std::string& reason) {
        throw Failure(exit_code::inputOutput, cannot("use the options of", path, reason));
    };
    JsonDocument added(&m_alloc);
    std::string problem;
    if (!readJsonFile(path, signals, added, problem)) refuse(problem);
    if (!added.IsArray()) refuse("not a JSON array of option groups");

    for (JsonValue& group : added.GetArray()) groups().PushBack(group, m_alloc);
    const std::string place = '/' + text::validUtf8(groupsKey);
    requireClean(m_document, m_form, place, [&](const Finding& finding) {
        const std::string where = finding.pointer.substr(place.size());
        refuse((where.empty() ? where : where + " ") + inspection::fullText(finding));
    });
}

JsonValue& OptionsDocument::groups() {
    if (!m_document.HasMember(groupsKey))
        m_document.AddMember(text(groupsKey), JsonValue(rapidjson::kArrayType), m_alloc);
    return m_document[groupsKey];
}

JsonValue* OptionsDocument::find(EOperationType operation, EFormatType format) {
    for (JsonValue& group : groups().GetArray())
        if (enumToString(operation) == group[operationKey].GetString() &&
            enumToString(format) == group[formatKey].GetString())
            return &group;
    return nullptr;
}

JsonValue& OptionsDocument::add(EOperationType operation, EFormatType format) {
    JsonValue made(rapidjson::kObjectType);
    made.AddMember(text(operationKey), text(enumToString(operation)), m_alloc);
    made.AddMember(text(formatKey), text(enumToString(format)), m_alloc);
    groups().PushBack(made, m_alloc);
    return groups()[groups().Size() - 1];
}

OptionsDocument::Place OptionsDocument::group(const std::string& name, const std::string& assignment) {
    std::vector<std::string> names;
    for (const auto& [operation, format] : IFormatOptions::kinds()) {
        if (!hasMember(m_form, groupsKey)) break;
        if (operation != m_operation && operation != EOperationType::options) continue;
        names.push_back(text::printable(enumToString(format)));
        if (names.back() != name) continue;
        JsonValue* const known = find(operation, format);
        return {known ? known : &add(operation, format),
                json::formOf(*IFormatOptions::make(operation, format))};
    }
    Finding unknown{
        inspection::Severity::error, {},   {}, "there is no option group '" + text::printable(name) + "'",
        text::nearest(name, names),  names};
    throw Failure(exit_code::usage,
                  "--set '" + text::printable(assignment) + "': " + inspection::fullText(unknown));
}

void OptionsDocument::askFor(bool geometry, bool display) {
    if (!hasMember(m_form, groupsKey)) return;
    const auto say = [&](EOperationType operation, EFormatType format, const wchar_t* key, JsonValue value,
                         bool isUsual) {
        if (!hasMember(*json::formOf(*IFormatOptions::make(operation, format)), key)) return;
        JsonValue* group = find(operation, format);
        if (!group && !isUsual) group = &add(operation, format);
        if (group && !json::findMember(*group, key)) group->AddMember(text(key), value, m_alloc);
    };
    for (const auto& [operation, format] : IFormatOptions::kinds()) {
        if (operation != m_operation) continue;
        for (int pass = 0; pass < 2; ++pass) { // in a group that one of them makes, all are to be said
            for (const wchar_t* const key : displayKeys)
                say(operation, format, key, JsonValue(display), display);
            say(operation, format, geometryKey, JsonValue(geometry), geometry);
        }
    }
    if (!display)
        say(EOperationType::options, EFormatType::graphical, tessellationKey,
            text(enumToString(EVisuBRepTessellationModeType::never)), false);
}

void OptionsDocument::set(const std::string& assignment) {
    const std::size_t equals = assignment.find('=');
    const std::string left = assignment.substr(0, equals);
    const std::size_t dot = left.find('.');
    const std::string key = dot == left.npos ? left : left.substr(dot + 1);
    if (equals == assignment.npos || key.empty())
        throw Failure(exit_code::usage,
                      "--set '" + text::printable(assignment) + "' is not [GROUP.]KEY=VALUE");

    const Place place =
        dot == left.npos ? Place{&m_document, &m_form} : group(left.substr(0, dot), assignment);
    const std::wstring name = transport::fromUtf8(key);
    const json::Shape shape = place.form->shape();
    const auto& members = std::get<json::ObjectShape>(shape.is).members;
    const auto member = std::ranges::find(members, name, &json::MemberShape::key);
    place.object->RemoveMember(name.c_str());
    place.object->AddMember(
        text(name),
        valueOf(assignment.substr(equals + 1), member == members.end() ? nullptr : &member->shape, m_alloc),
        m_alloc);
    requireClean(*place.object, *place.form, "/" + key, [&](const Finding& finding) {
        throw Failure(exit_code::usage,
                      "--set '" + text::printable(assignment) + "': " + inspection::fullText(finding));
    });
}

} // namespace

void applySettings(ConvexorOptions& options, const Settings& settings, transport::SignalPipe& signals) {
    const bool needsGeometry = settings.showsGeometry() || !settings.geometryDirectory.empty();
    const bool needsDisplay = settings.action != EAction::tree;
    if (needsGeometry && needsDisplay && settings.formatOptions.empty() && settings.assignments.empty())
        return;
    OptionsDocument document(options);
    if (!settings.formatOptions.empty()) document.addGroups(settings.formatOptions, signals);
    for (const std::string& assignment : settings.assignments) {
        try {
            document.set(assignment);
        } catch (const transport::EncodingError& error) {
            throw Failure(exit_code::usage, "--set '" + text::printable(assignment) + "': " + error.what());
        }
    }
    document.askFor(needsGeometry, needsDisplay);
    options.readObject(document.value());
}

} // namespace zeq::host
