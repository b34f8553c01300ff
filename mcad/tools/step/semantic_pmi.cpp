// Finds the annotations of a file and has each read by its kind.
#include "step/semantic_pmi.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>

#include "step/annotation_reading.h"

namespace zeq::step {

namespace {

enum class Kind {
    dimension,
    tolerance,
    datum,
    datum_target,
    note
};
struct Type {
    std::string_view name;
    Kind kind;
};
constexpr std::array types{
    Type{"DIMENSIONAL_SIZE", Kind::dimension},
    Type{"DIMENSIONAL_SIZE_WITH_DATUM_FEATURE", Kind::dimension},
    Type{"DIMENSIONAL_SIZE_WITH_PATH", Kind::dimension},
    Type{"ANGULAR_SIZE", Kind::dimension},
    Type{"DIMENSIONAL_LOCATION", Kind::dimension},
    Type{"DIMENSIONAL_LOCATION_WITH_DATUM_FEATURE", Kind::dimension},
    Type{"DIMENSIONAL_LOCATION_WITH_PATH", Kind::dimension},
    Type{"DIRECTED_DIMENSIONAL_LOCATION", Kind::dimension},
    Type{"ANGULAR_LOCATION", Kind::dimension},
    Type{"GEOMETRIC_TOLERANCE", Kind::tolerance},
    Type{"GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE", Kind::tolerance},
    Type{"GEOMETRIC_TOLERANCE_WITH_DEFINED_AREA_UNIT", Kind::tolerance},
    Type{"GEOMETRIC_TOLERANCE_WITH_DEFINED_UNIT", Kind::tolerance},
    Type{"GEOMETRIC_TOLERANCE_WITH_MAXIMUM_TOLERANCE", Kind::tolerance},
    Type{"GEOMETRIC_TOLERANCE_WITH_MODIFIERS", Kind::tolerance},
    Type{"MODIFIED_GEOMETRIC_TOLERANCE", Kind::tolerance},
    Type{"UNEQUALLY_DISPOSED_GEOMETRIC_TOLERANCE", Kind::tolerance},
    Type{"ANGULARITY_TOLERANCE", Kind::tolerance},
    Type{"CIRCULAR_RUNOUT_TOLERANCE", Kind::tolerance},
    Type{"COAXIALITY_TOLERANCE", Kind::tolerance},
    Type{"CONCENTRICITY_TOLERANCE", Kind::tolerance},
    Type{"CYLINDRICITY_TOLERANCE", Kind::tolerance},
    Type{"FLATNESS_TOLERANCE", Kind::tolerance},
    Type{"LINE_PROFILE_TOLERANCE", Kind::tolerance},
    Type{"PARALLELISM_TOLERANCE", Kind::tolerance},
    Type{"PERPENDICULARITY_TOLERANCE", Kind::tolerance},
    Type{"POSITION_TOLERANCE", Kind::tolerance},
    Type{"ROUNDNESS_TOLERANCE", Kind::tolerance},
    Type{"STRAIGHTNESS_TOLERANCE", Kind::tolerance},
    Type{"SURFACE_PROFILE_TOLERANCE", Kind::tolerance},
    Type{"SYMMETRY_TOLERANCE", Kind::tolerance},
    Type{"TOTAL_RUNOUT_TOLERANCE", Kind::tolerance},
    Type{"DATUM", Kind::datum},
    Type{"COMMON_DATUM", Kind::datum},
    Type{"DATUM_TARGET", Kind::datum_target},
    Type{"PLACED_DATUM_TARGET_FEATURE", Kind::datum_target},
};

constexpr std::size_t mostSegments = 100; // of a composite tolerance; a damaged file may make them circular
constexpr std::size_t mostItems = 10000;  // of a list with what is in its compounds

/// Whether a composite tolerance that begins with one segment has the other one too.
bool isAbove(const std::unordered_map<std::uint64_t, Instance>& segmentBelow, const Instance& first,
             const Instance& other) {
    Instance at = first;
    for (std::size_t i = 0; i < mostSegments; ++i) {
        if (at == other) return true;
        const auto below = segmentBelow.find(at.number());
        if (below == segmentBelow.end()) return false;
        at = below->second;
    }
    return true; // too many
}

void readSegments(AnnotationContext& context) {
    StepFile& file = context.file;
    std::set<std::uint64_t> below;
    for (const Instance& relation : file.structure().all("GEOMETRIC_TOLERANCE_RELATIONSHIP")) {
        const std::wstring name = nameOf(relation);
        const Instance upper = file.at(relation.parameters()[2]), lower = file.at(relation.parameters()[3]);
        const bool isSegment = (name == L"composite" || name == L"precedence") && upper && lower &&
                               characteristicOf(upper) == characteristicOf(lower) &&
                               !isAbove(context.segmentBelow, lower, upper);
        if (isSegment && below.insert(lower.number()).second &&
            context.segmentBelow.try_emplace(upper.number(), lower).second)
            continue;
        tell(file, L"the relation '" + name + L"' of tolerances does not travel", relation);
    }
}

} // namespace

AnnotationContext::AnnotationContext(StepFile& stepFile) : file(stepFile) {
    for (const Instance& each : file.structure().all("MEASURE_QUALIFICATION"))
        qualifications[each.parameters()[2].reference()].push_back(each);
    readSegments(*this);
}

void tell(StepFile& file, std::wstring reason, const Instance& instance) {
    file.losses().add("semantic annotations", std::move(reason), instance.number());
}

SemanticAnnotation annotationOf(StepFile& file, const Instance& instance, ExcPMIAnnotationPtr annotation) {
    annotation->setId(idOf(instance));
    const Instance product = file.product(instance);
    return {{instance.number()}, product.number(), std::move(annotation)};
}

std::vector<Instance> representationsOf(const StepFile& file, const Instance& instance) {
    std::vector<Instance> result;
    for (const Instance& property : instance.users("PROPERTY_DEFINITION"))
        for (const Instance& user : property.users())
            if (user.is("PROPERTY_DEFINITION_REPRESENTATION") || user.is("SHAPE_DEFINITION_REPRESENTATION"))
                result.push_back(file.at(user.parameters()[1]));
    return result;
}

std::vector<Instance> itemsOf(const StepFile& file, const Value& list) {
    std::vector<Instance> result, rest = file.referred(list);
    for (std::size_t i = 0; i < rest.size() && i < mostItems; ++i) {
        const Instance item = rest[i];
        if (item.is("COMPOUND_REPRESENTATION_ITEM") || item.is("VALUE_RANGE"))
            std::ranges::copy(item.references(), std::back_inserter(rest));
        else
            result.push_back(item);
    }
    return result;
}

std::wstring numberText(double value, int decimals) {
    std::array<char, 400> text{};
    if (decimals > 0)
        std::snprintf(text.data(), text.size(), "%.*f", std::min(decimals, 15), value);
    else
        std::snprintf(text.data(), text.size(), "%.9g", value);
    return wide(text.data());
}

void append(std::wstring& text, std::wstring_view words) {
    if (words.empty()) return;
    if (!text.empty()) text += L' ';
    text += words;
}

std::wstring wide(std::string_view text) {
    std::wstring result;
    for (const char c : text) result += static_cast<unsigned char>(c) < 0x80 ? static_cast<wchar_t>(c) : L'?';
    return result;
}

void link(const StepFile& file, ExcPMIAnnotation& annotation, const std::vector<Instance>& targets,
          const std::wstring& description) {
    std::set<std::uint64_t> known;
    const auto linkItems = [&](const Instance& aspect) {
        for (const Instance& item : file.items(aspect)) {
            if (!known.insert(item.number()).second) continue;
            const ExcEntityPtr entity = entityOf(item);
            if (!description.empty()) entity->description() = description;
            annotation.addLinkedElement(entity);
        }
    };
    for (const Instance& target : targets) {
        if (target.is("PRODUCT_DEFINITION_SHAPE") || target.is("PRODUCT_DEFINITION")) continue;
        for (const Instance& aspect : aspectsOfDimension(file, target)) linkItems(aspect);
        for (const Instance& feature : featuresOfDatum(file, target)) linkItems(feature);
        linkItems(target);
    }
}

std::vector<SemanticAnnotation> readSemanticPMI(StepFile& file) {
    const part21::ExchangeStructure& structure = file.structure();
    std::map<Instance, Kind> found; // in the order of the file
    for (const Type& type : types)
        for (const Instance& instance : structure.all(type.name)) found.try_emplace(instance, type.kind);
    for (const Instance& property : structure.all("PROPERTY_DEFINITION"))
        if (nameOf(property) == L"semantic text") found.try_emplace(property, Kind::note);

    AnnotationContext context(file);
    std::set<std::uint64_t> segments;
    for (const auto& [above, segment] : context.segmentBelow) segments.insert(segment.number());

    std::vector<SemanticAnnotation> result;
    result.reserve(found.size());
    const auto keep = [&result](std::optional<SemanticAnnotation> annotation) {
        if (annotation) result.push_back(std::move(*annotation));
    };
    for (const auto& [instance, kind] : found) {
        switch (kind) {
        case Kind::dimension:
            keep(readDimension(context, instance));
            break;
        case Kind::tolerance:
            if (!segments.contains(instance.number())) keep(readTolerance(context, instance));
            break;
        case Kind::datum:
            keep(readDatum(file, instance));
            break;
        case Kind::datum_target:
            keep(readDatumTarget(file, instance));
            break;
        case Kind::note:
            keep(readNote(file, instance));
            break;
        }
    }
    return result;
}

} // namespace zeq::step
