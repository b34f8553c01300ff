// First the records as they stand, which a damaged image has too, then the entities that were restored from
// them.
#include "zeq/inspect.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <map>
#include <vector>

#include "brep/parts.h"
#include "brep/work.h"
#include "mp/shared_buffer.h"
#include "text/text.h"
#include "zeq/failure.h"
#include "zeq/geometry_report.h"
#include "zeq/image_file.h"
#include "zeq/interruptible.h"
#include "zeq_api/acis_attrib_id/attrib_convexor.h"
#include "zeq_api/codec/compressor.h"
#include "zeq_api/exchange_mechanical/owned_entities.h"

namespace zeq::host {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t headerLines = 2; ///< of an image as text
constexpr std::size_t mostLines = 1000;

/// The file of that name or, where there is none, the shared buffer.
std::string pathOf(const std::string& name) {
    std::error_code error;
    if (name == "-" || fs::exists(name, error) || name.find('/') != name.npos) return name;
    const std::string buffer = mp::sharedDirectory() + '/' + name;
    return fs::is_regular_file(buffer, error) ? buffer : name;
}

std::vector<char> imageIn(const Host& host) {
    const std::string bytes = readAll(pathOf(host.settings.file), host.signals);
    std::vector<char> image(bytes.begin(), bytes.end());
    try {
        Compressor::makePlain(image);
    } catch (const std::exception&) {
        throw Failure(exit_code::inputOutput, cannot("inspect", host.settings.file, currentReason()));
    }
    return image;
}

/// Heeds signals while geometry is checked.
class Watch : public brep::Supervisor {
public:
    explicit Watch(const Host& host) : m_host(host) {}
    void watch(double) override { throwIfSignalled(m_host.signals); }

private:
    const Host& m_host;
};

/// What is shown of a body, a face or an edge.
struct Row {
    long number;
    std::string name;
    std::string geometry; ///< the kind of its surface or curve
    std::string details;
    std::vector<std::string> attributes;
};

std::vector<std::string> attributesOf(const ENTITY& entity) {
    std::vector<std::string> result;
    for (const ATTRIB* attribute = entity.attrib(); attribute; attribute = attribute->next()) {
        if (is_ATTRIB_CONVEXOR_ID(attribute)) {
            result.push_back("id " + std::to_string(static_cast<const ATTRIB_CONVEXOR_ID*>(attribute)->id()));
        } else if (is_ATTRIB_RGB(attribute)) {
            const auto& color = static_cast<const ATTRIB_RGB&>(*attribute);
            result.push_back("colour " + text::number(color.red()) + " " + text::number(color.green()) + " " +
                             text::number(color.blue()));
        } else {
            result.push_back(text::printable(attribute->type_name()));
        }
    }
    return result;
}

std::string kindOf(const ENTITY* geometry) {
    return geometry ? text::printable(geometry->type_name()) : "point";
}

Row rowOf(long number, const BODY& body) {
    std::size_t lumps = 0;
    for (const LUMP* lump = body.lump(); lump; lump = lump->next()) ++lumps;
    return {number, "body #" + std::to_string(number), body.transform() ? "moved" : "in place",
            text::counted(lumps, "lump", "lumps") + (body.wire() ? ", wires" : ""), attributesOf(body)};
}

Row rowOf(const brep::Parts& parts, const FACE& face) {
    std::size_t loops = 0;
    std::size_t edges = 0;
    for (const LOOP* loop = face.loop(); loop; loop = loop->next()) ++loops;
    brep::forEachCoedge(face, [&edges](const COEDGE&) { ++edges; });
    return {parts.number(face), parts.name(face), kindOf(face.geometry()),
            text::counted(loops, "loop", "loops") + ", " + text::counted(edges, "edge", "edges"),
            attributesOf(face)};
}

Row rowOf(const brep::Parts& parts, const EDGE& edge) {
    const double tolerance = is_TEDGE(&edge) ? edge.get_tolerance() : 0;
    return {parts.number(edge), parts.name(edge), kindOf(edge.geometry()),
            tolerance > 0 ? "tolerance " + text::number(tolerance) : "", attributesOf(edge)};
}

/// A paragraph with a line for each, by their numbers.
std::string textOf(const std::vector<Row>& rows, bool all) {
    std::string text = rows.empty() ? "" : "\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!all && i == mostLines)
            return text + "... and " + std::to_string(rows.size() - i) + " more; --all shows them\n";
        text += rows[i].name + "  " + rows[i].geometry;
        if (!rows[i].details.empty()) text += "  " + rows[i].details;
        for (const std::string& attribute : rows[i].attributes) text += "  " + attribute;
        text += '\n';
    }
    return text;
}

