// The wrapper document: text and shared buffers, from one process to another, and everything that can go
// wrong.
#include "zeq_api/exchange_object/exchange_object_wrapper.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "mp/exception.h"
#include "mp/shared_buffer.h"
#include "mv_cvx/logger.h"
#include "support/case_lines.h"
#include "support/child_process.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/own_tmp.h"
#include "support/temp_dir.h"
#include "support/trace.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_object/exchange_object_registry.h"
#include "zeq_api/exchange_object/legacy_maps.h"
#include "zeq_api/exchange_object/messages.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<test::LogLine>;

const char* const area = "mcad/src/zeq_api/zeq_api_exchange_object";

/// The file of a shared buffer; the names of these tests are ASCII.
fs::path fileOf(const std::wstring& name) {
    return fs::path(mp::sharedDirectory()) / std::string(name.begin(), name.end());
}

std::shared_ptr<ExcProductStructure> product(const std::wstring& name) {
    auto result = std::make_shared<ExcProductStructure>();
    result->setProductName(name);
    auto block = std::make_shared<ExcBlock>();
    block->setId(42);
    result->addBlock(block);
    return result;
}

ExchangeObjectWrapper holding(const std::shared_ptr<IExchangeObject>& object) {
    ExchangeObjectWrapper wrapper;
    wrapper.set(object);
    return wrapper;
}

/// What a wrapper writes for the object, to the unit.
std::wstring wrapped(const std::shared_ptr<IExchangeObject>& object) {
    std::wostringstream stream;
    holding(object).writeObject(stream);
    return stream.str();
}

std::shared_ptr<IExchangeObject> unwrapped(const std::wstring& text, bool delayed = false) {
    ExchangeObjectWrapper wrapper;
    wrapper.setDelayedLoading(delayed);
    test::readFrom(wrapper, text);
    return wrapper.get();
}

std::wstring binaryDocument(const std::wstring& bufferName,
                            const std::wstring& kind = L"exc_product_structure") {
    return L"{\"exchange_object_name\":\"" + kind + L"\",\"binary\":true,\"exchange_object_data\":\"" +
           bufferName + L"\"}";
}

/// A shared buffer with these bytes, removed at the end of the test at the latest.
class Buffer {
public:
    explicit Buffer(const std::string& bytes) {
        mp::SharedBuffer<char>(m_name, false).setBuffer(bytes.data(), bytes.size());
    }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { mp::removeObject(m_name); }

    const std::wstring& name() const { return m_name; }
    bool exists() const { return fs::exists(fileOf(m_name)); }

private:
    std::wstring m_name = IExchangeObject::generateUUID();
};

std::string encoded(const wchar_t* text) {
    std::wistringstream stream(text);
    std::string bytes;
    JsonBinaryIO::encode(test::parse(stream), bytes);
    return bytes;
}

std::string compressed(const std::string& bytes) {
    std::string out;
    Compressor::compress(out, bytes.data(), bytes.size(), -1);
    return out;
}

TEST(ExchangeObjectWrapper, WritesSmallObjectsIntoItsText) {
    EXPECT_EQ(wrapped(std::make_shared<ExcMessage>(L"m")),
              L"{\"exchange_object_name\":\"exc_message\",\"exchange_object_data\":{\"message\":\"m\"}}");
    EXPECT_EQ(wrapped(std::make_shared<ExcStageFinished>(ExcStageFinished::EStage::mechanical)),
              L"{\"exchange_object_name\":\"exc_stage_finished\",\"exchange_object_data\":\"mechanical\"}");
}

TEST(ExchangeObjectWrapper, WritesLargeObjectsIntoANewBuffer) {
    const auto object = product(L"p");
    std::set<std::wstring> names;
    for (int i = 0; i < 2; ++i) {
        const std::wstring text = wrapped(object);
        const std::wstring name = text.substr(text.size() - 38, 36);
        EXPECT_EQ(text, binaryDocument(name));
        EXPECT_TRUE(names.insert(name).second);

        std::vector<char> bytes;
        mp::SharedBuffer<char>(name, true).get(bytes);
        ASSERT_TRUE(Compressor::isCompressed(bytes.data(), bytes.size()));
        std::string plain;
        Compressor::decompress(plain, bytes.data(), bytes.size());
        EXPECT_EQ(plain, encoded(test::writtenBy(*object).c_str()));
    }
}

TEST(ExchangeObjectWrapper, RefusesToWriteNothing) {
    std::wostringstream stream;
    EXPECT_EQ(test::refusalOf([&] { ExchangeObjectWrapper().writeObject(stream); }),
              "ExchangeObjectWrapper::writeObject > m_pObject == nullptr");
    EXPECT_EQ(stream.str(), L"");
}

