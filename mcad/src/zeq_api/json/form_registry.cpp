// The table of all forms, and the lines that they log.
#include "zeq_api/json/form_registry.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeindex>
#include <unordered_map>

#include <cxxabi.h>

#include "mv_cvx/logger.h"

namespace zeq::json {

namespace {

std::unordered_map<std::type_index, FormInfo>& forms() {
    static std::unordered_map<std::type_index, FormInfo> table;
    return table;
}

} // namespace

bool registerForm(const FormInfo& form) { return forms().emplace(*form.type, form).second; }

const FormInfo* findForm(const std::type_info& type) {
    const auto found = forms().find(type);
    return found == forms().end() ? nullptr : &found->second;
}

std::vector<const FormInfo*> allForms() {
    std::vector<const FormInfo*> all;
    for (const auto& entry : forms()) all.push_back(&entry.second);
    std::ranges::sort(all, {}, &FormInfo::className);
    return all;
}

std::string FormInfo::className() const {
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Free> demangled(abi::__cxa_demangle(type->name(), nullptr, nullptr, nullptr));
    constexpr std::string_view scope = "zeq::";
    std::string name = demangled ? demangled.get() : type->name();
    for (auto at = name.find(scope); at != name.npos; at = name.find(scope)) name.erase(at, scope.size());
    return name;
}

void traceRead(const Head& head) {
    if (!head.area) return;
    ZEQ_LOG(Trace) << head.area << '(' << head.line << "): virtual void zeq::" << head.name
                   << "::readObject(const JsonValue &)";
}

void traceWrite(const Head& head) {
    if (!head.area) return;
    ZEQ_LOG(Trace) << head.area << '(' << head.line << "): virtual void zeq::" << head.name
                   << "::writeObject(JsonValue &, JsonAllocator &) const";
}

void trace(const char* area, const char* signature, unsigned line) {
    ZEQ_LOG(Trace) << area << '(' << line << "): " << signature;
}

void reportMismatch(const Head& head) {
    const Mismatch& mismatch = head.mismatch;
    switch (mismatch.action) {
    case Mismatch::Action::error:
        if (mismatch.message) {
            ZEQ_LOG(Error) << mismatch.message;
        } else {
            std::string_view name = head.name; // without its namespace, whose name is in lower case
            if (std::islower(static_cast<unsigned char>(name.front())))
                name.remove_prefix(name.find(':') + 2);
            ZEQ_LOG(Error) << name << " object should have a JSON object type.";
        }
        break;
    case Mismatch::Action::warning:
        ZEQ_LOG(Warning) << mismatch.message;
        break;
    case Mismatch::Action::silent:
        break;
    case Mismatch::Action::exception:
        throw std::invalid_argument(mismatch.message);
    }
}

} // namespace zeq::json
