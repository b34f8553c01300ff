// Reads any bytes into an object of any class with a form: the first byte chooses the class.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "forms/both_ways.h"
#include "zeq_api/json/form_registry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::vector<const zeq::json::FormInfo*> forms = [] {
        auto all = zeq::json::allForms();
        std::erase_if(all, [](const auto* form) { return !form->make || form->isWholeDocument; });
        return all;
    }();
    if (size == 0) return 0;
    const zeq::json::FormInfo& form = *forms[data[0] % forms.size()];
    using zeq::test::Agreement;
    if (zeq::test::agreementOn(form, {reinterpret_cast<const char*>(data + 1), size - 1}) == Agreement::none)
        std::abort();
    return 0;
}
