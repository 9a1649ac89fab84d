/// \file
/// The machining parameters of an operation: store section 2. Init declares the catalogue of the
/// operation's kind; the section's lines in the store are
///   line 0        the kind's name ("POCKET", "DRILLING", ...)
///   line 1 ...    value lines: entry number nr is field nr % 100 of value line nr / 100
/// Option bits that share one number form one int field, the sum of 2^(bit-1) over true bits.
#pragma once

#include <string>
#include <vector>

#include <velkapi/MillDrillOperationType.h>
#include <velkapi/SectionDictionary.h>

namespace VelkApi {

class MillTurnVdm;

/// The machining parameters of an operation, declared by its kind.
class VELKAPI_EXPORT ParameterSection : public SectionDictionary {
  public:
    /// Declares no entries: the owner calls Init next.
    ParameterSection(MillDrillOperationType type, int sectionnr);
    /// A copy of another ParameterSection.
    ParameterSection(const ParameterSection&) = default;
    /// Becomes a copy of another ParameterSection.
    ParameterSection& operator=(const ParameterSection&) = default;
    ~ParameterSection() override;

    /// Writes the parameters into the operation's parameter section.
    void writeToVDM(OperationBase* op) override;
    /// Reads the operation's parameter section.
    void readFromVDM(OperationBase* op) override;

    /// Declares every parameter of the kind. `machineAware` adds what the machine definition and
    /// the current channel allow (for operations inside a running host).
    virtual void Init(bool machineAware);
    /// The entry's data type; None when there is no such entry.
    virtual ValueDataType getValueDataType(const std::string& key);

    /// True when the machine has a subspindle.
    bool isSubspindleAvailable() const { return subspindleAvailable; }
    /// True when the machine has a Y axis.
    bool isYaxAvailable() const { return yAxisAvailable; }
    /// The machine channel the operation runs on.
    int getChannel() const { return channel; }
    /// The number of lines of the parameter section.
    int getLineCount() const { return lineCount; }
    /// The kind whose parameters the section holds.
    MillDrillOperationType getOperationType() const { return operationType; }
    /// The name of the kind whose parameters the section holds.
    const std::string& getOperationTypeName() const { return operationTypeName; }

    /// The lines writeToVDM writes: the kind's name, then the value lines. Throws
    /// std::length_error when Init has not given the section its lines.
    std::vector<std::string> composeLines() const;
    /// Reads the section's lines, as readFromVDM reads them from the store: the kind's name,
    /// then the value lines; entries beyond the lines keep their values. Nothing when `lines`
    /// is empty.
    void readFromLines(const std::vector<std::string>& lines);

  protected:
    /// GOH_0 .. GOH_5 as bits 15 to 20 of option word `number`.
    void addGohParams(int number);

    MillDrillOperationType operationType;
    std::string operationTypeName;
    int lineCount = 0;
    bool subspindleAvailable = false;
    bool yAxisAvailable = false;
    int channel = 0;

  private:
    void readRecord(MillTurnVdm& vdm, int number);
};

}  // namespace VelkApi
