// velk check PROJECT [--store N] [--json]: reads every operation and tool of the project through
// the library and works out, without writing, what writing it back would lose or alter, and why.
// Exit status 0 when every record would stay as it is, 1 when some would not, 2 on trouble.
#include <velkhost/OfflineHost.h>

#include <iostream>
#include <memory>

#include "Commands.h"
#include "Progress.h"
#include "Project.h"
#include "ProjectSnapshot.h"
#include "RecordChecks.h"

namespace velk {

namespace {

using Json = nlohmann::ordered_json;

struct CheckOptions {
    std::string project;
    int store = -1;
    bool json = false;
};

struct CheckedResult {
    CheckedRecord record;
    std::vector<Finding> findings;
};

std::vector<int> checkedStores(const CheckOptions& options) {
    if (options.store < 0) {
        return velkhost::OfflineHost::instance().storeNumbers();
    }
    requireStore(options.store);
    return {options.store};
}

std::vector<CheckedRecord> checkedRecords(const std::vector<int>& stores) {
    std::vector<CheckedRecord> records;
    for (const int store : stores) {
        const std::size_t count = velkhost::OfflineHost::instance().records(store).size();
        for (std::size_t nr = 0; nr < count; ++nr) {
            const std::string kind = recordKind(store, static_cast<int>(nr));
            if (!kind.empty() && kind != "unknown") {
                records.push_back({store, static_cast<int>(nr), kind});
            }
        }
    }
    return records;
}

std::vector<CheckedResult> runChecks(const std::vector<CheckedRecord>& records) {
    std::vector<CheckedResult> results;
    Progress progress("records checked", records.size());
    for (const CheckedRecord& record : records) {
        CheckedResult result{record, {}};
        for (const RecordCheck check : recordChecks()) {
            for (Finding& finding : check(record)) {
                result.findings.push_back(std::move(finding));
            }
        }
        if (!result.findings.empty()) {
            results.push_back(std::move(result));
        }
        progress.advance();
    }
    takeMessageBoxes();  // what the host said while reading is reported by the findings
    return results;
}

std::string recordTitle(const CheckedRecord& record) {
    return "store " + std::to_string(record.store) +
           (record.kind == "tool" ? ", tool " : ", operation ") + std::to_string(record.number) +
           (record.kind == "tool" ? "" : " (" + record.kind + ")");
}

std::string findingText(const Finding& finding) {
    if (finding.section.empty()) {
        return finding.cause;
    }
    std::string what = finding.section;
    if (!finding.key.empty()) {
        what += " " + finding.key;
    } else if (finding.line >= 0) {
        what += " line " + std::to_string(finding.line);
    }
    return what + " (" + finding.before + " -> " + finding.after + "): " + finding.cause;
}

void printText(const std::vector<CheckedResult>& results, std::size_t checked) {
    for (const CheckedResult& result : results) {
        std::cout << recordTitle(result.record) << ":\n";
        for (const Finding& finding : result.findings) {
            std::cout << "  " << findingText(finding) << "\n";
        }
    }
    if (results.empty()) {
        std::cout << checked << (checked == 1 ? " record" : " records")
                  << " checked: a write keeps every one as it is\n";
    } else {
        std::cout << checked << (checked == 1 ? " record" : " records") << " checked: a write "
                  << "would change " << results.size() << " of them\n";
    }
}

void printJson(const std::vector<CheckedResult>& results, std::size_t checked) {
    Json records = Json::array();
    for (const CheckedResult& result : results) {
        Json findings = Json::array();
        for (const Finding& finding : result.findings) {
            findings.push_back({{"section", finding.section},
                                {"key", finding.key},
                                {"line", finding.line},
                                {"before", finding.before},
                                {"after", finding.after},
                                {"cause", finding.cause}});
        }
        records.push_back(
            {{"store", result.record.store},
             {result.record.kind == "tool" ? "tool" : "operation", result.record.number},
             {"kind", result.record.kind},
             {"findings", findings}});
    }
    const Json out = {{"checked", checked}, {"keeps", results.empty()}, {"records", records}};
    std::cout << out.dump(2) << "\n";
}

void check(const CheckOptions& options) {
    loadProject(options.project);
    std::vector<CheckedRecord> records;
    try {
        records = checkedRecords(checkedStores(options));
    } catch (const CommandError& e) {
        throw CommandTrouble(e.what());  // 1 means "a write would change something"
    }
    const std::vector<CheckedResult> results = runChecks(records);
    if (options.json) {
        printJson(results, records.size());
    } else {
        printText(results, records.size());
    }
    if (!results.empty()) {
        throw CLI::RuntimeError(1);  // something would not round-trip: nothing more to say
    }
}

}  // namespace

void addCheckCommand(CLI::App& app) {
    auto options = std::make_shared<CheckOptions>();
    CLI::App* command = app.add_subcommand(
        "check",
        "List every operation and tool that a write through the library would change, what "
        "and why; writes nothing (exit status 0: all keep, 1: some would change, 2: trouble)");
    addProjectArgument(*command, options->project);
    command->add_option("--store", options->store, "Check only this store");
    command->add_flag("--json", options->json, "Print JSON instead of text");
    command->callback([options] { velk::check(*options); });
}

}  // namespace velk
