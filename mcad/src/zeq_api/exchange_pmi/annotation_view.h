// Annotation views: planes with the annotations that are laid out in them. Objects are used by one thread at a
// time.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "zeq_api/exchange_pmi/datum.h"
#include "zeq_api/exchange_pmi/dimension.h"
#include "zeq_api/exchange_pmi/gdt.h"
#include "zeq_api/exchange_pmi/note.h"
#include "zeq_api/exchange_pmi/roughness.h"

namespace zeq {

/// A plane in the model, and the annotations in it by their kinds.
///
/// Each add function refuses null with a warning. An annotation whose identifier another one of the view has is
/// kept in its list with a warning, but is not found by it. Reading follows the same rule without a word.
class ExcPMIAnnotationView : public ExcPMIObject {
public:
    /// Appends to the annotations. Every element of a list becomes one, whatever its JSON type.
    void readObject(const JsonValue& object) override;
    void writeObject(JsonValue& out, JsonAllocator& alloc) const override;

    const ExcVector3d& origin() const { return m_origin; }
    void setOrigin(const ExcVector3d& origin) { m_origin = origin; }

    /// The direction of the first coordinate in the plane.
    const ExcVector3d& vectorU() const { return m_vectorU; }
    void setVectorU(const ExcVector3d& vector) { m_vectorU = vector; }

    /// The direction of the second coordinate in the plane.
    const ExcVector3d& vectorV() const { return m_vectorV; }
    void setVectorV(const ExcVector3d& vector) { m_vectorV = vector; }

    const std::vector<ExcPMINotePtr>& notes() const { return m_notes; }
    void addNote(const ExcPMINotePtr& note);

    const std::vector<ExcPMIDatumPtr>& datums() const { return m_datums; }
    void addDatum(const ExcPMIDatumPtr& datum);

    const std::vector<ExcPMIDatumTargetPtr>& datumTargets() const { return m_datumTargets; }
    void addDatumTarget(const ExcPMIDatumTargetPtr& target);

    const std::vector<ExcPMIGDTPtr>& gdts() const { return m_gdts; }
    void addGdt(const ExcPMIGDTPtr& gdt);

    const std::vector<ExcPMIDimensionPtr>& dimensions() const { return m_dimensions; }
    void addDimension(const ExcPMIDimensionPtr& dimension);

    const std::vector<ExcPMIRoughnessPtr>& roughness() const { return m_roughness; }
    void addRoughness(const ExcPMIRoughnessPtr& roughness);

    /// The first annotation that was added under this identifier; null when there is none. Identifiers count as
    /// they were when the annotations were added.
    ExcPMIAnnotationPtr getAnnotationById(const std::wstring& id) const;

private:
    struct JsonForm;

    template <class T>
    using List = std::vector<std::shared_ptr<T>>;
    using Index = std::unordered_map<std::wstring, ExcPMIAnnotationPtr>;
    struct ReadAnnotation {
        ExcPMIAnnotationPtr annotation;
        std::size_t idSize;
    };
    Index& index() const;
    template <class T>
    void add(List<T>& list, const std::shared_ptr<T>& annotation, const char* nullWarning);

    ExcVector3d m_origin;
    ExcVector3d m_vectorU;
    ExcVector3d m_vectorV;
    std::vector<ExcPMINotePtr> m_notes;
    std::vector<ExcPMIDatumPtr> m_datums;
    std::vector<ExcPMIDatumTargetPtr> m_datumTargets;
    std::vector<ExcPMIGDTPtr> m_gdts;
    std::vector<ExcPMIDimensionPtr> m_dimensions;
    std::vector<ExcPMIRoughnessPtr> m_roughness;
    // Of what was read, few ever ask for an identifier: it enters the index when somebody does.
    mutable Index m_annotationsById;
    mutable std::vector<ReadAnnotation> m_read;
    mutable std::wstring m_idsOfRead; // one behind the other
};
using ExcPMIAnnotationViewPtr = std::shared_ptr<ExcPMIAnnotationView>;

} // namespace zeq
