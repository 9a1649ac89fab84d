// The C functions of the machining-parameter library, as function pointer types. The library
// keeps machining-strategy settings in objects it creates; `handle` is one of them. Every setting
// has a setter "MwMachParamSet<Name>" and a getter "MwMachParamGet<Name>"; three of them hold
// ints (NumberOfSlices4DepthStep, DepthStepMode, CurMachType), the others doubles. Loading and
// saving a settings file give non-zero when done; their second argument is always 0.
#pragma once

extern "C" {

using MwGeoLibCreateFn = void* (*)();
using MwGeoLibDeleteFn = void (*)(void* handle);
using MwGeoLibSerializeFn = int (*)(void* handle, int flags, const char* path);
using MwGeoLibDeserializeFn = int (*)(void* handle, int flags, const char* path);

using MwMachParamSetDoubleFn = void (*)(void* handle, double value);
using MwMachParamGetDoubleFn = double (*)(void* handle);
using MwMachParamSetIntFn = void (*)(void* handle, int value);
using MwMachParamGetIntFn = int (*)(void* handle);
}
