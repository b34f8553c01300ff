// What zeq prints where, and how it takes its command line.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "support/temp_dir.h"
#include "tools/zeq_run.h"
#include "transport/utf8.h"
#include "zeq_api/json/text_io.h"

namespace {

using namespace zeq::test;
using namespace std::string_literals;
namespace fs = std::filesystem;

const std::string file = ZEQ_FAKE_TRANSLATOR; // any file that exists: the fake translator does not read it

const std::string cartTree =
    "Assembly Cart  millimeter\n"
    "└── Cart  block 1\n"
    "    ├── Cart:0 (Frame)  block 2  id 'frame-1'  colour #ff8000  opacity 40 %  hidden  2 properties\n"
    "    ├── Cart:1 (Axle)  block 3  colour #ffff80800000\n"
    "    │   ├── Axle:0 (Wheel ⌀30)  block 4\n"
    "    │   └── Axle:1 (Wheel ⌀30)  block 4\n"
    "    └── Cart:2 (Axle)  block 3  at (0, 12.5, -3)  rotated 90° about (0, 0, 1)\n"
    "        ├── Axle:0 (Wheel ⌀30)  block 4\n"
    "        └── Axle:1 (Wheel ⌀30)  block 4\n";

std::string contentOf(const fs::path& path) {
    std::ifstream stream(path);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Checks that a text is one JSON object with the members of the report.
zeq::JsonDocument report(const std::string& text) {
    zeq::JsonDocument json;
    std::wistringstream stream(zeq::transport::fromUtf8(text));
    EXPECT_TRUE(zeq::JsonTextIO::read(stream, json) && json.IsObject()) << text;
    for (const wchar_t* key : {L"version", L"command", L"file", L"documents", L"contents", L"summary",
                               L"warnings", L"exit_code", L"error"})
        EXPECT_TRUE(json.IsObject() && json.HasMember(key)) << text;
    return json;
}

TEST(ZeqCommands, TheTreeShowsEveryInstance) {
    const RunResult tree = runFake("", {"tree", file});
    EXPECT_EQ(tree.exitCode, 0);
    EXPECT_EQ(tree.output, cartTree);
    EXPECT_NE(tree.errors.find("zeq: a message for the user\n"), std::string::npos) << tree.errors;

    const RunResult import = runFake("", {"-q", "import", file});
    EXPECT_EQ(import.exitCode, 0);
    EXPECT_EQ(import.errors, "");
    ASSERT_TRUE(import.output.starts_with(cartTree)) << import.output;
    const std::string summary = import.output.substr(cartTree.size());
    EXPECT_TRUE(summary.starts_with(
        "\nBlocks     4 (2 parts, 2 assemblies)\nInstances  8\nDepth      3\nMoved      "))
        << summary;
    EXPECT_NE(summary.find("in 8 documents and 1 shared buffer\nTime "), std::string::npos) << summary;
}

TEST(ZeqCommands, TreesOfAnyShapeArePrintedAndCounted) {
    const RunResult cyclic = runFake("cyclic", {"import", file});
    EXPECT_TRUE(cyclic.output.starts_with("Assembly Loop  millimeter\n"
                                          "└── Loop (Ring)  block 1\n"
                                          "    ├── Ring:0 (Chain)  block 2\n"
                                          "    │   └── Chain:0 (Ring)  block 1  (contains itself)\n"
                                          "    └── Ring:1  block 9  (this block is missing)\n"))
        << cyclic.output;
    EXPECT_NE(cyclic.output.find(
                  "Instances  4, not counting those below a block that contains itself, 1 of missing "
                  "blocks\nDepth      3\n"),
              std::string::npos)
        << cyclic.output;

    const RunResult wide = runFake("wide", {"import", file}); // two to the power of 80 instances
    EXPECT_NE(wide.output.find("… more instances left out; --all shows them\n"), std::string::npos)
        << wide.output;
    EXPECT_NE(wide.output.find("Instances  more than 18446744073709551614\nDepth      80\n"),
              std::string::npos)
        << wide.output;
    EXPECT_LT(std::count(wide.output.begin(), wide.output.end(), '\n'), 2000);

    const RunResult deep = runFake("deep", {"import", file});
    EXPECT_NE(deep.output.find("└── … deeper levels left out; --all shows them\n"), std::string::npos)
        << deep.output;
    EXPECT_NE(deep.output.find("Instances  20000\nDepth      20000\n"), std::string::npos) << deep.output;

    EXPECT_EQ(runFake("part", {"tree", file}).output, "Part Plate  millimeter\n└── Plate  block 1\n");
    EXPECT_EQ(runFake("names", {"tree", file}).output,
              "Assembly Line\\nbreak\\x1B[2J \\u{202E}  millimeter\n"
              "└── Line\\nbreak\\x1B[2J \\u{202E} (\\u{D800})  block 1\n");
}

TEST(ZeqCommands, ColourIsUsedOnlyWhereItIsWanted) {
    EXPECT_NE(runFake("", {"--color=always", "tree", file})
                  .output.find("\033[38;2;255;128;0m■\033[0m colour #ff8000"),
              std::string::npos);
    RunOptions options;
    options.terminal = true;
    options.environment = {{"TERM", "xterm"}};
    EXPECT_NE(runFake("error", {"ping"}, options).errors.find("\033["), std::string::npos);
    for (const std::string& variable : {"NO_COLOR=1"s, "TERM=dumb"s}) {
        const std::size_t equals = variable.find('=');
        options.environment = {{"TERM", "xterm"}};
        options.environment[variable.substr(0, equals)] = variable.substr(equals + 1);
        EXPECT_EQ(runFake("error", {"ping"}, options).errors.find("\033["), std::string::npos) << variable;
    }
}

TEST(ZeqCommands, ProgressIsDrawnOnATerminalAndWipedAtTheEnd) {
    RunOptions options;
    options.terminal = true;
    options.environment = {{"TERM", "xterm"}};
    const std::string drawn = runFake("", {"tree", file}, options).errors;
    EXPECT_NE(drawn.find("\r\033[K[------------------------------]   0 %  Transferring"), std::string::npos)
        << drawn;
    const std::size_t lastBar = drawn.rfind("%  Transferring");
    EXPECT_NE(drawn.find("\r\033[K", lastBar), std::string::npos) << drawn;

    EXPECT_EQ(runFake("", {"--no-progress", "tree", file}, options).errors.find("Transferring"),
              std::string::npos);
    options.terminal = false;
    EXPECT_EQ(runFake("", {"tree", file}, options).errors.find("Transferring"), std::string::npos);
}

TEST(ZeqCommands, PingAndInfoShowTheAnswer) {
    const RunResult ping = runFake("", {"ping"});
    EXPECT_EQ(ping.exitCode, 0);
    EXPECT_TRUE(ping.output.starts_with("The translator answers (")) << ping.output;

    const RunResult info = runFake("", {"info"});
    EXPECT_EQ(info.exitCode, 0);
    EXPECT_TRUE(info.output.starts_with("fake 1.2\n")) << info.output;
    EXPECT_NE(info.output.find("Imports     Nothing (none)\n"), std::string::npos) << info.output;

    const RunResult version = runFake("", {"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_NE(version.output.find(", interface connect\nfake 1.2"), std::string::npos) << version.output;
    const RunResult alone = runFake("crash", {"--version"});
    EXPECT_EQ(alone.exitCode, 0);
    EXPECT_NE(alone.output.find("zeq "), std::string::npos) << alone.output;
}

TEST(ZeqCommands, WrongUsageIsExplained) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> rows{
        {{}, "a command is missing"},
        {{"improt", file}, "unknown command 'improt'; did you mean 'import'?"},
        {{"--timout=3", "ping"}, "unknown option '--timout'; did you mean '--timeout'?"},
        {{"import", file, "--al"}, "unknown option '--al'; did you mean '--all'?"},
        {{"import", "--jsn"}, "unknown option '--jsn'; did you mean '--json'?"},
        {{"ping", "extra"}, "unknown argument 'extra'"},
        {{"import"}, "FILE is required"},
        {{"--timeout", "-1", "ping"}, "is not a positive number of seconds"},
        {{"--timeout", "inf", "ping"}, "is not a positive number of seconds"},
        {{"--log", "7:file", "ping"}, "is not LEVEL:FILE"},
        {{"--log", "debug", "ping"}, "is not LEVEL:FILE"},
        {{"--color", "pink", "ping"}, "--color: 'pink' is none of auto, always, never"},
        {{"--geometry", "x", "import", file},
         "the option '--geometry' belongs to zeq import and tree, after whose name it stands"},
        {{"--set=a=b", "ping"},
         "'--set' belongs to zeq import, tree, gltf, picture, view, command import and command export, "
         "after"},
        {{"command", "imporrt", file}, "unknown command 'imporrt'; did you mean 'import'?"},
        {{"command", "ping", "--interface", "old"}, "'old' is none of uconnect, connect, legacy"},
        {{"import", file, "--set", "STP.x=1"},
         "there is no option group 'STP'; did you mean 'STEP'? There are general,"},
        {{"import", file, "--set", "STL.save_mode=text"},
         "there is no option group 'STL'"}, // for exports only
        {{"import", file, "--set", "STEP.hidden_entities_mode=all"},
         "has no member 'hidden_entities_mode'; there are operation_type, format_type, import_geometry,"},
        {{"tree", file, "--set", "modeler.length_unit_type=Inch"}, "did you mean 'inch'? There are unknown,"},
        {{"tree", file, "--set", "STEP.import_geometry=yes"}, "should be a boolean, but is the string 'yes'"},
        {{"tree", file, "--set", "graphical.tesselation_max_chordal_deviation=x"}, "a floating-point number"},
        {{"tree", file, "--set", "modeler_version=3000000000"}, "is out of the range"},
        {{"tree", file, "--set", "translate_misc=true"}, "did you mean 'translate_misc_data'?"},
        {{"tree", file, "--set", "modeler_version"}, "is not [GROUP.]KEY=VALUE"},
        {{"tree", file, "--set", "=1"}, "is not [GROUP.]KEY=VALUE"},
        {{"command", "export", "x.stl", "--interface", "legacy", "--set", "STL.save_mode=text"},
         "there is no option group 'STL'"},
    };
    for (const auto& [arguments, message] : rows) {
        const RunResult result = runFake("", arguments);
        EXPECT_EQ(result.exitCode, 2) << message;
        EXPECT_EQ(result.output, "") << message;
        EXPECT_NE(result.errors.find(message), std::string::npos) << result.errors;
    }
    for (const std::vector<std::string>& arguments : {std::vector{"--help"s}, {"import"s, "--help"s}}) {
        const RunResult help = runFake("", arguments);
        EXPECT_EQ(help.exitCode, 0);
        EXPECT_NE(help.output.find("xit codes"), std::string::npos) << help.output;
        EXPECT_EQ(help.errors, "");
    }
}

TEST(ZeqCommands, AFileThatCannotBeUsedIsNamed) {
    const TempDir dir;
    const std::vector<std::pair<std::vector<std::string>, std::string>> rows{
        {{"import", dir.file("none.stp")},
         "Cannot import '" + dir.file("none.stp") + "': No such file or directory"},
        {{"import", dir.path()}, "Cannot import '" + dir.path().string() + "': it is a directory"},
        {{"import", file, "-o", dir.file("no/where")},
         "Cannot write '" + dir.file("no/where") + "': No such file"},
        {{"ping", "-o", dir.path()}, "Cannot write '" + dir.path().string() + "'"},
        {{"ping", "--log", "debug:" + dir.file("no/where")}, "Cannot log to '" + dir.file("no/where") + "'"},
        {{"import", file, "--format-options", dir.file("none")},
         "Cannot read '" + dir.file("none") + "': No such file"},
        {{"ping", "--translator", dir.file("none")}, "Cannot start '" + dir.file("none") + "': No such file"},
    };
    for (const auto& [arguments, message] : rows) {
        const RunResult result = runFake("", arguments);
        EXPECT_EQ(result.exitCode, 3) << message;
        EXPECT_NE(result.errors.find(message), std::string::npos) << result.errors;
    }
    EXPECT_TRUE(fs::is_empty(dir.path()));
}

TEST(ZeqCommands, OutputFilesAreWholeAndNotReplacedUnasked) {
    const TempDir dir;
    const std::string path = dir.file("tree.txt");
    EXPECT_EQ(runFake("", {"tree", file, "-o", path}).output, "");
    EXPECT_EQ(contentOf(path), cartTree);

    const RunResult refused = runFake("part", {"tree", file, "-o", path});
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_NE(refused.errors.find("it exists already; --force replaces it"), std::string::npos)
        << refused.errors;
    EXPECT_EQ(runFake("crash", {"tree", file, "--force", "-o", path}).exitCode, 5);
    EXPECT_EQ(contentOf(path), cartTree);

    fs::create_symlink(path, dir.file("link"));
    EXPECT_EQ(runFake("part", {"tree", file, "--force", "-o", dir.file("link")}).exitCode, 0);
    EXPECT_EQ(contentOf(path), "Part Plate  millimeter\n└── Plate  block 1\n");
    EXPECT_TRUE(fs::is_symlink(dir.file("link")));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir.path()), {}), 2);

