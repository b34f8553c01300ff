// Restoring images: records one by one, then pointers, then what has to hold between entities so that nobody
// who walks the model later can be led astray.
#include "platform/acis/image.h"
#include "platform/acis/topology.h"
#include "platform/acis/unknown_tokens.h"
#include <cstring>
#include <limits>

namespace acis_detail {
namespace {
thread_local image_reader* the_reader = nullptr;

bool has(unsigned char uses, image_reader::use how) { return (uses & how) != 0; }
} // namespace

image_header read_header(record_reader& reader) {
    for (std::string_view signature : {"ACIS BinaryFile", "ASM BinaryFile"}) {
        if (reader.left() < signature.size() + 1) continue;
        if (std::string_view(reader.at(), signature.size()) != signature) continue;
        const char* behind = reader.at() + signature.size();
        bool wide = *behind == '8';
        // Without a digit the version follows at once; its lowest byte is no digit in any version of the
        // format.
        reader.go_to(wide || *behind == '4' ? behind + 1 : behind);
        reader.set_integers(wide ? width::wide : width::narrow);
        image_header header;
        long version = reader.plain_integer();
        header.records = reader.plain_integer();
        header.entities = reader.plain_integer();
        reader.plain_integer(); // flags: whether there is history, which is left out
        if (version < 100 || version > 1000000 || header.records < 0 || header.entities < 0)
            reader.fail("expected a version and two counts, found " + std::to_string(version) + ", " +
                        std::to_string(header.records) + ", " + std::to_string(header.entities));
        header.info.set_file_version(int(version));
        header.info.set_product_id(std::string(reader.string()));
        header.info.set_acis_version(std::string(reader.string()));
        header.info.set_date(std::string(reader.string()));
        header.info.set_units(reader.real());
        header.info.set_tol_abs(reader.real());
        header.info.set_tol_nor(reader.real());
        return header;
    }
    reader.fail("expected the signature ACIS BinaryFile");
}

bool ends_image(std::string_view name) {
    for (const char* end :
         {"End-of-ACIS-data", "End-of-ASM-data", "Begin-of-ACIS-History-Data", "Begin-of-ASM-History-Data"})
        if (name == end) return true;
    return false;
}

image_reader::image_reader(const char* data, std::size_t length, restore_level level)
    : m_records(data, length), m_level(level), m_outer(the_reader) {
    the_reader = this;
}

image_reader::~image_reader() {
    destroy_all();
    the_reader = m_outer;
}

void image_reader::destroy_all() {
    std::vector<ENTITY*> pending = std::move(m_pending);
    m_pending.clear();
    for (ENTITY* entity : pending) entity_access::destroy(entity);
    for (ENTITY* entity : m_entities)
        if (entity) entity_access::destroy(entity);
    m_entities.clear();
}

image_reader* image_reader::current() { return the_reader; }

record_reader& image_reader::current_records() {
    if (!the_reader) throw failure("nothing is being restored");
    return the_reader->m_records;
}

void image_reader::destroyed(ENTITY* entity) {
    auto found = std::find(m_pending.rbegin(), m_pending.rend(), entity);
    if (found != m_pending.rend()) m_pending.erase(std::next(found).base());
}

bool image_reader::is_reading(const ENTITY* entity) {
    return the_reader && std::find(the_reader->m_pending.begin(), the_reader->m_pending.end(), entity) !=
                             the_reader->m_pending.end();
}

ENTITY_LIST image_reader::top() const {
    ENTITY_LIST top;
    for (long index : m_top) top.add(m_entities[std::size_t(index)]);
    return top;
}

void image_reader::restore() {
    m_header = read_header(m_records);
    std::size_t expected = std::min(std::size_t(m_header.records), m_records.left() / 8);
    m_entities.reserve(expected);
    m_kinds.reserve(expected);
    m_records.note_named(expected);
    m_allNamed = m_header.entities > 0;
    m_start = m_records.offset();
    if (version() < format_version) m_level = restore_level::nothing; // no such layout is known
    while (record()) {
    }
    m_length = m_records.offset();
    choose_top();
    fix_pointers();
    drop_unreachable();
    check_structure();
    check_attributes();
}

void image_reader::choose_top() {
    long count = long(m_entities.size());
    if (m_header.records != 0 && m_header.records != count)
        m_records.fail("expected " + std::to_string(m_header.records) +
                       " records as the header says, found " + std::to_string(count));
    if (m_header.entities > count)
        m_records.fail("expected " + std::to_string(m_header.entities) +
                       " top entities as the header says, found " + std::to_string(count) + " records");
    // The top entities come first. Where they are not counted, bodies are what somebody saved.
    for (long i = 0; i < count; ++i)
        if (m_header.entities > 0 ? i < m_header.entities : is_BODY(m_entities[std::size_t(i)]))
            m_top.push_back(i);
}

const image_reader::record_class& image_reader::class_at_hand() {
    const char* start = m_records.at();
    std::uint64_t begin = 0;
    if (m_records.left() >= sizeof(begin)) std::memcpy(&begin, start, sizeof(begin));
    auto& latest = m_latest[begin * 0x9e3779b97f4a7c15u >> 56];
    // No chain begins with another one: the tags tell where it ends.
    if (latest && std::string_view(start, m_records.left()).starts_with(latest->first)) {
        m_records.go_to(start + latest->first.size());
        return latest->second;
    }
    while (m_records.next_is(tag::subident)) m_records.name(tag::subident);
    m_records.name(tag::ident);
    std::string_view chain(start, std::size_t(m_records.at() - start));
    auto [found, isNew] = m_classes.try_emplace(chain);
    if (isNew) found->second = class_of(chain);
    latest = &*found;
    return found->second;
}

image_reader::record_class image_reader::class_of(std::string_view chain) const {
    record_class result;
    std::vector<std::string_view> names;
    std::string joined;
    record_reader again(chain.data(), chain.size());
    while (again.left() > 0) {
        names.push_back(again.name(again.peek()));
        joined += names.size() > 1 ? "-" : "";
        joined += names.back();
    }
    result.ends_image = ends_image(joined);

    const restore_def* definition = &ENTITY::definition();
    std::size_t unknown = names.size();
    const restore_def* attribute = &ATTRIB::definition();
    while (unknown > 0 && m_level != restore_level::nothing) {
        const restore_def* next = definition->subclasses().lookup(names[unknown - 1]);
        if (!next || (m_level == restore_level::attributes && definition->level() == 0 && next != attribute))
            break;
        definition = next;
        --unknown;
    }
    result.definition = definition;
    result.unknown_names.assign(names.begin(), names.begin() + std::ptrdiff_t(unknown));
    return result;
}

bool image_reader::record() {
    m_records.set_record(long(m_entities.size()));
    const record_class& kind = class_at_hand();
    if (kind.ends_image) return false;
    if (m_entities.size() >= std::size_t(std::numeric_limits<int>::max())) m_records.fail("too many records");
    auto index = m_entities.size();
    if (index >= std::size_t(m_header.entities) && !m_records.named(index)) m_allNamed = false;

    // A record without a known class still begins like all others, as far as its version is known.
    const char* start = m_records.at();
    bool whole = false;
    if (kind.definition->level() == 0) {
        whole = m_level == restore_level::nothing || !m_records.next_is(tag::pointer);
        if (!whole) {
            m_records.skip();
            whole = !m_records.next_is(tag::integer);
            m_records.go_to(start);
        }
    }
    ENTITY* entity = whole ? ACIS_NEW ENTITY : kind.definition->restore();
    m_entities.push_back(entity);
    m_kinds.push_back(whole ? &ENTITY::definition() : kind.definition);
    m_pending.clear();
    if (!kind.unknown_names.empty()) {
        auto unknown = std::make_unique<unknown_tokens>();
        unknown->names = kind.unknown_names;
        unknown->version = version();
        unknown->whole = whole;
        unknown->take(m_records, tag::end);
        entity_access::unknown(*entity) = std::move(unknown);
    }
    m_records.expect(tag::end);
    return true;
}

void image_reader::check_index(long index) {
    if (std::size_t(index) >= m_entities.size())
        fail_in(m_fixed, "expected a record index below " + std::to_string(m_entities.size()) + ", found " +
                             std::to_string(index));
}

void image_reader::take(long index, use how) {
    if (index < 0) return;
    if (has(m_uses[std::size_t(index)], how))
        fail_in(m_fixed, "expected record " + std::to_string(index) + " to be in one list and one ring only");
    m_uses[std::size_t(index)] |= how;
}

void image_reader::fail_wrong_class(long index, const char* expected) {
    std::string message =
        "expected a pointer to a " + std::string(expected) + ", found record " + std::to_string(index);
    if (!the_reader) throw failure(message);
    the_reader->fail_in(the_reader->m_fixed,
                        message + ", a " + the_reader->m_entities[std::size_t(index)]->type_name());
}

void image_reader::fix_pointers() {
    m_uses.assign(m_entities.size(), 0);
    for (m_fixed = 0; m_fixed < m_entities.size(); ++m_fixed)
        walked(m_fixed)->fix_pointers(m_entities.data());
}

void image_reader::drop_unreachable() {
    if (m_allNamed) return;
    std::vector<std::int32_t> links;
    std::vector<std::size_t> firstLink;
    m_records.go_to_offset(m_start);
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        firstLink.push_back(links.size());
        m_records.skip_record([&](long index) {
            if (index >= 0 && std::size_t(index) < m_entities.size()) links.push_back(std::int32_t(index));
        });
    }
    firstLink.push_back(links.size());
    std::vector<char> reached(m_entities.size(), false);
    std::vector<long> work;
    auto reach = [&](long index) {
        if (reached[std::size_t(index)]) return;
        reached[std::size_t(index)] = true;
        work.push_back(index);
    };
    for (long index : m_top) reach(index);
    while (!work.empty()) {
        auto index = std::size_t(work.back());
        work.pop_back();
        for (std::size_t link = firstLink[index]; link < firstLink[index + 1]; ++link) reach(links[link]);
    }
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        if (reached[i]) continue;
        entity_access::destroy(m_entities[i]);
        m_entities[i] = nullptr;
    }
}

