// Symbols as ISO 1101, ISO 5459 and ASME Y14.5 have them, as far as there are characters for them.
#include "pmi/value_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

#include "text/text.h"

namespace zeq::pmi {

namespace {

using Dimension = ExcPMIDimension;
using GDT = ExcPMIGDT;

struct Characteristic {
    const char* symbol;
    const char* name;
};
/// In the order of ExcPMIGDT::EToleranceType.
constexpr std::array<Characteristic, 18> characteristics{{
    {"?", "tolerance"},
    {"⏤", "straightness"},
    {"⏥", "flatness"},
    {"○", "circularity"},
    {"⌭", "cylindricity"},
    {"⌒", "profile of a line"},
    {"⌓", "profile of a surface"},
    {"∥", "parallelism"},
    {"⟂", "perpendicularity"},
    {"∠", "angularity"},
    {"⌖", "position"},
    {"◎", "concentricity"},
    {"◎", "coaxiality"},
    {"⌯", "symmetry"},
    {"⌖", "position of a line"},
    {"⌖", "position of a surface"},
    {"↗", "circular run-out"},
    {"⌰", "total run-out"},
}};

/// In the order of ExcPMIGDT::EToleranceValueType.
constexpr std::array<const char*, 5> zoneSymbols{"", "⌀", "R", "S⌀", "□"};

/// In the order of ExcPMIGDT::EToleranceModifier; what says that something does not hold has no symbol.
constexpr std::array<const char*, 41> modifierSymbols{
    "",   "",  "",   "Ⓜ",  "Ⓛ",   "Ⓢ",  "",   "",  "Ⓣ", "",  "Ⓕ", "",   "ST", "CZ",
    "Ⓤ",  "Ⓟ", "",   "Ⓤ",  "MAX", "Ⓒ",  "Ⓐ",  "△", "Ⓖ", "Ⓧ", "Ⓝ", "SZ", "OZ", "VA",
    "><", "C", "CE", "CI", "G",   "GE", "GI", "N", "X", "T", "P", "V",  "Q"};

/// What stands before the value of a part of a hole's callout; null: what its kind of dimension has.
const char* calloutSymbol(Dimension::ECalloutFeatureAnnotationType type) {
    using EType = Dimension::ECalloutFeatureAnnotationType;
    switch (type) {
    case EType::hole_callout_depth:
    case EType::hole_callout_counter_bore_depth:
    case EType::hole_callout_thread_depth:
        return "↧";
    case EType::hole_callout_counter_bore_diameter:
        return "⌴⌀";
    case EType::hole_callout_counter_sink_diameter:
        return "⌵⌀";
    case EType::hole_callout_diameter:
        return "⌀";
    default:
        return nullptr;
    }
}

std::string sizeSymbol(const Dimension& dimension) {
    if (const char* const symbol = calloutSymbol(dimension.calloutFeatureAnnotationType())) return symbol;
    using EType = Dimension::ESubType;
    switch (dimension.subType()) {
    case EType::radius:
    case EType::radius_tangent:
    case EType::radius_cylinder:
    case EType::radius_edge:
    case EType::fillet:
        return "R";
    case EType::diameter:
    case EType::diameter_tangent:
    case EType::diameter_cylinder:
    case EType::diameter_edge:
    case EType::diameter_cone:
        return "⌀";
    default:
        return "";
    }
}

template <class E, class Table>
const char* entry(const Table& table, E value) {
    const auto index = static_cast<std::size_t>(value);
    return index < table.size() ? table[index] : "";
}

const Characteristic& characteristicOf(const GDT& tolerance) {
    const auto index = static_cast<std::size_t>(tolerance.toleranceType());
    return characteristics[index < characteristics.size() ? index : 0];
}

/// @param decimals the shortest text, of nine digits at most, if less than 1
std::string decimal(double value, double decimals = 0) {
    if (!std::isfinite(value)) return "?";
    std::array<char, 40> text{};
    if (decimals >= 1 && std::abs(value) < 1e15)
        std::snprintf(text.data(), text.size(), "%.*f", static_cast<int>(std::min(decimals, 15.0)), value);
    else
        std::snprintf(text.data(), text.size(), "%.9g", value == 0 ? 0.0 : value);
    return text.data();
}

std::string words(const std::wstring& name) {
    std::string text = text::printable(name);
    std::ranges::replace(text, '_', ' ');
    return text;
}

/// Appends words, a blank apart.
void append(std::string& text, const std::string& more) {
    if (!more.empty()) text += (text.empty() ? "" : " ") + more;
}

/// Printable, but for line feeds, at which it is divided; without empty lines.
std::string lines(const std::wstring& text) {
    std::string result;
    for (std::size_t at = 0, end = 0; end != std::wstring::npos; at = end + 1) {
        end = text.find(L'\n', at);
        std::wstring line = text.substr(at, end == std::wstring::npos ? end : end - at);
        if (line.ends_with(L'\r')) line.pop_back();
        if (line.find_first_not_of(L" \t") != std::wstring::npos)
            result += (result.empty() ? "" : "\n") + text::printable(line);
    }
    return result;
}

/// What belongs to the value itself, as a symbol before it.
std::string prefixOf(const ExcPMITextPtr& texts) {
    return texts ? text::printable(texts->prefixString()) : "";
}

/// The value with the texts that stand around it: over it, before and behind it, and below it.
std::string withTexts(const ExcPMITextPtr& texts, const std::string& value) {
    if (!texts) return value;
    std::string text = text::printable(texts->beforeString());
    append(text, value);
    append(text, text::printable(texts->suffixString()));
    append(text, text::printable(texts->afterString()));
    const std::string upper = lines(texts->upperString());
    if (!upper.empty()) text.insert(0, upper + '\n');
    for (const std::wstring& below : {texts->lowerString(), texts->belowString()})
        if (!below.empty()) text += '\n' + lines(below);
    return text;
}

/// A mark such as "°", which stands at each number, or a word, which stands once behind all of them.
struct UnitText {
    std::string mark;
    std::string word;
};

UnitText unitOf(const Dimension& dimension, const Context& context) {
    using EUnit = Dimension::EDimUnit;
    switch (dimension.unit()) {
    case EUnit::degree:
        return {"°", ""};
    case EUnit::minute:
        return {"′", ""};
    case EUnit::second:
        return {"″", ""};
    default:
        return {"", dimension.unit() == context.unit ? "" : unitName(dimension.unit())};
    }
}

/// The two ends of the range that a value may lie in, as text.
struct Limits {
    std::string lower;
    std::string upper;
};

/// Limits are told as texts that are numbers without a sign, or as tolerances that are themselves the limits: these
/// are all above zero, with the value between them or missing.
std::optional<Limits> limitsOf(const Dimension& dimension) {
    const std::wstring &lowerText = dimension.alphanumericalToleranceLower(),
                       &upperText = dimension.alphanumericalToleranceUpper();
    const auto isNumber = [](const std::wstring& text) {
        return !text.empty() && ((text[0] >= L'0' && text[0] <= L'9') || text[0] == L'.');
    };
    if (isNumber(lowerText) && isNumber(upperText))
        return Limits{text::printable(lowerText), text::printable(upperText)};
    const double lower = dimension.numericalToleranceLower(), upper = dimension.numericalToleranceUpper();
    const double value = dimension.value(), decimals = dimension.valuePrecision();
    const bool isBetween = value == 0 || (lower <= value && value <= upper);
    if (!(lower > 0 && lower < upper && isBetween)) return std::nullopt;
    return Limits{decimal(lower, decimals), decimal(upper, decimals)};
}

std::string deviation(double value, double decimals) {
    return value == 0 ? "0" : (value > 0 ? "+" : "") + decimal(value, decimals);
}

std::string deviationsText(const Dimension& dimension, const std::string& mark) {
    const double lower = dimension.numericalToleranceLower(), upper = dimension.numericalToleranceUpper();
    const double decimals = dimension.tolerancePrecisionValue();
    if (lower == 0 && upper == 0) return "";
    if (lower == -upper && upper > 0) return "±" + decimal(upper, decimals) + mark;
    return deviation(upper, decimals) + mark + "/" + deviation(lower, decimals) + mark;
}

/// What stands behind the value: a fit such as "H7", or the deviations, or both.
std::string toleranceText(const Dimension& dimension, const std::string& mark) {
    const std::string lower = text::printable(dimension.alphanumericalToleranceLower()),
                      upper = text::printable(dimension.alphanumericalToleranceUpper());
    if (!lower.empty() && !upper.empty() && lower != upper) return upper + "/" + lower;
    std::string text = upper.empty() ? lower : upper;
    append(text, deviationsText(dimension, mark));
    return text;
}

std::string sizeText(const Dimension& dimension, const Context& context) {
    using EMain = Dimension::EMainType;
    using ESub = Dimension::ESubType;
    const UnitText unit = unitOf(dimension, context);
    const std::string prefix = prefixOf(dimension.note()), usual = sizeSymbol(dimension);
    const std::string symbol = prefix.ends_with(usual) ? prefix : prefix + usual; // "S⌀" has it already
    const auto sized = [&](double value) { return decimal(value, dimension.valuePrecision()) + unit.mark; };

    const double value =
        dimension.hasFakeNumericalValue() ? dimension.fakeNumericalValue() : dimension.value();
    const ExcVector3d& point = dimension.coord();
    std::string text;
    if (dimension.hasFakeAlphanumericalValue())
        text = prefix + text::printable(dimension.fakeAlphanumericalValue());
    else if (dimension.subType() == ESub::coord_dimension_2d)
        text = prefix + "(" + sized(point.x()) + ", " + sized(point.y()) + ")";
    else if (dimension.subType() == ESub::coord_dimension_3d)
        text = prefix + "(" + sized(point.x()) + ", " + sized(point.y()) + ", " + sized(point.z()) + ")";
    else if (const auto limits = limitsOf(dimension); limits && !dimension.hasFakeNumericalValue())
        text = symbol + limits->lower + unit.mark + "–" + limits->upper + unit.mark;
    else
        append(text = symbol + sized(value), toleranceText(dimension, unit.mark));
    append(text, unit.word);
    if (dimension.mainType() == EMain::basic) text = "[" + text + "]";
    if (dimension.mainType() == EMain::reference) text = "(" + text + ")";
    append(text, text::printable(dimension.calloutText()));
    return withTexts(dimension.note(), text);
}

std::string modifiersText(const std::vector<GDT::ZoneModifier>& modifiers) {
    std::string text;
    for (const GDT::ZoneModifier& each : modifiers) {
        const std::string symbol = entry(modifierSymbols, each.modifier);
        if (symbol.empty()) continue;
        text += " " + symbol;
        // A number follows a sign at once, but letters after a blank.
        const bool isWord = static_cast<unsigned char>(symbol[0]) < 0x80;
        if (each.hasMagnitude) text += (isWord ? " " : "") + decimal(each.magnitude);
    }
    return text;
}

const std::wstring& labelOf(const std::wstring& id, const std::wstring& otherwise, const Context& context) {
    const auto known = context.labels.find(id);
    return known != context.labels.end() && !known->second.empty() ? known->second : otherwise;
}

/// "A Ⓜ-B"; the letters are those of the datums or, where they are unknown, of the compartment.
std::string compartmentText(const GDT::DatumRef& reference, const Context& context) {
    std::string text;
    for (const GDT::ModifiedDatum& datum : reference.modifiedDatums()) {
        const bool isAlone = reference.modifiedDatums().size() == 1 && !reference.label().empty();
        const std::wstring& letter =
            labelOf(datum.datumId(), isAlone ? reference.label() : datum.datumId(), context);
        text += (text.empty() ? "" : "-") + text::printable(letter) + modifiersText(datum.zoneModifiers());
    }
    if (text.empty()) text = text::printable(reference.label());
    return withTexts(reference.text(), prefixOf(reference.text()) + text);
}

std::string rowText(const GDT::Row& row, const Context& context) {
    std::string text = entry(zoneSymbols, row.toleranceValueType()) + decimal(row.toleranceValue());
    double first = 0, second = 0;
    row.rateUnits(first, second);
    if (first > 0) text += "/" + decimal(first);
    if (first > 0 && second > 0) text += "×" + decimal(second);
    text += modifiersText(row.zoneModifiers());
    if (row.refineTolerance() != 0) text += " refined to " + decimal(row.refineTolerance());
    if (!row.referenceFrame()) return text;
    for (const GDT::DatumRef& reference : row.referenceFrame()->datumRefs())
        text += " | " + compartmentText(reference, context);
    return text;
}

std::string frameText(const GDT& tolerance, const Context& context) {
    const std::string symbol = characteristicOf(tolerance).symbol;
    std::string text;
    for (const GDT::RowPtr& row : tolerance.gdtRows())
        if (row) text += (text.empty() ? "" : "\n") + symbol + " | " + rowText(*row, context);
    if (text.empty()) text = symbol;
    if (tolerance.allAround() != 0) text.insert(0, "⌮ ");
    return withTexts(tolerance.note(), prefixOf(tolerance.note()) + text);
}

/// The letter, and the targets that establish the datum.
std::string datumText(const ExcPMIDatum& datum, const Context& context) {
    std::string targets;
    for (const std::wstring& id : datum.targetIds())
        targets += (targets.empty() ? " (" : ", ") + text::printable(labelOf(id, id, context));
    return text::printable(datum.label()) + (targets.empty() ? "" : targets + ")");
}

std::string targetText(const ExcPMIDatumTarget& target) {
    std::string text = text::printable(target.label());
    append(text, words(enumToString(target.targetType())));
    append(text, (target.hasDiameter() ? "⌀" : "") + text::printable(target.upperText()));
    if (target.lowerText() != target.label()) append(text, text::printable(target.lowerText()));
    return text;
}

std::string noteText(const ExcPMINote& note) {
    std::string text;
    for (const ExcPMINote::TextPtr& run : note.texts()) append(text, lines(run->label()));
    return text;
}

std::string roughnessText(const ExcPMIRoughness& roughness) {
    std::string text = "√";
    for (const std::wstring& field : roughness.fields()) append(text, text::printable(field));
    if (roughness.obtentionType() == ExcPMIRoughness::EObtentionType::matching_mandatory) text += " machined";
    if (roughness.obtentionType() == ExcPMIRoughness::EObtentionType::matching_forbidden)
        text += " not machined";
    return text;
}

/// The unit of dimensions that a unit of length is; `none` for one that no dimension has.
ExcPMIDimension::EDimUnit dimensionUnit(ELengthUnitType unit) {
    using EUnit = Dimension::EDimUnit;
    switch (unit) {
    case ELengthUnitType::millimeter:
        return EUnit::mm;
    case ELengthUnitType::centimeter:
        return EUnit::cm;
    case ELengthUnitType::meter:
        return EUnit::meter;
    case ELengthUnitType::kilometer:
        return EUnit::km;
    case ELengthUnitType::inch:
        return EUnit::inch;
    case ELengthUnitType::foot:
        return EUnit::foot;
    default:
        return EUnit::none;
    }
}

} // namespace

std::vector<ExcPMIAnnotationPtr> annotationsOf(const ExcPMIAnnotationView& view) {
    std::vector<ExcPMIAnnotationPtr> result;
    const auto add = [&result](const auto& list) { result.insert(result.end(), list.begin(), list.end()); };
    add(view.dimensions());
    add(view.gdts());
    add(view.datums());
    add(view.datumTargets());
    add(view.roughness());
    add(view.notes());
    return result;
}

Context contextOf(std::span<const ExcPMIAnnotationPtr> annotations, ELengthUnitType unit) {
    using EUnit = Context::EUnit;
    Context context;
    context.unit = dimensionUnit(unit);
    for (const ExcPMIAnnotationPtr& annotation : annotations) {
        if (const auto* const datum = dynamic_cast<const ExcPMIDatum*>(annotation.get())) {
            context.labels.try_emplace(datum->id(), datum->label());
        } else if (const auto* const target = dynamic_cast<const ExcPMIDatumTarget*>(annotation.get())) {
            context.labels.try_emplace(target->id(), target->label());
        } else if (const auto* const dimension = dynamic_cast<const Dimension*>(annotation.get())) {
            if (context.unit == EUnit::none && dimension->unit() < EUnit::degree)
                context.unit = dimension->unit();
        }
    }
    return context;
}

std::string unitName(ExcPMIDimension::EDimUnit unit) {
    return unit == Dimension::EDimUnit::none ? "" : words(enumToString(unit));
}

std::string kindOf(const ExcPMIAnnotation& annotation) {
    switch (annotation.type()) {
    case EPMIAnnotationType::dimension: {
        const auto& dimension = static_cast<const Dimension&>(annotation);
        const std::string callout = words(enumToString(dimension.calloutFeatureAnnotationType()));
        constexpr std::string_view prefix = "hole callout ";
        return callout.starts_with(prefix) ? callout.substr(prefix.size())
                                           : words(enumToString(dimension.subType()));
    }
    case EPMIAnnotationType::GDT:
        return characteristicOf(static_cast<const GDT&>(annotation)).name;
    case EPMIAnnotationType::note: {
        const auto& note = static_cast<const ExcPMINote&>(annotation);
        return note.isFlagNote() ? "flag note" : note.isNOA() ? "general note" : "note";
    }
    default:
        return words(enumToString(annotation.type()));
    }
}

std::string valueText(const ExcPMIAnnotation& annotation, const Context& context) {
    switch (annotation.type()) {
    case EPMIAnnotationType::dimension:
        return sizeText(static_cast<const Dimension&>(annotation), context);
    case EPMIAnnotationType::GDT:
        return frameText(static_cast<const GDT&>(annotation), context);
    case EPMIAnnotationType::datum:
        return datumText(static_cast<const ExcPMIDatum&>(annotation), context);
    case EPMIAnnotationType::datum_target:
        return targetText(static_cast<const ExcPMIDatumTarget&>(annotation));
    case EPMIAnnotationType::note:
        return noteText(static_cast<const ExcPMINote&>(annotation));
    case EPMIAnnotationType::roughness:
        return roughnessText(static_cast<const ExcPMIRoughness&>(annotation));
    default:
        return "";
    }
}

} // namespace zeq::pmi