    const RunResult full = runFake("", {"tree", file, "-o", "/dev/full"});
    EXPECT_EQ(full.exitCode, 3);
    EXPECT_NE(full.errors.find("Cannot write '/dev/full': No space left on device"), std::string::npos)
        << full.errors;

    RunOptions unread;
    unread.closeOutput = true;
    const RunResult quiet = runFake("", {"-q", "tree", file}, unread);
    EXPECT_EQ(quiet.exitCode, 128 + SIGPIPE);
    EXPECT_EQ(quiet.errors, "");
}

TEST(ZeqCommands, JsonIsOneWholeDocumentWhateverHappens) {
    const zeq::JsonDocument done = report(runFake("", {"--json", "import", file}).output);
    EXPECT_EQ(done[L"exit_code"].GetInt(), 0);
    EXPECT_TRUE(done[L"error"].IsNull());
    ASSERT_EQ(done[L"documents"].Size(), 8U);
    EXPECT_STREQ(done[L"documents"][0][L"exchange_object_name"].GetString(), L"exc_progress");
    EXPECT_STREQ(done[L"documents"][7][L"code"].GetString(), L"ok");
    const zeq::JsonValue& content = done[L"contents"][0];
    EXPECT_STREQ(content[L"buffer"].GetString(), done[L"documents"][5][L"exchange_object_data"].GetString());
    EXPECT_EQ(content[L"data"][L"blocks"].Size(), 4U);
    EXPECT_EQ(done[L"summary"][L"instances"].GetInt(), 8);

    const std::vector<std::pair<std::string, int>> rows{
        {"crash", 5}, {"error", 4}, {"names", 0}, {"wide", 0}};
    for (const auto& [mode, exitCode] : rows) {
        const RunResult result = runFake(mode, {"import", file, "--json"});
        EXPECT_EQ(result.exitCode, exitCode) << mode;
        const zeq::JsonDocument json = report(result.output);
        EXPECT_EQ(json[L"exit_code"].GetInt(), exitCode) << mode;
        EXPECT_EQ(json[L"error"].IsNull(), exitCode == 0) << mode;
    }
    EXPECT_EQ(report(runFake("", {"--json", "improt"}).output)[L"exit_code"].GetInt(), 2);
}

