// Imports, or reads again.
#include "zeq/scene_source.h"

#include <utility>

#include "scene/build.h"
#include "zeq/command_builder.h"
#include "zeq/import.h"
#include "zeq/kept_documents.h"

namespace zeq::host {

scene::Scene loadScene(const Host& host) {
    scene::Documents documents;
    if (requireFile(host.settings.file); looksKept(host.settings.file)) {
        documents = readKept(host);
    } else {
        Import import;
        import.scene = &documents;
        receive(host, buildCommand(host), import);
    }
    return buildScene(host, std::move(documents));
}

scene::Scene buildScene(const Host& host, scene::Documents documents) {
    scene::Scene scene = scene::build(std::move(documents));
    for (const std::string& warning : scene.warnings) host.console.warning(warning);
    return scene;
}

} // namespace zeq::host
