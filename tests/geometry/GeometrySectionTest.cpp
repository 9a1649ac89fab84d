#include <gtest/gtest.h>
#include <velkapi/GeometrySection.h>
#include <velkapi/LogFile.h>

#include <set>
#include <stdexcept>

#include "Drawing.h"
#include "ErrorLog.h"
#include "FailingAllocation.h"
#include "GeometryOperation.h"
#include "HostFixture.h"

using namespace VelkApi;
using geometrytest::BrokenNumberOperation;
using geometrytest::cadObject;
using geometrytest::GeometryOperation;
using geometrytest::withAttribute;
using Kind = MillDrillOperationType;
using Role = GeometrySectionType;
using Texts = std::vector<std::string>;

namespace {

// The roles, names and host objects of a section's objects, in key order.
struct Seen {
    std::string key;
    Role role;
    std::string name;
    int segNo;
    bool operator==(const Seen& other) const {
        return key == other.key && role == other.role && name == other.name && segNo == other.segNo;
    }
};

void PrintTo(const Seen& seen, std::ostream* out) {
    *out << seen.key << " role " << static_cast<int>(seen.role) << " " << seen.name << " #"
         << seen.segNo;
}

std::vector<Seen> objectsOf(GeometrySection& section) {
    std::vector<std::string> keys;
    std::vector<Seen> seen;
    for (const std::string& key : section.readKeys(keys)) {
        VelkObject object;
        section.getVelkObject(key, object);
        seen.push_back({key, object.getSectiontype(), object.getName(), object.getSegNo()});
    }
    return seen;
}

// A geometry section whose entries cannot be reached once it is made.
class UnreachableGeometry : public GeometrySection {
  public:
    UnreachableGeometry() : GeometrySection(3) {
        addVelkObjectParameter(0, "CONTOUR1", Role::OutlineFigure);
    }
    void* getValue(const std::string&, void*) const override {
        throw std::runtime_error("unreachable");
    }
    void setValue(const std::string&, const void*) override {
        throw std::runtime_error("unreachable");
    }
};

}  // namespace

class GeometrySectionTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        geometrytest::drawSmallDrawing(host());
    }

    // Operation 0 of store 1: a header listing four sections, the geometry section holding
    // `lines`, and one more record after it.
    void storeGeometry(const Texts& lines) { host().setStore(1, {recordOf(lines), {"4 1 0"}}); }

    // The operation's record with these geometry lines.
    static velkhost::Record recordOf(const Texts& lines) {
        velkhost::Record record = {"4 1 4 0 0 0 " + std::to_string(lines.size())};
        record.insert(record.end(), lines.begin(), lines.end());
        return record;
    }

    Texts storedLines() { return host().lines(1, 0); }
};

// ---- entries

TEST_F(GeometrySectionTest, MacroLinesAreKeyedByTheirNumberWithFourDigits) {
    GeometrySection section(3);
    section.addMacroLine(7, "G0 X0");
    section.addMacroLine(12345, "M30");
    std::vector<std::string> keys;
    EXPECT_EQ(section.readKeys(keys), (Texts{"0007", "12345"}));
    EXPECT_EQ(section.getString("0007"), "G0 X0");
    EXPECT_EQ(section.dataTypeOf("0007"), ValueDataType::String);
    section.setString("0007", "changed");
    section.setDefault();
    EXPECT_EQ(section.getString("0007"), "G0 X0");
}

TEST_F(GeometrySectionTest, ObjectsAreKeyedByNumberAndLowerCasedName) {
    GeometrySection section(3);
    section.addVelkObjectParameter(12, "Contour_A", Role::OutlineFigure);
    std::vector<std::string> keys;
    EXPECT_EQ(section.readKeys(keys), Texts{"0012(contour_a)"});
    EXPECT_EQ(section.dataTypeOf("0012(Contour_A)"), ValueDataType::VelkObject);
    EXPECT_EQ(section.getValueAsString("0012(CONTOUR_A)"), "Contour_A");
    VelkObject object;
    EXPECT_EQ(&section.getVelkObject("0012(CONTOUR_A)", object), &object);
    EXPECT_EQ(object.getName(), "Contour_A");
    EXPECT_EQ(object.getSegNo(), 12);
}

