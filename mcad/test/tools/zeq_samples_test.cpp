// The whole way: sample models, the real translator, and what zeq shows of them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include <unistd.h>

#include "mp/shared_buffer.h"
#include "page/page_elements.h"
#include "support/json_text.h"
#include "support/temp_dir.h"
#include "tools/zeq_run.h"
#include "transport/utf8.h"
#include "zeq_api/codec/compressor.h"

namespace {

using namespace zeq::test;
using zeq::JsonDocument;
using zeq::JsonValue;
namespace transport = zeq::transport;
namespace fs = std::filesystem;

class ZeqSamples : public testing::Test {
protected:
    static void SetUpTestSuite() {
        s_dir = new TempDir;
        RunOptions options;
        options.environment = {{"ASAN_OPTIONS", "detect_leaks=0"}}; // the CAD kernel frees nothing at the end
        ASSERT_EQ(runProgram({ZEQ_SAMPLES, s_dir->path().string()}, options).exitCode, 0);
    }
    static void TearDownTestSuite() {
        delete s_dir;
        s_dir = nullptr;
    }

    static std::string sample(const std::string& name) { return s_dir->file(name); }
    static RunResult zeq(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {ZEQ_PROGRAM, "--translator", ZEQ_CONVEXOR});
        return runProgram(arguments);
    }

    static inline TempDir* s_dir = nullptr;
};

/// The lines of a tree, without the ids that are the translator's own choice and the number of properties.
std::vector<std::string> treeLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line) && !line.empty();)
        lines.push_back(
            std::regex_replace(line, std::regex("  (block \\d+|id '[^']*'|\\d+ properties)"), ""));
    return lines;
}

TEST_F(ZeqSamples, GeometryArrivesWholeCompressedOrNot) {
    const TempDir dir;
    const std::string plain = dir.file("plain_convexor");
    std::ofstream(plain) << "#!/bin/sh\nexec '" ZEQ_CONVEXOR "' --no-compression\n";
    fs::permissions(plain, fs::perms::owner_all);
    for (const char* const name :
         {"bench_vise.stp", "grip.stp", "jaw_plate.stp", "fastener.igs", "jaw_plate.igs"}) {
        SCOPED_TRACE(name);
        std::uint64_t bytes = 0;
        for (const std::string& translator : {std::string(ZEQ_CONVEXOR), plain}) {
            const RunResult result =
                runProgram({ZEQ_PROGRAM, "--translator", translator, "-q", "import", "--json", sample(name)});
            EXPECT_EQ(result.exitCode, 0) << result.errors;
            std::wistringstream stream(transport::fromUtf8(result.output));
            const JsonDocument report = parse(stream);
            const JsonValue& summary = report[L"summary"];
            EXPECT_GT(summary[L"bytes"].GetUint64(), bytes) << "plain geometry is the larger one";
            bytes = summary[L"bytes"].GetUint64();

            EXPECT_EQ(summary[L"geometry"].Size(), summary[L"parts"].GetUint());
            EXPECT_EQ(summary[L"topology"][L"faults"].GetInt(), 0);
            EXPECT_EQ(summary[L"topology"][L"unchecked"].GetInt(), 0);
            EXPECT_LT(summary[L"topology"][L"vertex_gap"].GetDouble(), 1e-7);
            EXPECT_LT(summary[L"topology"][L"edge_gap"].GetDouble(), 1e-5);
            const JsonValue& check = summary[L"geometry_check"];
            EXPECT_EQ(check[L"blocks"].GetUint(), summary[L"parts"].GetUint());
            EXPECT_EQ(check[L"faults"].GetInt(), 0);
            for (const wchar_t* const figure : {L"length", L"area", L"box"})
                EXPECT_LT(check[L"difference"][figure].GetDouble(), 1e-5);
        }
    }
}

