#include <velkapi/MessageSection.h>

#include <velkapi/OperationBase.h>

#include "host/StoreSession.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

namespace {

constexpr int kMessageSection = 0;

}  // namespace

MessageSection::MessageSection(int sectionnr) : SectionDictionary(sectionnr) {}

MessageSection::~MessageSection() = default;

void MessageSection::createLine(size_t n) {
    const std::string key = std::to_string(n);
    if (!existsKey(key)) {
        addStringParameter(static_cast<int>(n), key, "", "");
    }
}

void MessageSection::createandsetLine(size_t n, const std::string& text) {
    const std::string key = std::to_string(n);
    if (!existsKey(key)) {
        addStringParameter(static_cast<int>(n), key, "", text);
    }
    setString(key, text);
}

void MessageSection::readFromStrings(const std::vector<std::string>& lines) {
    for (size_t i = 0; i < lines.size(); ++i) {
        createandsetLine(i, lines[i]);
    }
}

std::vector<std::string> MessageSection::composeLines() const {
    std::vector<std::string> lines;
    const size_t count = entryCount();
    for (size_t i = 0; i < count; ++i) {
        const std::string key = std::to_string(i);
        if (existsKey(key)) {
            lines.push_back(getString(key));
        }
    }
    return lines;
}

void MessageSection::writeToStrings(std::vector<std::string>& lines) {
    for (std::string& line : composeLines()) {
        lines.push_back(std::move(line));
    }
}

void MessageSection::writeToVDM(OperationBase* op) {
    detail::guarded("Error in MessageSection::writeToVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        // The lines are gathered before the old ones are removed, so that nothing is lost
        // when gathering fails.
        const std::vector<std::string> lines = composeLines();
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session) {
            return;
        }
        vdm.WriteSection(sectionNr, lines);
    });
}

void MessageSection::readFromVDM(OperationBase* op) {
    detail::guarded("Error in MessageSection::readFromVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber())) {
            return;
        }
        const int count = vdm.getSectionLineCount(kMessageSection);
        if (vdm.getSectionCount() > kMessageSection) {
            vdm.SeekSection(kMessageSection);
        }
        for (int i = 0; i < count; ++i) {
            std::string line;
            vdm.SingleGet(line);
            createandsetLine(static_cast<size_t>(i), line);
        }
    });
}

}  // namespace VelkApi
