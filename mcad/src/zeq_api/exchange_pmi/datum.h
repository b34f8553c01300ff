// Datums, and the targets on the part that establish them. Objects are used by one thread at a time.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_pmi/pmi_object.h"

namespace zeq {

/// A datum target symbol: a place where a datum is to be established.
class ExcPMIDatumTarget : public ExcPMIAnnotation {
public:
    enum class EType {
        unknown,
        point,
        line,
        area_circular,
        area_rectangular,
        area_face,
        feature,
        user_defined
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EPMIAnnotationType type() const override { return EPMIAnnotationType::datum_target; }

    const std::wstring& label() const { return m_label; }
    void setLabel(const std::wstring& label) { m_label = label; }

    EType targetType() const { return m_targetType; }
    void setTargetType(EType type) { m_targetType = type; }

    bool hasDiameter() const { return m_hasDiameter; }
    void setHasDiameter(bool has) { m_hasDiameter = has; }

    /// The upper half of the symbol.
    const std::wstring& upperText() const { return m_upperText; }
    void setUpperText(const std::wstring& text) { m_upperText = text; }

    /// The lower half of the symbol.
    const std::wstring& lowerText() const { return m_lowerText; }
    void setLowerText(const std::wstring& text) { m_lowerText = text; }

    /// The first of the two points that the target zone spans.
    const ExcVector3d& zonePoint1() const { return m_targetZone[0]; }
    void setZonePoint1(const ExcVector3d& point) { m_targetZone[0] = point; }

    const ExcVector3d& zonePoint2() const { return m_targetZone[1]; }
    void setZonePoint2(const ExcVector3d& point) { m_targetZone[1] = point; }

private:
    struct JsonForm;

    std::wstring m_label;
    EType m_targetType = EType::unknown;
    bool m_hasDiameter = false;
    std::wstring m_upperText;
    std::wstring m_lowerText;
    std::array<ExcVector3d, 2> m_targetZone;
};
const EnumTable& enumTable(ExcPMIDatumTarget::EType);
using ExcPMIDatumTargetPtr = std::shared_ptr<ExcPMIDatumTarget>;

/// A datum feature symbol.
class ExcPMIDatum : public ExcPMIAnnotation {
public:
    /// Appends to the target identifiers.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    EPMIAnnotationType type() const override { return EPMIAnnotationType::datum; }

    /// The letter of the datum.
    const std::wstring& label() const { return m_label; }
    void setLabel(const std::wstring& label) { m_label = label; }

    /// Identifiers of the targets that establish the datum. Nothing checks that they are there.
    const std::vector<std::wstring>& targetIds() const { return m_targetIds; }
    void addTargetId(const std::wstring& id) { m_targetIds.push_back(id); }
    void setTargetIds(const std::vector<std::wstring>& ids) { m_targetIds = ids; }

private:
    struct JsonForm;

    std::wstring m_label;
    std::vector<std::wstring> m_targetIds;
};
using ExcPMIDatumPtr = std::shared_ptr<ExcPMIDatum>;

} // namespace zeq