TEST_F(GeometrySectionTest, AnObjectsDefaultIsInstanceOneOfTheFigureOfItsName) {
    host().setCadObject(cadObject(13, velkhost::kFigureObject, 2, 1));
    GeometrySection section(3);
    section.addVelkObjectParameter(
        0, VelkObject("Contour_A", 0, VelkObjectType::Figure, Role::OutlineFigure));
    section.setDefault();
    VelkObject object;
    section.getVelkObject("0000(contour_a)", object);
    EXPECT_EQ(object.getType(), VelkObjectType::Figure);
    EXPECT_EQ(object.getName(), "Contour_A");
    EXPECT_EQ(object.getAttribNo(), 1);
    EXPECT_EQ(object.getSegNo(), 13);
    EXPECT_EQ(object.getSectiontype(), Role::FacemillIslandFigure);
}

TEST_F(GeometrySectionTest, SettingAndGettingAnObjectByAnyCase) {
    GeometrySection section(3);
    section.addVelkObjectParameter(1, "CONTOUR1", Role::OutlineFigure);
    section.setVelkObject("0001(Contour1)", VelkObject("G12", Role::IslandFigure));
    VelkObject object;
    section.getVelkObject("0001(contour1)", object);
    EXPECT_EQ(object.getName(), "G12");
    EXPECT_EQ(object.getSectiontype(), Role::IslandFigure);
}

TEST_F(GeometrySectionTest, AKeyWithoutObjectLeavesTheObjectAsItWas) {
    GeometrySection section(3);
    section.addMacroLine(0, "G0 X0");
    testsupport::ErrorLogWatch log;
    VelkObject object("CONTOUR1", Role::IslandFigure);
    section.getVelkObject("0001(nope)", object);
    section.getVelkObject("0000", object);
    EXPECT_EQ(object.getName(), "CONTOUR1");
    EXPECT_EQ(object.getSegNo(), 10);
    section.setVelkObject("0000", object);
    EXPECT_EQ(section.getString("0000"), "G0 X0");
    EXPECT_EQ(log.texts(), Texts{});
}

TEST_F(GeometrySectionTest, SettingsCountEveryRole) {
    GeometrySectionSettings settings;
    EXPECT_EQ(settings.getOutlineFigures(), 0);
    for (const int role : {0, 0, 1, 2, 3, 4, 5, -1}) {
        settings.add(static_cast<Role>(role));
    }
    EXPECT_EQ(settings.getOutlineFigures(), 2);
    EXPECT_EQ(settings.getIslandsFigures(), 2);
    EXPECT_TRUE(settings.existsOutlineXzProfile());
    EXPECT_TRUE(settings.existsIslandXzProfile());
    const GeometrySectionSettings given(3, 1, false, true);
    GeometrySectionSettings copy;
    copy = given;
    EXPECT_EQ(copy.getOutlineFigures(), 3);
    EXPECT_EQ(copy.getIslandsFigures(), 1);
    EXPECT_FALSE(copy.existsOutlineXzProfile());
    EXPECT_TRUE(copy.existsIslandXzProfile());
}

// ---- figure kinds

