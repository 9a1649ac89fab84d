/// \file
/// An operation's header (host operation number, active flag, section count and the line count
/// of every section) as read-only dictionary entries. The record's numbers are the entries'
/// DEFAULTS; their current values are fixed constants, so callers read them after setDefault()
/// or through each entry's default: getInt("SectionCount") gives 1 before that.
#pragma once

#include <vector>

#include <velkapi/SectionDictionary.h>

namespace VelkApi {

/// The header of an operation: its host operation number, active flag and section layout.
class VELKAPI_EXPORT HeaderSection : public SectionDictionary {
  public:
    HeaderSection();
    /// A copy of another HeaderSection.
    HeaderSection(const HeaderSection&) = default;
    /// Becomes a copy of another HeaderSection.
    HeaderSection& operator=(const HeaderSection&) = default;
    ~HeaderSection() override;

    /// The header is never written through this class.
    void writeToVDM(OperationBase* op) override;
    /// Declares "i_type", "IsActive", "SectionCount", the four named line counts and
    /// "AdditionalSectionLineCount_<i>" for every further section.
    void readFromVDM(OperationBase* op) override;

    /// The host's operation number read from the header.
    int getOperationType() const { return operationType; }
    /// The active flag read from the header: 1 active, 0 not.
    int getActiveFlag() const { return activeFlag; }
    /// The number of sections the header lists.
    int getSectionCount() const { return sectionCount; }
    /// The line count of every section, in section order.
    const std::vector<int>& getSectionLineCounts() const { return sectionLineCounts; }

  private:
    int operationType = 0;
    int activeFlag = 0;
    int sectionCount = 0;
    std::vector<int> sectionLineCounts;
};

}  // namespace VelkApi
