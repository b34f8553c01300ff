// How a manufacturing feature is repeated. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// The arrangement of the instances of a feature.
class ExcMfgPattern : public IJsonObject {
public:
    enum class EType {
        unknown,
        none,
        rectangular,
        circular,
        user_defined
    };
    class Instance;
    using InstancePtr = std::shared_ptr<Instance>;
    /// Names an instance by its two indices in the pattern. Whether they count from 0 or 1 is the translator's.
    using InstanceIndex = std::pair<int, int>;

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    virtual EType type() const = 0;

    /// Reads a new pattern of the kind that the member "type" of `object` names.
    /// @return null for the kind "none", and with an error in the log for what is no object, an object
    ///         without a type, and an unknown type
    static std::shared_ptr<ExcMfgPattern> readPattern(const JsonValue& object);

private:
    struct JsonForm;
};
const EnumTable& enumTable(ExcMfgPattern::EType);
using ExcMfgPatternPtr = std::shared_ptr<ExcMfgPattern>;

/// One instance of a pattern, mostly the one that is repeated. Adding null is refused with a warning.
class ExcMfgPattern::Instance : public IJsonObject {
public:
    /// Appends to the entities.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Whether the other instances repeat this one.
    bool isBaseInstance() const { return m_isBase; }
    void setBaseInstance(bool isBase) { m_isBase = isBase; }

    /// The entities at which the feature ends. // sic
    const std::vector<ExcEntityPtr>& limitng() const { return m_limiting; }
    void addLimiting(ExcEntityPtr entity);

    /// The entities that make up the feature.
    const std::vector<ExcEntityPtr>& defining() const { return m_defining; }
    void addDefining(ExcEntityPtr entity);

private:
    struct JsonForm;

    bool m_isBase = false;
    std::vector<ExcEntityPtr> m_limiting;
    std::vector<ExcEntityPtr> m_defining;
};

/// Instances in rows and columns.
class ExcMfgPatternRectangular : public ExcMfgPattern {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EType type() const override { return EType::rectangular; }

    const ExcVector3d& anchorPoint() const { return m_anchorPoint; }
    void setAnchorPoint(const ExcVector3d& point) { m_anchorPoint = point; }

    const ExcVector3d& alignmentPrimaryDirection() const { return m_alignmentPrimaryDirection; }
    void setAlignmentPrimaryDirection(const ExcVector3d& direction) {
        m_alignmentPrimaryDirection = direction;
    }

    const ExcVector3d& alignmentSecondaryDirection() const { return m_alignmentSecondaryDirection; }
    void setAlignmentSecondaryDirection(const ExcVector3d& direction) {
        m_alignmentSecondaryDirection = direction;
    }

    int primaryInstanceCount() const { return m_primaryInstanceCount; }
    void setPrimaryInstanceCount(int count) { m_primaryInstanceCount = count; }

    int secondaryInstanceCount() const { return m_secondaryInstanceCount; }
    void setSecondaryInstanceCount(int count) { m_secondaryInstanceCount = count; }

    double primarySpacing() const { return m_primarySpacing; }
    void setPrimarySpacing(double spacing) { m_primarySpacing = spacing; }

    double secondarySpacing() const { return m_secondarySpacing; }
    void setSecondarySpacing(double spacing) { m_secondarySpacing = spacing; }

    /// May be null.
    const InstancePtr& baseInstance() const { return m_baseInstance; }
    void setBaseInstance(InstancePtr instance) { m_baseInstance = std::move(instance); }

    bool isSimplified() const { return m_simplified; }
    void setSimplified(bool simplified) { m_simplified = simplified; }

    const std::vector<InstanceIndex>& visibleInstances() const { return m_visibleInstances; }
    void addVisibleInstance(const InstanceIndex& index) { m_visibleInstances.push_back(index); }

    const std::vector<InstanceIndex>& deactivatedInstances() const { return m_deactivatedInstances; }
    void addDeactivatedInstance(const InstanceIndex& index) { m_deactivatedInstances.push_back(index); }

private:
    struct JsonForm;

    ExcVector3d m_anchorPoint;
    ExcVector3d m_alignmentPrimaryDirection;
    ExcVector3d m_alignmentSecondaryDirection;
    int m_primaryInstanceCount = 0;
    int m_secondaryInstanceCount = 0;
    double m_primarySpacing = 0;
    double m_secondarySpacing = 0;
    InstancePtr m_baseInstance;
    bool m_simplified = false;
    std::vector<InstanceIndex> m_visibleInstances;
    std::vector<InstanceIndex> m_deactivatedInstances;
};

