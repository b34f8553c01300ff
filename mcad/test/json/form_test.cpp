// The form engine: rules, inheritance, children, duplicates, and the byte stream against the document model.
#include "zeq_api/json/form.h"

#include <climits>

#include <gtest/gtest.h>

#include "mv_cvx/logger.h"
#include "support/binary_form.h"
#include "support/log_capture.h"
#include "zeq_api/exchange_common/area.h"
#include "zeq_api/exchange_structure/area.h"
#include "zeq_api/json/binary_dom.h"

namespace zeq {
namespace {

enum class EShade {
    dark = 4,
    light = 2,
    lighter = 3
};
const EnumTable& enumTable(EShade) {
    static constexpr EnumEntry names[] = {
        {EShade::dark, L"dark"}, {EShade::light, L"light"}, {EShade::lighter, L"light"}};
    static const EnumTable table{"EShade", names};
    return table;
}

class Leaf : public IJsonObject {
public:
    int number = 7;
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    struct JsonForm;
};
struct Leaf::JsonForm {
    using This = Leaf;
    static constexpr json::Form form{
        json::Head{"Leaf", area::exchangeCommon, json::logsWarning("Leaf::readObject: not an object")},
        json::field(L"number", &This::number),
    };
};
ZEQ_JSON_OBJECT(Leaf)

class Tree : public IJsonObject {
public:
    std::wstring name;
    double width = 0.5;
    unsigned long long id = 0;
    long long offset = 0;
    bool flag = false;
    EShade shade = EShade::dark;
    std::array<double, 3> point{};
    std::vector<std::wstring> tags;
    Leaf strict;
    Leaf lenient;
    std::shared_ptr<Leaf> held;
    std::vector<std::shared_ptr<Leaf>> leaves;
    std::vector<Leaf> all;
    void add(std::shared_ptr<Leaf> leaf) { leaves.push_back(std::move(leaf)); }
    std::wstring kind() const { return L"tree"; }
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    struct JsonForm;
};
struct Tree::JsonForm {
    using This = Tree;
    static constexpr json::Form form{
        json::Head{"Tree", area::exchangeStructure},
        json::computed(L"kind", &This::kind),
        json::field(L"name", &This::name, json::unlessEmpty),
        json::field(L"width", &This::width, json::unless(0.5)),
        json::field(L"id", &This::id),
        json::field(L"offset", &This::offset),
        json::field(L"flag", &This::flag, json::whenSet),
        json::field(L"shade", &This::shade),
        json::field(L"point", &This::point),
        json::field(L"tags", &This::tags, json::unlessEmpty),
        json::field(L"strict", &This::strict),
        json::nested(L"lenient", &This::lenient),
        json::field(L"held", &This::held),
        json::children(L"leaves", &This::leaves, &This::add),
        json::children(L"all", &This::all, json::anyElements, json::always),
    };
};
ZEQ_JSON_OBJECT(Tree)

class Grown : public Tree {
public:
    int rings = 0;
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;
    struct JsonForm;
};
struct Grown::JsonForm {
    using This = Grown;
    static constexpr json::Form form{
        json::Head{"Grown", area::exchangeStructure},
        json::base<Tree>,
        json::field(L"rings", &This::rings),
    };
};
ZEQ_JSON_OBJECT(Grown)

/// A user's class: no form, only the two functions.
class Foreign : public Leaf {
public:
    void readObject(const JsonValue& object) override { number = object.IsObject() ? -1 : -2; }
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override {
        out.SetObject();
        out.AddMember(L"foreign", true, alloc);
    }
};

JsonDocument parse(const wchar_t* text) {
    JsonDocument document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(text);
    EXPECT_FALSE(document.HasParseError()) << text;
    return document;
}

JsonDocument written(const IJsonObject& object) {
    JsonDocument document;
    object.writeObject(document, document.GetAllocator());
    return document;
}

std::string encoded(const JsonValue& value) {
    std::string bytes;
    JsonBinaryIOImpl::encode(value, bytes);
    return bytes;
}

struct ReadRow {
    const char* claim;
    const wchar_t* text;
    const wchar_t* expected; // what is written back
    bool isInOrder = true;   // each member once and where the form asks for it: bytes are read in one pass
};

const wchar_t* const defaults = LR"({"kind":"tree","id":0,"offset":0,"shade":"dark","point":[0.0,0.0,0.0],
    "strict":{"number":7},"lenient":{"number":7},"held":null,"all":[],"rings":0})";

