#include <velkapi/TurnToolSection.h>

#include "tools/ToolRecordStore.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

using detail::guarded;

TurnToolSection::TurnToolSection(int sectionnr) : ToolSection(sectionnr) {
    guarded("Error in TurnToolSection::TurnToolSection(int sectionnr)", [&] {
        for (int line = 0; line < LINESCOUNT; ++line) {
            addStringParameter(line, "LINE" + std::to_string(line), "", "");
        }
    });
}

TurnToolSection::~TurnToolSection() = default;

void TurnToolSection::setDefault() {}

void TurnToolSection::readFromVars() {}

void TurnToolSection::writeToVars() {}

void TurnToolSection::writeToVDM(OperationBase* op) {
    tools::onOpenStore("Error in ToolSection::writeToVDM()", op, [&] { write(op); });
}

void TurnToolSection::readFromVDM(OperationBase* op) {
    tools::onOpenStore("Error in TurnToolSection::readFromVDM()", op, [&] { read(op); });
}

void TurnToolSection::write(OperationBase* op) {
    guarded("Error in TurnToolSection::write(VelkApi::MillTurnVdm * vdm)", [&] {
        tools::writeToolLines(*op->getVDM(), op->getNumber(), sectionNr, composeLines());
    });
}

std::vector<std::string> TurnToolSection::composeLines() const {
    return {""};
}

void TurnToolSection::read(OperationBase* op) {
    guarded("Error in ToolSection::read(VelkApi::MillTurnVdm * vdm)",
            [&] { tools::readToolLines(*op->getVDM(), op->getNumber(), sectionNr); });
}

}  // namespace VelkApi
