// The map of prototypes.
#include "zeq_api/exchange_object/exchange_object_registry.h"

namespace zeq {

ExchangeObjectRegistry& ExchangeObjectRegistry::instance() {
    static ExchangeObjectRegistry registry;
    return registry;
}

void ExchangeObjectRegistry::add(IExchangeObject* prototype) {
    if (prototype) m_prototypes.emplace(prototype->objectName(), prototype);
}

void ExchangeObjectRegistry::remove(IExchangeObject* prototype) {
    if (prototype) m_prototypes.erase(prototype->objectName());
}

std::shared_ptr<IExchangeObject> ExchangeObjectRegistry::get(const std::wstring& name) const {
    const auto found = m_prototypes.find(name);
    return found == m_prototypes.end() ? nullptr : found->second->clone();
}

std::vector<std::wstring> ExchangeObjectRegistry::names() const {
    std::vector<std::wstring> result;
    for (const auto& entry : m_prototypes) result.push_back(entry.first);
    return result;
}

} // namespace zeq
