// Types of nodes by what annotations say.
#include "convexor/annotation_nodes.h"

#include "zeq_api/exchange_pmi/datum.h"
#include "zeq_api/exchange_pmi/dimension.h"
#include "zeq_api/exchange_pmi/gdt.h"
#include "zeq_api/exchange_pmi/note.h"

namespace zeq::convexor {

namespace {

using Node = ExcVisuNode::EType;

Node dimensionType(const ExcPMIDimension& dimension) {
    using enum ExcPMIDimension::ESubType;
    switch (dimension.subType()) {
    case distance:
    case distance_offset:
        return Node::DIMENSION_DISTANCE;
    case length:
    case length_or_distance:
    case length_curvilinear:
    case length_circular:
        return Node::DIMENSION_LENGTH;
    case angle:
    case angle_arc:
    case slope:
        return Node::DIMENSION_ANGLE;
    case radius:
    case radius_tangent:
    case radius_cylinder:
    case radius_edge:
    case fillet:
        return Node::DIMENSION_RADIUS;
    case diameter:
    case diameter_tangent:
    case diameter_cylinder:
    case diameter_edge:
    case diameter_cone:
        return Node::DIMENSION_DIAMETER;
    case chamfer:
        return Node::DIMENSION_CHAMFER;
    case coord_dimension_3d:
        return Node::DIMENSION_COORDINATE_3D;
    default:
        return Node::DIMENSION_UNKNOWN;
    }
}

Node toleranceType(const ExcPMIGDT& tolerance) {
    using enum ExcPMIGDT::EToleranceType;
    const bool isComposite = tolerance.gdtRows().size() > 1;
    switch (tolerance.toleranceType()) {
    case form_straightness:
        return Node::GEOMTOL_STRAIGHTNESS;
    case form_flatness:
        return Node::GEOMTOL_FLATNESS;
    case form_circularity:
        return Node::GEOMTOL_CIRCULARITY;
    case form_cylindricity:
        return Node::GEOMTOL_CYLINDRICITY;
    case form_profile_any_line:
        return Node::GEOMTOL_PROFILE_LINE;
    case form_profile_any_surface:
        return isComposite ? Node::GEOMTOL_COMP_PROFILE_SURFACE : Node::GEOMTOL_PROFILE_SURFACE;
    case orientation_parallelism:
        return Node::GEOMTOL_PARALLELISM;
    case orientation_perpendicularity:
        return Node::GEOMTOL_PERPENDICULARITY;
    case orientation_angularity:
        return Node::GEOMTOL_ANGULARITY;
    case location_true_position:
        return isComposite ? Node::GEOMTOL_COMP_POSITION : Node::GEOMTOL_POSITION;
    case location_position_of_any_line:
        return Node::GEOMTOL_POSITION_LINE;
    case Location_position_of_a_surface:
        return Node::GEOMTOL_POSITION_SURFACE;
    case location_concentricity:
    case location_coaxiality:
        return Node::GEOMTOL_CONCENTRICITY;
    case location_symmetry:
        return Node::GEOMTOL_SYMMETRY;
    case run_out_circular:
        return Node::GEOMTOL_RUNOUT_CIRCULAR;
    case run_out_total:
        return Node::GEOMTOL_RUNOUT_TOTAL;
    case unknown:
        break;
    }
    return Node::GEOMTOL_UNKNOWN;
}

Node noteType(const ExcPMINote& note) {
    if (note.isFlagNote()) return Node::FLAGNOTE;
    return note.isNOA() ? Node::NOA : Node::NOTE;
}

ExcVisuAttributesPtr attributesOf(const step::AnnotationGraphics& graphics) {
    auto attributes = std::make_shared<ExcVisuAttributes>();
    attributes->setHidden(graphics.isHidden);
    if (graphics.style.color) attributes->setColor(std::make_shared<ExcColor>(*graphics.style.color));
    using Line = ExcVisuLineAttribute;
    if (graphics.style.width > 0 || graphics.style.line != Line::ELineStyle::undefined) {
        auto line = std::make_shared<Line>();
        line->setLineWeight(graphics.style.width);
        line->setLineStyle(graphics.style.line);
        attributes->setLineAttribute(line);
    }
    return attributes;
}

/// The text of an annotation that the file gives in characters and draws with nothing.
ExcVisuTextPtr makeText(const step::AnnotationGraphics& graphics) {
    auto text = std::make_shared<ExcVisuText>();
    text->setText(graphics.text);
    text->setAnchorPoint(graphics.anchor->document());
    const step::Placement plane = graphics.plane.value_or(step::Placement());
    text->setDirection(plane.x.document());
    text->setNormal(plane.z.document());
    if (graphics.style.color) text->setColor(*graphics.style.color);
    ExcVisuFont font;
    font.setName(graphics.style.font);
    font.setTextHeight(graphics.height);
    text->setFont(font);
    return text;
}

} // namespace

ExcVisuNode::EType nodeType(const ExcPMIAnnotation& annotation) {
    switch (annotation.type()) {
    case EPMIAnnotationType::dimension:
        return dimensionType(dynamic_cast<const ExcPMIDimension&>(annotation));
    case EPMIAnnotationType::GDT:
        return toleranceType(dynamic_cast<const ExcPMIGDT&>(annotation));
    case EPMIAnnotationType::datum:
        return Node::DATUM_SIMPLE;
    case EPMIAnnotationType::datum_target:
        return Node::DATUM_TARGET;
    case EPMIAnnotationType::roughness:
        return Node::ROUGHNESS;
    default:
        return noteType(dynamic_cast<const ExcPMINote&>(annotation));
    }
}

ExcVisuNode::EType groupType(const ExcPMIAnnotation& annotation) {
    switch (annotation.type()) {
    case EPMIAnnotationType::dimension:
        return Node::DIMENSIONS;
    case EPMIAnnotationType::GDT:
        return Node::GEOMTOLS;
    case EPMIAnnotationType::datum:
    case EPMIAnnotationType::datum_target:
        return Node::DATUMS;
    case EPMIAnnotationType::roughness:
        return Node::ROUGHNESSES;
    default:
        return Node::NOTES;
    }
}

ExcVisuNodePtr makeAnnotationNode(const ExcPMIAnnotation& annotation,
                                  const step::AnnotationGraphics& graphics) {
    auto pmi = std::make_shared<ExcVisuPMI>();
    pmi->setDisplayName(annotation.name());
    pmi->setId(annotation.id());
    pmi->setMechanicalId(annotation.id());
    pmi->setEdges(graphics.edges);
    if (graphics.edges.empty() && !graphics.fill && !graphics.text.empty() && graphics.anchor)
        pmi->addText(makeText(graphics));
    pmi->setLinkedElements(annotation.linkedElements());

    auto node = std::make_shared<ExcVisuNode>();
    node->setType(nodeType(annotation));
    node->setGroupName(annotation.name());
    node->setAttributes(attributesOf(graphics));
    node->setPMI(pmi);
    node->setLeaf(!graphics.fill);
    if (!graphics.fill) return node;

    auto mesh = std::make_shared<ExcVisuMesh>();
    mesh->setDisplayName(annotation.name());
    mesh->setId(annotation.id());
    mesh->setMechanicalId(annotation.id());
    mesh->setGeometryType(EVisuGeometryType::fta_constructed);
    if (graphics.style.color) graphics.fill->setColor(*graphics.style.color);
    mesh->addFace(graphics.fill);
    auto filled = std::make_shared<ExcVisuNode>();
    filled->setType(Node::FTA_CONSTRUCTED_GEOMETRY);
    filled->setLeaf(true);
    filled->setMesh(mesh);
    node->addChildNode(filled);
    return node;
}

} // namespace zeq::convexor