std::string jsonOf(const std::vector<Row>& rows) {
    std::string json;
    for (const Row& row : rows)
        json += std::string(json.empty() ? "" : ",") + "\n{\"name\":" + text::jsonString(row.name) +
                ",\"geometry\":" + text::jsonString(row.geometry) +
                ",\"details\":" + text::jsonString(row.details) +
                ",\"attributes\":" + jsonStrings(row.attributes) + "}";
    return "[" + json + "]";
}

/// The image's records as they stand.
struct Records {
    std::vector<std::string> lines;              ///< those of the header, and all if they are wanted
    std::map<std::string, std::uint64_t> counts; ///< by name
    std::string damage; ///< why the text ends before the image does; empty if it does not

    std::string text() const {
        std::string text;
        for (const auto& [name, count] : counts)
            text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + name;
        return text;
    }
    std::string json() const {
        std::string json;
        for (const auto& [name, count] : counts)
            json += (json.empty() ? "" : ",") + text::jsonString(name) + ":" + std::to_string(count);
        return "{" + json + "}";
    }
};

Records recordsIn(const std::vector<char>& image, bool wantsAll) {
    Records records;
    std::size_t number = 0;
    ImageFile file(image);
    records.damage = reasonOf(api_image_as_text(&file, [&](std::string_view line) {
        const bool isHeader = number++ < headerLines;
        if (isHeader || wantsAll) records.lines.push_back(text::printable(line));
        const std::size_t blank = line.find(' ');
        if (isHeader || blank == line.npos) return; // the mark at the end has a name only
        line.remove_prefix(blank + 1);
        ++records.counts[text::printable(line.substr(0, line.find(' ')))];
    }));
    return records;
}

/// What was restored from the image.
struct Contents {
    std::vector<Row> bodies;
    std::vector<Row> faces;
    std::vector<Row> edges;
    std::vector<std::string> others; ///< top entities that are no bodies
    GeometryReport report;
    std::vector<std::string> faults;
};

Contents contentsOf(const Host& host, const std::vector<char>& image) {
    Contents contents;
    ImageFile file(image);
    OwnedEntities entities;
    const std::string damage = reasonOf(api_restore_entity_list_file(&file, entities.list));
    if (!damage.empty()) {
        contents.faults.push_back(damage);
        return contents;
    }
    for (int i = 0; i < entities.list.count(); ++i)
        if (is_BODY(entities.list[i]))
            contents.bodies.push_back(rowOf(i + 1, static_cast<const BODY&>(*entities.list[i])));
        else
            contents.others.push_back(kindOf(entities.list[i]));
    const brep::Parts parts(entities.list);
    for (std::size_t i = 0; i < parts.faces(); ++i) contents.faces.push_back(rowOf(parts, parts.face(i)));
    for (std::size_t i = 0; i < parts.edges(); ++i) contents.edges.push_back(rowOf(parts, parts.edge(i)));
    for (std::vector<Row>* const rows : {&contents.faces, &contents.edges})
        std::ranges::stable_sort(*rows, {}, &Row::number);
    Watch watch(host);
    contents.faults = contents.report.add(0, entities.list, &watch);
    return contents;
}

std::string joined(const std::vector<std::string>& lines, const std::string& prefix) {
    std::string text;
    for (const std::string& line : lines) text += prefix + line + '\n';
    return text;
}

} // namespace

int inspectImage(const Host& host, Output& output) {
    const Settings& settings = host.settings;
    const std::vector<char> image = imageIn(host);
    const Records records = recordsIn(image, settings.records);
    if (records.lines.size() < headerLines)
        throw Failure(exit_code::inputOutput, cannot("inspect", settings.file, records.damage));
    Contents contents;
    if (!settings.records)
        contents = contentsOf(host, image);
    else if (!records.damage.empty())
        contents.faults.push_back(records.damage);

    if (settings.json) {
        const auto header = records.lines.begin();
        host.report.setSummary(
            "{\"header\":" + jsonStrings({header, header + headerLines}) + ",\"counts\":" + records.json() +
            ",\"records\":" + jsonStrings({header + headerLines, records.lines.end()}) +
            ",\"bodies\":" + jsonOf(contents.bodies) + ",\"faces\":" + jsonOf(contents.faces) +
            ",\"edges\":" + jsonOf(contents.edges) + ",\"others\":" + jsonStrings(contents.others) +
            ",\"faults\":" + jsonStrings(contents.faults) + "," + contents.report.jsonMembers() + "}");
    } else {
        output.write(joined(records.lines, ""));
        if (!settings.records) output.write("Records    " + records.text() + "\n");
        if (!contents.report.isEmpty()) output.write(contents.report.summaryText());
        output.write(joined(contents.others, "Other      "));
        for (const auto* const rows : {&contents.bodies, &contents.faces, &contents.edges})
            output.write(textOf(*rows, settings.all));
        if (!contents.faults.empty()) output.write("\n" + joined(contents.faults, "Fault      "));
    }
    return contents.faults.empty() ? exit_code::done : exit_code::negative;
}

} // namespace zeq::host
