// Geometry and its tags on their way through shared buffers.
#include "zeq_api/exchange_mechanical/block_geometry.h"

#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "mp/shared_buffer.h"
#include "mp/string.h"
#include "support/child_process.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "zeq_api/acis_attrib_id/attrib_convexor.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"

namespace zeq {
namespace {

using test::LogCapture;
using test::writtenBy;

constexpr const char* cannotGet = "Failed to get geometry from shared memory buffer: ";

/// A vertex that carries the ids, the last one first.
VERTEX* taggedVertex(const std::vector<long>& ids) {
    auto* const vertex = ACIS_NEW VERTEX(ACIS_NEW APOINT(SPAposition(1, 2, 3)));
    for (const long id : ids) ACIS_NEW ATTRIB_CONVEXOR_ID(vertex, id);
    return vertex;
}

std::vector<long> idsOf(const ENTITY& entity) {
    std::vector<long> ids;
    for (const ATTRIB* each = entity.attrib(); each; each = each->next())
        if (is_ATTRIB_CONVEXOR_ID(each)) ids.push_back(static_cast<const ATTRIB_CONVEXOR_ID*>(each)->id());
    return {ids.rbegin(), ids.rend()};
}

std::filesystem::path fileOf(const std::wstring& document) {
    std::wistringstream stream(document);
    const JsonDocument json = test::parse(stream);
    return std::filesystem::path(mp::sharedDirectory()) /
           mp::toUtf8String(json[L"shared_acis_buffer_name"].GetString());
}

bool errorsAre(LogCapture& log, const std::vector<std::string>& beginnings) {
    std::vector<std::string> errors;
    for (const test::LogLine& line : log.take())
        if (line.level == 2) errors.push_back(line.text);
    bool same = errors.size() == beginnings.size();
    for (std::size_t i = 0; same && i < errors.size(); ++i) same = errors[i].starts_with(beginnings[i]);
    EXPECT_TRUE(same) << testing::PrintToString(errors);
    return same;
}

TEST(BlockGeometry, ReachesAnotherProcessWithItsTags) {
    const std::vector<long> ids{-1, 0, std::numeric_limits<long>::max(), std::numeric_limits<long>::min(),
                                42};
    for (const bool compress : {false, true}) {
        OwnedEntities entities;
        entities.list.add(taggedVertex(ids));
        ExcBlockGeometry geometry;
        geometry.setBlockId(7);
        ASSERT_TRUE(geometry.setGeometry(entities.list, compress));
        const std::wstring document = writtenBy(geometry);
        ASSERT_TRUE(std::filesystem::exists(fileOf(document)));

        const pid_t reader = test::startChild([&] {
            ExcBlockGeometry received;
            test::readFrom(received, document);
            EXPECT_EQ(received.blockId(), 7U);
            EXPECT_FALSE(received.isLoaded());
            received.load();
            ASSERT_TRUE(received.isLoaded());
            OwnedEntities restored;
            ASSERT_TRUE(received.getGeometry(restored.list));
            ASSERT_EQ(restored.list.count(), 1);
            ASSERT_TRUE(is_VERTEX(restored.list[0]));
            EXPECT_EQ(idsOf(*restored.list[0]), ids);
            const auto* vertex = static_cast<const VERTEX*>(restored.list[0]);
            EXPECT_EQ(vertex->geometry()->coords(), SPAposition(1, 2, 3));
            // Only the constructor with an id sets the owner actions.
            EXPECT_EQ(vertex->attrib()->get_copy_owner_action(), ATTRIB().get_copy_owner_action());
        });
        EXPECT_EQ(test::waitForChild(reader), 0);
        EXPECT_FALSE(std::filesystem::exists(fileOf(document))) << "the reader removes the buffer";
    }
}

TEST(BlockGeometry, EachWritingHasABufferOfItsOwn) {
    OwnedEntities entities;
    entities.list.add(taggedVertex({1}));
    std::filesystem::path first;
    std::filesystem::path second;
    {
        ExcBlockGeometry geometry;
        geometry.own(true);
        EXPECT_TRUE(geometry.setGeometry(entities.list, false));
        first = fileOf(writtenBy(geometry));
        EXPECT_TRUE(geometry.setBinaryData("image", 5, true));
        second = fileOf(writtenBy(geometry));
        EXPECT_NE(first, second);
        EXPECT_FALSE(std::filesystem::exists(first));
        EXPECT_TRUE(std::filesystem::exists(second));
    }
    EXPECT_FALSE(std::filesystem::exists(second));
}

TEST(BlockGeometry, WhatFailsIsLoggedAndNothingThrows) {
    LogCapture log;
    OwnedEntities entities;
    ExcBlockGeometry none;
    EXPECT_FALSE(none.getGeometry(entities.list));
    errorsAre(log, {cannotGet + std::string("Invalid buffer object.")});

    // A buffer that vanished between writing and loading is an empty one, and no image.
    ExcBlockGeometry vanished;
    test::readFrom(vanished, L"{\"block_id\":1,\"shared_acis_buffer_name\":\"" +
                                 IExchangeObject::generateUUID() + L"\"}");
    vanished.load();
    EXPECT_TRUE(vanished.isLoaded());
    EXPECT_FALSE(vanished.getGeometry(entities.list));
    errorsAre(log, {cannotGet});

    for (const wchar_t* name : {L"", L"no/file"}) {
        ExcBlockGeometry unreadable;
        test::readFrom(unreadable,
                       std::wstring(L"{\"block_id\":1,\"shared_acis_buffer_name\":\"") + name + L"\"}");
        unreadable.load();
        EXPECT_FALSE(unreadable.isLoaded());
        errorsAre(log, {"Failed to load ACIS buffer: "});
    }

    // Damaged compression is no mp::SharedMemoryException, and is caught all the same.
    std::string bytes;
    Compressor::compress(bytes, "an image that is long enough to be damaged", 42, 9);
    for (std::size_t i = 10; i < bytes.size(); ++i) bytes[i] = '\xFF';
    ExcBlockGeometry writer;
    ASSERT_TRUE(writer.setBinaryData(bytes.data(), bytes.size(), false));
    ExcBlockGeometry damaged;
    test::readFrom(damaged, writtenBy(writer));
    damaged.load();
    EXPECT_FALSE(damaged.isLoaded());
    errorsAre(log, {"Failed to load ACIS buffer: "});
    EXPECT_EQ(entities.list.count(), 0);
}

TEST(SharedAcisBuffer, IsAStreamWithAPosition) {
    const std::wstring name = IExchangeObject::generateUUID();
    ExcSharedAcisBuffer buffer(name, true);
    EXPECT_EQ(buffer.set_mark(), 0);
    buffer.write("abcdef", 6, 0);
    EXPECT_EQ(buffer.set_mark(), 6);
    char bytes[8] = {};
    EXPECT_EQ(buffer.read(bytes, 4, 0), 4U);
    EXPECT_EQ(buffer.set_mark(), 4);
    EXPECT_EQ(buffer.read(bytes, 8, 0), 2U) << "a short read at the end";
    buffer.goto_mark(1);
    buffer.write("XY", 2, 0);
    EXPECT_EQ(buffer.set_mark(), 3);
    buffer.goto_mark(0);
    EXPECT_EQ(std::string(bytes, buffer.read(bytes, 8, 0)), "aXYdef");
    buffer.goto_mark(-5);
    buffer.write("z", 1, 0);
    EXPECT_EQ(buffer.set_mark(), -1);
    buffer.cleanUp();
    EXPECT_EQ(buffer.set_mark(), 0);

    buffer.goto_mark(6);
    mp::SharedBuffer<char>(name, false).setBuffer("\x1F\x8B\x08 damaged", 11);
    EXPECT_ANY_THROW(buffer.load());
    EXPECT_EQ(buffer.read(bytes, 8, 0), 0U) << "nothing is left, and nothing beyond it is read";
}

TEST(ConvexorAttributes, TellTheirClassByLevel) {
    OwnedEntities entities;
    auto* const vertex = taggedVertex({5});
    entities.list.add(vertex);
    const ATTRIB* const id = vertex->attrib();
    const auto* const parent = ACIS_NEW ATTRIB_CONVEXOR(vertex);
    const int none = -1;
    const int root = ATTRIB::staticType();
    const int middle = ATTRIB_CONVEXOR::staticType();
    const int leaf = ATTRIB_CONVEXOR_ID::staticType();
    const std::vector<std::pair<int, int>> ofId{{0, leaf}, {3, leaf},  {2, middle}, {-1, middle},
                                                {1, root}, {-2, root}, {4, none}};
    const std::vector<std::pair<int, int>> ofParent{
        {0, middle}, {2, middle}, {1, root}, {-1, root}, {3, none}};
    for (const auto& [level, type] : ofId) EXPECT_EQ(id->identity(level), type) << level;
    for (const auto& [level, type] : ofParent) EXPECT_EQ(parent->identity(level), type) << level;
    EXPECT_TRUE(is_ATTRIB_CONVEXOR(id) && is_ATTRIB_CONVEXOR_ID(id) && is_ATTRIB_CONVEXOR(parent));
    EXPECT_FALSE(is_ATTRIB_CONVEXOR_ID(parent) || is_ATTRIB_CONVEXOR(vertex) ||
                 is_ATTRIB_CONVEXOR_ID(nullptr));
    EXPECT_STREQ(id->type_name(), "Morvanta_Convexor_ID_Attribute");
    EXPECT_STREQ(parent->type_name(), "Morvanta_Convexor_Attribute");
}

TEST(ConvexorAttributes, GoWithACopyOfTheirOwner) {
    OwnedEntities entities;
    entities.list.add(taggedVertex({-3, 9}));
    ENTITY* copy = nullptr;
    ASSERT_TRUE(api_copy_entity(entities.list[0], copy).ok());
    entities.list.add(copy);
    EXPECT_EQ(idsOf(*copy), (std::vector<long>{-3, 9}));
    EXPECT_EQ(idsOf(*entities.list[0]), (std::vector<long>{-3, 9}));
}

struct Arguments : METHOD_ARGS {
    explicit Arguments(const char* name) : m_name(name) {}
    const char* class_name() const override { return m_name; }

private:
    const char* m_name;
};

TEST(ConvexorAttributes, LookMethodsUpInTheirOwnClassFirst) {
    OwnedEntities entities;
    auto* const vertex = taggedVertex({5});
    entities.list.add(vertex);
    const METHOD_ID method("count", "numbers");
    const Arguments numbers("numbers");
    EXPECT_EQ(vertex->attrib()->call_method(method, numbers), 0);
    ATTRIB_CONVEXOR::add_method(method, [](ATTRIB*, const METHOD_ARGS&) { return 1; });
    EXPECT_EQ(vertex->attrib()->call_method(method, numbers), 1);
    ATTRIB_CONVEXOR_ID::add_method(method, [](ATTRIB*, const METHOD_ARGS&) { return 2; });
    EXPECT_EQ(vertex->attrib()->call_method(method, numbers), 2);
    EXPECT_EQ(vertex->attrib()->call_method(method, Arguments("texts")), 0);
}

} // namespace
} // namespace zeq
