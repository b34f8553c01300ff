// The registry of kinds, and the identifiers that all exchange objects can make.
#include "zeq_api/exchange_object/exchange_object_registry.h"

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
    const struct {
        const wchar_t* name;
        bool isBinary;
    } kinds[] = {
        {L"exc_message", false},
        {L"exc_log", false},
        {L"exc_progress", false},
        {L"exc_stage_finished", false},
        {L"exc_product_structure", true},
        {L"legacy_component_instance_names", false},
        {L"legacy_component_material_map", false},
    };
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
    std::set<std::wstring> seen;
    for (int i = 0; i < 200; ++i) {
        const std::wstring uuid = IExchangeObject::generateUUID();
        EXPECT_TRUE(seen.insert(uuid).second);
        ASSERT_EQ(uuid.size(), 36u);
        for (std::size_t k = 0; k < uuid.size(); ++k) {
            const std::wstring allowed = k == 8 || k == 13 || k == 18 || k == 23 ? L"-"
                                         : k == 14                               ? L"4"
                                         : k == 19                               ? L"89ab"
                                                                                 : L"0123456789abcdef";
            EXPECT_NE(allowed.find(uuid[k]), std::wstring::npos) << testing::PrintToString(uuid);
        }
    }
}

} // namespace
} // namespace zeq
