// The JSON forms of manufacturing features.
#include "zeq_api/exchange_mechanical/mfg_feature.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/exchange_mechanical/pattern_varieties.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcMfgObject::JsonForm {
    using This = ExcMfgObject;
    static constexpr json::Form form{
        json::Head{"ExcMfgObject", area::exchangeMechanical},
        json::field(L"id", &This::m_id),
        json::children(L"linked_elements", &This::m_linkedElements, &This::addLinkedElement),
    };
};

ZEQ_JSON_OBJECT(ExcMfgObject)

void ExcMfgObject::addLinkedElement(ExcEntityPtr element) {
    detail::appendChild(m_linkedElements, std::move(element),
                        "ExcMfgObject: attempt to add null Linked Element object.");
}

struct ExcMfgFeature::JsonForm {
    using This = ExcMfgFeature;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeature", area::exchangeMechanical},
        json::base<ExcMfgObject>,
        json::field(L"name", &This::m_name),
        json::polymorphic(L"pattern", &This::m_pattern, &detail::patternVarieties),
    };
};

ZEQ_JSON_OBJECT(ExcMfgFeature)

struct ExcMfgFeatureHole::JsonForm {
    using This = ExcMfgFeatureHole;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeatureHole", area::exchangeMechanical},
        json::base<ExcMfgFeature>,
        json::children(L"limiting", &This::m_limitingGeometry, &This::addLimitingGeometry),
        json::children(L"defining", &This::m_definingGeometry, &This::addDefiningGeometry),
    };
};

ZEQ_JSON_OBJECT(ExcMfgFeatureHole)

void ExcMfgFeatureHole::addLimitingGeometry(ExcEntityPtr entity) {
    detail::appendChild(m_limitingGeometry, std::move(entity),
                        "ExcMfgFeatureHole: attempt to add null Limiting Geometry Entity object.");
}

void ExcMfgFeatureHole::addDefiningGeometry(ExcEntityPtr entity) {
    detail::appendChild(m_definingGeometry, std::move(entity),
                        "ExcMfgFeatureHole: attempt to add null Defining Geometry Entity object.");
}

template <class Hole>
struct ExcMfgFeatureHoleType<Hole>::JsonForm {
    using This = ExcMfgFeatureHoleType;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeatureHoleType", area::exchangeMechanical},
        json::base<ExcMfgFeatureHole>,
        json::replaced(L"hole_data", &This::m_holeData),
    };
};

template <class Hole>
void ExcMfgFeatureHoleType<Hole>::readObject(const JsonValue& object) {
    json::read<JsonForm>(*this, object);
}

template <class Hole>
void ExcMfgFeatureHoleType<Hole>::writeObject(JsonValue& out, JsonAllocator& alloc) const {
    json::write<JsonForm>(*this, out, alloc);
}

template class ExcMfgFeatureHoleType<ExcMfgSimpleHole>;
template class ExcMfgFeatureHoleType<ExcMfgTaperHole>;
template class ExcMfgFeatureHoleType<ExcMfgCounterBoreHole>;
template class ExcMfgFeatureHoleType<ExcMfgCounterSinkHole>;
template class ExcMfgFeatureHoleType<ExcMfgCounterDrillHole>;

struct ExcMfgFeatureThread::JsonForm {
    using This = ExcMfgFeatureThread;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeatureThread", area::exchangeMechanical},
        json::base<ExcMfgFeature>,
        json::field(L"thread_data", &This::m_threadData, json::whenSet),
        json::children(L"side_faces", &This::m_sideFaces, &This::addSideFace),
        json::children(L"top_faces", &This::m_topFaces, &This::addTopFace),
        json::children(L"bottom_faces", &This::m_bottomFaces, &This::addBottomFace),
    };
};

ZEQ_JSON_OBJECT(ExcMfgFeatureThread)

void ExcMfgFeatureThread::addSideFace(ExcEntityPtr face) {
    detail::appendChild(m_sideFaces, std::move(face),
                        "ExcMfgFeatureThread: attempt to add null Side Face Entity object.");
}

void ExcMfgFeatureThread::addTopFace(ExcEntityPtr face) {
    detail::appendChild(m_topFaces, std::move(face),
                        "ExcMfgFeatureThread: attempt to add null Top Face Entity object.");
}

void ExcMfgFeatureThread::addBottomFace(ExcEntityPtr face) {
    detail::appendChild(m_bottomFaces, std::move(face),
                        "ExcMfgFeatureThread: attempt to add null Bottom Face Entity object.");
}

namespace {

constexpr json::Mismatch logsAsThread =
    json::logsError("ExcMfgFeatureThread object should have a JSON object type.");

} // namespace

struct ExcMfgFeatureInternalThread::JsonForm {
    using This = ExcMfgFeatureInternalThread;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeatureInternalThread", area::exchangeMechanical, logsAsThread},
        json::base<ExcMfgFeatureThread>,
    };
};

ZEQ_JSON_OBJECT(ExcMfgFeatureInternalThread)

struct ExcMfgFeatureExternalThread::JsonForm {
    using This = ExcMfgFeatureExternalThread;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeatureExternalThread", area::exchangeMechanical, logsAsThread},
        json::base<ExcMfgFeatureThread>,
    };
};

ZEQ_JSON_OBJECT(ExcMfgFeatureExternalThread)

struct ExcMfgFeatureUnclassified::JsonForm {
    using This = ExcMfgFeatureUnclassified;
    static constexpr json::Form form{
        json::Head{"ExcMfgFeatureUnclassified", area::exchangeMechanical,
                   json::logsError("ExcMfgFeature object should have a JSON object type.")},
        json::base<ExcMfgFeature>,
    };
};

ZEQ_JSON_OBJECT(ExcMfgFeatureUnclassified)

} // namespace zeq
