// The layers of a part in the source system, and the filters that choose among them. Objects are used by one
// thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// A layer with the entities that lie on it.
class ExcMiscLayer : public IJsonObject {
public:
    /// Appends to the entities.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    int id() const { return m_id; }
    void setId(int id) { m_id = id; }

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    /// Whether new entities would be put on this layer.
    bool isCurrent() const { return m_current; }
    void setCurrent(bool current) { m_current = current; }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

    const std::vector<ExcEntityPtr>& entities() const { return m_entities; }
    /// Null is refused with a warning.
    void addEntity(ExcEntityPtr entity);

private:
    struct JsonForm;

    int m_id = 0;
    std::wstring m_name;
    bool m_current = false;
    ExcColor m_color;
    std::vector<ExcEntityPtr> m_entities;
};
using ExcMiscLayerPtr = std::shared_ptr<ExcMiscLayer>;

/// A named choice of layers.
class ExcMiscLayerFilter : public IJsonObject {
public:
    enum class EType {
        all,
        laycur, ///< the current layer
        other
    };

    /// Appends to the layer ids.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    EType type() const { return m_type; }
    void setType(EType type) { m_type = type; }

    /// Whether this filter is in force.
    bool isCurrent() const { return m_current; }
    void setCurrent(bool current) { m_current = current; }

    /// The ids of the chosen layers, see ExcMiscLayer::id().
    const std::vector<int>& layerIds() const { return m_layerIds; }
    void addLayerId(int id) { m_layerIds.push_back(id); }

private:
    struct JsonForm;

    std::wstring m_name;
    EType m_type = EType::all;
    bool m_current = false;
    std::vector<int> m_layerIds;
};
const EnumTable& enumTable(ExcMiscLayerFilter::EType);
using ExcMiscLayerFilterPtr = std::shared_ptr<ExcMiscLayerFilter>;

} // namespace zeq
