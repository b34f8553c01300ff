// Geometric tolerances: GEOMETRIC_TOLERANCE and its kinds (ISO 10303-47 and -242), and their zones.
#include <algorithm>
#include <array>
#include <set>

#include "step/annotation_reading.h"

namespace zeq::step {

namespace {

using GDT = ExcPMIGDT;
using EType = GDT::EToleranceType;
using EModifier = GDT::EToleranceModifier;
using EZone = GDT::EToleranceValueType;

struct Characteristic {
    std::string_view type;
    EType characteristic;
};
constexpr std::array characteristics{
    Characteristic{"STRAIGHTNESS_TOLERANCE", EType::form_straightness},
    Characteristic{"FLATNESS_TOLERANCE", EType::form_flatness},
    Characteristic{"ROUNDNESS_TOLERANCE", EType::form_circularity},
    Characteristic{"CYLINDRICITY_TOLERANCE", EType::form_cylindricity},
    Characteristic{"LINE_PROFILE_TOLERANCE", EType::form_profile_any_line},
    Characteristic{"SURFACE_PROFILE_TOLERANCE", EType::form_profile_any_surface},
    Characteristic{"PARALLELISM_TOLERANCE", EType::orientation_parallelism},
    Characteristic{"PERPENDICULARITY_TOLERANCE", EType::orientation_perpendicularity},
    Characteristic{"ANGULARITY_TOLERANCE", EType::orientation_angularity},
    Characteristic{"POSITION_TOLERANCE", EType::location_true_position},
    Characteristic{"CONCENTRICITY_TOLERANCE", EType::location_concentricity},
    Characteristic{"COAXIALITY_TOLERANCE", EType::location_coaxiality},
    Characteristic{"SYMMETRY_TOLERANCE", EType::location_symmetry},
    Characteristic{"CIRCULAR_RUNOUT_TOLERANCE", EType::run_out_circular},
    Characteristic{"TOTAL_RUNOUT_TOLERANCE", EType::run_out_total},
};

/// An enumerator of geometric_tolerance_modifier or limit_condition.
struct Modifier {
    std::string_view name;
    EModifier modifier;
    std::wstring_view text = {}; ///< in place of a modifier that there is none for
};
constexpr EModifier none = EModifier::no_modifier;
constexpr std::array modifiers{
    Modifier{"MAXIMUM_MATERIAL_REQUIREMENT", EModifier::material_condition_maximum},
    Modifier{"MAXIMUM_MATERIAL_CONDITION", EModifier::material_condition_maximum},
    Modifier{"LEAST_MATERIAL_REQUIREMENT", EModifier::material_condition_least},
    Modifier{"LEAST_MATERIAL_CONDITION", EModifier::material_condition_least},
    Modifier{"REGARDLESS_OF_FEATURE_SIZE", EModifier::material_condition_regardless_of_feature_size},
    Modifier{"FREE_STATE", EModifier::free_state_free},
    Modifier{"TANGENT_PLANE", EModifier::tangent_plane_tangent},
    Modifier{"ASSOCIATED_TANGENT_FEATURE", EModifier::tangent_plane_tangent},
    Modifier{"STATISTICAL_TOLERANCE", EModifier::statistical_symbol},
    Modifier{"COMMON_ZONE", EModifier::common_zone},
    Modifier{"SEPARATE_ZONES", EModifier::separate_zone},
    Modifier{"DERIVED_FEATURE", EModifier::derived_feature},
    Modifier{"CIRCLE_A", EModifier::derived_feature},
    Modifier{"OFFSET_ZONE", EModifier::offset_zone},
    Modifier{"UNSPECIFIED_LINEAR_TOLERANCE_ZONE_OFFSET", EModifier::offset_zone},
    Modifier{"UNSPECIFIED_ANGULAR_TOLERANCE_ZONE_OFFSET", EModifier::variable_angle},
    Modifier{"VARIABLE_ANGLE", EModifier::variable_angle},
    Modifier{"ASSOCIATED_MINMAX_FEATURE", EModifier::minimax_feature},
    Modifier{"ASSOCIATED_LEAST_SQUARE_FEATURE", EModifier::least_square_feature},
    Modifier{"ASSOCIATED_MAXIMUM_INSCRIBED_FEATURE", EModifier::maximum_inscribed_feature},
    Modifier{"ASSOCIATED_MINIMUM_INSCRIBED_FEATURE", EModifier::minimum_circumscribed_feature},
    Modifier{"REFERENCE_MINIMAX_FEATURE_WITHOUT_CONSTRAINT", EModifier::minimax_association},
    Modifier{"REFERENCE_MINIMAX_FEATURE_WITH_EXTERNAL_MATERIAL_CONSTRAINT",
             EModifier::minimax_association_with_external_constraint},
    Modifier{"REFERENCE_MINIMAX_FEATURE_WITH_INTERNAL_MATERIAL_CONSTRAINT",
             EModifier::minimax_association_with_internal_constraint},
    Modifier{"REFERENCE_LEAST_SQUARE_FEATURE_WITHOUT_CONSTRAINT", EModifier::least_square_association},
    Modifier{"REFERENCE_LEAST_SQUARE_FEATURE_WITH_EXTERNAL_MATERIAL_CONSTRAINT",
             EModifier::least_square_association_with_external_constraint},
    Modifier{"REFERENCE_LEAST_SQUARE_FEATURE_WITH_INTERNAL_MATERIAL_CONSTRAINT",
             EModifier::least_square_association_with_internal_constraint},
    Modifier{"REFERENCE_MINIMUM_CIRCUMSCRIBED_FEATURE", EModifier::minimum_circumscribed_association},
    Modifier{"REFERENCE_MAXIMUM_INSCRIBED_FEATURE", EModifier::maximum_inscribed_association},
    Modifier{"TOTAL_RANGE_DEVIATIONS", EModifier::total_range_of_deviations},
    Modifier{"PEAK_HEIGHT", EModifier::peak_height},
    Modifier{"VALLEY_DEPTH", EModifier::valley_depth},
    Modifier{"STANDARD_DEVIATION", EModifier::standard_deviation},
    Modifier{"RECIPROCITY_REQUIREMENT", none, L"Ⓡ"},
    Modifier{"SEPARATE_REQUIREMENT", none, L"SEP REQT"},
    Modifier{"ANY_CROSS_SECTION", none, L"ACS"},
    Modifier{"EACH_RADIAL_ELEMENT", none, L"EACH RADIAL ELEMENT"},
    Modifier{"EACH_ELEMENT", none, L"EACH ELEMENT"},
    Modifier{"LINE_ELEMENT", none, L"LE"},
    Modifier{"NOT_CONVEX", none, L"NC"},
    Modifier{"MAJOR_DIAMETER", none, L"MD"},
    Modifier{"MINOR_DIAMETER", none, L"LD"},
    Modifier{"PITCH_DIAMETER", none, L"PD"},
    Modifier{"UNITED_FEATURE", none, L"UF"},
    Modifier{"CONTINUOUS_FEATURES", none, L"CF"},
    Modifier{"INDIVIDUALLY", none, L"INDIVIDUALLY"},
    Modifier{"STOCK", none, L"STOCK"},
};

/// The form of a zone, and what stands in front of the value for it.
struct Form {
    std::wstring_view name;
    EZone zone;
};
constexpr std::array forms{
    Form{L"cylindrical or circular", EZone::diameter},
    Form{L"within a circle", EZone::diameter},
    Form{L"within a cylinder", EZone::diameter},
    Form{L"spherical", EZone::spherical},
    Form{L"within a sphere", EZone::spherical},
    Form{L"between two concentric circles", EZone::none},
    Form{L"between two coaxial cylinders", EZone::none},
    Form{L"between two equidistant curves", EZone::none},
    Form{L"between two equidistant surfaces", EZone::none},
    Form{L"between two parallel lines", EZone::none},
    Form{L"between two parallel straight lines", EZone::none},
    Form{L"between two parallel planes", EZone::none},
    Form{L"non uniform", EZone::none},
    Form{L"unknown", EZone::none},
};

/// A reading of one tolerance with its segments.
class ToleranceReader {
public:
    ToleranceReader(AnnotationContext& context, const Instance& instance)
        : m_context(context), m_file(context.file), m_first(instance) {}

