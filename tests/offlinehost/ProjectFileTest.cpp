#include <filesystem>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "FileContent.h"
#include "OfflineHostTest.h"
#include "WindowsCodePage.h"

namespace offlinehost {
namespace {

namespace fs = std::filesystem;
using velkhost::GlobalValue;
using velkhost::ProjectError;
using velkhost::Records;

const char* const kDemoProject = R"({
  "environment": {
    "VELK_DATA": "C:\\Data",
    "A_FIRST": "1"
  },
  "globals": {
    "w_t_val": [1, 2.5, 3],
    "n_count": 3,
    "n_list": [10, 20],
    "s_name": "Pocket",
    "w_depth": 2.0
  },
  "stores": {
    "100": [["OP 1 DRILL", "a=1"], ["OP 2 MILL"]],
    "10": [],
    "2": [[]]
  },
  "cad": {"objects": [{"number": 3, "type": 1, "start": [1, 2.5, 0]}],
          "figures": [{"name": "OUTER", "number": 1}]}
})";

const char* const kDemoProjectSaved = R"({
  "environment": {
    "A_FIRST": "1",
    "VELK_DATA": "C:\\Data"
  },
  "globals": {
    "n_count": 3,
    "n_list": [
      10,
      20
    ],
    "s_name": "Pocket",
    "w_depth": 2.0,
    "w_t_val": [
      1.0,
      2.5,
      3.0
    ]
  },
  "stores": {
    "2": [
      []
    ],
    "10": [],
    "100": [
      [
        "OP 1 DRILL",
        "a=1"
      ],
      [
        "OP 2 MILL"
      ]
    ]
  },
  "cad": {
    "figures": [
      {
        "number": 1,
        "name": "OUTER"
      }
    ],
    "objects": [
      {
        "number": 3,
        "type": 1,
        "name": 0,
        "attribute": 0,
        "start": [
          1.0,
          2.5,
          0.0
        ],
        "flags": 1,
        "deleted": false
      }
    ]
  }
}
)";

class ProjectFileTest : public OfflineHostTest {
  protected:
    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        OfflineHostTest::TearDown();
    }

    // A path in a folder of this test's own, removed after the test.
    fs::path pathFor(const std::string& fileName) {
        if (folder.empty()) {
            folder = fs::temp_directory_path() /
                     ("velkhost-test-" + std::to_string(std::random_device()()));
            fs::create_directories(folder);
        }
        return folder / fileName;
    }

    fs::path writeFile(const std::string& fileName, const std::string& text) {
        const fs::path path = pathFor(fileName);
        writeFileContent(path, text);
        return path;
    }

    static std::string readFile(const fs::path& path) { return fileContent(path); }

    // The message of the ProjectError that loading `json` as "demo.json" throws.
    std::string loadError(const std::string& json) {
        try {
            host.loadProjectText(json, "demo.json");
        } catch (const ProjectError& error) {
            return error.what();
        }
        return "<loaded>";
    }

    fs::path folder;
};

TEST_F(ProjectFileTest, LoadsEverySectionOfAFile) {
    host.loadProject(writeFile("demo.json", kDemoProject).string());
    EXPECT_EQ(host.environment("VELK_DATA"), "C:\\Data");
    EXPECT_EQ(host.global("n_count"), GlobalValue(3));
    EXPECT_EQ(host.global("w_depth"), GlobalValue(2.0));
    EXPECT_EQ(host.global("s_name"), GlobalValue(std::string("Pocket")));
    EXPECT_EQ(host.global("n_list"), GlobalValue(std::vector<int>{10, 20}));
    EXPECT_EQ(host.global("w_t_val"), GlobalValue(std::vector<double>{1.0, 2.5, 3.0}));
    EXPECT_EQ(host.records(100), (Records{{"OP 1 DRILL", "a=1"}, {"OP 2 MILL"}}));
    EXPECT_EQ(host.records(10), Records{});
    EXPECT_EQ(host.records(2), Records{{}});
    EXPECT_EQ(VelkMacroVdmExists(100), 1);
}

