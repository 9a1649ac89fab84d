// What Init declares: the kind's catalogue, shaped by the operation (inside a running host or
// not), the machine definition and the host's setup values.
#include <gtest/gtest.h>
#include <velkapi/LogFile.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <tuple>
#include <utility>

#include "FailingAllocation.h"
#include "ParametersTest.h"
#include "parameters/ParameterCatalogue.h"

using namespace VelkApi;
using paramtest::OpenParameterSection;
using paramtest::TestOperation;
using paramtest::Texts;
using paramtest::TraceLogWatch;
using testsupport::ErrorLogWatch;

namespace {

constexpr const char* kFileBox = "File can not open for read";

class ParametersCatalogue : public paramtest::ParametersTest {
  protected:
    // A host with setup values 2.5 / 12, current channel 1 (0-based) and a machine definition
    // with a Y axis on that channel; the host's environment says there is a subspindle.
    void SetUp() override {
        ParametersTest::SetUp();
        useMachineAwareHost("[COMMON]\nNR_OF_CHANNEL=2\n[Y2]\nRapid=1\n");
    }

    // The section of `type` after Init(machineAware) for an operation in or outside a host.
    static std::unique_ptr<OpenParameterSection> initialised(MillDrillOperationType type,
                                                             bool velkActive, bool machineAware) {
        TestOperation op(7, 0, velkActive);
        auto section = std::make_unique<OpenParameterSection>(type);
        section->setOperation(&op);
        section->Init(machineAware);
        section->setOperation(nullptr);
        return section;
    }

    static Texts keys(const ParameterSection& section) {
        std::vector<std::string> all;
        return section.readKeys(all);
    }

    // The names of the option bits in word `number`, in key order.
    static Texts optionWord(const OpenParameterSection& section, int number) {
        Texts names;
        for (const std::string& key : keys(section)) {
            const SectionValue* entry = section.findEntry(key);
            if (entry->getValueDataType() == ValueDataType::Bool && entry->getNr() == number) {
                names.push_back(key);
            }
        }
        return names;
    }

    static void expectEntry(const OpenParameterSection& section, const std::string& name, int nr,
                            int bit, ValueDataType type) {
        const SectionValue* entry = section.findEntry(name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(entry->getNr(), nr) << name;
        EXPECT_EQ(entry->getBit(), bit) << name;
        EXPECT_EQ(entry->getValueDataType(), type) << name;
    }
};

Texts sorted(Texts texts) {
    std::sort(texts.begin(), texts.end());
    return texts;
}

}  // namespace

TEST_F(ParametersCatalogue, OutsideARunningHostTheSetupDefaultsStandAndTheMachineIsNotAsked) {
    useMachine("");
    host().removeGlobal("i_current_channel");
    host().setEnvironment("ppdefini", testsupport::appDataFolder() + "/no-such-machine.ini");
    for (const bool machineAware : {false, true}) {
        TestOperation op(7, 0, false);
        host().resetCallCounts();
        OpenParameterSection section(MillDrillOperationType::PROFILE);
        section.setOperation(&op);
        section.Init(machineAware);
        EXPECT_DOUBLE_EQ(section.getDouble("w_clearp"), 0.42);
        EXPECT_DOUBLE_EQ(section.getDouble("w_retract_height"), 4.2);
        EXPECT_EQ(host().callCount("VelkEnvironment"), 0);
        EXPECT_EQ(host().callCount("VelkReadGlobalW"), 0);
        EXPECT_EQ(host().callCount("VelkReadGlobalI"), 0);
        EXPECT_FALSE(section.isYaxAvailable());
        EXPECT_FALSE(section.isSubspindleAvailable());
        EXPECT_EQ(section.getChannel(), 0);
    }
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersCatalogue, ASectionWithoutAnOperationIsNotInsideARunningHost) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.Init(true);
    EXPECT_DOUBLE_EQ(section.getDouble("w_clearp"), 0.42);
    EXPECT_DOUBLE_EQ(section.getDouble("w_retract_height"), 4.2);
    EXPECT_EQ(host().callCount("VelkEnvironment"), 0);
    EXPECT_EQ(section.getLineCount(), 4);
    EXPECT_EQ(optionWord(section, 21).size(), 11u + 6u);
}

