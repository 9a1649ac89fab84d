/// \file
/// The version of the library that is loaded.
#pragma once

#include <velkapi/Export.h>

namespace VelkApi {

/// The version of the VelkApi library loaded at run time, "major.minor.patch". It can differ from
/// the version of the headers a program was built with when another library is installed since.
VELKAPI_EXPORT const char* libraryVersion();

}  // namespace VelkApi