TEST_F(ProjectFileTest, EverySectionIsOptional) {
    host.loadProjectText("{}", "empty.json");
    EXPECT_EQ(host.projectText(),
              "{\n  \"environment\": {},\n  \"globals\": {},\n  \"stores\": {}\n}\n");
}

TEST_F(ProjectFileTest, SavesInAStableOrderWithTwoSpaceIndent) {
    host.loadProjectText(kDemoProject, "demo.json");
    EXPECT_EQ(host.projectText(), kDemoProjectSaved);
}

TEST_F(ProjectFileTest, SavingWhatWasLoadedGivesTheSameBytes) {
    host.loadProjectText(kDemoProject, "demo.json");
    const fs::path first = pathFor("first.json");
    host.saveProject(first.string());
    host.loadProject(first.string());
    const fs::path second = pathFor("second.json");
    host.saveProject(second.string());
    EXPECT_EQ(readFile(first), kDemoProjectSaved);
    EXPECT_EQ(readFile(second), readFile(first));
}

TEST_F(ProjectFileTest, StoresAreSavedInNumericOrder) {
    host.setStore(100, {});
    host.setStore(2, {});
    host.setStore(10, {});
    const std::string text = host.projectText();
    EXPECT_LT(text.find("\"2\""), text.find("\"10\""));
    EXPECT_LT(text.find("\"10\""), text.find("\"100\""));
}

TEST_F(ProjectFileTest, NumbersKeepTheirKind) {
    host.setGlobal("w_whole", 2.0);
    host.setGlobal("n_whole", 2);
    host.setGlobal("w_list", std::vector<double>{1.0, -0.5});
    const std::string text = host.projectText();
    EXPECT_NE(text.find("\"w_whole\": 2.0\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\"n_whole\": 2,\n"), std::string::npos) << text;
    host.loadProjectText(text, "saved.json");
    EXPECT_EQ(host.global("w_whole"), GlobalValue(2.0));
    EXPECT_EQ(host.global("n_whole"), GlobalValue(2));
    EXPECT_EQ(host.global("w_list"), GlobalValue(std::vector<double>{1.0, -0.5}));
}

TEST_F(ProjectFileTest, AChangedLineShowsAsOneChangedLineOfTheFile) {
    host.loadProjectText(kDemoProject, "demo.json");
    const int handle = VelkMacroVdmOpen(100, 0);
    ASSERT_NE(VelkMacroVdmSingleSeek(handle, 1), 0);
    ASSERT_NE(VelkMacroVdmSingleReplace$(handle, "a=2", 1), 0);
    std::string expected = kDemoProjectSaved;
    expected.replace(expected.find("\"a=1\""), 5, "\"a=2\"");
    EXPECT_EQ(host.projectText(), expected);
}

TEST_F(ProjectFileTest, ASuccessfulLoadClosesHandlesAndClearsRecordsAndFaults) {
    host.setStore(100, {{"OP"}});
    const int handle = VelkMacroVdmOpen(100, 0);
    host.failOpen(100, true);
    host.holdOpenElsewhere(100, true);
    MessageBoxA(nullptr, "text", "caption", 0U);
    VelkMissingAPI();
    host.loadProjectText(kDemoProject, "demo.json");
    EXPECT_EQ(VelkMacroVdmClose(handle), 0);
    EXPECT_EQ(VelkMacroVdmCheckOpen(100), 0);
    EXPECT_GT(VelkMacroVdmOpen(100, 0), 0);
    EXPECT_TRUE(host.messageBoxes().empty());
    EXPECT_EQ(host.missingApiCalls(), 0);
    EXPECT_EQ(host.callCount("MessageBoxA"), 0);
}