TEST_F(ZeqSamples, GeometryIsCountedAndCanBeKept) {
    const TempDir dir;
    const std::vector<std::pair<std::string, std::string>> rows{
        {"bench_vise.stp",
         "11 bodies, 106 faces (67 planes, 37 cylinders and cones, 1 sphere, 1 torus), "
         "240 edges (163 lines, 74 circles and ellipses, 2 B-splines, 1 point), 159 vertices"},
        {"grip.stp", "1 body, 6 faces (3 planes, 1 cylinder or cone, 1 sphere, 1 B-spline), 7 edges"},
        {"jaw_plate.stp", "1 body, 14 faces (6 planes, 8 cylinders and cones), 34 edges"},
        {"fastener.igs", "2 bodies, 15 faces (11 planes, 4 cylinders and cones), 60 edges"},
    };
    for (const auto& [model, geometry] : rows) {
        const RunResult result = zeq({"-q", "import", sample(model), "--geometry", dir.file(model)});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_NE(result.output.find("\nGeometry   " + geometry), std::string::npos) << result.output;
        std::size_t images = 0;
        for (const fs::directory_entry& image : fs::directory_iterator(dir.file(model))) {
            std::ifstream file(image.path(), std::ios::binary);
            std::string signature(15, ' ');
            file.read(signature.data(), 15);
            EXPECT_EQ(signature, "ACIS BinaryFile") << image.path();
            ++images;
        }
        EXPECT_EQ(images, std::stoul(geometry));
        const std::string blockLine = "Block " + std::to_string(images == 11 ? 6 : 1) + "  ";
        EXPECT_NE(result.output.find("\n" + blockLine), std::string::npos) << result.output;
    }
    const RunResult again = zeq({"import", sample("jaw_plate.stp"), "--geometry", dir.file("jaw_plate.stp")});
    EXPECT_EQ(again.exitCode, 3);
    EXPECT_NE(again.errors.find("block_1.sab"), std::string::npos) << again.errors;
}

TEST_F(ZeqSamples, AKeptImageAndABufferCanBeInspected) {
    const TempDir dir;
    EXPECT_EQ(zeq({"-q", "import", sample("jaw_plate.stp"), "--geometry", dir.path()}).exitCode, 0);
    const std::string image = dir.file("block_1.sab");
    const RunResult kept = zeq({"inspect", image});
    EXPECT_EQ(kept.exitCode, 0) << kept.errors;
    for (const char* const part :
         {"version 700, integers of 4 bytes, records: ", "made by \"Morvanta Convexor\"", "\nRecords    ",
          " 14 face,", "\nGeometry   1 body, 14 faces", "\nTopology   sound", "\nbody #1  in place  1 lump\n",
          "\nface 683  cone  1 loop, 4 edges", "\nedge 937  "})
        EXPECT_NE(kept.output.find(part), std::string::npos) << part << "\n" << kept.output;

    const std::string name = "inspected-" + std::to_string(::getpid());
    const fs::path buffer = fs::path(mp::sharedDirectory()) / name;
    fs::copy_file(image, buffer);
    EXPECT_EQ(zeq({"inspect", name}).output, kept.output);
    EXPECT_TRUE(fs::remove(buffer)) << "looking at a buffer does not take it";

    const std::string records = zeq({"inspect", image, "--records"}).output;
    EXPECT_NE(records.find("\n0 body $-1 "), std::string::npos) << records;
    std::wistringstream stream(transport::fromUtf8(zeq({"inspect", image, "--json"}).output));
    const JsonDocument report = parse(stream);
    EXPECT_EQ(report[L"summary"][L"counts"][L"face"].GetInt(), 14);
    EXPECT_EQ(report[L"summary"][L"faces"].Size(), 14U);
    EXPECT_EQ(report[L"summary"][L"faces"][6][L"attributes"][0], JsonValue(L"id 683"));

    fs::resize_file(image, 1500);
    const RunResult cut = zeq({"inspect", image});
    EXPECT_EQ(cut.exitCode, 1);
    EXPECT_NE(cut.output.find("the image ends within"), std::string::npos) << cut.output;
    const RunResult model = zeq({"inspect", sample("jaw_plate.stp")});
    EXPECT_EQ(model.exitCode, 3);
    EXPECT_NE(model.errors.find("expected the signature ACIS BinaryFile"), std::string::npos) << model.errors;
}

