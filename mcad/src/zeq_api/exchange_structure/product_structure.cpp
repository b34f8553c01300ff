// The product structure: its form, and the index of its blocks.
#include "zeq_api/exchange_structure/product_structure.h"

#include <algorithm>

#include "mv_cvx/logger.h"
#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/exchange_structure/area.h"
#include "zeq_api/exchange_structure/reference_list.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

StaticExchangeObject<ExcProductStructure> prototype;

} // namespace

struct ExcProductStructure::JsonForm {
    using This = ExcProductStructure;
    static constexpr json::Form form{
        json::Head{"ExcProductStructure", area::exchangeStructure},
        json::field(L"product_name", &This::m_productName),
        json::field(L"product_configuration_name", &This::m_productConfigurationName),
        json::field(L"misc_data", &This::m_miscData, json::unlessEmpty),
        json::field(L"units", &This::m_units),
        json::field(L"world_orientation", &This::m_worldOrientation),
        json::children(L"blocks", &This::m_blocks, &This::addBlock, json::anyElements),
        json::children(L"root_block_references", &This::m_rootBlockReferences, &This::addRootBlockReference),
    };
};

ZEQ_JSON_OBJECT(ExcProductStructure)

const std::wstring& ExcProductStructure::objName() {
    static const std::wstring name = L"exc_product_structure";
    return name;
}

std::shared_ptr<IExchangeObject> ExcProductStructure::clone() const {
    return std::make_shared<ExcProductStructure>();
}

ExcBlockPtr ExcProductStructure::getBlockById(std::uint64_t id) const {
    const auto found = m_blockIndex.find(id);
    return found == m_blockIndex.end() ? nullptr : found->second;
}

void ExcProductStructure::addBlock(ExcBlockPtr block) {
    json::trace(area::exchangeStructure, "void zeq::ExcProductStructure::addBlock(ExcBlockPtr)");
    if (!block) {
        ZEQ_LOG(Warning) << "ExcProductStructure: attempt to add null Block object.";
        return;
    }
    const std::uint64_t id = block->id();
    // A block that only the caller holds cannot be listed: reading a document never searches.
    if (block.use_count() > 1 && m_blockIndex.contains(id)) {
        const auto same = std::find(m_blocks.begin(), m_blocks.end(), block);
        if (same != m_blocks.end()) m_blocks.erase(same);
    }
    m_blockIndex[id] = block;
    m_blocks.push_back(std::move(block));
}

void ExcProductStructure::addRootBlockReference(ExcBlockReferencePtr reference) {
    detail::appendChild(m_rootBlockReferences, std::move(reference),
                        "ExcProductStructure: attempt to add null Root Block Reference object.");
}

void ExcProductStructure::removeRootBlockReference(int blockId) {
    detail::removeReference(m_rootBlockReferences, static_cast<std::uint64_t>(std::int64_t{blockId}));
}

bool ExcProductStructure::isPart() const {
    return m_productName == L"SPAXIopPSProductDummyReference" ||
           (m_rootBlockReferences.size() == 1 &&
            m_rootBlockReferences.front()->name() == L"SPAXIopPSProductDummyInstance");
}

} // namespace zeq