TEST_F(ProjectFileTest, AFailedLoadLeavesThePreviousProjectAsItWas) {
    host.loadProjectText(kDemoProject, "demo.json");
    const int handle = VelkMacroVdmOpen(100, 0);
    host.failAddsAfter(100, 0);
    MessageBoxA(nullptr, "text", "caption", 0U);
    const std::string before = host.projectText();

    EXPECT_THROW(
        host.loadProjectText(R"({"globals": {"n_other": 1}, "stores": {"x": []}})", "bad.json"),
        ProjectError);
    EXPECT_THROW(host.loadProject(pathFor("missing.json").string()), ProjectError);

    EXPECT_EQ(host.projectText(), before);
    EXPECT_FALSE(host.global("n_other"));
    EXPECT_EQ(VelkMacroVdmSize(handle), 2);
    EXPECT_EQ(VelkMacroVdmSingleAdd$(handle, "x", 1), 0);
    EXPECT_EQ(host.messageBoxes().size(), 1U);
}

TEST_F(ProjectFileTest, AFileThatCannotBeOpenedIsReported) {
    const std::string missing = pathFor("missing.json").string();
    EXPECT_THROW(
        {
            try {
                host.loadProject(missing);
            } catch (const ProjectError& error) {
                EXPECT_EQ(std::string(error.what()), missing + ": cannot be read");
                throw;
            }
        },
        ProjectError);
}

TEST_F(ProjectFileTest, AFolderCannotBeRead) {
    const std::string folderPath = pathFor("folder.json").string();
    fs::create_directories(folderPath);
    try {
        host.loadProject(folderPath);
        FAIL() << "loaded a folder";
    } catch (const ProjectError& error) {
        EXPECT_EQ(std::string(error.what()), folderPath + ": cannot be read");
    }
}

TEST_F(ProjectFileTest, InvalidJsonIsReportedWithTheParsersMessage) {
    const std::string message = loadError("{\"stores\": {\n");
    EXPECT_EQ(message.rfind("demo.json: not valid JSON: ", 0), 0U) << message;
    EXPECT_NE(message.find("line 2"), std::string::npos) << message;
    EXPECT_EQ(message.find("[json.exception"), std::string::npos) << message;
}

TEST_F(ProjectFileTest, ANumberBeyondADoubleIsNotValidJson) {
    EXPECT_EQ(loadError("{\"globals\": {\"w_big\": 1e999}}"),
              "demo.json: not valid JSON: number overflow parsing '1e999'");
}

TEST_F(ProjectFileTest, AnEmptyFileIsNotValidJson) {
    const std::string message = loadError("");
    EXPECT_EQ(message.rfind("demo.json: not valid JSON: ", 0), 0U) << message;
}

TEST_F(ProjectFileTest, TheErrorNamesTheFileAsGiven) {
    const std::string path = writeFile("named.json", "[]").string();
    try {
        host.loadProject(path);
        FAIL() << "loaded a list";
    } catch (const ProjectError& error) {
        EXPECT_EQ(std::string(error.what()), path + ": expected an object");
    }
}

TEST_F(ProjectFileTest, TheProjectMustBeAnObject) {
    EXPECT_EQ(loadError("[]"), "demo.json: expected an object");
    EXPECT_EQ(loadError("42"), "demo.json: expected an object");
}

TEST_F(ProjectFileTest, UnknownTopLevelKeysAreRefused) {
    EXPECT_EQ(loadError(R"({"colour": 1})"),
              "demo.json: /colour: expected one of environment, globals, stores, cad, capture");
}

TEST_F(ProjectFileTest, EnvironmentValuesMustBeTexts) {
    EXPECT_EQ(loadError(R"({"environment": []})"), "demo.json: /environment: expected an object");
    EXPECT_EQ(loadError(R"({"environment": {"VELK_DATA": 1}})"),
              "demo.json: /environment/VELK_DATA: expected a text");
}

