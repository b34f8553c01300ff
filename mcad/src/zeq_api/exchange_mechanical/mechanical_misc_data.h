// How the source system has a part organised apart from its shape. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/exchange_common/misc_data.h"
#include "zeq_api/exchange_mechanical/misc_layer.h"
#include "zeq_api/exchange_mechanical/misc_material.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// A work coordinate system.
class ExcMiscWCS : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const ExcVector3d& origin() const { return m_origin; }
    void setOrigin(const ExcVector3d& origin) { m_origin = origin; }

    /// The directions of the axes.
    const ExcVector3d& x() const { return m_x; }
    void setX(const ExcVector3d& x) { m_x = x; }

    const ExcVector3d& y() const { return m_y; }
    void setY(const ExcVector3d& y) { m_y = y; }

    const ExcVector3d& z() const { return m_z; }
    void setZ(const ExcVector3d& z) { m_z = z; }

    const ExcColor& color() const { return m_color; }
    void setColor(const ExcColor& color) { m_color = color; }

    bool isActive() const { return m_active; }
    void setActive(bool active) { m_active = active; }

    const std::wstring& id() const { return m_id; }
    void setId(std::wstring id) { m_id = std::move(id); }

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    bool isShown() const { return m_shown; }
    void setShown(bool shown) { m_shown = shown; }

    /// The layer that it lies on, see ExcMiscLayer::id().
    int layerId() const { return m_layerId; }
    void setLayerId(int id) { m_layerId = id; }

private:
    struct JsonForm;

    ExcVector3d m_origin;
    ExcVector3d m_x;
    ExcVector3d m_y;
    ExcVector3d m_z;
    ExcColor m_color;
    bool m_active = false;
    std::wstring m_id;
    std::wstring m_name;
    bool m_shown = false;
    int m_layerId = 0;
};
using ExcMiscWCSPtr = std::shared_ptr<ExcMiscWCS>;

/// Parameters that belong to a note.
class ExcMiscNoteParameters : public IJsonObject {
public:
    /// Appends to the properties.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    const ExcMiscPropertiesGroup& properties() const { return m_properties; }
    ExcMiscPropertiesGroup& properties() { return m_properties; }

private:
    struct JsonForm;

    std::wstring m_name;
    ExcMiscPropertiesGroup m_properties;
};
using ExcMiscNoteParametersPtr = std::shared_ptr<ExcMiscNoteParameters>;

/// An entity that the source keeps as the mirror image of another one.
class ExcMiscSymmetry : public IJsonObject {
public:
    enum class ETransformMode {
        none,
        opposite,
        both
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    ETransformMode transformMode() const { return m_transformMode; }
    void setTransformMode(ETransformMode mode) { m_transformMode = mode; }

    const ExcTransformation& transformation() const { return m_transformation; }
    void setTransformation(const ExcTransformation& transformation) { m_transformation = transformation; }

    /// May be null.
    const ExcEntityPtr& linkedEntity() const { return m_linkedEntity; }
    void setLinkedEntity(ExcEntityPtr entity) { m_linkedEntity = std::move(entity); }

private:
    struct JsonForm;

    ETransformMode m_transformMode = ETransformMode::none;
    ExcTransformation m_transformation;
    ExcEntityPtr m_linkedEntity;
};
const EnumTable& enumTable(ExcMiscSymmetry::ETransformMode);
using ExcMiscSymmetryPtr = std::shared_ptr<ExcMiscSymmetry>;

/// A named set of entities that are shown together.
class ExcMiscDisplaySet : public IJsonObject {
public:
    /// Appends to the entities.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    bool isActive() const { return m_active; }
    void setActive(bool active) { m_active = active; }

    const std::vector<ExcEntityPtr>& entities() const { return m_entities; }
    /// Null is refused with a warning.
    void addEntity(ExcEntityPtr entity);

private:
    struct JsonForm;

    std::wstring m_name;
    bool m_active = false;
    std::vector<ExcEntityPtr> m_entities;
};
using ExcMiscDisplaySetPtr = std::shared_ptr<ExcMiscDisplaySet>;

/// The organisation of a part. Adding null to any of the lists is refused with a warning.
class ExcMechanicalMiscData : public IJsonObject {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// The properties of the part.
    const ExcMiscData& miscData() const { return m_miscData; }
    ExcMiscData& miscData() { return m_miscData; }

    const std::vector<ExcMiscWCSPtr>& worldCoordinateSystems() const { return m_wcs; }
    void addWorldCoordinateSystem(ExcMiscWCSPtr wcs);

    const std::vector<ExcMiscLayerPtr>& layers() const { return m_layers; }
    void addLayer(ExcMiscLayerPtr layer);

    const std::vector<ExcMiscLayerFilterPtr>& layerFilters() const { return m_layerFilters; }
    void addLayerFilter(ExcMiscLayerFilterPtr filter);

    const std::vector<ExcMiscMaterialPtr>& materials() const { return m_materials; }
    void addMaterial(ExcMiscMaterialPtr material);

    const std::vector<ExcMiscNoteParametersPtr>& noteParameters() const { return m_noteParameters; }
    void addNoteParameters(ExcMiscNoteParametersPtr parameters);

    const std::vector<ExcMiscSymmetryPtr>& symmetries() const { return m_symmetries; }
    void addSymmetry(ExcMiscSymmetryPtr symmetry);

    const std::vector<ExcMiscDisplaySetPtr>& displaySets() const { return m_displaySets; }
    void addDisplaySet(ExcMiscDisplaySetPtr set);

private:
    struct JsonForm;

    ExcMiscData m_miscData;
    std::vector<ExcMiscWCSPtr> m_wcs;
    std::vector<ExcMiscLayerPtr> m_layers;
    std::vector<ExcMiscLayerFilterPtr> m_layerFilters;
    std::vector<ExcMiscMaterialPtr> m_materials;
    std::vector<ExcMiscNoteParametersPtr> m_noteParameters;
    std::vector<ExcMiscSymmetryPtr> m_symmetries;
    std::vector<ExcMiscDisplaySetPtr> m_displaySets;
};
using ExcMechanicalMiscDataPtr = std::shared_ptr<ExcMechanicalMiscData>;

} // namespace zeq
