// What the kernel's document knows about a part, an assembly or an instance beyond its place in the
// structure.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <TDF_Label.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>

#include "convexor/appearance.h"
#include "convexor/length_unit.h"
#include "convexor/model_reader.h"
#include "zeq_api/exchange_common/color.h"
#include "zeq_api/exchange_common/misc_data.h"

namespace zeq::convexor {

/// Reads the attributes that hang on the labels of one model.
class Attributes {
public:
    explicit Attributes(const Model& model);

    /// The name; empty for one that the kernel made up.
    std::wstring name(const TDF_Label& label) const;
    /// Whether it is what the kernel, also when it wrote the file, calls an instance without a name.
    static bool isMadeUp(const std::wstring& name) { return name.starts_with(L"=>["); }
    /// The colour in sRGB with channels 0 to 255, alpha only where the colour is not opaque; no colour at all
    /// where there is none. A part may have it from its faces, if all share one.
    ExcColor color(const TDF_Label& label) const;
    /// Whether the label itself or one of its layers is switched off.
    bool isHidden(const TDF_Label& label) const;
    /// How the shapes of a part are drawn. What a solid or a shell says holds for its faces and edges, unless they
    /// say something else.
    Appearance appearance(const TDF_Label& part) const;
    /// A group each for validation properties, layers and material, as far as there are any. Lengths, areas
    /// and volumes are in the unit of the model.
    /// @param withMaterial false where the kernel takes something else for a material
    void addMiscData(const TDF_Label& label, bool withMaterial, ExcMiscData& data) const;

private:
    /// The shapes in a part that may have attributes of their own.
    static void collectParts(const TDF_Label& part, std::vector<std::pair<TopoDS_Shape, TDF_Label>>& parts);
    /// The first colour of those types that the label has.
    ExcColor colorOf(const TDF_Label& label, std::initializer_list<XCAFDoc_ColorType> types) const;
    bool findOwnColor(const TDF_Label& label, Quantity_ColorRGBA& color) const;
    bool findColorOfFaces(const TDF_Label& part, Quantity_ColorRGBA& color) const;

    ExcMiscPropertiesGroup validationProperties(const TDF_Label& label) const;
    ExcMiscPropertiesGroup material(const TDF_Label& label) const;

    Handle(XCAFDoc_ColorTool) m_colors;
    Handle(XCAFDoc_LayerTool) m_layers;
    Handle(XCAFDoc_MaterialTool) m_materials;
    LengthUnit m_lengthUnit;
    double m_densityUnit;
};

} // namespace zeq::convexor
