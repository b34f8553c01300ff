// A product under construction: parts and assemblies with names, colours, layers, materials and measured
// properties.
#pragma once

#include <string>

#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_Trsf.hxx>

namespace samples {

/// An sRGB colour with channels 0 to 255 and an opacity from 0 to 1.
struct Color {
    int red, green, blue;
    double alpha = 1;
};

struct Material {
    std::string name;
    std::string description;
    double density; ///< grams per cubic centimetre
};

/// The XCAF document of one sample. Names are UTF-8; lengths are millimetres.
class Model {
public:
    /// Makes a new document. The kernel's STEP parameters for writing are process-wide and set here.
    Model();

    /// A part; its area, volume and centroid are measured and travel as validation properties.
    TDF_Label addPart(const std::string& name, const TopoDS_Shape& shape);
    TDF_Label addAssembly(const std::string& name);
    /// Places `child` inside `assembly` and returns the instance. The STEP writer drops the name of an
    /// instance that is placed at the very origin.
    TDF_Label place(const TDF_Label& assembly, const TDF_Label& child, const std::string& name,
                    const gp_Trsf& placement);

    /// Colours a part or an instance. An instance's colour overrides its part's: the STEP writer crashes when
    /// the part has none.
    void paint(const TDF_Label& item, const Color& color);
    /// Colours one face of a part, over the part's own colour.
    void paintFace(const TDF_Label& part, const TopoDS_Shape& face, const Color& color);
    void hide(const TDF_Label& instance);
    void putOnLayer(const TDF_Label& part, const std::string& layer);
    void setMaterial(const TDF_Label& part, const Material& material);

    /// Brings the assemblies up to date and gives the document for writing.
    const Handle(TDocStd_Document) & finish();

private:
    Handle(TDocStd_Document) m_document;
};

/// A turn by `degrees` about the axis through the origin, then a shift.
gp_Trsf turnedAbout(const gp_Dir& axis, double degrees, const gp_Vec& shift);
inline gp_Trsf shifted(double x, double y, double z) {
    gp_Trsf result;
    result.SetTranslation(gp_Vec(x, y, z));
    return result;
}

} // namespace samples
