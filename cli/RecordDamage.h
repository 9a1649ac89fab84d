// Checks of a record as it stands in the project, before velk writes it: what the host would
// read differently from what is stored. Each finding is one line that names the store, the
// operation and what is wrong; velk check lists them, and a writing command refuses the
// operation while it has any.
#pragma once

#include <velkhost/OfflineHost.h>

#include <string>
#include <vector>

namespace velk {

// The longest line the host reads; a longer one is cut to this many bytes.
constexpr std::size_t kHostLineBytes = 4999;

// What is wrong with the header line's counts: not whole numbers, fewer or more counts than the
// sections it declares, a negative count, or counts whose sum is not the number of lines after
// the header. Empty when the header matches the record.
std::vector<std::string> headerFindings(int store, int op, const velkhost::Record& record);
// Every line of the record longer than the host's line.
std::vector<std::string> longLineFindings(int store, int op, const velkhost::Record& record);
// Both, for one record of a store of the loaded project.
std::vector<std::string> recordFindings(int store, int op);

// Throws CommandError with the first finding of the operation, when it has one.
void refuseDamagedOperation(int store, int op);

}  // namespace velk
