// The library finds the host functions by name in the host program, so they must be in the
// program's export table, not just linked in.
#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include "ExportNames.h"

extern "C" int VelkMacroVdmOpen(int vdm, int mode);

namespace offlinehost {
namespace {

void* programExport(const std::string& name) {
#ifdef _WIN32
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(nullptr), name.c_str()));
#else
    void* program = dlopen(nullptr, RTLD_NOW);
    void* address = dlsym(program, name.c_str());
    dlclose(program);
    return address;
#endif
}

TEST(ExportLookupTest, TheProgramExportsEveryHostFunctionByName) {
    for (const std::string& name : kExportNames) {
        EXPECT_NE(programExport(name), nullptr) << name;
    }
}

TEST(ExportLookupTest, TheExportFoundByNameIsTheOfflineHostsFunction) {
    EXPECT_EQ(programExport("VelkMacroVdmOpen"), reinterpret_cast<void*>(&VelkMacroVdmOpen));
}

}  // namespace
}  // namespace offlinehost
