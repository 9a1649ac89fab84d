/// \file
/// A handle on one of the host's numbered record stores ("VDMs"). Every failure is shown in a
/// message box captioned "VelkApi::MacroVdm" whose text is "<store number>: <message>", and the
/// operation returns false; nothing is thrown.
#pragma once

#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

/// A handle on one of the host's numbered record stores: open, read and write its lines.
class VELKAPI_EXPORT MacroVdm {
  public:
    /// A handle on store `vdmName`, not yet open.
    explicit MacroVdm(int vdmName);
    /// Closes the store when it is still open.
    virtual ~MacroVdm();
    /// A handle on the same store, not open. The host's open handle stays with the object that
    /// opened it, which alone uses and closes it, so no copy closes the store twice; a copy that
    /// is to read or write opens the store itself once the original has closed it.
    MacroVdm(const MacroVdm& other);
    /// Closes this handle's store when it is open, then becomes a handle on `other`'s store, not
    /// open, as a copy does.
    MacroVdm& operator=(const MacroVdm& other);

    /// Opens an existing store that nobody else holds open.
    bool Open();
    /// Opens the store when it exists; never creates one (false, silently, when it is missing).
    bool Create();
    /// Closes the store.
    bool Close();

    /// Deletes `n` items at the current position.
    bool DeleteItems(int n);
    /// The line at the current position; `line` is untouched when the store is not open.
    bool SingleGet(std::string& line);
    /// Adds `line` at the current position.
    bool SingleAdd(const char* line);
    /// Replaces the line at the current position with `line`.
    bool SingleReplace(const std::string& line);
    /// Goes to position `pos` (0-based) from the start of the store.
    bool SeekFromStart(int pos);
    /// Moves the current position by `n` lines.
    bool SingleSeek(int n);

    /// True while the store is open.
    bool isOpen() const { return handle != 0; }
    /// The host's handle of the open store; 0 when it is closed.
    int getHandle() const { return handle; }
    /// The store's number.
    int getVdmName() const { return vdmName; }

  protected:
    /// Shows "<store number>: <message>" under `caption`.
    void report(const char* caption, const std::string& message) const;
    /// True when open; otherwise reports `message` under the MacroVdm caption.
    bool requireOpen(const char* message) const;

    int handle = 0;
    int vdmName;
};

}  // namespace VelkApi
