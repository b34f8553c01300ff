// Images as text: each token by its tag, with no regard to what the records mean.
#include "platform/acis/image_text.h"

#include "platform/acis/image.h"

namespace acis_detail {
namespace {
std::string real_text(double value) {
    std::string text = text_of(value);
    bool isPlain = text.find_first_not_of("-0123456789") == std::string::npos;
    return isPlain ? text + ".0" : text;
}

std::string quoted(std::string_view text, char quote = '"') {
    constexpr const char* digits = "0123456789abcdef";
    std::string result(1, quote);
    for (char c : text) {
        auto byte = static_cast<unsigned char>(c);
        if (c == quote || c == '\\')
            (result += '\\') += c;
        else if (byte >= 32 && byte != 127)
            result += c;
        else
            ((result += "\\x") += digits[byte / 16]) += digits[byte % 16];
    }
    return result + quote;
}

std::string numbers(const char* ends, std::initializer_list<double> values) {
    std::string result(1, ends[0]);
    for (double value : values) result += (result.size() > 1 ? "," : "") + text_of(value);
    return result + ends[1];
}

/// The token at hand, of any kind.
std::string next_token(record_reader& reader) {
    switch (tag kind = reader.peek()) {
    case tag::integer:
        return std::to_string(reader.integer());
    case tag::real:
        return real_text(reader.real());
    case tag::string8:
    case tag::string16:
    case tag::string32:
        return quoted(reader.string());
    case tag::logical_true:
    case tag::logical_false:
        return reader.logical_value() ? "T" : "F";
    case tag::pointer:
        return "$" + std::to_string(reader.pointer());
    case tag::ident:
        return "&" + std::string(reader.name(kind));
    case tag::subident:
        return std::string(reader.name(kind)) + "-";
    case tag::open:
        return reader.skip(), "{";
    case tag::close:
        return reader.skip(), "}";
    case tag::end:
        return reader.skip(), "#";
    case tag::literal:
        return quoted(reader.literal(), '\'');
    case tag::position: {
        SPAposition p = reader.position();
        return numbers("()", {p.x(), p.y(), p.z()});
    }
    case tag::vector: {
        SPAvector v = reader.vector();
        return numbers("<>", {v.x(), v.y(), v.z()});
    }
    case tag::enumeration:
        return "%" + std::to_string(reader.integer(tag::enumeration));
    case tag::par_pos: {
        SPApar_vec v = reader.par_vec();
        return numbers("[]", {v.du, v.dv});
    }
    default:
        return "(" + std::string(name_of(kind)) + " of " + std::to_string(reader.skip()) + " bytes)";
    }
}

/// "not told", or the number.
std::string count_text(long count) { return count == 0 ? "not told" : std::to_string(count); }

void write_text(record_reader& reader, const std::function<void(std::string_view)>& take) {
    image_header header = read_header(reader);
    const FileInfo& info = header.info;
    take("version " + std::to_string(info.file_version()) + ", integers of " +
         std::to_string(int(reader.integers())) + " bytes, records: " + count_text(header.records) +
         ", top entities: " + count_text(header.entities));
    take("made by " + quoted(info.product_id()) + " with " + quoted(info.acis_version()) + " on " +
         quoted(info.date()) + ", units of " + text_of(info.units()) + " mm, tolerances " +
         text_of(info.tol_abs()) + " and " + text_of(info.tol_nor()));
    for (long record = 0;; ++record) {
        reader.set_record(record);
        std::string name;
        while (reader.next_is(tag::subident)) (name += reader.name(tag::subident)) += '-';
        name += reader.name(tag::ident);
        if (ends_image(name)) return take(name);
        std::string line = std::to_string(record) + " " + name;
        for (std::string token; token != "#";) {
            token = next_token(reader);
            (line += ' ') += token;
        }
        take(line);
    }
}
} // namespace
} // namespace acis_detail

outcome api_image_as_text(BinaryFile* file, const std::function<void(std::string_view line)>& take) {
    if (!file) return {ACIS_BAD_ARGUMENT, "there is no file to read from"};
    return api_block([&] {
        acis_detail::byte_block bytes;
        std::size_t size = acis_detail::read_all(*file, bytes);
        acis_detail::record_reader reader(bytes.data(), size);
        acis_detail::write_text(reader, take);
        return outcome();
    });
}
