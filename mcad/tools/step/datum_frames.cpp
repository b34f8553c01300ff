// The datums that a tolerance refers to: datum systems with their compartments, and the lists of datum references of
// older editions.
#include <algorithm>
#include <array>
#include <map>

#include "step/annotation_reading.h"

namespace zeq::step {

namespace {

using GDT = ExcPMIGDT;
using EModifier = GDT::EToleranceModifier;

/// An enumerator of simple_datum_reference_modifier, datum_reference_modifier_type or limit_condition.
struct Modifier {
    std::string_view name;
    EModifier modifier;
    std::wstring_view text = {}; ///< of one that there is no modifier for; the value follows it
};
constexpr EModifier none = EModifier::no_modifier;
constexpr std::array modifiers{
    Modifier{"MAXIMUM_MATERIAL_REQUIREMENT", EModifier::material_condition_maximum},
    Modifier{"MAXIMUM_MATERIAL_CONDITION", EModifier::material_condition_maximum},
    Modifier{"LEAST_MATERIAL_REQUIREMENT", EModifier::material_condition_least},
    Modifier{"LEAST_MATERIAL_CONDITION", EModifier::material_condition_least},
    Modifier{"REGARDLESS_OF_FEATURE_SIZE", EModifier::material_condition_regardless_of_feature_size},
    Modifier{"FREE_STATE", EModifier::free_state_free},
    Modifier{"ORIENTATION", EModifier::orientation_constraint},
    Modifier{"PROJECTED", EModifier::projected_state_projected},
    Modifier{"TRANSLATION", none, L"▷"},
    Modifier{"BASIC", none, L"[BASIC]"},
    Modifier{"CONTACTING_FEATURE", none, L"[CF]"},
    Modifier{"DISTANCE_VARIABLE", none, L"[DV]"},
    Modifier{"ANY_CROSS_SECTION", none, L"[ACS]"},
    Modifier{"ANY_LONGITUDINAL_SECTION", none, L"[ALS]"},
    Modifier{"LINE", none, L"[SL]"},
    Modifier{"PLANE", none, L"[PL]"},
    Modifier{"POINT", none, L"[PT]"},
    Modifier{"MAJOR_DIAMETER", none, L"[MD]"},
    Modifier{"MINOR_DIAMETER", none, L"[LD]"},
    Modifier{"PITCH_DIAMETER", none, L"[PD]"},
    Modifier{"DEGREE_OF_FREEDOM_CONSTRAINT_X", none, L"[x]"},
    Modifier{"DEGREE_OF_FREEDOM_CONSTRAINT_Y", none, L"[y]"},
    Modifier{"DEGREE_OF_FREEDOM_CONSTRAINT_Z", none, L"[z]"},
    Modifier{"DEGREE_OF_FREEDOM_CONSTRAINT_U", none, L"[u]"},
    Modifier{"DEGREE_OF_FREEDOM_CONSTRAINT_V", none, L"[v]"},
    Modifier{"DEGREE_OF_FREEDOM_CONSTRAINT_W", none, L"[w]"},
    Modifier{"CIRCULAR_OR_CYLINDRICAL", none, L"⌀"},
    Modifier{"SPHERICAL", none, L"S⌀"},
    Modifier{"DISTANCE", none, L"DISTANCE "},
};

/// Builds the frame of one tolerance, compartment by compartment.
class FrameReader {
public:
    FrameReader(StepFile& file, const Instance& tolerance) : m_file(file), m_tolerance(tolerance) {}

    std::shared_ptr<GDT::Frame> read() {
        std::map<double, std::vector<Instance>> references; // by their precedence; equal ones are one datum
        for (const Value& each :
             attribute(m_tolerance, "GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE", 4, 0).items()) {
            const Instance instance = m_file.at(each);
            if (instance.is("DATUM_SYSTEM"))
                readSystem(instance);
            else if (instance.is("DATUM_REFERENCE") || instance.is("REFERENCED_MODIFIED_DATUM"))
                references[attribute(instance, "DATUM_REFERENCE", 0, 0).number().value_or(0)].push_back(
                    instance);
            else if (each.kind() == part21::Kind::reference)
                tell(m_file, L"its datum reference cannot be read", m_tolerance);
        }
        for (const auto& [precedence, instances] : references) {
            GDT::DatumRef compartment;
            for (const Instance& each : instances) readReference(each, compartment);
            keep(std::move(compartment));
        }
        return m_frame;
    }

private:
    void readSystem(const Instance& system) {
        for (const Instance& each : m_file.referred(attribute(system, "DATUM_SYSTEM", 4, 0))) {
            GDT::DatumRef compartment;
            const std::vector<Value> common = modifiersOf(each);
            for (const Instance& base : basesOf(each)) {
                if (base.is("DATUM") || base.is("COMMON_DATUM")) {
                    addDatum(base, common, compartment);
                    continue;
                }
                std::vector<Value> own = modifiersOf(base); // an element of a common datum
                own.insert(own.end(), common.begin(), common.end());
                for (const Instance& datum : basesOf(base)) addDatum(datum, own, compartment);
            }
            if (compartment.modifiedDatums().empty())
                tell(m_file, L"its datum reference cannot be read", m_tolerance);
            keep(std::move(compartment));
        }
        if (m_frame) m_frame->setLabel(nameOf(system));
    }

