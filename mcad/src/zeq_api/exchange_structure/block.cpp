// The JSON forms of blocks and of their references.
#include "zeq_api/exchange_structure/block.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_structure/area.h"
#include "zeq_api/exchange_structure/reference_list.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcBlockReference::JsonForm {
    using This = ExcBlockReference;
    static constexpr json::Form form{
        json::Head{"ExcBlockReference", area::exchangeStructure},
        json::field(L"guid", &This::m_guid),
        json::field(L"persistent_id", &This::m_persistentId),
        json::field(L"persistent_name", &This::m_persistentName),
        json::field(L"block_id", &This::m_blockId),
        json::field(L"name", &This::m_name),
        json::field(L"hidden", &This::m_hidden),
        json::field(L"suppressed", &This::m_suppressed),
        json::field(L"configuration_name", &This::m_configurationName),
        json::field(L"transformation", &This::m_transformation),
        json::field(L"color", &This::m_color),
        json::field(L"misc_data", &This::m_miscData, json::unlessEmpty),
    };
};

ZEQ_JSON_OBJECT(ExcBlockReference)

struct ExcBlock::JsonForm {
    using This = ExcBlock;
    static constexpr json::Form form{
        json::Head{"ExcBlock", area::exchangeStructure},
        json::field(L"id", &This::m_id),
        json::field(L"name", &This::m_name, json::unlessEmpty),
        json::field(L"storage_name", &This::m_storageName, json::unlessEmpty),
        json::field(L"world_orientation", &This::m_worldOrientation,
                    json::unless(EWorldOrientation::unknown)),
        json::field(L"misc_data", &This::m_miscData, json::unlessEmpty),
        json::field(L"is_part", &This::m_isPart),
        json::children(L"block_references", &This::m_blockReferences, &This::addBlockReference),
    };
};

ZEQ_JSON_OBJECT(ExcBlock)

void ExcBlock::addBlockReference(ExcBlockReferencePtr reference) {
    detail::appendChild(m_blockReferences, std::move(reference),
                        "ExcBlock: attempt to add null Block Reference object.");
}

void ExcBlock::removeBlockReference(std::uint64_t blockId) {
    detail::removeReference(m_blockReferences, blockId);
}

} // namespace zeq
