#include "RecordChecks.h"

#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolList.h>
#include <velkapi/WritePreview.h>

#include <memory>

namespace velk {

std::vector<Finding> roundTripFindings(const CheckedRecord& record) {
    std::unique_ptr<VelkApi::OperationBase> op;
    if (record.kind == "tool") {
        op = std::make_unique<VelkApi::ToolOperation>(record.store, record.number);
    } else {
        op = std::make_unique<VelkApi::MillDrillOperation>(record.store, record.number);
    }
    op->readFromVDM();
    std::vector<Finding> findings;
    for (const VelkApi::SectionWrite& section : VelkApi::WritePreview::sections(*op)) {
        for (const VelkApi::WriteChange& change : section.changes) {
            findings.push_back({section.section, change.key, change.line, change.before,
                                change.after, change.cause});
        }
    }
    return findings;
}

const std::vector<RecordCheck>& recordChecks() {
    static const std::vector<RecordCheck> checks = {
        roundTripFindings,
    };
    return checks;
}

}  // namespace velk
