#include <gtest/gtest.h>
#include <velkapi/VelkObject.h>

#include <cmath>

#include "Drawing.h"
#include "ErrorLog.h"
#include "FailingAllocation.h"
#include "HostFixture.h"

using namespace VelkApi;
using geometrytest::cadObject;
using geometrytest::withAttribute;
using Role = GeometrySectionType;
using Type = VelkObjectType;
using Texts = std::vector<std::string>;

class VelkObjectTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        geometrytest::drawSmallDrawing(host());
    }

    static void expectObject(const VelkObject& object, Type type, const std::string& name,
                             int attribNo, int segNo) {
        EXPECT_EQ(object.getType(), type) << name;
        EXPECT_EQ(object.getName(), name);
        EXPECT_EQ(object.getAttribNo(), attribNo) << name;
        EXPECT_EQ(object.getSegNo(), segNo) << name;
    }
};

// ---- construction

TEST_F(VelkObjectTest, ADefaultObjectIsAnUnnamedFigureWithoutHostObject) {
    host().resetCallCounts();
    const VelkObject object;
    expectObject(object, Type::Figure, "", -1, -1);
    EXPECT_EQ(object.getSectiontype(), Role::FacemillIslandFigure);
    EXPECT_EQ(host().callCount("VelkGetFigure"), 0);
}

TEST_F(VelkObjectTest, APointFromCoordinatesIsFoundInTheDrawing) {
    const VelkObject point(1.5, 0.0, -2.0, Role::OutlineFigure);
    expectObject(point, Type::Point, "X1.5 Y0 Z-2", -1, 20);
    EXPECT_EQ(point.getSectiontype(), Role::OutlineFigure);
    expectObject(VelkObject(10.0, -0.25, -0.0, Role::OutlineFigure), Type::Point, "X10 Y-0.25 Z0",
                 -1, -1);
}

TEST_F(VelkObjectTest, AFigureByNameIsTheWholeFigureOrOneInstance) {
    expectObject(VelkObject("CONTOUR1", 0, Type::Figure, Role::OutlineFigure), Type::Figure,
                 "CONTOUR1", 0, 10);
    expectObject(VelkObject("CONTOUR1", 3, Type::Figure, Role::IslandFigure), Type::Figure,
                 "CONTOUR1", 3, 11);
    expectObject(VelkObject("CONTOUR1", 4, Type::Figure, Role::IslandFigure), Type::Figure,
                 "CONTOUR1", 4, -1);
    host().resetCallCounts();
    expectObject(VelkObject("NOPE", 0, Type::Figure, Role::OutlineFigure), Type::Figure, "NOPE", 0,
                 -1);
    EXPECT_EQ(host().callCount("VelkGetFigureObject"), 0);
}

TEST_F(VelkObjectTest, ANonCadObjectByNameIsLookedUpByItsNumber) {
    expectObject(VelkObject("G12", 0, Type::NonCadObject, Role::OutlineFigure), Type::NonCadObject,
                 "G12", 0, 30);
    expectObject(VelkObject("G13", 0, Type::NonCadObject, Role::OutlineFigure), Type::NonCadObject,
                 "G13", 0, -1);
    host().resetCallCounts();
    expectObject(VelkObject("G-1", 0, Type::NonCadObject, Role::OutlineFigure), Type::NonCadObject,
                 "G-1", 0, -1);
    expectObject(VelkObject("G", 0, Type::NonCadObject, Role::OutlineFigure), Type::NonCadObject,
                 "G", 0, -1);
    EXPECT_EQ(host().callCount("VelkGetNonCadObject"), 0);
}

TEST_F(VelkObjectTest, APointByNameAndOtherTypesByName) {
    expectObject(VelkObject("X1.5 Y0 Z-2", -1, Type::Point, Role::OutlineFigure), Type::Point,
                 "X1.5 Y0 Z-2", -1, 20);
    expectObject(VelkObject("somewhere", -1, Type::Point, Role::OutlineFigure), Type::Point,
                 "somewhere", -1, -1);
    host().resetCallCounts();
    expectObject(VelkObject("CONTOUR1", 0, static_cast<Type>(2), Role::OutlineFigure),
                 static_cast<Type>(2), "CONTOUR1", 0, -1);
    EXPECT_EQ(host().callCount("VelkGetFigure"), 0);
}

// ---- the point search