/// Keeps what is written and fails when it is to be passed on.
class BrokenPipe : public std::wstringbuf {
protected:
    int sync() override { return -1; }
};

TEST(ExchangeObjectWrapper, LeavesNoBufferWhoseNameDidNotGetOut) {
    BrokenPipe pipe;
    std::wostream stream(&pipe);
    try {
        holding(product(L"p")).writeObject(stream);
        FAIL() << "no exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "Cannot write object into json document");
    }
    const std::wstring text = pipe.str();
    ASSERT_GT(text.size(), 38u);
    EXPECT_FALSE(fs::exists(fileOf(text.substr(text.size() - 38, 36))));
}

TEST(ExchangeObjectWrapper, RefusesWhatIsNotOneJsonObject) {
    for (const wchar_t* text : {L"", L"{", L"[]", L"\"exc_message\"", L"null", L"{} {}", L"{}x"}) {
        ExchangeObjectWrapper wrapper = holding(std::make_shared<ExcMessage>(L"old"));
        EXPECT_EQ(test::refusalOf([&] { test::readFrom(wrapper, text); }),
                  "ExchangeObjectWrapper::readObject: invalid json document")
            << testing::PrintToString(text);
        EXPECT_TRUE(wrapper.get());
    }
}

TEST(ExchangeObjectWrapper, ReadsByWhatTheDocumentSaysNotByItsKind) {
    test::forEachLine("wrappers.jsonl", [](int number, const JsonValue& line) {
        SCOPED_TRACE(number);
        test::LogCapture log(mv_cvx::Debug);
        ExchangeObjectWrapper wrapper = holding(std::make_shared<ExcMessage>(L"old"));
        test::readFrom(wrapper, test::textOf(line[L"read"]));
        const auto object = wrapper.get();
        if (!line.HasMember(L"source")) { // of an unknown kind, which is no error
            EXPECT_FALSE(object);
            EXPECT_EQ(log.take(), Lines{});
            return;
        }
        ASSERT_TRUE(object);
        EXPECT_EQ(object->source(), line[L"source"].GetString());
        EXPECT_FALSE(object->isLoaded());
        EXPECT_NE(test::writtenBy(*object).find(line[L"part"].GetString()), std::wstring::npos);
        Lines expected;
        if (const std::wstring text = line[L"log"].GetString(); !text.empty())
            expected.push_back({mv_cvx::Error, {text.begin(), text.end()}});
        EXPECT_EQ(log.take(), expected);
    });
}

TEST(ExchangeObjectWrapper, LetsTheExceptionOfALegacyTablePass) {
    ExchangeObjectWrapper wrapper;
    EXPECT_EQ(test::refusalOf([&] {
                  test::readFrom(wrapper, L"{\"exchange_object_name\":\"legacy_component_instance_names\","
                                          L"\"exchange_object_data\":{}}");
              }),
              "LegacyComponentInstanceNames::readObject(): Input json object is not an array");
    EXPECT_TRUE(wrapper.get());
}

TEST(ExchangeObjectWrapper, TravelsFromOneProcessToAnother) {
    for (const bool delayed : {false, true}) {
        const test::TempDir dir;
        const std::string path = dir.file("document");
        ASSERT_EQ(test::waitForChild(test::startChild([&] {
                      std::wofstream stream(path);
                      holding(product(L"from the other process")).writeObject(stream);
                  })),
                  0);
        std::wifstream stream(path);
        ExchangeObjectWrapper wrapper;
        wrapper.setDelayedLoading(delayed);
        wrapper.readObject(stream);
        const auto object = std::dynamic_pointer_cast<ExcProductStructure>(wrapper.get());
        ASSERT_TRUE(object);
        EXPECT_EQ(object->source().size(), 36u);
        EXPECT_EQ(object->isLoaded(), !delayed);
        EXPECT_EQ(fs::exists(fileOf(object->source())), delayed);
        EXPECT_EQ(object->productName(), delayed ? L"" : L"from the other process");

        object->load();
        EXPECT_TRUE(object->isLoaded());
        EXPECT_FALSE(fs::exists(fileOf(object->source())));
        EXPECT_EQ(test::writtenBy(*object), test::writtenBy(*product(L"from the other process")));
        object->load(); // does not come again
        EXPECT_EQ(object->blocks().size(), 1u);
    }
}

