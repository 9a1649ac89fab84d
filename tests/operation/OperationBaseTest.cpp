#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include <stdexcept>

#include "HostFixture.h"

using namespace VelkApi;

namespace {

// An operation with a section under each name, to ask the base for them.
class ProbeOperation : public OperationBase {
  public:
    ProbeOperation(int store, int nr) : OperationBase(store, nr) {
        enterSection("ToolData", std::make_shared<MessageSection>(1));
        enterSection("Additional_12", std::make_shared<MessageSection>(4));
    }
    void writeToVDM() override {}
    void readFromVDM() override {}
};

}  // namespace

class OperationBaseTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        host().setStore(3, {{"4 1 0"}, {"4 1 0"}});
    }
};

TEST_F(OperationBaseTest, SectionTypeNames) {
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::Header, 0), "Header");
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::ToolData, 0), "ToolData");
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::Message, 0), "Message");
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::Parameter, 0), "Parameter");
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::Geometry, 0), "Geometry");
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::Additional, 1), "Additional_1");
    EXPECT_EQ(OperationBase::SectionTypeToString(SectionType::Additional, 12), "Additional_12");
    EXPECT_EQ(OperationBase::SectionTypeToString(static_cast<SectionType>(3), 0), "");
}

TEST_F(OperationBaseTest, SectionsAreFoundByTheirKey) {
    ProbeOperation op(3, 0);
    EXPECT_FALSE(op.existsSection(static_cast<SectionType>(3), 0));
    EXPECT_EQ(op.getSection(static_cast<SectionType>(3), 0), nullptr);
    ASSERT_NE(op.getSection(SectionType::ToolData, 0), nullptr);
    EXPECT_EQ(op.getSection(SectionType::ToolData, 0)->getSectionNr(), 1);
    EXPECT_EQ(op.getSection(SectionType::ToolData, 0)->getOperation(), &op);
    EXPECT_TRUE(op.existsSection(SectionType::Additional, 12));
    EXPECT_FALSE(op.existsSection(SectionType::Geometry, 0));
}

TEST_F(OperationBaseTest, TurnDrivenToolsComesFromTheHost) {
    host().setEnvironment("TURNDRIVENTOOLS", "2");
    EXPECT_TRUE(ProbeOperation(3, 0).isTurn());
    host().setEnvironment("TURNDRIVENTOOLS", "1");
    EXPECT_FALSE(ProbeOperation(3, 0).isTurn());
    host().setEnvironment("TURNDRIVENTOOLS", "0");
    EXPECT_FALSE(ProbeOperation(3, 0).isTurn());
}

TEST_F(OperationBaseTest, TurnDrivenToolsThatIsNoNumberFailsConstruction) {
    host().setEnvironment("TURNDRIVENTOOLS", "");
    try {
        ProbeOperation op(3, 0);
        FAIL();
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "invalid stoi argument");
    }
    host().setEnvironment("TURNDRIVENTOOLS", "99999999999");
    EXPECT_THROW(ProbeOperation(3, 0), std::out_of_range);
}

TEST_F(OperationBaseTest, ConstructionDoesNotOpenTheStore) {
    ProbeOperation op(3, 1);
    EXPECT_EQ(op.getVdmname(), 3);
    EXPECT_EQ(op.getNumber(), 1);
    EXPECT_FALSE(op.getVDM()->isOpen());
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), 0);
}

TEST_F(OperationBaseTest, ExistsOperationClosesTheStoreAgain) {
    ProbeOperation op(3, 0);
    EXPECT_FALSE(op.existsOperation(-1));
    EXPECT_FALSE(op.getVDM()->isOpen());
    EXPECT_TRUE(op.existsOperation(1));
    EXPECT_FALSE(op.existsOperation(2));
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
    EXPECT_EQ(op.operationCount(), 2);
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(OperationBaseTest, AccessorsKeepWhatIsSet) {
    ProbeOperation op(3, 0);
    op.setMode(1);
    EXPECT_TRUE(op.isNew());
    EXPECT_EQ(op.getMode(), 1);
    op.setType(77);
    EXPECT_EQ(op.getType(), 77);
    op.setActive(true);
    EXPECT_TRUE(op.getActive());
    op.setOperationType(MillDrillOperationType::SLOT);
    EXPECT_EQ(op.getOperationType(), MillDrillOperationType::SLOT);
    EXPECT_EQ(op.getCycle(), "");
    EXPECT_FALSE(op.isVelkActive());
}

TEST_F(OperationBaseTest, DefaultOperationHasNoStore) {
    const MillDrillOperation op(MillDrillOperationType::REDRAW);
    EXPECT_EQ(op.getVDM(), nullptr);
    EXPECT_EQ(op.getVdmname(), 0);
    EXPECT_FALSE(op.getActive());
    EXPECT_FALSE(op.isTurn());
    EXPECT_EQ(host().callCount("VelkEnvironment"), 0);
}
