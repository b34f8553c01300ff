// Looking through the table of all forms.
#include "inspection/document_classes.h"

#include <algorithm>
#include <utility>

namespace zeq::inspection {

namespace {

/// How well a document fits a class: members that it cannot do without, then any.
using Fit = std::pair<std::ptrdiff_t, std::ptrdiff_t>;

Fit fit(const JsonValue& document, const json::FormInfo& form) {
    const json::Shape shape = form.shape();
    const auto* object = std::get_if<json::ObjectShape>(&shape.is);
    if (!object) return {};
    const auto isThere = [&document](const json::MemberShape& member) {
        return json::findMember(document, member.key) != nullptr;
    };
    const auto count = [&](auto counts) { return std::ranges::count_if(object->members, counts); };
    const auto known = count(isThere);
    if (known == 0 || 2 * known < static_cast<std::ptrdiff_t>(document.MemberCount())) return {};
    return {count([&](const auto& member) { return member.isRequired && isThere(member); }), known};
}

template <class Counts>
const json::FormInfo* best(const JsonValue& document, Counts counts) {
    if (!document.IsObject()) return nullptr;
    const json::FormInfo* found = nullptr;
    Fit foundFit;
    for (const json::FormInfo* form : json::allForms()) {
        if (!counts(*form)) continue;
        const Fit here = fit(document, *form);
        if (here < foundFit) continue;
        found = here == foundFit ? nullptr : form;
        foundFit = here;
    }
    return found;
}

} // namespace

const json::FormInfo* findClass(const std::string& name) {
    const json::FormInfo* found = nullptr;
    for (const json::FormInfo* form : json::allForms()) {
        const std::string className = form->className();
        if (className == name) return form;
        if (!className.ends_with("::" + name)) continue;
        if (found) return nullptr;
        found = form;
    }
    return found;
}

std::vector<std::string> classNames() {
    std::vector<std::string> names;
    for (const json::FormInfo* form : json::allForms()) names.push_back(form->className());
    return names;
}

const json::FormInfo* recognise(const JsonValue& document) {
    return best(document, [](const json::FormInfo& form) { return form.isWholeDocument; });
}

const json::FormInfo* closestClass(const JsonValue& document) {
    return best(document, [](const json::FormInfo&) { return true; });
}

} // namespace zeq::inspection
