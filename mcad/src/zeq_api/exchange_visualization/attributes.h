// How a node of the scene is drawn. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_visualization/material.h"

namespace zeq {

/// The font of a display text.
class ExcVisuFont : public IJsonObject {
public:
    enum class EPitch {
        unknown,
        fixed,
        variable
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(const std::wstring& name) { m_name = name; }

    /// In the length unit of the scene.
    double textHeight() const { return m_textHeight; }
    void setTextHeight(double height) { m_textHeight = height; }

    EPitch pitch() const { return m_fontPitch; }
    void setPitch(EPitch pitch) { m_fontPitch = pitch; }

    double spacingFactor() const { return m_spacingFactor; }
    void setSpacingFactor(double factor) { m_spacingFactor = factor; }

    double widthScalingFactor() const { return m_widthScalingFactor; }
    void setWidthScalingFactor(double factor) { m_widthScalingFactor = factor; }

private:
    struct JsonForm;

    std::wstring m_name;
    double m_textHeight = 0;
    EPitch m_fontPitch = EPitch::unknown;
    double m_spacingFactor = 0;
    double m_widthScalingFactor = 0;
};
const EnumTable& enumTable(ExcVisuFont::EPitch);
using ExcVisuFontPtr = std::shared_ptr<ExcVisuFont>;

/// How lines are drawn.
class ExcVisuLineAttribute : public IJsonObject {
public:
    enum class ELineStyle {
        undefined,
        solid_line,
        dash_dot_line,
        dash_line,
        dot_line,
        dash_dot_dot_line,
        dash_dot_dot_dot_line,
        center_line = 8, // 7 is no style
        phantom_line
    };

    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    double lineWeight() const { return m_lineWeight; }
    void setLineWeight(double weight) { m_lineWeight = weight; }

    ELineStyle lineStyle() const { return m_lineStyle; }
    void setLineStyle(ELineStyle style) { m_lineStyle = style; }

private:
    struct JsonForm;

    double m_lineWeight = 0;
    ELineStyle m_lineStyle = ELineStyle::undefined;
};
const EnumTable& enumTable(ExcVisuLineAttribute::ELineStyle);
using ExcVisuLineAttributePtr = std::shared_ptr<ExcVisuLineAttribute>;

/// What a node of the scene says of the look of everything below it.
class ExcVisuAttributes : public IJsonObject {
public:
    /// Appends to the materials.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// May be null, as the colour and the line attribute.
    const ExcVisuFontPtr& font() const { return m_font; }
    void setFont(const ExcVisuFontPtr& font) { m_font = font; }

    const std::shared_ptr<ExcColor>& color() const { return m_color; }
    void setColor(const std::shared_ptr<ExcColor>& color) { m_color = color; }

    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden) { m_hidden = hidden; }

    const std::vector<ExcVisuMaterialPtr>& materials() const { return m_materials; }
    /// Appends a material; null is refused with a warning.
    void addMaterial(const ExcVisuMaterialPtr& material);
    void addMaterials(const std::vector<ExcVisuMaterialPtr>& materials);
    void setMaterials(const std::vector<ExcVisuMaterialPtr>& materials);

    const ExcVisuLineAttributePtr& lineAttribute() const { return m_lineAttribute; }
    void setLineAttribute(const ExcVisuLineAttributePtr& attribute) { m_lineAttribute = attribute; }

private:
    struct JsonForm;

    ExcVisuFontPtr m_font;
    std::shared_ptr<ExcColor> m_color;
    bool m_hidden = false;
    std::vector<ExcVisuMaterialPtr> m_materials;
    ExcVisuLineAttributePtr m_lineAttribute;
};
using ExcVisuAttributesPtr = std::shared_ptr<ExcVisuAttributes>;

} // namespace zeq
