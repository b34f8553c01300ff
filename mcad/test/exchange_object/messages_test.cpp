// Messages and legacy tables: as documents, and what their accessors promise.
#include "zeq_api/exchange_object/messages.h"

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/trace.h"
#include "zeq_api/exchange_object/legacy_maps.h"

namespace zeq {
namespace {

using test::writtenBy;

TEST(Messages, AreMadeFromTheirText) {
    EXPECT_EQ(writtenBy(ExcMessage(L"a")), L"{\"message\":\"a\"}");
    EXPECT_EQ(writtenBy(ExcLog(std::wstring(L"a"))), L"{\"message\":\"a\"}");
    EXPECT_EQ(writtenBy(ExcStageFinished(ExcStageFinished::EStage::mechanical)), L"\"mechanical\"");
}

TEST(Messages, ProgressIsComparedWithoutThePulse) {
    const ExcProgress base;
    const struct {
        void (*change)(ExcProgress&);
        bool isEqual;
    } cases[] = {
        {[](ExcProgress&) {}, true},
        {[](ExcProgress& progress) { progress.setPulse(true); }, true},
        {[](ExcProgress& progress) { progress.setProgress(1); }, false},
        {[](ExcProgress& progress) { progress.setProgressMax(99); }, false},
        {[](ExcProgress& progress) { progress.setStage(L"s"); }, false},
    };
    for (const auto& row : cases) {
        ExcProgress changed;
        row.change(changed);
        EXPECT_EQ(changed == base, row.isEqual) << testing::PrintToString(writtenBy(changed));
    }
}

TEST(Messages, OnlyStagesAreTraced) {
    test::LogCapture log;
    const std::shared_ptr<IExchangeObject> objects[] = {std::make_shared<ExcMessage>(),
                                                        std::make_shared<ExcProgress>(),
                                                        std::make_shared<ExcStageFinished>()};
    for (const auto& object : objects) test::readFrom(*object, writtenBy(*object));
    EXPECT_EQ(test::signaturesOf(log.take(), "mcad/src/zeq_api/zeq_api_exchange_common"),
              (std::vector<std::string>{
                  "virtual void zeq::ExcStageFinished::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::ExcStageFinished::readObject(const JsonValue &)"}));
}

TEST(LegacyMaps, MergingKeepsWhatIsThere) {
    LegacyComponentInstanceNames names;
    EXPECT_TRUE(names.addInstanceName(1, L"a"));
    EXPECT_TRUE(names.addInstanceName(1, L"b"));
    LegacyComponentInstanceNames others;
    others.setMap({{1, L"x"}, {2, L"y"}});
    names.merge(others);
    EXPECT_EQ(names.map(), (LegacyComponentInstanceNames::Map{{1, L"b"}, {2, L"y"}}));

    LegacyMaterialMap materials;
    EXPECT_TRUE(materials.addMaterial(1, {true, L"a", 0, 0, 0}));
    EXPECT_TRUE(materials.addMaterial(1, {true, L"b", 0, 0, 0}));
    LegacyMaterialMap otherMaterials;
    otherMaterials.setMap({{1, {}}, {2, {true, L"y", 1, 2, 3}}});
    materials.merge(otherMaterials);
    ASSERT_EQ(materials.map().size(), 2u);
    EXPECT_EQ(materials.map().at(1).name, L"b");
    EXPECT_EQ(materials.map().at(2).name, L"y");
}

} // namespace
} // namespace zeq
