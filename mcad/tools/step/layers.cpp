// A layer stands in every part that it has items of.
#include <charconv>
#include <limits>
#include <set>
#include <unordered_set>

#include "step/part_reading.h"

namespace zeq::step {

namespace {

/// The number that a name is.
std::optional<int> numberOf(const std::wstring& name) {
    std::string digits;
    for (const wchar_t c : name) {
        if (c < L'0' || c > L'9') return std::nullopt;
        digits += static_cast<char>(c);
    }
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || digits.empty()) return std::nullopt;
    return number;
}

struct Assignment {
    Instance instance;
    std::wstring name;
    std::wstring description;
};

std::vector<Assignment> readAssignments(const StepFile& file) {
    std::vector<Assignment> found;
    for (const Instance& each : file.structure().all("PRESENTATION_LAYER_ASSIGNMENT")) {
        const auto text = [&each](std::size_t index) {
            return trimmed(attribute(each, "PRESENTATION_LAYER_ASSIGNMENT", 0, index).text());
        };
        Assignment assignment{each, text(0), text(1)};
        if (assignment.name.empty()) std::swap(assignment.name, assignment.description);
        found.push_back(std::move(assignment));
    }
    return found;
}

/// The ids of all layers, by name: their numbers, or others that none has.
std::map<std::wstring, int> chooseIds(const std::vector<Assignment>& assignments) {
    std::map<std::wstring, int> ids;
    std::set<int> used;
    for (const Assignment& each : assignments)
        if (const auto number = numberOf(each.name)) {
            ids[each.name] = *number;
            used.insert(*number);
        }
    int next = 1;
    for (const Assignment& each : assignments) {
        if (ids.contains(each.name)) continue;
        while (used.contains(next)) ++next;
        ids[each.name] = next++;
    }
    return ids;
}

} // namespace

void readLayers(PartReading& reading) {
    struct Layer {
        ExcMiscLayerPtr layer;
        std::unordered_set<std::uint64_t> items;
    };
    std::map<std::pair<std::uint64_t, std::wstring>, Layer> layers;
    const std::vector<Assignment> assignments = readAssignments(reading.file);
    const std::map<std::wstring, int> ids = chooseIds(assignments);

    for (const Assignment& each : assignments) {
        bool isOfPart = false;
        const Value items = attribute(each.instance, "PRESENTATION_LAYER_ASSIGNMENT", 0, 2);
        for (const Value& value : items.items()) {
            const Instance item = styledBy(reading.file, reading.file.at(value));
            const Instance product = item ? reading.owners.ofItem(item).product : Instance();
            if (!product) continue;
            isOfPart = true;
            Layer& layer = layers[{product.number(), each.name}];
            if (!layer.layer) {
                layer.layer = std::make_shared<ExcMiscLayer>();
                layer.layer->setId(ids.at(each.name));
                layer.layer->setName(each.name);
                reading.misc(product).addLayer(layer.layer);
                reading.count("layers", each.instance);
                if (saysSomething(each.description)) {
                    reading.count("properties", each.instance);
                    reading.addProperty(product, L"descriptions of layers",
                                        textProperty(each.name, each.description));
                }
            }
            if (layer.items.insert(item.number()).second) layer.layer->addEntity(entityOf(item));
            reading.layerIds.try_emplace(item.number(), layer.layer->id());
        }
        if (isOfPart) continue;
        reading.count("layers", each.instance);
        reading.lose("layers",
                     items.items().empty() ? L"nothing lies on it" : L"what lies on it belongs to no part",
                     each.instance);
    }
}

} // namespace zeq::step
