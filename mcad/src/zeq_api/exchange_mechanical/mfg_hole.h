// Machined holes and threads as the source system recognised them. Lengths and angles are kept as they are
// given; nothing is converted. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// What all threads have.
class ExcMfgThreading : public IJsonObject {
public:
    enum class EOrientation {
        unknown,
        right_handed,
        left_handed
    };
    enum class EDesignationSystemType {
        unknown,
        metric,
        american,
        british
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double diameter() const { return m_diameter; }
    void setDiameter(double diameter) { m_diameter = diameter; }

    double depth() const { return m_depth; }
    void setDepth(double depth) { m_depth = depth; }

    double pitch() const { return m_pitch; }
    void setPitch(double pitch) { m_pitch = pitch; }

    EOrientation orientation() const { return m_orientation; }
    void setOrientation(EOrientation orientation) { m_orientation = orientation; }

    /// The name of the thread in its system, such as "M8x1".
    const std::wstring& designation() const { return m_designation; }
    void setDesignation(std::wstring designation) { m_designation = std::move(designation); }

    EDesignationSystemType designationSystemType() const { return m_designationSystemType; }
    void setDesignationSystemType(EDesignationSystemType type) { m_designationSystemType = type; }

private:
    struct JsonForm;

    double m_diameter = 0;
    double m_depth = 0;
    double m_pitch = 0;
    EOrientation m_orientation = EOrientation::unknown;
    std::wstring m_designation;
    EDesignationSystemType m_designationSystemType = EDesignationSystemType::unknown;
};
const EnumTable& enumTable(ExcMfgThreading::EOrientation);
const EnumTable& enumTable(ExcMfgThreading::EDesignationSystemType);

/// A thread on a face of its own.
class ExcMfgThread : public ExcMfgThreading {
public:
    enum class EBottomType {
        unknown,
        dimension,
        support_depth,
        support_up_to_plane
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// The diameter and the depth of what the thread is cut into.
    double supportDiameter() const { return m_supportDiameter; }
    void setSupportDiameter(double diameter) { m_supportDiameter = diameter; }

    double supportDepth() const { return m_supportDepth; }
    void setSupportDepth(double depth) { m_supportDepth = depth; }

    /// What says where the thread ends.
    EBottomType bottomType() const { return m_bottomType; }
    void setBottomType(EBottomType type) { m_bottomType = type; }

private:
    struct JsonForm;

    double m_supportDiameter = 0;
    double m_supportDepth = 0;
    EBottomType m_bottomType = EBottomType::unknown;
};
const EnumTable& enumTable(ExcMfgThread::EBottomType);
using ExcMfgThreadPtr = std::shared_ptr<ExcMfgThread>;

/// The thread of a hole.
class ExcMfgHoleThread : public ExcMfgThreading {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& standart() const { return m_standart; } // sic
    void setStandart(std::wstring standart) { m_standart = std::move(standart); }

    double minimalTolerance() const { return m_minimalTolerance; }
    void setMinimalTolerance(double tolerance) { m_minimalTolerance = tolerance; }

    double maximalTolerance() const { return m_maximalTolerance; }
    void setMaximalTolerance(double tolerance) { m_maximalTolerance = tolerance; }

private:
    struct JsonForm;

    std::wstring m_standart;
    double m_minimalTolerance = 0;
    double m_maximalTolerance = 0;
};
using ExcMfgHoleThreadPtr = std::shared_ptr<ExcMfgHoleThread>;

/// What all holes have.
class ExcMfgHole : public IJsonObject {
public:
    /// What says where the hole ends.
    enum class EBottomLimitExtentType {
        unknown,
        blind,
        up_to_last,
        up_to_plane,
        up_to_surface,
        up_to_next
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    double primaryDiameter() const { return m_primaryDiameter; }
    void setPrimaryDiameter(double diameter) { m_primaryDiameter = diameter; }

    double primaryDiameterMaxTol() const { return m_primaryDiameterMaxTol; }
    void setPrimaryDiameterMaxTol(double tolerance) { m_primaryDiameterMaxTol = tolerance; }

    double primaryDiameterMinTol() const { return m_primaryDiameterMinTol; }
    void setPrimaryDiameterMinTol(double tolerance) { m_primaryDiameterMinTol = tolerance; }

    double primaryDepth() const { return m_primaryDepth; }
    void setPrimaryDepth(double depth) { m_primaryDepth = depth; }

    /// The angle of the tip, in degrees.
    double tipAngleDegrees() const { return m_tipAngleDegrees; }
    void setTipAngleDegrees(double angle) { m_tipAngleDegrees = angle; }