TEST(ZeqCommands, FormatOptionsReachTheTranslatorOrAreRefused) {
    const std::string good =
        R"([{"operation_type":"options","format_type":"general","log_file_name":"a.log"}])";
    RunOptions options;
    options.input = good;
    const RunResult taken = runFake("echo", {"import", file, "--format-options", "-"}, options);
    EXPECT_NE(taken.errors.find("\"log_file_name\": \"a.log\""), std::string::npos) << taken.errors;
    EXPECT_NE(taken.errors.find("\"translate_misc_data\": true"), std::string::npos) << taken.errors;

    const std::vector<std::pair<std::string, std::string>> rows{
        {"[", "not a JSON document"},
        {"{}", "not a JSON array of option groups"},
        {"\xFF", "malformed UTF-8"},
        {good.substr(0, good.size() - 1) + R"(,{"operation_type":"options","format_type":"IFC"}])",
         "/1 no class is registered for an object whose 'operation_type' is 'options' and 'format_type' is "
         "'IFC'"},
        {R"([{"operation_type":"import","format_type":"NX","search_path":""}])",
         "/0/search_path imp::OptionsNX has no member 'search_path'; did you mean 'search_paths'?"},
    };
    for (const auto& [input, message] : rows) {
        options.input = input;
        const RunResult result = runFake("", {"import", file, "--format-options", "-"}, options);
        EXPECT_EQ(result.exitCode, 3) << input;
        EXPECT_NE(result.errors.find("Cannot use the options of '-': " + message), std::string::npos)
            << result.errors;
    }
}