TEST_F(ZeqSamples, PackedFilesAndThoseOfOtherNamesAreTheSame) {
    const TempDir dir;
    const auto packed = [&dir](const std::string& from, const std::string& name, std::size_t bytes) {
        std::ifstream stream(from, std::ios::binary);
        const std::string plain{std::istreambuf_iterator<char>(stream), {}};
        std::string gzip;
        zeq::Compressor::compress(gzip, plain.data(), plain.size(), -1);
        std::ofstream(dir.file(name), std::ios::binary) << gzip.substr(0, bytes);
        return dir.file(name);
    };
    const std::string plate = sample("jaw_plate.stp");
    fs::copy_file(plate, dir.file("a.p21"));
    const auto whole = std::string::npos;
    for (const auto& [model, copy] :
         {std::pair(plate, packed(plate, "a.stp.gz", whole)), std::pair(plate, dir.file("a.p21")),
          std::pair(plate, packed(plate, "a.step", whole)), // what it is tells its content
          std::pair(sample("fastener.igs"), packed(sample("fastener.igs"), "a.igs.gz", whole))}) {
        const RunResult result = zeq({"-q", "--strict", "import", copy});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        const auto tree = treeLines(result.output);
        const auto expected = treeLines(zeq({"-q", "import", model}).output);
        ASSERT_EQ(tree.size(), expected.size()) << copy; // the first line may have the name of the file
        EXPECT_TRUE(std::equal(tree.begin() + 1, tree.end(), expected.begin() + 1)) << result.output;
    }
    const RunResult cut = zeq({"import", packed(plate, "cut.stp.gz", 900)});
    EXPECT_EQ(cut.exitCode, 4);
    EXPECT_NE(cut.errors.find("its compression is damaged: unexpected end of file"), std::string::npos)
        << cut.errors;
}

TEST_F(ZeqSamples, ASharedDirectoryThatTakesNothingIsNamed) {
    if (runProgram({"/usr/bin/unshare", "-m", "mount", "-t", "tmpfs", "none", mp::sharedDirectory()})
            .exitCode != 0)
        GTEST_SKIP() << "needs a namespace of its own for mounts";
    const std::string& shared = mp::sharedDirectory();
    const std::string import = " none " + shared + " && cd " + shared + " && '" + ZEQ_PROGRAM +
                               "' --translator '" + ZEQ_CONVEXOR + "' import '" + sample("bench_vise.stp") +
                               "'; code=$?; echo \"left: $(ls " + shared + ").\"; exit $code";
    for (const auto& [options, reason] :
         {std::pair("nr_inodes=1", "No space left on device"),
          std::pair("size=4k", "No space left on device"), std::pair("ro", "Read-only file system")}) {
        const RunResult result = runProgram(
            {"/usr/bin/unshare", "-m", "/bin/sh", "-c", "mount -t tmpfs -o " + (options + import)});
        EXPECT_EQ(result.exitCode, 4) << options;
        EXPECT_TRUE(result.output.ends_with("left: .\n")) << result.output;
        EXPECT_NE(result.errors.find("Cannot write to the shared directory '" + shared + "': " + reason),
                  std::string::npos)
            << result.errors;
    }
}

TEST_F(ZeqSamples, AStoredCommandDoesWhatTheImportDoes) {
    const TempDir dir;
    const std::string model = sample("bench_vise.stp");
    EXPECT_EQ(zeq({"command", "import", model, "-o", dir.file("command")}).exitCode, 0);
    const std::string tree = zeq({"-q", "run", dir.file("command")}).output;
    EXPECT_EQ(treeLines(tree), treeLines(zeq({"-q", "import", model}).output));
    EXPECT_FALSE(treeLines(tree).empty());
}

TEST_F(ZeqSamples, TheTranslatorDescribesItself) {
    const RunResult info = zeq({"info"});
    EXPECT_EQ(info.exitCode, 0) << info.errors;
    EXPECT_NE(info.output.find("Open CASCADE"), std::string::npos) << info.output;
    EXPECT_NE(info.output.find("STEP"), std::string::npos) << info.output;
    EXPECT_EQ(zeq({"ping"}).exitCode, 0);
}

