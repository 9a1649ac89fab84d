#include "RecordChecks.h"

#include <velkapi/MillDrillOperation.h>
#include <velkapi/ToolList.h>
#include <velkapi/WritePreview.h>

#include <memory>

#include "RecordDamage.h"

namespace velk {

std::vector<Finding> damageFindings(const CheckedRecord& record) {
    std::vector<Finding> findings;
    for (std::string& text : recordFindings(record.store, record.number)) {
        Finding finding;
        // The record is named by the title velk check prints above its findings.
        const std::string where = "store " + std::to_string(record.store) + ", operation " +
                                  std::to_string(record.number) + ": ";
        finding.cause =
            text.compare(0, where.size(), where) == 0 ? text.substr(where.size()) : std::move(text);
        findings.push_back(std::move(finding));
    }
    return findings;
}

std::vector<Finding> roundTripFindings(const CheckedRecord& record) {
    // A record whose header does not match its lines is reported as such: reading it through
    // the library would only add the host's complaints about the same damage.
    if (!recordFindings(record.store, record.number).empty()) {
        return {};
    }
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
        damageFindings,
        roundTripFindings,
    };
    return checks;
}

}  // namespace velk
