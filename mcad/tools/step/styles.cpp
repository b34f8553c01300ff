// Follows the styles of an item down to colours.
#include "step/styles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace zeq::step {

namespace {

std::uint16_t channel(double part) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(part, 0.0, 1.0) * 255));
}

struct NamedColor {
    std::wstring_view name;
    std::array<std::uint16_t, 3> rgb;
};
constexpr NamedColor namedColors[]{{L"red", {255, 0, 0}},       {L"green", {0, 255, 0}},
                                   {L"blue", {0, 0, 255}},      {L"yellow", {255, 255, 0}},
                                   {L"magenta", {255, 0, 255}}, {L"cyan", {0, 255, 255}},
                                   {L"black", {0, 0, 0}},       {L"white", {255, 255, 255}}};

/// What lines on a surface look like says nothing of the surface.
bool isOfLinesOnSurface(const Instance& style) {
    constexpr std::string_view types[]{"SURFACE_STYLE_BOUNDARY", "SURFACE_STYLE_PARAMETER_LINE",
                                       "SURFACE_STYLE_CONTROL_GRID", "SURFACE_STYLE_SILHOUETTE",
                                       "SURFACE_STYLE_SEGMENTATION_CURVE"};
    return std::ranges::any_of(types, [&style](std::string_view type) { return style.is(type); });
}

std::optional<ExcColor> readColor(const Instance& instance) {
    if (instance.is("COLOUR_RGB")) {
        std::array<double, 3> parts{};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const auto part = attribute(instance, "COLOUR_RGB", 1, i).number();
            if (!part) return std::nullopt;
            parts[i] = *part;
        }
        return ExcColor(channel(parts[0]), channel(parts[1]), channel(parts[2]));
    }
    std::wstring name;
    if (instance.is("DRAUGHTING_PRE_DEFINED_COLOUR") || instance.is("PRE_DEFINED_COLOUR"))
        name = attribute(instance, "PRE_DEFINED_ITEM", 0, 0).text();
    for (const NamedColor& color : namedColors)
        if (color.name == name) return ExcColor(color.rgb[0], color.rgb[1], color.rgb[2]);
    return std::nullopt;
}

} // namespace

ExcVisuLineAttribute::ELineStyle lineStyle(const std::wstring& curveFont) {
    using enum ExcVisuLineAttribute::ELineStyle;
    struct Font {
        std::wstring_view name;
        ExcVisuLineAttribute::ELineStyle style;
    };
    static constexpr Font fonts[]{{L"continuous", solid_line},
                                  {L"dashed", dash_line},
                                  {L"dotted", dot_line},
                                  {L"chain", dash_dot_line},
                                  {L"chain double dash", dash_dot_dot_line}};
    const auto* const found = std::ranges::find(fonts, curveFont, &Font::name);
    return found == std::end(fonts) ? undefined : found->style;
}

Style readStyle(const StepFile& file, const Instance& styledItem) {
    Style style;
    std::vector<Instance> pending;
    for (const Value& value : attribute(styledItem, "STYLED_ITEM", 1, 0).items())
        if (const Instance each = file.at(value)) pending.push_back(each);
    constexpr std::size_t most = 64; // a damaged file may lead in circles
    for (std::size_t i = 0; i < pending.size() && i < most; ++i) {
        const Instance at = pending[i];
        if (isOfLinesOnSurface(at)) continue;
        if (const auto color = readColor(at)) {
            if (!style.color) style.color = color;
            continue;
        }
        if (at.is("CURVE_STYLE")) {
            style.line = lineStyle(nameOf(file.at(at.parameters()[1])));
            if (const auto width = at.parameters()[2].number()) style.width = *width;
        } else if (at.is("SURFACE_STYLE_TRANSPARENT")) {
            const auto transparency = at.parameters()[0].number();
            if (style.color && transparency) {
                (*style.color)[ExcColor::EChannel::alpha] = channel(1 - *transparency);
                style.color->setHasAlpha(true);
            }
        } else if (at.is("DRAUGHTING_PRE_DEFINED_TEXT_FONT") || at.is("TEXT_FONT")) {
            style.font = nameOf(at);
        }
        for (const Instance& next : at.references()) pending.push_back(next);
    }
    return style;
}

std::unordered_set<std::uint64_t> readInvisible(const StepFile& file) {
    std::unordered_set<std::uint64_t> numbers;
    for (const Instance& each : file.structure().all("INVISIBILITY"))
        for (const Value& item : attribute(each, "INVISIBILITY", 0, 0).items())
            numbers.insert(item.reference());
    return numbers;
}

} // namespace zeq::step
