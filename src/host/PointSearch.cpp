#include "host/PointSearch.h"

#include <cmath>

#include "host/HostExports.h"

namespace VelkApi::host {

namespace {

// The record the walk carries to the callback. `z` is kept with the point but never compared.
struct PointSearch {
    int result;
    double x;
    double y;
    double z;
};

constexpr int kAccepted = 0;
constexpr int kRejected = -1;
constexpr int kTakesPart = 1;  // bit 0 of the object's flags

// Hundredths truncated toward zero; compared as doubles, so that coordinates beyond the range
// of an int are told apart without an overflowing conversion.
double hundredths(double coordinate) {
    return std::trunc(coordinate * 100.0);
}

int acceptObjectAtPoint(const int* object, void* /*unused*/, const double* xyz, void* context) {
    auto& search = *static_cast<PointSearch*>(context);
    if ((object[0] & kTakesPart) == 0 || hundredths(xyz[0]) != hundredths(search.x) ||
        hundredths(xyz[1]) != hundredths(search.y)) {
        return kRejected;
    }
    search.result = object[1];
    return kAccepted;
}

}  // namespace

int findPointObject(double x, double y, double z) {
    PointSearch search{-1, x, y, z};
    ProcessCad(&acceptObjectAtPoint, 1, nullptr, nullptr, nullptr, -1, &search);
    return search.result;
}

}  // namespace VelkApi::host