const ReadRow readRows[] = {
    {"nothing is taken from nothing", L"{}", defaults},
    {"the wrong type is skipped silently, nested objects included",
     LR"({"name":1,"width":1,"id":-1,"offset":1.0,"flag":1,"shade":2,"point":{},"tags":{},"strict":[],"held":[],
          "leaves":{},"all":{},"rings":2147483648})",
     defaults},
    {"a computed member is never read", LR"({"kind":"bush"})", defaults},
    {"members in any order",
     LR"({"rings":3,"offset":-9,"unknown":{},"width":1.0,"id":18446744073709551615,"name":"n"})",
     LR"({"kind":"tree","name":"n","width":1.0,"id":18446744073709551615,"offset":-9,"shade":"dark","point":[0.0,0.0,0.0],
          "strict":{"number":7},"lenient":{"number":7},"held":null,"all":[],"rings":3})",
     false},
    {"of duplicate members the first counts, wherever it stands",
     LR"({"id":5,"name":"first","id":6,"name":"second","rings":1,"rings":2})",
     LR"({"kind":"tree","name":"first","id":5,"offset":0,"shade":"dark","point":[0.0,0.0,0.0],
          "strict":{"number":7},"lenient":{"number":7},"held":null,"all":[],"rings":1})",
     false},
    {"an unknown name falls back, a doubled name is its first value",
     LR"({"shade":"light","point":[1.0,2,3.0,4.0]})",
     LR"({"kind":"tree","id":0,"offset":0,"shade":"light","point":[1.0,0.0,0.0],
          "strict":{"number":7},"lenient":{"number":7},"held":null,"all":[],"rings":0})"},
    {"children: objects only, or every element",
     LR"({"tags":["a",1,"b"],"strict":{"number":1},"lenient":{"number":2},"held":{"number":3},
          "leaves":[{"number":4},5,null,{}],"all":[{"number":6},7]})",
     LR"({"kind":"tree","id":0,"offset":0,"shade":"dark","point":[0.0,0.0,0.0],"tags":["a","b"],
          "strict":{"number":1},"lenient":{"number":2},"held":{"number":3},
          "leaves":[{"number":4},{"number":7}],"all":[{"number":6},{"number":7}],"rings":0})"},
};

TEST(Form, ReadsAndWritesTheSameFromDocumentsAndFromBytes) {
    for (const ReadRow& row : readRows) {
        SCOPED_TRACE(row.claim);
        const JsonDocument text = parse(row.text);
        const std::string expected = encoded(parse(row.expected));

        Grown fromDocument;
        fromDocument.readObject(text);
        EXPECT_EQ(encoded(written(fromDocument)), expected);
        EXPECT_EQ(test::binaryForm(fromDocument), expected);

        const std::string bytes = encoded(text);
        for (const std::size_t windowSize : {0, 1, 7, 64}) {
            Grown fromBytes;
            ASSERT_EQ(test::readDirectly(fromBytes, bytes, windowSize), row.isInOrder) << windowSize;
            if (row.isInOrder) {
                EXPECT_EQ(encoded(written(fromBytes)), expected);
            }
        }
    }
}

TEST(Form, LogsTheSameFromDocumentsAndFromBytes) {
    const JsonDocument text = parse(LR"({"lenient":5,"all":[true]})");
    const std::string bytes = encoded(text);
    const std::vector<std::string> expected = {"virtual void zeq::Grown::readObject(const JsonValue &)",
                                               "virtual void zeq::Tree::readObject(const JsonValue &)",
                                               "virtual void zeq::Leaf::readObject(const JsonValue &)",
                                               "Leaf::readObject: not an object",
                                               "virtual void zeq::Leaf::readObject(const JsonValue &)",
                                               "Leaf::readObject: not an object"};
    test::LogCapture log;
    const auto endings = [&log] {
        std::vector<std::string> texts;
        for (const auto& line : log.take())
            texts.push_back(line.text.substr(line.text.find("): ") + 1 ? line.text.find("): ") + 3 : 0));
        return texts;
    };
    Grown object;
    object.readObject(text);
    EXPECT_EQ(endings(), expected);
    EXPECT_TRUE(test::readDirectly(object, bytes));
    EXPECT_EQ(endings(), expected);
}

TEST(Form, OnlyTheOutermostClassReportsAWrongType) {
    test::LogCapture log(mv_cvx::Error);
    Grown().readObject(parse(L"[]"));
    const auto lines = log.take();
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].text, "Grown object should have a JSON object type.");
}

