// Images: what is saved and restored record by record, what passes through without being known, and what
// damaged or hostile images are answered with.
#include <gtest/gtest.h>

#include "acis/image_text.h"
#include "acis/memory_file.h"
#include "support/case_lines.h"

namespace zeq {
namespace {

using test::ImageAssembler;
using test::ImageFrame;
using test::MemoryFile;

std::string narrow(const JsonValue& text) {
    return {text.GetString(), text.GetString() + text.GetStringLength()};
}

std::vector<std::string> strings(const JsonValue& document, const wchar_t* key) {
    std::vector<std::string> result;
    for (const JsonValue& element : document[key].GetArray()) result.push_back(narrow(element));
    return result;
}

long number(const JsonValue& document, const wchar_t* key, long otherwise) {
    return document.HasMember(key) ? long(document[key].GetInt64()) : otherwise;
}

// A case: "records"; optional "written" if other than those; or "throws", the message. "version", "top",
// "count" and "wide" say how they are packed, "restored" how many entities come out if not as many as "top".
TEST(Images, BecomeWhatTheirCasesSay) {
    test::forEachLine("acis_images.jsonl", [](int line, const JsonDocument& row) {
        SCOPED_TRACE("line " + std::to_string(line) + ": " + narrow(row[L"case"]));
        const std::vector<std::string> records = strings(row, L"records");
        ImageFrame frame;
        frame.version = number(row, L"version", frame.version);
        frame.top = number(row, L"top", frame.top);
        frame.wide = row.HasMember(L"wide");

        std::vector<long> counts{number(row, L"count", 0)};
        if (!row.HasMember(L"count") && frame.top >= 0)
            counts.push_back(long(records.size())); // told or not, it is the same
        for (const long count : counts) {
            frame.count = count;
            ENTITY_LIST entities;
            MemoryFile file(ImageAssembler::assemble(records, frame) + "behind");
            const outcome result = api_restore_entity_list_file(&file, entities);
            ASSERT_EQ(test::message(result), row.HasMember(L"throws") ? narrow(row[L"throws"]) : "");
            if (!result.ok()) continue;
            EXPECT_EQ(file.bytes.substr(file.position), "behind");
            EXPECT_EQ(entities.count(), number(row, L"restored", frame.top));

            long version = 0;
            const std::string image = test::saved(entities);
            ASSERT_NE(image.substr(0, 5), "error") << image;
            EXPECT_EQ(ImageAssembler::dump(image, version),
                      row.HasMember(L"written") ? strings(row, L"written") : records);
            EXPECT_EQ(version, number(row, L"version_written", frame.version));
            EXPECT_EQ(image.compare(0, 16, "ACIS BinaryFile8") == 0, frame.wide);
            EXPECT_TRUE(api_del_entity_list(entities).ok());
        }
    });
}

TEST(Images, HeaderSaysWhoMadeThem) {
    ENTITY_LIST entities;
    entities.add(ACIS_NEW BODY);
    MemoryFile file(test::saved(entities));
    EXPECT_EQ(file.bytes.substr(0, 15), "ACIS BinaryFile");
    api_del_entity_list(entities);
    ASSERT_TRUE(api_restore_entity_list_file(&file, entities).ok());
    const FileInfo& info = api_restored_file_info();
    EXPECT_EQ(info.product_id(), "Test");
    EXPECT_EQ(info.units(), 1);
    EXPECT_EQ(info.file_version(), 700);
    EXPECT_EQ(info.date().size(), 24u);
    EXPECT_EQ(info.tol_abs(), 1e-6);
    api_del_entity_list(entities);
}

TEST(Images, CanBeReadAsText) {
    ImageFrame frame;
    frame.count = 2;
    MemoryFile file(ImageAssembler::assemble(
        {"x-attrib $1 -1 @a\"b 'c|d { &e %2 } [1,0.5] (1,2,3) <0,0,1> T F 7.0 7 #", "thing #"}, frame));
    std::vector<std::string> lines;
    const auto take = [&lines](std::string_view line) { lines.emplace_back(line); };
    EXPECT_EQ(test::message(api_image_as_text(&file, take)), "");
    EXPECT_EQ(lines,
              (std::vector<std::string>{
                  "version 700, integers of 4 bytes, records: 2, top entities: 1",
                  "made by \"Other\" with \"Kernel\" on \"Today\", units of 1 mm, tolerances 1e-06 and 1e-10",
                  "0 x-attrib $1 -1 \"a\\\"b\" 'c d' { &e %2 } [1,0.5] (1,2,3) <0,0,1> T F 7.0 7 #",
                  "1 thing #", "End-of-ACIS-data"}));

    MemoryFile cut(file.bytes.substr(0, file.bytes.size() - 25));
    lines.clear();
    EXPECT_EQ(test::message(api_image_as_text(&cut, take)).substr(0, 9), "record 1,");
    EXPECT_EQ(lines.size(), 3u);
}

TEST(Images, OfDifferentVersionsDoNotGoTogether) {
    ENTITY_LIST entities;
    for (const long version : {400L, 21800L}) {
        ImageFrame frame;
        frame.version = version;
        MemoryFile file(ImageAssembler::assemble({"thing $-1 5 #"}, frame));
        ASSERT_TRUE(api_restore_entity_list_file(&file, entities).ok());
    }
    EXPECT_EQ(test::saved(entities),
              "error: records kept from an image of version 400 cannot go with others of version 21800");
    api_del_entity_list(entities);
}

TEST(Images, OfManyMegabytesAreSavedAsTheyWereRestored) {
    ENTITY_LIST points, restored;
    for (int i = 0; i < 200000; ++i) points.add(ACIS_NEW APOINT({double(i), 0, 0}));
    const std::string image = test::saved(points);
    ASSERT_GT(image.size(), std::size_t(8) << 20);
    MemoryFile file(image);
    ASSERT_TRUE(api_restore_entity_list_file(&file, restored).ok());
    EXPECT_TRUE(test::saved(restored) == image);
    api_del_entity_list(points);
    api_del_entity_list(restored);
}

TEST(Images, EmptyOrForeignBytesAreRefused) {
    for (const char* bytes : {"", "ACIS Binary", "700 0 1 0\n"}) {
        ENTITY_LIST entities;
        MemoryFile file(bytes);
        EXPECT_EQ(test::message(api_restore_entity_list_file(&file, entities)),
                  "header, byte 0: expected the signature ACIS BinaryFile");
    }
}

} // namespace
} // namespace zeq
