// A program outside the source tree: sends itself a progress report and prints which kinds of exchange
// objects the library can make. It names few of their classes, so that a linker which drops what nobody names
// is found out.
#include <iostream>
#include <sstream>

#include <zeq_api/zeq_api.h>

namespace {

bool progressTravels() {
    auto sent = std::make_shared<zeq::ExcProgress>();
    sent->setProgress(42);
    sent->setStage(L"reading");
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(sent);
    std::wstringstream stream;
    wrapper.writeObject(stream);

    zeq::ExchangeObjectWrapper received;
    received.readObject(stream);
    const auto progress = std::dynamic_pointer_cast<zeq::ExcProgress>(received.get());
    return progress && *progress == *sent;
}

} // namespace

int main() {
    if (!progressTravels()) {
        std::cerr << "the progress report did not arrive\n";
        return 1;
    }
    bool complete = true;
    for (const wchar_t* kind :
         {L"exc_stage_finished", L"exc_message", L"exc_log", L"exc_progress", L"exc_product_structure",
          L"legacy_component_instance_names", L"legacy_component_material_map"}) {
        const bool known = zeq::ExchangeObjectRegistry::instance().get(kind) != nullptr;
        std::wcout << kind << (known ? L"" : L": missing") << L'\n';
        complete = complete && known;
    }
    return complete ? 0 : 1;
}
