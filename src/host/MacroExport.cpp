#include <velkapi/MacroExport.h>

#include <algorithm>
#include <iterator>

#include <velkapi/Value.h>

#include "host/HostExports.h"

namespace VelkApi {

namespace {

int reported(int status, const char* caption, const std::string& name) {
    if (status == 0) {
        host::showError(caption, name);
    }
    return status;
}

}  // namespace

int MacroExport::GetGlobalIntVar(const std::string& name, int& value) {
    int status = 0;
    value = host::ReadGlobalI(name.c_str(), &status);
    return reported(status, "VelkApi::MacroExport::GetGlobalIntVar Failed", name);
}

int MacroExport::GetGlobalDoubleVar(const std::string& name, double& value) {
    int status = 0;
    value = host::ReadGlobalW(name.c_str(), &status);
    // The floating read shares the integer read's caption.
    return reported(status, "VelkApi::MacroExport::GetGlobalIntVar Failed", name);
}

int MacroExport::GetGlobalStrVar(const std::string& name, char* buffer) {
    int status = 0;
    host::ReadGlobalStr(name.c_str(), buffer, &status);
    return reported(status, "VelkApi::MacroExport::GetGlobalStrVar Failed", name);
}

int MacroExport::GetGlobalStrVar(const std::string& name, std::string& value) {
    char buffer[host::kStringBufferSize] = {};
    const int status = GetGlobalStrVar(name, buffer);
    if (status != 0) {
        value.assign(buffer, std::find(buffer, std::end(buffer), '\0'));
    }
    return status;
}

int MacroExport::SetGlobalIntVar(const std::string& name) {
    int status = 0;
    host::WriteGlobalI(name.c_str(), kUnsetInt, &status);
    return reported(status, "VelkApi::MacroExport::SetGlobalIntVar Failed", name);
}

int MacroExport::SetGlobalDoubleVar(const std::string& name, double value) {
    int status = 0;
    host::WriteGlobalW(name.c_str(), value, &status);
    return reported(status, "VelkApi::MacroExport::SetGlobalDoubeleVar Failed", name);
}

}  // namespace VelkApi