TEST(ZeqCommands, CommandsArePrintedForAnyFormatAndInterface) {
    RunOptions groups;
    groups.input = R"([{"operation_type":"export","format_type":"STL","save_mode":"text"}])";
    const std::vector<std::pair<std::vector<std::string>, std::string>> rows{
        {{"ping"}, R"({"convexor_interface":"connect","command":"ping","mt_mode":false})"},
        {{"info", "--interface", "legacy"},
         R"({"convexor_interface":"legacy","command":"info","mt_mode":false})"},
        {{"import", "/none.prt", "--mt", "--interface=uconnect", "--set", "modeler_version=30", "--set",
          "parasolid.hidden_entities_mode=none"},
         R"({"convexor_interface":"uconnect","command":"import","options":{"file":"/none.prt",)"
         R"("force_mp_mode":false,"translate_world_orientation":true,"translate_misc_data":true,)"
         R"("format_options":[{"operation_type":"import","format_type":"parasolid",)"
         R"("hidden_entities_mode":"none"}],"modeler_version":30},"mt_mode":true})"},
        // Geometry and display data are wanted unless somebody says that it is not.
        {{"import", "/a.stp", "--set", "STEP.layer_name_mode=asm_rep", "--set", "JT.import_geometry=false"},
         R"({"convexor_interface":"connect","command":"import","options":{"file":"/a.stp",)"
         R"("force_mp_mode":false,"translate_world_orientation":true,"translate_misc_data":true,)"
         R"("format_options":[{"operation_type":"import","format_type":"STEP","import_geometry":true,)"
         R"("import_visualization":true,"import_root_visualization":true,"layer_name_mode":"asm_rep",)"
         R"("visu_pmi_mode":"unknown"},{"operation_type":"import","format_type":"JT",)"
         R"("import_geometry":false,"import_visualization":true,"import_root_visualization":true,)"
         R"("edges_mode":"unknown","user_prop_mode":"unknown","visu_pmi_mode":"unknown",)"
         R"("import_visu_lod":""}],"modeler_version":31},"mt_mode":false})"},
        // What --set says goes before what the file says.
        {{"export", "/a.stl", "--format-options", "-", "--set", "STL.save_mode=binary_le", "--set",
          "geometry_flags=2"},
         R"({"convexor_interface":"connect","command":"export","options":{"file":"/a.stl","geometry_flags":2,)"
         R"("format_options":[{"operation_type":"export","format_type":"STL","save_mode":"binary_le"}]},)"
         R"("mt_mode":false})"},
        {{"import", "/a.stp", "--interface=legacy", "--set", "temporary_dwg=/t.dwg", "--set",
          "pmi_mode=none"},
         R"({"convexor_interface":"legacy","command":"import","options":{"file":"/a.stp",)"
         R"("temporary_dwg":"/t.dwg","pmi_mode":"none","product_structure_mode":"as_mechanical_components",)"
         R"("colors_mode":"matching_index","hidden_parts_mode":"import_show","ins_units_def_source":"undefined",)"
         R"("edge_attribute_mode":"wire_body_only"},"mt_mode":false})"},
        {{"export", "/a.stp", "--interface=legacy", "--set", "selection_set=[7,8]"},
         R"({"convexor_interface":"legacy","command":"export","options":{"file":"/a.stp","temporary_dwg":"",)"
         R"("ins_units_def_target":"undefined","product_structure_mode":"as_mechanical_components",)"
         R"("hidden_parts_mode":"export_hide","selection_set":[7,8]},"mt_mode":false})"},
    };
    for (auto [arguments, expected] : rows) {
        arguments.insert(arguments.begin(), "command");
        const RunResult result = runFake("crash", arguments, groups); // nothing is sent
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(testing::PrintToString(compact(zeq::transport::fromUtf8(result.output))),
                  testing::PrintToString(zeq::transport::fromUtf8(expected)));
    }
}

