// Finding the drawing object at a point: the host walks its drawing objects (VelkProcessCad)
// and the library's callback accepts the first that takes part and lies at the point's x and y,
// compared in whole hundredths (truncated toward zero). The z coordinate is not compared.
#pragma once

namespace VelkApi::host {

// The host's number of the first matching object, or -1 when none matches.
int findPointObject(double x, double y, double z);

}  // namespace VelkApi::host
