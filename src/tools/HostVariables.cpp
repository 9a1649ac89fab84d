#include "tools/HostVariables.h"

#include <velkapi/MacroExport.h>

#include "host/HostExports.h"
#include "tools/ToolTable.h"

namespace VelkApi::tools {

std::optional<HostValue> readHostVariable(const std::string& name) {
    switch (kindOf(name)) {
        case 'i': {
            int value = 0;
            return MacroExport::GetGlobalIntVar(name, value) != 0 ? std::optional<HostValue>(value)
                                                                  : std::nullopt;
        }
        case 'w': {
            double value = 0.0;
            return MacroExport::GetGlobalDoubleVar(name, value) != 0
                       ? std::optional<HostValue>(value)
                       : std::nullopt;
        }
        case '$': {
            std::string value;
            return MacroExport::GetGlobalStrVar(name, value) != 0 ? std::optional<HostValue>(value)
                                                                  : std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

void writeHostVariable(const std::string& name, const HostValue& value) {
    int status = 0;
    if (const int* integer = std::get_if<int>(&value)) {
        host::WriteGlobalI(name.c_str(), *integer, &status);
    } else if (const double* real = std::get_if<double>(&value)) {
        host::WriteGlobalW(name.c_str(), *real, &status);
    } else {
        host::WriteGlobalStr(name.c_str(), std::get<std::string>(value).c_str(), &status);
    }
}

void readHostArray(const char* name, int* values, std::size_t count) {
    int status = 0;
    host::ReadGlobalArrayI(name, 1, static_cast<int>(count), values, &status);
}

void readHostArray(const char* name, double* values, std::size_t count) {
    int status = 0;
    host::ReadGlobalArrayW(name, 1, static_cast<int>(count), values, &status);
}

void writeHostArray(const char* name, const int* values, std::size_t count) {
    int status = 0;
    host::WriteGlobalArrayI(name, 1, static_cast<int>(count), values, &status);
}

void writeHostArray(const char* name, const double* values, std::size_t count) {
    int status = 0;
    host::WriteGlobalArrayW(name, 1, static_cast<int>(count), values, &status);
}

}  // namespace VelkApi::tools
