/// \file
/// VELKAPI_EXPORT marks the classes and functions of the public interface. The library is built
/// with hidden symbols, so only what carries this macro leaves the shared library / DLL.
#pragma once

#if defined(VELKAPI_STATIC)
#define VELKAPI_EXPORT
#elif defined(_WIN32)
#if defined(VELKAPI_BUILDING)
#define VELKAPI_EXPORT __declspec(dllexport)
#else
#define VELKAPI_EXPORT __declspec(dllimport)
#endif
#else
#define VELKAPI_EXPORT __attribute__((visibility("default")))
#endif
