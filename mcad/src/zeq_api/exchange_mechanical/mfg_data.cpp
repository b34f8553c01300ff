// The JSON form of manufacturing data.
#include "zeq_api/exchange_mechanical/mfg_data.h"

#include "zeq_api/exchange_common/child_list.h"
#include "zeq_api/exchange_mechanical/area.h"
#include "zeq_api/json/form.h"

namespace zeq {

struct ExcMfgData::JsonForm {
    using This = ExcMfgData;
    static constexpr auto ifItHas = [](const This& data, const auto& features) {
        return data.m_hasData && !features.empty();
    };
    static constexpr json::Form form{
        json::Head{"ExcMfgData", area::exchangeMechanical},
        json::field(L"has_data", &This::m_hasData),
        json::children(L"simple_holes", &This::m_simpleHoles, &This::addSimpleHole, json::matchingElements,
                       ifItHas),
        json::children(L"taper_holes", &This::m_taperHoles, &This::addTaperHole, json::matchingElements,
                       ifItHas),
        json::children(L"counter_bore_holes", &This::m_counterBoreHoles, &This::addCounterBoreHole,
                       json::matchingElements, ifItHas),
        json::children(L"counter_sink_holes", &This::m_counterSinkHoles, &This::addCounterSinkHole,
                       json::matchingElements, ifItHas),
        json::children(L"counter_drill_holes", &This::m_counterDrillHoles, &This::addCounterDrillHole,
                       json::matchingElements, ifItHas),
        json::children(L"internal_threads", &This::m_internalThreads, &This::addInternalThread,
                       json::matchingElements, ifItHas),
        json::children(L"external_threads", &This::m_externalThreads, &This::addExternalThread,
                       json::matchingElements, ifItHas),
        json::children(L"unclassified_features", &This::m_unclassifiedFeatures, &This::addUnclassifiedFeature,
                       json::matchingElements, ifItHas),
    };
};

ZEQ_JSON_OBJECT(ExcMfgData)

void ExcMfgData::addSimpleHole(ExcMfgFeatureSimpleHolePtr hole) {
    detail::appendChild(m_simpleHoles, std::move(hole),
                        "ExcMfgData: attempt to add null Simple Hole object.");
}

void ExcMfgData::addTaperHole(ExcMfgFeatureTaperHolePtr hole) {
    detail::appendChild(m_taperHoles, std::move(hole), "ExcMfgData: attempt to add null Taper Hole object.");
}

void ExcMfgData::addCounterBoreHole(ExcMfgFeatureCounterBoreHolePtr hole) {
    detail::appendChild(m_counterBoreHoles, std::move(hole),
                        "ExcMfgData: attempt to add null Counter Bore Hole object.");
}

void ExcMfgData::addCounterSinkHole(ExcMfgFeatureCounterSinkHolePtr hole) {
    detail::appendChild(m_counterSinkHoles, std::move(hole),
                        "ExcMfgData: attempt to add null Counter Sink Hole object.");
}

void ExcMfgData::addCounterDrillHole(ExcMfgFeatureCounterDrillHolePtr hole) {
    detail::appendChild(m_counterDrillHoles, std::move(hole),
                        "ExcMfgData: attempt to add null Counter Drill Hole object.");
}

void ExcMfgData::addInternalThread(ExcMfgFeatureInternalThreadPtr thread) {
    detail::appendChild(m_internalThreads, std::move(thread),
                        "ExcMfgData: attempt to add null Internal Thread object.");
}

void ExcMfgData::addExternalThread(ExcMfgFeatureExternalThreadPtr thread) {
    detail::appendChild(m_externalThreads, std::move(thread),
                        "ExcMfgData: attempt to add null External thread object."); // sic
}

void ExcMfgData::addUnclassifiedFeature(ExcMfgFeatureUnclassifiedPtr feature) {
    detail::appendChild(m_unclassifiedFeatures, std::move(feature),
                        "ExcMfgData: attempt to add null Unclassified Feature object.");
}

} // namespace zeq
