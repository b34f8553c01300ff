// The translator's description of itself.
#include "zeq_api/convexor_info/convexor_info.h"

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/trace.h"

namespace zeq {
namespace {

using test::readFrom;
using test::refusalOf;
using test::writtenBy;

const wchar_t* const empty =
    LR"({"name":"","version":"","convexor_interface":"uconnect","parasolid_mode":"direct",
    "modeler_version":0})";

const wchar_t* const full = LR"({"name":"n","version":"1.2","convexor_interface":"legacy",
    "thirdparty_cores":[{"name":"core","version":"7"}],"parasolid_mode":"kernel",
    "import_formats":[{"description":"STEP files","extensions":["stp;step"],"filters":["*.stp"]},
                      {"description":"","extensions":[],"filters":[]}],
    "export_formats":[{"description":"STL","extensions":["stl"],"filters":[]}],"modeler_version":31})";

TEST(ConvexorInfo, WritesListsOnlyWhenTheyHaveElements) {
    EXPECT_EQ(writtenBy(ConvexorInfo()), test::compact(empty));

    ConvexorInfo info;
    info.setName(L"n");
    info.setVersion(L"1.2");
    info.setRequestedInterface(EConvexorInterface::legacy);
    ThirdpartyCore* core = info.newThirdpartyCore();
    core->setName(L"core");
    core->setVersion(L"7");
    info.setParasolidMode(EParasolidMode::kernel);
    Format* step = info.newImportFormat();
    step->setDescription(L"STEP files");
    step->addExtension(L"stp;step");
    step->addFilterExtensions(L"*.stp");
    step->addRegex(L"stays here");
    info.addImportFormats({nullptr, std::make_shared<Format>()});
    const auto stl = std::make_shared<Format>();
    stl->setDescription(L"STL");
    stl->setExtensions({L"stl"});
    info.addExportFormats({stl});
    info.setModelerMajorVersion(31);
    EXPECT_EQ(writtenBy(info), test::compact(full));
}

TEST(ConvexorInfo, NullIsNotAdded) {
    ConvexorInfo info;
    info.addThirdpartyCore(nullptr);
    info.addImportFormat(nullptr);
    info.addExportFormat(nullptr);
    info.addExportFormats({nullptr, nullptr});
    EXPECT_EQ(writtenBy(info), test::compact(empty));
}

TEST(ConvexorInfo, ATextThatIsNoObjectIsRefused) {
    for (const wchar_t* text : {L"", LR"({"name":})", L"{}{}"}) {
        ConvexorInfo info;
        EXPECT_EQ(refusalOf([&] { readFrom(info, text); }),
                  "ConvexorInfo::readObject: invalid json document");
    }
}

TEST(ConvexorInfo, EveryReaderAndWriterLeavesATrace) {
    ConvexorInfo info;
    info.newThirdpartyCore();
    info.newExportFormat();
    test::LogCapture log;
    readFrom(info, writtenBy(info));
    EXPECT_EQ(test::signaturesOf(log.take(), "mcad/src/zeq_api/zeq_api_convexor_info"),
              (std::vector<std::string>{
                  "virtual void zeq::ConvexorInfo::writeObject(mp::OutputStream &) const",
                  "virtual void zeq::ThirdpartyCore::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::Format::writeObject(JsonValue &, JsonAllocator &) const",
                  "virtual void zeq::ConvexorInfo::readObject(mp::InputStream &)",
                  "virtual void zeq::ThirdpartyCore::readObject(const JsonValue &)",
                  "virtual void zeq::Format::readObject(const JsonValue &)",
              }));
}

} // namespace
} // namespace zeq
