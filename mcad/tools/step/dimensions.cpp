// Sizes and distances: DIMENSIONAL_SIZE, DIMENSIONAL_LOCATION and their kinds (ISO 10303-47).
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "step/annotation_reading.h"

namespace zeq::step {

namespace {

using Dimension = ExcPMIDimension;
using ESubType = Dimension::ESubType;

struct SizeName {
    std::wstring_view name;
    ESubType type;
    std::wstring_view prefix; ///< in place of the symbol of the sub type; empty where that tells all
};
constexpr std::array sizeNames{
    SizeName{L"spherical diameter", ESubType::diameter, L"S⌀"},
    SizeName{L"spherical radius", ESubType::radius, L"SR"},
    SizeName{L"linear distance", ESubType::distance, L""},
    SizeName{L"curved distance", ESubType::length_curvilinear, L""},
    SizeName{L"curve length", ESubType::length_curvilinear, L""},
    SizeName{L"thickness", ESubType::length, L""},
};

/// What modifies a value: a dimensional note or a type qualifier, and the symbol that ISO 14405-1 and ASME Y14.5 have
/// for it.
struct Modifier {
    std::wstring_view name;
    std::wstring_view symbol;
};
constexpr std::array prefixes{
    Modifier{L"controlled radius", L"CR"},
    Modifier{L"square", L"□"},
};
constexpr std::array suffixes{
    Modifier{L"designed", L""},
    Modifier{L"nominal", L""},
    Modifier{L"specified", L""},
    Modifier{L"maximum", L"MAX"},
    Modifier{L"minimum", L"MIN"},
    Modifier{L"average", L"AVG"},
    Modifier{L"statistical", L"ST"},
    Modifier{L"statistical tolerance", L"ST"},
    Modifier{L"envelope requirement", L"Ⓔ"},
    Modifier{L"independency", L"Ⓘ"},
    Modifier{L"free state condition", L"Ⓕ"},
    Modifier{L"common tolerance", L"CT"},
    Modifier{L"continuous feature", L"CF"},
    Modifier{L"any cross section", L"ACS"},
    Modifier{L"specific fixed cross section", L"SCS"},
    Modifier{L"any part of the feature", L"/0"},
    Modifier{L"two point size", L"(LP)"},
    Modifier{L"local size defined by a sphere", L"(LS)"},
    Modifier{L"least squares association criteria", L"(GG)"},
    Modifier{L"maximum inscribed association criteria", L"(GX)"},
    Modifier{L"minimum circumscribed association criteria", L"(GN)"},
    Modifier{L"circumference diameter calculated size", L"(CC)"},
    Modifier{L"area diameter calculated size", L"(CA)"},
    Modifier{L"volume diameter calculated size", L"(CV)"},
    Modifier{L"maximum rank order size", L"(SX)"},
    Modifier{L"minimum rank order size", L"(SN)"},
    Modifier{L"average rank order size", L"(SA)"},
    Modifier{L"median rank order size", L"(SM)"},
    Modifier{L"mid range rank order size", L"(SD)"},
    Modifier{L"range rank order size", L"(SR)"},
};

template <class Table>
auto find(const Table& table, std::wstring_view name) {
    const auto found = std::ranges::find(table, name, &Table::value_type::name);
    return found == table.end() ? nullptr : &*found;
}

bool isAngular(const Instance& dimension) {
    return dimension.is("ANGULAR_SIZE") || dimension.is("ANGULAR_LOCATION");
}

/// An attribute that DIMENSIONAL_SIZE declares.
Value sizeAttribute(const Instance& dimension, std::size_t index) {
    // Its attributes stand behind those of DATUM_FEATURE in a simple instance of both.
    const std::size_t before = dimension.type() == "DIMENSIONAL_SIZE_WITH_DATUM_FEATURE" ? 4 : 0;
    return attribute(dimension, "DIMENSIONAL_SIZE", before, index);
}

bool isSize(const Instance& dimension) {
    return dimension.is("DIMENSIONAL_SIZE") || dimension.is("DIMENSIONAL_SIZE_WITH_PATH") ||
           dimension.is("DIMENSIONAL_SIZE_WITH_DATUM_FEATURE") || dimension.is("ANGULAR_SIZE");
}

bool isLocation(const Instance& dimension) {
    const auto types = dimension.types();
    return std::ranges::any_of(types, [](std::string_view type) {
        return type.starts_with("DIMENSIONAL_LOCATION") || type == "DIRECTED_DIMENSIONAL_LOCATION" ||
               type == "ANGULAR_LOCATION";
    });
}

/// A reading of one dimension.
class DimensionReader {
public:
    DimensionReader(AnnotationContext& context, const Instance& instance)
        : m_context(context), m_file(context.file), m_instance(instance) {}

