// Annotations as lines of text that can be compared.
#pragma once

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "zeq_api/exchange_pmi/annotation_view.h"

namespace zeq::test {

using Lines = std::vector<std::string>;

inline std::string narrow(const std::wstring& text) {
    std::string result;
    for (const wchar_t c : text)
        result += c == L'\u2300' ? "dia" : c < 128 ? std::string(1, static_cast<char>(c)) : "?";
    return result;
}

/// With six decimals at most.
inline std::string number(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", value);
    std::string result = text;
    result.erase(result.find_last_not_of('0') + 1);
    if (result.ends_with('.')) result.pop_back();
    return result == "-0" ? "0" : result;
}

inline std::string numberOf(const std::wstring& text) { return number(std::stod(text)); }

inline std::string lineOf(const ExcPMIDimension& dimension) {
    using EType = ExcPMIDimension::ESubType;
    const std::string prefix = dimension.note() ? narrow(dimension.note()->prefixString()) : "";
    std::string kind = narrow(enumToString(dimension.subType()));
    if (dimension.subType() == EType::distance || dimension.subType() == EType::length) kind = "linear";
    if (dimension.subType() == EType::length_curvilinear) kind = "arc_length";
    if (prefix.starts_with("S")) kind = "spherical_" + kind;
    std::string line = kind + " " + number(dimension.value());
    const double lower = dimension.numericalToleranceLower(), upper = dimension.numericalToleranceUpper();
    if (lower != 0 || upper != 0) line += " " + number(lower) + " " + number(upper);
    const std::wstring& low = dimension.alphanumericalToleranceLower();
    const std::wstring& high = dimension.alphanumericalToleranceUpper();
    if (!low.empty()) line += " limits " + numberOf(low) + " " + numberOf(high);
    if (low.empty() && !high.empty()) line += " fit " + narrow(high);
    using EMain = ExcPMIDimension::EMainType;
    if (dimension.mainType() == EMain::basic) line += " basic";
    if (dimension.mainType() == EMain::reference) line += " reference";
    if (!prefix.empty() && !prefix.starts_with("S")) line += " " + prefix;
    if (dimension.note() && !dimension.note()->suffixString().empty())
        line += " " + narrow(dimension.note()->suffixString());
    if (!dimension.calloutText().empty()) line += " '" + narrow(dimension.calloutText()) + "'";
    return line;
}

inline std::string modifierText(const ExcPMIGDT::ZoneModifier& modifier) {
    using EModifier = ExcPMIGDT::EToleranceModifier;
    std::string text = " " + narrow(enumToString(modifier.modifier));
    if (modifier.modifier == EModifier::material_condition_maximum) text = " M";
    if (modifier.modifier == EModifier::material_condition_least) text = " L";
    if (modifier.modifier == EModifier::free_state_free) text = " F";
    if (modifier.modifier == EModifier::tangent_plane_tangent) text = " T";
    if (modifier.modifier == EModifier::projected_state_projected) text = " P";
    return text + (modifier.hasMagnitude ? number(modifier.magnitude) : "");
}

inline std::string modifiersText(const std::vector<ExcPMIGDT::ZoneModifier>& modifiers) {
    Lines texts;
    for (const auto& each : modifiers) texts.push_back(modifierText(each));
    std::ranges::sort(texts);
    std::string text;
    for (const std::string& each : texts) text += each;
    return text;
}

using Labels = std::map<std::wstring, std::string>;

/// A common datum has its letters in order, and behind them all modifiers, each once.
inline std::string compartmentText(const ExcPMIGDT::DatumRef& reference, const Labels& labels) {
    Lines letters;
    std::set<std::string> modifiers;
    for (const auto& datum : reference.modifiedDatums()) {
        const auto label = labels.find(datum.datumId());
        letters.push_back(label == labels.end() ? "?" : label->second);
        for (const auto& each : datum.zoneModifiers()) modifiers.insert(modifierText(each));
    }
    std::ranges::sort(letters);
    std::string text;
    for (const std::string& letter : letters) text += (text.empty() ? "" : "-") + letter;
    for (const std::string& modifier : modifiers) text += modifier;
    if (reference.text()) text += " '" + narrow(reference.text()->suffixString()) + "'";
    return text;
}

inline std::string typeName(ExcPMIGDT::EToleranceType type) {
    using EType = ExcPMIGDT::EToleranceType;
    if (type == EType::location_true_position) return "position";
    if (type == EType::form_profile_any_line) return "profile_line";
    if (type == EType::form_profile_any_surface) return "profile_surface";
    if (type == EType::run_out_circular) return "circular_runout";
    if (type == EType::run_out_total) return "total_runout";
    const std::string name = narrow(enumToString(type));
    return name.substr(name.find('_') + 1);
}

inline Lines linesOf(const ExcPMIGDT& tolerance, const Labels& labels) {
    Lines lines;
    for (const auto& row : tolerance.gdtRows()) {
        std::string line;
        if (tolerance.gdtRows().size() > 1) line = std::to_string(lines.size() + 1) + " ";
        if (tolerance.allAround() != 0) line += "all_around ";
        line += typeName(tolerance.toleranceType()) + " ";
        if (row->toleranceValueType() != ExcPMIGDT::EToleranceValueType::none)
            line += narrow(enumToString(row->toleranceValueType())) + " ";
        line += number(row->toleranceValue());
        double first = 0, second = 0;
        row->rateUnits(first, second);
        if (first != 0) line += "/" + number(first);
        if (second != 0) line += "x" + number(second);
        line += modifiersText(row->zoneModifiers());
        if (row->referenceFrame())
            for (const auto& reference : row->referenceFrame()->datumRefs())
                line += " | " + compartmentText(reference, labels);
        if (tolerance.note()) line += " '" + narrow(tolerance.note()->suffixString()) + "'";
        lines.push_back(line);
    }
    return lines;
}

inline std::string lineOf(const ExcPMIDatumTarget& target) {
    std::string line = narrow(target.label()) + " " + narrow(enumToString(target.targetType()));
    if (target.hasDiameter()) line += " diameter";
    if (!target.upperText().empty()) line += " " + narrow(target.upperText());
    return line;
}

} // namespace zeq::test
