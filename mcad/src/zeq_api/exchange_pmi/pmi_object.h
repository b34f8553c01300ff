// What all product and manufacturing information (PMI) has in common: identity, and the placement, leaders and
// texts of annotations. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_common/geometry.h"
#include "zeq_api/json/enum_names.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// What kind of annotation something is. A flag note and a note on all are notes: their flags tell them apart,
/// and no class says `flag_note` or `NOA`. // sic
enum class EPMIAnnotationType {
    unknown,
    datum,
    datum_target,
    note,
    flag_note,
    NOA,
    roughness,
    GDT,
    dimension
};
const EnumTable& enumTable(EPMIAnnotationType);

/// How an annotation is turned in the plane of its view.
enum class EPMIOrientation {
    horizontal,
    vertical,
    parallel,
    perpendicular,
    dim_angle ///< by its angle
};
const EnumTable& enumTable(EPMIOrientation);

/// Something of the PMI that can be named, hidden, and referred to.
class ExcPMIObject : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    /// By which datums, views and captures refer to the object. It is the producer's; the library makes none.
    const std::wstring& id() const { return m_id; }
    void setId(const std::wstring& id) { m_id = id; }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

private:
    struct JsonForm;

    std::wstring m_name;
    std::wstring m_id;
    bool m_hidden = false;
};

/// A line from an annotation to what it is about.
class ExcPMILeader : public IJsonObject {
public:
    /// Appends to the points.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// A polyline in the plane of the annotation view.
    const std::vector<ExcVector2d>& points() const { return m_points; }
    void setPoints(const std::vector<ExcVector2d>& points) { m_points = points; }
    void addPoint(const ExcVector2d& point) { m_points.push_back(point); }

private:
    struct JsonForm;

    std::vector<ExcVector2d> m_points;
};
using ExcPMILeaderPtr = std::shared_ptr<ExcPMILeader>;

/// The texts around the value of a dimension, a tolerance frame or a datum reference.
class ExcPMIText : public IJsonObject {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& afterString() const { return m_textAfter; }
    void setAfterString(const std::wstring& text) { m_textAfter = text; }

    const std::wstring& beforeString() const { return m_textBefore; }
    void setBeforeString(const std::wstring& text) { m_textBefore = text; }

    const std::wstring& belowString() const { return m_textBelow; }
    void setBelowString(const std::wstring& text) { m_textBelow = text; }

    const std::wstring& lowerString() const { return m_textLower; }
    void setLowerString(const std::wstring& text) { m_textLower = text; }

    const std::wstring& prefixString() const { return m_textPrefix; }
    void setPrefixString(const std::wstring& text) { m_textPrefix = text; }

    const std::wstring& suffixString() const { return m_textSuffix; }
    void setSuffixString(const std::wstring& text) { m_textSuffix = text; }

    const std::wstring& upperString() const { return m_textUpper; }
    void setUpperString(const std::wstring& text) { m_textUpper = text; }

private:
    struct JsonForm;

    std::wstring m_textAfter;
    std::wstring m_textBefore;
    std::wstring m_textBelow;
    std::wstring m_textLower;
    std::wstring m_textPrefix;
    std::wstring m_textSuffix;
    std::wstring m_textUpper;
};
using ExcPMITextPtr = std::shared_ptr<ExcPMIText>;

/// Something that is placed in an annotation view and says something about entities of the model.
class ExcPMIAnnotation : public ExcPMIObject {
public:
    /// Appends to the linked elements and to the leaders.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    /// Written, and never read: the class of an object decides.
    virtual EPMIAnnotationType type() const = 0;

    /// The anchor, in the plane of the annotation view.
    const ExcVector2d& position() const { return m_position; }
    void setPosition(const ExcVector2d& position) { m_position = position; }

    EPMIOrientation orientation() const { return m_orientation; }
    void setOrientation(EPMIOrientation orientation) { m_orientation = orientation; }

    /// Written only with the orientation `dim_angle`.
    double angle() const { return m_angle; }
    void setAngle(double angle) { m_angle = angle; }

    /// Depth below or above the plane of the annotation view.
    double zDepth() const { return m_zDepth; }
    void setZDepth(double depth) { m_zDepth = depth; }

    /// The entities of the model that the annotation applies to.
    const std::vector<std::shared_ptr<ExcEntity>>& linkedElements() const { return m_linkedElements; }
    /// Null is refused with a warning, as in all lists of held objects.
    void addLinkedElement(const std::shared_ptr<ExcEntity>& element);
    void addLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements);
    void setLinkedElements(const std::vector<std::shared_ptr<ExcEntity>>& elements);

    const std::vector<ExcPMILeaderPtr>& leaders() const { return m_leaders; }
    void addLeader(const ExcPMILeaderPtr& leader);
    void addLeaders(const std::vector<ExcPMILeaderPtr>& leaders);
    void setLeaders(const std::vector<ExcPMILeaderPtr>& leaders);

private:
    struct JsonForm;
    bool isAtAngle() const { return m_orientation == EPMIOrientation::dim_angle; }

    ExcVector2d m_position;
    EPMIOrientation m_orientation = EPMIOrientation::horizontal;
    double m_angle = 0;
    double m_zDepth = 0;
    std::vector<std::shared_ptr<ExcEntity>> m_linkedElements;
    std::vector<ExcPMILeaderPtr> m_leaders;
};
using ExcPMIAnnotationPtr = std::shared_ptr<ExcPMIAnnotation>;

} // namespace zeq
