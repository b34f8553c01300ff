// What stands between annotations: identifiers by which saved views, frames, datums and drawings name them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "inspection/dom_walk.h"
#include "inspection/linter.h"

namespace zeq::inspection {

/// Takes the mechanical and the display documents of all blocks in any order, and looks up the identifiers in the end.
class AnnotationRelations {
public:
    using Owner = std::optional<std::uint64_t>; ///< a block; none for the whole assembly

    void addMechanical(Owner owner, const JsonValue& data, const Place& place);
    void addDisplay(Owner owner, const JsonValue& data, const Place& place);
    /// Warns of each place with identifiers that lead nowhere.
    void report(const Report& report) const;

private:
    enum class EKind {
        annotation, ///< of either form
        semantic,
        datum,
        target,
        drawn,
    };
    struct Reference {
        EKind kind;
        Place place;
        std::vector<std::wstring> ids;
    };
    struct Annotations {
        std::map<EKind, std::unordered_set<std::wstring>> ids;
        std::vector<Reference> references;

        bool has(EKind kind, const std::wstring& id) const;
        void refer(EKind kind, Place place, std::vector<std::wstring> named);
    };

    static void addView(Annotations& annotations, const JsonValue& view, const Place& place);

    std::map<Owner, Annotations> m_owners; ///< the assembly comes first
};

} // namespace zeq::inspection
