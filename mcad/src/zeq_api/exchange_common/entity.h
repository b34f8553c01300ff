// How an object names the piece of geometry, or the feature, that it belongs to. Objects are used by one
// thread at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// The way from the top of the product to a sub-entity of a block's geometry.
class ExcFullSubentPath : public IJsonObject {
public:
    /// The kind of sub-entity. Documents carry its number, not a name, and any 32-bit number is kept.
    enum class ESubentType : std::uint32_t {
        unknown,
        face,
        edge,
        vertex
    };

    explicit ExcFullSubentPath(std::uint64_t subentId = 0) : m_subentId(subentId) {}

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Identifiers of the block references that lead to the block.
    const std::vector<std::wstring>& refs() const { return m_refs; }
    std::vector<std::wstring>& refs() { return m_refs; }

    std::uint64_t subentId() const { return m_subentId; }
    void setSubentId(std::uint64_t id) { m_subentId = id; }

    ESubentType subentType() const { return m_subentType; }
    void setSubentType(ESubentType type) { m_subentType = type; }

    /// Identifier of the visual item that shows the sub-entity; may be empty.
    const std::wstring& visuId() const { return m_visuId; }
    std::wstring& visuId() { return m_visuId; }

    /// Whether the path names an instance.
    bool isInstancePath() const { return m_instancePath; }
    void setInstancePath(bool isInstancePath) { m_instancePath = isInstancePath; }

private:
    struct JsonForm;

    std::vector<std::wstring> m_refs;
    std::uint64_t m_subentId;
    ESubentType m_subentType = ESubentType::unknown;
    std::wstring m_visuId;
    bool m_instancePath = false;
};

/// A reference to an entity of the model.
class ExcEntity : public IJsonObject {
public:
    /// What the reference consists of.
    enum class EType {
        unknown,
        fsp,     ///< a path to a sub-entity
        mfg,     ///< the id of a manufacturing feature
        original ///< id and description of an entity of the source model
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    EType type() const { return m_type; }
    void setType(EType type) { m_type = type; }

    const std::wstring& id() const { return m_id; }
    std::wstring& id() { return m_id; }

    /// May be null.
    const std::shared_ptr<ExcFullSubentPath>& fsp() const { return m_fsp; }
    std::shared_ptr<ExcFullSubentPath>& fsp() { return m_fsp; }

    const std::wstring& description() const { return m_description; }
    std::wstring& description() { return m_description; }

private:
    struct JsonForm;

    EType m_type = EType::unknown;
    std::wstring m_id;
    std::shared_ptr<ExcFullSubentPath> m_fsp;
    std::wstring m_description;
};
const EnumTable& enumTable(ExcEntity::EType);
using ExcEntityPtr = std::shared_ptr<ExcEntity>;

} // namespace zeq
