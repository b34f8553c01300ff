// Names, visibility and lines of faces, edges and what else the file names by itself; and the colours that it uses.
#include <algorithm>
#include <cwctype>
#include <set>
#include <unordered_map>

#include "step/part_reading.h"
#include "step/styles.h"

namespace zeq::step {

namespace {

using ELineType = ExcTopologicalEntityInformation::ELineType;

ELineType lineType(ExcVisuLineAttribute::ELineStyle style) {
    using enum ExcVisuLineAttribute::ELineStyle;
    switch (style) {
    case solid_line:
        return ELineType::solid;
    case dash_line:
        return ELineType::dash;
    case dot_line:
        return ELineType::dot;
    case dash_dot_line:
        return ELineType::dash_dot;
    case dash_dot_dot_line:
        return ELineType::dash_dot_dot;
    default:
        return ELineType::unknown;
    }
}

/// A name that is just a number, or the type, tells nothing of the entity.
bool isOwnName(const std::wstring& name, const Instance& item) {
    std::wstring letters;
    bool hasLetter = false;
    for (const wchar_t c : name) {
        letters += c == L' ' ? L'_' : static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
        hasLetter = hasLetter || std::iswalpha(static_cast<wint_t>(c)) != 0;
    }
    return hasLetter && saysSomething(name) && letters != typeText(item);
}

bool isCurve(const Instance& item) {
    const auto types = item.types();
    return std::ranges::any_of(types, [](std::string_view type) {
        return type.ends_with("CURVE") || type.ends_with("CURVE_WITH_KNOTS") || type == "LINE" ||
               type == "CIRCLE" || type == "ELLIPSE" || type == "POLYLINE";
    });
}

/// The edges that a curve is the geometry of, itself or with its images in the surfaces; the curve if it is of none.
std::vector<Instance> edgesOf(const Instance& curve) {
    if (curve.is("EDGE_CURVE")) return {curve};
    std::vector<Instance> edges;
    const auto add = [&edges](const Instance& at) {
        for (const Instance& edge : at.users("EDGE_CURVE")) edges.push_back(edge);
    };
    add(curve);
    for (const std::string_view type : {"SURFACE_CURVE", "SEAM_CURVE", "INTERSECTION_CURVE"})
        for (const Instance& user : curve.users(type)) add(user);
    if (edges.empty()) edges.push_back(curve);
    return edges;
}

class EntityReader {
public:
    explicit EntityReader(PartReading& reading) : m_reading(reading) {}

    void readNames() {
        for (const std::string_view type : {"ADVANCED_FACE", "FACE_SURFACE", "EDGE_CURVE"})
            for (const Instance& item : m_reading.file.structure().all(type))
                if (const std::wstring name = trimmed(nameOf(item)); isOwnName(name, item))
                    if (auto* const info = informationOf(item)) info->setName(name);
    }

    void readVisibility() {
        const auto& structure = m_reading.file.structure();
        for (const std::uint64_t number : readInvisible(m_reading.file)) {
            const Instance hidden = structure[number];
            if (hidden.is("PRESENTATION_LAYER_ASSIGNMENT"))
                hideAll(attribute(hidden, "PRESENTATION_LAYER_ASSIGNMENT", 0, 2));
            else if (hidden.type().ends_with("REPRESENTATION"))
                hideAll(attribute(hidden, "REPRESENTATION", 0, 1));
            else
                hide(hidden);
        }
        for (const Instance& each : structure.all("CONTEXT_DEPENDENT_INVISIBILITY"))
            lose(each, L"what is hidden only in some views is shown");
    }