TEST(ZeqCommands, AStoredCommandIsSentAsItIs) {
    RunOptions options;
    options.input = runFake("", {"command", "import", file, "--set", "translate_misc_data=false"}).output;
    EXPECT_NE(runFake("echo", {"run", "-"}, options).errors.find("\"translate_misc_data\": false"),
              std::string::npos);
    EXPECT_EQ(runFake("", {"run", "-"}, options).output.substr(0, cartTree.size()), cartTree);

    const std::vector<std::tuple<std::string, int, std::string>> rows{
        {R"({"command":"ping"})", 0, ""},
        {R"({"command":"ping","mtmode":true})", 0,
         "/mtmode: Command has no member 'mtmode'; did you mean 'mt_mode'?"},
        {R"({"command":"import"})", 3, "Cannot send '-': Import command should contain options."},
        {"[]", 3, "Cannot send '-': Command::readObject: invalid json document"},
        {"{\n\"command\":}", 3,
         "Cannot send '-': not a JSON document (line 2, character 11: Invalid value.)"},
        {"\xFF", 3, "Cannot send '-': malformed UTF-8"},
    };
    for (const auto& [input, exitCode, message] : rows) {
        options.input = input;
        const RunResult result = runFake("", {"run", "-"}, options);
        EXPECT_EQ(result.exitCode, exitCode) << input;
        EXPECT_NE(result.errors.find(message), std::string::npos) << result.errors;
    }
}

