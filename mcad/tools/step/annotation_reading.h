// What the readers of single annotations share. Internal.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "step/semantic_pmi.h"

namespace zeq::step {

/// What is looked up once for all annotations of a file.
struct AnnotationContext {
    explicit AnnotationContext(StepFile& stepFile);

    StepFile& file;
    /// The MEASURE_QUALIFICATIONs of measures, by the measures' numbers.
    std::unordered_map<std::uint64_t, std::vector<Instance>> qualifications;
    /// The segments of composite tolerances, by the number of the one above. Never circular.
    std::unordered_map<std::uint64_t, Instance> segmentBelow;
};

/// Adds to the losses.
void tell(StepFile& file, std::wstring reason, const Instance& instance);

/// One annotation with name, id and product of an instance.
SemanticAnnotation annotationOf(StepFile& file, const Instance& instance, ExcPMIAnnotationPtr annotation);
/// Links what the targets stand for, each element once. A target is an aspect; a dimension or a datum stands for its
/// aspects or features; a whole product for nothing.
/// @param description of the elements that get linked; empty for what they have
void link(const StepFile& file, ExcPMIAnnotation& annotation, const std::vector<Instance>& targets,
          const std::wstring& description = {});
/// The aspects that a dimension is about.
std::vector<Instance> aspectsOfDimension(const StepFile& file, const Instance& dimension);
/// The instances that are related to a datum as its features and targets.
std::vector<Instance> featuresOfDatum(const StepFile& file, const Instance& datum);
bool isDatumTarget(const Instance& instance);

/// The representations of the properties of an instance.
std::vector<Instance> representationsOf(const StepFile& file, const Instance& instance);
/// What a list refers to, with the elements of compounds in place of these.
std::vector<Instance> itemsOf(const StepFile& file, const Value& list);

/// A number to be read by people: with so many decimals, or the shortest of nine digits at most.
std::wstring numberText(double value, int decimals = 0);
/// Appends words, a blank apart.
void append(std::wstring& text, std::wstring_view words);
/// ASCII only; other bytes become question marks.
std::wstring wide(std::string_view text);

/// Nothing, which was told, when it has no value.
std::optional<SemanticAnnotation> readDimension(AnnotationContext& context, const Instance& dimension);
/// The characteristic that a tolerance is of; `unknown` for one that only its name tells.
ExcPMIGDT::EToleranceType characteristicOf(const Instance& tolerance);
/// With the segments below it. Nothing, which was told, when no magnitude can be read.
std::optional<SemanticAnnotation> readTolerance(AnnotationContext& context, const Instance& tolerance);
/// The frame of the datum systems or datum references of a tolerance; null if there are none.
std::shared_ptr<ExcPMIGDT::Frame> readFrame(StepFile& file, const Instance& tolerance);
SemanticAnnotation readDatum(StepFile& file, const Instance& datum);
SemanticAnnotation readDatumTarget(StepFile& file, const Instance& target);
/// Nothing, which was told, when it has no text.
std::optional<SemanticAnnotation> readNote(StepFile& file, const Instance& property);

} // namespace zeq::step