    std::optional<SemanticAnnotation> read() {
        readRepresentations();
        if (!m_nominal && !m_upper && !m_lower) {
            tell(m_file, m_isUnreadable ? L"its value cannot be read" : L"it has no value", m_instance);
            return std::nullopt;
        }
        readKind();
        setValue();
        readTolerances();
        if (m_isBasic) m_dimension->setMainType(Dimension::EMainType::basic);
        if (m_isReference) m_dimension->setMainType(Dimension::EMainType::reference);
        if (!m_note->prefixString().empty() || !m_suffix.empty()) {
            m_note->setSuffixString(m_suffix);
            m_dimension->setNote(m_note);
        }
        m_dimension->setCalloutText(m_callout);

        SemanticAnnotation annotation = annotationOf(m_file, m_instance, m_dimension);
        link(m_file, *m_dimension, {m_instance});
        for (const std::string_view type : {"DIMENSIONAL_SIZE_WITH_PATH", "DIMENSIONAL_LOCATION_WITH_PATH"})
            if (m_instance.is(type)) {
                const std::size_t inherited = isSize(m_instance) ? 2 : 4;
                link(m_file, *m_dimension, {m_file.at(attribute(m_instance, type, inherited, 0))}, L"path");
            }
        return annotation;
    }

private:
    struct Number {
        double value = 0; ///< in the unit that travels
        Unit unit;
        int decimals = 0;
    };

    void readKind() {
        const std::wstring name = isSize(m_instance)
                                      ? sizeAttribute(m_instance, 1).text()
                                      : attribute(m_instance, "SHAPE_ASPECT_RELATIONSHIP", 0, 0).text();
        m_dimension->setName(name);
        if (const SizeName* const known = find(sizeNames, name)) {
            m_dimension->setSubType(known->type);
            addPrefix(known->prefix);
        } else if (isAngular(m_instance) || name.starts_with(L"ang")) {
            m_dimension->setSubType(ESubType::angle);
        } else if (name.find(L"diamet") != name.npos) {
            m_dimension->setSubType(ESubType::diameter);
        } else if (name.find(L"radi") != name.npos) {
            m_dimension->setSubType(ESubType::radius);
        } else {
            m_dimension->setSubType(isSize(m_instance) ? ESubType::length_or_distance : ESubType::distance);
        }
        if (name.empty() && !isSize(m_instance))
            m_dimension->setName(attribute(m_instance, "SHAPE_ASPECT_RELATIONSHIP", 0, 1).text());
    }

    void readRepresentations() {
        for (const Instance& link : m_instance.users("DIMENSIONAL_CHARACTERISTIC_REPRESENTATION")) {
            if (m_file.at(link.parameters()[0]) != m_instance) continue;
            const Instance representation = m_file.at(link.parameters()[1]);
            for (const Instance& item : itemsOf(m_file, attribute(representation, "REPRESENTATION", 0, 1)))
                readItem(item);
        }
    }

