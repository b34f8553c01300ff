// Wrong forms, one for each value of CASE; 0 is right and shows that the file itself compiles.
#include "zeq_api/json/form.h"
#include "zeq_api/json/tree_row.h"

#include "zeq_api/exchange_common/area.h"

namespace zeq {

struct Base : IJsonObject {
    int number = 0;
    void readObject(const JsonValue&) override {}
    void writeObject(JsonValue&, JsonAllocator&) const override {}
};

struct Other {
    int number = 0;
};

enum class ENameless {
    one
};

struct Thing : Base {
    int count = 0;
    ENameless nameless = ENameless::one;
    std::vector<std::shared_ptr<Thing>> things;
    void add(const std::shared_ptr<Thing>& thing) { things.push_back(thing); }
    void readObject(const JsonValue& object) override;
    struct JsonForm;
};

struct Thing::JsonForm {
    using This = Thing;
    static constexpr json::Form form {
        json::Head{"Thing", area::exchangeCommon},
#if CASE == 0
            json::base<Base>, json::field(L"count", &This::count)
#elif CASE == 1
            json::field(L"count", &This::count), json::field(L"count", &This::count)
#elif CASE == 2
            json::field(L"count", &This::count), json::base<Base>
#elif CASE == 3
            json::field(L"count", &Other::number)
#elif CASE == 4
            json::base<Other>
#elif CASE == 5
            json::tree(L"things", &This::things, &This::add), json::field(L"count", &This::count)
#elif CASE == 6
            json::field(L"nameless", &This::nameless)
#endif
    };
};

void Thing::readObject(const JsonValue& object) { json::read<JsonForm>(*this, object); }

} // namespace zeq
