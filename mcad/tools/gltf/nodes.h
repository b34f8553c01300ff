// The tree of nodes with the meshes and cameras that they show.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "gltf/materials.h"
#include "gltf/packer.h"
#include "scene/scene.h"

namespace zeq::gltf {

/// Writes nodes: first one for each instance, with the same index, then those of annotations and cameras.
class Nodes {
public:
    /// @param meters     of the unit of the scene
    /// @param withHidden whether hidden instances and annotations have meshes, too
    Nodes(const scene::Scene& scene, double meters, bool withHidden);

    /// Everything; afterwards the lists are complete.
    void write();

    Packer& packer() { return m_packer; }
    const Packer& packer() const { return m_packer; }
    const Materials& materials() const { return m_materials; }
    const text::JsonList& nodes() const { return m_nodes; }
    const text::JsonList& meshes() const { return m_meshes; }
    const text::JsonList& cameras() const { return m_cameras; }
    std::size_t triangles() const { return m_triangles; }
    /// Instances, faces, lines, markers and annotations that are left out because they are hidden.
    std::size_t hidden() const { return m_hidden; }

private:
    struct PartShapes {
        std::uint32_t shape = scene::none;      ///< none for a part that is nowhere to be seen
        std::vector<std::uint32_t> annotations; ///< none for one without a mesh
    };
    using Children = std::vector<std::uint32_t>;

    /// Whether what is hidden or not has a mesh.
    bool isDrawn(bool isHidden) const { return m_withHidden || !isHidden; }
    void planShapes();
    void findExtent();
    void writeInstance(std::uint32_t index);
    void writeExtras(const scene::Instance& instance);
    /// @return the mesh of a shape in a look that is around it; none if the shape is empty
    std::uint32_t meshOf(std::uint32_t shape, const std::string& name, const scene::Look& around,
                         bool isAnnotation);
    /// @return the nodes that are to be children of the instance's
    Children addAnnotations(const scene::Instance& instance);
    std::uint32_t addCamera(const scene::Part& part, const scene::View& view, const scene::Placement& world);
    /// Behind those of all instances.
    std::uint32_t addNode(const text::JsonWriter& node);

    const scene::Scene& m_scene;
    double m_meters;
    bool m_withHidden;
    Packer m_packer;
    Materials m_materials;
    std::vector<PartShapes> m_parts;
    std::vector<Children> m_children; ///< of each instance
    std::vector<bool> m_hasCameras;   ///< of each part: those of its first instance
    std::map<std::tuple<std::uint32_t, bool, bool, scene::Color>, std::uint32_t> m_meshOf;
    text::JsonList m_nodes, m_meshes, m_cameras;
    text::JsonList m_later; ///< nodes that come behind those of the instances
    scene::Vec m_middle;    ///< of all that is shown, in metres
    double m_radius = 1;
    std::size_t m_triangles = 0;
    std::size_t m_hidden = 0;
};

} // namespace zeq::gltf