TEST_F(ProjectFileTest, GlobalsMustBeNumbersTextsOrListsOfNumbers) {
    EXPECT_EQ(loadError(R"({"globals": "x"})"), "demo.json: /globals: expected an object");
    EXPECT_EQ(loadError(R"({"globals": {"n_x": null}})"),
              "demo.json: /globals/n_x: expected a number, a text or a list of numbers");
    EXPECT_EQ(loadError(R"({"globals": {"n_x": {"a": 1}}})"),
              "demo.json: /globals/n_x: expected a number, a text or a list of numbers");
    EXPECT_EQ(loadError(R"({"globals": {"w_t_val": [1.5, "2"]}})"),
              "demo.json: /globals/w_t_val/1: expected a number");
}

TEST_F(ProjectFileTest, IntegersMustFitAnInt) {
    EXPECT_EQ(loadError(R"({"globals": {"n_x": 2147483648}})"),
              "demo.json: /globals/n_x: expected an integer between -2147483648 and 2147483647");
    EXPECT_EQ(loadError(R"({"globals": {"n_x": [1, -2147483649]}})"),
              "demo.json: /globals/n_x/1: expected an integer between -2147483648 and "
              "2147483647");
    host.loadProjectText(R"({"globals": {"n_x": [2147483647, -2147483648]}})", "demo.json");
    EXPECT_EQ(host.global("n_x"), GlobalValue(std::vector<int>{2147483647, -2147483647 - 1}));
}

TEST_F(ProjectFileTest, AnIntegerBeyondSixtyFourBitsIsRefusedLikeAnyTooLargeInteger) {
    EXPECT_EQ(loadError(R"({"globals": {"n_x": 1000000000000000000000000000000}})"),
              "demo.json: /globals/n_x: expected an integer between -2147483648 and 2147483647");
    EXPECT_EQ(loadError(R"({"globals": {"n_x": [1, -1000000000000000000000000000000]}})"),
              "demo.json: /globals/n_x/1: expected an integer between -2147483648 and "
              "2147483647");
    host.loadProjectText(R"({"globals": {"w_x": 1e30}})", "demo.json");
    EXPECT_EQ(host.global("w_x"), GlobalValue(1e30));
}

TEST_F(ProjectFileTest, ADocumentThatIsOneNumberIsRefusedWhateverItsSize) {
    EXPECT_EQ(loadError("5"), "demo.json: expected an object");
    EXPECT_EQ(loadError("66666666633333366666333333"), "demo.json: expected an object");
}

TEST_F(ProjectFileTest, ARepeatedKeyIsRefused) {
    EXPECT_EQ(loadError(R"({"globals": {"n_x": 1, "n_y": 2, "n_x": 3}})"),
              "demo.json: /globals/n_x: expected a key not used before in its object");
    EXPECT_EQ(loadError(R"({"stores": {"1": []}, "stores": {}})"),
              "demo.json: /stores: expected a key not used before in its object");
    EXPECT_EQ(loadError(R"({"stores": {"1": [], "1": []}})"),
              "demo.json: /stores/1: expected a key not used before in its object");
    EXPECT_EQ(loadError(R"({"environment": {"A": "1", "A": "2"}})"),
              "demo.json: /environment/A: expected a key not used before in its object");
}

TEST_F(ProjectFileTest, ANulByteIsRefusedWhereverItIs) {
    EXPECT_EQ(loadError(std::string(R"({"globals": {}})") + '\0' + "garbage"),
              "demo.json: not valid JSON: a NUL byte at byte 15");
    const fs::path path =
        writeFile("with-a-nul-byte.json", std::string(R"({"stores": {}})") + '\0');
    try {
        host.loadProject(path.string());
        ADD_FAILURE() << "loaded";
    } catch (const ProjectError& error) {
        EXPECT_EQ(std::string(error.what()),
                  path.string() + ": not valid JSON: a NUL byte at byte 14");
    }
}

TEST_F(ProjectFileTest, AStoreLineWithANulCharacterIsRefused) {
    EXPECT_EQ(loadError(R"({"stores": {"1": [["OP", "a\u0000b"]]}})"),
              "demo.json: /stores/1/0/1: expected a text line without a NUL character (the host "
              "ends a line there)");
}

