// From a scene to a PNG.
#include "zeq/picture.h"

#include <stdexcept>

#include <unistd.h>

#include "depiction/depiction.h"
#include "picture/picture.h"
#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/scene_source.h"

namespace zeq::host {

void writePicture(const Host& host, Output& output) {
    const Settings& settings = host.settings;
    if (settings.json)
        throw Failure(exit_code::usage,
                      "zeq picture writes no JSON document; zeq --json import keeps the model");
    if (settings.output.empty() && ::isatty(STDOUT_FILENO) != 0)
        throw Failure(exit_code::usage, "a picture is not for the terminal; --output FILE writes it");
    const scene::Scene scene = loadScene(host);
    picture::Image image;
    try {
        image = picture::render(depiction::Depiction(scene, settings.picture).drawing());
    } catch (const std::invalid_argument& error) {
        throw Failure(exit_code::usage,
                      cannot("draw", settings.file, text::printable(std::string_view(error.what()))));
    }
    output.write(picture::encodePng(image));
    if (image.dropped > 0)
        host.console.warning(text::counted(image.dropped, "triangle or line", "triangles and lines") +
                             " could not be drawn");
}

} // namespace zeq::host