TEST_F(ZeqSamples, TheAssemblyArrivesAsItWasMade) {
    const std::vector<std::string> expected{
        "Assembly Bench vise  millimeter",
        "└── Bench vise",
        "    ├── Base  at (-110, 0, 0)  colour #265c48",
        "    ├── Jaw plate fixed (Jaw plate)  at (-40, 0, 40)  colour #a8acb2",
        "    ├── Sliding jaw  at (20, 0, 0)",
        "    │   ├── Slide  at (0, 0, 18)  colour #265c48",
        std::string("    │   ├── Jaw plate moving (Jaw plate)  at (0, 0, 40)") +
            "  rotated 180° about (0, 0, 1)  colour #a8acb2",
        "    │   ├── Träger vorn (Träger)  at (90, 0, 18)  colour #265c48",
        "    │   └── Spindle unit  at (0, 0, 50)",
        "    │       ├── Spindle  at (110, 0, 0)  colour #a8acb2",
        "    │       ├── Ring inside (Retaining ring)  at (48, 0, 0)  colour #d6ac46",
        "    │       ├── Ring outside (Retaining ring)  at (107, 0, 0)  colour #d6ac46",
        "    │       └── Handle  at (144, 0, 0)  rotated 30° about (1, 0, 0)",
        "    │           ├── Bar (Handle bar)  at (0, -55, 0)  colour #cdcfc4",
        "    │           ├── Knob right (Knob)  at (0, 55, 0)  colour #202024",
        "    │           └── Knob left (Knob)  at (0, -55, 0)  rotated 180° about (0, 0, 1)  colour #c81e24",
        "    ├── Fastener 1 (Fastener)  at (95, 40, 18)",
        "    │   ├── Washer (Washer 10)  at (0, 0, 2)  colour #cdcfc4",
        "    │   └── Bolt (Hexagon bolt M10)  at (0, 0, 2)  colour #cdcfc4",
        "    ├── Fastener 2 (Fastener)  at (-95, 40, 18)  rotated 90° about (0, 0, 1)",
        "    │   ├── Washer (Washer 10)  at (0, 0, 2)  colour #cdcfc4",
        "    │   └── Bolt (Hexagon bolt M10)  at (0, 0, 2)  colour #cdcfc4",
        "    ├── Fastener 3 (Fastener)  at (-95, -40, 18)  rotated 180° about (0, 0, 1)",
        "    │   ├── Washer (Washer 10)  at (0, 0, 2)  colour #cdcfc4",
        "    │   └── Bolt (Hexagon bolt M10)  at (0, 0, 2)  colour #cdcfc4",
        "    ├── Fastener 4 (Fastener)  at (95, -40, 18)  rotated 90° about (0, 0, -1)",
        "    │   ├── Washer (Washer 10)  at (0, 0, 2)  colour #cdcfc4",
        "    │   └── Bolt (Hexagon bolt M10)  at (0, 0, 2)  colour #cdcfc4",
        "    ├── Workpiece (Block)  at (-32, -30, 45)  colour #5a96dc  opacity 40 %",
        "    └── Transport lock (Block)  at (-32, -30, 90)  colour #d6ac46  hidden",
    };
    const RunResult result = zeq({"import", sample("bench_vise.stp")});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(treeLines(result.output), expected) << result.output;
    EXPECT_NE(result.output.find("\nBlocks     16 (11 parts, 5 assemblies)\nInstances  29\nDepth      5\n"),
              std::string::npos)
        << result.output;
}

TEST_F(ZeqSamples, APartAloneIsShownAsAPart) {
    for (const std::string name : {"jaw_plate.stp", "jaw_plate.igs"}) {
        const RunResult result = zeq({"tree", sample(name)});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        const std::vector<std::string> expected{"Part Jaw plate  millimeter",
                                                "└── Jaw plate  colour #a8acb2"};
        EXPECT_EQ(treeLines(result.output), expected) << name;
    }
}

TEST_F(ZeqSamples, AnnotationsViewsLayersAndMaterialOfAPartArrive) {
    const RunResult result = zeq({"import", sample("bracket_pmi.stp")});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    const std::string output = std::regex_replace(result.output, std::regex(" +"), " ");
    for (const char* const row :
         {"(mm): 11 annotations, 2 views\n", "\n distance linear distance 79.8–80.1 ",
          "linear distance [32] ", "\n diameter ⌀16 H7 ", "\n diameter ⌀10 ±0.1 ", "\n flatness ⏥ | 0.05 ",
          "\n position ⌖ | ⌀0.2 Ⓜ | A | B | C ", "\n perpendicularity ⟂ | 0.1 | A ",
          "\n note semantic text BREAK EDGES 0.3 ", "\n BODY 1 1 Bracket\n", "\n PMI 11 1 Bracket\n",
          "\n EN AW-6082 2.7 gram/centimetre^3 the whole part ", "\n semantic annotations 11 11 11\n",
          "\n graphical annotations 11 11 11\n", "\n views 2 2 2\n", "\n colours 3 3 3\n"})
        EXPECT_NE(output.find(row), std::string::npos) << row << '\n' << result.output;
}

