// Telling the documents apart by their members.
#include "zeq/document.h"

#include <utility>

#include "zeq/failure.h"
#include "zeq_api/json/dom_model.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/text_io.h"

namespace zeq::host {

namespace {

using json::findMember;

std::wstring textOf(const JsonValue& object, const wchar_t* key) {
    const JsonValue* text = findString(object, key);
    return text ? std::wstring(text->GetString(), text->GetStringLength()) : std::wstring();
}

} // namespace

Document::Document(std::wstring text) : m_text(std::move(text)) {
    std::wistringstream stream(m_text);
    if (!JsonTextIO::read(stream, m_json) || !m_json.IsObject())
        throw Failure(exit_code::translatorBroken, "the translator sent a document that is no JSON object");
}

EDocument Document::kind() const {
    if (findMember(m_json, L"exchange_object_name")) return EDocument::exchangeObject;
    if (findMember(m_json, L"name") && findMember(m_json, L"modeler_version")) return EDocument::convexorInfo;
    return findMember(m_json, L"code") ? EDocument::result : EDocument::unknown;
}

std::wstring Document::objectName() const { return textOf(m_json, L"exchange_object_name"); }

std::wstring Document::bufferName() const {
    const JsonValue* data = findMember(m_json, L"exchange_object_data");
    if (!data) return {};
    const JsonValue* binary = findMember(m_json, L"binary");
    if (binary && binary->IsTrue()) return textOf(m_json, L"exchange_object_data");
    return textOf(*data, L"shared_acis_buffer_name"); // block geometry names its buffer inside its data
}

} // namespace zeq::host