TEST(Form, AClassWithoutAFormTakesPartThroughItsFunctions) {
    Tree tree;
    tree.held = std::make_shared<Foreign>();
    tree.leaves = {nullptr, std::make_shared<Foreign>()};
    const JsonDocument document = written(tree);
    EXPECT_EQ(test::binaryForm(tree), encoded(document));
    EXPECT_EQ(encoded(document[L"leaves"]), encoded(parse(LR"([{"foreign":true}])"))) << "null is no child";

    Foreign foreign;
    const std::string bytes = encoded(parse(L"{}"));
    EXPECT_TRUE(test::readDirectly(foreign, bytes, 1));
    EXPECT_EQ(foreign.number, -1);
}

TEST(ByteSink, NumbersOfAnyTypeTakeTheirNarrowestKind) {
    const auto bytesOf = [](auto... numbers) {
        return test::bytesOf([&](json::ByteSink& sink) {
            sink.array([&](auto& array) { (array.element([=](auto&& to) { to.value(numbers); }), ...); });
        });
    };
    constexpr long long wide = INT_MAX;
    EXPECT_EQ(bytesOf(INT_MIN, INT_MAX, unsigned{INT_MAX}, UINT_MAX, LLONG_MIN, wide, wide + 1, LLONG_MAX,
                      0ULL + INT_MAX, 0ULL + UINT_MAX, 0ULL + LLONG_MAX, 1ULL + LLONG_MAX, ULLONG_MAX),
              encoded(parse(LR"([-2147483648,2147483647,2147483647,4294967295,-9223372036854775808,2147483647,
                  2147483648,9223372036854775807,2147483647,4294967295,9223372036854775807,
                  9223372036854775808,18446744073709551615])")));
}

TEST(ByteSink, WritesAcrossTheEndsOfItsBlocks) {
    std::vector<std::wstring> texts;
    for (const std::size_t units : {1, 32'760, 5, 32'768, 200'000, 0, 3})
        texts.emplace_back(units, static_cast<wchar_t>(L'a' + units % 26));
    const std::string bytes = test::bytesOf(
        [&texts](json::ByteSink& sink) { json::Codec<std::vector<std::wstring>>::give(sink, texts); });
    JsonDocument document;
    EXPECT_EQ(JsonBinaryIOImpl::decode(bytes.data(), bytes.size(), document, document.GetAllocator()),
              bytes.size());
    std::vector<std::wstring> back;
    json::Codec<std::vector<std::wstring>>::take(json::DomView(document), back);
    EXPECT_EQ(back, texts);
}

/// Whether the bytes begin with one whole value, every length of which is exact.
bool isExact(std::string_view bytes) {
    bool all = true;
    for (const std::size_t windowSize : {0, 1, 16, 1000}) {
        json::ByteSource source = test::sourceOf(bytes, windowSize);
        bool is = true;
        try {
            source.passValue();
        } catch (const json::NotInOnePass&) {
            is = false;
        }
        if (windowSize == 0) all = is;
        EXPECT_EQ(is, all) << "through a window of " << windowSize;
    }
    return all;
}

TEST(ByteSource, PassesOnlyWholeValuesWithExactLengths) {
    const std::string good =
        encoded(parse(LR"([{"a":[1,2.5,"x",null,true,{}],"b":{"c":[]}},[],"", 3000000000, -3000000000])"));
    EXPECT_TRUE(isExact(good));
    EXPECT_TRUE(isExact(good + "tail"));
    for (std::size_t size = 0; size < good.size(); ++size)
        EXPECT_FALSE(isExact(good.substr(0, size))) << size;

    const std::string text = encoded(parse(LR"("ab")"));
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_FALSE(isExact(text.substr(0, size))) << "a string counts units, not bytes: " << size;

    const auto object = [](const std::string& body) {
        const unsigned long long length = body.size();
        return std::string(1, '\3') + std::string(reinterpret_cast<const char*>(&length), 8) + body;
    };
    const std::string name = encoded(parse(LR"("a")"));
    EXPECT_TRUE(isExact(object(name + '\0')));
    EXPECT_FALSE(isExact(object(name))) << "a name without a value";
    EXPECT_FALSE(isExact(object(std::string(2, '\0')))) << "a name that is no string";
    EXPECT_FALSE(isExact(object(object(name))));
    std::string late = object(name + '\0');
    --late[1]; // the last child runs past its object
    EXPECT_FALSE(isExact(late));
}

} // namespace
} // namespace zeq
