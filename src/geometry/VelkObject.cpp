#include <velkapi/VelkObject.h>

#include <cctype>
#include <cmath>

#include "host/HostExports.h"
#include "host/PointSearch.h"
#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi {

using detail::guarded;

namespace {

constexpr int kNonCadMode = 3;
constexpr const char* kAttributeMarker = "#ATTRIB#";
constexpr std::size_t kAttributeMarkerLength = 8;
constexpr std::size_t kBlanksBeforeAttribute = 200;

// The host answers 0 for "no object"; a reference keeps -1 for that.
int foundObject(int number) {
    return number == 0 ? -1 : number;
}

// An axis that a text does not give.
double missingAxis() {
    return std::nan("0x12345");
}

std::string pointText(double x, double y, double z) {
    std::string text = "X";
    text::appendShortFixed6(text, x);
    text += " Y";
    text::appendShortFixed6(text, y);
    text += " Z";
    text::appendShortFixed6(text, z);
    return text;
}

std::string figureText(const std::string& figure, int attribute) {
    if (attribute == 0) {
        return figure;
    }
    return figure + std::string(kBlanksBeforeAttribute, ' ') + kAttributeMarker + "= " +
           std::to_string(attribute);
}

std::string nonCadText(int number) {
    return "G" + std::to_string(number);
}

std::size_t findWithoutCase(const std::string& text, const std::string& wanted) {
    const auto lower = [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    };
    for (std::size_t at = 0; at + wanted.size() <= text.size(); ++at) {
        std::size_t i = 0;
        while (i < wanted.size() && lower(text[at + i]) == lower(wanted[i])) {
            ++i;
        }
        if (i == wanted.size()) {
            return at;
        }
    }
    return std::string::npos;
}

int figureObject(int figure, int attribute) {
    return attribute == 0 ? host::GetFigureObject(figure)
                          : host::GetFigureInstance(figure, attribute);
}

// The text buffer every object's toString shares.
std::string& sharedText() {
    static std::string text;
    return text;
}

}  // namespace

VelkObject::VelkObject() = default;

VelkObject::VelkObject(double x, double y, double z, GeometrySectionType role)
    : type(VelkObjectType::Point), sectiontype(role) {
    guarded("Error in VelkObject(double x, double y, double z, GeometrySectionType sectiontype)",
            [&] {
                name = pointText(x, y, z);
                segNo = host::findPointObject(x, y, z);
            });
}

VelkObject::VelkObject(const std::string& objectName, int attr, VelkObjectType objectType,
                       GeometrySectionType role)
    : type(objectType), attribNo(attr), sectiontype(role) {
    guarded(
        "Error in VelkObject(const string & name, int attr, VelkObjectType type, "
        "GeometrySectionType sectiontype)",
        [&] {
            name = objectName;
            resolve();
        });
}

VelkObject::VelkObject(const std::string& str, GeometrySectionType role) : sectiontype(role) {
    guarded("Error in VelkObject(const string& str, GeometrySectionType sectiontype)",
            [&] { parse(str); });
}

void VelkObject::resolve() {
    switch (type) {
        case VelkObjectType::Point: {
            double x = 0.0, y = 0.0, z = 0.0;
            std::size_t pos = 0;
            if (text::readAxisValues(name, pos, x, y, z)) {
                segNo = host::findPointObject(x, y, z);
            }
            break;
        }
        case VelkObjectType::Figure: {
            const int figure = host::GetFigure(name.c_str());
            if (figure >= 0) {
                segNo = figureObject(figure, attribNo);
            }
            break;
        }
        case VelkObjectType::NonCadObject: {
            // The name is "G" and the number.
            int number = -1;
            std::size_t pos = 1;
            text::readInt(name, pos, number, -1);
            if (number >= 0) {
                segNo = host::GetNonCadObject(number, kNonCadMode);
            }
            break;
        }
    }
    segNo = foundObject(segNo);
}

