// Gathers instances by their types.
#include "step/contents.h"

#include <algorithm>
#include <set>

namespace zeq::step {

namespace {

constexpr std::string_view faceTypes[]{"ADVANCED_FACE", "FACE_SURFACE"};
constexpr std::string_view datumTypes[]{"DATUM", "DATUM_TARGET", "PLACED_DATUM_TARGET_FEATURE"};
constexpr std::string_view dimensionTypes[]{
    "DIMENSIONAL_SIZE", "DIMENSIONAL_SIZE_WITH_PATH",    "DIMENSIONAL_SIZE_WITH_DATUM_FEATURE",
    "ANGULAR_SIZE",     "DIMENSIONAL_LOCATION",          "DIRECTED_DIMENSIONAL_LOCATION",
    "ANGULAR_LOCATION", "DIMENSIONAL_LOCATION_WITH_PATH"};
constexpr std::string_view cameraTypes[]{"CAMERA_MODEL_D3", "CAMERA_MODEL_D3_MULTI_CLIPPING"};
constexpr std::string_view drawnTypes[]{"TESSELLATED_ANNOTATION_OCCURRENCE",
                                        "ANNOTATION_CURVE_OCCURRENCE",
                                        "ANNOTATION_FILL_AREA_OCCURRENCE",
                                        "ANNOTATION_TEXT_OCCURRENCE",
                                        "ANNOTATION_SYMBOL_OCCURRENCE",
                                        "ANNOTATION_PLACEHOLDER_OCCURRENCE",
                                        "ANNOTATION_PLACEHOLDER_OCCURRENCE_WITH_LEADER_LINE"};

bool isToleranceType(std::string_view type) {
    return type.ends_with("_TOLERANCE") && type != "PLUS_MINUS_TOLERANCE";
}

/// A complex instance may be of several of the types.
class Numbers {
public:
    explicit Numbers(const StepFile& file) : m_file(file.structure()) {}
    void add(std::string_view type) {
        for (const Instance& each : m_file.all(type)) m_numbers.insert(each.number());
    }
    void add(const Instance& instance) { m_numbers.insert(instance.number()); }
    template <class Types>
    Numbers& addAll(const Types& types) {
        for (const std::string_view type : types) add(type);
        return *this;
    }
    std::vector<std::uint64_t> take() const { return {m_numbers.begin(), m_numbers.end()}; }

private:
    const part21::ExchangeStructure& m_file;
    std::set<std::uint64_t> m_numbers;
};

/// Callouts that hold something drawn or a place for it, and what is drawn outside of callouts.
std::vector<std::uint64_t> drawnAnnotations(const StepFile& file) {
    std::set<std::uint64_t> numbers, held;
    const std::vector<std::uint64_t> drawn = Numbers(file).addAll(drawnTypes).take();
    for (const Instance& callout : file.structure().all("DRAUGHTING_CALLOUT"))
        for (const Instance& content : callout.references())
            if (std::ranges::binary_search(drawn, content.number())) {
                numbers.insert(callout.number());
                held.insert(content.number());
            }
    std::ranges::set_difference(drawn, held, std::inserter(numbers, numbers.end()));
    return {numbers.begin(), numbers.end()};
}

} // namespace

Contents readContents(const StepFile& file, const Products& products) {
    Contents contents;
    for (const Products::Product& product : products.all)
        if (!product.isAssembly) contents.parts.push_back(product.definition.number());
    for (const Products::Usage& usage : products.usages)
        contents.instances.push_back(usage.occurrence.number());
    contents.faces = Numbers(file).addAll(faceTypes).take();
    Numbers semantic(file);
    semantic.addAll(datumTypes).addAll(dimensionTypes).add("GEOMETRIC_TOLERANCE");
    for (const std::string_view type : file.structure().types())
        if (isToleranceType(type)) semantic.add(type);
    for (const Instance& property : file.structure().all("PROPERTY_DEFINITION"))
        if (nameOf(property) == L"semantic text") semantic.add(property);
    contents.semanticAnnotations = semantic.take();
    contents.graphicalAnnotations = drawnAnnotations(file);
    contents.views = Numbers(file).addAll(cameraTypes).take();
    return contents;
}

} // namespace zeq::step