TEST(ZeqCommands, AnImportCountsAndReportsTheSectionsThatLoadingLeavesOut) {
    const RunResult text = runFake("sections", {"import", file});
    EXPECT_NE(text.output.find("\nMechanical 2 annotations, 1 annotation view, 1 mapped entity\n"
                               "Display    2 triangles, 1 face, 1 mesh, 1 node\n"),
              std::string::npos)
        << text.output;
    const RunResult json = runFake("sections", {"--json", "import", file});
    EXPECT_EQ(json.exitCode, 0) << json.errors;
    for (const char* section : {"\"pmi_data\":[{", "\"mapping_data\":[{", "\"mapped_entities\":1"})
        EXPECT_NE(json.output.find(section), std::string::npos) << section;
}

TEST(ZeqCommands, ATreeAsksForTheStructureAlone) {
    const std::regex said("\"(import_geometry|import_visualization|visu_brep_tesselation_mode)\": \"?(\\w+)");
    const auto asked = [&said](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {file, "--no-progress"});
        const std::string sent = runFake("echo", arguments).errors;
        std::map<std::string, int> values;
        for (std::sregex_iterator at(sent.begin(), sent.end(), said), end; at != end; ++at)
            ++values[(*at)[1].str() + " " + (*at)[2].str()];
        return values;
    };
    const TempDir dir;
    using Values = std::map<std::string, int>;
    EXPECT_EQ(asked({"import"}), Values{});
    const Values none{{"import_geometry false", 4},
                      {"import_visualization false", 9},
                      {"visu_brep_tesselation_mode never", 1}};
    EXPECT_EQ(asked({"tree"}), none);
    Values some = none;
    some["import_geometry false"] = 3;
    some["import_geometry true"] = 1;
    EXPECT_EQ(asked({"tree", "--set", "STEP.import_geometry=true"}), some);
    Values others = none;
    others.erase("import_geometry false");
    others["import_geometry true"] = 4;
    EXPECT_EQ(asked({"tree", "--geometry", dir.path()}), others);
}

