// Scenes nest as deep as they like, so they are walked without recursion.
#include "inspection/annotation_relations.h"

#include <algorithm>
#include <utility>

#include "text/text.h"
#include "transport/utf8.h"
#include "zeq_api/json/enum_names.h"

namespace zeq::inspection {

namespace {

std::wstring textIn(const JsonValue& object, std::wstring_view key) { return wide(findString(object, key)); }

std::vector<std::wstring> textsIn(const JsonValue& object, std::wstring_view key) {
    std::vector<std::wstring> result;
    for (const JsonValue* const text : elements(object, key))
        if (text->IsString()) result.push_back(wide(text));
    return result;
}

/// The identifiers of the datums in a row of a frame.
std::vector<std::wstring> datumsIn(const JsonValue& row) {
    std::vector<std::wstring> ids;
    const JsonValue* const frame = json::findMember(row, L"ref_frame");
    if (!frame) return ids;
    for (const JsonValue* const compartment : elements(*frame, L"datum_refs"))
        for (const JsonValue* const datum : elements(*compartment, L"modified_datums"))
            ids.push_back(textIn(*datum, L"datum_id"));
    return ids;
}

} // namespace

bool AnnotationRelations::Annotations::has(EKind kind, const std::wstring& id) const {
    if (kind == EKind::annotation) return has(EKind::semantic, id) || has(EKind::drawn, id);
    const auto known = ids.find(kind);
    return known != ids.end() && known->second.contains(id);
}

void AnnotationRelations::Annotations::refer(EKind kind, Place place, std::vector<std::wstring> named) {
    if (!named.empty()) references.push_back({kind, std::move(place), std::move(named)});
}

void AnnotationRelations::addMechanical(Owner owner, const JsonValue& data, const Place& place) {
    std::size_t setIndex = 0;
    for (const JsonValue* const set : elements(data, L"pmi_data")) {
        Annotations& annotations = m_owners[owner];
        const Place setPlace = place.at("pmi_data", setIndex++);
        std::size_t index = 0;
        for (const JsonValue* const view : elements(*set, L"annotation_views"))
            addView(annotations, *view, setPlace.at("annotation_views", index++));
        index = 0;
        for (const JsonValue* const capture : elements(*set, L"captures"))
            annotations.refer(EKind::annotation, setPlace.at("captures", index++),
                              textsIn(*capture, L"annotation_ids"));
    }
}

void AnnotationRelations::addView(Annotations& annotations, const JsonValue& view, const Place& place) {
    const auto visit = [&](const char* key, EKind kind, const auto& look) {
        std::size_t index = 0;
        for (const JsonValue* const annotation : elements(view, transport::fromUtf8(key))) {
            const std::wstring id = textIn(*annotation, L"id");
            for (const EKind each : {EKind::semantic, kind}) annotations.ids[each].insert(id);
            look(*annotation, place.at(key, index++));
        }
    };
    const auto nothing = [](const JsonValue&, const Place&) {};
    for (const char* const key : {"notes", "dimensions", "roughness"}) visit(key, EKind::semantic, nothing);
    visit("datum_targets", EKind::target, nothing);
    visit("datum", EKind::datum, [&](const JsonValue& datum, const Place& its) {
        annotations.refer(EKind::target, its, textsIn(datum, L"target_ids"));
    });
    visit("GDTs", EKind::semantic, [&](const JsonValue& tolerance, const Place& its) {
        std::size_t index = 0;
        for (const JsonValue* const row : elements(tolerance, L"pmi_gdt_rows"))
            annotations.refer(EKind::datum, its.at("pmi_gdt_rows", index++), datumsIn(*row));
    });
}

void AnnotationRelations::addDisplay(Owner owner, const JsonValue& data, const Place& place) {
    const JsonValue* const scene = json::findMember(data, L"visualization_data");
    if (!scene) return;
    Annotations& annotations = m_owners[owner];
    const Place scenePlace{place.buffer, place.pointer + "/visualization_data"};
    std::vector<std::wstring> named;
    std::vector<const JsonValue*> pending = elements(*scene, L"scene_root_nodes");
    while (!pending.empty()) {
        const JsonValue& node = *pending.back();
        pending.pop_back();
        if (const JsonValue* const drawing = json::findMember(node, L"pmi")) {
            annotations.ids[EKind::drawn].insert(textIn(*drawing, L"id"));
            if (std::wstring id = textIn(*drawing, L"mechanical_id"); !id.empty())
                named.push_back(std::move(id));
        }
        const auto children = elements(node, L"child_nodes");
        pending.insert(pending.end(), children.begin(), children.end());
    }
    annotations.refer(EKind::semantic, scenePlace, std::move(named));
    for (const char* const list : {"views", "captures"}) {
        std::size_t index = 0;
        for (const JsonValue* const view : elements(*scene, transport::fromUtf8(list)))
            annotations.refer(EKind::annotation, scenePlace.at(list, index++),
                              textsIn(*view, L"annotation_ids"));
    }
}

void AnnotationRelations::report(const Report& report) const {
    constexpr std::size_t mostShown = 5;
    static const std::map<EKind, std::pair<const char*, const char*>> names{
        {EKind::annotation, {"annotation", "annotations"}},
        {EKind::semantic, {"semantic annotation", "semantic annotations"}},
        {EKind::datum, {"datum", "datums"}},
        {EKind::target, {"datum target", "datum targets"}},
    };
    for (const auto& [owner, annotations] : m_owners) {
        const auto isThere = [this, isAssembly = !owner, &own = annotations](EKind kind,
                                                                             const std::wstring& id) {
            // What is saved of an assembly may show annotations of its parts.
            if (!isAssembly) return own.has(kind, id);
            return std::ranges::any_of(m_owners, [&](const auto& each) { return each.second.has(kind, id); });
        };
        // Drawings may come alone.
        const bool hasSemantic = annotations.ids.contains(EKind::semantic);
        for (const Reference& reference : annotations.references) {
            if (reference.kind == EKind::semantic && !hasSemantic) continue;
            std::string ids;
            std::size_t count = 0;
            for (const std::wstring& id : reference.ids)
                if (!isThere(reference.kind, id) && ++count <= mostShown)
                    ids += (ids.empty() ? "'" : ", '") + text::printable(id) + "'";
            if (count == 0) continue;
            const auto& [one, several] = names.at(reference.kind);
            report({Severity::warning,
                    reference.place.buffer,
                    reference.place.pointer,
                    "it names " + text::counted(count, one, several) + " that " +
                        (count == 1 ? "is" : "are") + " not there: " + ids +
                        (count > mostShown ? ", ..." : ""),
                    {},
                    {}});
        }
    }
}

} // namespace zeq::inspection