    void readItem(const Instance& item) {
        if (item.is("DESCRIPTIVE_REPRESENTATION_ITEM")) {
            const Value text = attribute(item, "DESCRIPTIVE_REPRESENTATION_ITEM", 1, 0);
            return addModifier(text.text());
        }
        const std::wstring name = nameOf(item);
        const std::optional<Number> number = readNumber(item);
        if (!number) {
            if (item.is("AXIS2_PLACEMENT_3D"))
                return tell(m_file, L"the direction that it is measured in does not travel", m_instance);
            m_isUnreadable = true;
            return;
        }
        std::optional<Number>& place = name == L"upper limit"   ? m_upper
                                       : name == L"lower limit" ? m_lower
                                                                : m_nominal;
        if (place) return tell(m_file, L"its value '" + name + L"' does not travel", m_instance);
        place = number;
        readQualifiers(item);
    }

    std::optional<Number> readNumber(const Instance& item) const {
        const auto measure = m_file.measure(item);
        if (!measure || measure->unit.kind == Unit::Kind::unknown) return std::nullopt;
        return Number{m_file.travelling(*measure), measure->unit, decimalsOf(item, measure->unit)};
    }

    std::vector<Instance> qualifiersOf(const Instance& measure) const {
        std::vector<Instance> result;
        const auto add = [&](const Value& list) {
            for (const Value& each : list.items()) result.push_back(m_file.at(each));
        };
        if (measure.is("QUALIFIED_REPRESENTATION_ITEM"))
            add(attribute(measure, "QUALIFIED_REPRESENTATION_ITEM", 1, 0));
        const auto others = m_context.qualifications.find(measure.number());
        if (others != m_context.qualifications.end())
            for (const Instance& each : others->second) add(each.parameters()[3]);
        return result;
    }

    /// "NR2 1.3" (ISO 13584-42): three decimals. 0 where none are asked for, or not in the unit that travels.
    int decimalsOf(const Instance& measure, const Unit& unit) const {
        const double base = unit.kind == Unit::Kind::length ? m_file.millimeters() : 1;
        if (std::abs(unit.factor - base) > base * 1e-9) return 0;
        for (const Instance& qualifier : qualifiersOf(measure)) {
            if (!qualifier.is("VALUE_FORMAT_TYPE_QUALIFIER")) continue;
            const std::wstring format = qualifier.parameters()[0].text();
            int decimals = 0;
            for (std::size_t at = format.rfind(L'.') + 1; at > 0 && at < format.size(); ++at) {
                if (format[at] < L'0' || format[at] > L'9' || decimals > 9) break;
                decimals = decimals * 10 + static_cast<int>(format[at] - L'0');
            }
            return decimals;
        }
        return 0;
    }

    void readQualifiers(const Instance& measure) {
        for (const Instance& qualifier : qualifiersOf(measure))
            if (qualifier.is("TYPE_QUALIFIER")) addModifier(qualifier.parameters()[0].text());
    }

    void addModifier(const std::wstring& name) {
        if (name == L"theoretical")
            m_isBasic = true;
        else if (name == L"auxiliary")
            m_isReference = true;
        else if (const Modifier* const prefix = find(prefixes, name))
            addPrefix(prefix->symbol);
        else if (const Modifier* const suffix = find(suffixes, name))
            append(m_suffix, suffix->symbol);
        else
            append(m_callout, name);
    }

    void addPrefix(std::wstring_view symbol) {
        m_note->setPrefixString(m_note->prefixString() + std::wstring(symbol));
    }

    void setValue() {
        const Number value = m_nominal ? *m_nominal : m_lower ? *m_lower : *m_upper;
        m_dimension->setValue(value.value);
        m_dimension->setValuePrecision(value.decimals);
        m_dimension->setUnit(unitOf(value.unit));
        const auto shown = [](const Number& limit) { return numberText(limit.value, limit.decimals); };
        if (m_upper && m_lower) {
            setTolerance(m_lower->value - value.value, m_upper->value - value.value);
            m_dimension->setTolerancePrecisionValue(std::max(m_upper->decimals, m_lower->decimals));
            m_dimension->setAlphanumericalToleranceLower(shown(*m_lower));
            m_dimension->setAlphanumericalToleranceUpper(shown(*m_upper));
        } else if (m_upper || m_lower) {
            const Number& limit = m_upper ? *m_upper : *m_lower;
            if (m_nominal && limit.value != value.value) append(m_suffix, shown(limit));
            append(m_suffix, m_upper ? L"MAX" : L"MIN");
        }
    }