void VelkObject::parse(const std::string& str) {
    type = VelkObjectType::Figure;
    name.clear();
    attribNo = -1;
    if (parseNonCadObject(str) || parsePoint(str)) {
        return;
    }
    parseFigure(str);
}

bool VelkObject::parseNonCadObject(const std::string& str) {
    std::size_t pos = 0;
    text::skipBlanks(str, pos);
    if (pos >= str.size() || str[pos] != 'G') {
        return false;
    }
    ++pos;
    int number = 0;
    if (!text::readIntIfAny(str, pos, number)) {
        return false;
    }
    // A non-CAD object that the host does not have is still one.
    segNo = foundObject(host::GetNonCadObject(number, kNonCadMode));
    type = VelkObjectType::NonCadObject;
    name = nonCadText(number);
    return true;
}

bool VelkObject::parsePoint(const std::string& str) {
    segNo = -1;
    double x = missingAxis(), y = missingAxis(), z = missingAxis();
    std::size_t pos = 0;
    if (!text::readAxisValues(str, pos, x, y, z) || std::isnan(x) || std::isnan(y) ||
        std::isnan(z)) {
        return false;
    }
    segNo = host::findPointObject(x, y, z);
    type = VelkObjectType::Point;
    name = pointText(x, y, z);
    return true;
}

void VelkObject::parseFigure(const std::string& str) {
    name.clear();
    attribNo = 0;
    segNo = -1;
    type = VelkObjectType::Figure;
    int attribute = 0;
    const std::size_t marker = findWithoutCase(str, kAttributeMarker);
    if (marker == std::string::npos) {
        name = str;
    } else {
        // The character just before the marker is not part of the name.
        name = marker == 0 ? str : str.substr(0, marker - 1);
        const std::size_t equals = str.find('=', marker + kAttributeMarkerLength);
        if (equals == std::string::npos) {
            return;
        }
        std::size_t pos = equals + 1;
        if (!text::readIntIfAny(str, pos, attribute)) {
            return;
        }
        attribNo = attribute;
    }
    while (!name.empty() && text::isBlank(name.back())) {
        name.pop_back();
    }
    const int figure = host::GetFigure(name.c_str());
    segNo = foundObject(figureObject(figure, attribute));
}

bool VelkObject::getPoint(double& x, double& y, double& z) const {
    if (type != VelkObjectType::Point) {
        x = y = z = 0.0;
        return false;
    }
    std::size_t pos = 0;
    return text::readAxisValues(name, pos, x, y, z);
}

std::string VelkObject::toString() const {
    return guarded<std::string>("", "Error in VelkObject::toString()", [&] {
        std::string& text = sharedText();
        if (segNo >= 1) {
            if (host::GetObjectDelete(segNo) != 0) {
                return text;
            }
            switch (static_cast<VelkObjectType>(host::GetObjectType(segNo))) {
                case VelkObjectType::Point: {
                    double x = 0.0, y = 0.0, z = 0.0;
                    host::ObjectStart(segNo, &x, &y, &z);
                    text = pointText(x, y, z);
                    break;
                }
                case VelkObjectType::Figure: {
                    const char* figure = host::FigureFindName(host::GetObjectName(segNo));
                    text = figureText(figure ? figure : "", host::GetObjectAttribute(segNo));
                    break;
                }
                case VelkObjectType::NonCadObject:
                    text = nonCadText(host::GetObjectName(segNo));
                    break;
                default:
                    break;
            }
            return text;
        }
        switch (type) {
            case VelkObjectType::Figure:
                text = figureText(name, attribNo);
                break;
            case VelkObjectType::NonCadObject:
                text = name;
                break;
            case VelkObjectType::Point: {
                double x = 0.0, y = 0.0, z = 0.0;
                std::size_t pos = 0;
                text = text::readAxisValues(name, pos, x, y, z) ? pointText(x, y, z) : name;
                break;
            }
        }
        return text;
    });
}

}  // namespace VelkApi
