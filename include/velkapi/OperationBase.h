/// \file
/// One numbered operation of one record store, with its sections kept by name. Sections reach
/// the store through getVDM() and the operation number through getNumber(). The store is opened
/// only for the span of one call. A copy shares store and sections with its source; destroying
/// both is safe.
#pragma once

#include <map>
#include <memory>
#include <string>

#include <velkapi/MillDrillOperationType.h>
#include <velkapi/MillTurnVdm.h>
#include <velkapi/SectionDictionary.h>

namespace VelkApi {

/// The key by which an operation is asked for a section (not the section's number in the store).
enum class SectionType : int {
    Header = -1,
    ToolData = 0,
    Message = 1,
    Parameter = 2,
    Geometry = 4,
    Additional = 5,
};

/// The base of every operation of a store: its number, mode, kind and sections.
class VELKAPI_EXPORT OperationBase {
  public:
    /// Asks the host for "TURNDRIVENTOOLS"; a text that is not a number throws
    /// std::invalid_argument "invalid stoi argument" (or std::out_of_range).
    OperationBase(int vdmname, int opnr);
    /// No store and no host call.
    OperationBase();
    /// A copy of another OperationBase.
    OperationBase(const OperationBase&) = default;
    /// Becomes a copy of another OperationBase.
    OperationBase& operator=(const OperationBase&) = default;
    virtual ~OperationBase();

    /// Writes the operation back into its store.
    virtual void writeToVDM() = 0;
    /// Reads the operation from its store.
    virtual void readFromVDM() = 0;
    /// The number of the operation's store.
    virtual int getVdmname() const;
    /// The operation's number in its store.
    virtual int getNumber() const;
    /// Sets the mode: 1 makes the operation a new one, inserted when written.
    virtual void setMode(int newMode);
    /// The mode: 1 for a new operation.
    virtual int getMode() const;
    /// Sets the host's operation number.
    virtual void setType(int newType);
    /// The host's operation number.
    virtual int getType() const;
    /// Sets whether the operation is active.
    virtual void setActive(bool isActive);
    /// True when the operation is active.
    virtual bool getActive() const;
    /// Sets the operation's kind.
    virtual void setOperationType(MillDrillOperationType ot);
    /// The operation's kind.
    virtual MillDrillOperationType getOperationType() const;
    /// The name of the machining cycle of the operation's kind.
    virtual std::string getCycle();

    /// "Header", "ToolData", "Message", "Parameter", "Geometry", "Additional_<n>"; "" otherwise.
    static std::string SectionTypeToString(SectionType t, int n);
    /// True when the operation has the section asked for.
    bool existsSection(SectionType t, int n) const;
    /// The section asked for; null when the operation has none.
    SectionDictionary* getSection(SectionType t, int n) const;
    /// The store the operation lives in.
    MillTurnVdm* getVDM() const;
    /// True when the store has an operation `nr`.
    bool existsOperation(int nr);
    /// The number of operations in the store.
    int operationCount();

    /// True for a new operation (mode 1).
    bool isNew() const { return mode == 1; }
    /// True when the machine has turning-driven tools ("TURNDRIVENTOOLS" 2).
    bool isTurn() const { return turnDrivenTools == 2; }
    /// True for an operation read from a store; false for one built from a kind only.
    bool isVelkActive() const { return velkActive; }

  protected:
    using Sections = std::map<std::string, std::shared_ptr<SectionDictionary>>;

    /// Enters `section` under `name` unless the name is taken; the section gets this operation
    /// as its owner.
    void enterSection(const std::string& name, std::shared_ptr<SectionDictionary> section);

    std::shared_ptr<Sections> sections;
    std::shared_ptr<MillTurnVdm> vdm;
    MillDrillOperationType operationType = MillDrillOperationType::REDRAW;
    int vdmname = 0;
    int number = 0;
    int mode = 0;
    int type = 0;
    bool active = false;
    int turnDrivenTools = 1;
    bool velkActive = false;
};

}  // namespace VelkApi