TEST(ExchangeObjectWrapper, OfTwoReadersOneGetsTheObject) {
    const std::wstring text = wrapped(product(L"p"));
    const auto first = unwrapped(text, true);
    const auto second = unwrapped(text, true);
    ASSERT_EQ(test::waitForChild(test::startChild([&] { first->load(); })), 0);
    EXPECT_THROW(second->load(), std::length_error);
    EXPECT_FALSE(second->isLoaded());
    EXPECT_FALSE(fs::exists(fileOf(second->source())));
}

TEST(ExchangeObjectWrapper, LoadsPlainAndInexactBuffersToo) {
    std::string inexact = encoded(L"{\"product_name\":\"p\"}");
    inexact[1] = 1; // the length of the object: its member begins within it and runs past its end
    for (const std::string& bytes : {encoded(L"{\"product_name\":\"p\"}"), compressed(inexact), inexact,
                                     inexact + "rest", compressed(inexact + "rest")}) {
        const Buffer buffer(bytes);
        const auto object =
            std::dynamic_pointer_cast<ExcProductStructure>(unwrapped(binaryDocument(buffer.name())));
        ASSERT_TRUE(object);
        EXPECT_TRUE(object->isLoaded());
        EXPECT_EQ(object->productName(), L"p");
        EXPECT_FALSE(buffer.exists());
    }
}

TEST(ExchangeObjectWrapper, ADamagedBufferIsRemovedAndItsObjectNotLoaded) {
    const std::string good = encoded(L"{\"product_name\":\"p\"}");
    const std::string packed = compressed(good);
    std::string flipped = packed;
    flipped[flipped.size() / 2] = static_cast<char>(~flipped[flipped.size() / 2]);
    const struct {
        const char* claim;
        std::string bytes;
        const char* error;
    } cases[] = {
        {"empty", "", "JsonBinaryIO: Failed to parse all bytes of type"},
        {"an unknown type", "\x0B", "JsonBinaryIO: Unknown value type"},
        {"text", "{\"product_name\":\"p\"}", "JsonBinaryIO: Unknown value type"},
        {"cut short", good.substr(0, good.size() - 1),
         "JsonBinaryIO: Failed to read all the bytes of string"},
        {"a length that is not there", good.substr(0, 5),
         "JsonBinaryIO: Failed to read all the number of bytes"},
        {"compressed and cut after its header", packed.substr(0, 10),
         "JsonBinaryIO: Failed to parse all bytes of type"},
        {"compressed and damaged", flipped, nullptr},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.claim);
        const Buffer buffer(row.bytes);
        ExchangeObjectWrapper wrapper;
        try {
            test::readFrom(wrapper, binaryDocument(buffer.name()));
            ADD_FAILURE() << "no exception";
        } catch (const std::exception& error) {
            const std::string what = error.what();
            EXPECT_EQ(what,
                      row.error ? row.error : what); // the decoders of compressed data word it differently
        }
        ASSERT_TRUE(wrapper.get());
        EXPECT_EQ(wrapper.get()->source(), buffer.name());
        EXPECT_FALSE(wrapper.get()->isLoaded());
        EXPECT_FALSE(buffer.exists());
    }
}

/// What is in an object afterwards, or the refusal; and what was logged.
struct Outcome {
    std::wstring content;
    std::string refusal;
    Lines log;
    bool operator==(const Outcome&) const = default;
};

template <class Read>
Outcome outcomeOf(Read read) {
    const auto object = product(L"there before");
    Outcome outcome;
    test::LogCapture log(mv_cvx::Debug);
    try {
        read(*object);
    } catch (const std::exception& error) {
        outcome.refusal = error.what();
    }
    outcome.content = test::writtenBy(*object);
    outcome.log = log.take();
    return outcome;
}

/// Decodes all of the buffer's content before anything of it is read.
Outcome outcomeOfTheWhole(const std::string& bytes) {
    return outcomeOf([&bytes](ExcProductStructure& object) {
        std::vector<char> plain(bytes.begin(), bytes.end());
        Compressor::makePlain(plain);
        JsonDocument document;
        JsonBinaryIO::decode(plain.data(), plain.size(), document, document.GetAllocator());
        object.readObject(document);
    });
}

Outcome outcomeOfLoading(const std::string& bytes) {
    const Buffer buffer(bytes);
    Outcome outcome = outcomeOf([&buffer](ExcProductStructure& object) {
        object.setSource(buffer.name());
        object.load();
    });
    EXPECT_FALSE(buffer.exists());
    return outcome;
}

