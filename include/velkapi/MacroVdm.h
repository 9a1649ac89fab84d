// A handle on one of the host's numbered record stores ("VDMs"). Every failure is shown in a
// message box captioned "VelkApi::MacroVdm" whose text is "<store number>: <message>", and the
// operation returns false; nothing is thrown.
#pragma once

#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

class VELKAPI_EXPORT MacroVdm {
  public:
    explicit MacroVdm(int vdmName);
    // Closes the store when it is still open.
    virtual ~MacroVdm();
    MacroVdm(const MacroVdm&) = default;
    MacroVdm& operator=(const MacroVdm&) = default;

    // Opens an existing store that nobody else holds open.
    bool Open();
    // Opens the store when it exists; never creates one (false, silently, when it is missing).
    bool Create();
    bool Close();

    bool DeleteItems(int n);
    // The line at the current position; `line` is untouched when the store is not open.
    bool SingleGet(std::string& line);
    bool SingleAdd(const char* line);
    bool SingleReplace(const std::string& line);
    bool SeekFromStart(int pos);
    bool SingleSeek(int n);

    bool isOpen() const { return handle != 0; }
    int getHandle() const { return handle; }
    int getVdmName() const { return vdmName; }

  protected:
    // Shows "<store number>: <message>" under `caption`.
    void report(const char* caption, const std::string& message) const;
    // True when open; otherwise reports `message` under the MacroVdm caption.
    bool requireOpen(const char* message) const;

    int handle = 0;
    int vdmName;
    char buffer[5000];
};

}  // namespace VelkApi
