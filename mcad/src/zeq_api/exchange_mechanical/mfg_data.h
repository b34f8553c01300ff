// The manufacturing features of a block. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <vector>

#include "zeq_api/exchange_mechanical/mfg_feature.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// The features by their kinds. Adding null to any of the lists is refused with a warning.
class ExcMfgData : public IJsonObject {
public:
    /// Appends to the lists, whether the document says that it has data or not.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// Without it no feature is written. Adding one does not set it.
    bool hasData() const { return m_hasData; }
    void setHasData(bool has) { m_hasData = has; }

    const std::vector<ExcMfgFeatureSimpleHolePtr>& simpleHoles() const { return m_simpleHoles; }
    void addSimpleHole(ExcMfgFeatureSimpleHolePtr hole);

    const std::vector<ExcMfgFeatureTaperHolePtr>& taperHoles() const { return m_taperHoles; }
    void addTaperHole(ExcMfgFeatureTaperHolePtr hole);

    const std::vector<ExcMfgFeatureCounterBoreHolePtr>& counterBoreHoles() const {
        return m_counterBoreHoles;
    }
    void addCounterBoreHole(ExcMfgFeatureCounterBoreHolePtr hole);

    const std::vector<ExcMfgFeatureCounterSinkHolePtr>& counterSinkHoles() const {
        return m_counterSinkHoles;
    }
    void addCounterSinkHole(ExcMfgFeatureCounterSinkHolePtr hole);

    const std::vector<ExcMfgFeatureCounterDrillHolePtr>& counterDrillHoles() const {
        return m_counterDrillHoles;
    }
    void addCounterDrillHole(ExcMfgFeatureCounterDrillHolePtr hole);

    const std::vector<ExcMfgFeatureInternalThreadPtr>& internalThreads() const { return m_internalThreads; }
    void addInternalThread(ExcMfgFeatureInternalThreadPtr thread);

    const std::vector<ExcMfgFeatureExternalThreadPtr>& externalThreads() const { return m_externalThreads; }
    void addExternalThread(ExcMfgFeatureExternalThreadPtr thread);

    const std::vector<ExcMfgFeatureUnclassifiedPtr>& unclassifiedFeatures() const {
        return m_unclassifiedFeatures;
    }
    void addUnclassifiedFeature(ExcMfgFeatureUnclassifiedPtr feature);

private:
    struct JsonForm;

    bool m_hasData = false;
    std::vector<ExcMfgFeatureSimpleHolePtr> m_simpleHoles;
    std::vector<ExcMfgFeatureTaperHolePtr> m_taperHoles;
    std::vector<ExcMfgFeatureCounterBoreHolePtr> m_counterBoreHoles;
    std::vector<ExcMfgFeatureCounterSinkHolePtr> m_counterSinkHoles;
    std::vector<ExcMfgFeatureCounterDrillHolePtr> m_counterDrillHoles;
    std::vector<ExcMfgFeatureInternalThreadPtr> m_internalThreads;
    std::vector<ExcMfgFeatureExternalThreadPtr> m_externalThreads;
    std::vector<ExcMfgFeatureUnclassifiedPtr> m_unclassifiedFeatures;
};
using ExcMfgDataPtr = std::shared_ptr<ExcMfgData>;

} // namespace zeq