    Dimension::EDimUnit unitOf(const Unit& unit) const {
        using EUnit = Dimension::EDimUnit;
        struct Length {
            double millimeters;
            EUnit unit;
        };
        constexpr std::array<Length, 6> lengths{{{1, EUnit::mm},
                                                 {25.4, EUnit::inch},
                                                 {1000, EUnit::meter},
                                                 {10, EUnit::cm},
                                                 {1e6, EUnit::km},
                                                 {304.8, EUnit::foot}}};
        if (unit.kind == Unit::Kind::plane_angle) return EUnit::degree;
        if (unit.kind != Unit::Kind::length) return EUnit::none;
        for (const Length& each : lengths)
            if (std::abs(m_file.millimeters() - each.millimeters) <= each.millimeters * 1e-9)
                return each.unit;
        return EUnit::none;
    }

    void setTolerance(double lower, double upper) {
        m_dimension->setMainType(Dimension::EMainType::tolerance);
        m_dimension->setNumericalToleranceLower(lower);
        m_dimension->setNumericalToleranceUpper(upper);
    }

    void readTolerances() {
        for (const Instance& tolerance : m_instance.users("PLUS_MINUS_TOLERANCE")) {
            if (m_file.at(tolerance.parameters()[1]) != m_instance) continue;
            const Instance range = m_file.at(tolerance.parameters()[0]);
            if (range.is("LIMITS_AND_FITS"))
                readFit(range);
            else
                readDeviations(range);
        }
    }

    void readDeviations(const Instance& range) {
        const Instance low = m_file.at(range.parameters()[0]), high = m_file.at(range.parameters()[1]);
        const std::optional<Number> lower = readNumber(low), upper = readNumber(high);
        if (!lower || !upper) return tell(m_file, L"its tolerance cannot be read", m_instance);
        setTolerance(lower->value, upper->value);
        m_dimension->setTolerancePrecisionValue(std::max(lower->decimals, upper->decimals));
    }

    /// Form variance and grade make the class; the zone variance, "hole" or "shaft", its case has said already.
    void readFit(const Instance& fit) {
        const auto parameters = fit.parameters();
        m_dimension->setMainType(Dimension::EMainType::tolerance);
        m_dimension->setAlphanumericalToleranceUpper(parameters[0].text() + parameters[2].text());
        append(m_callout, parameters[3].text());
    }

    AnnotationContext& m_context;
    StepFile& m_file;
    const Instance m_instance;
    const ExcPMIDimensionPtr m_dimension = std::make_shared<Dimension>();
    const ExcPMITextPtr m_note = std::make_shared<ExcPMIText>();
    std::wstring m_suffix, m_callout;
    std::optional<Number> m_nominal, m_upper, m_lower;
    bool m_isBasic = false, m_isReference = false, m_isUnreadable = false;
};

} // namespace

std::vector<Instance> aspectsOfDimension(const StepFile& file, const Instance& dimension) {
    if (isSize(dimension)) return {file.at(sizeAttribute(dimension, 0))};
    if (!isLocation(dimension)) return {};
    return {file.at(attribute(dimension, "SHAPE_ASPECT_RELATIONSHIP", 0, 2)),
            file.at(attribute(dimension, "SHAPE_ASPECT_RELATIONSHIP", 0, 3))};
}

std::optional<SemanticAnnotation> readDimension(AnnotationContext& context, const Instance& dimension) {
    return DimensionReader(context, dimension).read();
}

} // namespace zeq::step
