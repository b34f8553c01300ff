// Saving images: the header, a record for each entity on a list that grows as entities name others, the end
// marker.
#include "platform/acis/image.h"

#include "platform/acis/unknown_tokens.h"
#include <ctime>

namespace acis_detail {
namespace {
thread_local image_writer* the_writer = nullptr;

std::string date_now() {
    std::time_t now = std::time(nullptr);
    std::tm parts{};
    char text[64];
    localtime_r(&now, &parts);
    return {text, std::strftime(text, sizeof(text), "%a %b %d %H:%M:%S %Y", &parts)};
}
} // namespace

const char* unknown_name(const ENTITY& entity) {
    auto& unknown = entity_access::unknown(entity);
    return unknown && !unknown->names.empty() ? unknown->names.front().c_str() : nullptr;
}

image_writer::image_writer(const FileInfo& info, width integers) : m_records(integers), m_outer(the_writer) {
    the_writer = this;
    header(info);
}

image_writer::~image_writer() { the_writer = m_outer; }

image_writer& image_writer::current() {
    if (!the_writer) throw failure("nothing is being saved");
    return *the_writer;
}

void image_writer::header(const FileInfo& info) {
    std::string_view signature = "ACIS BinaryFile8";
    if (m_records.integers() == width::narrow) signature.remove_suffix(1);
    m_countsAt = signature.size();
    token_writer writer(m_records);
    writer.raw(signature.data(), signature.size());
    for (int i = 0; i < 4; ++i) writer.plain_integer(0); // version, records, top entities, flags
    writer.string(info.product_id());
    writer.string("ACIS 7.0 NT");
    writer.string(date_now());
    writer.real(info.units());
    writer.real(info.tol_abs());
    writer.real(info.tol_nor());
}

namespace {
/// Finds the version that records kept from other images call for.
class kept_version {
public:
    void see(const ENTITY& entity) {
        auto& unknown = entity_access::unknown(entity);
        if (!unknown)
            m_any = true;
        else if (m_kept == 0)
            m_kept = unknown->version;
        else if (m_kept != unknown->version && m_other == 0)
            m_other = unknown->version;
    }
    /// Of the image with everything that has been seen.
    int version() const {
        if (m_other != 0) fail("others of version " + std::to_string(m_other));
        if (m_any && m_kept != 0 && m_kept < format_version)
            fail("entities of version " + std::to_string(format_version));
        return m_kept != 0 ? m_kept : format_version;
    }

private:
    [[noreturn]] void fail(const std::string& others) const {
        throw failure("records kept from an image of version " + std::to_string(m_kept) + " cannot go with " +
                      others);
    }

    int m_kept = 0;
    int m_other = 0;
    bool m_any = false;
};
} // namespace

void image_writer::save(const ENTITY_LIST& entities) {
    ENTITY_LIST list;
    list.add(entities);
    long top = list.count();
    kept_version kept;
    for (int i = 0; i < list.count(); ++i) {
        if (i + prefetch_distance < list.count()) prefetch(list[i + prefetch_distance]);
        kept.see(*list[i]);
        list[i]->save(list);
    }
    {
        token_writer writer(m_records);
        for (const char* part : {"End", "of", "ACIS"}) writer.name(part, false);
        writer.name("data", true);
    }

    std::size_t at = m_countsAt;
    for (long value : {long(kept.version()), long(list.count()), top, 0L}) {
        m_records.patch_plain_integer(at, value);
        at += std::size_t(m_records.integers());
    }
}
} // namespace acis_detail

using acis_detail::image_writer;
using acis_detail::token_writer;

void write_id_level(const char* name, int level) {
    token_writer(image_writer::current().records()).name(name, level <= 1);
}
void write_int(int value) { write_long(value); }
void write_long(long value) { token_writer(image_writer::current().records()).integer(value); }
void write_real(double value) { token_writer(image_writer::current().records()).real(value); }
void write_logical(logical value) { token_writer(image_writer::current().records()).logical_value(value); }
void write_enum(int value) {
    token_writer(image_writer::current().records()).integer(value, acis_detail::tag::enumeration);
}
void write_string(std::string_view text) { token_writer(image_writer::current().records()).string(text); }
void write_position(const SPAposition& position) {
    token_writer(image_writer::current().records()).position(position);
}
void write_vector(const SPAvector& vector) { token_writer(image_writer::current().records()).vector(vector); }
void write_ptr(const ENTITY* entity, ENTITY_LIST& list) {
    token_writer(image_writer::current().records())
        .integer(list.add(const_cast<ENTITY*>(entity)), acis_detail::tag::pointer);
}
