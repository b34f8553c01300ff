// Fills shapes with the faces, edges and points of documents.
#pragma once

#include <string>

#include "scene/scene.h"
#include "scene/warnings.h"
#include "zeq_api/exchange_visualization/annotation.h"
#include "zeq_api/exchange_visualization/mesh.h"

namespace zeq::scene {

/// The look that a colour of a document is. Channels go up to 255, or up to 65535 when one of them exceeds that.
Look lookOf(const ExcColor& color);

/// How something is drawn where it stands.
struct Drawn {
    Placement placement; ///< of its coordinates in the part
    Look look;           ///< of what is around
    bool isHidden = false;
};

/// Appends to the shapes of one part; what is faulty is left out with a warning.
class ShapeBuilder {
public:
    /// @param owner how warnings call the part
    ShapeBuilder(std::string owner, Warnings& warnings) : m_owner(std::move(owner)), m_warnings(warnings) {}

    void addFace(const ExcVisuFace& face, const Drawn& drawn, Shape& shape);
    void addLine(const ExcVisuEdge& edge, const Drawn& drawn, Shape& shape);
    void addMarkers(const ExcVisuPoints& points, const std::wstring& id, const Drawn& drawn, Shape& shape);

private:
    /// "block 3 'Plate', face 17: 2 of its 8 triangles are left out".
    void warn(const char* what, const std::string& id, const std::string& fault);

    std::string m_owner;
    Warnings& m_warnings;
};

} // namespace zeq::scene