TEST_F(ParametersCatalogue, InsideARunningHostTheSetupValuesSeedClearanceAndRetract) {
    const auto section = initialised(MillDrillOperationType::POCKET, true, false);
    EXPECT_DOUBLE_EQ(section->getDouble("w_clearp"), 2.5);
    EXPECT_DOUBLE_EQ(section->getDouble("w_retract_height"), 12.0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersCatalogue, PlainProfileHasThreeLinesAndThePlainMachineBits) {
    const auto section = initialised(MillDrillOperationType::PROFILE, true, false);
    EXPECT_EQ(section->getLineCount(), 3);
    EXPECT_FALSE(section->existsKey("o_dmg_turnplus"));
    expectEntry(*section, "o_gohome", 26, 3, ValueDataType::Bool);
    expectEntry(*section, "o_rapid_peck", 26, 10, ValueDataType::Bool);
    expectEntry(*section, "o_subprogram", 26, 23, ValueDataType::Bool);
    EXPECT_FALSE(section->existsKey("goh_0"));
    EXPECT_FALSE(section->existsKey("o_yax_drilling"));
    EXPECT_FALSE(section->existsKey("o_subspindle"));
    // The machine was not asked.
    EXPECT_FALSE(section->isYaxAvailable());
    EXPECT_EQ(host().callCount("VelkEnvironment"), 1);  // "TURNDRIVENTOOLS" only
}

TEST_F(ParametersCatalogue, MachineAwareProfileHasFourLinesTurnplusAndTheGohBits) {
    const auto section = initialised(MillDrillOperationType::PROFILE, true, true);
    EXPECT_EQ(section->getLineCount(), 4);
    expectEntry(*section, "o_dmg_turnplus", 200, 1, ValueDataType::Bool);
    for (int i = 0; i <= 5; ++i) {
        expectEntry(*section, "GOH_" + std::to_string(i), 26, 15 + i, ValueDataType::Bool);
    }
    expectEntry(*section, "o_yax_drilling", 26, 14, ValueDataType::Bool);
    expectEntry(*section, "o_cax_index", 26, 21, ValueDataType::Bool);
    expectEntry(*section, "o_cax_break", 26, 22, ValueDataType::Bool);
    expectEntry(*section, "o_subspindle", 26, 25, ValueDataType::Bool);
    EXPECT_FALSE(section->existsKey("o_gohome"));
    EXPECT_FALSE(section->existsKey("o_rapid_peck"));
    EXPECT_FALSE(section->existsKey("o_subprogram"));
    EXPECT_TRUE(section->isYaxAvailable());
    EXPECT_TRUE(section->isSubspindleAvailable());
    EXPECT_EQ(section->getChannel(), 1);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ParametersCatalogue, WithoutYAxisAndSubspindleTheMachineBlockIsTheGohBits) {
    useMachine("[COMMON]\nNR_OF_CHANNEL=2\n[Y2]\nRapid=0\n");
    host().setEnvironment("SubSpindleAvailable", "0");
    const auto section = initialised(MillDrillOperationType::PROFILE, true, true);
    EXPECT_EQ(
        optionWord(*section, 26),
        sorted({"goh_0", "goh_1", "goh_2", "goh_3", "goh_4", "goh_5", "o_antirotation", "o_retract",
                "o_hscloop", "o_const_zpeck", "o_wandering_entrypoint", "o_ignore_startpoints",
                "o_techno_modify", "o_retract_between_figures", "o_exit equal_entry",
                "o_use_height_from_figure", "o_finishing", "o_inout_position_checked"}));
    EXPECT_FALSE(section->isYaxAvailable());
    EXPECT_FALSE(section->isSubspindleAvailable());
}

TEST_F(ParametersCatalogue, MachineAwareOutsideARunningHostGetsTheGohBitsOnly) {
    const auto section = initialised(MillDrillOperationType::CORNER, false, true);
    EXPECT_EQ(optionWord(*section, 13),
              sorted({"goh_0", "goh_1", "goh_2", "goh_3", "goh_4", "goh_5", "o_antirotation",
                      "o_retract", "o_use_height_from_figure"}));
}

TEST_F(ParametersCatalogue, TheYAxisFlagIsOnlyEverSet) {
    OpenParameterSection section(MillDrillOperationType::POCKET);
    TestOperation op(7, 0, true);
    section.setOperation(&op);
    section.setYaxAvailable(true);
    useMachine("[COMMON]\nNR_OF_CHANNEL=2\n");
    section.Init(true);
    EXPECT_TRUE(section.isYaxAvailable());
    expectEntry(section, "o_yax_drilling", 21, 14, ValueDataType::Bool);
}

TEST_F(ParametersCatalogue, TheChannelComesFromTheHostAndPicksTheYAxis) {
    host().setGlobal("i_current_channel", 0);
    const auto first = initialised(MillDrillOperationType::POCKET, true, true);
    EXPECT_EQ(first->getChannel(), 0);
    EXPECT_FALSE(first->isYaxAvailable());

    useMachine("[COMMON]\nNR_OF_CHANNEL=2\n[CHANNEL_1]\nYAXIS_EXIST=1\n");
    const auto second = initialised(MillDrillOperationType::POCKET, true, true);
    EXPECT_TRUE(second->isYaxAvailable());
}

TEST_F(ParametersCatalogue, AMissingMachineDefinitionIsShownAndLeavesTheFlagsOff) {
    const std::string path = testsupport::appDataFolder() + "/no-such-machine.ini";
    host().setEnvironment("ppdefini", path);
    host().setEnvironment("SubSpindleAvailable", "0");
    const auto section = initialised(MillDrillOperationType::FACEMILL, true, true);
    EXPECT_EQ(boxes(), Texts{std::string(kFileBox) + "|" + path});
    EXPECT_FALSE(section->isYaxAvailable());
    EXPECT_FALSE(section->isSubspindleAvailable());
    EXPECT_EQ(optionWord(*section, 13),
              sorted({"goh_0", "goh_1", "goh_2", "goh_3", "goh_4", "goh_5", "o_retract",
                      "o_hscloop", "o_ignore_startpoints", "o_use_height_from_figure"}));
}

// The host's read assigns what the host returned even when it fails: the offline host returns 0
// for a value it does not have. The other value is read all the same; the trace is written once.
TEST_F(ParametersCatalogue, AMissingSetupClearanceIsTakenAsTheHostReturnedItAndTheRetractRead) {
    host().removeGlobal("w_setup_cle");
    TraceLogWatch trace;
    ErrorLogWatch log;
    const auto section = initialised(MillDrillOperationType::POCKET, true, false);
    EXPECT_EQ(trace.appended(), "Error in ParameterSection - GetGlobalDoubleVar\n");
    EXPECT_TRUE(log.texts().empty());
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::GetGlobalIntVar Failed|w_setup_cle"});
    EXPECT_DOUBLE_EQ(section->getDouble("w_clearp"), 0.0);
    EXPECT_DOUBLE_EQ(section->getDouble("w_retract_height"), 12.0);
}

TEST_F(ParametersCatalogue, AMissingSetupRetractIsTakenAsTheHostReturnedIt) {
    host().removeGlobal("w_setup_ret");
    TraceLogWatch trace;
    const auto section = initialised(MillDrillOperationType::POCKET, true, false);
    EXPECT_EQ(trace.appended(), "Error in ParameterSection - GetGlobalDoubleVar\n");
    EXPECT_EQ(boxes(), Texts{"VelkApi::MacroExport::GetGlobalIntVar Failed|w_setup_ret"});
    EXPECT_DOUBLE_EQ(section->getDouble("w_clearp"), 2.5);
    EXPECT_DOUBLE_EQ(section->getDouble("w_retract_height"), 0.0);
}

TEST_F(ParametersCatalogue, BothSetupValuesMissingAreBothReadAndTracedOnce) {
    host().removeGlobal("w_setup_cle");
    host().removeGlobal("w_setup_ret");
    TraceLogWatch trace;
    const auto section = initialised(MillDrillOperationType::DRILLING, true, false);
    EXPECT_EQ(trace.appended(), "Error in ParameterSection - GetGlobalDoubleVar\n");
    EXPECT_EQ(boxes(), (Texts{"VelkApi::MacroExport::GetGlobalIntVar Failed|w_setup_cle",
                              "VelkApi::MacroExport::GetGlobalIntVar Failed|w_setup_ret"}));
    EXPECT_DOUBLE_EQ(section->getDouble("w_retract"), 0.0);
    EXPECT_DOUBLE_EQ(section->getDouble("w_clearance"), 0.0);
}

TEST_F(ParametersCatalogue, TheTraceOfAMissingSetupValueIsSilentAtTheUsualLevel) {
    host().removeGlobal("w_setup_cle");
    const std::size_t before = testsupport::fileContent(LogFile::traceLogPath()).size();
    ErrorLogWatch log;
    initialised(MillDrillOperationType::POCKET, true, false);
    EXPECT_EQ(testsupport::fileContent(LogFile::traceLogPath()).size(), before);
    EXPECT_TRUE(log.texts().empty());
}

TEST_F(ParametersCatalogue, AFailureDuringInitIsLoggedAndKeepsWhatWasDeclared) {
    // The machine definition's path is the first text Init allocates.
    host().setEnvironment(
        "ppdefini", testsupport::appDataFolder() + "/a-machine-definition-with-a-long-name.ini");
    TestOperation op(7, 0, true);
    OpenParameterSection section(MillDrillOperationType::POCKET);
    section.setOperation(&op);
    ErrorLogWatch log;
    testsupport::failAllocationAfter(0);
    section.Init(true);
    testsupport::stopFailingAllocations();
    EXPECT_EQ(log.texts(), Texts{"Error in ParameterSection()"});
    EXPECT_TRUE(keys(section).empty());
}

TEST_F(ParametersCatalogue, ASecondInitAddsNothing) {
    OpenParameterSection section(MillDrillOperationType::PROFILE);
    TestOperation op(7, 0, true);
    section.setOperation(&op);
    section.Init(false);
    section.setDouble("w_zdepth", -3.0);
    const Texts first = keys(section);
    section.Init(false);
    EXPECT_EQ(keys(section), first);
    EXPECT_DOUBLE_EQ(section.getDouble("w_zdepth"), -3.0);
}

TEST_F(ParametersCatalogue, EverySectionOfAKindIsDeclaredAlikeAndFollowsTheMachineAndTheHost) {
    const auto first = initialised(MillDrillOperationType::POCKET, true, true);
    first->setDouble("w_clearp", 9.5);
    const auto second = initialised(MillDrillOperationType::POCKET, true, true);
    EXPECT_EQ(keys(*second), keys(*first));
    EXPECT_EQ(second->getLineCount(), first->getLineCount());
    EXPECT_DOUBLE_EQ(second->getDouble("w_clearp"), 2.5);
    EXPECT_EQ(optionWord(*second, 21), optionWord(*first, 21));

    host().setGlobal("w_setup_cle", 7.25);
    const auto third = initialised(MillDrillOperationType::POCKET, true, true);
    EXPECT_DOUBLE_EQ(third->getDouble("w_clearp"), 7.25);
    third->setDouble("w_clearp", 1.0);
    third->setDefault();
    EXPECT_DOUBLE_EQ(third->getDouble("w_clearp"), 7.25);
    second->setDefault();
    EXPECT_DOUBLE_EQ(second->getDouble("w_clearp"), 2.5);

    const auto plain = initialised(MillDrillOperationType::POCKET, true, false);
    EXPECT_EQ(plain->getLineCount(), 2);
    EXPECT_LT(keys(*plain).size(), keys(*first).size());
    useMachineAwareHost("[COMMON]\nNR_OF_CHANNEL=2\n");
    const auto withoutYAxis = initialised(MillDrillOperationType::POCKET, true, true);
    EXPECT_LT(optionWord(*withoutYAxis, 21).size(), optionWord(*first, 21).size());
}

TEST_F(ParametersCatalogue, OptionsStartFalseWhateverTheirDefault) {
    const auto section = initialised(MillDrillOperationType::PROFILE, false, false);
    EXPECT_FALSE(section->getBool("o_retract"));
    EXPECT_EQ(section->getDouble("w_peck"), 1.0);
    section->setDefault();
    EXPECT_TRUE(section->getBool("o_retract"));
    EXPECT_TRUE(section->getBool("o_retract_between_figures"));
    EXPECT_FALSE(section->getBool("o_antirotation"));
}

TEST_F(ParametersCatalogue, EngraveHasOnlyTheDummy) {
    for (const auto type :
         {MillDrillOperationType::ENGRAVE, MillDrillOperationType::REDRAW,
          MillDrillOperationType::TOOLS, MillDrillOperationType::Unknown,
          static_cast<MillDrillOperationType>(0), static_cast<MillDrillOperationType>(30)}) {
        const auto section = initialised(type, true, true);
        EXPECT_EQ(keys(*section), Texts{"dummy"});
        expectEntry(*section, "Dummy", 0, 0, ValueDataType::Int);
        EXPECT_EQ(section->getInt("dummy"), 2147483647);
        EXPECT_EQ(section->getLineCount(), 2);
    }
}

TEST_F(ParametersCatalogue, DrillingRetractAndClearanceBothTakeTheSetupClearance) {
    const auto section = initialised(MillDrillOperationType::DRILLING, true, false);
    EXPECT_DOUBLE_EQ(section->getDouble("w_retract"), 2.5);
    EXPECT_DOUBLE_EQ(section->getDouble("w_clearance"), 2.5);
    EXPECT_EQ(section->getLineCount(), 3);
    expectEntry(*section, "$_project", 100, 0, ValueDataType::String);
    expectEntry(*section, "o_gohome", 35, 3, ValueDataType::Bool);
}

TEST_F(ParametersCatalogue, PocketCycleAndThreadingDifferInEntrySixAndOptionWord35) {
    const auto cycle = initialised(MillDrillOperationType::POCCYCLE, true, false);
    const auto thread = initialised(MillDrillOperationType::THREADING, true, false);
    expectEntry(*cycle, "w_peck", 6, 0, ValueDataType::Double);
    expectEntry(*thread, "w_pitch", 6, 0, ValueDataType::Double);
    EXPECT_FALSE(cycle->existsKey("w_pitch"));
    EXPECT_FALSE(thread->existsKey("w_peck"));
    EXPECT_EQ(optionWord(*cycle, 35),
              sorted({"o_finishing", "o_with_subprogram", "o_expand", "o_group_reversal"}));
    EXPECT_EQ(optionWord(*thread, 35), sorted({"o_expand", "o_upside_down"}));
    EXPECT_EQ(optionWord(*thread, 36), sorted({"o_antirotation", "o_gohome"}));
    EXPECT_DOUBLE_EQ(cycle->getDouble("w_retract"), 2.5);
    EXPECT_DOUBLE_EQ(thread->getDouble("w_clearance"), 2.5);
    EXPECT_EQ(cycle->getLineCount(), 2);
    EXPECT_EQ(thread->getLineCount(), 2);
}

TEST_F(ParametersCatalogue, EditorsHaveTheSubspindleNumberOnlyWhenMachineAware) {
    for (const auto type : {MillDrillOperationType::MEDITOR, MillDrillOperationType::UEDITOR_MAX}) {
        EXPECT_EQ(keys(*initialised(type, true, false)),
                  (Texts{"i_mct", "i_origin", "i_yaxdrilling"}));
        const auto aware = initialised(type, true, true);
        EXPECT_EQ(keys(*aware), (Texts{"i_mct", "i_origin", "i_subspindle", "i_yaxdrilling"}));
        expectEntry(*aware, "i_yaxdrilling", 2, 1, ValueDataType::Bool);
        expectEntry(*aware, "i_subspindle", 3, 0, ValueDataType::Int);
    }
    EXPECT_EQ(keys(*initialised(MillDrillOperationType::MOVING, true, true)),
              (Texts{"i_mct", "i_origin", "i_yaxdrilling"}));
}

TEST_F(ParametersCatalogue, SurfacesKeepTheirHomeBitsAndAddTheMachineBlockWhenAware) {
    for (const auto& [type, word] : {std::pair{MillDrillOperationType::RSURFING, 22},
                                     std::pair{MillDrillOperationType::STD3DGEO, 18}}) {
        const auto plain = initialised(type, true, false);
        EXPECT_TRUE(plain->existsKey("o_gohome"));
        EXPECT_TRUE(plain->existsKey("o_rapid_peck"));
        EXPECT_FALSE(plain->existsKey("o_subprogram"));
        EXPECT_FALSE(plain->existsKey("goh_0"));
        const auto aware = initialised(type, true, true);
        expectEntry(*aware, "o_gohome", word, 3, ValueDataType::Bool);
        expectEntry(*aware, "goh_5", word, 20, ValueDataType::Bool);
        expectEntry(*aware, "o_subspindle", word, 25, ValueDataType::Bool);
    }
}

TEST_F(ParametersCatalogue, RestMaterialHasFourPlainMachineBits) {
    const auto section = initialised(MillDrillOperationType::RESTMATL, true, false);
    expectEntry(*section, "o_gohome", 18, 3, ValueDataType::Bool);
    expectEntry(*section, "o_pocketing_reverse_direction", 18, 12, ValueDataType::Bool);
    expectEntry(*section, "o_rapid_peck", 18, 10, ValueDataType::Bool);
    expectEntry(*section, "o_subprogram", 18, 23, ValueDataType::Bool);
    EXPECT_FALSE(initialised(MillDrillOperationType::RESTMATL, true, true)
                     ->existsKey("o_pocketing_reverse_direction"));
}

TEST_F(ParametersCatalogue, LineCountsPerKind) {
    const std::vector<std::tuple<MillDrillOperationType, int, int>> counts = {
        {MillDrillOperationType::PROFILE, 3, 4},   {MillDrillOperationType::POCKET, 2, 4},
        {MillDrillOperationType::DRILLING, 3, 3},  {MillDrillOperationType::MILL_5AX, 3, 3},
        {MillDrillOperationType::SLOT, 3, 3},      {MillDrillOperationType::CORNER, 2, 2},
        {MillDrillOperationType::THREADING, 2, 2}, {MillDrillOperationType::MEDITOR, 2, 2},
    };
    for (const auto& [type, plain, aware] : counts) {
        EXPECT_EQ(initialised(type, true, false)->getLineCount(), plain);
        EXPECT_EQ(initialised(type, true, true)->getLineCount(), aware);
    }
}

TEST_F(ParametersCatalogue, OddNamesAreKeptAsTheHostStoresThem) {
    const auto profile = initialised(MillDrillOperationType::PROFILE, true, false);
    expectEntry(*profile, "o_exit equal_entry", 26, 27, ValueDataType::Bool);
    const auto corner = initialised(MillDrillOperationType::CORNER, true, false);
    expectEntry(*corner, "w__rough_rad", 9, 0, ValueDataType::Double);
    const auto facemill = initialised(MillDrillOperationType::FACEMILL, true, false);
    expectEntry(*facemill, "w__infeed", 20, 0, ValueDataType::Double);
    const auto geometry = initialised(MillDrillOperationType::STD3DGEO, true, false);
    expectEntry(*geometry, "w__x(1)", 1, 0, ValueDataType::Double);
    EXPECT_TRUE(geometry->isAxis("w__z(3)"));
    const auto blubb = initialised(static_cast<MillDrillOperationType>(15), true, false);
    EXPECT_EQ(keys(*blubb), (Texts{"blubb1", "blubb2", "blubb3", "blubb4"}));
    EXPECT_EQ(blubb->getInt("blubb1"), 1);
}

TEST_F(ParametersCatalogue, EveryKindDeclaresInKeyOrderWhatInitHolds) {
    for (int kind = 0; kind <= 42; ++kind) {
        const auto type = static_cast<MillDrillOperationType>(kind);
        const auto& declarations = catalogue::declarationsOf(type);
        for (std::size_t i = 1; i < declarations.size(); ++i) {
            EXPECT_LE(declarations[i - 1].key, declarations[i].key) << kind;
        }
        // Outside a running host: plain, and machine-aware with neither Y axis nor subspindle.
        for (const bool aware : {false, true}) {
            Texts declared;
            for (const catalogue::Declaration& declaration : declarations) {
                if (catalogue::isDeclared(declaration, type, {aware, false, false})) {
                    declared.push_back(declaration.key);
                }
            }
            declared.erase(std::unique(declared.begin(), declared.end()), declared.end());
            EXPECT_EQ(keys(*initialised(type, false, aware)), declared) << kind;
        }
    }
}

TEST_F(ParametersCatalogue, AMachineBlockDeclaresEachOfItsBitsUnderItsCondition) {
    const auto& declarations = catalogue::declarationsOf(MillDrillOperationType::PROFILE);
    const auto conditionOf = [&](const std::string& key) {
        const auto found =
            std::find_if(declarations.begin(), declarations.end(),
                         [&](const catalogue::Declaration& d) { return d.key == key; });
        EXPECT_NE(found, declarations.end()) << key;
        EXPECT_EQ(found->row.kind, catalogue::Kind::Option) << key;
        EXPECT_EQ(found->row.number, 26) << key;
        return found->condition;
    };
    EXPECT_EQ(conditionOf("o_gohome"), catalogue::Condition::Plain);
    EXPECT_EQ(conditionOf("o_rapid_peck"), catalogue::Condition::Plain);
    EXPECT_EQ(conditionOf("o_subprogram"), catalogue::Condition::Plain);
    EXPECT_EQ(conditionOf("o_yax_drilling"), catalogue::Condition::YAxis);
    EXPECT_EQ(conditionOf("o_cax_index"), catalogue::Condition::YAxis);
    EXPECT_EQ(conditionOf("o_cax_break"), catalogue::Condition::YAxis);
    EXPECT_EQ(conditionOf("o_subspindle"), catalogue::Condition::Subspindle);
    for (int i = 0; i <= 5; ++i) {
        EXPECT_EQ(conditionOf("goh_" + std::to_string(i)), catalogue::Condition::MachineAware);
    }
}

TEST_F(ParametersCatalogue, WhatDecidesADeclaration) {
    using catalogue::Condition;
    catalogue::Declaration declaration{
        "o_bit", catalogue::catalogueOf(MillDrillOperationType::PROFILE).rows[0],
        Condition::Always};
    const auto declaredFor = [&](Condition condition, catalogue::Machine machine) {
        declaration.condition = condition;
        return catalogue::isDeclared(declaration, MillDrillOperationType::PROFILE, machine);
    };
    EXPECT_TRUE(declaredFor(Condition::Always, {false, false, false}));
    EXPECT_TRUE(declaredFor(Condition::Plain, {false, true, true}));
    EXPECT_FALSE(declaredFor(Condition::Plain, {true, false, false}));
    EXPECT_FALSE(declaredFor(Condition::MachineAware, {false, true, true}));
    EXPECT_TRUE(declaredFor(Condition::MachineAware, {true, false, false}));
    EXPECT_FALSE(declaredFor(Condition::YAxis, {false, true, true}));
    EXPECT_FALSE(declaredFor(Condition::YAxis, {true, false, true}));
    EXPECT_TRUE(declaredFor(Condition::YAxis, {true, true, false}));
    EXPECT_FALSE(declaredFor(Condition::Subspindle, {false, true, true}));
    EXPECT_FALSE(declaredFor(Condition::Subspindle, {true, true, false}));
    EXPECT_TRUE(declaredFor(Condition::Subspindle, {true, false, true}));
    // The row's own restrictions hold whatever the condition.
    declaration.row.when = catalogue::When::MachineAware;
    EXPECT_FALSE(declaredFor(Condition::Always, {false, true, true}));
    EXPECT_TRUE(declaredFor(Condition::Always, {true, false, false}));
    declaration.row.onlyForKind = static_cast<int>(MillDrillOperationType::THREADING);
    EXPECT_FALSE(declaredFor(Condition::Always, {true, false, false}));
    EXPECT_TRUE(catalogue::isDeclared(declaration, MillDrillOperationType::THREADING,
                                      {true, false, false}));
}
