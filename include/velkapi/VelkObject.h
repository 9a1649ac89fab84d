/// \file
/// A reference to one piece of the host's drawing that an operation machines: a point by its
/// coordinates, a figure (a named contour, or one attribute instance of it) or a non-CAD object
/// by its number. It keeps the text that names the object and the host's object number found
/// for it (segNo, -1 when the host has none), and converts between the two.
///
/// Text forms, as the geometry section stores them:
///   point           "X<x> Y<y> Z<z>", numbers as "%f" without trailing zeros: X10 Y20.5 Z0
///   figure          the figure's name; an instance other than 0 adds 200 blanks, "#ATTRIB#",
///                   "= " and the attribute number
///   non-CAD object  "G<number>": G12
/// A text is read as a non-CAD object first, then as a point (all three axes given), and
/// otherwise as a figure. "#ATTRIB#" is found without regard to case, the character just before
/// it is dropped from the name, and blanks before the "=" are skipped.
///
/// No constructor and no toString lets an exception out: each logs its own text and keeps the
/// fields set so far.
#pragma once

#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

/// The host's object types this reference converts; other values are carried as they are.
enum class VelkObjectType : int {
    Point = 1,
    Figure = 20,
    NonCadObject = 29,
};

/// The role of an object in its geometry section.
enum class GeometrySectionType : int {
    OutlineFigure = 0,
    IslandFigure = 1,
    FacemillIslandFigure = 2,  // an island of a face milling operation
    OutlineXzProfile = 3,
    IslandXzProfile = 4,
};

/// A reference to one piece of the host's drawing that an operation machines.
class VELKAPI_EXPORT VelkObject {
  public:
    /// A figure without name or host object, attribute -1, role FacemillIslandFigure.
    VelkObject();
    /// The point (x, y, z), resolved through the host's drawing.
    VelkObject(double x, double y, double z, GeometrySectionType sectiontype);
    /// An object given by name: a point text, a figure name with its attribute (0: the whole
    /// figure), or "G<number>" for a non-CAD object; resolved by its type.
    VelkObject(const std::string& name, int attr, VelkObjectType type,
               GeometrySectionType sectiontype);
    /// Any of the three text forms.
    VelkObject(const std::string& str, GeometrySectionType sectiontype);
    /// A copy of another VelkObject.
    VelkObject(const VelkObject&) = default;
    /// Becomes a copy of another VelkObject.
    VelkObject& operator=(const VelkObject&) = default;

    /// The object's type: point, figure or non-CAD object.
    VelkObjectType getType() const { return type; }
    /// The text that names the object.
    std::string getName() const { return name; }
    /// A figure's instance (0: the whole figure).
    int getAttribNo() const { return attribNo; }
    /// The host's object number found for it; -1 when the host has none.
    int getSegNo() const { return segNo; }
    /// The object's role in its geometry section.
    GeometrySectionType getSectiontype() const { return sectiontype; }

    /// A point's coordinates from its name; true when they were read. Any other object sets all
    /// three to 0 and gives false.
    bool getPoint(double& x, double& y, double& z) const;

    /// The object's text, as the host names the object now when it has one. The text is kept in
    /// one buffer shared by every object: a deleted host object, or a type without a text form,
    /// gives the text the previous call produced.
    std::string toString() const;

  private:
    void resolve();
    void parse(const std::string& str);
    bool parseNonCadObject(const std::string& str);
    bool parsePoint(const std::string& str);
    void parseFigure(const std::string& str);

    VelkObjectType type = VelkObjectType::Figure;
    std::string name;
    int attribNo = -1;
    int segNo = -1;
    GeometrySectionType sectiontype = GeometrySectionType::FacemillIslandFigure;
};

}  // namespace VelkApi