TEST_F(ProjectFileTest, PathsEscapeSpecialCharactersOfKeys) {
    EXPECT_EQ(loadError(R"({"globals": {"a/b~c": true}})"),
              "demo.json: /globals/a~1b~0c: expected a number, a text or a list of numbers");
}

TEST_F(ProjectFileTest, StoresMustBeListsOfRecordsOfTextLines) {
    EXPECT_EQ(loadError(R"({"stores": []})"), "demo.json: /stores: expected an object");
    EXPECT_EQ(loadError(R"({"stores": {"100": {}}})"),
              "demo.json: /stores/100: expected a list of records");
    EXPECT_EQ(loadError(R"({"stores": {"100": ["OP"]}})"),
              "demo.json: /stores/100/0: expected a record (a list of text lines)");
    EXPECT_EQ(loadError(R"({"stores": {"100": [["OP 1", "a=1", 2]]}})"),
              "demo.json: /stores/100/0/2: expected a text line");
}

// The path of the 101st list or object of a file, when the 3rd one is at `start` and each
// holds the next as its first value.
std::string tooDeepPath(const std::string& start) {
    std::string path = start;
    for (int depth = 4; depth <= 101; ++depth) {
        path += "/0";
    }
    return path;
}

std::string nestedLists(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST_F(ProjectFileTest, NestingDeeperThanAHundredIsRefusedWithItsPath) {
    const std::string expected = "demo.json: " + tooDeepPath("/globals/deep") +
                                 ": expected at most 100 lists and objects nested in each other";
    EXPECT_EQ(loadError(R"({"globals": {"deep": )" + nestedLists(98) + "}}"),
              "demo.json: /globals/deep/0: expected a number");
    EXPECT_EQ(loadError(R"({"globals": {"deep": )" + nestedLists(99) + "}}"), expected);
    EXPECT_EQ(loadError(R"({"globals": {"deep": )" + nestedLists(60000) + "}}"), expected);
    EXPECT_EQ(loadError(R"({"environment": {"e": [1, )" + nestedLists(200000) + "]}}"),
              "demo.json: " + tooDeepPath("/environment/e").replace(14, 2, "/1") +
                  ": expected at most 100 lists and objects nested in each other");
}

TEST_F(ProjectFileTest, DeepNestingInAFileIsRefusedWithoutReadingFurther) {
    const fs::path path =
        writeFile("deep.json", R"({"globals": {"deep": )" + nestedLists(1000000) + "}}");
    try {
        host.loadProject(path.string());
        ADD_FAILURE() << "loaded";
    } catch (const ProjectError& error) {
        EXPECT_EQ(std::string(error.what()),
                  path.string() + ": " + tooDeepPath("/globals/deep") +
                      ": expected at most 100 lists and objects nested in each other");
    }
}

TEST_F(ProjectFileTest, StoreKeysMustBePlainStoreNumbers) {
    for (const std::string key : {"abc", "", "010", "+1", "1.5", " 1", "2147483648"}) {
        EXPECT_EQ(loadError(R"({"stores": {")" + key + R"(": []}})"),
                  "demo.json: /stores/" + key + ": expected a store number");
    }
}

TEST_F(ProjectFileTest, SavingToAnUnwritablePathIsReported) {
    const std::string path = (pathFor("no-such-folder") / "p.json").string();
    try {
        host.saveProject(path);
        FAIL() << "saved into a missing folder";
    } catch (const ProjectError& error) {
        EXPECT_EQ(std::string(error.what()),
                  path + ": cannot be written: no new file can be made in its folder");
    }
}

// Every byte the host can hand over in a text, 1..255.
std::string everyByte() {
    std::string bytes;
    for (int byte = 1; byte <= 255; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST_F(ProjectFileTest, EveryByteOfATextIsSavedAndLoadedUnchanged) {
    const std::string bytes = everyByte();
    host.setStore(1, {{"OP " + bytes, bytes}});
    host.setGlobal("s_" + bytes, bytes);
    host.setEnvironment("E_" + bytes, bytes);
    host.setFigure({1, "F" + bytes});
    const std::string text = host.projectText();

    host.reset();
    host.loadProjectText(text, "bytes.json");
    EXPECT_EQ(host.lines(1, 0), (velkhost::Record{"OP " + bytes, bytes}));
    EXPECT_EQ(host.globalAs<std::string>("s_" + bytes), bytes);
    EXPECT_EQ(host.environment("E_" + bytes), bytes);
    ASSERT_EQ(host.figures().size(), 1u);
    EXPECT_EQ(host.figures()[0].name, "F" + bytes);
    EXPECT_EQ(host.projectText(), text);
}

TEST_F(ProjectFileTest, BytesAreSavedAsTheirWindows1252Characters) {
    host.setStore(1, {{"\xB0 \xE4 \x80 \x81 \x9F \x01"}});
    EXPECT_NE(
        host.projectText().find("\"\xC2\xB0 \xC3\xA4 \xE2\x82\xAC \xC2\x81 \xC5\xB8 \\u0001\""),
        std::string::npos)
        << host.projectText();
}

TEST_F(ProjectFileTest, HandWrittenCharactersLoadAsTheirBytes) {
    host.loadProjectText(R"({"stores": {"1": [["90\u00b0 \u20ac", "\u00e4\u0178"]]},
                            "globals": {"s_\u00e9": "\u0090"}})",
                         "demo.json");
    EXPECT_EQ(host.lines(1, 0), (velkhost::Record{"90\xB0 \x80", "\xE4\x9F"}));
    EXPECT_EQ(host.globalAs<std::string>("s_\xE9"), "\x90");
}

TEST_F(ProjectFileTest, ACharacterNoByteStandsForIsReported) {
    EXPECT_EQ(loadError(R"({"stores": {"1": [["ok \u2713"]]}})"),
              "demo.json: /stores/1/0/0: expected a text line of Windows-1252 characters");
    EXPECT_EQ(loadError(R"({"globals": {"s_\u4e00": 1}})"),
              "demo.json: /globals/s_\xE4\xB8\x80: expected a name of Windows-1252 characters");
}

TEST_F(ProjectFileTest, ACaptureBlockIsLoadedAndSavedBack) {
    const std::string text = R"({
  "environment": {},
  "globals": {},
  "stores": {},
  "capture": {
    "taken": "2026-11-23T14:05:00Z",
    "library": "0.1.0",
    "missingExports": [
      "VelkGetNonCadObject"
    ]
  }
}
)";
    host.loadProjectText(text, "demo.json");
    EXPECT_EQ(host.projectText(), text);
    EXPECT_EQ(loadError(R"({"capture": {"when": "now"}})"),
              "demo.json: /capture/when: expected one of taken, library, missingExports");
}

