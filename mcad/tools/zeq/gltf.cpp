// From a scene to the output.
#include "zeq/gltf.h"

#include <stdexcept>

#include <unistd.h>

#include "gltf/glb.h"
#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/scene_source.h"

namespace zeq::host {

void writeGltf(const Host& host, Output& output) {
    const Settings& settings = host.settings;
    if (settings.json)
        throw Failure(exit_code::usage,
                      "zeq gltf writes no JSON document; zeq --json import keeps the model");
    if (settings.output.empty() && ::isatty(STDOUT_FILENO) != 0)
        throw Failure(exit_code::usage, "a binary file is not for the terminal; --output FILE writes it");
    const scene::Scene scene = loadScene(host);
    gltf::Glb glb;
    try {
        glb = gltf::makeGlb(scene, "zeq " ZEQ_VERSION, {.isCompressed = settings.compress});
    } catch (const std::length_error& error) {
        throw Failure(exit_code::inputOutput, cannot("write", settings.output, error.what()));
    }
    output.write(glb.head);
    output.write(glb.body);
    std::string note = text::counted(glb.triangles, "triangle", "triangles") + ", " +
                       text::counted(glb.meshes, "mesh", "meshes") + ", " +
                       text::counted(glb.nodes, "node", "nodes") + ", " +
                       text::counted(glb.cameras, "camera", "cameras");
    if (glb.hidden > 0) note += ", without " + text::counted(glb.hidden, "hidden thing", "hidden things");
    host.console.message(note);
}

} // namespace zeq::host
