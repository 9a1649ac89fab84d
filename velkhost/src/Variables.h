// The environment and the globals as the host's exported functions see them. A status pointer
// may be null; when it is not, it receives 1 for done and 0 for refused.
#pragma once

#include "Project.h"

namespace velkhost::detail {

class Variables {
  public:
    Variables(Environment& environment, Globals& projectGlobals)
        : environmentVariables(environment), globals(projectGlobals) {}

    const char* environment(const char* name) const;

    int readInt(const char* name, int* status) const;
    double readDouble(const char* name, int* status) const;
    void readText(const char* name, char* buffer, int* status) const;
    void writeInt(const char* name, int value, int* status);
    void writeDouble(const char* name, double value, int* status);
    void writeText(const char* name, const char* value, int* status);

    void readIntArray(const char* name, int first, int count, int* values, int* status) const;
    void readDoubleArray(const char* name, int first, int count, double* values, int* status) const;
    void writeIntArray(const char* name, int first, int count, const int* values, int* status);
    void writeDoubleArray(const char* name, int first, int count, const double* values,
                          int* status);

  private:
    GlobalValue* find(const char* name) const;

    Environment& environmentVariables;
    Globals& globals;
};

}  // namespace velkhost::detail