TEST(ExchangeObjectWrapper, ReadsThroughAWindowAsIfAllWereDecodedFirst) {
    const auto large = product(L"p");
    for (int i = 0; i < 3000; ++i) { // some windows of it
        auto reference = std::make_shared<ExcBlockReference>();
        reference->setName(L"reference " + std::to_wstring(i * 7919));
        large->blocks().front()->addBlockReference(reference);
    }
    large->blocks().front()->setName(std::wstring(700'000, L'n')); // longer than a window
    JsonDocument document;
    large->writeObject(document, document.GetAllocator());
    document[L"blocks"].PushBack(5, document.GetAllocator()); // which is complained of
    std::string image;
    JsonBinaryIO::encode(document, image);
    const std::string packed = compressed(image);
    for (const std::string& bytes : {image, packed, packed + "rest"}) {
        const Outcome loaded = outcomeOfLoading(bytes);
        EXPECT_EQ(loaded.refusal, "");
        EXPECT_EQ(loaded.log, (Lines{{mv_cvx::Error, "ExcBlock object should have a JSON object type."}}));
        EXPECT_TRUE(loaded == outcomeOfTheWhole(bytes));
    }

    std::mt19937 random(5);
    for (int i = 0; i < 80; ++i) {
        std::string damaged = i % 2 ? image : packed;
        const std::size_t at = random() % damaged.size();
        if (i % 4 < 2)
            damaged.resize(at);
        else
            damaged[at] = static_cast<char>(random());
        SCOPED_TRACE(i);
        EXPECT_TRUE(outcomeOfLoading(damaged) == outcomeOfTheWhole(damaged)) << at;
    }
}

TEST(ExchangeObjectWrapper, ANameThatLeavesTheSharedDirectoryTouchesNothing) {
    const test::TempDir dir;
    const std::string outside = dir.file("model");
    std::ofstream(outside) << "content";
    const std::string parent = "../" + fs::path(outside).lexically_relative("/tmp").string();
    for (const std::string& name : {outside, parent})
        EXPECT_THROW(unwrapped(binaryDocument({name.begin(), name.end()})), mp::SharedMemoryException);
    EXPECT_EQ(fs::file_size(outside), 7u);
}

/// A binary object that says how it was read and is not compressed.
class Plain : public IExchangeObject {
public:
    std::wstring content = L"default";

    void readObject(const JsonValue& value) override {
        if (!value.IsString()) throw std::runtime_error("not for me");
        content = value.GetString();
    }
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override {
        out.SetString(content.c_str(), alloc);
    }
    const std::wstring& objectName() const override {
        static const std::wstring name = L"plain object of this test";
        return name;
    }
    std::shared_ptr<IExchangeObject> clone() const override { return std::make_shared<Plain>(); }
    bool binary() const override { return true; }
};

TEST(ExchangeObjectWrapper, CarriesClassesOfItsUsers) {
    const StaticExchangeObject<Plain> prototype;
    const auto sent = std::make_shared<Plain>();
    sent->content = L"sent";
    const auto received = std::dynamic_pointer_cast<Plain>(unwrapped(wrapped(sent)));
    ASSERT_TRUE(received);
    EXPECT_EQ(received->content, L"sent");
    EXPECT_TRUE(received->isLoaded());

    const Buffer wrong(encoded(L"5"));
    EXPECT_THROW(unwrapped(binaryDocument(wrong.name(), prototype.objectName())), std::runtime_error);
    EXPECT_FALSE(wrong.exists());
}

TEST(ExchangeObjectWrapper, LeavesNoBufferThatCannotBeWritten) {
    test::withOwnTmp([] {
        const auto large = std::make_shared<Plain>();
        large->content.assign(1 << 20, L'x');
        EXPECT_THROW(wrapped(large), mp::SharedMemoryException);
        EXPECT_TRUE(fs::is_empty(mp::sharedDirectory()));
    });
}

TEST(ExchangeObjectWrapper, TracesItsWork) {
    test::LogCapture log;
    unwrapped(wrapped(std::make_shared<ExcMessage>()));
    EXPECT_EQ(test::signaturesOf(log.take(), area),
              (std::vector<std::string>{
                  "virtual void zeq::ExchangeObjectWrapper::writeObject(mp::OutputStream &) const",
                  "virtual void zeq::ExchangeObjectWrapper::readObject(mp::InputStream &)"}));
    ExcMessage().load();
    EXPECT_EQ(test::signaturesOf(log.take(), area),
              (std::vector<std::string>{"virtual void zeq::IExchangeObject::load()"}));
}

} // namespace
} // namespace zeq