    std::optional<SemanticAnnotation> read() {
        std::optional<SemanticAnnotation> result;
        std::vector<Instance> targets;
        for (Instance segment = m_first; segment; segment = below(segment)) {
            const GDT::RowPtr row = readRow(segment);
            if (!row) continue;
            m_tolerance->addGdtRow(row);
            const Instance target = m_file.at(attribute(segment, "GEOMETRIC_TOLERANCE", 0, 3));
            if (target.is("ALL_AROUND_SHAPE_ASPECT")) m_tolerance->setAllAround(1);
            if (target.is("BETWEEN_SHAPE_ASPECT")) addText(L"↔");
            targets.push_back(target);
            if (!result)
                result = annotationOf(m_file, segment, m_tolerance);
            else
                result->numbers.push_back(segment.number());
        }
        if (!result) return result;
        m_tolerance->setToleranceType(characteristicOf(m_first));
        m_tolerance->setName(nameOf(m_first));
        if (m_tolerance->name().empty())
            m_tolerance->setName(attribute(m_first, "GEOMETRIC_TOLERANCE", 0, 1).text());
        link(m_file, *m_tolerance, targets);
        if (!m_texts.empty()) {
            std::wstring suffix;
            for (const std::wstring& text : m_texts) append(suffix, text);
            m_tolerance->setNote(std::make_shared<ExcPMIText>());
            m_tolerance->note()->setSuffixString(suffix);
        }
        return result;
    }

private:
    Instance below(const Instance& segment) const {
        const auto found = m_context.segmentBelow.find(segment.number());
        return found == m_context.segmentBelow.end() ? Instance() : found->second;
    }