TEST_F(ZeqSamples, AnnotationsArriveBeforeTheKernelReads) {
    const RunResult result = zeq({"--json", "import", sample("bracket_pmi.stp")});
    const std::size_t annotations = result.output.find("\"exc_block_mechanical_data\"");
    ASSERT_NE(annotations, std::string::npos);
    EXPECT_LT(annotations, result.output.find("\"Reading bracket_pmi.stp\""));
    EXPECT_LT(annotations, result.output.find("\"exc_product_structure\""));
}

TEST_F(ZeqSamples, WhatIsSwitchedOffIsToldAndDoesNotTravel) {
    const std::string model = sample("bracket_pmi.stp");
    const struct {
        std::vector<std::string> settings;
        std::vector<std::string> rows; ///< of the account, or of the figures
    } rows[]{
        {{"STEP.visu_pmi_mode=none"},
         {"graphical annotations 11 0 0 <- 11 switched off", "annotations 11 11 11"}},
        {{"mechanical.feature_tolerance_processing_mode=none"},
         {"semantic annotations 22 11 11", "annotations 11 11 11"}},
        {{"modeler.preserve_pmi_mode=disabled"},
         {"semantic annotations 11 0 0", "views 2 0 0 <- 2 switched off"}},
        {{"mechanical.misc_data_processing_mode=none"},
         {"materials 1 0 0", "properties 6 0 0 <- 6 switched off"}},
        {{"STEP.import_visualization=false"},
         {"colours 3 1 1 <- 2 switched off", "graphical annotations 11 0 0", "views 2 2 2"}},
        {{"graphical.visu_brep_tesselation_mode=never"},
         {"colours 3 1 1 <- 2 switched off", "graphical annotations 11 11 11"}},
        {{"STEP.import_geometry=false"}, {"faces 17 0 0 <- 17 switched off"}},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments{"--strict", "import", model};
        for (const std::string& setting : row.settings) arguments.insert(arguments.end(), {"--set", setting});
        const RunResult result = zeq(arguments);
        EXPECT_EQ(result.exitCode, 0) << row.settings[0] << result.errors;
        const std::string output = std::regex_replace(result.output, std::regex(" +"), " ");
        for (const std::string& each : row.rows)
            EXPECT_NE(output.find(" " + each), std::string::npos) << row.settings[0] << ": " << each << '\n'
                                                                  << output;
    }
}

