// Keeps the figures of every block, as the structure with the translator's figures may come before or after.
#include "zeq/geometry_report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cwchar>

#include "text/text.h"
#include "zeq/block_name.h"

namespace zeq::host {

namespace {

/// The translator's figures of a block, by name; null if it told none.
const ExcMiscPropertiesGroup* toldFigures(const ExcBlock* block) {
    if (!block) return nullptr;
    for (const ExcMiscPropertiesGroup& group : block->miscData().groups())
        if (group.name() == L"geometry check") return &group;
    return nullptr;
}

/// Not a number if the group has no such figure.
double toldFigure(const ExcMiscPropertiesGroup& group, const wchar_t* name) {
    for (const ExcMiscProperty& property : group.properties()) {
        if (property.name() != name) continue;
        wchar_t* end = nullptr;
        const double value = std::wcstod(property.value().c_str(), &end);
        return property.value().empty() || *end != L'\0' ? std::nan("") : value;
    }
    return std::nan("");
}

std::string figure(double value, int digits = 2) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    return text;
}

std::string corner(const SPAposition& point) {
    return "[" + text::number(point.x()) + "," + text::number(point.y()) + "," + text::number(point.z()) +
           "]";
}

} // namespace

std::vector<std::string> GeometryReport::add(std::uint64_t blockId, const ENTITY_LIST& entities,
                                             brep::Supervisor* supervisor) {
    Block block;
    block.count.add(entities);
    brep::Check check = brep::check(entities, supervisor);
    block.measure = brep::measure(entities, supervisor);
    check.faults.insert(check.faults.end(), block.measure.inverted.begin(), block.measure.inverted.end());
    if (block.count.bodies() == 0)
        check.faults.push_back({"no body", "its image holds no body that could be restored", {}, {}, 0});
    m_check.add(check);
    block.gap = std::max({check.vertexGap, check.edgeGap, check.largestTolerance});
    block.faults = std::move(check.faults);
    const std::vector<std::string> texts = brep::summarized(block.faults);
    m_blocks.insert_or_assign(blockId, std::move(block));
    return texts;
}

std::vector<std::string> GeometryReport::compare(const ExcProductStructure& structure) {
    struct Figure {
        const wchar_t* name;
        double ours;
        double Difference::*difference;
        double scale = 0; ///< what the difference is related to; 0: the translator's figure
    };
    // Lengths and boxes come out alike however they are computed; but where edges lie beside their surfaces,
    // a box may hold the ones or the others. Areas of a translator may be the sums of a coarse rule.
    const auto unlike = [](const Figure& figure, double gap) {
        return figure.difference == &Difference::area ? 1e-2
               : figure.scale > 0                     ? 1e-6 + gap / figure.scale
                                                      : 1e-6;
    };
    std::vector<std::string> faults;
    for (const ExcBlockPtr& block : structure.blocks())
        if (toldFigures(block.get()) && !m_blocks.contains(block->id())) {
            faults.push_back("geometry of block " + std::to_string(block->id()) + ": it did not arrive");
            m_missing.push_back(block->id());
        }
    for (auto& [id, block] : m_blocks) {
        const ExcMiscPropertiesGroup* const told = toldFigures(structure.getBlockById(id).get());
        if (!told) continue;
        const brep::Measure& measure = block.measure;
        const SPAposition &low = measure.box.low(), &high = measure.box.high();
        const double diagonal = (high - low).len();
        const Figure figures[]{
            {L"faces", static_cast<double>(measure.faces), &Difference::counts},
            {L"edges", static_cast<double>(measure.edges), &Difference::counts},
            {L"vertices", static_cast<double>(measure.vertices), &Difference::counts},
            {L"edge length", measure.length, &Difference::length},
            {L"surface area", measure.area, &Difference::area},
            {L"box minimum x", low.x(), &Difference::box, diagonal},
            {L"box minimum y", low.y(), &Difference::box, diagonal},
            {L"box minimum z", low.z(), &Difference::box, diagonal},
            {L"box maximum x", high.x(), &Difference::box, diagonal},
            {L"box maximum y", high.y(), &Difference::box, diagonal},
            {L"box maximum z", high.z(), &Difference::box, diagonal},
        };
        ++m_compared;
        if (const double faces = toldFigure(*told, L"faces"); faces > static_cast<double>(measure.faces))
            m_missingFaces += static_cast<std::uint64_t>(faces) - measure.faces;
        block.difference.emplace();
        for (const Figure& each : figures) {
            const double theirs = toldFigure(*told, each.name);
            const double gap = std::abs(each.ours - theirs);
            const double difference = gap == 0 ? 0 : gap / (each.scale > 0 ? each.scale : std::abs(theirs));
            double& largest = *block.difference.*each.difference;
            largest = std::max(largest, difference);
            if (difference <= unlike(each, block.gap)) continue;
            const std::string name = text::printable(each.name);
            const std::string fault = name + " is " + figure(each.ours, 9) + ", but the translator had " +
                                      (std::isnan(theirs) ? "none" : figure(theirs, 9));
            faults.push_back("geometry of block " + std::to_string(id) + ": " + fault);
            block.faults.push_back({name, fault, {}, {}, gap});
        }
        for (const auto part : {&Difference::length, &Difference::area, &Difference::box})
            m_largest.*part = std::max(m_largest.*part, *block.difference.*part);
    }
    m_faults += faults.size();
    return faults;
}