    /// Null, which is told, if there is no magnitude to be read.
    GDT::RowPtr readRow(const Instance& segment) {
        const auto magnitude = m_file.value(m_file.at(attribute(segment, "GEOMETRIC_TOLERANCE", 0, 2)));
        if (!magnitude) {
            tell(m_file, L"its magnitude cannot be read", segment);
            return nullptr;
        }
        auto row = std::make_shared<GDT::Row>();
        row->setToleranceValue(*magnitude);
        readModifiers(segment, *row);
        readUnit(segment, *row);
        for (const Instance& zone : segment.users("TOLERANCE_ZONE")) readZone(segment, zone, *row);
        row->setReferenceFrame(readFrame(m_file, segment));
        return row;
    }

    void readModifiers(const Instance& segment, GDT::Row& row) {
        const auto add = [&](std::string_view name) {
            const auto known = std::ranges::find(modifiers, name, &Modifier::name);
            if (known == modifiers.end())
                tell(m_file, L"its modifier '" + wide(name) + L"' is not known", segment);
            else if (known->modifier != none)
                row.addZoneModifier(known->modifier);
            else
                addText(std::wstring(known->text));
        };
        constexpr std::string_view withModifiers = "GEOMETRIC_TOLERANCE_WITH_MODIFIERS";
        if (segment.is(withModifiers) || segment.is("GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE"))
            for (const Value& each : attribute(segment, withModifiers, 4, 0).items()) add(each.name());
        if (segment.is("MODIFIED_GEOMETRIC_TOLERANCE"))
            add(attribute(segment, "MODIFIED_GEOMETRIC_TOLERANCE", 4, 0).name());
        addMagnitude(segment, "GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE", 5, EModifier::maximum, row);
        addMagnitude(segment, "UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE", 4, EModifier::unequally_disposed_zone,
                     row);
    }

