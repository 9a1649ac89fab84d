/// \file
/// The layout of operations inside one record store.
///
/// Operation k (0-based) is record k of the store. Its line 0 is the header
///   "<host operation number> <flag 1|0> <N> <count 0> ... <count N-1>"
/// and the lines of section 0, 1, ... follow, each section exactly as many lines as its count,
/// without separators. Failures are shown in a message box captioned "VelkApi::MillTurnVdm" whose
/// text is "<store number>: <message>", and the operation returns false.
#pragma once

#include <string>
#include <vector>

#include <velkapi/MacroVdm.h>

namespace VelkApi {

/// A record store seen as operations, each a header and its sections of lines.
class VELKAPI_EXPORT MillTurnVdm : public MacroVdm {
  public:
    /// A handle on store `vdmName`, not yet open, with no operation loaded.
    explicit MillTurnVdm(int vdmName);
    ~MillTurnVdm() override;
    /// A copy of another MillTurnVdm: the same store, loaded operation and section counts, but
    /// not open; the open handle stays with the original (see MacroVdm's copy).
    MillTurnVdm(const MillTurnVdm&) = default;
    /// Becomes a copy of another MillTurnVdm, closing this one's store first when it is open.
    MillTurnVdm& operator=(const MillTurnVdm&) = default;

    /// Inserts "<type> 1 0" as a new operation before `position` and loads it.
    bool InsertOperation(int position, int type);
    /// Loads operation `k`: reads its header and positions at its first section.
    bool LoadOperation(int k);
    /// Reads the header of the loaded operation again.
    bool ReadHeader();
    /// Writes the header of the loaded operation from its section counts.
    bool WriteHeader();

    /// True when the store has an operation `k`.
    bool IsOpValid(int k);
    /// True when the loaded operation has a section `s`.
    bool IsSectionValid(int s);
    /// True when section `s` of the loaded operation holds lines.
    bool SectionHasItems(int s);

    /// Goes to the first line of section `s` of the loaded operation.
    bool SeekSection(int s);
    /// Creates section `s` of the loaded operation, with no lines.
    bool SectionCreate(int s);
    /// Removes every line of section `s` of the loaded operation.
    bool ClearSection(int s);
    /// Empties section s, or creates it (and every missing section before it) with no lines,
    /// and positions at its first line. Writers then add their lines with AddLine and finish
    /// with EndSection.
    bool BeginSection(int s);
    /// Adds one line at the current position and counts it when the store took it.
    bool AddLine(const std::string& line);
    /// Stores the lines added since BeginSection as the current section's count and rewrites
    /// the header.
    bool EndSection();
    /// Removes the lines of section s, when the operation has it. The empty sections at the end
    /// of the header, from section `firstOptional` on, then leave the header as well, so that
    /// it lists such sections only while they, or a section after them, hold lines.
    bool DeleteSection(int s, int firstOptional);
    /// BeginSection, AddLine for every line, EndSection: section s of the loaded operation
    /// becomes `lines`.
    bool WriteSection(int s, const std::vector<std::string>& lines);
    /// Positions at the first line of section s of the loaded operation and reads its lines.
    bool ReadSection(int s, std::vector<std::string>& lines);

    /// Opens the store, tells whether operation k exists, and closes it again.
    bool OperationExist(int k);
    /// Number of operations in the open store (0 when it is not open).
    int OperationCount();

    /// The number of the loaded operation; -1 when none is loaded.
    int getCurrentOperation() const { return currentOperation; }
    /// The host operation number of the loaded operation.
    int getOperationType() const { return operationType; }
    /// The flag of the loaded operation: 1 active, 0 not.
    int getOperationFlag() const { return operationFlag; }
    /// The number of sections of the loaded operation.
    int getSectionCount() const { return static_cast<int>(sectionLineCounts.size()); }
    /// The line count of section s; 0 for a section the header does not list.
    int getSectionLineCount(int s) const;
    /// The line count of every section of the loaded operation.
    const std::vector<int>& getSectionLineCounts() const { return sectionLineCounts; }
    /// The section the current position lies in.
    int getCurrentSection() const { return currentSection; }
    /// The line of the current section the position is at.
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
