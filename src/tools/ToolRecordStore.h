// The tool record's lines in an operation's store, as every tool section reads and writes them.
#pragma once

#include <string>
#include <vector>

#include <velkapi/MillTurnVdm.h>
#include <velkapi/OperationBase.h>

#include "host/StoreSession.h"
#include "util/ErrorBoundary.h"

namespace VelkApi::tools {

// The tool data section's number in the store. Reading takes its line count from the header
// whatever number the section object carries.
constexpr int kToolDataSection = 1;

// A tool section's readFromVDM or writeToVDM: runs work() with the operation's store open, and
// nothing when there is no operation or store, or the store cannot be opened. A failure is
// logged as `failureText`.
template <typename Work>
void onOpenStore(const char* failureText, OperationBase* op, Work&& work) {
    detail::guarded(failureText, [&] {
        if (op == nullptr || op->getVDM() == nullptr) {
            return;
        }
        host::StoreSession session(*op->getVDM());
        if (session) {
            work();
        }
    });
}

// The lines of operation `operation`'s tool record: positioned at section `section` when the
// operation has it, as many lines as the header gives the tool data section (fewer when the
// store ends before them). Each is handed to onLine(index, line) in one text that the next
// line is read into; the number of lines read.
template <typename OnLine>
int forEachToolLine(MillTurnVdm& vdm, int operation, int section, OnLine&& onLine) {
    if (vdm.LoadOperation(operation) && section >= 0 && section < vdm.getSectionCount()) {
        vdm.SeekSection(section);
    }
    const std::vector<int>& counts = vdm.getSectionLineCounts();
    const int count = counts.size() > kToolDataSection ? counts[kToolDataSection] : 0;
    std::string line;
    int read = 0;
    for (; read < count && vdm.SingleGet(line); ++read) {
        onLine(read, line);
    }
    return read;
}

std::vector<std::string> readToolLines(MillTurnVdm& vdm, int operation, int section);

// Replaces section `section` of operation `operation` with `lines` and stores the number of
// lines the store took in the header.
void writeToolLines(MillTurnVdm& vdm, int operation, int section,
                    const std::vector<std::string>& lines);

}  // namespace VelkApi::tools
