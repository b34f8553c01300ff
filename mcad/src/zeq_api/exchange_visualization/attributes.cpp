// The JSON forms of display attributes.
#include "zeq_api/exchange_visualization/attributes.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_visualization/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

namespace {

constexpr const char* nullMaterial = "ExcVisuAttributes: attempt to add null Material object.";

} // namespace

const EnumTable& enumTable(ExcVisuFont::EPitch) {
    using enum ExcVisuFont::EPitch;
    static constexpr EnumEntry names[] = {{unknown, L"unknown"}, {fixed, L"fixed"}, {variable, L"variable"}};
    static const EnumTable table{"ExcVisuFont::EPitch", names};
    return table;
}

struct ExcVisuFont::JsonForm {
    using This = ExcVisuFont;
    static constexpr json::Form form{
        json::Head{"ExcVisuFont", area::exchangeVisualization},
        json::field(L"name", &This::m_name),
        json::field(L"text_height", &This::m_textHeight),
        json::field(L"font_pitch", &This::m_fontPitch),
        json::field(L"spacing_factor", &This::m_spacingFactor),
        json::field(L"width_scaling_factor", &This::m_widthScalingFactor),
    };
};

ZEQ_JSON_OBJECT(ExcVisuFont)

const EnumTable& enumTable(ExcVisuLineAttribute::ELineStyle) {
    using enum ExcVisuLineAttribute::ELineStyle;
    static constexpr EnumEntry names[] = {{undefined, L"undefined"},
                                          {solid_line, L"solid_line"},
                                          {dash_dot_line, L"dash_dot_line"},
                                          {dash_line, L"dash_line"},
                                          {dot_line, L"dot_line"},
                                          {dash_dot_dot_line, L"dash_dot_dot_line"},
                                          {dash_dot_dot_dot_line, L"dash_dot_dot_dot_line"},
                                          {center_line, L"center_line"},
                                          {phantom_line, L"phantom_line"}};
    static const EnumTable table{"ExcVisuLineAttribute::ELineStyle", names};
    return table;
}

struct ExcVisuLineAttribute::JsonForm {
    using This = ExcVisuLineAttribute;
    static constexpr json::Form form{
        json::Head{"ExcVisuLineAttribute", area::exchangeVisualization},
        json::field(L"line_weight", &This::m_lineWeight),
        json::field(L"line_style", &This::m_lineStyle),
    };
};

ZEQ_JSON_OBJECT(ExcVisuLineAttribute)

struct ExcVisuAttributes::JsonForm {
    using This = ExcVisuAttributes;
    static constexpr json::Form form{
        json::Head{"ExcVisuAttributes", area::exchangeVisualization},
        json::field(L"font", &This::m_font, json::whenSet),
        json::field(L"color", &This::m_color, json::whenSet),
        json::field(L"hidden", &This::m_hidden),
        json::children(L"materials", &This::m_materials, &This::addMaterial),
        json::field(L"line_attribute", &This::m_lineAttribute, json::whenSet),
    };
};

ZEQ_JSON_OBJECT(ExcVisuAttributes)

void ExcVisuAttributes::addMaterial(const ExcVisuMaterialPtr& material) {
    detail::appendChild(m_materials, material, nullMaterial);
}
void ExcVisuAttributes::addMaterials(const std::vector<ExcVisuMaterialPtr>& materials) {
    detail::appendEach(m_materials, materials, nullMaterial);
}
void ExcVisuAttributes::setMaterials(const std::vector<ExcVisuMaterialPtr>& materials) {
    detail::setChildren(m_materials, materials, nullMaterial);
}

} // namespace zeq
