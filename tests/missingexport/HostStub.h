// Export marker for the few host functions a stub host program defines itself.
#pragma once

#ifdef _WIN32
#define STUB_EXPORT extern "C" __declspec(dllexport)
#else
#define STUB_EXPORT extern "C" __attribute__((visibility("default")))
#endif
