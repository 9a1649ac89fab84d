#include <velkapi/MillDrillOperation.h>
#include <velkapi/TurnToolSection.h>

#include <algorithm>
#include <utility>

#include "host/HostExports.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

using detail::guarded;
using Kind = MillDrillOperationType;

namespace {

// The sections' numbers in the store.
constexpr int kMessageSectionNr = 0;
constexpr int kToolSectionNr = 1;
constexpr int kParameterSectionNr = 2;
constexpr int kGeometrySectionNr = 3;
// The action lists' store sections follow their list numbers: list 1 is section 4.
constexpr int kActionSectionOffset = 3;
constexpr int kStandardSteps = 6;

// The order in which readFromVDM reads the sections.
constexpr std::pair<SectionType, int> kReadOrder[] = {
    {SectionType::Header, 0},   {SectionType::Parameter, 0},  {SectionType::Geometry, 0},
    {SectionType::Message, 0},  {SectionType::Additional, 1}, {SectionType::Additional, 2},
    {SectionType::ToolData, 0},
};

std::string withReason(const char* prefix, const char* reason) {
    return std::string(prefix) + " => " + reason;
}

// The store GetOperationType reads the kind from. It is closed only while the host still counts
// it open: a store the host has closed behind the library's back is let go without a message.
class KindLookupStore : public MillTurnVdm {
  public:
    using MillTurnVdm::MillTurnVdm;
    ~KindLookupStore() override { closeIfStillOpen(); }
    KindLookupStore(const KindLookupStore&) = delete;
    KindLookupStore& operator=(const KindLookupStore&) = delete;

    void closeIfStillOpen() {
        if (handle != 0 && host::MacroVdmCheckOpen(vdmName) != 0) {
            host::MacroVdmClose(handle);
        }
        handle = 0;
    }
};

}  // namespace

MillDrillOperation::MillDrillOperation(int store, int opnr) : OperationBase(store, opnr) {
    const auto describe = [](const char* reason) {
        return withReason("Error in MillDrillOperation(int vdmname, int opnr)", reason);
    };
    guarded(describe, [&] {
        operationType = GetOperationType(store, opnr);
        if (operationType == Kind::REDRAW) {
            return;
        }
        velkActive = true;
        setup();
    });
}

MillDrillOperation::MillDrillOperation(MillDrillOperationType ot, int store, int opnr)
    : OperationBase(store, opnr) {
    const auto describe = [](const char* reason) {
        return withReason(
            "Error in MillDrillOperation(MillDrillOperationType  ot, int vdmname, int opnr)",
            reason);
    };
    guarded(describe, [&] {
        operationType = ot;
        if (operationType == Kind::REDRAW) {
            return;
        }
        velkActive = true;
        setup();
    });
}

MillDrillOperation::MillDrillOperation(MillDrillOperationType ot) {
    operationType = ot;
    velkActive = false;
    if (ot != Kind::REDRAW) {
        setup();
    }
}

MillDrillOperation::~MillDrillOperation() = default;

MillDrillOperationType MillDrillOperation::GetOperationType(int vdmName, int nr) {
    const auto describe = [](const char* reason) {
        return withReason("Error in MillDrillOperation::GetOperationType()", reason);
    };
    return guarded(Kind::REDRAW, describe, [&] {
        KindLookupStore store(vdmName);
        const Kind kind = GetMillDrillOperationType(&store, nr);
        store.closeIfStillOpen();
        return kind;
    });
}

void MillDrillOperation::setup() {
    const auto describe = [](const char* reason) {
        return withReason("Error in MillDrillOperation::Setup", reason);
    };
    guarded(describe, [&] {
        header = nullptr;
        parameter = nullptr;
        message = nullptr;
        geometry = nullptr;
        preActions = nullptr;
        postActions = nullptr;
        tool = nullptr;

        auto headerSection = std::make_shared<HeaderSection>();
        header = headerSection.get();
        enterSection(SectionTypeToString(SectionType::Header, 0), headerSection);

        const int steps = std::max(header->getInt("SectionCount"), kStandardSteps);
        for (int step = 1; step <= steps; ++step) {
            switch (step) {
                case 1: {
                    auto messageSection = std::make_shared<MessageSection>(kMessageSectionNr);
                    message = messageSection.get();
                    enterSection(SectionTypeToString(SectionType::Message, 0), messageSection);
                    break;
                }
                case 2: {
                    // An operation of unknown kind holds the name without a tool section.
                    auto toolSection = createToolSection();
                    enterSection(SectionTypeToString(SectionType::ToolData, 0), toolSection);
                    tool = toolSection.get();
                    break;
                }
                case 3:
                    if (operationType != Kind::Unknown && createParameterSection(operationType)) {
                        parameter->Init(isTurn());
                    }
                    break;
                case 4:
                    if (operationType != Kind::Unknown) {
                        createGeometrySection();
                    }
                    break;
                case 5:
                case 6:
                    if (operationType != Kind::Unknown) {
                        createActionSection(step - 4);
                    }
                    break;
                default:
                    break;
            }
        }
    });
}

