// What a store holds: operations, or tools (a tool store: a leading record, then tool records
// only). Each command works on one kind and refuses the other with a line that names the
// command that fits.
#pragma once

namespace velk {

// Record 0 followed by tool records only, at least one.
bool isToolStore(int store);

// Throws CommandError when the store is a tool store; `whatFits` completes "store 2 is a tool
// store: " with the command that fits, as a format where "{store}" stands for the number.
void refuseToolStore(int store, const char* whatFits);
// Throws CommandError when the store holds records other than tools.
void refuseOperationStore(int store);

}  // namespace velk