void image_reader::fail_in(std::size_t record, const std::string& message) {
    m_records.go_to_offset(m_start);
    for (std::size_t i = 0; i < record; ++i) m_records.skip_record([](long) {});
    m_records.set_record(long(record));
    m_records.fail(message);
}

void image_reader::fail_at(const ENTITY* entity, const char* message) {
    fail_in(std::size_t(std::find(m_entities.begin(), m_entities.end(), entity) - m_entities.begin()),
            message);
}

void image_reader::check_structure() {
    // Lists have been found to end: nothing is in two of them.
    auto check_list = [&](auto* first, auto* owner, auto ownerOf) {
        for (auto* item = first; item; item = item->next())
            if ((item->*ownerOf)() != owner) fail_at(item, "expected it to belong to the owner of its list");
    };
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        ENTITY* entity = walked(i);
        if (!entity) continue;
        int type = m_kinds[i]->identity(1);
        if (type == COEDGE::staticType()) {
            auto* coedge = static_cast<COEDGE*>(entity);
            if (LOOP* loop = coedge->loop()) {
                // The next coedge of each is the only one that leads there, so the ring closes.
                COEDGE* next = coedge->next();
                if (!next || next->previous() != coedge || next->loop() != loop)
                    fail_at(coedge, "expected the next coedge to lead back and to be of the same loop");
            }
            if (COEDGE* partner = coedge->partner())
                if (!partner->partner() || partner->edge() != coedge->edge())
                    fail_at(coedge, "expected its partner to have a partner and the same edge");
        } else if (type == EDGE::staticType()) {
            auto* edge = static_cast<EDGE*>(entity);
            if (edge->coedge() && edge->coedge()->edge() != edge)
                fail_at(edge, "expected its coedge to be of this edge");
        } else if (type == LOOP::staticType()) {
            auto* loop = static_cast<LOOP*>(entity);
            if (loop->start() && loop->start()->loop() != loop)
                fail_at(loop, "expected its coedge to be of this loop");
        } else if (type == FACE::staticType()) {
            auto* face = static_cast<FACE*>(entity);
            check_list(face->loop(), face, &LOOP::face);
        } else if (type == SHELL::staticType()) {
            auto* shell = static_cast<SHELL*>(entity);
            check_list(shell->face(), shell, &FACE::shell);
            check_list(shell->wire(), shell, &WIRE::owner);
        } else if (type == LUMP::staticType()) {
            auto* lump = static_cast<LUMP*>(entity);
            check_list(lump->shell(), lump, &SHELL::lump);
        } else if (type == BODY::staticType()) {
            auto* body = static_cast<BODY*>(entity);
            check_list(body->lump(), body, &LUMP::body);
            check_list(body->wire(), body, &WIRE::owner);
        }
    }
}

