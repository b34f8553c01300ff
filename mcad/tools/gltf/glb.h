// A scene as one binary glTF 2.0 file.
#pragma once

#include <cstddef>
#include <string>

#include "scene/scene.h"

namespace zeq::gltf {

/// The file in two pieces, one behind the other.
struct Glb {
    std::string head;          ///< header and JSON
    std::string body;          ///< the buffer
    std::size_t triangles = 0; ///< of all instances
    std::size_t nodes = 0;
    std::size_t meshes = 0;
    std::size_t cameras = 0;
    std::size_t hidden = 0; ///< instances, faces, lines and annotations that are left out as hidden
};

struct Options {
    /// Whether hidden instances and annotations have meshes, too, for those who can show them. Hidden faces and lines
    /// of a part are left out in any case.
    bool withHidden = false;
    /// With EXT_meshopt_compression, which who reads the file must know then. Positions stay as they are, normals keep
    /// 12 bits a component.
    bool isCompressed = false;
};

/// Writes what is shown in metres and with the y axis upwards, as glTF has it.
///
/// Each part is a mesh, once for each colour that it takes from an instance, with a primitive for each colour of its
/// own; edges are lines. Every instance is a node and, below it, every annotation of its part; those that are hidden
/// have no mesh unless the options say otherwise. Saved views are nodes with cameras below the first instance of their part. Under `extras` are
///
/// - at the top the `blocks` with names and properties;
/// - in nodes of instances `block`, `id`, properties, and `hidden` if they are;
/// - in those of annotations `kind`, `id`, `value` (see scene::Annotation), linked `faces` and `edges`, the `views` that show them, `hidden`;
/// - in those of views `id`, `annotations`, `active` for the one to begin with, and `clipping`: (a, b, c, d) in the
///   coordinates of the parent as in scene::View;
/// - in primitives `faces`, and how many `triangles` each has, one behind the other; or `edges` and `segments`.
///
/// @param generator the program that writes it
/// @throws std::length_error if that needs 4 GiB or more
Glb makeGlb(const scene::Scene& scene, const std::string& generator, const Options& options = {});

} // namespace zeq::gltf
