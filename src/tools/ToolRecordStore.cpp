#include "tools/ToolRecordStore.h"

namespace VelkApi::tools {

std::vector<std::string> readToolLines(MillTurnVdm& vdm, int operation, int section) {
    if (vdm.LoadOperation(operation) && section >= 0 && section < vdm.getSectionCount()) {
        vdm.SeekSection(section);
    }
    const std::vector<int>& counts = vdm.getSectionLineCounts();
    const int count = counts.size() > kToolDataSection ? counts[kToolDataSection] : 0;
    std::vector<std::string> lines;
    for (std::string line; static_cast<int>(lines.size()) < count && vdm.SingleGet(line);) {
        lines.push_back(line);
    }
    return lines;
}

void writeToolLines(MillTurnVdm& vdm, int operation, int section,
                    const std::vector<std::string>& lines) {
    if (!vdm.LoadOperation(operation)) {
        return;
    }
    vdm.WriteSection(section, lines);
}

}  // namespace VelkApi::tools
