// One numbered operation of one record store, with its sections kept by name. Sections reach
// the store through getVDM() and the operation number through getNumber(). The store is opened
// only for the span of one call. A copy shares store and sections with its source; destroying
// both is safe.
#pragma once

#include <map>
#include <memory>
#include <string>

#include <velkapi/MillDrillOperationType.h>
#include <velkapi/MillTurnVdm.h>
#include <velkapi/SectionDictionary.h>

namespace VelkApi {

// The key by which an operation is asked for a section (not the section's number in the store).
enum class SectionType : int {
    Header = -1,
    ToolData = 0,
    Message = 1,
    Parameter = 2,
    Geometry = 4,
    Additional = 5,
};

class VELKAPI_EXPORT OperationBase {
  public:
    // Asks the host for "TURNDRIVENTOOLS"; a text that is not a number throws
    // std::invalid_argument "invalid stoi argument" (or std::out_of_range).
    OperationBase(int vdmname, int opnr);
    // No store and no host call.
    OperationBase();
    OperationBase(const OperationBase&) = default;
    OperationBase& operator=(const OperationBase&) = default;
    virtual ~OperationBase();

    virtual void writeToVDM() = 0;
    virtual void readFromVDM() = 0;
    virtual int getVdmname() const;
    virtual int getNumber() const;
    virtual void setMode(int newMode);
    virtual int getMode() const;
    virtual void setType(int newType);
    virtual int getType() const;
    virtual void setActive(bool isActive);
    virtual bool getActive() const;
    virtual void setOperationType(MillDrillOperationType ot);
    virtual MillDrillOperationType getOperationType() const;
    virtual std::string getCycle();

    // "Header", "ToolData", "Message", "Parameter", "Geometry", "Additional_<n>"; "" otherwise.
    static std::string SectionTypeToString(SectionType t, int n);
    bool existsSection(SectionType t, int n) const;
    SectionDictionary* getSection(SectionType t, int n) const;
    MillTurnVdm* getVDM() const;
    bool existsOperation(int nr);
    int operationCount();

    bool isNew() const { return mode == 1; }
    bool isTurn() const { return turnDrivenTools == 2; }
    bool isVelkActive() const { return velkActive; }

  protected:
    using Sections = std::map<std::string, std::shared_ptr<SectionDictionary>>;

    // Enters `section` under `name` unless the name is taken; the section gets this operation
    // as its owner.
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
