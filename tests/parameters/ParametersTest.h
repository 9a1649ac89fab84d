// What the parameter tests share: an operation of a store, a parameter section that opens its
// building blocks to the tests, and a fixture with a host whose "TURNDRIVENTOOLS" is set.
#pragma once

#include <velkapi/ExpertParameterSection.h>
#include <velkapi/LogFile.h>
#include <velkapi/OperationBase.h>
#include <velkapi/ParameterSection.h>

#include <fstream>
#include <string>
#include <vector>

#include "ErrorLog.h"
#include "HostFixture.h"
#include "TestEnvironment.h"

namespace paramtest {

using Texts = std::vector<std::string>;

// Operation `nr` of store `store`, made inside a running host (velk-active) or not.
class TestOperation : public VelkApi::OperationBase {
  public:
    TestOperation(int store, int nr, bool velk) : OperationBase(store, nr) { velkActive = velk; }
    void writeToVDM() override {}
    void readFromVDM() override {}
};

class OpenParameterSection : public VelkApi::ParameterSection {
  public:
    explicit OpenParameterSection(VelkApi::MillDrillOperationType type, int number = 2)
        : ParameterSection(type, number) {}

    using SectionDictionary::addBoolParameter;
    using SectionDictionary::addDoubleParameter;
    using SectionDictionary::addIntParameter;
    using SectionDictionary::addStringParameter;
    using SectionDictionary::findEntry;

    void setLineCount(int count) { lineCount = count; }
    void setYaxAvailable(bool available) { yAxisAvailable = available; }
};

class OpenExpertSection : public VelkApi::ExpertParameterSection {
  public:
    explicit OpenExpertSection(VelkApi::MillDrillOperationType type)
        : ExpertParameterSection(type) {}

    using SectionDictionary::addIntParameter;
    using SectionDictionary::entriesByNumber;
    using SectionDictionary::findEntry;
};

// What the trace log receives while it is on (level 1).
class TraceLogWatch {
  public:
    TraceLogWatch() : start(testsupport::fileContent(VelkApi::LogFile::traceLogPath()).size()) {
        VelkApi::LogFile::instance().setLevel(1);
    }
    ~TraceLogWatch() { VelkApi::LogFile::instance().setLevel(2); }
    TraceLogWatch(const TraceLogWatch&) = delete;
    TraceLogWatch& operator=(const TraceLogWatch&) = delete;

    std::string appended() const {
        return testsupport::fileContent(VelkApi::LogFile::traceLogPath()).substr(start);
    }

  private:
    std::size_t start;
};

class ParametersTest : public testsupport::HostTest {
  protected:
    void SetUp() override {
        HostTest::SetUp();
        host().setEnvironment("TURNDRIVENTOOLS", "1");
    }

    // A running host whose current channel is 1 (0-based), with a subspindle, setup clearance
    // 2.5, setup retract 12 and `machine` as its machine definition.
    static void useMachineAwareHost(const std::string& machine) {
        host().setGlobal("w_setup_cle", 2.5);
        host().setGlobal("w_setup_ret", 12.0);
        host().setGlobal("i_current_channel", 1);
        host().setEnvironment("SubSpindleAvailable", "1");
        useMachine(machine);
    }

    static void useMachine(const std::string& content) {
        host().setEnvironment("ppdefini", writeFile("machine.ini", content));
    }

    // Writes `content` to a file of the scratch folder and returns its path.
    static std::string writeFile(const std::string& name, const std::string& content) {
        const std::string path = testsupport::appDataFolder() + "/" + name;
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }

    // The lines of operation `nr` of store `vdm`, its header first.
    static std::vector<std::string> storedLines(int vdm, int nr = 0) {
        return host().lines(vdm, nr);
    }
};

}  // namespace paramtest