/// Instances around an axis.
class ExcMfgPatternCircular : public ExcMfgPattern {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EType type() const override { return EType::circular; }

    const ExcVector3d& anchorPoint() const { return m_anchorPoint; }
    void setAnchorPoint(const ExcVector3d& point) { m_anchorPoint = point; }

    const ExcVector3d& centerOfRotation() const { return m_centerOfRotation; }
    void setCenterOfRotation(const ExcVector3d& center) { m_centerOfRotation = center; }

    const ExcVector3d& axisOfRotation() const { return m_axisOfRotation; }
    void setAxisOfRotation(const ExcVector3d& axis) { m_axisOfRotation = axis; }

    int axialInstanceCount() const { return m_axialInstanceCount; }
    void setAxialInstanceCount(int count) { m_axialInstanceCount = count; }

    int radialInstanceCount() const { return m_radialInstanceCount; }
    void setRadialInstanceCount(int count) { m_radialInstanceCount = count; }

    /// The angle between neighbours on a circle, in degrees.
    double axialDistanceDegrees() const { return m_axialDistanceDegrees; }
    void setAxialDistanceDegrees(double distance) { m_axialDistanceDegrees = distance; }

    /// The distance of one circle from the next.
    double radialDistance() const { return m_radialDistance; }
    void setRadialDistance(double distance) { m_radialDistance = distance; }

    /// Whether the instances do not turn with their positions.
    bool isFixedRotationOrientation() const { return m_fixedRotationOrientation; }
    void setFixedRotationOrientation(bool fixed) { m_fixedRotationOrientation = fixed; }

    /// May be null.
    const InstancePtr& baseInstance() const { return m_baseInstance; }
    void setBaseInstance(InstancePtr instance) { m_baseInstance = std::move(instance); }

    bool isSimplified() const { return m_simplified; }
    void setSimplified(bool simplified) { m_simplified = simplified; }

    const std::vector<InstanceIndex>& visibleInstances() const { return m_visibleInstances; }
    void addVisibleInstance(const InstanceIndex& index) { m_visibleInstances.push_back(index); }

    const std::vector<InstanceIndex>& deactivatedInstances() const { return m_deactivatedInstances; }
    void addDeactivatedInstance(const InstanceIndex& index) { m_deactivatedInstances.push_back(index); }

private:
    struct JsonForm;

    ExcVector3d m_anchorPoint;
    ExcVector3d m_centerOfRotation;
    ExcVector3d m_axisOfRotation;
    int m_axialInstanceCount = 0;
    int m_radialInstanceCount = 0;
    double m_axialDistanceDegrees = 0;
    double m_radialDistance = 0;
    bool m_fixedRotationOrientation = false;
    InstancePtr m_baseInstance;
    bool m_simplified = false;
    std::vector<InstanceIndex> m_visibleInstances;
    std::vector<InstanceIndex> m_deactivatedInstances;
};

/// Instances at positions of their own.
class ExcMfgPatternUserDefined : public ExcMfgPattern {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EType type() const override { return EType::user_defined; }

    const ExcVector3d& anchorPoint() const { return m_anchorPoint; }
    void setAnchorPoint(const ExcVector3d& point) { m_anchorPoint = point; }

    /// May be null.
    const InstancePtr& baseInstance() const { return m_baseInstance; }
    void setBaseInstance(InstancePtr instance) { m_baseInstance = std::move(instance); }

    const std::vector<ExcVector3d>& instancePositions() const { return m_instancePositions; }
    void addInstancePosition(const ExcVector3d& position) { m_instancePositions.push_back(position); }

    const std::vector<ExcVector3d>& deactivatedPositions() const { return m_deactivatedPositions; }
    void addDeactivatedPosition(const ExcVector3d& position) { m_deactivatedPositions.push_back(position); }

private:
    struct JsonForm;

    ExcVector3d m_anchorPoint;
    InstancePtr m_baseInstance;
    std::vector<ExcVector3d> m_instancePositions;
    std::vector<ExcVector3d> m_deactivatedPositions;
};

} // namespace zeq
