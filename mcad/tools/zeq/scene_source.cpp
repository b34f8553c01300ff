// Imports, or reads again.
#include "zeq/scene_source.h"

#include <utility>

#include <unistd.h>

#include "scene/build.h"
#include "zeq/command_builder.h"
#include "zeq/failure.h"
#include "zeq/import.h"
#include "zeq/kept_documents.h"

namespace zeq::host {

void refuseJson(const Settings& settings, const std::string& command) {
    if (settings.json)
        throw Failure(exit_code::usage,
                      "zeq " + command + " writes no JSON document; zeq --json import keeps the model");
}

void refuseTerminal(const Settings& settings, const std::string& result) {
    if (settings.output.empty() && ::isatty(STDOUT_FILENO) != 0)
        throw Failure(exit_code::usage, result + " is not for the terminal; --output FILE writes it");
}

scene::Scene loadScene(const Host& host, Import& import) {
    scene::Documents documents;
    import.scene = &documents;
    if (requireFile(host.settings.file); looksKept(host.settings.file))
        readKept(host, import);
    else
        receive(host, buildCommand(host), import);
    import.scene = nullptr;
    return buildScene(host, std::move(documents));
}

scene::Scene loadScene(const Host& host) {
    Import import;
    return loadScene(host, import);
}

scene::Scene buildScene(const Host& host, scene::Documents documents) {
    scene::Scene scene = scene::build(std::move(documents));
    for (const std::string& warning : scene.warnings) host.console.warning(warning);
    return scene;
}

} // namespace zeq::host