std::string GeometryReport::blocksText(const ExcProductStructure* structure, bool all) const {
    constexpr std::size_t most = 100;
    std::string lines;
    std::size_t shown = 0;
    for (const auto& [id, block] : m_blocks) {
        if (!all && ++shown > most) {
            lines += "... and " + text::counted(m_blocks.size() - most, "more block", "more blocks") +
                     "; --all shows them\n";
            break;
        }
        lines += "Block " + blockName(id, structure) + ": " + block.count.text() + "\n";
    }
    return lines;
}

std::uint64_t GeometryReport::faces() const {
    std::uint64_t faces = 0;
    for (const auto& [id, block] : m_blocks) faces += block.measure.faces;
    return faces;
}

std::string GeometryReport::summaryText() const {
    brep::Count total;
    std::uint64_t unmeasured = 0;
    for (const auto& [id, block] : m_blocks) {
        total.add(block.count);
        unmeasured += block.measure.unmeasured;
    }
    std::string lines = "Geometry   " + total.text() + "\nTopology   ";
    lines += m_check.faults.empty() ? "sound" : text::counted(m_check.faults.size(), "fault", "faults");
    lines += "; vertices within " + figure(m_check.vertexGap) + ", edges within " + figure(m_check.edgeGap) +
             " of their geometry";
    if (m_check.largestTolerance > 0) lines += ", tolerances up to " + figure(m_check.largestTolerance);
    if (m_check.unchecked > 0)
        lines += ", " + text::counted(m_check.unchecked, "use of an edge", "uses of edges") + " not checked";
    if (m_compared > 0) {
        lines += "\nMeasures   " +
                 (m_faults == 0 ? "as the translator's" : text::counted(m_faults, "differs", "differ"));
        lines += "; lengths within " + figure(m_largest.length) + ", areas within " + figure(m_largest.area) +
                 ", boxes within " + figure(m_largest.box);
        if (unmeasured > 0)
            lines += ", " + text::counted(unmeasured, "face or edge", "faces and edges") + " not measured";
    }
    return lines + "\n";
}

std::string GeometryReport::jsonMembers() const {
    const auto differences = [](const Difference& difference) {
        return "{\"length\":" + text::number(difference.length) +
               ",\"area\":" + text::number(difference.area) + ",\"box\":" + text::number(difference.box) +
               "}";
    };
    std::string missing;
    for (const std::uint64_t id : m_missing) missing += (missing.empty() ? "" : ",") + std::to_string(id);
    std::string json = "\"geometry\":[";
    const char* separator = "";
    for (const auto& [id, block] : m_blocks) {
        const brep::Measure& measure = block.measure;
        json +=
            separator + ("{\"block_id\":" + std::to_string(id)) + ",\"count\":" + block.count.json() +
            ",\"length\":" + text::number(measure.length) + ",\"area\":" + text::number(measure.area) +
            ",\"box\":" +
            (measure.box.empty() ? "null"
                                 : "[" + corner(measure.box.low()) + "," + corner(measure.box.high()) + "]") +
            ",\"unmeasured\":" + std::to_string(measure.unmeasured) +
            ",\"difference\":" + (block.difference ? differences(*block.difference) : "null") +
            ",\"faults\":" + brep::json(block.faults) + "}";
        separator = ",";
    }
    return json + "],\"topology\":{\"faults\":" + std::to_string(m_check.faults.size()) +
           ",\"vertex_gap\":" + text::number(m_check.vertexGap) +
           ",\"edge_gap\":" + text::number(m_check.edgeGap) +
           ",\"largest_tolerance\":" + text::number(m_check.largestTolerance) +
           ",\"unchecked\":" + std::to_string(m_check.unchecked) +
           "},\"geometry_check\":{\"blocks\":" + std::to_string(m_compared) +
           ",\"faults\":" + std::to_string(m_faults) + ",\"missing\":[" + missing +
           "],\"difference\":" + differences(m_largest) + "}";
}

} // namespace zeq::host