TEST_F(VelkObjectTest, PointsMatchInWholeHundredthsTruncatedTowardZero) {
    host().setCadObject(cadObject(21, velkhost::kPointObject, 0, 0, {10.004, 20.009, 0.0}));
    host().setCadObject(cadObject(22, velkhost::kPointObject, 0, 0, {-0.005, 7.0, 0.0}));
    EXPECT_EQ(VelkObject(10.001, 20.0, 0.0, Role::OutlineFigure).getSegNo(), 21);
    EXPECT_EQ(VelkObject(10.01, 20.0, 0.0, Role::OutlineFigure).getSegNo(), -1);
    EXPECT_EQ(VelkObject(10.0, 20.01, 0.0, Role::OutlineFigure).getSegNo(), -1);
    // -0.5 hundredths truncate to 0, as 0.4 do.
    EXPECT_EQ(VelkObject(0.004, 7.0, 0.0, Role::OutlineFigure).getSegNo(), 22);
}

TEST_F(VelkObjectTest, ThePointSearchIgnoresZAndTheFirstObjectPresentedWins) {
    host().setCadObject(cadObject(21, velkhost::kPointObject, 0, 0, {5.0, 5.0, 3.0}));
    host().setCadObject(cadObject(22, velkhost::kPointObject, 0, 0, {5.0, 5.0, -8.0}));
    EXPECT_EQ(VelkObject(5.0, 5.0, -8.0, Role::OutlineFigure).getSegNo(), 21);
    EXPECT_EQ(VelkObject(5.0, 5.0, 1000.0, Role::OutlineFigure).getSegNo(), 21);
}

TEST_F(VelkObjectTest, ThePointSearchPassesOverObjectsThatTakeNoPart) {
    host().setCadObject(cadObject(21, velkhost::kPointObject, 0, 0, {5.0, 5.0, 0.0}, 2));
    host().setCadObject(cadObject(22, velkhost::kPointObject, 0, 0, {5.0, 5.0, 0.0}, 3));
    EXPECT_EQ(VelkObject(5.0, 5.0, 0.0, Role::OutlineFigure).getSegNo(), 22);
    // Any object of the drawing is found at its start point, whatever its type.
    EXPECT_EQ(VelkObject(100.0, 100.0, 0.0, Role::OutlineFigure).getSegNo(), 50);
    EXPECT_EQ(VelkObject(99.0, 100.0, 0.0, Role::OutlineFigure).getSegNo(), -1);
}

TEST_F(VelkObjectTest, ThePointSearchWalksTheDrawingOnce) {
    host().resetCallCounts();
    VelkObject(1.5, 0.0, -2.0, Role::OutlineFigure);
    EXPECT_EQ(host().callCount("VelkProcessCad"), 1);
}

// ---- parsing the text forms

TEST_F(VelkObjectTest, GAndANumberIsANonCadObjectWhateverTheHostAnswers) {
    const VelkObject found("G12", Role::IslandFigure);
    expectObject(found, Type::NonCadObject, "G12", -1, 30);
    EXPECT_EQ(found.getSectiontype(), Role::IslandFigure);
    expectObject(VelkObject("G13", Role::OutlineFigure), Type::NonCadObject, "G13", -1, -1);
    expectObject(VelkObject(" G007", Role::OutlineFigure), Type::NonCadObject, "G7", -1, -1);
    expectObject(VelkObject("\tG012", Role::OutlineFigure), Type::NonCadObject, "G12", -1, 30);
}

TEST_F(VelkObjectTest, ALowerCaseGOrAGWithoutNumberIsAFigure) {
    expectObject(VelkObject("g12", Role::OutlineFigure), Type::Figure, "g12", 0, -1);
    expectObject(VelkObject("Gear", Role::OutlineFigure), Type::Figure, "Gear", 0, -1);
    expectObject(VelkObject("G", Role::OutlineFigure), Type::Figure, "G", 0, -1);
}

TEST_F(VelkObjectTest, APointNeedsAllThreeAxes) {
    expectObject(VelkObject("x1 y2 z3", Role::OutlineFigure), Type::Point, "X1 Y2 Z3", -1, -1);
    expectObject(VelkObject("X1,5 Y0 Z-2", Role::OutlineFigure), Type::Point, "X1.5 Y0 Z-2", -1,
                 20);
    expectObject(VelkObject("Z-2 X1.50 Y0.0", Role::OutlineFigure), Type::Point, "X1.5 Y0 Z-2", -1,
                 20);
    expectObject(VelkObject("X1 Y2", Role::OutlineFigure), Type::Figure, "X1 Y2", 0, -1);
}