std::shared_ptr<ToolSection> MillDrillOperation::createToolSection() {
    if (operationType == Kind::Unknown) {
        return nullptr;
    }
    if (isTurn()) {
        return std::make_shared<TurnToolSection>(kToolSectionNr);
    }
    return std::make_shared<MillToolSection>(kToolSectionNr);
}

ParameterSection* MillDrillOperation::createParameterSection(const MillDrillOperationType& kind) {
    return guarded<ParameterSection*>(
        nullptr, "Error in MillDrillOperation::createParameterSection", [&]() -> ParameterSection* {
            const std::string name = SectionTypeToString(SectionType::Parameter, 0);
            if (auto existing = sections->find(name); existing != sections->end()) {
                return dynamic_cast<ParameterSection*>(existing->second.get());
            }
            auto section = std::make_shared<ParameterSection>(kind, kParameterSectionNr);
            parameter = section.get();
            enterSection(name, section);
            return parameter;
        });
}

GeometrySection* MillDrillOperation::createGeometrySection() {
    return guarded<GeometrySection*>(
        nullptr, "Error in MillDrillOperation::createGeometrySection()", [&]() -> GeometrySection* {
            const std::string name = SectionTypeToString(SectionType::Geometry, 0);
            if (auto existing = sections->find(name); existing != sections->end()) {
                return dynamic_cast<GeometrySection*>(existing->second.get());
            }
            auto section = std::make_shared<GeometrySection>(kGeometrySectionNr);
            geometry = section.get();
            enterSection(name, section);
            return geometry;
        });
}

void MillDrillOperation::createActionSection(int n) {
    const std::string name = SectionTypeToString(SectionType::Additional, n);
    if (sections->count(name) != 0) {
        return;
    }
    auto section = std::make_shared<ActionSection>(static_cast<ActionSectionType>(n),
                                                   n + kActionSectionOffset);
    (n == 1 ? preActions : postActions) = section.get();
    enterSection(name, section);
}

ActionSection* MillDrillOperation::getActionSection(int n) const {
    return n == 1 ? preActions : n == 2 ? postActions : nullptr;
}

// Kinds REDRAW and Unknown have nothing to read or write; neither has an operation of a kind
// only, outside any store.
bool MillDrillOperation::hasStoredSections() const {
    return vdm && operationType != Kind::REDRAW && operationType != Kind::Unknown;
}

void MillDrillOperation::readFromVDM() {
    guarded("Error in MillDrillOperation::readFromVDM()", [&] {
        if (!hasStoredSections()) {
            return;
        }
        for (const auto& [sectionType, n] : kReadOrder) {
            if (SectionDictionary* section = getSection(sectionType, n)) {
                section->readFromVDM(this);
            }
        }
    });
}

void MillDrillOperation::writeToVDM() {
    guarded("Error in MillDrillOperation::writeToVDM()", [&] {
        if (!hasStoredSections()) {
            return;
        }
        if (isNew() && vdm && vdm->Create()) {
            vdm->InsertOperation(number, millDrillOperationTypeToVelk(operationType));
            vdm->Close();
        }
        for (const auto& [name, section] : *sections) {
            if (section) {
                section->writeToVDM(this);
            }
        }
    });
}

std::string MillDrillOperation::getCycle() {
    return guarded<std::string>("", "Error in MillDrillOperation::GetCycle()", [&] {
        std::string cycle;
        if (!parameter) {
            return cycle;
        }
        const int t = parameter->getInt("i_type");
        switch (operationType) {
            case Kind::DRILLING:
                if (t == 83) {
                    cycle =
                        parameter->getInt("i_g83_chipbr") == 0 ? "g83_retract" : "g83_chipbreak";
                } else {
                    cycle = "g" + std::to_string(t);
                }
                break;
            case Kind::POCCYCLE: {
                static const char* const kShapes[] = {"circle", "rectangle", "slot", "thread"};
                if (t >= 1 && t <= 4) {
                    cycle = kShapes[t - 1];
                }
                if (parameter->getInt("i_finishing") == 1) {
                    cycle += "fin";
                }
                break;
            }
            case Kind::THREADING:
                cycle = t == 1 ? "insidethread" : "outsidethread";
                break;
            default:
                break;
        }
        return cycle;
    });
}

}  // namespace VelkApi
