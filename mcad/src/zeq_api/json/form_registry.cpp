// The table of all forms, and the lines that they log.
#include "zeq_api/json/form_registry.h"

#include <algorithm>
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
    const std::unique_ptr<char, Free> name(abi::__cxa_demangle(type->name(), nullptr, nullptr, nullptr));
    constexpr std::string_view scope = "zeq::";
    const std::string_view whole = name ? name.get() : type->name();
    return std::string(whole.starts_with(scope) ? whole.substr(scope.size()) : whole);
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
            const std::string_view name = head.name; // without its namespace
            ZEQ_LOG(Error) << name.substr(name.rfind(':') + 1) << " object should have a JSON object type.";
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
