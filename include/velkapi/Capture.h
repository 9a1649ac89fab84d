/// \file
/// Capture: a session in the CAM application written as a project file of the offline host, so
/// that the same add-on code runs offline against exactly what it saw in the application.
#pragma once

#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

/// Records what the host answers while it runs: every store the session opens (whole, as it was
/// at its first opening), every environment value and global the session reads, and every
/// answer about the drawing. The file is written when the capture stops or the library is
/// unloaded; loaded with the environment variable VELKAPI_CAPTURE naming a file, the library
/// captures from the start. Capture never changes what the session does: a file that cannot be
/// written costs one record in the error log.
class VELKAPI_EXPORT Capture {
  public:
    /// Starts capturing into `path`. A capture already running is written first.
    static void start(const std::string& path);
    /// Writes the capture and stops it; false when none runs or the file cannot be written.
    static bool stop();
    /// True while a capture runs.
    static bool running();
};

}  // namespace VelkApi
