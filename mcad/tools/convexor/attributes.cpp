// Attribute look-up in the kernel's document.
#include "convexor/attributes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include <Quantity_ColorRGBA.hxx>
#include <TColStd_HSequenceOfExtendedString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDataStd_TreeNode.hxx>
#include <TopAbs_ShapeEnum.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFDoc.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_Volume.hxx>

#include "convexor/properties.h"
#include "convexor/text.h"

namespace zeq::convexor {

namespace {

using ValueType = ExcMiscProperty::EValueType;

std::uint16_t channel(double value) { return static_cast<std::uint16_t>(std::lround(value * 255)); }

std::wstring textOf(const Handle(TCollection_HAsciiString) & text) {
    return text.IsNull() ? std::wstring() : wideText(text->ToCString());
}

ExcColor excColor(const Quantity_ColorRGBA& color) {
    double red, green, blue;
    color.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    ExcColor result(channel(red), channel(green), channel(blue));
    if (color.Alpha() < 1) {
        result[ExcColor::EChannel::alpha] = channel(color.Alpha());
        result.setHasAlpha(true);
    }
    return result;
}

ExcMiscPropertiesGroup layers(const TDF_Label& label, const Handle(XCAFDoc_LayerTool) & tool) {
    ExcMiscPropertiesGroup group;
    group.name() = L"Layers";
    if (Handle(TColStd_HSequenceOfExtendedString) names; tool->GetLayers(label, names))
        for (const TCollection_ExtendedString& name : *names)
            group.addProperty(textProperty(L"Layer", fromUtf16(name)));
    return group;
}

} // namespace

Attributes::Attributes(const Model& model)
    : m_colors(XCAFDoc_DocumentTool::ColorTool(model.document->Main())),
      m_layers(XCAFDoc_DocumentTool::LayerTool(model.document->Main())),
      m_materials(XCAFDoc_DocumentTool::MaterialTool(model.document->Main())), m_lengthUnit(model.lengthUnit),
      m_densityUnit(model.densityUnit) {}

std::wstring Attributes::name(const TDF_Label& label) const {
    Handle(TDataStd_Name) attribute;
    if (!label.FindAttribute(TDataStd_Name::GetID(), attribute)) return {};
    std::wstring name = fromUtf16(attribute->Get());
    return isMadeUp(name) ? std::wstring() : name;
}

ExcColor Attributes::color(const TDF_Label& label) const {
    Quantity_ColorRGBA color;
    if (!findOwnColor(label, color) && !findColorOfFaces(label, color)) return {};
    return excColor(color);
}

bool Attributes::isHidden(const TDF_Label& label) const {
    if (!m_colors->IsVisible(label)) return true;
    TDF_LabelSequence layerLabels;
    m_layers->GetLayers(label, layerLabels);
    for (const TDF_Label& layer : layerLabels)
        if (!m_layers->IsVisible(layer)) return true;
    return false;
}

void Attributes::collectParts(const TDF_Label& part, std::vector<std::pair<TopoDS_Shape, TDF_Label>>& parts) {
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(part, labels);
    for (const TDF_Label& label : labels) parts.emplace_back(XCAFDoc_ShapeTool::GetShape(label), label);
    TDF_LabelSequence components; // of a part whose shapes the kernel keeps apart
    XCAFDoc_ShapeTool::GetComponents(part, components);
    for (const TDF_Label& component : components) {
        const TopLoc_Location place = XCAFDoc_ShapeTool::GetLocation(component);
        TDF_Label label;
        if (!XCAFDoc_ShapeTool::GetReferredShape(component, label)) continue;
        parts.emplace_back(XCAFDoc_ShapeTool::GetShape(component), label);
        parts.emplace_back(XCAFDoc_ShapeTool::GetShape(component), component);
        TDF_LabelSequence inner;
        XCAFDoc_ShapeTool::GetSubShapes(label, inner);
        for (const TDF_Label& each : inner)
            parts.emplace_back(XCAFDoc_ShapeTool::GetShape(each).Moved(place), each);
    }
}

Appearance Attributes::appearance(const TDF_Label& part) const {
    Appearance result{{color(part), isHidden(part)}, {}};
    std::vector<std::pair<TopoDS_Shape, TDF_Label>> parts;
    collectParts(part, parts);
    // What is larger comes first, so that the smaller has the last word.
    std::ranges::stable_sort(parts, {}, [](const auto& each) { return each.first.ShapeType(); });
    for (const auto& each : parts) { // no binding, which clang 14 captures in no lambda
        const TopoDS_Shape& shape = each.first;
        const TDF_Label& label = each.second;
        const bool hides = isHidden(label);
        const auto apply = [&](TopAbs_ShapeEnum kind, const ExcColor& color) {
            if (!hides && !color.hasRGB()) return;
            for (TopExp_Explorer at(shape, kind); at.More(); at.Next()) {
                Look& look = *result.shapes.Bound(at.Current(), Look(result.of(at.Current())));
                if (color.hasRGB()) look.color = color;
                look.isHidden = look.isHidden || hides;
            }
        };
        const bool isLine = shape.ShapeType() == TopAbs_EDGE || shape.ShapeType() == TopAbs_WIRE;
        apply(TopAbs_FACE, colorOf(label, {XCAFDoc_ColorSurf, XCAFDoc_ColorGen}));
        apply(TopAbs_EDGE, isLine ? colorOf(label, {XCAFDoc_ColorCurv, XCAFDoc_ColorGen, XCAFDoc_ColorSurf})
                                  : colorOf(label, {XCAFDoc_ColorCurv}));
        apply(TopAbs_VERTEX, {});
    }
    return result;
}

void Attributes::addMiscData(const TDF_Label& label, bool withMaterial, ExcMiscData& data) const {
    for (const auto& group : {validationProperties(label), layers(label, m_layers),
                              withMaterial ? material(label) : ExcMiscPropertiesGroup()})
        if (!group.properties().empty()) data.addGroup(group);
}

ExcColor Attributes::colorOf(const TDF_Label& label, std::initializer_list<XCAFDoc_ColorType> types) const {
    Quantity_ColorRGBA color;
    for (const XCAFDoc_ColorType type : types)
        if (m_colors->GetColor(label, type, color)) return excColor(color);
    return {};
}

bool Attributes::findOwnColor(const TDF_Label& label, Quantity_ColorRGBA& color) const {
    for (const XCAFDoc_ColorType type : {XCAFDoc_ColorSurf, XCAFDoc_ColorGen, XCAFDoc_ColorCurv})
        if (m_colors->GetColor(label, type, color)) return true;
    return false;
}

bool Attributes::findColorOfFaces(const TDF_Label& part, Quantity_ColorRGBA& color) const {
    TDF_LabelSequence subShapes;
    if (!XCAFDoc_ShapeTool::GetSubShapes(part, subShapes)) return false;
    std::optional<Quantity_ColorRGBA> common;
    TopTools_IndexedMapOfShape coloredFaces;
    for (const TDF_Label& subShape : subShapes) {
        if (!findOwnColor(subShape, color)) continue;
        if (common && !common->IsEqual(color)) return false;
        common = color;
        TopExp::MapShapes(XCAFDoc_ShapeTool::GetShape(subShape), TopAbs_FACE, coloredFaces);
    }
    TopTools_IndexedMapOfShape allFaces;
    TopExp::MapShapes(XCAFDoc_ShapeTool::GetShape(part), TopAbs_FACE, allFaces);
    return common && coloredFaces.Extent() == allFaces.Extent();
}

ExcMiscPropertiesGroup Attributes::validationProperties(const TDF_Label& label) const {
    ExcMiscPropertiesGroup group;
    group.name() = L"Validation properties";
    const double unit = m_lengthUnit.millimeters;
    const std::wstring symbol = m_lengthUnit.symbol;
    if (double area; XCAFDoc_Area::Get(label, area))
        group.addProperty(quantity(L"Surface area", area / (unit * unit), ValueType::area, symbol + L"^2"));
    if (double volume; XCAFDoc_Volume::Get(label, volume))
        group.addProperty(
            quantity(L"Volume", volume / (unit * unit * unit), ValueType::volume, symbol + L"^3"));
    if (gp_Pnt centroid; XCAFDoc_Centroid::Get(label, centroid)) {
        group.addProperty(quantity(L"Centroid x", centroid.X() / unit, ValueType::length, symbol));
        group.addProperty(quantity(L"Centroid y", centroid.Y() / unit, ValueType::length, symbol));
        group.addProperty(quantity(L"Centroid z", centroid.Z() / unit, ValueType::length, symbol));
    }
    return group;
}

ExcMiscPropertiesGroup Attributes::material(const TDF_Label& label) const {
    ExcMiscPropertiesGroup group;
    group.name() = L"Material";
    Handle(TDataStd_TreeNode) node;
    if (!label.FindAttribute(XCAFDoc::MaterialRefGUID(), node) || !node->HasFather()) return group;
    Handle(TCollection_HAsciiString) name, description, densityName, densityType;
    double density = 0;
    if (!m_materials->GetMaterial(node->Father()->Label(), name, description, density, densityName,
                                  densityType))
        return group;
    group.addProperty(textProperty(L"Name", textOf(name)));
    group.addProperty(textProperty(L"Description", textOf(description)));
    if (density > 0 && m_densityUnit > 0)
        group.addProperty(quantity(L"Density", density * m_densityUnit, ValueType::density, L"g/cm^3"));
    return group;
}

} // namespace zeq::convexor
