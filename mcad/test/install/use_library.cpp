// Uses the library from outside its source tree: sends itself a progress report and geometry, catches what
// the library throws, and prints which kinds of exchange objects it can make. It names few of their classes,
// so that a linker which drops what nobody names is found out.
#include <iostream>
#include <sstream>

#include <zeq_api/zeq_api.h>

namespace {

template <class Object>
std::shared_ptr<Object> sendAndReceive(const std::shared_ptr<Object>& sent) {
    zeq::ExchangeObjectWrapper wrapper;
    wrapper.set(sent);
    std::wstringstream stream;
    wrapper.writeObject(stream);

    zeq::ExchangeObjectWrapper received;
    received.readObject(stream);
    return std::dynamic_pointer_cast<Object>(received.get());
}

bool progressTravels() {
    auto sent = std::make_shared<zeq::ExcProgress>();
    sent->setProgress(42);
    sent->setStage(L"reading");
    const auto progress = sendAndReceive(sent);
    return progress && *progress == *sent;
}

bool geometryTravels() {
    auto* const face = ACIS_NEW FACE(ACIS_NEW PLANE);
    ACIS_NEW ATTRIB_CONVEXOR_ID(face, 42);
    const zeq::OwnedEntities entities(face);
    auto sent = std::make_shared<zeq::ExcBlockGeometry>();
    const auto received = sent->setGeometry(entities.list, true) ? sendAndReceive(sent) : nullptr;
    if (!received) return false;
    received->load();
    zeq::OwnedEntities copies;
    if (!received->getGeometry(copies.list) || copies.list.count() != 1 || !is_FACE(copies.list[0]))
        return false;
    const auto* const copy = static_cast<const FACE*>(copies.list[0]);
    return is_PLANE(copy->geometry()) && is_ATTRIB_CONVEXOR_ID(copy->attrib()) &&
           static_cast<const ATTRIB_CONVEXOR_ID*>(copy->attrib())->id() == 42;
}

bool exceptionsArrive() {
    try {
        mp::SharedBuffer<char>().setSize(1); // it has no name yet
    } catch (const mp::SharedMemoryException&) {
        return true;
    }
    return false;
}

} // namespace

/// 0 if everything works; otherwise the error stream tells what does not.
extern "C" int useLibrary() {
    if (!progressTravels()) {
        std::cerr << "the progress report did not arrive\n";
        return 1;
    }
    if (!geometryTravels()) {
        std::cerr << "the geometry did not arrive\n";
        return 1;
    }
    if (!exceptionsArrive()) {
        std::cerr << "the exception did not arrive\n";
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
