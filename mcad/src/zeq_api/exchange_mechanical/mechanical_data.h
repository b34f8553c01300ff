// Mechanical data: what an import sends beside the structure and the geometry of a model. Objects are used by
// one thread at a time.
//
// The sections of PMI, mapping and entity data are written as arrays, but readObject() and load() take a section
// only when it is an object. // sic So what one process writes into them does not reach the other one that way;
// mechanical_sections.h has the way that it does.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "zeq_api/exchange_mechanical/entity_data.h"
#include "zeq_api/exchange_mechanical/mechanical_misc_data.h"
#include "zeq_api/exchange_mechanical/mfg_data.h"
#include "zeq_api/exchange_object/exchange_object.h"
#include "zeq_api/exchange_pmi/annotation_set.h"

namespace zeq {

/// The mechanical data of the whole model.
class ExcRootMechanicalData : public IExchangeObject {
public:
    static const std::wstring& objName();

    /// Does not take the PMI that writeObject() writes, see readPMIData() and loadWithSections().
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;
    bool binary() const override { return true; }
    bool compress() const override { return true; }

    /// May be null.
    const ExcPMIDataPtr& pmiData() const { return m_pmiData; }
    void setPMIData(ExcPMIDataPtr data) { m_pmiData = std::move(data); }

    /// A log file that the translator wrote for the model; empty when there is none.
    const std::wstring& logFile() const { return m_logFile; }
    void setLogFile(std::wstring file) { m_logFile = std::move(file); }

private:
    struct JsonForm;
    friend void loadWithSections(IExchangeObject& object);

    ExcPMIDataPtr m_pmiData;
    std::wstring m_logFile;
};
using ExcRootMechanicalDataPtr = std::shared_ptr<ExcRootMechanicalData>;

/// The mechanical data of one block, in sections each of which may be null.
class ExcBlockMechanicalData : public IExchangeObject {
public:
    static const std::wstring& objName();

    /// Does not take the PMI, the mapping and the entity data that writeObject() writes, see readPMIData(),
    /// readMappingData(), readEntityData() and loadWithSections().
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    const std::wstring& objectName() const override { return objName(); }
    std::shared_ptr<IExchangeObject> clone() const override;
    bool binary() const override { return true; }
    bool compress() const override { return true; }

    /// The block, see ExcBlock::id().
    std::uint64_t blockId() const { return m_blockId; }
    void setBlockId(std::uint64_t id) { m_blockId = id; }

    const ExcPMIDataPtr& pmiData() const { return m_pmiData; }
    void setPMIData(ExcPMIDataPtr data) { m_pmiData = std::move(data); }

    const ExcMechanicalMiscDataPtr& miscData() const { return m_miscData; }
    void setMiscData(ExcMechanicalMiscDataPtr data) { m_miscData = std::move(data); }

    const ExcMappingDataPtr& mappingData() const { return m_mappingData; }
    void setMappingData(ExcMappingDataPtr data) { m_mappingData = std::move(data); }

    const ExcMfgDataPtr& manufacturingData() const { return m_mfgData; }
    void setManufacturingData(ExcMfgDataPtr data) { m_mfgData = std::move(data); }

    const ExcEntityDataPtr& entityData() const { return m_entityData; }
    void setEntityData(ExcEntityDataPtr data) { m_entityData = std::move(data); }

    /// A log file that the translator wrote for the block; empty when there is none.
    const std::wstring& logFile() const { return m_logFile; }
    void setLogFile(std::wstring file) { m_logFile = std::move(file); }

private:
    struct JsonForm;
    friend void loadWithSections(IExchangeObject& object);

    std::uint64_t m_blockId = 0;
    ExcPMIDataPtr m_pmiData;
    ExcMechanicalMiscDataPtr m_miscData;
    ExcMappingDataPtr m_mappingData;
    ExcMfgDataPtr m_mfgData;
    ExcEntityDataPtr m_entityData;
    std::wstring m_logFile;
};
using ExcBlockMechanicalDataPtr = std::shared_ptr<ExcBlockMechanicalData>;

} // namespace zeq
