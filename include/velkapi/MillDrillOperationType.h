/// \file
/// The kinds of operation, their names and the host's own operation numbers.
#pragma once

#include <memory>
#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

class MillTurnVdm;

/// Values without a name (0, 15, 21 to 41) are kinds of their own all the same. REDRAW (10) is
/// what is not a machining operation; Unknown (42) is an unrecognised kind name.
enum class MillDrillOperationType : int {
    PROFILE = 1,
    CORNER = 2,
    CHAMFER = 3,
    POCKET = 4,
    FACEMILL = 5,
    RESTMATL = 6,
    DRILLING = 7,
    POCCYCLE = 8,
    ENGRAVE = 9,
    REDRAW = 10,
    THREADING = 11,
    TOOLS = 12,
    MEDITOR = 13,
    MOVING = 14,
    STD3DGEO = 16,
    RSURFING = 17,
    MILL_5AX = 18,
    SLOT = 19,
    UEDITOR_MAX = 20,
    Unknown = 42,
};

/// Upper-cases the text and compares it exactly; "BORING" reads as DRILLING and "THREADMILLING"
/// as THREADING. Anything else gives Unknown (42).
VELKAPI_EXPORT MillDrillOperationType StringToMillDrillOperationType(const std::string& text);
/// The kind's name; "" for kinds without one.
VELKAPI_EXPORT std::string millDrillOperationTypeToString(MillDrillOperationType type);
/// The host's operation number of the kind; -1 for REDRAW and Unknown, 4 outside the table.
VELKAPI_EXPORT int millDrillOperationTypeToVelk(MillDrillOperationType type);

/// The kind of operation `nr` of the store: REDRAW for numbers below 3 and for what cannot be
/// read; else from the header's host number (5 drilling, 15 pocket cycle) or from the first line
/// of the parameter section. Opens the store when needed and leaves it open for the caller.
VELKAPI_EXPORT MillDrillOperationType GetMillDrillOperationType(MillTurnVdm* vdm, int nr);

/// One operation of a store as a list entry: number, kind and description (the first line of its
/// message section).
class VELKAPI_EXPORT MillDrillOperationDecl {
  public:
    /// The operation `nr` of store `vdmName`, read in `mode`.
    MillDrillOperationDecl(int vdmName, int nr, int mode);
    /// A copy of another MillDrillOperationDecl.
    MillDrillOperationDecl(const MillDrillOperationDecl&) = default;
    /// Becomes a copy of another MillDrillOperationDecl.
    MillDrillOperationDecl& operator=(const MillDrillOperationDecl&) = default;
    virtual ~MillDrillOperationDecl();

    /// The store's number.
    int getVdmName() const { return vdmName; }
    /// The operation's number in the store.
    int getNr() const { return nr; }
    /// The mode the operation is read in: 1 for a new operation.
    int getMode() const { return mode; }
    /// The operation's kind.
    MillDrillOperationType getType() const { return type; }
    /// The operation's description.
    const std::string& getDescription() const { return description; }

  private:
    std::shared_ptr<MillTurnVdm> vdm;
    int nr;
    std::string description;
    int vdmName;
    int mode;
    MillDrillOperationType type = MillDrillOperationType::REDRAW;
};

}  // namespace VelkApi
