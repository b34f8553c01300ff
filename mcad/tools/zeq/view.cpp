// From a scene to a page, with what the exact geometry and the translator tell beyond it.
#include "zeq/view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <set>
#include <utility>

#include "page/page.h"
#include "strokes/glyphs.h"
#include "text/text.h"
#include "transport/utf8.h"
#include "zeq/failure.h"
#include "zeq/gltf.h"
#include "zeq/import.h"
#include "zeq/scene_source.h"

namespace zeq::host {

namespace {

/// The symbol of a unit of so many millimetres; of one that has none, the number of them.
std::string symbolOf(double millimeters) {
    static constexpr std::array<std::pair<double, const char*>, 12> symbols{{{1e-6, "nm"},
                                                                             {1e-3, "µm"},
                                                                             {1, "mm"},
                                                                             {10, "cm"},
                                                                             {100, "dm"},
                                                                             {1e3, "m"},
                                                                             {1e6, "km"},
                                                                             {25.4e-6, "µin"},
                                                                             {25.4e-3, "mil"},
                                                                             {25.4, "in"},
                                                                             {304.8, "ft"},
                                                                             {1609344, "mi"}}};
    const auto* const found = std::ranges::find_if(symbols, [millimeters](const auto& each) {
        return std::abs(each.first - millimeters) < 1e-9 * millimeters;
    });
    return found == symbols.end() ? text::number(millimeters) + " mm" : found->second;
}

/// A path as SVG has them, where y runs downwards.
std::string pathOf(const auto& points) {
    std::string path;
    for (const strokes::Point& point : points) {
        char text[32];
        std::snprintf(text, sizeof text, "%c%.4g %.4g", path.empty() ? 'M' : 'L', double(point.x),
                      0.0 - double(point.y));
        path += text;
    }
    return path;
}

/// The shapes of the symbols in annotations, which few fonts have: an object by character.
std::string symbolsOf(const scene::Scene& scene) {
    constexpr wchar_t lastLatin = 0xFF;
    std::set<wchar_t> characters;
    for (const scene::Part& part : scene.parts)
        for (const scene::Annotation& annotation : part.annotations)
            for (const wchar_t character : transport::fromUtf8(annotation.value))
                if (character > lastLatin && strokes::hasGlyph(character)) characters.insert(character);
    text::JsonWriter json;
    json.open('{');
    for (const wchar_t character : characters) {
        const strokes::Figure figure = strokes::glyph(character);
        std::string lines, areas;
        for (const strokes::Polyline& line : figure.lines) lines += pathOf(line);
        for (const auto& triangle : figure.triangles) areas += pathOf(triangle);
        json.key(text::validUtf8(std::wstring_view(&character, 1))).open('{');
        json.member("width", figure.width).member("strokes", lines).member("areas", areas).close('}');
    }
    return json.close('}').text();
}

std::string factsText(const Host& host, double millimeters, const std::string& symbols,
                      const Import& import) {
    text::JsonWriter json;
    json.open('{').member("version", 1U);
    json.member("file", std::filesystem::path(host.settings.file).filename().string());
    json.member("generator", std::string_view("zeq " ZEQ_VERSION));
    json.member("unit", symbolOf(millimeters)).member("millimeters", millimeters);
    json.key("symbols").raw(symbols);
    json.key("blocks").open('[');
    for (const auto& [block, facts] : *import.facts) {
        json.open('{').member("id", block);
        facts.write(json);
        json.close('}');
    }
    json.close(']').key("losses").open('[');
    import.contents.writeLosses(json);
    json.close(']').key("warnings").open('[');
    for (const std::string& warning : host.console.warnings()) json.value(warning);
    return json.close(']').close('}').text();
}

} // namespace

void writeView(const Host& host, Output& output) {
    refuseJson(host.settings, "view");
    refuseTerminal(host.settings, "a page");
    if (page::shell().empty())
        throw Failure(exit_code::inputOutput,
                      "this zeq was built without the page, which takes node and the npm "
                      "packages of mcad/tools/viewer; zeq picture and zeq gltf are there");
    BlockFacts facts;
    Import import;
    import.facts = &facts;
    gltf::Glb glb;
    double millimeters = 1;
    std::string symbols;
    {
        const scene::Scene scene = loadScene(host, import);
        millimeters = scene.millimeters;
        symbols = symbolsOf(scene);
        glb = makeGlb(host, scene, {.withHidden = true});
    }
    compareContents(host, import);
    glb.head += std::exchange(glb.body, {}); // the scene is gone already
    page::write(page::shell(), glb.head, factsText(host, millimeters, symbols, import),
                [&output](std::string_view piece) { output.write(piece); });
    host.console.message(summaryOf(glb));
}

} // namespace zeq::host
