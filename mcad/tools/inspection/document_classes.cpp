// Looking through the table of all forms.
#include "inspection/document_classes.h"

#include <algorithm>
#include <utility>

namespace zeq::inspection {

namespace {

/// How well the document fits: members that it cannot do without first, then any.
std::pair<std::ptrdiff_t, std::ptrdiff_t> fit(const JsonValue& document, const json::ObjectShape& object) {
    const auto isThere = [&document](const json::MemberShape& member) {
        return document.HasMember(JsonValue(
            rapidjson::StringRef(member.key.data(), static_cast<rapidjson::SizeType>(member.key.size()))));
    };
    const auto count = [&](auto counts) { return std::ranges::count_if(object.members, counts); };
    return {count([&](const auto& member) { return member.isRequired && isThere(member); }), count(isThere)};
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
    if (!document.IsObject()) return nullptr;
    const json::FormInfo* best = nullptr;
    std::pair<std::ptrdiff_t, std::ptrdiff_t> bestFit;
    for (const json::FormInfo* form : json::allForms()) {
        if (!form->isWholeDocument) continue;
        const json::Shape shape = form->shape();
        const auto here = fit(document, std::get<json::ObjectShape>(shape.is));
        if (here == bestFit) {
            best = nullptr;
        } else if (here > bestFit) {
            best = form;
            bestFit = here;
        }
    }
    return best;
}

} // namespace zeq::inspection
