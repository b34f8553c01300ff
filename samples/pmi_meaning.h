// Sizes, tolerances, datums and notes as data of a STEP file (ISO 10303-47 and -242), with the faces they apply to.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "export.h"
#include "instances.h"

namespace samples {

/// A feature with its datum.
struct Datum {
    int feature;
    int datum;
};

class PmiMeaning {
public:
    PmiMeaning(Instances& instances, const StepNumbers& file);

    /// What annotations are about: a face, or several that belong together.
    int feature(const std::string& name, const std::vector<int>& faces);
    Datum datum(const std::string& letter, int face);

    struct Deviations {
        double lower, upper;
    };
    struct Limits {
        double lower, upper;
    };
    /// A diameter with deviations.
    int diameter(int feature, double value, const Deviations& deviations);
    /// A diameter with a fit: "H", "7".
    int diameterWithFit(int feature, double value, const std::string& zone, const std::string& grade);
    /// A distance between limits.
    int distance(int from, int to, double value, const Limits& limits);
    /// A theoretically exact distance.
    int exactDistance(int from, int to, double value);

    int flatness(int feature, double magnitude);
    int perpendicularity(int feature, double magnitude, const Datum& datum);
    /// Cylindrical, at maximum material, with the datums in the order of their precedence.
    int position(int feature, double magnitude, const std::vector<Datum>& datums);

    /// What the part is made of, with its density in grams per cubic centimetre.
    void material(const Material& material);

    int note(int feature, const std::u32string& text);

private:
    int length(const std::string& kind, double value);
    int lengthItem(const std::string& name, double value, int decimals);
    int magnitude(double value);
    int datumSystem(const std::vector<Datum>& datums);
    void setValue(int dimension, const std::vector<int>& items);

    Instances& m_instances;
    const StepNumbers& m_file;
};

} // namespace samples
