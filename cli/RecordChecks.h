// What velk check checks in each record of a store. Every check is one entry of the list
// recordChecks() returns: a function from the record to what it found.
#pragma once

#include <string>
#include <vector>

namespace velk {

// A record of a store as velk check sees it.
struct CheckedRecord {
    int store = 0;
    int number = 0;
    std::string kind;  // "DRILLING", ... or "tool"
};

// One thing a check found in a record.
struct Finding {
    std::string section;  // "Parameter", "Geometry", ...; empty for the record as a whole
    std::string key;      // the value's key; empty for a line or the record
    int line = -1;        // the section line (0-based), -1 when none
    std::string before;   // as the record holds it
    std::string after;    // as a write would leave it
    std::string cause;    // why, in words
};

using RecordCheck = std::vector<Finding> (*)(const CheckedRecord& record);

// Every check, in the order velk check runs them. A new check is one more entry here.
const std::vector<RecordCheck>& recordChecks();

// A header whose line counts do not match the record's lines, and lines longer than the host's
// line: findings of the record as a whole.
std::vector<Finding> damageFindings(const CheckedRecord& record);

// The round trip: what a read and a write of the record through the library would lose or
// alter, section by section.
std::vector<Finding> roundTripFindings(const CheckedRecord& record);

}  // namespace velk
