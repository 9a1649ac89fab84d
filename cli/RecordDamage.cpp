#include "RecordDamage.h"

#include <charconv>
#include <optional>

#include "Project.h"

namespace velk {

namespace {

std::string where(int store, int op) {
    return "store " + std::to_string(store) + ", operation " + std::to_string(op) + ": ";
}

// The header's fields as whole numbers; none when one is not.
std::optional<std::vector<long long>> headerFields(const std::string& line) {
    std::vector<long long> fields;
    const char* at = line.data();
    const char* end = at + line.size();
    while (at != end) {
        if (*at == ' ') {
            ++at;
            continue;
        }
        long long value = 0;
        const auto [stop, error] = std::from_chars(at, end, value);
        if (error != std::errc() || (stop != end && *stop != ' ')) {
            return std::nullopt;
        }
        fields.push_back(value);
        at = stop;
    }
    return fields;
}

}  // namespace

std::vector<std::string> headerFindings(int store, int op, const velkhost::Record& record) {
    if (record.empty()) {
        return {where(store, op) + "the record has no header line"};
    }
    const auto fields = headerFields(record.front());
    if (!fields || fields->size() < 3) {
        return {where(store, op) + "the header line '" + record.front() +
                "' is not a type, a flag, a section count and line counts"};
    }
    const long long declared = (*fields)[2];
    const auto counts = static_cast<long long>(fields->size() - 3);
    if (declared != counts) {
        return {where(store, op) + "the header declares " + std::to_string(declared) +
                " sections but gives " + std::to_string(counts) + " line counts"};
    }
    long long sum = 0;
    for (std::size_t section = 0; section + 3 < fields->size(); ++section) {
        const long long count = (*fields)[section + 3];
        if (count < 0) {
            return {where(store, op) + "the header gives section " + std::to_string(section) +
                    " a line count of " + std::to_string(count)};
        }
        sum += count;
    }
    const auto lines = static_cast<long long>(record.size() - 1);
    if (sum != lines) {
        return {where(store, op) + "the header's line counts add up to " + std::to_string(sum) +
                " lines, but " + std::to_string(lines) + " lines follow it"};
    }
    return {};
}

std::vector<std::string> longLineFindings(int store, int op, const velkhost::Record& record) {
    std::vector<std::string> findings;
    for (std::size_t line = 0; line < record.size(); ++line) {
        if (record[line].size() > kHostLineBytes) {
            findings.push_back(where(store, op) + "line " + std::to_string(line) + " holds " +
                               std::to_string(record[line].size()) +
                               " bytes, more than the host's line of " +
                               std::to_string(kHostLineBytes) + ": the host reads it cut");
        }
    }
    return findings;
}

std::vector<std::string> recordFindings(int store, int op) {
    const velkhost::Record& record =
        velkhost::OfflineHost::instance().records(store).at(static_cast<std::size_t>(op));
    std::vector<std::string> findings = headerFindings(store, op, record);
    for (std::string& finding : longLineFindings(store, op, record)) {
        findings.push_back(std::move(finding));
    }
    return findings;
}

void refuseDamagedOperation(int store, int op) {
    requireOperation(store, op);
    const std::vector<std::string> findings = recordFindings(store, op);
    if (!findings.empty()) {
        throw CommandError(findings.front() +
                           ": velk writes no part of it (correct the record by hand first)");
    }
}

}  // namespace velk
