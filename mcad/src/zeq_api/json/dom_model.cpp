// The strict rules by which a value of the document model is taken or refused.
#include "zeq_api/json/dom_model.h"

#include <limits>
#include <new>

namespace zeq::json {

namespace {

bool isNamed(const JsonValue::Member& member, std::wstring_view key) {
    return std::wstring_view(member.name.GetString(), member.name.GetStringLength()) == key;
}

} // namespace

const JsonValue* DomMembers::find(std::wstring_view key) {
    for (auto member = m_next; member != m_end; ++member) {
        if (!isNamed(*member, key)) continue;
        if (member == m_next) ++m_next;
        return &member->value;
    }
    return nullptr;
}

const JsonValue* findMember(const JsonValue& object, std::wstring_view key) {
    return object.IsObject() ? DomMembers(object).find(key) : nullptr;
}

Kind DomView::kind() const {
    switch (m_value->GetType()) {
    case rapidjson::kNullType:
        return Kind::null;
    case rapidjson::kFalseType:
    case rapidjson::kTrueType:
        return Kind::boolean;
    case rapidjson::kObjectType:
        return Kind::object;
    case rapidjson::kArrayType:
        return Kind::array;
    case rapidjson::kStringType:
        return Kind::string;
    case rapidjson::kNumberType:
        break;
    }
    return Kind::number;
}

bool DomView::take(bool& out) const {
    if (!m_value->IsBool()) return false;
    out = m_value->GetBool();
    return true;
}

bool DomView::take(int& out) const {
    if (!m_value->IsInt()) return false;
    out = m_value->GetInt();
    return true;
}

bool DomView::take(unsigned& out) const {
    if (!m_value->IsUint()) return false;
    out = m_value->GetUint();
    return true;
}

bool DomView::take(long long& out) const {
    if (!m_value->IsInt64()) return false;
    out = m_value->GetInt64();
    return true;
}

bool DomView::take(unsigned long long& out) const {
    if (!m_value->IsUint64()) return false;
    out = m_value->GetUint64();
    return true;
}

bool DomView::take(double& out) const {
    if (!m_value->IsDouble()) return false;
    out = m_value->GetDouble();
    return true;
}

bool DomView::take(std::wstring& out) const {
    if (!m_value->IsString()) return false;
    out.assign(m_value->GetString(), m_value->GetStringLength());
    return true;
}

void DomSink::value(std::wstring_view v) {
    m_out->SetString(v.data(), static_cast<rapidjson::SizeType>(v.size()), *m_allocator);
}

char* DomSink::allocateText(std::size_t units) {
    if (units >= std::numeric_limits<rapidjson::SizeType>::max()) throw std::bad_alloc();
    if (units == 0) {
        m_out->SetString(L"", 0);
        return nullptr;
    }
    // The pool keeps the text as long as the document, which therefore may refer to it.
    auto* text = static_cast<wchar_t*>(m_allocator->Malloc((units + 1) * sizeof(wchar_t)));
    text[units] = L'\0';
    m_out->SetString(rapidjson::StringRef(text, static_cast<rapidjson::SizeType>(units)));
    return reinterpret_cast<char*>(text);
}

void DomSink::addMember(std::wstring_view key, JsonValue& value) {
    m_out->AddMember(
        JsonValue(rapidjson::StringRef(key.data(), static_cast<rapidjson::SizeType>(key.size()))), value,
        *m_allocator);
}

void DomSink::addOwnedMember(std::wstring_view key, JsonValue& value) {
    m_out->AddMember(JsonValue(key.data(), static_cast<rapidjson::SizeType>(key.size()), *m_allocator), value,
                     *m_allocator);
}

void DomSink::addElement(JsonValue& value) { m_out->PushBack(value, *m_allocator); }

} // namespace zeq::json
