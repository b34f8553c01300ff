// Takes what the translator sends during an import.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "brep/facts.h"
#include "scene/documents.h"
#include "timing/stopwatch.h"
#include "zeq/content_count.h"
#include "zeq/contents_report.h"
#include "zeq/conversation.h"
#include "zeq/entity_links.h"
#include "zeq/geometry_report.h"
#include "zeq/geometry_watch.h"
#include "zeq/organisation_tables.h"
#include "zeq/pmi_table.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq::host {

/// What is told of each block's faces and edges.
using BlockFacts = std::map<std::uint64_t, brep::Facts>;

/// What arrived.
struct Import {
    /// Takes a product structure, or what is said of the whole product or of a block.
    void add(const std::shared_ptr<IExchangeObject>& object);

    std::shared_ptr<ExcProductStructure> structure;
    GeometryReport geometry;
    ContentCount content;
    ContentsReport contents;
    EntityLinks links;
    PMITables pmi;
    OrganisationTables organisation;
    scene::Documents* scene = nullptr; ///< what is to be drawn; null when nothing is
    BlockFacts* facts = nullptr;       ///< wanted instead of a report of the geometry
    std::uint64_t documents = 0;
    std::uint64_t buffers = 0;
    std::uint64_t bytes = 0;
    double seconds = 0;
};

/// Takes the documents of one import as they come.
class Receiver {
public:
    Receiver(const Host& host, Import& import) : m_host(host), m_import(import), m_watch(host) {
        m_times.begin(L"Waiting");
    }

    /// @return whether it was the answer
    /// @throws Failure with the reason alone
    bool take(const Document& document);
    /// Where the time went so far.
    std::wstring times() const { return m_times.text(); }

private:
    void takeObject(const Document& document);
    void takeGeometry(const ExcBlockGeometry& geometry);
    /// Writes the image in that buffer into the directory that the user wants it in.
    void writeImage(std::uint64_t blockId, const std::wstring& bufferName);
    void load(IExchangeObject& object, const std::wstring& bufferName);
    /// Keeps an image of geometry for the report.
    void keepImage(const std::wstring& bufferName);

    const Host& m_host;
    Import& m_import;
    GeometryWatch m_watch;
    timing::Stopwatch m_times;
    std::set<std::wstring> m_unknownKinds; // each is told once
};

} // namespace zeq::host
