// A small drawing for the geometry tests: two figures with their objects, points, a non-CAD
// object and objects the library does not convert.
#pragma once

#include <velkhost/OfflineHost.h>

#include <array>
#include <string>

namespace geometrytest {

inline velkhost::CadObject cadObject(int number, int type, int name, int attribute,
                                     std::array<double, 3> start = {}, int flags = 1) {
    velkhost::CadObject object;
    object.number = number;
    object.type = type;
    object.name = name;
    object.attribute = attribute;
    object.start = start;
    object.flags = flags;
    return object;
}

// Figures 1 "CONTOUR1" (object 10, instance 3 object 11) and 2 "Contour_A" (object 12); the
// point X1.5 Y0 Z-2 (object 20); non-CAD object 12 (object 30); a line, type 2 (object 50).
inline void drawSmallDrawing(velkhost::OfflineHost& host) {
    host.setFigure({1, "CONTOUR1"});
    host.setFigure({2, "Contour_A"});
    host.setCadObject(cadObject(10, velkhost::kFigureObject, 1, 0));
    host.setCadObject(cadObject(11, velkhost::kFigureObject, 1, 3));
    host.setCadObject(cadObject(12, velkhost::kFigureObject, 2, 0));
    host.setCadObject(cadObject(20, velkhost::kPointObject, 0, 0, {1.5, 0.0, -2.0}));
    host.setCadObject(cadObject(30, velkhost::kNonCadObject, 12, 0));
    host.setCadObject(cadObject(50, 2, 0, 0, {100.0, 100.0, 0.0}));
}

// A figure name followed by the attribute marker as objects write it.
inline std::string withAttribute(const std::string& name, int attribute) {
    return name + std::string(200, ' ') + "#ATTRIB#= " + std::to_string(attribute);
}

}  // namespace geometrytest