TEST_F(VelkObjectTest, AFigureWithItsAttribute) {
    expectObject(VelkObject(withAttribute("CONTOUR1", 3), Role::IslandFigure), Type::Figure,
                 "CONTOUR1", 3, 11);
    expectObject(VelkObject("CONTOUR1 #attrib#= 3", Role::IslandFigure), Type::Figure, "CONTOUR1",
                 3, 11);
    expectObject(VelkObject("CONTOUR1 #Attrib#   =3", Role::IslandFigure), Type::Figure, "CONTOUR1",
                 3, 11);
    expectObject(VelkObject("CONTOUR1 #ATTRIB#= 0", Role::OutlineFigure), Type::Figure, "CONTOUR1",
                 0, 10);
}

TEST_F(VelkObjectTest, TheCharacterBeforeTheMarkerIsDropped) {
    expectObject(VelkObject("CONTOUR1X#ATTRIB#= 3", Role::IslandFigure), Type::Figure, "CONTOUR1",
                 3, 11);
    expectObject(VelkObject("#ATTRIB#= 3", Role::IslandFigure), Type::Figure, "#ATTRIB#= 3", 3, -1);
}

TEST_F(VelkObjectTest, AMarkerWithoutAttributeLeavesTheFigureUnresolved) {
    host().resetCallCounts();
    expectObject(VelkObject("CONTOUR1  #ATTRIB# 3", Role::IslandFigure), Type::Figure, "CONTOUR1 ",
                 0, -1);
    expectObject(VelkObject("CONTOUR1 #ATTRIB#= x", Role::IslandFigure), Type::Figure, "CONTOUR1",
                 0, -1);
    EXPECT_EQ(host().callCount("VelkGetFigure"), 0);
}

TEST_F(VelkObjectTest, AWholeFigureByItsTextLosesTrailingBlanks) {
    expectObject(VelkObject("CONTOUR1   ", Role::OutlineFigure), Type::Figure, "CONTOUR1", 0, 10);
    expectObject(VelkObject("Contour_A", Role::OutlineFigure), Type::Figure, "Contour_A", 0, 12);
    expectObject(VelkObject("", Role::OutlineFigure), Type::Figure, "", 0, -1);
}

// ---- getPoint

TEST_F(VelkObjectTest, GetPointGivesAPointsCoordinates) {
    double x = 0, y = 0, z = 0;
    EXPECT_TRUE(VelkObject("X1.5 Y0 Z-2", Role::OutlineFigure).getPoint(x, y, z));
    EXPECT_EQ(std::vector<double>({x, y, z}), std::vector<double>({1.5, 0.0, -2.0}));
}

TEST_F(VelkObjectTest, GetPointOnAFigureIsFalseAndZeroes) {
    double x = 7, y = 7, z = 7;
    EXPECT_FALSE(VelkObject("CONTOUR1", Role::OutlineFigure).getPoint(x, y, z));
    EXPECT_EQ(std::vector<double>({x, y, z}), std::vector<double>({0.0, 0.0, 0.0}));
    x = y = z = 7;
    EXPECT_FALSE(VelkObject("G12", Role::OutlineFigure).getPoint(x, y, z));
    EXPECT_EQ(std::vector<double>({x, y, z}), std::vector<double>({0.0, 0.0, 0.0}));
}

// ---- toString

TEST_F(VelkObjectTest, TheFigureTextOfAWholeFigureIsItsName) {
    host().clearDrawing();
    EXPECT_EQ(VelkObject("A", 0, Type::Figure, Role::OutlineFigure).toString(), "A");
    EXPECT_EQ(VelkObject("A", 2, Type::Figure, Role::OutlineFigure).toString(),
              withAttribute("A", 2));
}

TEST_F(VelkObjectTest, TheHostsNamesComeFirst) {
    const VelkObject instance(withAttribute("CONTOUR1", 3), Role::IslandFigure);
    const VelkObject point(1.5, 0.0, -2.0, Role::OutlineFigure);
    const VelkObject nonCad("G12", Role::OutlineFigure);
    host().setFigure({1, "OUTLINE"});
    host().setCadObject(cadObject(20, velkhost::kPointObject, 0, 0, {1.25, 3.0, 0.5}));
    host().setCadObject(cadObject(30, velkhost::kNonCadObject, 14, 0));
    EXPECT_EQ(instance.toString(), withAttribute("OUTLINE", 3));
    EXPECT_EQ(point.toString(), "X1.25 Y3 Z0.5");
    EXPECT_EQ(nonCad.toString(), "G14");
}

