// What is read of parts beside shape and annotations, from exchange structures written for it and from real models.
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "step/part_data.h"
#include "text/text.h"

namespace zeq::step {
namespace {

/// Two parts: a body #10 with the faces #12 and #13 and the edge #17 in millimetres, a face #42 in inches.
const std::string twoParts = R"(
#1=PRODUCT_DEFINITION('','',#2,$);#2=PRODUCT_DEFINITION_FORMATION('','',#3);#3=PRODUCT('one','one','',());
#4=PRODUCT_DEFINITION_SHAPE('','',#1);#5=SHAPE_DEFINITION_REPRESENTATION(#4,#6);
#6=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#10),#7);
#7=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#8))REPRESENTATION_CONTEXT('',''));
#8=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));#9=(MASS_UNIT()NAMED_UNIT(*)SI_UNIT(.KILO.,.GRAM.));
#10=MANIFOLD_SOLID_BREP('',#11);#11=CLOSED_SHELL('',(#12,#13));
#12=ADVANCED_FACE('',(#14),#20,.T.);#13=ADVANCED_FACE('NONE',(#14),#20,.T.);
#14=FACE_BOUND('',#15,.T.);#15=EDGE_LOOP('',(#16));#16=ORIENTED_EDGE('',*,*,#17,.T.);
#17=EDGE_CURVE('12',#18,#18,#23,.T.);#18=VERTEX_POINT('',#21);#19=CIRCLE('',#22,1.);#20=PLANE('',#22);
#21=CARTESIAN_POINT('',(0.,0.,0.));#22=AXIS2_PLACEMENT_3D('',#21,$,$);#23=SURFACE_CURVE('',#19,(),.CURVE_3D.);
#31=PRODUCT_DEFINITION('','',#32,$);#32=PRODUCT_DEFINITION_FORMATION('','',#33);#33=PRODUCT('two','two','',());
#34=PRODUCT_DEFINITION_SHAPE('','',#31);#35=SHAPE_DEFINITION_REPRESENTATION(#34,#36);
#36=SHAPE_REPRESENTATION('',(),#37);#38=SHAPE_REPRESENTATION_RELATIONSHIP('','',#36,#39);
#39=MANIFOLD_SURFACE_SHAPE_REPRESENTATION('',(#40),#37);
#37=(GEOMETRIC_REPRESENTATION_CONTEXT(3)GLOBAL_UNIT_ASSIGNED_CONTEXT((#43))REPRESENTATION_CONTEXT('',''));
#40=SHELL_BASED_SURFACE_MODEL('',(#41));#41=OPEN_SHELL('',(#42));#42=ADVANCED_FACE('',(),#20,.T.);
#43=(CONVERSION_BASED_UNIT('INCH',#44)LENGTH_UNIT()NAMED_UNIT($));
#44=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#8);
)";

std::string utf8(const std::wstring& text) { return text::validUtf8(text); }

std::string textOf(const ExcEntity& entity) {
    if (!entity.fsp()) return utf8(entity.id());
    return std::to_string(entity.fsp()->subentId());
}

std::string textOf(const ExcVector3d& v) {
    std::ostringstream out;
    out << v.x() + 0.0 << ' ' << v.y() + 0.0 << ' ' << v.z() + 0.0; // no negative zero
    return out.str();
}

void write(std::ostream& out, const ExcMechanicalMiscData& misc) {
    for (const ExcMiscPropertiesGroup& group : misc.miscData().groups())
        for (const ExcMiscProperty& property : group.properties())
            out << "  [" << utf8(group.name()) << "] " << utf8(property.name()) << " = "
                << utf8(property.value()) << '|' << utf8(property.unit()) << '|'
                << static_cast<int>(property.type()) << '\n';
    for (const ExcMiscLayerPtr& layer : misc.layers()) {
        out << "  layer " << layer->id() << " '" << utf8(layer->name()) << "':";
        for (const ExcEntityPtr& entity : layer->entities()) out << ' ' << textOf(*entity);
        out << '\n';
    }
    for (const ExcMiscWCSPtr& system : misc.worldCoordinateSystems())
        out << "  system " << utf8(system->name()) << " at " << textOf(system->origin()) << " x "
            << textOf(system->x()) << " y " << textOf(system->y()) << " layer " << system->layerId()
            << (system->isShown() ? "" : " hidden") << '\n';
    for (const ExcMiscMaterialPtr& material : misc.materials()) {
        out << "  material '" << utf8(material->name())
            << (material->isPartLevelMaterial() ? "' of the part" : "'");
        for (const ExcEntityPtr& entity : material->linkedElements()) out << ' ' << textOf(*entity);
        for (int which = 0; which < 10; ++which)
            if (const auto property = material->get(static_cast<ExcMiscMaterial::EProperty>(which))) {
                const auto& units = property->unit();
                out << ", " << which << ": " << property->value();
                for (const auto& unit : {units.materialUnits, units.mass, units.length})
                    out << ' ' << (unit ? utf8(unit->units()) : "-");
            }
        out << '\n';
    }
}

/// All that is read of a file, a line each, with losses and counts that differ from what is sent.
std::string read(const std::string& text) {
    const part21::ExchangeStructure structure(text);
    StepFile file(structure, 10);
    PartContents contents = readPartData(file, L"cm");
    std::map<std::string, std::size_t> accounted;
    std::ostringstream out;
    for (const auto& [number, part] : contents.parts) {
        out << '#' << number << '\n';
        if (part.misc) {
            write(out, *part.misc);
            accounted["layers"] += part.misc->layers().size();
            accounted["materials"] += part.misc->materials().size();
            for (const auto& group : part.misc->miscData().groups())
                accounted["properties"] += group.properties().size();
        }
        if (part.entities)
            for (const auto& info : part.entities->data())
                out << "  " << textOf(*info->entity()) << " '" << utf8(info->name()) << '\''
                    << (info->isHidden() ? " hidden" : "") << " line " << static_cast<int>(info->lineType())
                    << ' ' << info->lineThickness() << '\n';
    }
    for (const auto& [items, numbers] : file.losses().all()) {
        out << "lost " << items.kind << ": " << utf8(items.reason);
        for (const std::uint64_t number : numbers) out << " #" << number;
        out << '\n';
        accounted[items.kind] += numbers.size();
    }
    if (const auto colors = contents.inFile["colours"].size(); colors > 0)
        out << "colours " << colors << '\n';
    for (const char* kind : {"layers", "materials", "properties"})
        EXPECT_EQ(contents.inFile[kind].size(), accounted[kind]) << kind << " sent and left out\n" << text;
    return out.str();
}

std::string exchangeStructure(const std::string& data) {
    return "ISO-10303-21;HEADER;FILE_SCHEMA(('AP242'));ENDSEC;DATA;" + data + "ENDSEC;END-ISO-10303-21;";
}

TEST(PartData, SaysWhatTheFileSays) {
    struct Case {
        const char* name;
        const char* instances;
        const char* expected;
    };
    const Case cases[] = {
        {"nothing but placeholders", "", ""},
        {"layers are of the parts that have items on them; numbers are ids, other names get free ones",
         "#50=PRESENTATION_LAYER_ASSIGNMENT('007','',(#12,#42,#12));"
         "#51=PRESENTATION_LAYER_ASSIGNMENT('axes','the axes',(#52));#52=STYLED_ITEM('',(),#17);"
         "#53=PRESENTATION_LAYER_ASSIGNMENT('007','',(#10));#54=PRESENTATION_LAYER_ASSIGNMENT('1','',(#99,#"
         "55));"
         "#55=ANNOTATION_PLANE('',(),#20,());#56=PRESENTATION_LAYER_ASSIGNMENT('',' ',());",
         "#1\n  [descriptions of layers] axes = the axes||1\n  layer 7 '007': 12 #10\n  layer 2 'axes': 17\n"
         "#31\n  layer 7 '007': 42\n"
         "lost layers: nothing lies on it #56\nlost layers: what lies on it belongs to no part #54\n"},
        {"materials with density, of the part and of a body; a quantity without unit is left out",
         "#50=PROPERTY_DEFINITION('material property','material name',#1);"
         "#51=PROPERTY_DEFINITION_REPRESENTATION(#50,#52);#52=REPRESENTATION('material name',(#53),#7);"
         "#53=DESCRIPTIVE_REPRESENTATION_ITEM('S235','Steel');#54=PROPERTY_DEFINITION('material "
         "property','density',#4);"
         "#55=PROPERTY_DEFINITION_REPRESENTATION(#54,#56);#56=REPRESENTATION('density',(#57,#61,#62),#7);"
         "#57=MEASURE_REPRESENTATION_ITEM('density measure',POSITIVE_RATIO_MEASURE(7850.),#58);"
         "#58=DERIVED_UNIT((#59,#60));#59=DERIVED_UNIT_ELEMENT(#9,1.);#60=DERIVED_UNIT_ELEMENT(#8,-3.);"
         "#61=REAL_REPRESENTATION_ITEM('Poisson''s ratio',0.3);#62=REAL_REPRESENTATION_ITEM('Young',210000.);"
         "#63=MATERIAL_DESIGNATION('Brass',(#64));#64=SHAPE_ASPECT('','',#34,.F.);"
         "#65=GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#64,#39,#42);",
         "#1\n  [material property] description = Steel||1\n  material 'S235' of the part, 1: 7850 "
         "kilogram/millimetre^3 kilogram millimetre, 3: 0.3 - - "
         "-\n"
         "#31\n  material 'Brass' 42\nlost properties: a quantity of a material has no unit #62\n"},
        {"a raw material that the part is made from",
         "#50=PRODUCT_DEFINITION('','',#51,$);#51=PRODUCT_DEFINITION_FORMATION('','',#52);"
         "#52=PRODUCT('AMS 1','Titanium','',());#53=MAKE_FROM_USAGE_OPTION('','','',#31,#50,1,'',#54);"
         "#55=PROPERTY_DEFINITION('material "
         "property','density',#50);#56=PROPERTY_DEFINITION_REPRESENTATION(#55,#57);"
         "#57=REPRESENTATION('grain',(#58),#7);#58=DESCRIPTIVE_REPRESENTATION_ITEM('grain','fine');",
         "#31\n  [material property] grain = fine||1\n  material 'Titanium' of the part\n"},
        {"validation properties travel in the unit of the structure, attributes as they are; text is no "
         "material",
         "#50=PROPERTY_DEFINITION('geometric validation property','volume',#34);"
         "#51=PROPERTY_DEFINITION_REPRESENTATION(#50,#52);#52=REPRESENTATION('',(#53,#57,#60),#37);"
         "#53=MEASURE_REPRESENTATION_ITEM('volume "
         "measure',VOLUME_MEASURE(1000.),#54);#54=DERIVED_UNIT((#55));"
         "#55=DERIVED_UNIT_ELEMENT(#8,3.);#57=CARTESIAN_POINT('centre point',(1.,2.,0.));"
         "#60=MEASURE_REPRESENTATION_ITEM('curve length',LENGTH_MEASURE(2.),#43);"
         "#61=PROPERTY_DEFINITION('MaterialMissing',$,#1);#62=GENERAL_PROPERTY_ASSOCIATION('',$,#63,#61);"
         "#63=GENERAL_PROPERTY('','MaterialMissing',$);#64=PROPERTY_DEFINITION_REPRESENTATION(#61,#65);"
         "#65=REPRESENTATION('',(#66,#67,#68,#69),#7);#66=DESCRIPTIVE_REPRESENTATION_ITEM('','TRUE');"
         "#67=INTEGER_REPRESENTATION_ITEM('n',22.);#68=BOOLEAN_REPRESENTATION_ITEM('b',.F.);"
         "#69=VALUE_REPRESENTATION_ITEM('v',NUMERIC_MEASURE(0.5));#70=PRODUCT_RELATED_PRODUCT_CATEGORY('','',"
         "(#3));",
         "#1\n  [user-defined attributes] MaterialMissing = TRUE||1\n  [user-defined attributes] n = 22||2\n"
         "  [user-defined attributes] b = false||4\n  [user-defined attributes] v = 0.5||3\n"
         "#31\n  [geometric validation property] volume measure = 1|cm^3|3\n"
         "  [geometric validation property] centre point = 2.54, 5.08, 0|cm|1\n"
         "  [geometric validation property] curve length = 5.08|cm|3\n"},
        {"properties of what is in a part say of what; notes are none; what has no value or part is told",
         "#50=PROPERTY_DEFINITION('pmi validation property','',#51);#51=FLATNESS_TOLERANCE('F1','',#52,#53);"
         "#52=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#8);#53=SHAPE_ASPECT('','',#4,.T.);"
         "#54=PROPERTY_DEFINITION_REPRESENTATION(#50,#55);#55=REPRESENTATION('',(#56,#22,#57),#7);"
         "#56=INTEGER_REPRESENTATION_ITEM('elements',1);#57=MEASURE_REPRESENTATION_ITEM('m',AREA_MEASURE(1.),"
         "#99);"
         "#58=PROPERTY_DEFINITION('document property','',#59);#59=DOCUMENT_FILE('','',$,$,'',$);"
         "#60=PROPERTY_DEFINITION_REPRESENTATION(#58,#55);#61=PROPERTY_DEFINITION('semantic text','',#53);"
         "#62=PROPERTY_DEFINITION_REPRESENTATION(#61,#55);",
         "#1\n  [pmi validation property: flatness_tolerance #51 F1] elements = 1||2\n"
         "lost properties: it is no single value #22\nlost properties: its unit is not understood #57\n"
         "lost properties: what it is about belongs to no part #56 #22 #57\n"},
        {"product, version and their descriptions where they say more than the name",
         "#70=PRODUCT_DEFINITION('','',#71,$);#71=PRODUCT_DEFINITION_FORMATION('B','None',#72);"
         "#72=PRODUCT('12-34','bolt','a bolt',());#73=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#1,#70,$);",
         "#70\n  [product] id = 12-34||1\n  [product] description = a bolt||1\n  [product] version = B||1\n"},
        {"named coordinate systems, right-handed, with layer and visibility",
         "#50=CONSTRUCTIVE_GEOMETRY_REPRESENTATION('',(#51,#22),#37);"
         "#52=CONSTRUCTIVE_GEOMETRY_REPRESENTATION_RELATIONSHIP('','',#36,#50);"
         "#51=AXIS2_PLACEMENT_3D('MCS',#53,#54,#55);#53=CARTESIAN_POINT('',(1.,0.,-1.));"
         "#54=DIRECTION('',(0.,-2.,0.));#55=DIRECTION('',(1.,1.,0.));"
         "#56=PRESENTATION_LAYER_ASSIGNMENT('61','',(#51));#57=STYLED_ITEM('',(),#51);#58=INVISIBILITY((#57))"
         ";",
         "#31\n  layer 61 '61': #51\n  system MCS at 2.54 0 -2.54 x 1 0 0 y 0 0 1 layer 61 hidden\n"
         "  #51 '' hidden line 0 0\n"},
        {"names, visibility by layer and styled item, lines of curves as those of their edges, distinct "
         "colours",
         "#50=PRESENTATION_LAYER_ASSIGNMENT('5','',(#51));#51=STYLED_ITEM('',(#60),#12);"
         "#52=INVISIBILITY((#50,#53));#53=OVER_RIDING_STYLED_ITEM('',(#60),#10,#51);"
         "#54=STYLED_ITEM('',(#61),#19);#55=STYLED_ITEM('',(#60),#42);"
         "#56=ANNOTATION_CURVE_OCCURRENCE('',(#66),#19);#57=INVISIBILITY((#56));"
         "#60=PRESENTATION_STYLE_ASSIGNMENT((#64));#61=PRESENTATION_STYLE_ASSIGNMENT((#62));"
         "#62=CURVE_STYLE('',#63,POSITIVE_LENGTH_MEASURE(0.5),#65);#63=DRAUGHTING_PRE_DEFINED_CURVE_FONT('"
         "dashed');"
         "#64=COLOUR_RGB('',1.,0.,0.);#65=COLOUR_RGB('',0.,1.,0.);#66=COLOUR_RGB('',0.,0.,1.);"
         "#70=ADVANCED_FACE('Cover "
         "1',(),#20,.T.);#71=OPEN_SHELL('',(#70));#72=CONTEXT_DEPENDENT_INVISIBILITY((#54),#6);",
         "#1\n  layer 5 '5': 12\n  #10 '' hidden line 0 0\n  12 '' hidden line 0 0\n  17 '' line 2 0.05\n"
         "lost properties: how it is named or shown, as it belongs to no part #70\n"
         "lost properties: what is hidden only in some views is shown #72\ncolours 2\n"},
        {"circles of references end",
         "#50=STYLED_ITEM('',(#50),#50);#51=PRESENTATION_LAYER_ASSIGNMENT('1','',(#50,#51));#52=INVISIBILITY("
         "(#50,#51));"
         "#53=PROPERTY_DEFINITION('x','',#53);#54=PROPERTY_DEFINITION_REPRESENTATION(#53,#55);"
         "#55=REPRESENTATION('',(#56),#55);#56=COMPOUND_REPRESENTATION_ITEM('',(#56,#57));"
         "#57=DESCRIPTIVE_REPRESENTATION_ITEM('a','b');",
         nullptr},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        const std::string found = read(exchangeStructure(twoParts + each.instances));
        if (each.expected) {
            EXPECT_EQ(found, each.expected);
        }
    }
}

TEST(PartData, BelongsToTheOnlyPartWhenNothingElseIsSaid) {
    const std::string onePart = twoParts.substr(0, twoParts.find("#31="));
    EXPECT_EQ(read(exchangeStructure(onePart + "#50=PRESENTATION_LAYER_ASSIGNMENT('1','',(#55));"
                                               "#55=ANNOTATION_PLANE('',(),#20,());")),
              "#1\n  layer 1 '1': #55\n");
}

TEST(PartData, OfRealModels) {
    struct Case {
        const char* file;
        std::vector<const char*> lines;
    };
    const Case cases[] = {
        {"nist_ctc_05_asme1_ap242-e1.stp",
         {"[user-defined attributes] MaterialMissingAssignments = TRUE||1", "layer 61 '061': #",
          "[attribute validation property] part user attributes = 12||3"}},
        {"nist_ctc_01_asme1_ap242-e1.stp",
         {"[geometric validation property] volume measure = 14644.822636",
          "[user-defined attributes] Company = ACME", "hidden"}},
        {"nist_stc_08_asme1_ap242-e3.stp",
         {"[geometric validation property] wetted area measure = 1916.87873141661|cm^2|3"}},
    };
    const std::filesystem::path folder = std::filesystem::path(ZEQ_TEST_DATA) / "../../../../shared/models";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << "no models in " << folder;
    for (const Case& each : cases) {
        std::ifstream in(folder / each.file, std::ios::binary);
        const std::string found = read(std::string(std::istreambuf_iterator<char>(in), {}));
        for (const char* line : each.lines)
            EXPECT_NE(found.find(line), found.npos) << each.file << ": " << line;
        EXPECT_EQ(found.find("  material"), found.npos) << each.file;
        EXPECT_EQ(found.find("lost layers"), found.npos) << each.file;
    }
}

} // namespace
} // namespace zeq::step