// The exports a captured session's host lacked stay missing when the capture is loaded: each
// call goes to "VelkMissingAPI" and takes its answer; the other exports answer as always.
TEST_F(ProjectFileTest, TheExportsACaptureListsAsMissingStayMissing) {
    host.loadProjectText(R"({
  "environment": {"TURNDRIVENTOOLS": "1"},
  "globals": {"w_depth": 2.5},
  "stores": {"1": [["0 1 0"]]},
  "capture": {
    "missingExports": ["VelkMacroVdmExists", "VelkReadGlobalW", "VelkEnvironment",
                       "VelkObjectStart", "VelkGetWnd"]
  }
})",
                         "demo.json");
    int status = -1;
    double x = 7.0, y = 7.0, z = 7.0;
    EXPECT_EQ(VelkMacroVdmExists(1), 0);
    EXPECT_EQ(VelkReadGlobalW("w_depth", &status), 0.0);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(VelkEnvironment("TURNDRIVENTOOLS"), nullptr);
    VelkObjectStart(10, &x, &y, &z);
    EXPECT_EQ(x, 7.0);
    EXPECT_EQ(VelkGetWnd(0), nullptr);
    EXPECT_EQ(host.missingApiCalls(), 5);
    EXPECT_EQ(host.callCount("VelkMissingAPI"), 5);
    EXPECT_EQ(host.callCount("VelkMacroVdmExists"), 0);
    EXPECT_EQ(host.callCount("VelkReadGlobalW"), 0);

    EXPECT_EQ(VelkMacroVdmCheckOpen(1), 0);  // not listed: answers as always
    EXPECT_EQ(host.callCount("VelkMacroVdmCheckOpen"), 1);
    EXPECT_EQ(host.missingApiCalls(), 5);

    host.loadProjectText(R"({"stores": {"1": [["0 1 0"]]}})", "demo.json");
    EXPECT_EQ(VelkMacroVdmExists(1), 1);  // a project without the capture block has them all
    EXPECT_EQ(host.missingApiCalls(), 0);
}