TEST_F(VelkObjectTest, WithoutHostObjectTheObjectsOwnTextIsGiven) {
    EXPECT_EQ(VelkObject(withAttribute("CONTOUR9", 3), Role::IslandFigure).toString(),
              withAttribute("CONTOUR9", 3));
    EXPECT_EQ(VelkObject(" G007", Role::OutlineFigure).toString(), "G7");
    EXPECT_EQ(VelkObject("x7 y8 z9", Role::OutlineFigure).toString(), "X7 Y8 Z9");
    EXPECT_EQ(VelkObject("X1.50 Y2", -1, Type::Point, Role::OutlineFigure).toString(),
              "X1.5 Y2 Z0");
    EXPECT_EQ(VelkObject("somewhere", -1, Type::Point, Role::OutlineFigure).toString(),
              "somewhere");
}

TEST_F(VelkObjectTest, ADeletedHostObjectOrATypeWithoutTextRepeatsThePreviousText) {
    const VelkObject contour("CONTOUR1", Role::OutlineFigure);
    const VelkObject line(100.0, 100.0, 0.0, Role::OutlineFigure);  // object 50, type 2
    const VelkObject other("CONTOUR1", 0, static_cast<Type>(2), Role::OutlineFigure);
    EXPECT_EQ(VelkObject("G12", Role::OutlineFigure).toString(), "G12");
    EXPECT_EQ(line.toString(), "G12");
    EXPECT_EQ(other.toString(), "G12");
    EXPECT_EQ(VelkObject("Contour_A", Role::OutlineFigure).toString(), "Contour_A");
    auto deleted = cadObject(10, velkhost::kFigureObject, 1, 0);
    deleted.deleted = true;
    host().setCadObject(deleted);
    EXPECT_EQ(contour.getSegNo(), 10);
    EXPECT_EQ(contour.toString(), "Contour_A");
}

TEST_F(VelkObjectTest, CopiesCarryAllFields) {
    const VelkObject original(withAttribute("CONTOUR1", 3), Role::IslandFigure);
    VelkObject copy;
    copy = original;
    expectObject(copy, Type::Figure, "CONTOUR1", 3, 11);
    EXPECT_EQ(copy.getSectiontype(), Role::IslandFigure);
    const VelkObject constructed(original);
    expectObject(constructed, Type::Figure, "CONTOUR1", 3, 11);
}

// ---- failures

TEST_F(VelkObjectTest, AFailingConstructorLogsAndKeepsWhatItSet) {
    testsupport::ErrorLogWatch log;
    const VelkObject byName("Gx", 0, Type::NonCadObject, Role::OutlineFigure);
    expectObject(byName, Type::NonCadObject, "Gx", 0, -1);
    const VelkObject byText("G99999999999", Role::IslandFigure);
    expectObject(byText, Type::Figure, "", -1, -1);
    EXPECT_EQ(log.texts(),
              (Texts{"Error in VelkObject(const string & name, int attr, VelkObjectType type, "
                     "GeometrySectionType sectiontype)",
                     "Error in VelkObject(const string& str, GeometrySectionType sectiontype)"}));
}

// Every allocation of toString fails once, in turn: each failure is logged with its text.
TEST_F(VelkObjectTest, AFailingToStringLogsAndGivesAnEmptyText) {
    const std::string longName(64, 'N');
    const VelkObject object(longName, 0, Type::Figure, Role::OutlineFigure);
    Texts seen;
    for (int skip = 0; skip < 100; ++skip) {
        testsupport::ErrorLogWatch log;
        testsupport::failAllocationAfter(skip);
        const std::string text = object.toString();
        testsupport::stopFailingAllocations();
        const Texts texts = log.texts();
        if (texts.empty()) {
            EXPECT_EQ(text, longName);
            break;
        }
        EXPECT_EQ(text, "");
        seen.insert(seen.end(), texts.begin(), texts.end());
    }
    for (const std::string& text : seen) {
        EXPECT_EQ(text, "Error in VelkObject::toString()");
    }
#ifndef _WIN32
    // On Windows the runtime's own string code allocates outside this program's operator new.
    EXPECT_FALSE(seen.empty());
#endif
}
