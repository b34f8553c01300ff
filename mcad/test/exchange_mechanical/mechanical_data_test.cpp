// Mechanical data: accessors and refusals, which no document shows, and the sections that load() leaves out.
#include "zeq_api/exchange_mechanical/mechanical_data.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "mp/shared_buffer.h"
#include "mv_cvx/logger.h"
#include "support/child_process.h"
#include "support/json_text.h"
#include "support/log_capture.h"
#include "support/temp_dir.h"
#include "zeq_api/codec/binary_json.h"
#include "zeq_api/exchange_mechanical/mechanical_sections.h"
#include "zeq_api/exchange_object/exchange_object_wrapper.h"
#include "zeq_api/exchange_object/messages.h"
#include "zeq_api/exchange_structure/product_structure.h"

namespace zeq {
namespace {

template <class T, class Child>
void refuses(void (T::*add)(std::shared_ptr<Child>), const char* warning) {
    T object;
    test::LogCapture log(mv_cvx::Warning);
    (object.*add)(nullptr);
    EXPECT_EQ(log.take(), (std::vector<test::LogLine>{{mv_cvx::Warning, warning}}));
    EXPECT_EQ(test::writtenBy(object), test::writtenBy(T()));
}

TEST(MechanicalData, RefusesNullWithAWarning) {
    refuses(&ExcMiscLayer::addEntity, "ExcMiscLayer: attempt to add null Entity object.");
    refuses(&ExcMiscMaterial::addLinkedElement,
            "ExcMiscMaterial: attempt to add null Linked Element object.");
    refuses(&ExcMiscDisplaySet::addEntity, "ExcMiscDisplaySet: attempt to add null Entity object.");
    using Misc = ExcMechanicalMiscData;
    refuses(&Misc::addWorldCoordinateSystem, "ExcMechanicalMiscData: attempt to add null WCS object.");
    refuses(&Misc::addLayer, "ExcMechanicalMiscData: attempt to add null Layer object.");
    refuses(&Misc::addLayerFilter, "ExcMechanicalMiscData: attempt to add null Layer Filter object.");
    refuses(&Misc::addMaterial, "ExcMechanicalMiscData: attempt to add null Material object.");
    refuses(&Misc::addNoteParameters, "ExcMechanicalMiscData: attempt to add null Note Parameters object.");
    refuses(&Misc::addSymmetry, "ExcMechanicalMiscData: attempt to add null Symmetry object.");
    refuses(&Misc::addDisplaySet, "ExcMechanicalMiscData: attempt to add null Display Set object.");
    refuses(&ExcMfgObject::addLinkedElement, "ExcMfgObject: attempt to add null Linked Element object.");
    refuses(&ExcMfgFeatureHole::addLimitingGeometry,
            "ExcMfgFeatureHole: attempt to add null Limiting Geometry Entity object.");
    refuses(&ExcMfgFeatureHole::addDefiningGeometry,
            "ExcMfgFeatureHole: attempt to add null Defining Geometry Entity object.");
    using Thread = ExcMfgFeatureThread;
    refuses(&Thread::addSideFace, "ExcMfgFeatureThread: attempt to add null Side Face Entity object.");
    refuses(&Thread::addTopFace, "ExcMfgFeatureThread: attempt to add null Top Face Entity object.");
    refuses(&Thread::addBottomFace, "ExcMfgFeatureThread: attempt to add null Bottom Face Entity object.");
    refuses(&ExcMfgData::addSimpleHole, "ExcMfgData: attempt to add null Simple Hole object.");
    refuses(&ExcMfgData::addTaperHole, "ExcMfgData: attempt to add null Taper Hole object.");
    refuses(&ExcMfgData::addCounterBoreHole, "ExcMfgData: attempt to add null Counter Bore Hole object.");
    refuses(&ExcMfgData::addCounterSinkHole, "ExcMfgData: attempt to add null Counter Sink Hole object.");
    refuses(&ExcMfgData::addCounterDrillHole, "ExcMfgData: attempt to add null Counter Drill Hole object.");
    refuses(&ExcMfgData::addInternalThread, "ExcMfgData: attempt to add null Internal Thread object.");
    refuses(&ExcMfgData::addExternalThread, "ExcMfgData: attempt to add null External thread object.");
    refuses(&ExcMfgData::addUnclassifiedFeature,
            "ExcMfgData: attempt to add null Unclassified Feature object.");
    using Instance = ExcMfgPattern::Instance;
    refuses(&Instance::addLimiting, "ExcMfgPattern::Instance: attempt to add null Limiting Entity object.");
    refuses(&Instance::addDefining, "ExcMfgPattern::Instance: attempt to add null Defining Entity object.");
    refuses(&ExcEntityData::addData,
            "ExcEntityData: attempt to add null Topological Entity Information Data object.");
}

/// Sets a member, and looks at it through its getter.
template <class T, class Owner, class Argument, class Result, class Value>
void set(T& object, void (Owner::*setter)(Argument), Result (Owner::*getter)() const, const Value& value) {
    (object.*setter)(value);
    if constexpr (std::is_base_of_v<IJsonObject, Value>)
        EXPECT_EQ(test::writtenBy((object.*getter)()), test::writtenBy(value));
    else
        EXPECT_EQ((object.*getter)(), value);
}

/// What the object writes, from the last member of its base on.
std::wstring writtenAfter(const wchar_t* member, const IJsonObject& object) {
    const std::wstring text = test::writtenBy(object);
    return text.substr(text.find(member));
}

TEST(MechanicalData, EachAccessorHasItsMember) {
    using Text = std::wstring;
    {
        using T = ExcMiscWCS;
        T object;
        set(object, &T::setOrigin, &T::origin, ExcVector3d(1, 2, 3));
        set(object, &T::setX, &T::x, ExcVector3d(1, 0, 0));
        set(object, &T::setY, &T::y, ExcVector3d(0, 1, 0));
        set(object, &T::setZ, &T::z, ExcVector3d(0, 0, 1));
        set(object, &T::setActive, &T::isActive, true);
        set(object, &T::setId, &T::id, Text(L"i"));
        set(object, &T::setName, &T::name, Text(L"n"));
        set(object, &T::setLayerId, &T::layerId, 4);
        EXPECT_EQ(test::writtenBy(object),
                  LR"({"origin":[1.0,2.0,3.0],"x":[1.0,0.0,0.0],"y":[0.0,1.0,0.0],"z":[0.0,0.0,1.0],)"
                  LR"("color":null,"active":true,"id":"i","name":"n","shown":false,"layer_id":4})");
    }
    {
        using T = ExcMfgThread;
        T object;
        set(object, &T::setDiameter, &T::diameter, 1.5);
        set(object, &T::setDepth, &T::depth, 2.5);
        set(object, &T::setPitch, &T::pitch, 3.5);
        set(object, &T::setSupportDiameter, &T::supportDiameter, 4.5);
        set(object, &T::setSupportDepth, &T::supportDepth, 5.5);
        EXPECT_EQ(test::writtenBy(object),
                  LR"({"diameter":1.5,"depth":2.5,"pitch":3.5,"orientation":"unknown","designation":"",)"
                  LR"("designation_system_type":"unknown","support_diameter":4.5,"support_depth":5.5,)"
                  LR"("bottom_type":"unknown"})");
    }
    {
        using T = ExcMfgHoleThread;
        T object;
        set(object, &T::setDesignation, &T::designation, Text(L"d"));
        set(object, &T::setStandart, &T::standart, Text(L"s"));
        set(object, &T::setMinimalTolerance, &T::minimalTolerance, 1.5);
        set(object, &T::setMaximalTolerance, &T::maximalTolerance, 2.5);
        EXPECT_EQ(test::writtenBy(object),
                  LR"({"diameter":0.0,"depth":0.0,"pitch":0.0,"orientation":"unknown","designation":"d",)"
                  LR"("designation_system_type":"unknown","standart":"s","min_tol":1.5,"max_tol":2.5})");
    }
    {
        using T = ExcMfgCounterDrillHole;
        T object;
        set(object, &T::setPrimaryDiameter, &T::primaryDiameter, 1.5);
        set(object, &T::setPrimaryDiameterMaxTol, &T::primaryDiameterMaxTol, 2.5);
        set(object, &T::setPrimaryDiameterMinTol, &T::primaryDiameterMinTol, 3.5);
        set(object, &T::setPrimaryDepth, &T::primaryDepth, 4.5);
        set(object, &T::setTipAngleDegrees, &T::tipAngleDegrees, 5.5);
        set(object, &T::setCenter, &T::center, ExcVector3d(1, 2, 3));
        set(object, &T::setDirection, &T::direction, ExcVector3d(0, 0, 1));
        set(object, &T::setDiameter, &T::diameter, 6.5);
        set(object, &T::setMaximumTolerance, &T::maximumTolerance, 7.5);
        set(object, &T::setMinimumTolerance, &T::minimumTolerance, 8.5);
        set(object, &T::setDepth, &T::depth, 9.5);
        set(object, &T::setSinkDiameter, &T::sinkDiameter, 10.5);
        set(object, &T::setTaperAngle, &T::taperAngle, 11.5);
        EXPECT_EQ(test::writtenBy(object),
                  LR"({"name":"","primary_diameter":1.5,"primary_diameter_max_tol":2.5,)"
                  LR"("primary_diameter_min_tol":3.5,"primary_depth":4.5,"tip_angle_degrees":5.5,)"
                  LR"("bottom_limit_extent_type":"unknown","center":[1.0,2.0,3.0],"direction":[0.0,0.0,1.0],)"
                  LR"("diameter":6.5,"max_tol":7.5,"min_tol":8.5,"depth":9.5,"sink_diameter":10.5,)"
                  LR"("angle":11.5})");
    }
    {
        using T = ExcMfgCounterBoreHole;
        T object;
        set(object, &T::setDiameter, &T::diameter, 1.5);
        set(object, &T::setMaximumTolerance, &T::maximumTolerance, 2.5);
        set(object, &T::setMinimumTolerance, &T::minimumTolerance, 3.5);
        set(object, &T::setDepth, &T::depth, 4.5);
        EXPECT_EQ(writtenAfter(L"\"diameter\"", object),
                  LR"("diameter":1.5,"max_tol":2.5,"min_tol":3.5,"depth":4.5})");
    }
    {
        using T = ExcMfgCounterSinkHole;
        T object;
        set(object, &T::setDiameter, &T::diameter, 1.5);
        set(object, &T::setMaximumTolerance, &T::maximumTolerance, 2.5);
        set(object, &T::setMinimumTolerance, &T::minimumTolerance, 3.5);
        set(object, &T::setTaperAngle, &T::taperAngle, 4.5);
        EXPECT_EQ(writtenAfter(L"\"diameter\"", object),
                  LR"("diameter":1.5,"max_tol":2.5,"min_tol":3.5,"angle":4.5})");
    }
    {
        using T = ExcMfgPatternRectangular;
        T object;
        set(object, &T::setAnchorPoint, &T::anchorPoint, ExcVector3d(1, 2, 3));
        set(object, &T::setAlignmentPrimaryDirection, &T::alignmentPrimaryDirection, ExcVector3d(1, 0, 0));
        set(object, &T::setAlignmentSecondaryDirection, &T::alignmentSecondaryDirection,
            ExcVector3d(0, 1, 0));
        set(object, &T::setPrimaryInstanceCount, &T::primaryInstanceCount, 2);
        set(object, &T::setSecondaryInstanceCount, &T::secondaryInstanceCount, 3);
        set(object, &T::setPrimarySpacing, &T::primarySpacing, 4.5);
        set(object, &T::setSecondarySpacing, &T::secondarySpacing, 5.5);
        EXPECT_EQ(test::writtenBy(object),
                  LR"({"type":"rectangular","anchor_point":[1.0,2.0,3.0],"align_primary_dir":[1.0,0.0,0.0],)"
                  LR"("align_secondary_dir":[0.0,1.0,0.0],"primary_inst_count":2,"secondary_inst_count":3,)"
                  LR"("primary_spacing":4.5,"secondary_spacing":5.5,"simplified":false})");
    }
    {
        using T = ExcMfgPatternCircular;
        T object;
        set(object, &T::setAnchorPoint, &T::anchorPoint, ExcVector3d(1, 2, 3));
        set(object, &T::setCenterOfRotation, &T::centerOfRotation, ExcVector3d(4, 5, 6));
        set(object, &T::setAxisOfRotation, &T::axisOfRotation, ExcVector3d(0, 0, 1));
        set(object, &T::setAxialInstanceCount, &T::axialInstanceCount, 2);
        set(object, &T::setRadialInstanceCount, &T::radialInstanceCount, 3);
        set(object, &T::setAxialDistanceDegrees, &T::axialDistanceDegrees, 4.5);
        set(object, &T::setRadialDistance, &T::radialDistance, 5.5);
        set(object, &T::setSimplified, &T::isSimplified, true);
        EXPECT_EQ(test::writtenBy(object),
                  LR"({"type":"circular","anchor_point":[1.0,2.0,3.0],"center_of_rotation":[4.0,5.0,6.0],)"
                  LR"("axis_of_rotation":[0.0,0.0,1.0],"axial_inst_count":2,"radial_inst_count":3,)"
                  LR"("axial_dist_degrees":4.5,"radial_dist":5.5,"fixed_rot_orient":false,)"
                  LR"("simplified":true})");
    }
}

TEST(MechanicalData, APropertyThatIsNotSetIsNull) {
    using enum ExcMiscMaterial::EProperty;
    ExcMiscMaterial material;
    const auto property = std::make_shared<ExcMiscMaterialProperty>();
    material.set(density, std::make_shared<ExcMiscMaterialProperty>());
    material.set(density, property);
    EXPECT_EQ(material.get(density), property);
    EXPECT_EQ(material.get(shear_modulus), nullptr);
    material.set(density, nullptr);
    EXPECT_EQ(test::writtenBy(material), LR"({"name":"","is_part_level_material":false})");
}

TEST(MechanicalData, APatternIsReadFromAnObjectOnly) {
    using Lines = std::vector<test::LogLine>;
    std::wistringstream text(LR"([{"type":"circular","radial_dist":1.5},[],{"type":"none"}])");
    const JsonDocument documents = test::parse(text);
    test::LogCapture log(mv_cvx::Warning);
    const auto pattern =
        std::dynamic_pointer_cast<ExcMfgPatternCircular>(ExcMfgPattern::readPattern(documents[0]));
    ASSERT_TRUE(pattern);
    EXPECT_EQ(pattern->radialDistance(), 1.5);
    EXPECT_EQ(log.take(), Lines{});
    EXPECT_EQ(ExcMfgPattern::readPattern(documents[1]), nullptr);
    EXPECT_EQ(log.take(), (Lines{{mv_cvx::Error, "ExcMfgPattern object should have a JSON object type."}}));
    EXPECT_EQ(ExcMfgPattern::readPattern(documents[2]), nullptr);
    EXPECT_EQ(log.take(), Lines{});
}

std::shared_ptr<ExcEntity> entity(const std::wstring& id) {
    auto made = std::make_shared<ExcEntity>();
    made->setType(ExcEntity::EType::mfg);
    made->id() = id;
    return made;
}

const wchar_t* const pmiSection = LR"("pmi_data":[{"block_id":0,"name":"set","hidden":false,"standart":""}])";
const wchar_t* const otherSections =
    LR"("mapping_data":[{"imported":{"type":"mfg","id":"i"},)"
    LR"("original":{"type":"mfg","id":"o"}}],"entity_data":[{"pnames":["a","b"],)"
    LR"("name":"","hidden":false,"line_type":"unknown","line_thickness":0.0}])";

std::shared_ptr<ExcPMIData> pmiData() {
    auto data = std::make_shared<ExcPMIData>();
    auto annotations = std::make_shared<ExcPMIAnnotationSet>();
    annotations->setName(L"set");
    data->addAnnotationSet(annotations);
    return data;
}

std::shared_ptr<IExchangeObject> blockWithSections() {
    auto block = std::make_shared<ExcBlockMechanicalData>();
    block->setBlockId(7);
    block->setPMIData(pmiData());
    auto mapping = std::make_shared<ExcMappingData>();
    mapping->add(entity(L"i"), entity(L"o"));
    block->setMappingData(mapping);
    auto information = std::make_shared<ExcTopologicalEntityInformation>();
    information->setPersistentNames({L"a"});
    information->addPersistentName(L"b");
    auto entities = std::make_shared<ExcEntityData>();
    entities->addData(information);
    block->setEntityData(entities);
    return block;
}

std::shared_ptr<IExchangeObject> rootWithSections() {
    auto root = std::make_shared<ExcRootMechanicalData>();
    root->setPMIData(pmiData());
    return root;
}

const struct {
    const char* claim;
    std::shared_ptr<IExchangeObject> (*make)();
    std::wstring written;
    const wchar_t* loaded; ///< what load() leaves of that
} roots[] = {
    {"block", &blockWithSections,
     LR"({"block_id":7,)" + std::wstring(pmiSection) + L"," + otherSections + L"}", LR"({"block_id":7})"},
    {"root", &rootWithSections, L"{" + std::wstring(pmiSection) + L"}", L"{}"},
};

std::string encoded(const std::wstring& text) {
    std::wistringstream stream(text);
    std::string bytes;
    JsonBinaryIO::encode(test::parse(stream), bytes);
    return bytes;
}

/// The object as it arrives with delayed loading, written by another process.
std::shared_ptr<IExchangeObject> arrived(const std::shared_ptr<IExchangeObject>& sent) {
    const test::TempDir dir;
    const std::string path = dir.file("document");
    EXPECT_EQ(test::waitForChild(test::startChild([&] {
                  ExchangeObjectWrapper wrapper;
                  wrapper.set(sent);
                  std::wofstream stream(path);
                  wrapper.writeObject(stream);
              })),
              0);
    std::wifstream stream(path);
    ExchangeObjectWrapper wrapper;
    wrapper.setDelayedLoading(true);
    wrapper.readObject(stream);
    return wrapper.get();
}

bool hasBuffer(const IExchangeObject& object) {
    const std::wstring& name = object.source();
    return std::filesystem::exists(mp::sharedDirectory() + '/' + std::string(name.begin(), name.end()));
}

TEST(MechanicalSections, ComeOutOfTheBufferOfADelayedObject) {
    for (const auto& row : roots) {
        SCOPED_TRACE(row.claim);
        const auto sent = row.make();
        EXPECT_EQ(test::writtenBy(*sent), row.written);

        const auto whole = arrived(sent);
        ASSERT_TRUE(hasBuffer(*whole));
        for (int time = 0; time < 2; ++time) { // the second time there is nothing left to do
            loadWithSections(*whole);
            EXPECT_TRUE(whole->isLoaded());
            EXPECT_FALSE(hasBuffer(*whole));
            EXPECT_EQ(test::writtenBy(*whole), row.written);
            whole->load();
        }

        const auto plain = arrived(sent);
        plain->load();
        loadWithSections(*plain); // too late
        EXPECT_EQ(test::writtenBy(*plain), row.loaded);
        EXPECT_FALSE(hasBuffer(*plain));
    }
}

TEST(MechanicalSections, OfOtherKindsThereAreNone) {
    const auto product = std::make_shared<ExcProductStructure>();
    product->setProductName(L"p");
    const auto other = arrived(product);
    loadWithSections(*other);
    EXPECT_TRUE(other->isLoaded());
    EXPECT_EQ(test::writtenBy(*other), test::writtenBy(*product));
    ExcMessage message(L"m");
    loadWithSections(message);
    EXPECT_EQ(message.get(), L"m");
}

TEST(MechanicalSections, ADamagedBufferIsRemovedAndItsObjectNotLoaded) {
    // A length that is not exact is tolerated, over the document model; a member that is cut off is refused.
    std::string inexact = encoded(roots[1].written);
    inexact[1] = 1;
    for (const auto& [bytes, isRead] :
         {std::pair(inexact, true), {inexact.substr(0, 40), false}, {"", false}}) {
        ExcBlockMechanicalData block;
        block.setSource(IExchangeObject::generateUUID());
        mp::SharedBuffer<char>(block.source(), false).setBuffer(bytes.data(), bytes.size());
        if (isRead)
            loadWithSections(block);
        else
            EXPECT_ANY_THROW(loadWithSections(block));
        EXPECT_EQ(block.isLoaded(), isRead);
        EXPECT_FALSE(hasBuffer(block));
        EXPECT_EQ(test::writtenBy(block),
                  isRead ? LR"({"block_id":0,)" + std::wstring(pmiSection) + L"}" : LR"({"block_id":0})");
    }
}

TEST(MechanicalSections, AreReadFromADocument) {
    std::wistringstream text(roots[0].written);
    const JsonDocument document = test::parse(text);
    ExcBlockMechanicalData block;
    block.setBlockId(7);
    block.setPMIData(readPMIData(document));
    block.setMappingData(readMappingData(document));
    block.setEntityData(readEntityData(document));
    EXPECT_EQ(test::writtenBy(block), roots[0].written);
    for (const wchar_t* without :
         {L"{}", L"[]", L"null", LR"({"pmi_data":{},"mapping_data":1,"entity_data":null})"}) {
        std::wistringstream stream(without);
        const JsonDocument none = test::parse(stream);
        EXPECT_EQ(readPMIData(none), nullptr);
        EXPECT_EQ(readMappingData(none), nullptr);
        EXPECT_EQ(readEntityData(none), nullptr);
    }
}

} // namespace
} // namespace zeq
