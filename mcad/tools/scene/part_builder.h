// Turns the display data, the PMI and the properties of one block into a part.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "scene/shape_builder.h"
#include "zeq_api/exchange_common/misc_data.h"
#include "zeq_api/exchange_mechanical/mechanical_misc_data.h"
#include "zeq_api/exchange_pmi/annotation_set.h"
#include "zeq_api/exchange_visualization/scene.h"

namespace zeq::scene {

/// The millimetres of a unit of length; 0 for one that says nothing.
double millimeters(ELengthUnitType unit);

void appendProperties(const ExcMiscData& data, std::vector<PropertyGroup>& groups);

/// Adds to one part; its display data has to come before its PMI.
class PartBuilder {
public:
    /// @param owner how warnings call the part
    /// @param millimeters of the unit of the scene
    PartBuilder(Part& part, const std::string& owner, double millimeters, Warnings& warnings)
        : m_part(part), m_owner(owner), m_millimeters(millimeters), m_warnings(warnings),
          m_shapes(owner, warnings) {}

    void add(const ExcVisualizationData& display);
    void add(const ExcPMIData& data);
    void add(const ExcMechanicalMiscData& data);
    /// Tells the views which annotations there are, and the annotations what they say.
    /// @param unit of the model
    void finish(ELengthUnitType unit);

private:
    /// A node on the way through the scene.
    struct Level {
        const ExcVisuNode* node = nullptr;
        Drawn drawn;
        double lineWidth = 0;
        bool isPMI = false;
        std::uint32_t annotation = none; ///< that the node is part of
    };
    void visit(const ExcVisuNode& node, Level& level);
    void addMesh(const ExcVisuMesh& mesh, Level& level);
    void addAnnotation(const ExcVisuPMI& pmi, Level& level);
    Annotation& newAnnotation(const std::wstring& id, const std::wstring& name, Level& level);
    Shape& shapeOf(const Level& level);
    void describe(const ExcPMIAnnotationPtr& semantic, const ExcPMIAnnotationView& view);
    void addText(const ExcVisuText& text, const Drawn& drawn, Annotation& annotation);
    /// Draws the value of an annotation that has a place and nothing else.
    void drawValue(Annotation& annotation, double textHeight);
    double textHeight() const;
    void addView(View view, const ExcCamera& camera, const ExcClippingPlane* clipping, double scale,
                 std::vector<std::wstring> annotationIds);

    Part& m_part;
    std::string m_owner;
    double m_millimeters;
    Warnings& m_warnings;
    ShapeBuilder m_shapes;
    std::multimap<std::wstring, std::uint32_t> m_byId;
    std::vector<ExcPMIAnnotationPtr> m_semantics;
    std::vector<std::vector<std::wstring>> m_shownIds; ///< of each view
};

} // namespace zeq::scene