void image_reader::check_attributes() {
    // From whatever is no attribute of anything, all attributes have to be reached: then no chain and no
    // nesting of them is endless.
    std::vector<ENTITY*> owners;
    std::size_t owned = 0;
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        ENTITY* entity = walked(i);
        if (!entity) continue;
        if (m_kinds[i]->identity(1) != ATTRIB::staticType()) {
            if (entity->attrib()) owners.push_back(entity);
            continue;
        }
        auto* attribute = static_cast<ATTRIB*>(entity);
        if (attribute->owner()) {
            ++owned;
        } else {
            if (attribute->next() || attribute->previous())
                fail_at(attribute, "expected no neighbours without an owner");
            owners.push_back(attribute);
        }
    }
    std::size_t reached = 0;
    for (std::size_t i = 0; i < owners.size(); ++i) {
        ENTITY* owner = owners[i];
        const ATTRIB* before = nullptr;
        for (ATTRIB* attribute = owner->attrib(); attribute; attribute = attribute->next()) {
            if (attribute->owner() != owner || attribute->previous() != before)
                fail_at(attribute, "expected it to belong to the owner of its chain and to lead back");
            before = attribute;
            ++reached;
            if (attribute->attrib()) owners.push_back(attribute);
        }
    }
    if (reached == owned) return;
    ENTITY_LIST chained;
    for (const ENTITY* owner : owners)
        for (ATTRIB* attribute = owner->attrib(); attribute; attribute = attribute->next())
            chained.add(attribute);
    for (ENTITY* entity : m_entities)
        if (is_ATTRIB(entity) && static_cast<ATTRIB*>(entity)->owner() && chained.lookup(entity) < 0)
            fail_at(entity, "expected it to be on the chain of its owner");
}
} // namespace acis_detail

using acis_detail::image_reader;

int read_int() {
    acis_detail::record_reader& records = image_reader::current_records();
    long value = records.integer();
    if (value != int(value)) records.fail("expected an integer of 32 bits, found " + std::to_string(value));
    return int(value);
}
long read_long() { return image_reader::current_records().integer(); }
double read_real() { return image_reader::current_records().real(); }
logical read_logical() { return image_reader::current_records().logical_value(); }
int read_enum() { return int(image_reader::current_records().integer(acis_detail::tag::enumeration)); }
std::string read_string() { return std::string(image_reader::current_records().string()); }
SPAposition read_position() { return image_reader::current_records().position(); }
SPAvector read_vector() { return image_reader::current_records().vector(); }
ENTITY* read_ptr() {
    return acis_detail::index_as_pointer<ENTITY>(image_reader::current_records().pointer());
}