TEST_F(ZeqSamples, AreWrittenAsGltfFromTheFileAndFromWhatWasKept) {
    const std::string kept = sample("kept.json"), glb = sample("model.glb");
    ASSERT_EQ(zeq({"--json", "--output", kept, "import", sample("bracket_pmi.stp")}).exitCode, 0);
    const auto write = [&](const std::string& file) {
        return zeq({"--force", "--output", glb, "gltf", file});
    };
    std::vector<std::string> lines;
    for (const std::string& file : {sample("bracket_pmi.stp"), kept}) {
        const RunResult result = write(file);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        lines.push_back(result.errors.substr(result.errors.rfind("zeq: ")));
        EXPECT_GT(fs::file_size(glb), 10'000);
    }
    EXPECT_EQ(lines[0], lines[1]);
    EXPECT_NE(lines[0].find(" meshes, 15 nodes, 2 cameras\n"), std::string::npos) << lines[0];

    fs::remove(glb);
    std::ifstream stream(kept);
    const std::string whole{std::istreambuf_iterator<char>(stream), {}};
    const std::vector<std::tuple<std::string, std::string, int>> rows{
        {"{}", "it is not what zeq --json import writes", 3},
        {whole.substr(0, whole.size() / 2), "not a JSON document (", 3},
        {R"({"documents":[1,{"exchange_object_name":"none"}],"contents":[2]})",
         "there is no product structure in it", 3},
        {std::regex_replace(whole, std::regex(R"("buffer":"....)"), R"("buffer":"lost)"),
         "the content of a 'exc_block_visualization' is not in the file", 3},
    };
    for (const auto& [content, error, exitCode] : rows) {
        std::ofstream(sample("damaged.json")) << content;
        const RunResult result = write(sample("damaged.json"));
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_NE(result.errors.find(error), std::string::npos) << result.errors;
        EXPECT_FALSE(fs::exists(glb));
    }
    EXPECT_EQ(zeq({"--json", "--output", glb, "gltf", kept}).exitCode, 2);
}

/// With this in place of each image. They are longer than std::regex has stack for.
std::string withImages(std::string text, const std::string& data) {
    constexpr std::string_view begin = R"("data":")";
    for (std::size_t at = 0; (at = text.find(begin, at)) != text.npos; at += data.size())
        text.replace(at, text.find('"', at + begin.size()) + 1 - at, data);
    return text;
}

TEST_F(ZeqSamples, AreShownOnPagesFromTheFileAndFromWhatWasKept) {
    const std::string kept = sample("pages.json"), page = sample("page.html");
    ASSERT_EQ(zeq({"--json", "--output", kept, "import", sample("bench_vise.stp")}).exitCode, 0);
    const auto contentOf = [](const std::string& path) {
        std::ifstream stream(path);
        return std::string{std::istreambuf_iterator<char>(stream), {}};
    };
    const auto view = [&](const std::string& file) {
        return zeq({"--force", "--output", page, "view", file});
    };
    std::vector<std::string> models, facts;
    for (const std::string& file : {sample("bench_vise.stp"), kept}) {
        const RunResult result = view(file);
        if (result.errors.find("built without the page") != std::string::npos) {
            EXPECT_EQ(result.exitCode, 3);
            EXPECT_FALSE(fs::exists(page));
            GTEST_SKIP() << "zeq is built without the page";
        }
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        models.push_back(elementOf(contentOf(page), "model"));
        facts.push_back(std::regex_replace(elementOf(contentOf(page), "facts"),
                                           std::regex("\"file\":\"[^\"]*\""), "FILE"));
    }
    EXPECT_EQ(models[0].substr(0, 4), "glTF");
    EXPECT_TRUE(models[0] == models[1]);
    const std::string lock = "\"name\":\"Transport lock\"";
    const std::size_t at = models[0].find(lock); // it is hidden, and has a mesh
    ASSERT_NE(at, std::string::npos);
    EXPECT_TRUE(std::regex_search(models[0].substr(at, 200),
                                  std::regex("\"mesh\":\\d+,\"extras\":.*\"hidden\":true")))
        << models[0].substr(at, 200);
    EXPECT_EQ(facts[0], facts[1]);
    for (const char* const each :
         {R"("version":1,FILE,"generator":"zeq )",
          R"("unit":"mm","millimeters":1,"symbols":{},"blocks":[{"id":2,"faces":[{"id":")",
          R"({"what":"faces","file":106,"sent":106,"arrived":106,"reasons":[]})", R"("warnings":[]})"})
        EXPECT_NE(facts[0].find(each), std::string::npos) << each;
    EXPECT_EQ(zeq({"--json", "view", kept}).exitCode, 2);

    const std::string whole = contentOf(kept);
    const std::vector<std::pair<std::string, std::string>> rows{
        {R"("data":"")", "the geometry of block 2 cannot be restored: "},
        {R"("data":"H4sIAAAAAAAA")", "the geometry of block 2 cannot be restored: "},
        {R"("data":{})", "the geometry of block 2 is not in the file"},
    };
    for (const auto& [data, warning] : rows) {
        std::ofstream(sample("damaged.json")) << withImages(whole, data);
        const RunResult result = view(sample("damaged.json"));
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_NE(result.errors.find(warning), std::string::npos) << result.errors;
        const std::string told = elementOf(contentOf(page), "facts");
        EXPECT_NE(told.find(R"("blocks":[],)"), std::string::npos);
        EXPECT_NE(told.find(warning), std::string::npos);
        EXPECT_TRUE(elementOf(contentOf(page), "model") == models[0]);
    }
}

