// Datums, and the targets that establish some of them (ISO 10303-47).
#include <algorithm>
#include <array>
#include <cmath>
#include <set>

#include "step/annotation_reading.h"

namespace zeq::step {

namespace {

using Target = ExcPMIDatumTarget;

struct TargetForm {
    std::wstring_view name;
    Target::EType type;
};
constexpr std::array targetForms{
    TargetForm{L"point", Target::EType::point},
    TargetForm{L"line", Target::EType::line},
    TargetForm{L"curve", Target::EType::line},
    TargetForm{L"circular curve", Target::EType::line},
    TargetForm{L"circle", Target::EType::area_circular},
    TargetForm{L"rectangle", Target::EType::area_rectangular},
    TargetForm{L"area", Target::EType::area_face},
};

std::wstring letterOf(const Instance& datum) { return attribute(datum, "DATUM", 4, 0).text(); }

/// The aspects at the first end of relations that have an aspect at the second.
std::vector<Instance> relatedTo(const StepFile& file, const Instance& aspect, std::string_view relation) {
    std::vector<Instance> result;
    for (const Instance& user : aspect.users(relation))
        if (file.at(attribute(user, "SHAPE_ASPECT_RELATIONSHIP", 0, 3)) == aspect)
            result.push_back(file.at(attribute(user, "SHAPE_ASPECT_RELATIONSHIP", 0, 2)));
    return result;
}

/// The datums that a target or a feature helps to establish.
std::vector<Instance> datumsOf(const StepFile& file, const Instance& aspect) {
    std::vector<Instance> result;
    for (const Instance& user : aspect.users("SHAPE_ASPECT_RELATIONSHIP")) {
        const Instance datum = file.at(attribute(user, "SHAPE_ASPECT_RELATIONSHIP", 0, 3));
        if (datum.is("DATUM")) result.push_back(datum);
    }
    return result;
}

using Vector = std::array<double, 3>;

/// The coordinates of a point or a direction; nothing for anything else.
std::optional<Vector> coordinates(const Instance& instance) {
    if (!instance.is("CARTESIAN_POINT") && !instance.is("DIRECTION")) return std::nullopt;
    const part21::List items = instance.parameters()[1].items();
    Vector result{};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::optional<double> number = items[i].number();
        if (!number) return std::nullopt;
        result[i] = *number;
    }
    return result;
}

double dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// Nothing for what has no direction.
std::optional<Vector> unit(const Vector& vector) {
    const double length = std::sqrt(dot(vector, vector));
    if (!std::isfinite(length) || length < 1e-12) return std::nullopt;
    return Vector{vector[0] / length, vector[1] / length, vector[2] / length};
}

/// A placement of a target: its origin and the directions of its length and width.
struct Placement {
    Vector origin;
    std::optional<Vector> x, y;
};

std::optional<Placement> placementOf(const StepFile& file, const Instance& instance) {
    const auto parameters = instance.parameters();
    const auto origin = coordinates(file.at(parameters[1]));
    if (!origin) return std::nullopt;
    Placement placement{*origin, {}, {}};
    const auto axis = coordinates(file.at(parameters[2])), reference = coordinates(file.at(parameters[3]));
    const auto z = unit(axis.value_or(Vector{0, 0, 1}));
    Vector x = reference.value_or(Vector{1, 0, 0});
    if (!z) return placement;
    const double along = dot(x, *z);
    for (std::size_t i = 0; i < 3; ++i) x[i] -= along * (*z)[i];
    placement.x = unit(x);
    if (placement.x) {
        const Vector &a = *z, &b = *placement.x;
        placement.y = Vector{a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
    }
    return placement;
}

/// A reading of the property of a placed target that has its placement and sizes.
class TargetReader {
public:
    TargetReader(StepFile& file, const Instance& instance, Target& target)
        : m_file(file), m_instance(instance), m_target(target) {}

    void read() {
        for (const Instance& representation : representationsOf(m_file, m_instance))
            if (representation.is("SHAPE_REPRESENTATION_WITH_PARAMETERS")) readParameters(representation);
        std::wstring text = m_diameter || !m_length ? size(m_diameter) : size(m_length);
        if (m_width) text += L"x" + size(m_width);
        m_target.setHasDiameter(m_diameter.has_value());
        m_target.setUpperText(text);
        if (m_placement) setZone();
    }

private:
    static std::wstring size(const std::optional<double>& value) { return value ? numberText(*value) : L""; }

    void readParameters(const Instance& representation) {
        for (const Instance& item : itemsOf(m_file, attribute(representation, "REPRESENTATION", 0, 1))) {
            const std::wstring name = nameOf(item);
            if (item.is("AXIS2_PLACEMENT_3D")) {
                m_placement = placementOf(m_file, item);
                const Instance context = m_file.at(attribute(representation, "REPRESENTATION", 0, 2));
                m_scale = m_file.lengthUnit(context).value_or(m_file.millimeters()) / m_file.millimeters();
            } else if (name == L"target diameter") {
                m_diameter = valueOf(item);
            } else if (name == L"target length") {
                m_length = valueOf(item);
            } else if (name == L"target width") {
                m_width = valueOf(item);
            }
        }
    }

    std::optional<double> valueOf(const Instance& item) {
        const auto value = m_file.value(item);
        if (!value) tell(m_file, L"a size of it cannot be read", m_instance);
        return value;
    }

    void setZone() {
        const bool isRectangle = m_length && m_width && m_placement->x && m_placement->y;
        const auto corner = [&](double side) {
            Vector point{};
            for (std::size_t i = 0; i < 3; ++i) {
                point[i] = m_placement->origin[i] * m_scale;
                if (isRectangle)
                    point[i] += side * (*m_length * (*m_placement->x)[i] + *m_width * (*m_placement->y)[i]);
            }
            return ExcVector3d(point[0], point[1], point[2]);
        };
        m_target.setZonePoint1(corner(-0.5));
        m_target.setZonePoint2(corner(0.5));
    }

    StepFile& m_file;
    const Instance m_instance;
    Target& m_target;
    std::optional<Placement> m_placement;
    double m_scale = 1;
    std::optional<double> m_diameter, m_length, m_width;
};

/// Its own name, or the first that another one has.
std::wstring nameFor(const Instance& instance, const std::vector<Instance>& others) {
    std::wstring name = nameOf(instance);
    for (const Instance& other : others)
        if (name.empty()) name = nameOf(other);
    return name;
}

} // namespace

bool isDatumTarget(const Instance& instance) {
    return instance.is("DATUM_TARGET") || instance.is("PLACED_DATUM_TARGET_FEATURE");
}

std::vector<Instance> featuresOfDatum(const StepFile& file, const Instance& datum) {
    if (!datum.is("DATUM") && !datum.is("COMMON_DATUM")) return {};
    return relatedTo(file, datum, "SHAPE_ASPECT_RELATIONSHIP");
}

SemanticAnnotation readDatum(StepFile& file, const Instance& datum) {
    auto result = std::make_shared<ExcPMIDatum>();
    SemanticAnnotation annotation = annotationOf(file, datum, result);
    result->setLabel(letterOf(datum));
    std::vector<Instance> features;
    for (const Instance& feature : featuresOfDatum(file, datum)) {
        if (isDatumTarget(feature)) {
            result->addTargetId(idOf(feature));
        } else if (feature) {
            features.push_back(feature);
            annotation.numbers.push_back(feature.number());
        }
    }
    result->setName(nameFor(datum, features));
    link(file, *result, features);
    return annotation;
}

SemanticAnnotation readDatumTarget(StepFile& file, const Instance& target) {
    auto result = std::make_shared<Target>();
    SemanticAnnotation annotation = annotationOf(file, target, result);
    result->setName(nameOf(target));
    std::wstring label = attribute(target, "DATUM_TARGET", 4, 0).text();
    for (const Instance& datum : datumsOf(file, target))
        if (!label.starts_with(letterOf(datum))) label.insert(0, letterOf(datum));
    result->setLabel(label);
    result->setLowerText(label);

    const std::wstring form = attribute(target, "SHAPE_ASPECT", 0, 1).text();
    const auto known = std::ranges::find(targetForms, form, &TargetForm::name);
    if (known == targetForms.end())
        tell(file, L"its form '" + form + L"' is not known", target);
    else
        result->setTargetType(known->type);
    TargetReader(file, target, *result).read();

    std::vector<Instance> aspects = relatedTo(file, target, "FEATURE_FOR_DATUM_TARGET_RELATIONSHIP");
    aspects.push_back(target);
    link(file, *result, aspects);
    return annotation;
}

} // namespace zeq::step
