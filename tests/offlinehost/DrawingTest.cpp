// The project's drawing: loading and saving it, and the host's geometry functions over it.
#include <string>
#include <vector>

#include "OfflineHostTest.h"

namespace offlinehost {
namespace {

using velkhost::CadFigure;
using velkhost::CadObject;
using velkhost::ProjectError;

const char* const kDrawing = R"({
  "cad": {
    "objects": [
      {"number": 12, "type": 20, "name": 2, "attribute": 1, "start": [5, 6, 7]},
      {"number": 11, "type": 20, "name": 2},
      {"number": 10, "type": 20, "name": 1, "start": [1.5, -2, 0]},
      {"number": 20, "type": 1, "start": [40, 30, -5], "flags": 3},
      {"number": 21, "type": 1, "start": [40, 30, 0], "deleted": true},
      {"number": 22, "type": 2, "start": [0, 0, 0], "flags": 0},
      {"number": 30, "type": 29, "name": 7}
    ],
    "figures": [{"number": 2, "name": "POCKET"}, {"number": 1, "name": "OUTER"}]
  }
})";

class DrawingTest : public OfflineHostTest {
  protected:
    void SetUp() override {
        OfflineHostTest::SetUp();
        host.loadProjectText(kDrawing, "drawing.json");
    }

    std::string loadError(const std::string& cad) {
        try {
            host.loadProjectText(R"({"cad": )" + cad + "}", "demo.json");
        } catch (const ProjectError& error) {
            return error.what();
        }
        return "<loaded>";
    }
};

// Collects what a walk of the drawing hands over, and accepts the object numbered `accept`.
struct Walk {
    int accept = -1;
    std::vector<std::vector<double>> seen;  // flags, number, x, y, z
};

int recordObject(const int* object, void* /*unused*/, const double* xyz, void* context) {
    auto& walk = *static_cast<Walk*>(context);
    walk.seen.push_back({double(object[0]), double(object[1]), xyz[0], xyz[1], xyz[2]});
    return object[1] == walk.accept ? 0 : -1;
}

TEST_F(DrawingTest, FiguresAreFoundByNameAndTheirObjectsByInstance) {
    EXPECT_EQ(VelkGetFigure("OUTER"), 1);
    EXPECT_EQ(VelkGetFigure("POCKET"), 2);
    EXPECT_EQ(VelkGetFigure("pocket"), -1);
    EXPECT_EQ(VelkGetFigure(nullptr), -1);
    EXPECT_EQ(VelkGetFigureObject(1), 10);
    EXPECT_EQ(VelkGetFigureObject(2), 11);
    EXPECT_EQ(VelkGetFigureInstance(2, 1), 12);
    EXPECT_EQ(VelkGetFigureInstance(2, 2), 0);
    EXPECT_EQ(VelkGetFigureObject(3), 0);
    EXPECT_EQ(std::string(VelkFigureFindName(2)), "POCKET");
    EXPECT_EQ(std::string(VelkFigureFindName(9)), "");
}

TEST_F(DrawingTest, ObjectsAnswerTypeNameAttributeStartAndDeletedState) {
    EXPECT_EQ(VelkGetObjectType(12), 20);
    EXPECT_EQ(VelkGetObjectName(12), 2);
    EXPECT_EQ(VelkGetObjectAttribute(12), 1);
    EXPECT_EQ(VelkGetObjectDelete(12), 0);
    EXPECT_EQ(VelkGetObjectDelete(21), 1);
    double x = 9, y = 9, z = 9;
    VelkObjectStart(20, &x, &y, &z);
    EXPECT_EQ(std::vector<double>({x, y, z}), std::vector<double>({40, 30, -5}));
    EXPECT_EQ(VelkGetNonCadObject(7, 3), 30);
    EXPECT_EQ(VelkGetObjectName(30), 7);
    EXPECT_EQ(VelkGetNonCadObject(8, 3), 0);
}

TEST_F(DrawingTest, AnUnknownObjectIsDeletedAndHasNothing) {
    double x = 9, y = 9, z = 9;
    VelkObjectStart(99, &x, &y, &z);
    EXPECT_EQ(std::vector<double>({x, y, z}), std::vector<double>({0, 0, 0}));
    EXPECT_EQ(VelkGetObjectDelete(99), 1);
    EXPECT_EQ(VelkGetObjectType(99), 0);
    EXPECT_EQ(VelkGetObjectName(99), 0);
    EXPECT_EQ(VelkGetObjectAttribute(99), 0);
}

TEST_F(DrawingTest, AWalkHandsOverTheDrawingInNumberOrderWithoutDeletedAndNonCadObjects) {
    Walk walk;
    VelkProcessCad(&recordObject, 1, nullptr, nullptr, nullptr, -1, &walk);
    EXPECT_EQ(walk.seen, (std::vector<std::vector<double>>{{1, 10, 1.5, -2, 0},
                                                           {1, 11, 0, 0, 0},
                                                           {1, 12, 5, 6, 7},
                                                           {3, 20, 40, 30, -5},
                                                           {0, 22, 0, 0, 0}}));
}

TEST_F(DrawingTest, AWalkStopsAtTheFirstObjectTheCallbackAccepts) {
    Walk walk;
    walk.accept = 11;
    VelkProcessCad(&recordObject, 1, nullptr, nullptr, nullptr, -1, &walk);
    ASSERT_EQ(walk.seen.size(), 2u);
    EXPECT_EQ(walk.seen.back()[1], 11);
}

