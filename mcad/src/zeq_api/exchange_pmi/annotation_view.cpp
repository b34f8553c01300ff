// The JSON form of annotation views, and how annotations come into them.
#include "zeq_api/exchange_pmi/annotation_view.h"

#include "mp/string.h"
#include "mv_cvx/logger.h"
#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

/// Appends an annotation, and tells whether it can be found: whether its identifier was free.
template <class T>
bool ExcPMIAnnotationView::append(List<T>& list, const std::shared_ptr<T>& annotation) {
    list.push_back(annotation);
    return m_annotationsById.try_emplace(annotation->id(), annotation).second;
}

template <class T>
void ExcPMIAnnotationView::add(List<T>& list, const std::shared_ptr<T>& annotation, const char* nullWarning) {
    if (!annotation) {
        ZEQ_LOG(Warning) << nullWarning;
    } else if (!append(list, annotation)) {
        ZEQ_LOG(Warning) << "Duplicated PMI annotation id: " << mp::toUtf8String(annotation->id());
    }
}

struct ExcPMIAnnotationView::JsonForm {
    using This = ExcPMIAnnotationView;

    static constexpr auto indexed = [](This& view, auto& list, const auto& read) { view.append(list, read); };

    static constexpr json::Form form{
        json::Head{"ExcPMIAnnotationView", area::exchangePmi},
        json::base<ExcPMIObject>,
        json::field(L"origin", &This::m_origin),
        json::field(L"u", &This::m_vectorU),
        json::field(L"v", &This::m_vectorV),
        json::children(L"notes", &This::m_notes, indexed, json::anyElements),
        json::children(L"datum", &This::m_datums, indexed, json::anyElements),
        json::children(L"datum_targets", &This::m_datumTargets, indexed, json::anyElements),
        json::children(L"GDTs", &This::m_gdts, indexed, json::anyElements),
        json::children(L"dimensions", &This::m_dimensions, indexed, json::anyElements),
        json::children(L"roughness", &This::m_roughness, indexed, json::anyElements),
    };
};

ZEQ_JSON_OBJECT(ExcPMIAnnotationView)

void ExcPMIAnnotationView::addNote(const ExcPMINotePtr& note) {
    add(m_notes, note, "ExcPMIAnnotationView: attempt to add null PMI Note object.");
}

void ExcPMIAnnotationView::addDatum(const ExcPMIDatumPtr& datum) {
    add(m_datums, datum, "ExcPMIAnnotationView: attempt to add null PMI Datum object.");
}

void ExcPMIAnnotationView::addDatumTarget(const ExcPMIDatumTargetPtr& target) {
    add(m_datumTargets, target, "ExcPMIAnnotationView: attempt to add null PMI Datum Target object.");
}

void ExcPMIAnnotationView::addGdt(const ExcPMIGDTPtr& gdt) {
    add(m_gdts, gdt, "ExcPMIAnnotationView: attempt ot add null PMI GDT object."); // sic
}

void ExcPMIAnnotationView::addDimension(const ExcPMIDimensionPtr& dimension) {
    add(m_dimensions, dimension, "ExcPMIAnnotationView: attempt to add null PMI Dimension object.");
}

void ExcPMIAnnotationView::addRoughness(const ExcPMIRoughnessPtr& roughness) {
    add(m_roughness, roughness, "ExcPMIAnnotationView: attempt to add null PMI Roughness object.");
}

ExcPMIAnnotationPtr ExcPMIAnnotationView::getAnnotationById(const std::wstring& id) const {
    const auto found = m_annotationsById.find(id);
    return found == m_annotationsById.end() ? nullptr : found->second;
}

} // namespace zeq