TEST_F(ProjectFileTest, TheStoresAreCheckedAtEveryLevel) {
    EXPECT_EQ(loadError(R"({"stores": 1})"), "demo.json: /stores: expected an object");
    EXPECT_EQ(loadError(R"({"stores": "x"})"), "demo.json: /stores: expected an object");
    EXPECT_EQ(loadError(R"({"stores": {"1": 2}})"),
              "demo.json: /stores/1: expected a list of records");
    EXPECT_EQ(loadError(R"({"stores": {"1": null}})"),
              "demo.json: /stores/1: expected a list of records");
    EXPECT_EQ(loadError(R"({"stores": {"1": [{}]}})"),
              "demo.json: /stores/1/0: expected a record (a list of text lines)");
    EXPECT_EQ(loadError(R"({"stores": {"1": [[], 5]}})"),
              "demo.json: /stores/1/1: expected a record (a list of text lines)");
    EXPECT_EQ(loadError(R"({"stores": {"1": [["a", ["b"]]]}})"),
              "demo.json: /stores/1/0/1: expected a text line");
    EXPECT_EQ(loadError(R"({"stores": {"1": [["a"], ["b", {"c": 1}]]}})"),
              "demo.json: /stores/1/1/1: expected a text line");
    EXPECT_EQ(loadError(R"({"stores": {"1": [[null]]}})"),
              "demo.json: /stores/1/0/0: expected a text line");
    EXPECT_EQ(loadError(R"({"stores": {"1": [[true]]}})"),
              "demo.json: /stores/1/0/0: expected a text line");
    EXPECT_EQ(loadError(R"({"stores": {"1": [], "2": [[1.5]]}})"),
              "demo.json: /stores/2/0/0: expected a text line");
}

TEST_F(ProjectFileTest, OnlyAnObjectIsAProject) {
    EXPECT_EQ(loadError(R"("project")"), "demo.json: expected an object");
    EXPECT_EQ(loadError("null"), "demo.json: expected an object");
    EXPECT_EQ(loadError("true"), "demo.json: expected an object");
}

TEST_F(ProjectFileTest, AStoreNumberIsCheckedBeforeItsRecords) {
    EXPECT_EQ(loadError(R"({"stores": {"x": [["a", 7]]}})"),
              "demo.json: /stores/x: expected a store number");
}

TEST_F(ProjectFileTest, BadSyntaxAfterAMismatchIsReportedAsBadSyntax) {
    const std::string message = loadError("{\"colour\": 1,\n \"stores\": {\"1\": [[7]]}, ");
    EXPECT_EQ(message.rfind("demo.json: not valid JSON: ", 0), 0U) << message;
    EXPECT_NE(message.find("line 2"), std::string::npos) << message;
}

