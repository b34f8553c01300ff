// The registry of kinds, and the identifiers that all exchange objects can make.
#include "zeq_api/exchange_object/exchange_object_registry.h"

#include <map>
#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace zeq {
namespace {

/// A kind of this test only; copies tell their prototypes apart.
template <int number>
class Kind : public IExchangeObject {
public:
    void readObject(const JsonValue&) override {}
    void writeObject(JsonValue&, JsonAllocator&) const override {}
    const std::wstring& objectName() const override {
        static const std::wstring name = L"a kind of this test";
        return name;
    }
    std::shared_ptr<IExchangeObject> clone() const override { return std::make_shared<Kind>(); }
};

const std::wstring kind = Kind<0>().objectName();
ExchangeObjectRegistry& registry = ExchangeObjectRegistry::instance();

TEST(ExchangeObjectRegistry, MakesNewObjectsOfEveryKindOfTheLibrary) {
    const std::map<std::wstring, bool> kinds = {{L"exc_message", false},
                                                {L"exc_log", false},
                                                {L"exc_progress", false},
                                                {L"exc_stage_finished", false},
                                                {L"exc_product_structure", true},
                                                {L"legacy_component_instance_names", false},
                                                {L"legacy_component_material_map", false}};
    for (const auto& [name, isBinary] : kinds) {
        const auto object = registry.get(name);
        ASSERT_TRUE(object) << testing::PrintToString(name);
        EXPECT_EQ(object->objectName(), name);
        EXPECT_EQ(object->binary(), isBinary);
        EXPECT_EQ(object->compress(), isBinary);
        EXPECT_FALSE(object->isLoaded());
        EXPECT_EQ(object->source(), L"");
        EXPECT_NE(registry.get(name), object);
    }
    for (const wchar_t* unknown : {L"", L"exc_", L"EXC_MESSAGE"}) EXPECT_EQ(registry.get(unknown), nullptr);
}

TEST(ExchangeObjectRegistry, APrototypeIsKnownWhileItLives) {
    EXPECT_EQ(registry.get(kind), nullptr);
    {
        const StaticExchangeObject<Kind<1>> prototype;
        EXPECT_TRUE(std::dynamic_pointer_cast<Kind<1>>(registry.get(kind)));
    }
    EXPECT_EQ(registry.get(kind), nullptr);
}

TEST(ExchangeObjectRegistry, TheFirstPrototypeOfAKindStays) {
    Kind<1> first;
    Kind<2> second;
    registry.add(nullptr);
    registry.add(&first);
    registry.add(&second);
    EXPECT_TRUE(std::dynamic_pointer_cast<Kind<1>>(registry.get(kind)));
    registry.remove(nullptr);
    EXPECT_TRUE(registry.get(kind));
    registry.remove(&second); // by its kind
    EXPECT_EQ(registry.get(kind), nullptr);
    registry.remove(&first);
}

TEST(ExchangeObject, IdentifiersAreRandomUuids) {
    const std::wregex pattern(L"[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::wstring> seen;
    for (int i = 0; i < 200; ++i) {
        const std::wstring uuid = IExchangeObject::generateUUID();
        EXPECT_TRUE(std::regex_match(uuid, pattern)) << testing::PrintToString(uuid);
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

} // namespace
} // namespace zeq
