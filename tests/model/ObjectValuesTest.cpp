#include <gtest/gtest.h>
#include <velkapi/ActionSection.h>
#include <velkapi/Value.h>
#include <velkapi/VelkObject.h>

#include <memory>

#include "HostFixture.h"

using namespace VelkApi;

class ObjectValuesTest : public testsupport::HostTest {};

TEST_F(ObjectValuesTest, AnObjectValueWithoutTargetGivesAFreshCopyTheCallerOwns) {
    const VelkObjectValue value(VelkObject("G12", GeometrySectionType::IslandFigure));
    EXPECT_EQ(value.getKind(), 4);
    std::unique_ptr<VelkObject> copy(static_cast<VelkObject*>(value.getValue(nullptr)));
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getName(), "G12");
    *copy = VelkObject("CONTOUR1", GeometrySectionType::OutlineFigure);
    VelkObject stored;
    EXPECT_EQ(value.getValue(&stored), &stored);
    EXPECT_EQ(stored.getName(), "G12");
    EXPECT_EQ(stored.getType(), VelkObjectType::NonCadObject);
    EXPECT_EQ(stored.getSectiontype(), GeometrySectionType::IslandFigure);
}

TEST_F(ObjectValuesTest, AnObjectValueIsSetFromAnObjectAndShowsItsName) {
    VelkObjectValue value{VelkObject()};
    EXPECT_EQ(value.getValueAsString(), "");
    const VelkObject contour("CONTOUR1 ", GeometrySectionType::OutlineFigure);
    value.setValue(&contour);
    value.setValue(nullptr);
    EXPECT_EQ(value.getValueAsString(), "CONTOUR1");
    const VelkObjectValue sharing(value);
    const VelkObject point("x1 y2 z3", GeometrySectionType::OutlineFigure);
    value.setValue(&point);
    EXPECT_EQ(sharing.getValueAsString(), "X1 Y2 Z3");
}

TEST_F(ObjectValuesTest, AnActionValueShowsExactlyTheCommand) {
    const std::string command = "  call 'probe.mac' 3, 4  ";
    const ActionValue value(Action(static_cast<ActionType>(1), command));
    EXPECT_EQ(value.getKind(), 5);
    EXPECT_EQ(value.getValueAsString(), command);
}

TEST_F(ObjectValuesTest, AnActionValueCopiesTheWholeAction) {
    ActionValue value{Action()};
    Action action(static_cast<ActionType>(3), "M8");
    value.setValue(&action);
    value.setValue(nullptr);
    Action read;
    EXPECT_EQ(value.getValue(&read), &read);
    EXPECT_EQ(read.getType(), static_cast<ActionType>(3));
    EXPECT_EQ(read.getCommand(), "M8");
    EXPECT_EQ(value.getValue(nullptr), nullptr);
    action.setCommand("M9");
    EXPECT_EQ(value.getValueAsString(), "M8");
}

TEST_F(ObjectValuesTest, AnObjectEntryTakesADefaultObjectAsItsDefault) {
    const VelkObject contour("CONTOUR1", GeometrySectionType::OutlineFigure);
    SectionValue entry(0, "0000(contour1)", new VelkObjectValue(contour),
                       new VelkObjectValue(VelkObject()), ValueDataType::VelkObject, false);
    entry.clearValue();
    EXPECT_EQ(entry.getValueAsString(), "CONTOUR1");
    entry.setValueToDefault();
    VelkObject now("G12", GeometrySectionType::OutlineFigure);
    entry.getValue(&now);
    EXPECT_EQ(now.getName(), "");
    EXPECT_EQ(now.getSectiontype(), GeometrySectionType::FacemillIslandFigure);
}

TEST_F(ObjectValuesTest, ADefaultActionHasKindFiveAndNoCommand) {
    Action action;
    EXPECT_EQ(action.getType(), ActionType::Default);
    EXPECT_EQ(static_cast<int>(action.getType()), 5);
    EXPECT_EQ(action.getCommand(), "");
    action.setType(static_cast<ActionType>(1));
    action.setCommand("M0");
    const Action copy(action);
    EXPECT_EQ(copy.getType(), static_cast<ActionType>(1));
    EXPECT_EQ(copy.getCommand(), "M0");
}
