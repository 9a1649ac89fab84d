#include <velkapi/HeaderSection.h>

#include <velkapi/OperationBase.h>

#include "host/StoreSession.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

namespace {

const char* const kNamedLineCounts[] = {"MessageLineCount", "ToolSectionLineCount",
                                        "ParameterSectionLineCount", "GeometrySectionLineCount"};

}  // namespace

HeaderSection::HeaderSection() : SectionDictionary(-1) {}

HeaderSection::~HeaderSection() = default;

void HeaderSection::writeToVDM(OperationBase*) {}

void HeaderSection::readFromVDM(OperationBase* op) {
    detail::guarded("Error in HeaderSection::readFromVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session) {
            return;
        }
        vdm.LoadOperation(op->getNumber());
        operationType = vdm.getOperationType();
        addIntParameter(0, "i_type", operationType, 0);
        activeFlag = vdm.getOperationFlag();
        addBoolParameter(1, 1, "IsActive", activeFlag != 0, true);
        sectionCount = vdm.getSectionCount();
        addIntParameter(2, "SectionCount", sectionCount, 1);
        for (int i = 0; i < 4; ++i) {
            const int count = vdm.getSectionLineCount(i);
            sectionLineCounts.push_back(count);
            addIntParameter(i + 3, kNamedLineCounts[i], count, 1);
        }
        for (int i = 4; i < sectionCount; ++i) {
            const int count = vdm.getSectionLineCount(i);
            sectionLineCounts.push_back(count);
            addIntParameter(i + 3, "AdditionalSectionLineCount_" + std::to_string(i), count, 1);
        }
    });
}

}  // namespace VelkApi
