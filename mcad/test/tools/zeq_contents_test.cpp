// What an import shows beside structure and geometry: annotations, layers, materials, and whether all arrived.
#include <filesystem>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "support/temp_dir.h"
#include "tools/zeq_run.h"
#include "transport/utf8.h"

namespace {

using namespace zeq::test;

const std::string file = ZEQ_FAKE_TRANSLATOR; // any file that exists: the fake translator does not read it

const std::string pmiRows = "  Kind      Name      Value              Faces                        Views\n"
                            "  diameter  Bore      ⌀30 +0.2/0         11, 12                       MBD_A\n"
                            "  position  Position  ⌖ | ⌀0.5 Ⓜ | A     11, 12, 13, 14, 15 + 3 more\n"
                            "                      ⌖ | ⌀0.2 Ⓜ | A\n"
                            "  datum               A                  20                           MBD_A\n"
                            "  note                SIX\\x1B[2J SPOKES\n"
                            "                      注\n";

zeq::JsonDocument parsed(const std::string& text) {
    std::wistringstream stream(zeq::transport::fromUtf8(text));
    return parse(stream);
}

TEST(ZeqContents, AnImportShowsWhatBelongsToTheModelAndWhatIsMissing) {
    const RunResult import = runFake("model", {"-q", "import", file});
    EXPECT_EQ(import.exitCode, 0) << import.errors;
    const std::string shown = "\nPMI of block 4  Wheel ⌀30 (mm): 4 annotations, 1 view\n" + pmiRows +
                              "\n  Layer  Entities  Block\n"
                              "  DIM           2  4  Wheel ⌀30\n"
                              "  TYRE          1  4  Wheel ⌀30\n"
                              "\n  Material  Density     Applies to      Block\n"
                              "  Steel     7850 kg/m³  the whole part  4  Wheel ⌀30\n"
                              "\n  Contents               In the file  Sent  Arrived\n"
                              "  parts                            2     2        2\n"
                              "  instances                        5     5        5\n"
                              "  semantic annotations             6     5        5  <- 1 left out\n"
                              "  views                            2     2        1  <- 1 lost\n"
                              "  graphical annotations            8     1        1  <- 7 switched off\n"
                              "  layers                           2     2        2\n"
                              "  materials                        1     1        1\n"
                              "  colours                          3     3        3\n"
                              "  properties                       1     1        1\n"
                              "  tomorrow's                       4     4        -\n"
                              "  semantic annotations: 1 left out: the value cannot be read (#105)\n"
                              "  graphical annotations: 7 left out: annotations are switched off\n\n";
    const std::size_t at = import.output.find("\nPMI of ");
    ASSERT_NE(at, std::string::npos) << import.output;
    EXPECT_EQ(import.output.substr(at, shown.size()), shown);
    EXPECT_NE(
        import.output.find("\nMechanical 4 annotations, 1 annotation view, 1 capture, 2 layers, 1 material, "
                           "1 property, 1 described entity, 1 named, 1 hidden\n"
                           "Display    2 triangles, 2 faces, 1 edge, 1 annotation, 1 mesh, 3 nodes\n"),
        std::string::npos)
        << import.output;
    EXPECT_TRUE(import.output.ends_with(
        "\nMissing    1 semantic annotation, 1 view; --strict makes that a failure\n"))
        << import.output;
    EXPECT_EQ(runFake("model", {"tree", file}).output.find("PMI"), std::string::npos);

    const RunResult strict = runFake("model", {"--strict", "--json", "import", file});
    EXPECT_EQ(strict.exitCode, 1);
    const zeq::JsonDocument json = parsed(strict.output);
    const zeq::JsonValue& summary = json[L"summary"];
    EXPECT_TRUE(summary[L"complete"].IsTrue());
    EXPECT_EQ(summary[L"missing"][L"views"].GetInt(), 1);
    ASSERT_EQ(summary[L"contents"].Size(), 10U);
    EXPECT_EQ(summary[L"contents"][2][L"left_out"][0][L"items"], zeq::JsonValue(L"#105"));
    EXPECT_EQ(summary[L"contents"][3][L"arrived"].GetInt(), 1);
    EXPECT_EQ(summary[L"display"][L"triangles"].GetInt(), 2);
    EXPECT_EQ(json[L"warnings"].Size(), 1U);
}

TEST(ZeqContents, FacesThatTheGeometryDoesNotHaveAreTold) {
    const std::string errors = runFake("lost-links", {"import", file}).errors;
    EXPECT_NE(
        errors.find("warning: links of block 4: 8 faces (11, 13, 14, 15, 16, ...) that its geometry does "
                    "not have\n"),
        std::string::npos)
        << errors;
    EXPECT_NE(errors.find("warning: display data of block 4: 1 face (13) that its geometry does not have\n"),
              std::string::npos)
        << errors;
}

TEST(ZeqContents, WhatArrivedBeforeTheTranslatorDiedIsShown) {
    const RunResult result = runFake("crash-after-pmi", {"import", file});
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_TRUE(result.output.starts_with("Incomplete: this arrived before the import failed\n\n"
                                          "PMI of block 4 (mm): 4 annotations, 1 view\n" +
                                          pmiRows))
        << result.output;
    EXPECT_NE(result.errors.find("was killed by signal 11"), std::string::npos) << result.errors;

    const zeq::JsonDocument json = parsed(runFake("crash-after-pmi", {"--json", "import", file}).output);
    EXPECT_EQ(json[L"exit_code"].GetInt(), 5);
    EXPECT_TRUE(json[L"summary"][L"complete"].IsFalse());
    EXPECT_EQ(json[L"summary"][L"mechanical"][L"annotations"].GetInt(), 4);

    const TempDir dir; // a file would not be whole
    EXPECT_EQ(runFake("crash-after-pmi", {"import", file, "-o", dir.file("model.txt")}).output, "");
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
    EXPECT_EQ(runFake("crash-after-pmi", {"tree", file}).output, "");
}

} // namespace
