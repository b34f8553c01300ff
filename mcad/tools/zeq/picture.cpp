// From a scene to PNGs.
#include "zeq/picture.h"

#include <cctype>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "depiction/depiction.h"
#include "depiction/views.h"
#include "picture/picture.h"
#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/scene_source.h"

namespace zeq::host {

namespace {

std::string drawPng(const Host& host, const scene::Scene& scene, const depiction::Wishes& wishes) {
    picture::Image image;
    try {
        image = picture::render(depiction::Depiction(scene, wishes).drawing());
    } catch (const std::invalid_argument& error) {
        throw Failure(exit_code::usage,
                      cannot("draw", host.settings.file, text::printable(std::string_view(error.what()))));
    }
    if (image.dropped > 0)
        host.console.warning(text::counted(image.dropped, "triangle or line", "triangles and lines") +
                             " could not be drawn");
    return picture::encodePng(image);
}

void writeFile(const Host& host, const std::string& path, const std::string& bytes) {
    Output file(path, host.settings.force, host.signals);
    file.write(bytes);
    file.commit();
}

/// A name for a file, of the name of a view, which can be any text.
std::string fileNameOf(const std::string& view) {
    constexpr std::size_t longest = 120;
    std::string name;
    for (const char c : view) {
        const bool isPlain = static_cast<unsigned char>(c) >= 0x80 ||
                             std::isalnum(static_cast<unsigned char>(c)) ||
                             std::string_view("-_ ()+,=").find(c) != std::string_view::npos;
        name += isPlain || (c == '.' && !name.empty()) ? c : '_';
    }
    if (name.size() > longest) {
        std::size_t end = longest;
        while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end; // whole characters
        name.resize(end);
    }
    return name.empty() ? "_" : name;
}

void writeAllViews(const Host& host, const scene::Scene& scene) {
    const std::string& directory = host.settings.viewsDirectory;
    requireDirectory(directory);
    depiction::Wishes wishes = host.settings.picture;
    std::set<std::string> names;
    for (const depiction::NamedView& view : depiction::allViews(scene)) {
        wishes.view = view.name;
        std::string name = fileNameOf(view.name);
        while (!names.insert(name).second) name += '_';
        writeFile(host, (std::filesystem::path(directory) / (name + ".png")).string(),
                  drawPng(host, scene, wishes));
    }
    host.console.message(text::counted(names.size(), "picture", "pictures") + " in '" +
                         text::printable(std::string_view(directory)) + "'");
}

} // namespace

void writePicture(const Host& host, Output& output) {
    const Settings& settings = host.settings;
    refuseJson(settings, "picture");
    const bool isForAll = !settings.viewsDirectory.empty();
    if (isForAll && !settings.output.empty())
        throw Failure(exit_code::usage, "--all-views names its files by itself; --output is for one picture");
    if (!isForAll) refuseTerminal(settings, "a picture");
    const scene::Scene scene = loadScene(host);
    if (isForAll)
        writeAllViews(host, scene);
    else
        output.write(drawPng(host, scene, settings.picture));
}

void writePictureOf(const Host& host, scene::Documents documents, const std::string& path) {
    writeFile(host, path, drawPng(host, buildScene(host, std::move(documents)), host.settings.picture));
}

} // namespace zeq::host
