// B-splines in records: knots as pairs of value and multiplicity, where the first and the last one count once
// less than in bs_knots, then control points; around them what the kernel says of the curve or surface as a
// whole.
#include "platform/acis/bspline_block.h"

#include "platform/acis/nurbs_check.h"
#include "platform/acis/unknown_tokens.h"
#include <charconv>

namespace acis_detail {
namespace {
constexpr long fully_stored = 0;
constexpr long rational_both_ways = 2;

/// What follows the fit tolerance where there is nothing to say: no surfaces that the curve is the
/// intersection of and no curves on them, no range, no discontinuities.
void write_default_rest(token_writer& writer, const bs3_curve*) {
    for (const char* none : {"null_surface", "null_surface", "nullbs", "nullbs"}) writer.name(none, true);
    for (int i = 0; i < 2; ++i) writer.logical_value(false);
    for (int i = 0; i < 3; ++i) writer.integer(0);
}
void write_default_rest(token_writer& writer, const bs2_curve*) { writer.name("null_surface", true); }
void write_default_rest(token_writer& writer, const bs3_surface*) {
    for (int i = 0; i < 6; ++i) writer.integer(0);
}

/// Passes over that, if it is what stands up to the end of the block.
template <class Spline>
bool passes_default_rest(record_reader& reader) {
    auto written = [](width integers) {
        record_writer records(integers);
        {
            token_writer writer(records);
            write_default_rest(writer, static_cast<const Spline*>(nullptr));
            writer.single(tag::close);
        }
        return std::string(records.data(), records.size());
    };
    static const std::string usual[] = {written(width::narrow), written(width::wide)};
    std::string_view expected = usual[reader.integers() == width::wide];
    if (!std::string_view(reader.at(), reader.left()).starts_with(expected)) return false;
    reader.go_to(reader.at() + expected.size() - 1);
    return true;
}

/// Calls with each different knot and how often it is written.
template <class Function>
void each_knot(const bs_knots& u, Function&& function) {
    for (std::size_t i = 1; i + 1 < u.knots.size();) {
        std::size_t end = i;
        while (end + 1 < u.knots.size() && u.knots[end] == u.knots[i]) ++end;
        function(u.knots[i], long(end - i));
        i = end;
    }
}
long different_knots(const bs_knots& u) {
    long count = 0;
    each_knot(u, [&](double, long) { ++count; });
    return count;
}
void write_knots(token_writer& writer, const bs_knots& u) {
    each_knot(u, [&](double knot, long multiplicity) {
        writer.real(knot);
        writer.integer(multiplicity);
    });
}

void write_control(token_writer& writer, const SPAposition& p) {
    for (int i = 0; i < 3; ++i) writer.real(p.coordinate(i));
}
void write_control(token_writer& writer, const SPApar_pos& p) {
    writer.real(p.u);
    writer.real(p.v);
}
void read_control(record_reader& reader, SPAposition& p) {
    for (int i = 0; i < 3; ++i) p.coordinate(i) = reader.real();
}
void read_control(record_reader& reader, SPApar_pos& p) {
    p.u = reader.real();
    p.v = reader.real();
}

/// Calls with the knots of each direction.
template <class Curve, class Function>
void each_direction(Curve& curve, Function&& function) {
    function(curve.u);
    if constexpr (requires { curve.v; }) function(curve.v);
}

constexpr std::size_t real_bytes = 1 + sizeof(double);

[[noreturn]] void fail_found(const record_reader& reader, const char* expected, double found) {
    reader.fail(std::string("expected ") + expected + ", found " + text_of(found));
}

int read_enumeration(record_reader& reader, int highest) {
    long value = reader.integer(tag::enumeration);
    if (value < 0 || value > highest)
        fail_found(reader, highest == 2 ? "an enumeration up to 2" : "an enumeration up to 3", double(value));
    return int(value);
}

void read_knots(record_reader& reader, std::size_t different, bs_knots& u) {
    for (std::size_t i = 0; i < different; ++i) {
        double knot = reader.real();
        if (i > 0 && !(knot > u.knots.back())) fail_found(reader, "ascending knots", knot);
        long multiplicity = reader.integer();
        if (multiplicity < 1 || multiplicity > u.degree + 1)
            fail_found(reader, "a multiplicity from 1 to degree + 1", double(multiplicity));
        bool outer = i == 0 || i + 1 == different;
        u.knots.insert(u.knots.end(), std::size_t(multiplicity + (outer ? 1 : 0)), knot);
        // Each control point takes two reals at least.
        if (u.knots.size() > reader.left() / (2 * real_bytes) + 2 * std::size_t(u.degree) + 2)
            fail_found(reader, "no more knots than control points can follow", double(u.knots.size()));
    }
}

template <class Spline>
void read_full(record_reader& reader, Spline& spline, double& tolerance) {
    std::string_view kind = reader.name(tag::ident);
    bool rational = kind == "nurbs";
    if (!rational && kind != "nubs") reader.fail("expected nubs or nurbs, found " + std::string(kind));
    each_direction(spline, [&](bs_knots& u) {
        long degree = reader.integer();
        if (degree < 1 || degree > max_degree) fail_found(reader, "a degree from 1 to 63", double(degree));
        u.degree = int(degree);
    });
    if constexpr (requires { spline.singular_u; })
        if (rational) read_enumeration(reader, rational_both_ways);
    each_direction(spline,
                   [&](bs_knots& u) { u.closure = bs_closure(read_enumeration(reader, bs_periodic)); });
    if constexpr (requires { spline.singular_u; }) {
        spline.singular_u = bs_singularity(read_enumeration(reader, bs_singular_both));
        spline.singular_v = bs_singularity(read_enumeration(reader, bs_singular_both));
    }
    std::size_t different[2];
    std::size_t* count = different;
    each_direction(spline, [&](bs_knots&) { *count++ = reader.count(real_bytes + 5); });
    count = different;
    std::size_t controls = 1;
    each_direction(spline, [&](bs_knots& u) {
        read_knots(reader, *count++, u);
        if (const char* problem = problem_of(u)) reader.fail(std::string("expected ") + problem);
        controls *= std::size_t(u.controls());
    });
    std::size_t reals = (std::is_same_v<Spline, bs2_curve> ? 2 : 3) + (rational ? 1 : 0);
    if (controls > reader.left() / (reals * real_bytes))
        fail_found(reader, "no more control points than the bytes left can hold", double(controls));
    spline.controls.resize(controls);
    if (rational) spline.weights.resize(controls);
    for (std::size_t i = 0; i < controls; ++i) {
        read_control(reader, spline.controls[i]);
        if (rational) spline.weights[i] = reader.real();
    }
    tolerance = reader.real();
}
} // namespace

template <class Spline>
[[gnu::flatten]] void write_bspline(record_writer& records, ENTITY_LIST& list, const char* name,
                                    const Spline* spline, double tolerance,
                                    const std::unique_ptr<unknown_tokens>& rest) {
    token_writer writer(records);
    writer.single(tag::open);
    if (spline) {
        writer.name(name, true);
        writer.integer(fully_stored, tag::enumeration);
        writer.name(spline->rational() ? "nurbs" : "nubs", true);
        each_direction(*spline, [&](const bs_knots& u) { writer.integer(u.degree); });
        if constexpr (requires { spline->singular_u; })
            if (spline->rational()) writer.integer(rational_both_ways, tag::enumeration);
        each_direction(*spline, [&](const bs_knots& u) { writer.integer(u.closure, tag::enumeration); });
        if constexpr (requires { spline->singular_u; }) {
            writer.integer(spline->singular_u, tag::enumeration);
            writer.integer(spline->singular_v, tag::enumeration);
        }
        each_direction(*spline, [&](const bs_knots& u) { writer.integer(different_knots(u)); });
        each_direction(*spline, [&](const bs_knots& u) { write_knots(writer, u); });
        for (std::size_t i = 0; i < spline->controls.size(); ++i) {
            write_control(writer, spline->controls[i]);
            if (spline->rational()) writer.real(spline->weights[i]);
        }
        writer.real(tolerance);
        if (!rest) write_default_rest(writer, spline);
    }
    if (rest) rest->write(writer, list);
    writer.single(tag::close);
}

template <class Spline>
bool read_bspline(record_reader& reader, const char* name, Spline& spline, double& tolerance,
                  std::unique_ptr<unknown_tokens>& rest) {
    reader.expect(tag::open);
    const char* start = reader.at();
    bool known = reader.next_is(tag::ident) && reader.name(tag::ident) == name &&
                 reader.next_is(tag::enumeration) && reader.integer(tag::enumeration) == fully_stored;
    if (known)
        read_full(reader, spline, tolerance);
    else
        reader.go_to(start);
    if (!known || !passes_default_rest<Spline>(reader)) {
        rest = std::make_unique<unknown_tokens>();
        rest->take(reader, tag::close);
    }
    reader.expect(tag::close);
    return known;
}

template void write_bspline(record_writer&, ENTITY_LIST&, const char*, const bs2_curve*, double,
                            const std::unique_ptr<unknown_tokens>&);
template bool read_bspline(record_reader&, const char*, bs2_curve&, double&,
                           std::unique_ptr<unknown_tokens>&);
template void write_bspline(record_writer&, ENTITY_LIST&, const char*, const bs3_curve*, double,
                            const std::unique_ptr<unknown_tokens>&);
template bool read_bspline(record_reader&, const char*, bs3_curve&, double&,
                           std::unique_ptr<unknown_tokens>&);
template void write_bspline(record_writer&, ENTITY_LIST&, const char*, const bs3_surface*, double,
                            const std::unique_ptr<unknown_tokens>&);
template bool read_bspline(record_reader&, const char*, bs3_surface&, double&,
                           std::unique_ptr<unknown_tokens>&);

std::string text_of(const SPAtransf& transform) {
    std::string text;
    auto add = [&](double value) { text += text_of(value) + ' '; };
    for (int row = 0; row < 3; ++row)
        for (int i = 0; i < 3; ++i) add(transform.row(row).component(i));
    for (int i = 0; i < 3; ++i) add(transform.translation().component(i));
    add(transform.scaling());
    text += transform.rotate() ? "rotate " : "no_rotate ";
    text += transform.reflect() ? "reflect " : "no_reflect ";
    text += transform.shear() ? "shear" : "no_shear";
    return text;
}

bool take_text(std::string_view text, SPAtransf& transform) {
    const char* at = text.data();
    const char* end = at + text.size();
    double numbers[13];
    for (double& number : numbers) {
        while (at < end && *at == ' ') ++at;
        auto [behind, error] = std::from_chars(at, end, number);
        if (error != std::errc()) return false;
        at = behind;
    }
    for (int row = 0; row < 3; ++row)
        transform.row(row) = SPAvector(numbers[3 * row], numbers[3 * row + 1], numbers[3 * row + 2]);
    transform.set_translation(SPAvector(numbers[9], numbers[10], numbers[11]));
    transform.set_scaling(numbers[12]);
    return true;
}
} // namespace acis_detail