TEST(ZeqCommands, StrictMakesAFailureOfAnyWarning) {
    const struct {
        std::string mode, lastLine, text;
        int warnings;
    } rows[] = {
        {"", "Time ", "", 0},
        {"warning", "Time ", "one face is missing", 1},
        {"cyclic", "Time ", "1 reference to blocks that are missing", 2},
        {"lost-part", "Missing    1 part; --strict makes that a failure",
         "geometry of block 2: it did not arrive", 1},
        {"lost-face", "Missing    3 faces; --strict makes that a failure",
         "geometry of block 2: faces is 1, but the translator had 4", 11},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.mode);
        const RunResult loose = runFake(row.mode, {"-q", "import", file});
        EXPECT_EQ(loose.exitCode, 0) << loose.errors;
        const std::string last = loose.output.substr(loose.output.rfind('\n', loose.output.size() - 2) + 1);
        EXPECT_TRUE(last.starts_with(row.lastLine)) << loose.output;
        const RunResult strict = runFake(row.mode, {"--strict", "--json", "import", file});
        EXPECT_EQ(strict.exitCode, row.warnings > 0 ? 1 : 0);
        const zeq::JsonDocument json = report(strict.output);
        EXPECT_EQ(json[L"exit_code"].GetInt(), strict.exitCode);
        EXPECT_EQ(json[L"error"].IsNull(), row.warnings == 0);
        const auto warnings = json[L"warnings"].GetArray();
        ASSERT_EQ(static_cast<int>(warnings.Size()), row.warnings);
        if (row.warnings == 0) continue;
        EXPECT_EQ(zeq::transport::toUtf8(warnings[0].GetString()), row.text);
    }
}

TEST(ZeqCommands, CheckTellsWhatIsWrongAndWhetherAnythingIs) {
    const TempDir dir;
    const auto write = [&dir](const std::string& name, const std::string& text) {
        std::ofstream(dir.file(name)) << text;
        return dir.file(name);
    };
    const std::string good = write("good", R"({"command":"ping"})");
    const std::string bad = write("bad", R"({"command":"pong"})");
    const std::string bare = write("bare", R"({"id":-1})");
    const std::string sent = write("report", runFake("", {"tree", file, "--json"}).output);
    const std::string cyclic = write("cyclic", runFake("cyclic", {"tree", file, "--json"}).output);
    const std::vector<std::tuple<std::vector<std::string>, int, std::string>> rows{
        {{good}, 0, good + ": Command, nothing found\n"},
        {{good, bad},
         1,
         bad + "#/command: error: 'pong' is no name of Command::EType; it is read as 'unknown'; did you mean "
               "'ping'?"},
        {{bare, "--class", "ExcBlock"}, 1, bare + "#/id: error: -1 is out of the range"},
        {{bare}, 1, "--class tells what it is"},
        {{sent}, 0, ": note: 6 instances have no GUID\n"},
        {{cyclic}, 1, "/blocks/1/block_references/0/block_id: error: the block contains itself: 1 > 2 > 1\n"},
        {{write("text", "{")}, 1, "not a JSON document (line 1, character 2: "},
        {{bare, "--class", "ExcBlok"}, 2, "unknown class 'ExcBlok'; did you mean 'ExcBlock'?"},
        {{bare, "--class", "OptionsSTEP"}, 2, "may be exp::OptionsSTEP or imp::OptionsSTEP"},
        {{dir.file("none")}, 3, "No such file"},
    };
    for (auto [arguments, exitCode, message] : rows) {
        arguments.insert(arguments.begin(), "check");
        const RunResult result = runFake("crash", arguments);
        EXPECT_EQ(result.exitCode, exitCode) << message;
        EXPECT_NE((result.output + result.errors).find(message), std::string::npos)
            << result.output << result.errors;
    }
    const zeq::JsonDocument json = report(runFake("", {"check", bad, good, "--json"}).output);
    EXPECT_EQ(json[L"exit_code"].GetInt(), 1);
    EXPECT_EQ(json[L"summary"][L"errors"].GetInt(), 1);
    EXPECT_EQ(json[L"summary"][L"files"][0][L"findings"][0][L"pointer"], zeq::JsonValue(L"/command"));
}

TEST(ZeqCommands, TheLogHoldsWhatTheTranslatorReports) {
    const TempDir dir;
    EXPECT_EQ(runFake("", {"--log", "info:" + dir.file("log"), "tree", file}).exitCode, 0);
    EXPECT_NE(contentOf(dir.file("log")).find("translator: a line for the log"), std::string::npos);
}

} // namespace