    void addMagnitude(const Instance& instance, std::string_view type, std::size_t inherited,
                      EModifier modifier, GDT::Row& row) {
        if (!instance.is(type)) return;
        if (const auto value = m_file.value(m_file.at(attribute(instance, type, inherited, 0))))
            row.addZoneModifier(modifier, *value);
        else {
            row.addZoneModifier(modifier);
            tell(m_file, L"the value of its modifier cannot be read", instance);
        }
    }

    void readUnit(const Instance& segment, GDT::Row& row) {
        constexpr std::string_view withUnit = "GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT";
        constexpr std::string_view withArea = "GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT";
        if (!segment.is(withUnit) && !segment.is(withArea)) return;
        const auto size = m_file.value(m_file.at(attribute(segment, withUnit, 4, 0)));
        if (!size) return tell(m_file, L"the unit that it holds on cannot be read", segment);
        double second = 0;
        if (segment.is(withArea)) {
            const std::string_view form = attribute(segment, withArea, 5, 0).name();
            const auto other = m_file.value(m_file.at(attribute(segment, withArea, 5, 1)));
            if (form == "RECTANGULAR" || form == "SQUARE")
                second = other.value_or(*size);
            else
                addText(L"PER " + wide(form) + L" AREA");
        }
        row.setRateUnit(*size, second);
    }

    void readZone(const Instance& segment, const Instance& zone, GDT::Row& row) {
        const std::wstring name = nameOf(m_file.at(attribute(zone, "TOLERANCE_ZONE", 4, 1)));
        const auto form = std::ranges::find(forms, name, &Form::name);
        if (form == forms.end())
            tell(m_file, L"its zone '" + name + L"' is not known", segment);
        else
            row.setToleranceValueType(form->zone);
        if (name == L"non uniform") addText(L"NON-UNIFORM");
        for (const Instance& user : zone.users()) {
            if (user.is("PROJECTED_ZONE_DEFINITION") || user.is("PROJECTED_ZONE_DEFINITION_WITH_OFFSET"))
                addProjection(segment, user, row);
            else if (user.is("RUNOUT_ZONE_DEFINITION"))
                addAngle(segment, user);
        }
    }

    void addProjection(const Instance& segment, const Instance& definition, GDT::Row& row) {
        const Value length = attribute(definition, "PROJECTED_ZONE_DEFINITION", 2, 1);
        if (const auto value = m_file.value(m_file.at(length)))
            row.addZoneModifier(EModifier::projected_state_projected, *value);
        else {
            row.addZoneModifier(EModifier::projected_state_projected);
            tell(m_file, L"the length of its projected zone cannot be read", segment);
        }
    }

    /// The direction that a run-out is measured in: RUNOUT_ZONE_ORIENTATION(angle).
    void addAngle(const Instance& segment, const Instance& definition) {
        const Instance orientation = m_file.at(attribute(definition, "RUNOUT_ZONE_DEFINITION", 2, 0));
        if (const auto angle = m_file.value(m_file.at(orientation.parameters()[0])))
            addText(numberText(*angle) + L"°");
        else
            tell(m_file, L"the angle of its zone cannot be read", segment);
    }

    void addText(const std::wstring& text) {
        if (std::ranges::find(m_texts, text) == m_texts.end()) m_texts.push_back(text);
    }

    AnnotationContext& m_context;
    StepFile& m_file;
    const Instance m_first;
    const ExcPMIGDTPtr m_tolerance = std::make_shared<GDT>();
    std::vector<std::wstring> m_texts; ///< in the suffix of the note, each once
};

} // namespace

EType characteristicOf(const Instance& tolerance) {
    const auto found = std::ranges::find_if(
        characteristics, [&](const Characteristic& each) { return tolerance.is(each.type); });
    return found == characteristics.end() ? EType::unknown : found->characteristic;
}

std::optional<SemanticAnnotation> readTolerance(AnnotationContext& context, const Instance& tolerance) {
    return ToleranceReader(context, tolerance).read();
}

} // namespace zeq::step
