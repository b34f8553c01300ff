// What the command line asks for.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "depiction/depiction.h"
#include "zeq_api/command/command.h"

namespace zeq::host {

enum class EAction {
    showText, ///< help: nothing is asked of the translator
    showVersion,
    ping,
    info,
    import,
    tree,
    gltf,
    picture,
    view,
    command, ///< prints what would be sent
    run,     ///< sends what is stored
    check,
    schema,
    inspect,
};

enum class EColor {
    automatic,
    always,
    never,
};

/// Where the library's own log goes.
struct LogTarget {
    int level = 0;
    std::string path;
};

struct Settings {
    EAction action = EAction::showText;
    std::string text; ///< for showText

    Command::EType commandType = Command::EType::info;
    EConvexorInterface interface = EConvexorInterface::connect;
    bool multiThreading = false;
    std::string file;
    std::vector<std::string> assignments; ///< of --set: [GROUP.]KEY=VALUE
    std::string formatOptions;            ///< path of a JSON array; "-" is standard input
    std::string geometryDirectory;        ///< for the images of block geometry; empty for none
    bool all = false;                     ///< lists without bounds
    bool records = false;                 ///< of an image, every record
    std::vector<std::string> files;       ///< those to check
    std::string className;                ///< empty when the documents tell, or for the schema of all

    depiction::Wishes picture;  ///< what a picture shows
    std::string viewsDirectory; ///< for pictures of all views; empty for none
    bool compress = false;      ///< a glTF file
    std::string pictureFile;    ///< of an import; empty for none

    std::string translator; ///< path, or name to be found in PATH
    std::optional<std::chrono::duration<double>> timeout;
    std::optional<LogTarget> log;

    std::string output; ///< empty is standard output
    bool force = false;
    bool strict = false; ///< any warning makes the verdict negative
    bool json = false;
    bool quiet = false;
    bool verbose = false;
    bool progress = true;
    EColor color = EColor::automatic;

    /// Whether the exact geometry is of use, and not the structure or the display data alone.
    bool showsGeometry() const {
        return action != EAction::tree && action != EAction::gltf && action != EAction::picture;
    }
};

} // namespace zeq::host