    EBottomLimitExtentType bottomLimitExtentType() const { return m_bottomLimitExtentType; }
    void setBottomLimitExtentType(EBottomLimitExtentType type) { m_bottomLimitExtentType = type; }

    const ExcVector3d& center() const { return m_center; }
    void setCenter(const ExcVector3d& center) { m_center = center; }

    /// The direction of the axis.
    const ExcVector3d& direction() const { return m_direction; }
    void setDirection(const ExcVector3d& direction) { m_direction = direction; }

    /// Null for a hole without a thread.
    const ExcMfgHoleThreadPtr& holeThread() const { return m_holeThread; }
    void setHoleThread(ExcMfgHoleThreadPtr thread) { m_holeThread = std::move(thread); }

private:
    struct JsonForm;

    std::wstring m_name;
    double m_primaryDiameter = 0;
    double m_primaryDiameterMaxTol = 0;
    double m_primaryDiameterMinTol = 0;
    double m_primaryDepth = 0;
    double m_tipAngleDegrees = 0;
    EBottomLimitExtentType m_bottomLimitExtentType = EBottomLimitExtentType::unknown;
    ExcVector3d m_center;
    ExcVector3d m_direction;
    ExcMfgHoleThreadPtr m_holeThread;
};
const EnumTable& enumTable(ExcMfgHole::EBottomLimitExtentType);

/// A cylindrical hole.
class ExcMfgSimpleHole : public ExcMfgHole {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

private:
    struct JsonForm;
};

/// A conical hole.
class ExcMfgTaperHole : public ExcMfgHole {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double angle() const { return m_angle; }
    void setAngle(double angle) { m_angle = angle; }

private:
    struct JsonForm;

    double m_angle = 0;
};

/// A hole with a wider cylindrical mouth, which the members beyond those of the hole describe.
class ExcMfgCounterBoreHole : public ExcMfgHole {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double diameter() const { return m_diameter; }
    void setDiameter(double diameter) { m_diameter = diameter; }

    double maximumTolerance() const { return m_maximumTolerance; }
    void setMaximumTolerance(double tolerance) { m_maximumTolerance = tolerance; }

    double minimumTolerance() const { return m_minimumTolerance; }
    void setMinimumTolerance(double tolerance) { m_minimumTolerance = tolerance; }

    double depth() const { return m_depth; }
    void setDepth(double depth) { m_depth = depth; }

private:
    struct JsonForm;

    double m_diameter = 0;
    double m_maximumTolerance = 0;
    double m_minimumTolerance = 0;
    double m_depth = 0;
};

/// A hole with a conical mouth, which the members beyond those of the hole describe.
class ExcMfgCounterSinkHole : public ExcMfgHole {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double diameter() const { return m_diameter; }
    void setDiameter(double diameter) { m_diameter = diameter; }

    double maximumTolerance() const { return m_maximumTolerance; }
    void setMaximumTolerance(double tolerance) { m_maximumTolerance = tolerance; }

    double minimumTolerance() const { return m_minimumTolerance; }
    void setMinimumTolerance(double tolerance) { m_minimumTolerance = tolerance; }

    double taperAngle() const { return m_taperAngle; }
    void setTaperAngle(double angle) { m_taperAngle = angle; }

private:
    struct JsonForm;

    double m_diameter = 0;
    double m_maximumTolerance = 0;
    double m_minimumTolerance = 0;
    double m_taperAngle = 0;
};

/// A hole with a wider mouth that ends in a cone, which the members beyond those of the hole describe.
class ExcMfgCounterDrillHole : public ExcMfgHole {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double diameter() const { return m_diameter; }
    void setDiameter(double diameter) { m_diameter = diameter; }

    double maximumTolerance() const { return m_maximumTolerance; }
    void setMaximumTolerance(double tolerance) { m_maximumTolerance = tolerance; }

    double minimumTolerance() const { return m_minimumTolerance; }
    void setMinimumTolerance(double tolerance) { m_minimumTolerance = tolerance; }

    double depth() const { return m_depth; }
    void setDepth(double depth) { m_depth = depth; }

    double sinkDiameter() const { return m_sinkDiameter; }
    void setSinkDiameter(double diameter) { m_sinkDiameter = diameter; }

    double taperAngle() const { return m_taperAngle; }
    void setTaperAngle(double angle) { m_taperAngle = angle; }

private:
    struct JsonForm;

    double m_diameter = 0;
    double m_maximumTolerance = 0;
    double m_minimumTolerance = 0;
    double m_depth = 0;
    double m_sinkDiameter = 0;
    double m_taperAngle = 0;
};

} // namespace zeq
