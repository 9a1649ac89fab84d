// Copies and assignments of every public class that can be copied or assigned: values, entries,
// sections, operations, the tool list and the strategy wrapper. What a copy shares with its
// source (a datum, the entries of a section, the sections of an operation, the tools of a list,
// the settings object of a wrapper) must outlive whichever holder goes first, and go with the
// last: each object below is made, copied and assigned over another, then the holders are
// destroyed in every order, and after each destruction the survivors still read as the first
// did. The sanitizer run of this program finds a double free, a use after free or a leak.
#include <gtest/gtest.h>
#include <velkapi/VelkApi.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ErrorLog.h"
#include "operation/StoredOperation.h"
#include "tools/ToolTest.h"

using namespace VelkApi;

namespace {

// Makes the object of one variant: 0 the original, 1 another one with other contents.
template <typename T>
using Maker = std::function<void(std::optional<T>& slot, int variant)>;
template <typename T>
using Reader = std::function<std::string(const T& object)>;

// The original, a copy of it and another object assigned from it, destroyed in all six orders.
template <typename T>
void destroyCopiesInEveryOrder(const Maker<T>& make, const Reader<T>& read) {
    std::array<int, 3> order = {0, 1, 2};
    do {
        std::array<std::optional<T>, 3> holders;
        make(holders[0], 0);
        const std::string original = read(*holders[0]);
        holders[1].emplace(*holders[0]);
        make(holders[2], 1);
        ASSERT_NE(read(*holders[2]), original) << "the two variants must differ";
        *holders[2] = *holders[0];
        T& alias = *holders[0];
        *holders[0] = alias;  // assigning an object to itself changes nothing
        for (const int index : order) {
            holders[index].reset();
            for (const auto& survivor : holders) {
                if (survivor) {
                    EXPECT_EQ(read(*survivor), original);
                }
            }
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

// Every key of a section with its value, in key order.
std::string readSection(const SectionDictionary& section) {
    std::vector<std::string> keys;
    std::string text;
    for (const std::string& key : section.readKeys(keys)) {
        text += key + "=" + section.getValueAsString(key) + "\n";
    }
    return text;
}

// Copies of a section, each variant made by `make`.
template <typename Section>
void checkSection(const Maker<Section>& make) {
    destroyCopiesInEveryOrder<Section>(make,
                                       [](const Section& section) { return readSection(section); });
}

// Declares a section's entries with their defaults.
void declareEntries(ParameterSection& section) {
    section.Init(false);
}
void declareEntries(ExpertParameterSection& section) {
    section.Init();
}
void declareEntries(ToolSection& section) {
    section.setDefault();
}

// A section of parameters or tool data with its defaults, its first int, double or text entry
// given a value of the variant.
template <typename Section, typename... Arguments>
void checkSectionWithDefaults(Arguments... arguments) {
    checkSection<Section>([=](std::optional<Section>& slot, int variant) {
        slot.emplace(arguments...);
        declareEntries(*slot);
        std::vector<std::string> keys;
        for (const std::string& key : slot->readKeys(keys)) {
            switch (slot->getValueDataType(key)) {
                case ValueDataType::Int:
                    return slot->setInt(key, 100 + variant);
                case ValueDataType::Double:
                    return slot->setDouble(key, 1.5 + variant);
                case ValueDataType::String:
                    return slot->setString(key, "variant " + std::to_string(variant));
                default:
                    break;
            }
        }
        FAIL() << "no entry to change";
    });
}

// Every section of an operation, with its name.
std::string readOperation(const MillDrillOperation& operation) {
    std::string text;
    const std::vector<std::pair<SectionType, int>> keys = {
        {SectionType::Header, 0},    {SectionType::ToolData, 0}, {SectionType::Message, 0},
        {SectionType::Parameter, 0}, {SectionType::Geometry, 0}, {SectionType::Additional, 1},
        {SectionType::Additional, 2}};
    for (const auto& [type, number] : keys) {
        if (const SectionDictionary* section = operation.getSection(type, number)) {
            text += "[" + OperationBase::SectionTypeToString(type, number) + "]\n" +
                    readSection(*section);
        }
    }
    return text;
}

class CopyLifetimeTest : public ToolTest {
  protected:
    void SetUp() override {
        ToolTest::SetUp();
        declareToolVariables();
        host().setGlobal("$_project", std::string("bracket"));
        host().setGlobal("w_setup_cle", 2.5);
        host().setGlobal("w_setup_ret", 12.0);
    }

    // Nothing here is a failure: no box is shown and nothing is logged.
    void TearDown() override {
        EXPECT_EQ(boxes(), std::vector<std::string>{});
        EXPECT_EQ(errorLog.appended(), "");
        ToolTest::TearDown();
    }

    testsupport::ErrorLogWatch errorLog;
};

TEST_F(CopyLifetimeTest, ValuesOfEveryKind) {
    destroyCopiesInEveryOrder<IntValue>(
        [](std::optional<IntValue>& slot, int variant) { slot.emplace(7 + variant); },
        [](const IntValue& value) { return value.getValueAsString(); });
    destroyCopiesInEveryOrder<DoubleValue>(
        [](std::optional<DoubleValue>& slot, int variant) { slot.emplace(2.5 + variant); },
        [](const DoubleValue& value) { return value.getValueAsString(); });
    destroyCopiesInEveryOrder<BoolValue>(
        [](std::optional<BoolValue>& slot, int variant) { slot.emplace(variant == 0); },
        [](const BoolValue& value) { return value.getValueAsString(); });
    destroyCopiesInEveryOrder<StringValue>(
        [](std::optional<StringValue>& slot, int variant) {
            slot.emplace("a text long enough to live on the heap, variant " +
                         std::to_string(variant));
        },
        [](const StringValue& value) { return value.getValueAsString(); });
    destroyCopiesInEveryOrder<VelkObjectValue>(
        [](std::optional<VelkObjectValue>& slot, int variant) {
            slot.emplace(VelkObject(1.0 + variant, 2.0, 3.0, GeometrySectionType::OutlineFigure));
        },
        [](const VelkObjectValue& value) { return value.getValueAsString(); });
    destroyCopiesInEveryOrder<ActionValue>(
        [](std::optional<ActionValue>& slot, int variant) {
            slot.emplace(Action(ActionType::Default, "call 'macro" + std::to_string(variant)));
        },
        [](const ActionValue& value) { return value.getValueAsString(); });
}

TEST_F(CopyLifetimeTest, ObjectsAndActions) {
    destroyCopiesInEveryOrder<VelkObject>(
        [](std::optional<VelkObject>& slot, int variant) {
            slot.emplace(4.0, 5.0 + variant, 6.0, GeometrySectionType::OutlineFigure);
        },
        [](const VelkObject& object) { return object.toString(); });
    destroyCopiesInEveryOrder<Action>(
        [](std::optional<Action>& slot, int variant) {
            slot.emplace(ActionType::Default, "M" + std::to_string(8 + variant));
        },
        [](const Action& action) { return action.getCommand(); });
}

TEST_F(CopyLifetimeTest, Entries) {
    destroyCopiesInEveryOrder<SectionValue>(
        [](std::optional<SectionValue>& slot, int variant) {
            slot.emplace(101, 0, "w_depth", new DoubleValue(-2.5 - variant), new DoubleValue(0.0),
                         ValueDataType::Double, false);
        },
        [](const SectionValue& entry) { return entry.getValueAsString(); });
    destroyCopiesInEveryOrder<SectionValue>(
        [](std::optional<SectionValue>& slot, int variant) {
            slot.emplace(102, 0, "s_name", new StringValue("text " + std::to_string(variant)),
                         new StringValue(""), ValueDataType::String, false);
        },
        [](const SectionValue& entry) { return entry.getValueAsString(); });
}

TEST_F(CopyLifetimeTest, SectionsOfEveryKind) {
    checkSectionWithDefaults<ParameterSection>(MillDrillOperationType::POCKET, 2);
    checkSectionWithDefaults<ExpertParameterSection>(MillDrillOperationType::POCKET);
    checkSectionWithDefaults<MillToolSection>(0);
    checkSectionWithDefaults<TurnToolSection>(0);
    checkSectionWithDefaults<ExpertToolSection>(0);
    host().setStore(1, {{"12 1"}, {"4 0"}});
    checkSection<HeaderSection>([](std::optional<HeaderSection>& slot, int variant) {
        StoredOperation operation(1, variant);
        slot.emplace();
        slot->readFromVDM(&operation);
        slot->setDefault();
    });
}

TEST_F(CopyLifetimeTest, SectionsThatStartEmpty) {
    checkSection<MessageSection>([](std::optional<MessageSection>& slot, int variant) {
        slot.emplace(1);
        slot->createandsetLine(0, "Rough the pocket " + std::to_string(variant));
    });
    checkSection<ActionSection>([](std::optional<ActionSection>& slot, int variant) {
        slot.emplace(ActionSectionType::PostOperation, 5);
        slot->addActionParameter(2, ActionType::Default, "M" + std::to_string(5 + variant));
    });
    checkSection<GeometrySection>([](std::optional<GeometrySection>& slot, int variant) {
        slot.emplace(4);
        slot->addMacroLine(1, "macro line " + std::to_string(variant));
        slot->addVelkObjectParameter(
            2, VelkObject(1.0, 2.0 + variant, 0.0, GeometrySectionType::OutlineFigure));
    });
}

TEST_F(CopyLifetimeTest, Operations) {
    destroyCopiesInEveryOrder<MillDrillOperation>(
        [](std::optional<MillDrillOperation>& slot, int variant) {
            slot.emplace(variant == 0 ? MillDrillOperationType::POCKET
                                      : MillDrillOperationType::SLOT);
            slot->getMessageSection()->createandsetLine(0, "Operation " + std::to_string(variant));
        },
        [](const MillDrillOperation& operation) { return readOperation(operation); });
}

TEST_F(CopyLifetimeTest, ToolListAndToolRecords) {
    velkhost::Records store = {{"0 1 1 1", "Tools of the job"}};
    for (const auto& lines : {testsupport::freshToolRecord(), testsupport::filledToolRecord()}) {
        velkhost::Record tool = {"0 1 2 1 " + std::to_string(lines.size()), "A tool"};
        tool.insert(tool.end(), lines.begin(), lines.end());
        store.push_back(tool);
    }
    host().setStore(2, store);
    host().setStore(3, {store[0], store[2]});
    destroyCopiesInEveryOrder<ToolList>(
        [](std::optional<ToolList>& slot, int variant) {
            slot.emplace(variant == 0 ? 2 : 3);
            slot->readFromVDM();
        },
        [](const ToolList& list) {
            std::string text = std::to_string(list.getToolCount()) + " tools\n";
            for (int i = 0; i < list.getToolCount(); ++i) {
                text += readSection(*list.getTool(i)->getToolSection());
            }
            return text;
        });
    destroyCopiesInEveryOrder<ToolOperation>(
        [](std::optional<ToolOperation>& slot, int variant) {
            slot.emplace(2, 1 + variant);
            slot->readFromVDM();
        },
        [](const ToolOperation& tool) {
            return tool.getMessageSection()->getValueAsString("0") + "\n" +
                   readSection(*tool.getToolSection());
        });
}

// The wrapper cannot be copied, only assigned: the two share one settings object, which goes
// with the last of them, whichever that is.
TEST_F(CopyLifetimeTest, StrategyWrappersAssignedAndDestroyedInBothOrders) {
    for (const bool sourceFirst : {true, false}) {
        std::optional<GeolibWrapper> source(std::in_place);
        std::optional<GeolibWrapper> target(std::in_place);
        source->setRampAngle(3.5);
        target->setRampAngle(1.0);
        *target = *source;
        GeolibWrapper& alias = *source;
        *source = alias;
        target->setDepthStep(0.25);
        (sourceFirst ? source : target).reset();
        GeolibWrapper& survivor = source ? *source : *target;
        EXPECT_EQ(survivor.getRampAngle(), 3.5);
        EXPECT_EQ(survivor.getDepthStep(), 0.25);
    }
}

}  // namespace
