// Builds the XCAF document behind a sample.
#include "model.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_Volume.hxx>
#include <gp_Ax1.hxx>

namespace samples {

namespace {

void setName(const TDF_Label& label, const std::string& name) {
    TDataStd_Name::Set(label, TCollection_ExtendedString(name.c_str(), Standard_True));
}

void measure(const TDF_Label& part, const TopoDS_Shape& shape) {
    GProp_GProps surface;
    GProp_GProps volume;
    BRepGProp::SurfaceProperties(shape, surface);
    BRepGProp::VolumeProperties(shape, volume);
    XCAFDoc_Area::Set(part, surface.Mass());
    XCAFDoc_Volume::Set(part, volume.Mass());
    XCAFDoc_Centroid::Set(part, volume.CentreOfMass());
}

Handle(TCollection_HAsciiString) text(const std::string& value) {
    return new TCollection_HAsciiString(value.c_str());
}

} // namespace

Model::Model() : m_document(new TDocStd_Document("BinXCAF")) {
    XCAFDoc_DocumentTool::Set(m_document->Main(), Standard_False);
    XCAFDoc_ColorTool::SetAutoNaming(Standard_False);
    XCAFDoc_ShapeTool::SetAutoNaming(Standard_False);
}

TDF_Label Model::addPart(const std::string& name, const TopoDS_Shape& shape) {
    const TDF_Label part =
        XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->AddShape(shape, Standard_False);
    setName(part, name);
    measure(part, shape);
    return part;
}

TDF_Label Model::addAssembly(const std::string& name) {
    const TDF_Label assembly = XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->NewShape();
    setName(assembly, name);
    return assembly;
}

TDF_Label Model::place(const TDF_Label& assembly, const TDF_Label& child, const std::string& name,
                       const gp_Trsf& placement) {
    const TDF_Label instance = XCAFDoc_DocumentTool::ShapeTool(m_document->Main())
                                   ->AddComponent(assembly, child, TopLoc_Location(placement));
    setName(instance, name);
    return instance;
}

void Model::paint(const TDF_Label& item, const Color& color) {
    const Quantity_Color rgb(color.red / 255.0, color.green / 255.0, color.blue / 255.0, Quantity_TOC_sRGB);
    XCAFDoc_DocumentTool::ColorTool(m_document->Main())
        ->SetColor(item, Quantity_ColorRGBA(rgb, static_cast<float>(color.alpha)), XCAFDoc_ColorSurf);
}

void Model::paintFace(const TDF_Label& part, const TopoDS_Shape& face, const Color& color) {
    paint(XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->AddSubShape(part, face), color);
}

void Model::hide(const TDF_Label& instance) {
    XCAFDoc_DocumentTool::ColorTool(m_document->Main())->SetVisibility(instance, Standard_False);
}

void Model::putOnLayer(const TDF_Label& part, const std::string& layer) {
    XCAFDoc_DocumentTool::LayerTool(m_document->Main())
        ->SetLayer(part, TCollection_ExtendedString(layer.c_str(), Standard_True));
}

void Model::setMaterial(const TDF_Label& part, const Material& material) {
    XCAFDoc_DocumentTool::MaterialTool(m_document->Main())
        ->SetMaterial(part, text(material.name), text(material.description), material.density,
                      text("density measure"), text("POSITIVE_RATIO_MEASURE"));
}

const Handle(TDocStd_Document) & Model::finish() {
    XCAFDoc_DocumentTool::ShapeTool(m_document->Main())->UpdateAssemblies();
    return m_document;
}

gp_Trsf turnedAbout(const gp_Dir& axis, double degrees, const gp_Vec& shift) {
    gp_Trsf result;
    result.SetRotation(gp_Ax1(gp_Pnt(), axis), degrees * M_PI / 180);
    result.SetTranslationPart(shift);
    return result;
}

} // namespace samples
