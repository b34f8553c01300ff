// The image of a large body: what saving and restoring it costs against copying its bytes, on its own and on
// the way through a shared buffer.
#include <cstring>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "acis/memory_file.h"
#include "zeq_api/acis_attrib_id/attrib_convexor.h"
#include "zeq_api/exchange_mechanical/block_geometry.h"

namespace {

using namespace zeq;
using test::MemoryFile;

const bs_knots linear{1, {0, 0, 1, 1}};
const bs_knots quadratic{2, {0, 0, 0, 1, 1, 1}};

/// A corrugated sheet of 400 strips along y, in turn planes, halves of cylinders and B-splines, each cut into
/// 250 faces of length 1. Neighbours share edges and vertices; every face and edge carries an id.
class Sheet {
public:
    static constexpr int columns = 400;
    static constexpr int rows = 250;

    static BODY* make() {
        Sheet sheet;
        for (int j = 0; j <= rows; ++j)
            for (int i = 0; i <= columns; ++i)
                sheet.m_vertices.push_back(ACIS_NEW VERTEX(ACIS_NEW APOINT(SPAposition(i, j, 0))));
        for (int j = 0; j <= rows; ++j)
            for (int i = 0; i <= columns; ++i) {
                sheet.m_across.push_back(i < columns ? sheet.across(i, j) : nullptr);
                sheet.m_along.push_back(j < rows ? sheet.along(i, j) : nullptr);
            }
        auto* const shell = ACIS_NEW SHELL;
        for (int j = 0; j < rows; ++j)
            for (int i = 0; i < columns; ++i) shell->add_face(sheet.face(i, j));
        return ACIS_NEW BODY(ACIS_NEW LUMP(shell));
    }

private:
    enum Kind {
        planar,
        cylindrical,
        spline
    };
    static Kind kindOf(int column) { return Kind(column % 3); }
    static std::size_t at(int i, int j) { return std::size_t(j) * (columns + 1) + std::size_t(i); }

    template <class Entity>
    Entity* tagged(Entity* entity) {
        ACIS_NEW ATTRIB_CONVEXOR_ID(entity, ++m_lastId);
        return entity;
    }

    EDGE* across(int i, int j) {
        CURVE* curve = nullptr;
        double end = 1;
        if (kindOf(i) == planar) {
            curve = ACIS_NEW STRAIGHT(SPAposition(i, j, 0), SPAvector(1, 0, 0));
        } else if (kindOf(i) == cylindrical) {
            curve = ACIS_NEW ELLIPSE(SPAposition(i + 0.5, j, 0), {0, 1, 0}, {-0.5, 0, 0});
            end = std::numbers::pi;
        } else {
            curve = ACIS_NEW INTCURVE(bs3_curve{
                quadratic, {SPAposition(i, j, 0), {i + 0.5, double(j), 1}, {i + 1., double(j), 0}}, {}});
        }
        return tagged(
            ACIS_NEW EDGE(m_vertices[at(i, j)], m_vertices[at(i + 1, j)], curve, FORWARD, {0, end}));
    }
    EDGE* along(int i, int j) {
        auto* const line = ACIS_NEW STRAIGHT(SPAposition(i, j, 0), SPAvector(0, 1, 0));
        return tagged(ACIS_NEW EDGE(m_vertices[at(i, j)], m_vertices[at(i, j + 1)], line, FORWARD, {0, 1}));
    }

    static SURFACE* surface(int i, int j) {
        if (kindOf(i) == planar) return ACIS_NEW PLANE(SPAposition(i, j, 0), {0, 0, 1}, {1, 0, 0});
        if (kindOf(i) == cylindrical)
            return ACIS_NEW CONE(SPAposition(i + 0.5, j, 0), {0, 1, 0}, {-0.5, 0, 0});
        bs3_surface made;
        made.u = quadratic;
        made.v = linear;
        for (const double y : {double(j), j + 1.})
            made.controls.insert(made.controls.end(), {{double(i), y, 0}, {i + 0.5, y, 1}, {i + 1., y, 0}});
        return ACIS_NEW SPLINE(std::move(made));
    }

