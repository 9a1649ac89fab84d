// What the operation classes log when something inside them fails, and that they carry on.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include <algorithm>
#include <set>
#include <stdexcept>

#include "ErrorLog.h"
#include "FailingAllocation.h"
#include "HostFixture.h"
#include "StoredOperation.h"
#include "host/HostExports.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;
using Texts = std::vector<std::string>;
using testsupport::ErrorLogWatch;

namespace {

// An operation whose number cannot be asked for, as if the caller's object were broken.
class BrokenNumberOperation : public StoredOperation {
  public:
    using StoredOperation::StoredOperation;
    int getNumber() const override { throw std::runtime_error("no number"); }
};

class BrokenSection : public SectionDictionary {
  public:
    BrokenSection() : SectionDictionary(9) {}
    void writeToVDM(OperationBase*) override { throw std::runtime_error("cannot write"); }
    void readFromVDM(OperationBase*) override { throw std::runtime_error("cannot read"); }
};

class BrokenParameters : public ParameterSection {
  public:
    BrokenParameters() : ParameterSection(Kind::DRILLING, 2) {}
    int getInt(const std::string&) const override { throw std::runtime_error("no value"); }
};

// A message section with one line, whose keys cannot be looked up once it is made.
class BrokenMessage : public MessageSection {
  public:
    BrokenMessage() : MessageSection(0) {
        createandsetLine(0, "line");
        broken = true;
    }
    bool existsKey(const std::string& key) const override {
        if (broken) {
            throw std::runtime_error("no key");
        }
        return MessageSection::existsKey(key);
    }

  private:
    bool broken = false;
};

// An operation whose sections the test may swap for broken ones.
class ProbedOperation : public MillDrillOperation {
  public:
    using MillDrillOperation::MillDrillOperation;
    void replaceSection(const std::string& name, std::shared_ptr<SectionDictionary> section) {
        (*sections)[name] = std::move(section);
    }
    void replaceParameters(ParameterSection* section) { parameter = section; }
};

}  // namespace

class OperationFailureTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
        host().setGlobal("w_setup_cle", 2.5);
        host().setGlobal("w_setup_ret", 12.0);
        host().setStore(
            1,
            {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}, {"5 1 3 1 0 3", "Holes", "DRILLING", "4 83 1 ", ""}});
    }
};

TEST_F(OperationFailureTest, HeaderReadLogsAndKeepsWhatItHas) {
    BrokenNumberOperation op(1, 3);
    HeaderSection header;
    ErrorLogWatch log;
    header.readFromVDM(&op);
    EXPECT_EQ(log.texts(), Texts{"Error in HeaderSection::readFromVDM()"});
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(OperationFailureTest, MessageReadLogs) {
    BrokenNumberOperation op(1, 3);
    MessageSection message(0);
    ErrorLogWatch log;
    message.readFromVDM(&op);
    EXPECT_EQ(log.texts(), Texts{"Error in MessageSection::readFromVDM()"});
    EXPECT_FALSE(op.getVDM()->isOpen());
}

TEST_F(OperationFailureTest, MessageWriteLogsAndLosesNoLine) {
    StoredOperation op(1, 3);
    op.getVDM()->Create();
    op.getVDM()->LoadOperation(3);
    op.getVDM()->Close();
    BrokenMessage broken;
    ErrorLogWatch log;
    broken.writeToVDM(&op);
    EXPECT_EQ(log.texts(), Texts{"Error in MessageSection::writeToVDM()"});
    EXPECT_EQ(host().lines(1, 3), (Texts{"5 1 3 1 0 3", "Holes", "DRILLING", "4 83 1 ", ""}));
}

TEST_F(OperationFailureTest, OperationReadAndWriteLogAndStop) {
    ProbedOperation op(1, 3);
    op.replaceSection("Geometry", std::make_shared<BrokenSection>());
    ErrorLogWatch log;
    op.readFromVDM();
    op.writeToVDM();
    EXPECT_EQ(log.texts(), (Texts{"Error in MillDrillOperation::readFromVDM()",
                                  "Error in MillDrillOperation::writeToVDM()"}));
    // Reading stopped at the broken section: the message, read after it, was not read.
    EXPECT_FALSE(op.getMessageSection()->existsKey("0"));
    EXPECT_EQ(host().callCount("VelkMacroVdmOpen"), host().callCount("VelkMacroVdmClose"));
}

TEST_F(OperationFailureTest, CycleLogsAndGivesEmptyText) {
    ProbedOperation op(1, 3);
    BrokenParameters broken;
    op.replaceParameters(&broken);
    ErrorLogWatch log;
    EXPECT_EQ(op.getCycle(), "");
    EXPECT_EQ(log.texts(), Texts{"Error in MillDrillOperation::GetCycle()"});
}

// Every allocation of building an operation fails once, in turn: each failure is logged with
// its operation's text, nothing leaks, and the object stays as far as it got.
TEST_F(OperationFailureTest, EveryFailingAllocationOfSetupIsLogged) {
    const std::set<std::string> seen =
        testsupport::textsOfEveryFailingAllocation([] { MillDrillOperation op(Kind::DRILLING); });
    EXPECT_TRUE(seen.count("Error in MillDrillOperation::Setup => std::bad_alloc"));
    EXPECT_TRUE(seen.count("Error in MillDrillOperation::createParameterSection"));
    EXPECT_TRUE(seen.count("Error in MillDrillOperation::createGeometrySection()"));
    // Allocations made inside the C++ runtime's DLL on Windows (its std::string code) do not
    // go through this program's operator new, so which other texts appear depends on the
    // platform; the parameter section's own texts are checked by its tests.
}

// The same for building an operation from its record. A failure while the kind is read from the
// store makes the kind unknown (10) without a record: that reader answers every failure so. The
// failures of building the sections are logged as above, and no store handle stays open.
TEST_F(OperationFailureTest, EveryFailingAllocationOfReadingTheKindIsLogged) {
    const std::set<std::string> seen =
        testsupport::textsOfEveryFailingAllocation([] { MillDrillOperation op(1, 3); });
    EXPECT_TRUE(seen.count("Error in MillDrillOperation::Setup => std::bad_alloc"));
    EXPECT_FALSE(seen.count("Error in MillDrillOperation::GetOperationType() => std::bad_alloc"));
    // Counting opens and closes would not do: an open the host itself fails is counted too.
    EXPECT_EQ(VelkApi::host::MacroVdmCheckOpen(1), 0);
}
