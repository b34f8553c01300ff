// Manufacturing features: what the source system recognised as made in one operation, tied to the geometry of
// its block. Objects are used by one thread at a time.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zeq_api/exchange_common/entity.h"
#include "zeq_api/exchange_mechanical/mfg_hole.h"
#include "zeq_api/exchange_mechanical/mfg_pattern.h"
#include "zeq_api/json/json_object.h"

namespace zeq {

/// Something made, with the entities that it is tied to.
class ExcMfgObject : public IJsonObject {
public:
    /// Appends to the linked elements.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// An ExcEntity of the type `mfg` names it by this id.
    const std::wstring& id() const { return m_id; }
    void setId(std::wstring id) { m_id = std::move(id); }

    const std::vector<ExcEntityPtr>& linkedElements() const { return m_linkedElements; }
    /// Null is refused with a warning.
    void addLinkedElement(ExcEntityPtr element);

private:
    struct JsonForm;

    std::wstring m_id;
    std::vector<ExcEntityPtr> m_linkedElements;
};

/// A feature, which may be repeated.
class ExcMfgFeature : public ExcMfgObject {
public:
    /// Appends to the linked elements. A pattern that the document has replaces the one that is held.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const std::wstring& name() const { return m_name; }
    void setName(std::wstring name) { m_name = std::move(name); }

    /// Null for a feature that is not repeated.
    const ExcMfgPatternPtr& pattern() const { return m_pattern; }
    void setPattern(ExcMfgPatternPtr pattern) { m_pattern = std::move(pattern); }

private:
    struct JsonForm;

    std::wstring m_name;
    ExcMfgPatternPtr m_pattern;
};

/// A feature that is a hole. Adding null is refused with a warning.
class ExcMfgFeatureHole : public ExcMfgFeature {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// The entities at which the hole ends.
    const std::vector<ExcEntityPtr>& limitingGeometry() const { return m_limitingGeometry; }
    void addLimitingGeometry(ExcEntityPtr entity);

    /// The entities that make up the hole.
    const std::vector<ExcEntityPtr>& definingGeometry() const { return m_definingGeometry; }
    void addDefiningGeometry(ExcEntityPtr entity);

private:
    struct JsonForm;

    std::vector<ExcEntityPtr> m_limitingGeometry;
    std::vector<ExcEntityPtr> m_definingGeometry;
};

/// A hole of a kind, which one of the five classes derived from ExcMfgHole describes.
template <class Hole>
class ExcMfgFeatureHoleType : public ExcMfgFeatureHole {
public:
    /// Appends to the lists. Hole data that the document has replace those that are held.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const Hole& holeData() const { return m_holeData; }
    Hole& holeData() { return m_holeData; }
    void setHoleData(const Hole& hole) { m_holeData = hole; }
    void setHoleData(Hole&& hole) { m_holeData = std::move(hole); }

private:
    struct JsonForm;

    Hole m_holeData;
};
extern template class ExcMfgFeatureHoleType<ExcMfgSimpleHole>;
extern template class ExcMfgFeatureHoleType<ExcMfgTaperHole>;
extern template class ExcMfgFeatureHoleType<ExcMfgCounterBoreHole>;
extern template class ExcMfgFeatureHoleType<ExcMfgCounterSinkHole>;
extern template class ExcMfgFeatureHoleType<ExcMfgCounterDrillHole>;

using ExcMfgFeatureSimpleHole = ExcMfgFeatureHoleType<ExcMfgSimpleHole>;
using ExcMfgFeatureTaperHole = ExcMfgFeatureHoleType<ExcMfgTaperHole>;
using ExcMfgFeatureCounterBoreHole = ExcMfgFeatureHoleType<ExcMfgCounterBoreHole>;
using ExcMfgFeatureCounterSinkHole = ExcMfgFeatureHoleType<ExcMfgCounterSinkHole>;
using ExcMfgFeatureCounterDrillHole = ExcMfgFeatureHoleType<ExcMfgCounterDrillHole>;
using ExcMfgFeatureSimpleHolePtr = std::shared_ptr<ExcMfgFeatureSimpleHole>;
using ExcMfgFeatureTaperHolePtr = std::shared_ptr<ExcMfgFeatureTaperHole>;
using ExcMfgFeatureCounterBoreHolePtr = std::shared_ptr<ExcMfgFeatureCounterBoreHole>;
using ExcMfgFeatureCounterSinkHolePtr = std::shared_ptr<ExcMfgFeatureCounterSinkHole>;
using ExcMfgFeatureCounterDrillHolePtr = std::shared_ptr<ExcMfgFeatureCounterDrillHole>;

/// A feature that is a thread. Adding null is refused with a warning.
class ExcMfgFeatureThread : public ExcMfgFeature {
public:
    /// Appends to the lists.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    /// May be null.
    const ExcMfgThreadPtr& thread() const { return m_threadData; }
    void setThread(ExcMfgThreadPtr thread) { m_threadData = std::move(thread); }

    const std::vector<ExcEntityPtr>& sideFaces() const { return m_sideFaces; }
    void addSideFace(ExcEntityPtr face);

    const std::vector<ExcEntityPtr>& topFaces() const { return m_topFaces; }
    void addTopFace(ExcEntityPtr face);

    const std::vector<ExcEntityPtr>& bottomFaces() const { return m_bottomFaces; }
    void addBottomFace(ExcEntityPtr face);

private:
    struct JsonForm;

    ExcMfgThreadPtr m_threadData;
    std::vector<ExcEntityPtr> m_sideFaces;
    std::vector<ExcEntityPtr> m_topFaces;
    std::vector<ExcEntityPtr> m_bottomFaces;
};

class ExcMfgFeatureInternalThread : public ExcMfgFeatureThread {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

private:
    struct JsonForm;
};
using ExcMfgFeatureInternalThreadPtr = std::shared_ptr<ExcMfgFeatureInternalThread>;

class ExcMfgFeatureExternalThread : public ExcMfgFeatureThread {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

private:
    struct JsonForm;
};
using ExcMfgFeatureExternalThreadPtr = std::shared_ptr<ExcMfgFeatureExternalThread>;

/// A feature of no known kind.
class ExcMfgFeatureUnclassified : public ExcMfgFeature {
public:
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

private:
    struct JsonForm;
};
using ExcMfgFeatureUnclassifiedPtr = std::shared_ptr<ExcMfgFeatureUnclassified>;

} // namespace zeq
