// The JSON forms of reports, which are silent about input of the wrong type.
#include "zeq_api/exchange_object/messages.h"

#include "zeq_api/exchange_common/area.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

StaticExchangeObject<ExcMessage> messagePrototype;
StaticExchangeObject<ExcLog> logPrototype;
StaticExchangeObject<ExcProgress> progressPrototype;
StaticExchangeObject<ExcStageFinished> stagePrototype;

} // namespace

struct ExcMessageBase::JsonForm {
    using This = ExcMessageBase;
    static constexpr json::Form form{
        json::Head{"ExcMessageBase", area::untraced, json::silently},
        json::field(L"message", &This::m_message),
    };
};

ZEQ_JSON_OBJECT(ExcMessageBase)

struct ExcMessage::JsonForm {
    using This = ExcMessage;
    static constexpr json::Form form{
        json::Head{"ExcMessage", area::untraced, json::silently},
        json::base<ExcMessageBase>,
    };
};

ZEQ_JSON_OBJECT(ExcMessage)

const std::wstring& ExcMessage::objName() {
    static const std::wstring name = L"exc_message";
    return name;
}

std::shared_ptr<IExchangeObject> ExcMessage::clone() const { return std::make_shared<ExcMessage>(); }

struct ExcLog::JsonForm {
    using This = ExcLog;
    static constexpr json::Form form{
        json::Head{"ExcLog", area::untraced, json::silently},
        json::base<ExcMessageBase>,
    };
};

ZEQ_JSON_OBJECT(ExcLog)

const std::wstring& ExcLog::objName() {
    static const std::wstring name = L"exc_log";
    return name;
}

std::shared_ptr<IExchangeObject> ExcLog::clone() const { return std::make_shared<ExcLog>(); }

struct ExcProgress::JsonForm {
    using This = ExcProgress;
    static constexpr json::Form form{
        json::Head{"ExcProgress", area::untraced, json::silently},
        json::field(L"progress", &This::m_progress),
        json::field(L"progress_max", &This::m_progressMax),
        json::field(L"pulse", &This::m_pulse),
        json::field(L"stage", &This::m_stage),
    };
};

ZEQ_JSON_OBJECT(ExcProgress)

const std::wstring& ExcProgress::objName() {
    static const std::wstring name = L"exc_progress";
    return name;
}

std::shared_ptr<IExchangeObject> ExcProgress::clone() const { return std::make_shared<ExcProgress>(); }

bool ExcProgress::operator==(const ExcProgress& other) const {
    return m_progress == other.m_progress && m_progressMax == other.m_progressMax && m_stage == other.m_stage;
}

const EnumTable& enumTable(ExcStageFinished::EStage) {
    using enum ExcStageFinished::EStage;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"},
                                          {product_structure, L"product_structure"},
                                          {root_visualization, L"root_visualization"},
                                          {visualization, L"visualization"},
                                          {root_mechanical, L"root_mechanical"},
                                          {mechanical, L"mechanical"},
                                          {visu_and_mech, L"visu_and_mech"}};
    static const EnumTable table{"ExcStageFinished::EStage", names};
    return table;
}

struct ExcStageFinished::JsonForm {
    using This = ExcStageFinished;
    static constexpr json::Form form{
        json::Head{"ExcStageFinished", area::exchangeCommon, json::silently},
        json::whole(&This::m_stage),
    };
};

ZEQ_JSON_OBJECT(ExcStageFinished)

const std::wstring& ExcStageFinished::objName() {
    static const std::wstring name = L"exc_stage_finished";
    return name;
}

std::shared_ptr<IExchangeObject> ExcStageFinished::clone() const {
    return std::make_shared<ExcStageFinished>();
}

} // namespace zeq