    FACE* face(int i, int j) {
        struct Use {
            EDGE* edge;
            REVBIT sense;
            SPApar_pos start, end; ///< of the edge
        };
        const Use uses[] = {{m_across[at(i, j)], FORWARD, {0, 0}, {1, 0}},
                            {m_along[at(i + 1, j)], FORWARD, {1, 0}, {1, 1}},
                            {m_across[at(i, j + 1)], REVERSED, {0, 1}, {1, 1}},
                            {m_along[at(i, j)], REVERSED, {0, 0}, {0, 1}}};
        COEDGE* first = nullptr;
        COEDGE* last = nullptr;
        for (const Use& use : uses) {
            COEDGE* const other = use.edge->coedge();
            last = ACIS_NEW COEDGE(use.edge, use.sense, last, nullptr);
            if (!first) first = last;
            if (other) {
                other->set_partner(last);
                last->set_partner(other);
            }
            if (kindOf(i) == spline)
                last->set_geometry(ACIS_NEW PCURVE(bs2_curve{linear, {use.start, use.end}, {}}));
        }
        last->set_next(first);
        first->set_previous(last);
        FACE* const made = tagged(ACIS_NEW FACE(surface(i, j), FORWARD, ACIS_NEW LOOP(first)));
        made->set_sides(DOUBLE_SIDED);
        return made;
    }

    std::vector<VERTEX*> m_vertices;
    std::vector<EDGE*> m_across; ///< from vertex (i, j) to (i + 1, j)
    std::vector<EDGE*> m_along;  ///< from vertex (i, j) to (i, j + 1)
    long m_lastId = 0;
};

const ENTITY_LIST& body() {
    static const ENTITY_LIST made = [] {
        ENTITY_LIST list;
        list.add(Sheet::make());
        return list;
    }();
    return made;
}

const std::string& image() {
    static const std::string made = test::saved(body());
    return made;
}

void setRates(benchmark::State& state) {
    static const int records = [] {
        ENTITY_LIST all = body();
        for (int i = 0; i < all.count(); ++i) all[i]->copy_scan(all, SCAN_DELETE);
        return all.count();
    }();
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(image().size()));
    state.SetItemsProcessed(state.iterations() * records);
}

void ImageCopy(benchmark::State& state) {
    const std::string& bytes = image();
    for (auto _ : state) {
        const std::unique_ptr<char[]> copy(new char[bytes.size()]);
        std::memcpy(copy.get(), bytes.data(), bytes.size());
        benchmark::DoNotOptimize(copy.get());
    }
    setRates(state);
}
BENCHMARK(ImageCopy)->Unit(benchmark::kMillisecond)->MinTime(2);

void ImageSave(benchmark::State& state) {
    image(); // sets what saving asks for
    for (auto _ : state) {
        MemoryFile file;
        if (!api_save_entity_list_file(&file, body()).ok()) state.SkipWithError("not saved");
    }
    setRates(state);
}
BENCHMARK(ImageSave)->Unit(benchmark::kMillisecond)->MinTime(2);

void ImageRestore(benchmark::State& state) {
    MemoryFile file(image());
    for (auto _ : state) {
        file.position = 0;
        ENTITY_LIST entities;
        if (!api_restore_entity_list_file(&file, entities).ok()) state.SkipWithError("not restored");
        state.PauseTiming();
        api_del_entity_list(entities);
        state.ResumeTiming();
    }
    setRates(state);
}
BENCHMARK(ImageRestore)->Unit(benchmark::kMillisecond)->MinTime(2);

/// The argument: whether the buffer is compressed.
void BlockWrite(benchmark::State& state) {
    for (auto _ : state) {
        ExcBlockGeometry geometry;
        geometry.own(true);
        if (!geometry.setGeometry(body(), state.range(0) != 0)) state.SkipWithError("not written");
    }
    setRates(state);
}
BENCHMARK(BlockWrite)->ArgName("compressed")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2);

void BlockRead(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        ExcBlockGeometry sent;
        sent.setBinaryData(image().data(), image().size(), state.range(0) != 0);
        JsonDocument document;
        sent.writeObject(document, document.GetAllocator());
        state.ResumeTiming();
        ENTITY_LIST entities;
        ExcBlockGeometry received;
        received.readObject(document);
        received.load();
        if (!received.getGeometry(entities)) state.SkipWithError("not read");
        state.PauseTiming();
        api_del_entity_list(entities);
        state.ResumeTiming();
    }
    setRates(state);
}
BENCHMARK(BlockRead)->ArgName("compressed")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->MinTime(2);

} // namespace