TEST_F(GeometrySectionTest, FiguresIslandsAndProfilesAreReadInTheirRoles) {
    storeGeometry({"CONTOUR1", "Contour_A", withAttribute("CONTOUR1", 3), "XZ1", "XZ2"});
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(2, 1, 1, 1);
    GeometrySection section(3);
    section.readFromVDM(&op);
    EXPECT_EQ(objectsOf(section),
              (std::vector<Seen>{{"0000(contour1)", Role::OutlineFigure, "CONTOUR1", 10},
                                 {"0001(contour_a)", Role::OutlineFigure, "Contour_A", 12},
                                 {"0002(contour1)", Role::IslandFigure, "CONTOUR1", 11},
                                 {"0003(xz1)", Role::OutlineXzProfile, "XZ1", -1},
                                 {"0004(xz2)", Role::IslandXzProfile, "XZ2", -1}}));
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(GeometrySectionTest, NoLineIsReadPastTheSectionsLines) {
    storeGeometry({"CONTOUR1", "Contour_A"});
    GeometryOperation op(1, 0, Kind::PROFILE);
    op.parameters().setCounters(2, 1, 1, 0);
    GeometrySection section(3);
    section.readFromVDM(&op);
    EXPECT_EQ(objectsOf(section),
              (std::vector<Seen>{{"0000(contour1)", Role::OutlineFigure, "CONTOUR1", 10},
                                 {"0001(contour_a)", Role::OutlineFigure, "Contour_A", 12}}));
}

TEST_F(GeometrySectionTest, AnIslandOfAFaceMillingOperationHasRoleTwo) {
    storeGeometry({"CONTOUR1", "Contour_A"});
    for (const Kind kind : {Kind::FACEMILL, Kind::POCKET, Kind::CORNER}) {
        GeometryOperation op(1, 0, kind);
        op.parameters().setCounters(1, 1, 0, 0);
        GeometrySection section(3);
        section.readFromVDM(&op);
        const Role island =
            kind == Kind::FACEMILL ? Role::FacemillIslandFigure : Role::IslandFigure;
        EXPECT_EQ(objectsOf(section),
                  (std::vector<Seen>{{"0000(contour1)", Role::OutlineFigure, "CONTOUR1", 10},
                                     {"0001(contour_a)", island, "Contour_A", 12}}));
    }
}

TEST_F(GeometrySectionTest, ProfileFlagsOtherThanOneReadNoProfile) {
    storeGeometry({"CONTOUR1", "XZ1"});
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(1, 0, 2, 2147483647);
    GeometrySection section(3);
    section.readFromVDM(&op);
    EXPECT_EQ(objectsOf(section),
              (std::vector<Seen>{{"0000(contour1)", Role::OutlineFigure, "CONTOUR1", 10}}));
}

TEST_F(GeometrySectionTest, EveryIslandReadGoesToTheTraceLog) {
    storeGeometry({"CONTOUR1", "Contour_A", withAttribute("CONTOUR1", 3)});
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(1, 2, 0, 0);
    GeometrySection section(3);
    const std::size_t before = testsupport::fileContent(LogFile::traceLogPath()).size();
    LogFile::instance().setLevel(1);
    section.readFromVDM(&op);
    LogFile::instance().setLevel(2);
    const std::string trace = testsupport::fileContent(LogFile::traceLogPath()).substr(before);
    EXPECT_EQ(trace,
              "IslandsFigures Contour_A\nIslandsFigures " + withAttribute("CONTOUR1", 3) + "\n");
}

TEST_F(GeometrySectionTest, ASectionWithoutLinesReadsNothing) {
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(1, 0, 0, 0);
    for (const velkhost::Record& record :
         {velkhost::Record{"4 1 4 0 0 0 0", "CONTOUR1"}, velkhost::Record{"4 1 3 0 0 1", "x"}}) {
        host().setStore(1, {record});
        GeometrySection section(3);
        section.readFromVDM(&op);
        EXPECT_FALSE(section.existsKey("0000(contour1)"));
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(GeometrySectionTest, ObjectsAreWrittenInNumberOrderAndTheirRolesCounted) {
    storeGeometry({"old"});
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(9, 9, 9, 9);
    GeometrySection section(3);
    section.addVelkObjectParameter(0, withAttribute("CONTOUR1", 3), Role::IslandFigure);
    section.addVelkObjectParameter(1, "Contour_A", Role::OutlineFigure);
    section.writeToVDM(&op);
    EXPECT_EQ(storedLines(), (Texts{"4 1 4 0 0 0 2", withAttribute("CONTOUR1", 3), "Contour_A"}));
    EXPECT_EQ(op.parameters().counters(), (std::vector<int>{1, 1, 0, 0}));
    EXPECT_EQ(host().lines(1, 1), Texts{"4 1 0"});
}

TEST_F(GeometrySectionTest, ProfilesSetTheirFlags) {
    storeGeometry({});
    GeometryOperation op(1, 0, Kind::PROFILE);
    GeometrySection section(3);
    section.addVelkObjectParameter(10, "CONTOUR1", Role::OutlineFigure);
    section.addVelkObjectParameter(11, "XZ1", Role::OutlineXzProfile);
    section.addVelkObjectParameter(12, "XZ2", Role::IslandXzProfile);
    section.writeToVDM(&op);
    EXPECT_EQ(storedLines(), (Texts{"4 1 4 0 0 0 3", "CONTOUR1", "XZ1", "XZ2"}));
    EXPECT_EQ(op.parameters().counters(), (std::vector<int>{1, 0, 1, 1}));
}

TEST_F(GeometrySectionTest, WrittenObjectsFollowTheHostsNames) {
    storeGeometry({"CONTOUR1", "G12"});
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(2, 0, 0, 0);
    GeometrySection section(3);
    section.readFromVDM(&op);
    host().setFigure({1, "OUTLINE"});
    host().setCadObject(cadObject(30, velkhost::kNonCadObject, 14, 0));
    section.writeToVDM(&op);
    EXPECT_EQ(storedLines(), (Texts{"4 1 4 0 0 0 2", "OUTLINE", "G14"}));
}

TEST_F(GeometrySectionTest, AnEmptySectionIsWrittenEmptyAndCountsNothing) {
    host().setStore(1, {{"4 1 3 1 0 0", "message"}});
    GeometryOperation op(1, 0, Kind::POCKET);
    op.parameters().setCounters(2, 1, 1, 1);
    GeometrySection section(3);
    section.writeToVDM(&op);
    EXPECT_EQ(storedLines(), (Texts{"4 1 4 1 0 0 0", "message"}));
    EXPECT_EQ(op.parameters().counters(), (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(GeometrySectionTest, EveryFigureGroupRoundTripsToTheSameLines) {
    const Texts lines = {"CONTOUR1", "X1.5 Y0 Z-2", withAttribute("CONTOUR1", 3),
                         "G12",      "XZ1",         "XZ2"};
    for (const Kind kind : {Kind::POCKET, Kind::FACEMILL, Kind::PROFILE}) {
        storeGeometry(lines);
        GeometryOperation op(1, 0, kind);
        op.parameters().setCounters(2, 2, 1, 1);
        GeometrySection section(3);
        section.readFromVDM(&op);
        section.writeToVDM(&op);
        EXPECT_EQ(storedLines(), recordOf(lines));
        EXPECT_EQ(op.parameters().counters(), (std::vector<int>{2, 2, 1, 1}));
    }
}

// ---- plain lists and macros

TEST_F(GeometrySectionTest, PlainListsNeitherReadNorWriteTheCounters) {
    const Texts lines = {"Contour_A", withAttribute("CONTOUR1", 3), "G12"};
    for (const Kind kind : {Kind::STD3DGEO, Kind::RSURFING}) {
        storeGeometry(lines);
        GeometryOperation op(1, 0, kind);
        op.parameters().setCounters(0, 5, 1, 1);
        GeometrySection section(3);
        section.readFromVDM(&op);
        EXPECT_EQ(objectsOf(section),
                  (std::vector<Seen>{{"0000(contour_a)", Role::OutlineFigure, "Contour_A", 12},
                                     {"0001(contour1)", Role::OutlineFigure, "CONTOUR1", 11},
                                     {"0002(g12)", Role::OutlineFigure, "G12", 30}}));
        section.writeToVDM(&op);
        EXPECT_EQ(storedLines(), recordOf(lines));
        EXPECT_EQ(op.parameters().counters(), (std::vector<int>{0, 5, 1, 1}));
    }
}

TEST_F(GeometrySectionTest, EditorsKeepTheirMacroLinesAsTheyAre) {
    const Texts lines = {"G0 X0 Y0", "  CONTOUR1", "", "M30 "};
    for (const Kind kind : {Kind::MEDITOR, Kind::UEDITOR_MAX}) {
        storeGeometry(lines);
        GeometryOperation op(1, 0, kind);
        op.parameters().setCounters(0, 0, 0, 0);
        GeometrySection section(3);
        section.readFromVDM(&op);
        std::vector<std::string> keys;
        EXPECT_EQ(section.readKeys(keys), (Texts{"0000", "0001", "0002", "0003"}));
        EXPECT_EQ(section.getString("0001"), "  CONTOUR1");
        section.setString("0002", "G1 X5");
        section.writeToVDM(&op);
        EXPECT_EQ(storedLines(),
                  (Texts{"4 1 4 0 0 0 4", "G0 X0 Y0", "  CONTOUR1", "G1 X5", "M30 "}));
        EXPECT_EQ(op.parameters().counters(), (std::vector<int>{0, 0, 0, 0}));
    }
}

TEST_F(GeometrySectionTest, MacroLinesAreWrittenInKeyOrder) {
    storeGeometry({});
    GeometryOperation op(1, 0, Kind::MEDITOR);
    GeometrySection section(3);
    section.addMacroLine(10, "third");
    section.addMacroLine(2, "second");
    section.addMacroLine(0, "first");
    section.writeToVDM(&op);
    EXPECT_EQ(storedLines(), (Texts{"4 1 4 0 0 0 3", "first", "second", "third"}));
}

// ---- failures

TEST_F(GeometrySectionTest, NullOperationDoesNothing) {
    GeometrySection section(3);
    host().resetCallCounts();
    section.readFromVDM(nullptr);
    section.writeToVDM(nullptr);
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(GeometrySectionTest, AFailingReadOrWriteLogsAndClosesTheStore) {
    storeGeometry({"CONTOUR1"});
    BrokenNumberOperation op(1, 0, Kind::POCKET);
    GeometrySection section(3);
    testsupport::ErrorLogWatch log;
    section.readFromVDM(&op);
    section.writeToVDM(&op);
    EXPECT_EQ(log.texts(), (Texts{"Error in GeometrySection::readFromVDM()",
                                  "Error in GeometrySection::writeToVDM()"}));
    EXPECT_FALSE(op.getVDM()->isOpen());
    EXPECT_EQ(storedLines(), (Texts{"4 1 4 0 0 0 1", "CONTOUR1"}));
}

TEST_F(GeometrySectionTest, FailingObjectAccessLogsItsOwnTexts) {
    UnreachableGeometry section;
    testsupport::ErrorLogWatch log;
    section.setVelkObject("0000(contour1)", VelkObject());
    VelkObject object("G12", Role::OutlineFigure);
    EXPECT_EQ(&section.getVelkObject("0000(contour1)", object), &object);
    EXPECT_EQ(object.getName(), "G12");
    EXPECT_EQ(log.texts(), (Texts{"Error in GeometrySection::setVelkObject() => unreachable",
                                  "Error in GeometrySection::getVelkObjectk()  "}));
}

// Every allocation of adding an entry fails once, in turn: each failure is logged with the
// adding operation's text (or that of the dictionary or object it calls, for a failure inside
// them), and entries added before stay.
TEST_F(GeometrySectionTest, FailingAddsLogTheirTexts) {
    const std::string longLine(64, 'L');
    const std::string addObject = "Error in GeometrySection::addVelkObjectParameter()   ";
    const std::string addMacro = "Error in GeometrySection::addVelkObjectParameter() ";
    const std::string addEntry =
        "Error in SectionDictionary::addParameter(int pnr, const string &  name, Value * value, "
        "Value* defaultval, ValueDataType vdtype, bool isaxis)";
    const std::set<std::string> objectTexts = {
        "Error in VelkObject(const string & name, int attr, VelkObjectType type, "
        "GeometrySectionType sectiontype)",
        "Error in VelkObject(const string& str, GeometrySectionType sectiontype)"};
    std::set<std::string> seen;
    for (int skip = 0; skip < 200; ++skip) {
        GeometrySection section(3);
        section.addMacroLine(0, "kept");
        testsupport::ErrorLogWatch log;
        testsupport::failAllocationAfter(skip);
        section.addMacroLine(1, longLine);
        section.addVelkObjectParameter(2, longLine, Role::OutlineFigure);
        testsupport::stopFailingAllocations();
        const Texts texts = log.texts();
        seen.insert(texts.begin(), texts.end());
        EXPECT_EQ(section.getString("0000"), "kept");
        if (texts.empty()) {
            EXPECT_EQ(section.getString("0001"), longLine);
            EXPECT_TRUE(section.existsKey("0002(" + std::string(64, 'l') + ")"));
            break;
        }
    }
    for (const std::string& text : seen) {
        EXPECT_TRUE(text == addObject || text == addMacro || text == addEntry ||
                    objectTexts.count(text))
            << text;
    }
#ifndef _WIN32
    // On Windows the runtime's own string code allocates outside this program's operator new.
    EXPECT_TRUE(seen.count(addObject));
    EXPECT_TRUE(seen.count(addMacro));
#endif
}
