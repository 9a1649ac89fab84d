#include "tools/ToolRecordStore.h"

namespace VelkApi::tools {

std::vector<std::string> readToolLines(MillTurnVdm& vdm, int operation, int section) {
    std::vector<std::string> lines;
    forEachToolLine(vdm, operation, section,
                    [&](int, const std::string& line) { lines.push_back(line); });
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
