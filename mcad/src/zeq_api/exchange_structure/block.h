// The nodes of an assembly tree: blocks, and the references that place one block in another. Objects are used
// by one thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/exchange_common/misc_data.h"
#include "zeq_api/exchange_common/units.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// An instance: a block placed in another one or in the product.
class ExcBlockReference : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Identifies the instance.
    const std::wstring& guid() const { return m_guid; }
    void setGuid(std::wstring guid) { m_guid = std::move(guid); }

    /// Identifies the instance across repeated imports.
    const std::wstring& persistentId() const { return m_persistentId; }
    void setPersistentId(std::wstring id) { m_persistentId = std::move(id); }

    /// A name that stays the same across repeated imports.
    const std::wstring& persistentName() const { return m_persistentName; }
    void setPersistentName(std::wstring name) { m_persistentName = std::move(name); }

    /// The block that is placed.
    std::uint64_t blockId() const { return m_blockId; }
    void setBlockId(std::uint64_t id) { m_blockId = id; }

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    /// Where the block stands in its parent.
    const ExcTransformation& transformation() const { return m_transformation; }
    void setTransformation(const ExcTransformation& transformation) { m_transformation = transformation; }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    bool isSuppressed() const { return m_suppressed; }
    void setSuppressed(bool suppressed) { m_suppressed = suppressed; }

    /// The configuration of the block that the instance uses.
    const std::wstring& configurationName() const { return m_configurationName; }
    void setConfigurationName(std::wstring name) { m_configurationName = std::move(name); }

    const ExcMiscData& miscData() const { return m_miscData; }
    ExcMiscData& miscData() { return m_miscData; }

private:
    struct JsonForm;

    std::wstring m_guid;
    std::wstring m_persistentId;
    std::wstring m_persistentName;
    std::uint64_t m_blockId = 0;
    std::wstring m_name;
    ExcTransformation m_transformation;
    ExcColor m_color;
    bool m_hidden = false;
    bool m_suppressed = false;
    std::wstring m_configurationName;
    ExcMiscData m_miscData;
};
using ExcBlockReferencePtr = std::shared_ptr<ExcBlockReference>;

/// A part or an assembly, however often the product contains it.
class ExcBlock : public IJsonObject {
public:
    /// Appends to the references.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Unique within a product; geometry and mechanical data refer to it.
    std::uint64_t id() const { return m_id; }
    void setId(std::uint64_t id) { m_id = id; }

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    /// The file or the storage that the block comes from.
    const std::wstring& storageName() const { return m_storageName; }
    void setStorageName(std::wstring name) { m_storageName = std::move(name); }

    EWorldOrientation worldOrientation() const { return m_worldOrientation; }
    void setWorldOrientation(EWorldOrientation orientation) { m_worldOrientation = orientation; }

    const ExcMiscData& miscData() const { return m_miscData; }
    ExcMiscData& miscData() { return m_miscData; }

    /// The children.
    const std::vector<ExcBlockReferencePtr>& blockReferences() const { return m_blockReferences; }
    /// Appends a child; null is refused with a warning.
    void addBlockReference(ExcBlockReferencePtr reference);
    /// Removes the first child that places the block `blockId`, if there is one.
    void removeBlockReference(std::uint64_t blockId);

    /// Whether this is a part and not an assembly.
    bool isPart() const { return m_isPart; }
    void setPart(bool isPart) { m_isPart = isPart; }

private:
    struct JsonForm;

    std::uint64_t m_id = 0;
    std::wstring m_name;
    std::wstring m_storageName;
    EWorldOrientation m_worldOrientation = EWorldOrientation::unknown;
    ExcMiscData m_miscData;
    std::vector<ExcBlockReferencePtr> m_blockReferences;
    bool m_isPart = false;
};
using ExcBlockPtr = std::shared_ptr<ExcBlock>;

} // namespace zeq