TEST_F(ProjectFileTest, NumbersAreSavedInTheirShortestExactForm) {
    host.setGlobal("w_list", std::vector<double>{1.0, 0.1, 1e-07, -0.0, 1.0 / 3, 1e16, 1e300,
                                                 123456789012345.0, 5e-324, -2.5});
    host.setGlobal("n_list", std::vector<int>{0, -1, 2147483647, -2147483647 - 1});
    EXPECT_EQ(host.projectText(), R"({
  "environment": {},
  "globals": {
    "n_list": [
      0,
      -1,
      2147483647,
      -2147483648
    ],
    "w_list": [
      1.0,
      0.1,
      1e-07,
      -0.0,
      0.3333333333333333,
      1e+16,
      1e+300,
      123456789012345.0,
      5e-324,
      -2.5
    ]
  },
  "stores": {}
}
)");
}

TEST_F(ProjectFileTest, EveryByteIsSavedAsItsEscapeOrCharacter) {
    std::string expected =
        "\\u0001\\u0002\\u0003\\u0004\\u0005\\u0006\\u0007\\b\\t\\n\\u000b\\f\\r"
        "\\u000e\\u000f\\u0010\\u0011\\u0012\\u0013\\u0014\\u0015\\u0016\\u0017"
        "\\u0018\\u0019\\u001a\\u001b\\u001c\\u001d\\u001e\\u001f !\\\"#$%&'()*+,-./"
        "0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\\\]^_`"
        "abcdefghijklmnopqrstuvwxyz{|}~\x7F";
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        expected += VelkApi::host::codepage::toUtf8(std::string(1, static_cast<char>(byte)));
    }
    host.setStore(1, {{everyByte()}});
    EXPECT_EQ(host.projectText(),
              "{\n  \"environment\": {},\n  \"globals\": {},\n  \"stores\": {\n"
              "    \"1\": [\n      [\n        \"" +
                  expected + "\"\n      ]\n    ]\n  }\n}\n");
}

TEST_F(ProjectFileTest, ALargeProjectIsSavedAndLoadedBackUnchanged) {
    host.loadProjectText(kDemoProject, "demo.json");
    Records records;
    for (int i = 0; i < 60000; ++i) {
        records.push_back({"OP " + std::to_string(i) + " \xB0", "a=" + std::to_string(i), ""});
    }
    host.setStore(1, records);
    const std::string text = host.projectText();
    const fs::path path = pathFor("large.json");
    host.saveProject(path.string());
    ASSERT_GT(text.size(), std::size_t{2} << 20);  // saved in several blocks
    EXPECT_EQ(readFile(path), text);

    host.reset();
    host.loadProject(path.string());
    EXPECT_EQ(host.records(1), records);
    EXPECT_EQ(host.projectText(), text);
}

TEST_F(ProjectFileTest, LoadingTellsHowFarItHasComeEveryMegabyteAndAtTheEnd) {
    Records records(40000, velkhost::Record{"OP 1 DRILL", "a=1"});
    host.setStore(1, records);
    const fs::path path = pathFor("large.json");
    host.saveProject(path.string());
    const std::size_t size = fs::file_size(path);
    ASSERT_GT(size, std::size_t{2} << 20);

    std::vector<std::pair<std::size_t, std::size_t>> reports;
    host.reset();
    host.loadProject(path.string(), [&](std::size_t read, std::size_t total) {
        reports.emplace_back(read, total);
    });
    std::vector<std::pair<std::size_t, std::size_t>> expected;
    for (std::size_t read = 1 << 20; read < size; read += 1 << 20) {
        expected.emplace_back(read, size);
    }
    expected.emplace_back(size, size);
    EXPECT_EQ(reports, expected);
    EXPECT_EQ(host.records(1), records);
}

TEST_F(ProjectFileTest, AFailedLoadStopsItsProgress) {
    std::vector<std::size_t> reports;
    const std::string path = writeFile("bad.json", R"({"stores": {"1": [[7]]}})").string();
    EXPECT_THROW(
        host.loadProject(path, [&](std::size_t read, std::size_t) { reports.push_back(read); }),
        ProjectError);
    EXPECT_TRUE(reports.empty());
}

}  // namespace
}  // namespace offlinehost
