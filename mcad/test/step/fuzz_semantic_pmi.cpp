// Reads any bytes as a STEP file: its index, every parameter of every instance, and its annotations.
#include <cstdint>
#include <string>
#include <vector>

#include "part21/exchange_structure.h"
#include "step/semantic_pmi.h"

namespace {

constexpr std::size_t mostValues = 10000;

/// The number of values that there are in a list and the lists within it.
std::size_t walk(const zeq::part21::List& list) {
    std::vector<zeq::part21::Value> values;
    for (const auto& value : list) values.push_back(value);
    for (std::size_t i = 0; i < values.size() && i < mostValues; ++i) {
        static_cast<void>(values[i].number());
        static_cast<void>(values[i].text());
        static_cast<void>(values[i].name());
        for (const auto& value : values[i].items()) values.push_back(value);
    }
    return values.size();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const zeq::part21::ExchangeStructure structure(std::string(data, data + size));
        for (const auto& instance : structure.all())
            for (const auto type : instance.types()) walk(instance.parameters(type));
        zeq::step::StepFile file(structure, 1);
        zeq::step::readSemanticPMI(file);
    } catch (const zeq::part21::ReadError&) {
    }
    return 0;
}