TEST_F(DrawingTest, SavedInNumberOrderWithEveryFieldAndLoadedBackTheSame) {
    const std::string text = host.projectText();
    EXPECT_NE(text.find(R"("figures": [
      {
        "number": 1,
        "name": "OUTER"
      },
      {
        "number": 2,
        "name": "POCKET"
      }
    ],
    "objects": [
      {
        "number": 10,
        "type": 20,
        "name": 1,
        "attribute": 0,
        "start": [
          1.5,
          -2.0,
          0.0
        ],
        "flags": 1,
        "deleted": false
      },)"),
              std::string::npos)
        << text;
    host.loadProjectText(text, "saved.json");
    EXPECT_EQ(host.projectText(), text);
    EXPECT_EQ(host.cadObjects().size(), 7u);
}

TEST_F(DrawingTest, ProgramsSetUpFiguresAndObjects) {
    host.clearDrawing();
    EXPECT_EQ(host.projectText().find("cad"), std::string::npos);
    host.setFigure({4, "SLOT"});
    CadObject object;
    object.number = 40;
    object.type = velkhost::kFigureObject;
    object.name = 4;
    host.setCadObject(object);
    object.attribute = 2;
    host.setCadObject(object);  // replaces object 40
    EXPECT_EQ(VelkGetFigureInstance(VelkGetFigure("SLOT"), 2), 40);
    EXPECT_EQ(VelkGetFigureObject(4), 0);
    ASSERT_EQ(host.figures().size(), 1u);
    EXPECT_EQ(host.figures()[0].name, "SLOT");
    ASSERT_EQ(host.cadObjects().size(), 1u);
    EXPECT_EQ(host.cadObjects()[0].attribute, 2);
}

TEST_F(DrawingTest, AnEmptyDrawingIsNotSaved) {
    host.loadProjectText(R"({"cad": {}})", "demo.json");
    EXPECT_EQ(host.projectText(),
              "{\n  \"environment\": {},\n  \"globals\": {},\n  \"stores\": {}\n}\n");
}

TEST_F(DrawingTest, ABadDrawingIsOneClearErrorAndKeepsTheProjectLoadedBefore) {
    EXPECT_EQ(loadError("[]"), "demo.json: /cad: expected an object");
    EXPECT_EQ(loadError(R"({"layers": []})"),
              "demo.json: /cad/layers: expected one of figures, objects");
    EXPECT_EQ(loadError(R"({"figures": {}})"),
              "demo.json: /cad/figures: expected a list of figures");
    EXPECT_EQ(loadError(R"({"figures": [{"number": 1}]})"),
              "demo.json: /cad/figures/0: expected a figure with a number and a name");
    EXPECT_EQ(loadError(R"({"figures": [{"number": 0, "name": "A"}]})"),
              "demo.json: /cad/figures/0/number: expected a number of 1 or more");
    EXPECT_EQ(loadError(R"({"figures": [{"number": 1, "name": 5}]})"),
              "demo.json: /cad/figures/0/name: expected a figure name");
    EXPECT_EQ(loadError(R"({"figures": [{"number": 1, "name": "A"}, {"number": 1, "name": "B"}]})"),
              "demo.json: /cad/figures/1/number: expected a figure number not used before");
    EXPECT_EQ(
        loadError(R"({"figures": [{"number": 1, "name": "A"}, {"number": 2, "name": "A"}]})"),
        "demo.json: /cad/figures/1/name: expected a figure name, not empty and not used before");
    EXPECT_EQ(loadError(R"({"figures": [{"number": 1, "name": "A", "colour": 2}]})"),
              "demo.json: /cad/figures/0/colour: expected one of number, name");
    EXPECT_EQ(loadError(R"({"objects": {}})"),
              "demo.json: /cad/objects: expected a list of drawing objects");
    EXPECT_EQ(loadError(R"({"objects": [{"type": 1}]})"),
              "demo.json: /cad/objects/0: expected a drawing object with a number and a type");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 1.5}]})"),
              "demo.json: /cad/objects/0/type: expected an integer");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 1, "start": [1, 2]}]})"),
              "demo.json: /cad/objects/0/start: expected a point [x, y, z]");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 1, "start": [1, 2, "z"]}]})"),
              "demo.json: /cad/objects/0/start/2: expected a number");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 1, "deleted": 0}]})"),
              "demo.json: /cad/objects/0/deleted: expected true or false");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 1, "layer": 0}]})"),
              "demo.json: /cad/objects/0/layer: expected one of number, type, name, attribute, "
              "start, flags, deleted");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 1}, {"number": 1, "type": 1}]})"),
              "demo.json: /cad/objects/1/number: expected an object number not used before");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 20, "name": 4}]})"),
              "demo.json: /cad/objects/0/name: expected the number of a figure");
    EXPECT_EQ(loadError(R"({"figures": [{"number": 4, "name": "A"}], "objects": [
                 {"number": 1, "type": 20, "name": 4}, {"number": 2, "type": 20, "name": 4}]})"),
              "demo.json: /cad/objects/1/attribute: expected an instance of the figure not listed "
              "before");
    EXPECT_EQ(loadError(R"({"objects": [{"number": 1, "type": 29, "name": 4},
                                        {"number": 2, "type": 29, "name": 4}]})"),
              "demo.json: /cad/objects/1/name: expected a non-CAD number not used before");
    EXPECT_EQ(VelkGetFigure("OUTER"), 1);
    EXPECT_EQ(host.cadObjects().size(), 7u);
}

}  // namespace
}  // namespace offlinehost
