// The window and message box functions of a stub host program: every box the library shows is
// kept in `stubhost::boxes` as "caption|text". Included by the one source file of each program.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "HostStub.h"

namespace stubhost {

inline std::vector<std::string> boxes;

}  // namespace stubhost

STUB_EXPORT void* VelkGetWnd(int which) {
    return reinterpret_cast<void*>(std::intptr_t{0x100 + which});
}

STUB_EXPORT int MessageBoxA(void*, const char* text, const char* caption, unsigned) {
    stubhost::boxes.push_back(std::string(caption) + "|" + text);
    return 1;
}
