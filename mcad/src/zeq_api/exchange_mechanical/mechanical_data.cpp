// The JSON forms of mechanical data.
#include "zeq_api/exchange_mechanical/mechanical_data.h"

#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/json/form.h"
#include "zeq_api/json/special_rows.h"

namespace zeq {

namespace {

StaticExchangeObject<ExcRootMechanicalData> rootPrototype;
StaticExchangeObject<ExcBlockMechanicalData> blockPrototype;

} // namespace

struct ExcRootMechanicalData::JsonForm {
    using This = ExcRootMechanicalData;
    static constexpr json::Form form{
        json::Head{"ExcRootMechanicalData", area::exchangeMechanical},
        json::arrayReadAsObject(L"pmi_data", &This::m_pmiData),
        json::field(L"log_file", &This::m_logFile, json::unlessEmpty),
    };
};

ZEQ_JSON_OBJECT(ExcRootMechanicalData)

const std::wstring& ExcRootMechanicalData::objName() {
    static const std::wstring name = L"exc_root_mechanical_data";
    return name;
}

std::shared_ptr<IExchangeObject> ExcRootMechanicalData::clone() const {
    return std::make_shared<ExcRootMechanicalData>();
}

struct ExcBlockMechanicalData::JsonForm {
    using This = ExcBlockMechanicalData;
    static constexpr json::Form form{
        json::Head{"ExcBlockMechanicalData", area::exchangeMechanical},
        json::field(L"block_id", &This::m_blockId),
        json::field(L"log_file", &This::m_logFile, json::unlessEmpty),
        json::arrayReadAsObject(L"pmi_data", &This::m_pmiData),
        json::field(L"misc_data", &This::m_miscData, json::whenSet),
        json::arrayReadAsObject(L"mapping_data", &This::m_mappingData),
        json::field(L"mfg_data", &This::m_mfgData, json::whenSet),
        json::arrayReadAsObject(L"entity_data", &This::m_entityData),
    };
};

ZEQ_JSON_OBJECT(ExcBlockMechanicalData)

const std::wstring& ExcBlockMechanicalData::objName() {
    static const std::wstring name = L"exc_block_mechanical_data";
    return name;
}

std::shared_ptr<IExchangeObject> ExcBlockMechanicalData::clone() const {
    return std::make_shared<ExcBlockMechanicalData>();
}

} // namespace zeq