    std::vector<Instance> basesOf(const Instance& reference) const {
        return m_file.referred(attribute(reference, "GENERAL_DATUM_REFERENCE", 4, 0));
    }

    std::vector<Value> modifiersOf(const Instance& reference) const {
        std::vector<Value> result;
        for (const Value& each : attribute(reference, "GENERAL_DATUM_REFERENCE", 4, 1).items())
            result.push_back(each);
        return result;
    }

    void readReference(const Instance& reference, GDT::DatumRef& compartment) {
        std::vector<Value> own;
        if (reference.is("REFERENCED_MODIFIED_DATUM"))
            own.push_back(attribute(reference, "REFERENCED_MODIFIED_DATUM", 2, 0));
        addDatum(m_file.at(attribute(reference, "DATUM_REFERENCE", 0, 1)), own, compartment);
    }

    void addDatum(const Instance& datum, const std::vector<Value>& itsModifiers, GDT::DatumRef& compartment) {
        if (!datum.is("DATUM") && !datum.is("COMMON_DATUM"))
            return tell(m_file, L"its datum reference cannot be read", m_tolerance);
        GDT::ModifiedDatum modified;
        modified.setDatumId(idOf(datum));
        for (const Value& each : itsModifiers) addModifier(each, modified, compartment);
        const std::wstring letter = attribute(datum, "DATUM", 4, 0).text();
        compartment.setLabel(compartment.label() + (compartment.label().empty() ? L"" : L"-") + letter);
        compartment.addModifiedDatum(std::move(modified));
    }

    /// An enumeration, SIMPLE_DATUM_REFERENCE_MODIFIER(.BASIC.), or a DATUM_REFERENCE_MODIFIER_WITH_VALUE.
    void addModifier(const Value& value, GDT::ModifiedDatum& datum, GDT::DatumRef& compartment) {
        const Instance withValue = m_file.at(value);
        const Value name = withValue                             ? withValue.parameters()[0]
                           : value.kind() == part21::Kind::typed ? value.items()[0]
                                                                 : value;
        const auto known = std::ranges::find(modifiers, name.name(), &Modifier::name);
        if (known == modifiers.end())
            return tell(m_file, L"its modifier '" + wide(name.name()) + L"' is not known", m_tolerance);
        std::optional<double> magnitude;
        if (withValue && !(magnitude = m_file.value(m_file.at(withValue.parameters()[1]))))
            tell(m_file, L"the value of its modifier cannot be read", m_tolerance);
        if (known->modifier == none) {
            const ExcPMITextPtr text =
                compartment.text() ? compartment.text() : std::make_shared<ExcPMIText>();
            std::wstring suffix = text->suffixString();
            append(suffix, std::wstring(known->text) + (magnitude ? numberText(*magnitude) : L""));
            text->setSuffixString(suffix);
            compartment.setText(text);
        } else if (magnitude) {
            datum.addZoneModifier(known->modifier, *magnitude);
        } else {
            datum.addZoneModifier(known->modifier);
        }
    }

    void keep(GDT::DatumRef compartment) {
        if (compartment.modifiedDatums().empty()) return;
        if (!m_frame) m_frame = std::make_shared<GDT::Frame>();
        m_frame->addDatumRef(std::move(compartment));
    }

    StepFile& m_file;
    const Instance m_tolerance;
    std::shared_ptr<GDT::Frame> m_frame;
};

} // namespace

std::shared_ptr<GDT::Frame> readFrame(StepFile& file, const Instance& tolerance) {
    return FrameReader(file, tolerance).read();
}

} // namespace zeq::step
