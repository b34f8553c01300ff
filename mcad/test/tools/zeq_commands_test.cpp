// What zeq prints where, and how it takes its command line.
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

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
    for (const wchar_t* key :
         {L"version", L"command", L"file", L"documents", L"contents", L"summary", L"exit_code", L"error"})
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
        {{"--color", "pink", "ping"}, "--color"},
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
         "element [1] is no option group that this version knows"},
    };
    for (const auto& [input, message] : rows) {
        options.input = input;
        const RunResult result = runFake("", {"import", file, "--format-options", "-"}, options);
        EXPECT_EQ(result.exitCode, 3) << input;
        EXPECT_NE(result.errors.find("Cannot use the options of '-': " + message), std::string::npos)
            << result.errors;
    }
}

TEST(ZeqCommands, TheLogHoldsWhatTheTranslatorReports) {
    const TempDir dir;
    EXPECT_EQ(runFake("", {"--log", "info:" + dir.file("log"), "tree", file}).exitCode, 0);
    EXPECT_NE(contentOf(dir.file("log")).find("translator: a line for the log"), std::string::npos);
}

} // namespace
