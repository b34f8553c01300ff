// The JSON forms of entity references and sub-entity paths.
#include "zeq_api/exchange_common/entity.h"

#include <string_view>

#include "zeq_api/exchange_common/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

/// A string of one unit, whose number is the type. // sic
struct SubentType {
    static void take(const auto& view, ExcFullSubentPath& path) {
        std::wstring text;
        if (!view.take(text)) return;
        const wchar_t unit = text.empty() ? L'\0' : text.front();
        path.setSubentType(static_cast<ExcFullSubentPath::ESubentType>(unit));
    }
    static void give(auto& sink, const ExcFullSubentPath& path) {
        const auto unit = static_cast<wchar_t>(path.subentType());
        sink.value(std::wstring_view(&unit, 1));
    }
    static json::Shape shape() { return {json::StringShape{1, {}}}; }
};

} // namespace

struct ExcFullSubentPath::JsonForm {
    using This = ExcFullSubentPath;
    static constexpr json::Form form{
        json::Head{"ExcFullSubentPath", area::exchangeCommon},
        json::field(L"block_references", &This::m_refs, json::unlessEmpty),
        json::field(L"subent_id", &This::m_subentId),
        json::custom(L"subent_type", SubentType{}),
        json::field(L"visu_id", &This::m_visuId, json::unlessEmpty),
        json::field(L"instance_path", &This::m_instancePath, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcFullSubentPath)

const EnumTable& enumTable(ExcEntity::EType) {
    using enum ExcEntity::EType;
    static constexpr EnumEntry names[] = {
        {unknown, L"unknown"}, {fsp, L"fsp"}, {mfg, L"mfg"}, {original, L"original"}};
    static const EnumTable table{"ExcEntity::EType", names};
    return table;
}

struct ExcEntity::JsonForm {
    using This = ExcEntity;

    template <EType... types>
    static constexpr auto ofType =
        [](const This& entity, const auto&) { return ((entity.m_type == types) || ...); };
    static constexpr json::Form form{
        json::Head{"ExcEntity", area::exchangeCommon},
        json::field(L"type", &This::m_type),
        json::field(L"description", &This::m_description, ofType<EType::original>),
        json::field(L"id", &This::m_id, ofType<EType::original, EType::mfg>),
        json::field(L"fsp", &This::m_fsp, ofType<EType::fsp>),
    };
};

ZEQ_JSON_OBJECT(ExcEntity)

} // namespace zeq
