/// \file
/// The host's global macro variables. Every operation returns the host's status (non-zero on
/// success); a failed access shows a message box owned by the host's window, with the variable's
/// name as its text, and returns 0.
#pragma once

#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

/// The host's global variables, read and written by name.
class VELKAPI_EXPORT MacroExport {
  public:
    /// `value` receives what the host returned, also when the read failed.
    static int GetGlobalIntVar(const std::string& name, int& value);
    /// Reads the number global `name` into `value`; non-zero when the host has it.
    static int GetGlobalDoubleVar(const std::string& name, double& value);
    /// `buffer` must hold 4096 bytes.
    static int GetGlobalStrVar(const std::string& name, char* buffer);
    /// `value` is left untouched when the read fails.
    static int GetGlobalStrVar(const std::string& name, std::string& value);
    /// Writes the "not set" marker 2147483647: this writer takes no value.
    static int SetGlobalIntVar(const std::string& name);
    /// Sets the number global `name` to `value`; non-zero when the host took it.
    static int SetGlobalDoubleVar(const std::string& name, double value);
};

}  // namespace VelkApi