    /// Lines and colours.
    void readStyles() {
        for (const std::string_view type : {"STYLED_ITEM", "OVER_RIDING_STYLED_ITEM"})
            for (const Instance& styled : m_reading.file.structure().all(type)) {
                const Instance item = styledBy(m_reading.file, styled);
                if (!item || isAnnotation(item)) continue;
                const Style& style = styleOf(styled);
                if (style.color && isShown(item)) {
                    if (m_colors.insert(channels(*style.color)).second) m_reading.count("colours", styled);
                    paint(item, *style.color);
                }
                if (isCurve(item) && (lineType(style.line) != ELineType::unknown || style.width > 0))
                    for (const Instance& edge : edgesOf(item))
                        if (auto* const info = informationOf(edge)) {
                            info->setLineType(lineType(style.line));
                            info->setLineThickness(travelling(edge, style.width));
                        }
            }
    }

    /// Points and placements have no colour in a scene, and a surface has that of its face.
    static bool isShown(const Instance& item) {
        return !item.is("CARTESIAN_POINT") && !item.is("AXIS2_PLACEMENT_3D") && !item.is("PLANE") &&
               !item.type().ends_with("_SURFACE") && !item.is("VERTEX_POINT");
    }

    void paint(const Instance& item, const ExcColor& color) {
        auto& colors = m_reading.contents.colors;
        if (item.is("GEOMETRIC_CURVE_SET") || item.is("GEOMETRIC_SET"))
            for (const Instance& element : item.references()) colors[element.number()] = color;
        else if (isCurve(item))
            for (const Instance& edge : edgesOf(item)) colors[edge.number()] = color;
        else
            colors[item.number()] = color;
    }

    /// In the order of the numbers.
    void finish() {
        for (const auto& [number, information] : m_informations)
            m_reading.entities(information.product).addData(information.information);
    }

private:
    struct Information {
        Instance product;
        ExcTopologicalEntityInformationPtr information;
    };

    /// A length that is said of an item.
    double travelling(const Instance& item, double length) {
        const double unit = m_reading.owners.ofItem(item).millimeters;
        return unit > 0 ? length * unit / m_reading.file.millimeters() : length;
    }

    /// Null when it belongs to no part.
    ExcTopologicalEntityInformation* informationOf(const Instance& item) {
        const auto [at, isNew] = m_informations.try_emplace(item.number());
        if (isNew) {
            at->second = {m_reading.owners.ofItem(item).product,
                          std::make_shared<ExcTopologicalEntityInformation>()};
            at->second.information->setEntity(entityOf(item));
            if (!at->second.product) {
                lose(item, L"how it is named or shown, as it belongs to no part");
                m_informations.erase(at);
                return nullptr;
            }
        }
        return at->second.information.get();
    }

    void lose(const Instance& instance, std::wstring reason) {
        m_reading.count("properties", instance);
        m_reading.lose("properties", std::move(reason), instance);
    }

    void hide(const Instance& entry) {
        const Instance item = styledBy(m_reading.file, entry);
        if (!item || isAnnotation(item)) return; // annotations say themselves whether they are hidden
        if (auto* const info = informationOf(item)) info->setHidden(true);
    }

    void hideAll(const Value& items) {
        for (const Value& value : items.items()) hide(m_reading.file.at(value));
    }

    /// Files use few styles for many items.
    const Style& styleOf(const Instance& styled) {
        const std::string_view styles = attribute(styled, "STYLED_ITEM", 1, 0).raw();
        const auto [at, isNew] = m_styles.try_emplace(styles);
        if (isNew) at->second = readStyle(m_reading.file, styled);
        return at->second;
    }

    static std::uint64_t channels(const ExcColor& color) {
        using Channel = ExcColor::EChannel;
        std::uint64_t bits = color.hasAlpha() ? color[Channel::alpha] : 255;
        for (const Channel channel : {Channel::blue, Channel::green, Channel::red})
            bits = (bits << 16) | color[channel];
        return bits;
    }

    PartReading& m_reading;
    std::map<std::uint64_t, Information> m_informations;
    std::unordered_map<std::string_view, Style> m_styles;
    std::set<std::uint64_t> m_colors;
};

} // namespace

void readEntityData(PartReading& reading) {
    EntityReader reader(reading);
    reader.readNames();
    reader.readVisibility();
    reader.readStyles();
    reader.finish();
}

} // namespace zeq::step
