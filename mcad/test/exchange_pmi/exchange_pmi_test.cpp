// Product and manufacturing information: its accessors, its lists, and how views find annotations.
#include <gtest/gtest.h>

#include <functional>
#include <map>

#include "mv_cvx/logger.h"
#include "support/case_lines.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/trace.h"
#include "zeq_api/exchange_pmi/annotation_set.h"

namespace zeq {
namespace {

using Lines = std::vector<test::LogLine>;

// Copies by accessors alone.

void copyObject(const ExcPMIObject& from, ExcPMIObject& to) {
    to.setName(from.name());
    to.setId(from.id());
    to.setHidden(from.isHidden());
}

void copyAnnotation(const ExcPMIAnnotation& from, ExcPMIAnnotation& to) {
    copyObject(from, to);
    to.setPosition(from.position());
    to.setOrientation(from.orientation());
    to.setAngle(from.angle());
    to.setZDepth(from.zDepth());
    to.addLinkedElements(from.linkedElements());
    to.addLeaders(from.leaders());
}

void copyZones(const auto& from, auto& to) {
    for (const ExcPMIGDT::ZoneModifier& zone : from.zoneModifiers())
        if (zone.hasMagnitude)
            to.addZoneModifier(zone.modifier, zone.magnitude);
        else
            to.addZoneModifier(zone.modifier);
}

void copy(const ExcPMIObject& from, ExcPMIObject& to) { copyObject(from, to); }

void copy(const ExcPMIText& from, ExcPMIText& to) {
    to.setAfterString(from.afterString());
    to.setBeforeString(from.beforeString());
    to.setBelowString(from.belowString());
    to.setLowerString(from.lowerString());
    to.setPrefixString(from.prefixString());
    to.setSuffixString(from.suffixString());
    to.setUpperString(from.upperString());
}

void copy(const ExcPMINote::Text& from, ExcPMINote::Text& to) {
    to.setLabel(from.label());
    to.setFontName(from.fontName());
    to.setFontType(from.fontType());
    to.setFixedPitch(from.fixedPitch());
    to.setHeight(from.height());
    to.setBold(from.bold());
    to.setItalic(from.italic());
    to.setUnderline(from.underline());
    to.setStrikeThrough(from.strikeThrough());
    to.setOverline(from.overline());
    to.setRatio(from.ratio());
    to.setSlant(from.slant());
    double r = 0, g = 0, b = 0;
    double a = 0;
    from.getRGBA(r, g, b, a);
    EXPECT_EQ(std::vector<double>(from.getRGBA(), from.getRGBA() + 4), (std::vector{r, g, b, a}));
    to.setRGBA(r, g, b, a);
}

void copy(const ExcPMINote& from, ExcPMINote& to) {
    copyAnnotation(from, to);
    to.addTexts(from.texts());
    to.setFlagNote(from.isFlagNote());
    to.setNOA(from.isNOA());
}

void copy(const ExcPMIDatumTarget& from, ExcPMIDatumTarget& to) {
    copyAnnotation(from, to);
    to.setLabel(from.label());
    to.setTargetType(from.targetType());
    to.setHasDiameter(from.hasDiameter());
    to.setUpperText(from.upperText());
    to.setLowerText(from.lowerText());
    to.setZonePoint1(from.zonePoint1());
    to.setZonePoint2(from.zonePoint2());
}

void copy(const ExcPMIDatum& from, ExcPMIDatum& to) {
    copyAnnotation(from, to);
    to.setLabel(from.label());
    to.setTargetIds(from.targetIds());
}

void copy(const ExcPMIGDT::ModifiedDatum& from, ExcPMIGDT::ModifiedDatum& to) {
    to.setDatumId(from.datumId());
    copyZones(from, to);
}

void copy(const ExcPMIGDT::DatumRef& from, ExcPMIGDT::DatumRef& to) {
    to.setLabel(from.label());
    to.setText(from.text());
    for (const auto& datum : from.modifiedDatums()) to.addModifiedDatum(datum);
}

void copy(const ExcPMIGDT::Frame& from, ExcPMIGDT::Frame& to) {
    to.setLabel(from.label());
    for (const auto& reference : from.datumRefs()) to.addDatumRef(reference);
}

void copy(const ExcPMIGDT::Row& from, ExcPMIGDT::Row& to) {
    to.setToleranceValueType(from.toleranceValueType());
    to.setToleranceValue(from.toleranceValue());
    to.setRefineTolerance(from.refineTolerance());
    double first = 0, second = 0;
    from.rateUnits(first, second);
    to.setRateUnit(first, second);
    copyZones(from, to);
    to.setReferenceFrame(from.referenceFrame());
}

void copy(const ExcPMIGDT& from, ExcPMIGDT& to) {
    copyAnnotation(from, to);
    to.setToleranceType(from.toleranceType());
    to.setAllAround(from.allAround());
    to.setNote(from.note());
    for (const auto& row : from.gdtRows()) to.addGdtRow(row);
}

void copy(const ExcPMIDimension& from, ExcPMIDimension& to) {
    copyAnnotation(from, to);
    to.setMainType(from.mainType());
    to.setSubType(from.subType());
    to.setCalloutFeatureAnnotationType(from.calloutFeatureAnnotationType());
    to.setCoord(from.coord());
    to.setValue(from.value());
    to.setUnit(from.unit());
    to.setValuePrecision(from.valuePrecision());
    to.setTolerancePrecisionValue(from.tolerancePrecisionValue());
    to.setNumericalToleranceUpper(from.numericalToleranceUpper());
    to.setNumericalToleranceLower(from.numericalToleranceLower());
    to.setAlphanumericalToleranceUpper(from.alphanumericalToleranceUpper());
    to.setAlphanumericalToleranceLower(from.alphanumericalToleranceLower());
    to.setNote(from.note());
    to.setCalloutText(from.calloutText());
    to.setHasFakeNumericalValue(from.hasFakeNumericalValue());
    to.setFakeNumericalValue(from.fakeNumericalValue());
    to.setHasFakeAlphanumericalValue(from.hasFakeAlphanumericalValue());
    to.setFakeAlphanumericalValue(from.fakeAlphanumericalValue());
    to.setDriving(from.isDriving());
    to.setLineStart(from.lineStart());
    to.setLineEnd(from.lineEnd());
    to.setArrowSymbolStart(from.arrowSymbolStart());
    to.setArrowSymbolEnd(from.arrowSymbolEnd());
    to.setSymbolOutside(from.isSymbolOutside());
}

void copy(const ExcPMIRoughness& from, ExcPMIRoughness& to) {
    copyAnnotation(from, to);
    to.setObtentionType(from.obtentionType());
    to.setApplicabilityType(from.applicabilityType());
    to.setFields(from.fields());
}

void copy(const ExcPMIAnnotationView& from, ExcPMIAnnotationView& to) {
    copyObject(from, to);
    to.setOrigin(from.origin());
    to.setVectorU(from.vectorU());
    to.setVectorV(from.vectorV());
    for (const auto& note : from.notes()) to.addNote(note);
    for (const auto& datum : from.datums()) to.addDatum(datum);
    for (const auto& target : from.datumTargets()) to.addDatumTarget(target);
    for (const auto& gdt : from.gdts()) to.addGdt(gdt);
    for (const auto& dimension : from.dimensions()) to.addDimension(dimension);
    for (const auto& roughness : from.roughness()) to.addRoughness(roughness);
}

void copy(const ExcPMICapture& from, ExcPMICapture& to) {
    copyObject(from, to);
    to.setCaptureHidden(from.isCaptureHidden());
    to.setCurrent(from.isCurrent());
    to.setHiddenText(from.hiddenText());
    to.setCamera(from.camera());
    to.setClippingPlane(from.clippingPlane());
    for (const auto& id : from.annotationIds()) to.addAnnotationId(id);
    for (const auto& entity : from.constructedGeometry()) to.addConstructedGeometry(entity);
    for (const auto& body : from.bodies()) to.addBody(body);
    to.setManageHideShow(from.manageHideShow());
}

void copy(const ExcPMIAnnotationSet& from, ExcPMIAnnotationSet& to) {
    to.setBlockId(from.blockId());
    to.setName(from.name());
    to.setHidden(from.isHidden());
    to.setStandart(from.standart());
    for (const auto& view : from.views()) to.addView(view);
    for (const auto& capture : from.captures()) to.addCapture(capture);
    for (const auto& entity : from.constructedGeometry()) to.addConstructedGeometry(entity);
}

/// The text of a copy, by accessors, of what a document becomes.
using Copied = std::function<std::wstring(const JsonValue&)>;

template <class T>
std::wstring copied(const JsonValue& document) {
    T from;
    T to;
    from.readObject(document);
    copy(from, to);
    return test::writtenBy(to);
}

TEST(Pmi, AccessorsCarryEveryMember) {
    std::map<std::wstring, Copied> classes{
        {L"ExcPMIObject", copied<ExcPMIObject>},
        {L"ExcPMIText", copied<ExcPMIText>},
        {L"ExcPMINote::Text", copied<ExcPMINote::Text>},
        {L"ExcPMINote", copied<ExcPMINote>},
        {L"ExcPMIDatumTarget", copied<ExcPMIDatumTarget>},
        {L"ExcPMIDatum", copied<ExcPMIDatum>},
        {L"ExcPMIGDT::ModifiedDatum", copied<ExcPMIGDT::ModifiedDatum>},
        {L"ExcPMIGDT::DatumRef", copied<ExcPMIGDT::DatumRef>},
        {L"ExcPMIGDT::Frame", copied<ExcPMIGDT::Frame>},
        {L"ExcPMIGDT::Row", copied<ExcPMIGDT::Row>},
        {L"ExcPMIGDT", copied<ExcPMIGDT>},
        {L"ExcPMIDimension", copied<ExcPMIDimension>},
        {L"ExcPMIRoughness", copied<ExcPMIRoughness>},
        {L"ExcPMIAnnotationView", copied<ExcPMIAnnotationView>},
        {L"ExcPMICapture", copied<ExcPMICapture>},
        {L"ExcPMIAnnotationSet", copied<ExcPMIAnnotationSet>},
    };
    test::forEachLine("cases/exchange_pmi.jsonl", [&classes](int number, const JsonValue& line) {
        if (line[L"case"] != L"all members") return;
        SCOPED_TRACE(number);
        const auto found = classes.extract(line[L"class"].GetString());
        ASSERT_FALSE(found.empty());
        JsonDocument document;
        document.CopyFrom(line[L"read"], document.GetAllocator());
        EXPECT_EQ(found.mapped()(document), test::textOf(document));
    });
    EXPECT_TRUE(classes.empty());
}

/// The text of one member of what an object writes.
std::wstring member(const IJsonObject& object, const wchar_t* key) {
    JsonDocument document;
    object.writeObject(document, document.GetAllocator());
    JsonDocument part;
    part.CopyFrom(document[key], part.GetAllocator());
    return test::textOf(part);
}

TEST(Pmi, PairsHaveTheirOrder) {
    ExcPMIDimension dimension;
    dimension.setNumericalToleranceLower(-0.5);
    dimension.setNumericalToleranceUpper(0.25);
    dimension.setAlphanumericalToleranceLower(L"low");
    dimension.setAlphanumericalToleranceUpper(L"up");
    dimension.setLineStart({1, 2});
    dimension.setLineEnd({3, 4});
    dimension.setArrowSymbolStart(ExcPMIDimension::EArrowSymbol::dot);
    dimension.setArrowSymbolEnd(ExcPMIDimension::EArrowSymbol::wave);
    EXPECT_EQ(member(dimension, L"numerical_tolerance"), L"[-0.5,0.25]");
    EXPECT_EQ(member(dimension, L"alphanumerical_tolerance"), LR"(["low","up"])");
    EXPECT_EQ(member(dimension, L"line"), L"[[1.0,2.0],[3.0,4.0]]");
    EXPECT_EQ(member(dimension, L"arrows"), LR"(["dot","wave"])");

    ExcPMIGDT::Row row;
    row.setRateUnit(1, 2);
    EXPECT_EQ(member(row, L"rate_unit"), L"[1.0,2.0]");
    ExcPMIDatumTarget target;
    target.setZonePoint1({1, 0, 0});
    target.setZonePoint2({2, 0, 0});
    EXPECT_EQ(member(target, L"target_zone"), L"[[1.0,0.0,0.0],[2.0,0.0,0.0]]");
}

TEST(Pmi, AFakeValueTravelsByItsFlagAlone) {
    ExcPMIDimension dimension;
    dimension.setFakeNumericalValue(1);
    dimension.setFakeAlphanumericalValue(L"x");
    EXPECT_EQ(test::writtenBy(dimension), test::writtenBy(ExcPMIDimension()));
    dimension.setHasFakeNumericalValue(true);
    test::readFrom(dimension, L"{}");
    EXPECT_FALSE(dimension.hasFakeNumericalValue());
    EXPECT_EQ(dimension.fakeNumericalValue(), 1);
}

TEST(Pmi, PlainListsTakeWhatTheyAreGiven) {
    ExcPMILeader leader;
    leader.addPoint({1, 2});
    leader.addPoint({3, 4});
    EXPECT_EQ(test::writtenBy(leader), LR"({"points":[[1.0,2.0],[3.0,4.0]]})");
    leader.setPoints({{5, 6}});
    EXPECT_EQ(test::writtenBy(leader), LR"({"points":[[5.0,6.0]]})");
    ExcPMIDatum datum;
    ExcPMIRoughness roughness;
    ExcPMICapture capture;
    for (int time = 0; time < 2; ++time) {
        datum.addTargetId(L"");
        roughness.addField(L"");
        capture.addAnnotationId(L"");
    }
    EXPECT_EQ(datum.targetIds().size(), 2U);
    EXPECT_EQ(roughness.fields().size(), 2U);
    EXPECT_EQ(capture.annotationIds().size(), 2U);
}

TEST(Pmi, RefusesNullWithAWarning) {
    ExcPMINote note;
    ExcPMIAnnotationView view;
    ExcPMICapture capture;
    ExcPMIAnnotationSet set;
    ExcPMIData data;
    const std::wstring before[] = {test::writtenBy(note), test::writtenBy(view), test::writtenBy(capture),
                                   test::writtenBy(set), test::writtenBy(data)};
    test::LogCapture log(mv_cvx::Warning);
    note.addLinkedElement(nullptr);
    note.addLeader(nullptr);
    note.addText(nullptr);
    view.addNote(nullptr);
    view.addDatum(nullptr);
    view.addDatumTarget(nullptr);
    view.addGdt(nullptr);
    view.addDimension(nullptr);
    view.addRoughness(nullptr);
    capture.addConstructedGeometry(nullptr);
    capture.addBody(nullptr);
    set.addView(nullptr);
    set.addCapture(nullptr);
    set.addConstructedGeometry(nullptr);
    data.addAnnotationSet(nullptr);
    Lines expected;
    for (const char* text : {
             "ExcPMIAnnotation: attempt to add null linked element",
             "ExcPMIAnnotation: attempt to add null PMI leader.",
             "ExcPMINote: attempt to add null text.",
             "ExcPMIAnnotationView: attempt to add null PMI Note object.",
             "ExcPMIAnnotationView: attempt to add null PMI Datum object.",
             "ExcPMIAnnotationView: attempt to add null PMI Datum Target object.",
             "ExcPMIAnnotationView: attempt ot add null PMI GDT object.",
             "ExcPMIAnnotationView: attempt to add null PMI Dimension object.",
             "ExcPMIAnnotationView: attempt to add null PMI Roughness object.",
             "ExcPMICapture: attempt to add null Constructed Geometry Entity object.",
             "ExcPMICapture: attempt to add null Body object.",
             "ExcPMIAnnotationSet: attempt to add null View object.",
             "ExcPMIAnnotationSet: attempt to add null Capture object.",
             "ExcPMIAnnotationSet: attempt to add null Constructed Geometry Entity object.",
             "ExcPMIData: attempt to add null PMI Annotation Set object.",
         })
        expected.push_back({mv_cvx::Warning, text});
    EXPECT_EQ(log.take(), expected);
    const std::wstring after[] = {test::writtenBy(note), test::writtenBy(view), test::writtenBy(capture),
                                  test::writtenBy(set), test::writtenBy(data)};
    EXPECT_TRUE(std::ranges::equal(before, after));
}

/// Adds a list with a null in it twice, then sets it; each null is dropped with the warning.
template <class T, class Note, class Child = std::shared_ptr<T>>
void expectNullsDropped(Note& note, void (Note::*add)(const std::vector<Child>&),
                        void (Note::*set)(const std::vector<Child>&),
                        const std::vector<Child>& (Note::*list)() const, const std::string& warning) {
    test::LogCapture log(mv_cvx::Warning);
    const auto first = std::make_shared<T>();
    const auto last = std::make_shared<T>();
    (note.*add)({first, nullptr, last});
    (note.*add)({nullptr, first});
    EXPECT_EQ((note.*list)(), (std::vector{first, last, first}));
    (note.*set)({last, nullptr, first});
    EXPECT_EQ((note.*list)(), (std::vector{last, first}));
    EXPECT_EQ(log.take(), Lines(3, {mv_cvx::Warning, warning}));
}

TEST(Pmi, DropsEachNullOfAList) {
    ExcPMINote note;
    expectNullsDropped<ExcEntity, ExcPMIAnnotation>(
        note, &ExcPMINote::addLinkedElements, &ExcPMINote::setLinkedElements, &ExcPMINote::linkedElements,
        "ExcPMIAnnotation: attempt to add null linked element");
    expectNullsDropped<ExcPMILeader, ExcPMIAnnotation>(note, &ExcPMINote::addLeaders, &ExcPMINote::setLeaders,
                                                       &ExcPMINote::leaders,
                                                       "ExcPMIAnnotation: attempt to add null PMI leader.");
    expectNullsDropped<ExcPMINote::Text>(note, &ExcPMINote::addTexts, &ExcPMINote::setTexts,
                                         &ExcPMINote::texts, "ExcPMINote: attempt to add null text.");
}

template <class T>
std::shared_ptr<T> withId(const std::wstring& id) {
    auto made = std::make_shared<T>();
    made->setId(id);
    return made;
}

TEST(Pmi, AViewFindsTheFirstAnnotationWithAnIdentifier) {
    ExcPMIAnnotationView view;
    test::LogCapture log(mv_cvx::Warning);
    const auto first = withId<ExcPMINote>(L"N1");
    const auto second = withId<ExcPMINote>(L"N1");
    view.addNote(first);
    view.addNote(second);
    EXPECT_EQ(view.notes(), (std::vector{first, second}));
    EXPECT_EQ(view.getAnnotationById(L"N1"), first);

    // The identifiers of all kinds are compared, those of annotations that were read too.
    test::readFrom(view, LR"({"datum":[{"id":"D"}],"GDTs":[{"id":"N1"}]})");
    view.datums().front()->setId(L"changed since");
    view.addDimension(withId<ExcPMIDimension>(L"D"));
    view.addDatumTarget(withId<ExcPMIDatumTarget>(L"T"));
    view.addRoughness(withId<ExcPMIRoughness>(L"T"));
    view.addGdt(withId<ExcPMIGDT>(L""));
    view.addDatum(withId<ExcPMIDatum>(L""));
    EXPECT_EQ(view.getAnnotationById(L"N1"), first);
    EXPECT_EQ(view.getAnnotationById(L"D"), view.datums().front());
    EXPECT_EQ(view.getAnnotationById(L"T"), view.datumTargets().front());
    EXPECT_EQ(view.getAnnotationById(L""), view.gdts().back());
    EXPECT_EQ(view.getAnnotationById(L"n1"), nullptr);
    Lines expected;
    for (const char* id : {"N1", "D", "T", ""})
        expected.push_back({mv_cvx::Warning, std::string("Duplicated PMI annotation id: ") + id});
    EXPECT_EQ(log.take(), expected);
    EXPECT_EQ(view.dimensions().size(), 1U);
    EXPECT_EQ(view.roughness().size(), 1U);
}

TEST(Pmi, TracesAsTheMechanicalData) {
    test::LogCapture log;
    ExcPMINote note;
    note.addText(std::make_shared<ExcPMINote::Text>());
    JsonDocument document;
    note.writeObject(document, document.GetAllocator());
    note.readObject(JsonValue(1));
    auto lines = test::signaturesOf(log.take(), "mcad/src/zeq_api/zeq_api_exchange_mechanical");
    std::erase_if(lines, [](const auto& line) { return line.find("ExcVectorBase") != line.npos; });
    const std::string write = "::writeObject(JsonValue &, JsonAllocator &) const";
    EXPECT_EQ(lines, (std::vector<std::string>{"virtual void zeq::ExcPMINote" + write,
                                               "virtual void zeq::ExcPMIAnnotation" + write,
                                               "virtual void zeq::ExcPMIObject" + write,
                                               "virtual void zeq::ExcPMINote::Text" + write,
                                               "virtual void zeq::ExcPMINote::readObject(const JsonValue &)",
                                               "ExcPMINote object should have a JSON object type."}));
}

} // namespace
} // namespace zeq
