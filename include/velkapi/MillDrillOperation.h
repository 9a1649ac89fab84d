/// \file
/// A milling or drilling operation of a record store: the library's main class. Construction
/// finds the operation's kind and builds its sections; readFromVDM reads them all, the caller
/// edits them through getSection(...) and the dictionary accessors, and writeToVDM writes them
/// all back (inserting the operation first when it is new, mode 1).
#pragma once

#include <string>

#include <velkapi/ActionSection.h>
#include <velkapi/GeometrySection.h>
#include <velkapi/HeaderSection.h>
#include <velkapi/MessageSection.h>
#include <velkapi/OperationBase.h>
#include <velkapi/ParameterSection.h>
#include <velkapi/ToolSection.h>

namespace VelkApi {

/// A milling or drilling operation of a store, with its header, message, tool, parameter, geometry
/// and action sections.
class VELKAPI_EXPORT MillDrillOperation : public OperationBase {
  public:
    /// The kind is read from the store.
    MillDrillOperation(int vdmname, int opnr);
    /// The kind is given; the store is not consulted for it.
    MillDrillOperation(MillDrillOperationType ot, int vdmname, int opnr);
    /// An operation of a kind only, outside any store and any running host.
    explicit MillDrillOperation(MillDrillOperationType ot);
    /// A copy of another MillDrillOperation.
    MillDrillOperation(const MillDrillOperation&) = default;
    /// Becomes a copy of another MillDrillOperation.
    MillDrillOperation& operator=(const MillDrillOperation&) = default;
    ~MillDrillOperation() override;

    /// Writes every section of the operation back into its store.
    void writeToVDM() override;
    /// Reads every section of the operation from its store.
    void readFromVDM() override;
    /// The machine cycle of a drilling, pocket-cycle or threading operation ("g83_retract",
    /// "rectanglefin", "insidethread", ...); "" for other kinds.
    std::string getCycle() override;

    /// The kind as found in the store (REDRAW when it cannot be read).
    static MillDrillOperationType GetOperationType(int vdmName, int nr);

    /// The operation's header section.
    HeaderSection* getHeaderSection() const { return header; }
    /// The operation's message section: its description.
    MessageSection* getMessageSection() const { return message; }
    /// The operation's machining parameters.
    ParameterSection* getParameterSection() const { return parameter; }
    /// The drawing objects the operation machines.
    GeometrySection* getGeometrySection() const { return geometry; }
    /// 1: the actions before the operation, 2: those after it; null for any other number.
    ActionSection* getActionSection(int n) const;
    /// A MillToolSection, or a TurnToolSection with turning-driven tools; null for an unknown
    /// kind.
    ToolSection* getToolSection() const { return tool; }

  protected:
    ParameterSection* createParameterSection(const MillDrillOperationType& kind);
    GeometrySection* createGeometrySection();

    /// The sections setup made, also held in `sections` under their names.
    HeaderSection* header = nullptr;
    ParameterSection* parameter = nullptr;
    MessageSection* message = nullptr;
    GeometrySection* geometry = nullptr;
    ActionSection* preActions = nullptr;
    ActionSection* postActions = nullptr;
    ToolSection* tool = nullptr;

  private:
    void setup();
    /// Makes the action section of list 1 or 2 unless it exists.
    void createActionSection(int n);
    /// The tool section of the operation's kind and tool setting; null for an unknown kind.
    std::shared_ptr<ToolSection> createToolSection();
    bool hasStoredSections() const;
};

}  // namespace VelkApi
