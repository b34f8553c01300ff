// The kinds of exchange objects, by name. It is filled while the library is loaded; any thread may read it.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "zeq_api/exchange_object/exchange_object.h"

namespace zeq {

/// Knows one prototype of each kind and makes new objects from it. Filled while the library is loaded, only
/// read afterwards.
class ExchangeObjectRegistry {
public:
    static ExchangeObjectRegistry& instance();

    /// Enters a prototype, which has to outlive its entry. Null is ignored, and so is a second prototype of a
    /// kind.
    void add(IExchangeObject* prototype);
    /// Removes the entry of the prototype's kind, even if it is another prototype's. Null is ignored.
    void remove(IExchangeObject* prototype);
    /// A new object of that kind; null for an unknown name.
    std::shared_ptr<IExchangeObject> get(const std::wstring& name) const;
    /// The names of all kinds, in ascending order.
    std::vector<std::wstring> names() const;

private:
    std::map<std::wstring, IExchangeObject*> m_prototypes;
};

/// A prototype that registers itself while it lives.
template <class T>
class StaticExchangeObject : public T {
public:
    StaticExchangeObject() { ExchangeObjectRegistry::instance().add(this); }
    StaticExchangeObject(const StaticExchangeObject&) = delete;
    StaticExchangeObject& operator=(const StaticExchangeObject&) = delete;
    ~StaticExchangeObject() override { ExchangeObjectRegistry::instance().remove(this); }
};

} // namespace zeq
