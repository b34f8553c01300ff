// One function a kind of annotation; what an entity needs stands before it.
#include "pmi_meaning.h"

namespace samples {

PmiMeaning::PmiMeaning(Instances& instances, const StepNumbers& file)
    : m_instances(instances), m_file(file) {}

int PmiMeaning::feature(const std::string& name, const std::vector<int>& faces) {
    const std::string rest = "',$," + ref(m_file.shape) + ",.T.)";
    const auto addFeature = [&](const char* type) { return m_instances.add(type + ("('" + name) + rest); };
    const auto addFace = [&](int feature, int face) {
        m_instances.add("GEOMETRIC_ITEM_SPECIFIC_USAGE('',''," + ref(feature) + ',' +
                        ref(m_file.representation) + ',' + ref(face) + ')');
    };
    if (faces.size() == 1) {
        const int single = addFeature("SHAPE_ASPECT");
        addFace(single, faces[0]);
        return single;
    }
    const int all = addFeature("COMPOSITE_SHAPE_ASPECT");
    for (const int face : faces) {
        const int each = addFeature("SHAPE_ASPECT");
        addFace(each, face);
        m_instances.add("SHAPE_ASPECT_RELATIONSHIP('',$," + ref(all) + ',' + ref(each) + ')');
    }
    return all;
}

Datum PmiMeaning::datum(const std::string& letter, int face) {
    Datum result{};
    result.feature =
        m_instances.add("DATUM_FEATURE('datum feature " + letter + "',$," + ref(m_file.shape) + ",.T.)");
    result.datum = m_instances.add("DATUM('',$," + ref(m_file.shape) + ",.F.,'" + letter + "')");
    m_instances.add("SHAPE_ASPECT_RELATIONSHIP('',$," + ref(result.feature) + ',' + ref(result.datum) + ')');
    m_instances.add("GEOMETRIC_ITEM_SPECIFIC_USAGE('',''," + ref(result.feature) + ',' +
                    ref(m_file.representation) + ',' + ref(face) + ')');
    return result;
}

int PmiMeaning::diameter(int feature, double value, const Deviations& deviations) {
    const int size = m_instances.add("DIMENSIONAL_SIZE(" + ref(feature) + ",'diameter')");
    setValue(size, {lengthItem("nominal value", value, 0)});
    const auto deviation = [this](double by) { return ref(length("LENGTH_MEASURE", by)); };
    const std::string lower = deviation(deviations.lower);
    const int values = m_instances.add("TOLERANCE_VALUE(" + lower + ',' + deviation(deviations.upper) + ')');
    m_instances.add("PLUS_MINUS_TOLERANCE(" + ref(values) + ',' + ref(size) + ')');
    return size;
}

int PmiMeaning::diameterWithFit(int feature, double value, const std::string& zone,
                                const std::string& grade) {
    const int size = m_instances.add("DIMENSIONAL_SIZE(" + ref(feature) + ",'diameter')");
    setValue(size, {lengthItem("nominal value", value, 0)});
    const int fit = m_instances.add("LIMITS_AND_FITS('" + zone + "','hole','" + grade + "','')");
    m_instances.add("PLUS_MINUS_TOLERANCE(" + ref(fit) + ',' + ref(size) + ')');
    return size;
}

int PmiMeaning::distance(int from, int to, double value, const Limits& limits) {
    const int location =
        m_instances.add("DIMENSIONAL_LOCATION('linear distance',$," + ref(from) + ',' + ref(to) + ')');
    setValue(location, {lengthItem("nominal value", value, 0), lengthItem("lower limit", limits.lower, 1),
                        lengthItem("upper limit", limits.upper, 1)});
    return location;
}

int PmiMeaning::exactDistance(int from, int to, double value) {
    const int location =
        m_instances.add("DIMENSIONAL_LOCATION('linear distance',$," + ref(from) + ',' + ref(to) + ')');
    setValue(location,
             {lengthItem("nominal value", value, 0),
              m_instances.add("DESCRIPTIVE_REPRESENTATION_ITEM('dimensional note','theoretical')")});
    return location;
}

int PmiMeaning::flatness(int feature, double magnitude) {
    return m_instances.add("FLATNESS_TOLERANCE('flatness',''," + ref(this->magnitude(magnitude)) + ',' +
                           ref(feature) + ')');
}

int PmiMeaning::perpendicularity(int feature, double magnitude, const Datum& datum) {
    const std::string system = ref(datumSystem({datum}));
    return m_instances.add("PERPENDICULARITY_TOLERANCE('perpendicularity',''," +
                           ref(this->magnitude(magnitude)) + ',' + ref(feature) + ",(" + system + "))");
}

int PmiMeaning::position(int feature, double magnitude, const std::vector<Datum>& datums) {
    const std::string system = ref(datumSystem(datums));
    const int tolerance = m_instances.add(
        "(GEOMETRIC_TOLERANCE('position',''," + ref(this->magnitude(magnitude)) + ',' + ref(feature) +
        ")GEOMETRIC_TOLERANCE_WITH_DATUM_REFERENCE((" + system +
        "))GEOMETRIC_TOLERANCE_WITH_MODIFIERS((.MAXIMUM_MATERIAL_REQUIREMENT.))POSITION_TOLERANCE())");
    const int form = m_instances.add("TOLERANCE_ZONE_FORM('cylindrical or circular')");
    m_instances.add("TOLERANCE_ZONE('',$," + ref(m_file.shape) + ",.F.,(" + ref(tolerance) + ")," +
                    ref(form) + ')');
    return tolerance;
}

void PmiMeaning::material(const Material& material) {
    const auto addProperty = [this](const char* name, int item) {
        const int property = m_instances.add(std::string("PROPERTY_DEFINITION('material property','") + name +
                                             "'," + ref(m_file.shape) + ')');
        const int values = m_instances.add(std::string("REPRESENTATION('") + name + "',(" + ref(item) + ")," +
                                           ref(m_file.context) + ')');
        m_instances.add("PROPERTY_DEFINITION_REPRESENTATION(" + ref(property) + ',' + ref(values) + ')');
    };
    const auto power = [this](const char* unit, const char* exponent) {
        return m_instances.add("DERIVED_UNIT_ELEMENT(" + ref(m_instances.add(unit)) + ',' + exponent + ')');
    };
    addProperty("material name", m_instances.add("DESCRIPTIVE_REPRESENTATION_ITEM('" + material.name + "','" +
                                                 material.description + "')"));
    const int mass = power("(MASS_UNIT()NAMED_UNIT(*)SI_UNIT($,.GRAM.))", "1.");
    const int volume = power("(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.CENTI.,.METRE.))", "-3.");
    const int unit = m_instances.add("DERIVED_UNIT(" + refs({mass, volume}) + ')');
    addProperty("density",
                m_instances.add("MEASURE_REPRESENTATION_ITEM('density measure',POSITIVE_RATIO_MEASURE(" +
                                real(material.density) + ")," + ref(unit) + ')'));
}

int PmiMeaning::note(int feature, const std::u32string& text) {
    const int property = m_instances.add("PROPERTY_DEFINITION('semantic text',''," + ref(feature) + ')');
    const int item = m_instances.add("DESCRIPTIVE_REPRESENTATION_ITEM(''," + quoted(text) + ')');
    const int values = m_instances.add("REPRESENTATION('',(" + ref(item) + ")," + ref(m_file.context) + ')');
    m_instances.add("PROPERTY_DEFINITION_REPRESENTATION(" + ref(property) + ',' + ref(values) + ')');
    const int general = m_instances.add("GENERAL_PROPERTY('','semantic text',$)");
    m_instances.add("GENERAL_PROPERTY_ASSOCIATION('',$," + ref(general) + ',' + ref(property) + ')');
    return property;
}

int PmiMeaning::length(const std::string& kind, double value) {
    return m_instances.add("LENGTH_MEASURE_WITH_UNIT(" + kind + '(' + real(value) + ")," +
                           ref(m_file.lengthUnit) + ')');
}

int PmiMeaning::lengthItem(const std::string& name, double value, int decimals) {
    // Digits before and behind the decimal point.
    const int format =
        m_instances.add("VALUE_FORMAT_TYPE_QUALIFIER('NR2 2." + std::to_string(decimals) + "')");
    return m_instances.add(
        "(LENGTH_MEASURE_WITH_UNIT()MEASURE_REPRESENTATION_ITEM()MEASURE_WITH_UNIT(LENGTH_MEASURE(" +
        real(value) + ")," + ref(m_file.lengthUnit) + ")QUALIFIED_REPRESENTATION_ITEM((" + ref(format) +
        "))REPRESENTATION_ITEM('" + name + "'))");
}

int PmiMeaning::magnitude(double value) { return length("LENGTH_MEASURE", value); }

int PmiMeaning::datumSystem(const std::vector<Datum>& datums) {
    std::vector<int> compartments;
    compartments.reserve(datums.size());
    for (const Datum& each : datums)
        compartments.push_back(m_instances.add("DATUM_REFERENCE_COMPARTMENT('',$," + ref(m_file.shape) +
                                               ",.F.," + ref(each.datum) + ",$)"));
    return m_instances.add("DATUM_SYSTEM('',$," + ref(m_file.shape) + ",.F.," + refs(compartments) + ')');
}

void PmiMeaning::setValue(int dimension, const std::vector<int>& items) {
    const int values =
        m_instances.add("SHAPE_DIMENSION_REPRESENTATION(''," + refs(items) + ',' + ref(m_file.context) + ')');
    m_instances.add("DIMENSIONAL_CHARACTERISTIC_REPRESENTATION(" + ref(dimension) + ',' + ref(values) + ')');
}

} // namespace samples
