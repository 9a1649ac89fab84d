#include <velkapi/MillTurnVdm.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "host/HostExports.h"
#include "util/TextHelpers.h"

namespace VelkApi {

namespace {

constexpr const char* kCaption = "VelkApi::MillTurnVdm";

// Room for a header line of the usual seven sections without growing it.
constexpr std::size_t kHeaderRoom = 40;

// Reads one decimal int of the header at pos; false when none converts.
bool readHeaderInt(const std::string& line, std::size_t& pos, int& target) {
    try {
        return text::readInt(line, pos, target, 0) > 0;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

MillTurnVdm::MillTurnVdm(int name) : MacroVdm(name) {}

MillTurnVdm::~MillTurnVdm() = default;

void MillTurnVdm::reportLayout(const std::string& message) const {
    report(kCaption, message);
}

bool MillTurnVdm::InsertOperation(int position, int type) {
    const std::string header = std::to_string(type) + " 1" + " 0";
    if (!SeekFromStart(position) || host::MacroVdmInsert(handle, header.c_str(), 1) == 0) {
        return false;
    }
    return LoadOperation(position);
}

bool MillTurnVdm::LoadOperation(int k) {
    currentOperation = -1;
    sectionLineCounts.clear();
    if (!IsOpValid(k)) {
        return false;
    }
    currentOperation = k;
    return ReadHeader();
}

bool MillTurnVdm::ReadHeader() {
    sectionLineCounts.clear();
    std::string line;
    if (!SeekFromStart(currentOperation) || !SingleGet(line)) {
        return false;
    }
    std::size_t pos = 0;
    if (!readHeaderInt(line, pos, operationType)) {
        operationType = 0;
        return true;
    }
    char flag = 0;
    try {
        if (text::readByte(line, pos, flag) == 0) {
            return true;
        }
    } catch (const std::exception&) {
        return true;
    }
    operationFlag = flag;
    int declared = 0;
    readHeaderInt(line, pos, declared);
    for (int count = 0; readHeaderInt(line, pos, count);) {
        sectionLineCounts.push_back(count);
    }
    if (declared != getSectionCount()) {
        reportLayout("ReadHeader:: Operation (" + std::to_string(currentOperation) +
                     ") actual number of sections (" + std::to_string(getSectionCount()) +
                     ") differs from that specified in header (" + std::to_string(declared) + ")");
    }
    return true;
}

std::string MillTurnVdm::headerText() const {
    std::string header;
    header.reserve(kHeaderRoom);
    text::appendInt(header, operationType);
    header += operationFlag == 1 ? " 1 " : " 0 ";
    text::appendInt(header, static_cast<int>(sectionLineCounts.size()));
    for (const int count : sectionLineCounts) {
        header += ' ';
        text::appendInt(header, count);
    }
    return header;
}

bool MillTurnVdm::WriteHeader() {
    return SeekFromStart(currentOperation) && SingleReplace(headerText());
}

bool MillTurnVdm::IsOpValid(int k) {
    if (handle == 0) {
        reportLayout("IsOpValid: Vdm not open");
        return false;
    }
    const int size = host::MacroVdmSize(handle);
    if (k >= 0 && k < size) {
        return true;
    }
    reportLayout("Operation " + std::to_string(k) + " (0 based) out of range (" +
                 std::to_string(size) + " oprations)");
    return false;
}

bool MillTurnVdm::IsSectionValid(int s) {
    if (s >= 0 && s < getSectionCount()) {
        return true;
    }
    reportLayout("Operation " + std::to_string(currentOperation) + " section " + std::to_string(s) +
                 " (0 based) out of range (" + std::to_string(getSectionCount()) + " sections)");
    return false;
}

bool MillTurnVdm::SectionHasItems(int s) {
    if (!IsSectionValid(s)) {
        return false;
    }
    if (sectionLineCounts[s] > 0) {
        return true;
    }
    reportLayout("Operation " + std::to_string(currentOperation) + " section " + std::to_string(s) +
                 " item " + std::to_string(currentItem) + " (0 based) out of range (" +
                 std::to_string(sectionLineCounts[s]) + " items)");
    return false;
}

int MillTurnVdm::getSectionLineCount(int s) const {
    return s >= 0 && s < getSectionCount() ? sectionLineCounts[s] : 0;
}

bool MillTurnVdm::SeekSection(int s) {
    const int preceding = std::clamp(s, 0, getSectionCount());
    // Summed wide: a damaged header may list counts whose sum leaves the int range. Such a
    // position lies beyond any record, and the host refuses the seek as it refuses any other.
    const long long before =
        std::accumulate(sectionLineCounts.begin(), sectionLineCounts.begin() + preceding, 0LL);
    const long long offset =
        std::clamp(1 + before, static_cast<long long>(std::numeric_limits<int>::min()),
                   static_cast<long long>(std::numeric_limits<int>::max()));
    return SeekFromStart(currentOperation) && SingleSeek(static_cast<int>(offset));
}

bool MillTurnVdm::SectionCreate(int s) {
    currentItem = 0;
    if (s >= getSectionCount()) {
        sectionLineCounts.resize(static_cast<std::size_t>(s) + 1, 0);
        SeekSection(s);
        currentSection = s;
        return true;
    }
    reportLayout("SectionCreate:: Operation (" + std::to_string(currentOperation) + ") section (" +
                 std::to_string(s) + ") exist");
    if (isLoaded() && IsSectionValid(s)) {
        SeekSection(s);
        currentSection = s;
    }
    return false;
}

bool MillTurnVdm::ClearSection(int s) {
    if (!isLoaded() || !IsSectionValid(s)) {
        return false;
    }
    SeekSection(s);
    currentSection = s;
    DeleteItems(sectionLineCounts[s]);
    sectionLineCounts[s] = 0;
    return WriteHeader();
}

bool MillTurnVdm::BeginSection(int s) {
    currentItem = 0;
    if (s < getSectionCount()) {
        ClearSection(s);
    } else {
        SectionCreate(s);
    }
    if (!isLoaded() || !IsSectionValid(s)) {
        return false;
    }
    SeekSection(s);
    currentSection = s;
    return true;
}

bool MillTurnVdm::AddLine(const std::string& line) {
    if (!SingleAdd(line.c_str())) {
        return false;
    }
    ++currentItem;
    return true;
}

bool MillTurnVdm::EndSection() {
    if (currentSection < 0 || currentSection >= getSectionCount()) {
        return false;
    }
    sectionLineCounts[currentSection] = currentItem;
    return WriteHeader();
}

bool MillTurnVdm::WriteSection(int s, const std::vector<std::string>& lines) {
    if (!BeginSection(s)) {
        return false;
    }
    for (const std::string& line : lines) {
        AddLine(line);
    }
    return EndSection();
}

bool MillTurnVdm::DeleteSection(int s, int firstOptional) {
    if (!isLoaded() || s < 0 || s >= getSectionCount() || !ClearSection(s)) {
        return false;
    }
    const auto floor = static_cast<std::size_t>(std::max(firstOptional, 0));
    const std::size_t before = sectionLineCounts.size();
    while (sectionLineCounts.size() > floor && sectionLineCounts.back() == 0) {
        sectionLineCounts.pop_back();
    }
    return sectionLineCounts.size() == before || WriteHeader();
}

bool MillTurnVdm::ReadSection(int s, std::vector<std::string>& lines) {
    if (!isLoaded() || !IsSectionValid(s) || !SeekSection(s)) {
        return false;
    }
    currentSection = s;
    for (int i = 0; i < sectionLineCounts[s]; ++i) {
        std::string line;
        if (!SingleGet(line)) {
            return false;
        }
        lines.push_back(line);
    }
    return true;
}

bool MillTurnVdm::OperationExist(int k) {
    if (!Create()) {
        return false;
    }
    bool exists = false;
    if (handle == 0) {
        reportLayout("OperationExist: Vdm not open");
    } else {
        exists = k >= 0 && k < host::MacroVdmSize(handle);
    }
    Close();
    return exists;
}

int MillTurnVdm::OperationCount() {
    return handle != 0 ? host::MacroVdmSize(handle) : 0;
}

}  // namespace VelkApi
