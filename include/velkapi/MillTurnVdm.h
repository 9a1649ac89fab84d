// The layout of operations inside one record store.
//
// Operation k (0-based) is record k of the store. Its line 0 is the header
//   "<host operation number> <flag 1|0> <N> <count 0> ... <count N-1>"
// and the lines of section 0, 1, ... follow, each section exactly as many lines as its count,
// without separators. Failures are shown in a message box captioned "VelkApi::MillTurnVdm" whose
// text is "<store number>: <message>", and the operation returns false.
#pragma once

#include <string>
#include <vector>

#include <velkapi/MacroVdm.h>

namespace VelkApi {

class VELKAPI_EXPORT MillTurnVdm : public MacroVdm {
  public:
    explicit MillTurnVdm(int vdmName);
    ~MillTurnVdm() override;
    MillTurnVdm(const MillTurnVdm&) = default;
    MillTurnVdm& operator=(const MillTurnVdm&) = default;

    // Inserts "<type> 1 0" as a new operation before `position` and loads it.
    bool InsertOperation(int position, int type);
    bool LoadOperation(int k);
    bool ReadHeader();
    bool WriteHeader();

    bool IsOpValid(int k);
    bool IsSectionValid(int s);
    bool SectionHasItems(int s);

    bool SeekSection(int s);
    bool SectionCreate(int s);
    bool ClearSection(int s);
    // Empties section s, or creates it (and every missing section before it) with no lines,
    // and positions at its first line. Writers then add their lines with AddLine and finish
    // with EndSection.
    bool BeginSection(int s);
    // Adds one line at the current position and counts it when the store took it.
    bool AddLine(const std::string& line);
    // Stores the lines added since BeginSection as the current section's count and rewrites
    // the header.
    bool EndSection();
    // Removes the lines of section s, when the operation has it. The empty sections at the end
    // of the header, from section `firstOptional` on, then leave the header as well, so that
    // it lists such sections only while they, or a section after them, hold lines.
    bool DeleteSection(int s, int firstOptional);
    // BeginSection, AddLine for every line, EndSection: section s of the loaded operation
    // becomes `lines`.
    bool WriteSection(int s, const std::vector<std::string>& lines);
    // Positions at the first line of section s of the loaded operation and reads its lines.
    bool ReadSection(int s, std::vector<std::string>& lines);

    // Opens the store, tells whether operation k exists, and closes it again.
    bool OperationExist(int k);
    // Number of operations in the open store (0 when it is not open).
    int OperationCount();

    int getCurrentOperation() const { return currentOperation; }
    int getOperationType() const { return operationType; }
    int getOperationFlag() const { return operationFlag; }
    int getSectionCount() const { return static_cast<int>(sectionLineCounts.size()); }
    // The line count of section s; 0 for a section the header does not list.
    int getSectionLineCount(int s) const;
    const std::vector<int>& getSectionLineCounts() const { return sectionLineCounts; }
    int getCurrentSection() const { return currentSection; }
    int getCurrentItem() const { return currentItem; }

  private:
    void reportLayout(const std::string& message) const;
    std::string headerText() const;
    bool isLoaded() const { return currentOperation >= 0; }

    int currentOperation = -1;
    int operationType = 0;
    int operationFlag = 0;
    std::vector<int> sectionLineCounts;
    int currentSection = -1;
    int currentItem = 0;
};

}  // namespace VelkApi
