// From a scene to the output.
#include "zeq/gltf.h"

#include <stdexcept>

#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/scene_source.h"

namespace zeq::host {

gltf::Glb makeGlb(const Host& host, const scene::Scene& scene, const gltf::Options& options) {
    try {
        return gltf::makeGlb(scene, "zeq " ZEQ_VERSION, options);
    } catch (const std::length_error& error) {
        throw Failure(exit_code::inputOutput, cannot("write", host.settings.output, error.what()));
    }
}

std::string summaryOf(const gltf::Glb& glb) {
    std::string note = text::counted(glb.triangles, "triangle", "triangles") + ", " +
                       text::counted(glb.meshes, "mesh", "meshes") + ", " +
                       text::counted(glb.nodes, "node", "nodes") + ", " +
                       text::counted(glb.cameras, "camera", "cameras");
    if (glb.hidden > 0) note += ", without " + text::counted(glb.hidden, "hidden thing", "hidden things");
    return note;
}

void writeGltf(const Host& host, Output& output) {
    refuseJson(host.settings, "gltf");
    refuseTerminal(host.settings, "a binary file");
    const gltf::Glb glb = makeGlb(host, loadScene(host), {.isCompressed = host.settings.compress});
    output.write(glb.head);
    output.write(glb.body);
    host.console.message(summaryOf(glb));
}

} // namespace zeq::host
