// The assembly tree of a model. Objects are used by one thread at a time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/misc_data.h"
#include "zeq_api/exchange_common/units.h"
#include "zeq_api/exchange_object/exchange_object.h"
#include "zeq_api/exchange_structure/block.h"

namespace zeq {

/// All blocks of a product and the references at its top level.
class ExcProductStructure : public IExchangeObject {
public:
    static const std::wstring& objName();

    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;
    bool binary() const override { return true; }
    bool compress() const override { return true; }

    const std::wstring& productName() const { return m_productName; }
    void setProductName(std::wstring name) { m_productName = std::move(name); }

    const std::wstring& productConfigurationName() const { return m_productConfigurationName; }
    void setProductConfigurationName(std::wstring name) { m_productConfigurationName = std::move(name); }

    const ExcMiscData& miscData() const { return m_miscData; }
    ExcMiscData& miscData() { return m_miscData; }

    ELengthUnitType units() const { return m_units; }
    void setUnits(ELengthUnitType units) { m_units = units; }

    EWorldOrientation worldOrientation() const { return m_worldOrientation; }
    void setWorldOrientation(EWorldOrientation orientation) { m_worldOrientation = orientation; }

    /// In the order in which they were added.
    const std::vector<ExcBlockPtr>& blocks() const { return m_blocks; }
    /// The block that was added last with that id; null when there is none.
    ExcBlockPtr getBlockById(std::uint64_t id) const;
    /// Appends a block, or moves it to the end if the very same object is there already; null is refused with
    /// a warning. // sic Of different blocks with the same id all stay listed.
    void addBlock(ExcBlockPtr block);

    /// The top level of the product.
    const std::vector<ExcBlockReferencePtr>& rootBlockReferences() const { return m_rootBlockReferences; }
    /// Appends a reference; null is refused with a warning.
    void addRootBlockReference(ExcBlockReferencePtr reference);
    /// Removes the first reference that places the block `blockId`, if there is one. // sic An int, so it
    /// does not reach all blocks.
    void removeRootBlockReference(int blockId);

    /// Whether the product is a single part, which the translator tells by the name of the product or of its
    /// only reference.
    bool isPart() const;

private:
    struct JsonForm;

    std::wstring m_productName;
    std::wstring m_productConfigurationName;
    ExcMiscData m_miscData;
    ELengthUnitType m_units = ELengthUnitType::unknown;
    EWorldOrientation m_worldOrientation = EWorldOrientation::unknown;
    std::vector<ExcBlockPtr> m_blocks;
    std::map<std::uint64_t, ExcBlockPtr> m_blockIndex;
    std::vector<ExcBlockReferencePtr> m_rootBlockReferences;
};

} // namespace zeq