TEST_F(ZeqSamples, AreShownAsPictures) {
    const std::string png = sample("model.png");
    const struct {
        std::vector<std::string> options;
        int exitCode;
        std::string error;
    } rows[] = {
        {{"--size", "200x150"}, 0, ""},
        {{"--view", "FRONT", "--section", "z=5", "--no-pmi", "--no-edges", "--transparent"}, 0, ""},
        {{"--view", "none"},
         2,
         "there is no view 'none'; there are iso, front, back, left, right, top, bottom, FRONT"},
        {{"--size", "200"}, 2, "'200' is no size such as 1600x1200"},
        {{"--size", "0x5"}, 2, "'0x5' is no size"},
        {{"--section", "w"}, 2, "'w' is none of x, y, z and x=12.5"},
        {{"--section", "x=1a"}, 2, "'x=1a' is none of"},
    };
    for (const auto& [options, exitCode, error] : rows) {
        std::vector<std::string> words{"--force", "--output", png, "picture", sample("bracket_pmi.stp")};
        words.insert(words.end(), options.begin(), options.end());
        const RunResult result = zeq(words);
        EXPECT_EQ(result.exitCode, exitCode) << options[0] << result.errors << result.output;
        EXPECT_NE((result.errors + result.output).find(error), std::string::npos) << result.errors;
        EXPECT_EQ(fs::exists(png), exitCode == 0);
        if (exitCode == 0) {
            std::ifstream stream(png, std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
            EXPECT_TRUE(bytes.starts_with("\x89PNG") && bytes.size() > 1000) << bytes.size();
        }
        fs::remove(png);
    }
}

TEST_F(ZeqSamples, EveryViewAndEveryImportCanHaveAPicture) {
    const auto isPicture = [](const std::string& path) {
        std::ifstream stream(path, std::ios::binary);
        return std::string{std::istreambuf_iterator<char>(stream), {}}.starts_with("\x89PNG");
    };
    const std::string bracket = sample("bracket_pmi.stp"), directory = sample("views/of bracket");
    EXPECT_EQ(zeq({"picture", bracket, "--all-views", directory, "--size", "60x40"}).exitCode, 0);
    for (const char* const view : {"iso", "front", "back", "left", "right", "top", "bottom", "FRONT"})
        EXPECT_TRUE(isPicture(directory + "/" + view + ".png")) << view;
    const RunResult again = zeq({"picture", bracket, "--all-views", directory, "--size", "60x40"});
    EXPECT_EQ(again.exitCode, 3);
    EXPECT_NE(again.errors.find("it exists already"), std::string::npos) << again.errors;
    EXPECT_EQ(zeq({"picture", bracket, "--all-views", directory, "--view", "iso"}).exitCode, 2);
    EXPECT_EQ(zeq({"picture", bracket, "--all-views", directory, "-o", sample("one.png")}).exitCode, 2);

    const std::string png = sample("imported.png");
    const RunResult import = zeq({"import", bracket, "--picture", png});
    EXPECT_EQ(import.exitCode, 0) << import.errors;
    EXPECT_NE(import.output.find("Topology"), std::string::npos) << import.output;
    EXPECT_TRUE(isPicture(png));
}

TEST_F(ZeqSamples, AFileNameOfThreeByteCharactersSurvives) {
    const std::string file = sample("部品図面組立構造.stp");
    fs::copy_file(sample("jaw_plate.stp"), file);
    EXPECT_EQ(zeq({"tree", file}).exitCode, 0);
}

TEST_F(ZeqSamples, ADamagedFileGivesAMessageAndNoTree) {
    std::ifstream stream(sample("jaw_plate.stp"), std::ios::binary);
    const std::string whole{std::istreambuf_iterator<char>(stream), {}};
    const std::vector<std::pair<std::string, std::string>> rows{
        {"empty.stp", ""},
        {"binary.stp", std::string("\0\x1B\xFF\x80", 4)},
        {"header.stp", whole.substr(0, whole.find("DATA;"))},
        {"foreign.xyz", whole},
    };
    for (const auto& [name, content] : rows) {
        std::ofstream(sample(name), std::ios::binary) << content;
        const RunResult result = zeq({"import", sample(name)});
        EXPECT_TRUE(result.exitCode == 4 || result.exitCode == 5) << name << ' ' << result.exitCode;
        EXPECT_EQ(result.output, "") << name;
        EXPECT_NE(result.errors.find("Cannot import '" + sample(name) + "': the translator "),
                  std::string::npos)
            << result.errors;
    }
}

} // namespace
