// The JSON form of annotation views, and how annotations come into them.
#include "zeq_api/exchange_pmi/annotation_view.h"

#include <utility>

#include "mp/string.h"
#include "mv_cvx/logger.h"
#include "zeq_api/exchange_pmi/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

/// The index, complete.
ExcPMIAnnotationView::Index& ExcPMIAnnotationView::index() const {
    if (m_read.empty()) return m_annotationsById;
    m_annotationsById.reserve(m_annotationsById.size() + m_read.size());
    std::size_t begin = 0;
    for (ReadAnnotation& read : std::exchange(m_read, {}))
        m_annotationsById.try_emplace(
            m_idsOfRead.substr(std::exchange(begin, begin + read.idSize), read.idSize),
            std::move(read.annotation));
    m_idsOfRead = {};
    return m_annotationsById;
}

template <class T>
void ExcPMIAnnotationView::add(List<T>& list, const std::shared_ptr<T>& annotation, const char* nullWarning) {
    if (!annotation) {
        ZEQ_LOG(Warning) << nullWarning;
        return;
    }
    list.push_back(annotation);
    if (!index().try_emplace(annotation->id(), annotation).second) {
        ZEQ_LOG(Warning) << "Duplicated PMI annotation id: " << mp::toUtf8String(annotation->id());
    }
}

struct ExcPMIAnnotationView::JsonForm {
    using This = ExcPMIAnnotationView;

    static constexpr auto indexed = [](This& view, auto& list, const auto& read) {
        list.push_back(read);
        view.m_read.push_back({read, read->id().size()});
        view.m_idsOfRead += read->id();
    };

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
    const Index& known = index();
    const auto found = known.find(id);
    return found == known.end() ? nullptr : found->second;
}

} // namespace zeq
