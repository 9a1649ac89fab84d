#include <velkapi/ActionSection.h>

#include <velkapi/OperationBase.h>

#include "host/StoreSession.h"
#include "model/SectionEntries.h"
#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

namespace {

// The pre-operation list is the first of the store sections an operation may leave out.
constexpr int kFirstActionSection = 4;
constexpr int kKindsLine = 1;
constexpr int kFirstCommandLine = 2;

const char* marker(ActionSectionType type) {
    return type == ActionSectionType::PostOperation ? "###POSTOPERATION###" : "###PREOPERATION###";
}

// The next kind of the kinds line; 0 when no number is left there (the position then stays).
ActionType nextKind(const std::string& kinds, std::size_t& pos) {
    int kind = 0;
    return text::readIntIfAny(kinds, pos, kind) ? static_cast<ActionType>(kind) : ActionType{0};
}

}  // namespace

ActionSection::ActionSection(ActionSectionType type, int sectionnr)
    : SectionDictionary(sectionnr), sectionType(type) {}

ActionSection::~ActionSection() = default;

void ActionSection::addActionParameter(int nr, ActionType type, const std::string& command) {
    guarded("Error in ActionSection::addActionParameter()", [&] {
        const Action action(type, command);
        detail::SectionEntries::addAction(*this, nr, std::to_string(nr), action, action);
    });
}

std::vector<Action> ActionSection::actions() const {
    std::vector<Action> found;
    for (const detail::EntryRef& entry : detail::SectionEntries::byName(*this)) {
        Action action;
        if (entry->getValueDataType() == ValueDataType::Action && entry->getValue(&action)) {
            found.push_back(action);
        }
    }
    return found;
}

std::vector<Action>* ActionSection::getValues(std::vector<Action>* out) {
    guarded("Error in ActionSection::getValues()", [&] {
        if (!out) {
            return;
        }
        for (Action& action : actions()) {
            out->push_back(std::move(action));
        }
    });
    return out;
}

void ActionSection::writeToVDM(OperationBase* op) {
    guarded("Error in ActionSection::writeToVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        const std::vector<std::string> lines = composeLines();
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber())) {
            return;
        }
        if (lines.empty()) {
            vdm.DeleteSection(sectionNr, kFirstActionSection);
            return;
        }
        vdm.WriteSection(sectionNr, lines);
    });
}

std::vector<std::string> ActionSection::composeLines() const {
    const std::vector<Action> list = actions();
    if (list.empty()) {
        return {};
    }
    std::vector<std::string> lines = {marker(sectionType), ""};
    for (const Action& action : list) {
        lines[kKindsLine] += std::to_string(static_cast<std::int32_t>(action.getType())) + " ";
        lines.push_back(action.getCommand());
    }
    return lines;
}

void ActionSection::readFromVDM(OperationBase* op) {
    guarded("Error in ActionSection::readFromVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber()) ||
            vdm.getSectionLineCount(sectionNr) < 1) {
            return;
        }
        std::vector<std::string> lines;
        if (!vdm.ReadSection(sectionNr, lines)) {
            return;
        }
        const std::string kinds = lines.size() > kKindsLine ? lines[kKindsLine] : "";
        std::size_t pos = 0;
        for (std::size_t k = kFirstCommandLine; k < lines.size(); ++k) {
            addActionParameter(static_cast<int>(k), nextKind(kinds, pos), lines[k]);
        }
    });
}

}  // namespace VelkApi
