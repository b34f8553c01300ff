// Says what is wrong between objects, in one document or across those that belong together, although each is
// well formed: references that lead nowhere, cycles, ids that are missing or not unique, placements that
// flatten, annotations that are not there.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "inspection/annotation_relations.h"
#include "inspection/dom_walk.h"
#include "inspection/linter.h"

namespace zeq::inspection {

/// Takes documents one after another, and looks at what they say of each other in the end.
class Relations {
public:
    /// @param areBuffersThere whether the buffers that documents name should exist; those of a record of what
    /// was
    ///                        sent do not
    Relations(Report report, OpenBuffer openBuffer, bool areBuffersThere)
        : m_report(std::move(report)), m_openBuffer(std::move(openBuffer)),
          m_areBuffersThere(areBuffersThere) {}

    /// Looks at a document of that class and at the shared buffer that it names.
    /// @param pointer where it stands; those of findings begin with it
    void add(const JsonValue& document, const json::FormInfo& form, const std::string& pointer);
    /// Looks at what stands between the documents that were taken.
    void finish();

private:
    struct OwnedData {
        std::uint64_t blockId;
        Place place;
    };

    void addWrapper(const JsonValue& wrapper, const std::string& pointer);
    void addData(const std::wstring& objectName, const JsonValue& data, const Place& place);
    void addGeometry(const JsonValue& geometry, const Place& place);

    Report m_report;
    OpenBuffer m_openBuffer;
    bool m_areBuffersThere;
    bool m_hasStructure = false;
    std::unordered_set<std::uint64_t> m_blocks;
    AnnotationRelations m_annotations;
    std::vector<OwnedData> m_owned; ///< what says to which block it belongs
};

} // namespace zeq::inspection
