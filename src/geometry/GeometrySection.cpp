#include <velkapi/GeometrySection.h>

#include <velkapi/LogFile.h>
#include <velkapi/OperationBase.h>

#include <cstdio>
#include <memory>

#include "host/StoreSession.h"
#include "model/SectionEntries.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

using detail::guarded;
using Kind = MillDrillOperationType;

namespace {

constexpr const char* kAddObjectText = "Error in GeometrySection::addVelkObjectParameter()   ";

// Editors keep their macro's lines as they are.
bool isMacroKind(Kind kind) {
    return kind == Kind::MEDITOR || kind == Kind::UEDITOR_MAX;
}

// Plain object lists, without counters in the parameter section.
bool isPlainListKind(Kind kind) {
    return kind == Kind::STD3DGEO || kind == Kind::RSURFING;
}

// The number with at least four digits: 7 gives 0007, 12345 stays 12345.
std::string paddedNumber(int nr) {
    char text[16];
    std::snprintf(text, sizeof text, "%04d", nr);
    return text;
}

struct Counters {
    int outlineFigures = 0;
    int islandsFigures = 0;
    int outlineXzProfile = 0;
    int islandXzProfile = 0;
};

Counters readCounters(const SectionDictionary* parameters) {
    Counters counters;
    if (parameters) {
        counters.islandXzProfile = parameters->getInt("i_xz_isle");
        counters.outlineXzProfile = parameters->getInt("i_xz_fig");
        counters.islandsFigures = parameters->getInt("i_nr_of_isle");
        counters.outlineFigures = parameters->getInt("i_nr_of_figs");
    }
    return counters;
}

void writeCounters(SectionDictionary* parameters, const GeometrySectionSettings& settings) {
    if (!parameters) {
        return;
    }
    parameters->setInt("i_nr_of_figs", settings.getOutlineFigures());
    parameters->setInt("i_nr_of_isle", settings.getIslandsFigures());
    parameters->setInt("i_xz_fig", settings.existsOutlineXzProfile() ? 1 : 0);
    parameters->setInt("i_xz_isle", settings.existsIslandXzProfile() ? 1 : 0);
}

SectionDictionary* parameterSection(const OperationBase& op) {
    return op.getSection(SectionType::Parameter, 0);
}

}  // namespace

GeometrySection::GeometrySection(int sectionnr) : SectionDictionary(sectionnr) {}

GeometrySection::~GeometrySection() = default;

void GeometrySection::addMacroLine(int nr, const std::string& line) {
    guarded("Error in GeometrySection::addVelkObjectParameter() ", [&] {
        const std::string key = paddedNumber(nr);
        auto value = std::make_unique<StringValue>(line);
        auto defaultValue = std::make_unique<StringValue>(line);
        addParameter(nr, key, value.release(), defaultValue.release(), ValueDataType::String,
                     false);
    });
}

void GeometrySection::addVelkObjectParameter(int nr, const VelkObject& obj) {
    guarded(kAddObjectText, [&] {
        const VelkObject fallback(obj.getName(), 1, VelkObjectType::Figure,
                                  GeometrySectionType::FacemillIslandFigure);
        const std::string key = paddedNumber(nr) + "(" + obj.getName() + ")";
        detail::SectionEntries::addObject(*this, nr, key, obj, fallback);
    });
}

void GeometrySection::addVelkObjectParameter(int nr, const std::string& str,
                                             GeometrySectionType sectiontype) {
    guarded(kAddObjectText, [&] { addVelkObjectParameter(nr, VelkObject(str, sectiontype)); });
}

void GeometrySection::setVelkObject(const std::string& key, const VelkObject& obj) {
    const auto describe = [](const char* reason) {
        return std::string("Error in GeometrySection::setVelkObject() => ") + reason;
    };
    guarded(describe, [&] {
        if (dataTypeOf(key) == ValueDataType::VelkObject) {
            setValue(key, &obj);
        }
    });
}

VelkObject& GeometrySection::getVelkObject(const std::string& key, VelkObject& obj) {
    guarded("Error in GeometrySection::getVelkObjectk()  ", [&] {
        if (dataTypeOf(key) == ValueDataType::VelkObject) {
            getValue(key, &obj);
        }
    });
    return obj;
}

void GeometrySection::readFromVDM(OperationBase* op) {
    guarded("Error in GeometrySection::readFromVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        MillTurnVdm& vdm = *op->getVDM();
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber()) ||
            vdm.getSectionLineCount(sectionNr) <= 0) {
            return;
        }
        std::vector<std::string> lines;
        vdm.ReadSection(sectionNr, lines);  // a failing read keeps the lines read before it
        const Kind kind = op->getOperationType();
        if (isMacroKind(kind)) {
            for (std::size_t i = 0; i < lines.size(); ++i) {
                addMacroLine(static_cast<int>(i), lines[i]);
            }
        } else if (isPlainListKind(kind)) {
            for (std::size_t i = 0; i < lines.size(); ++i) {
                addVelkObjectParameter(static_cast<int>(i), lines[i],
                                       GeometrySectionType::OutlineFigure);
            }
        } else {
            readObjects(*op, lines);
        }
    });
}

// The objects of a figure kind, role after role, as many as the counters give and as the
// section has lines.
void GeometrySection::readObjects(OperationBase& op, const std::vector<std::string>& lines) {
    const Counters counters = readCounters(parameterSection(op));
    const GeometrySectionType islandRole = op.getOperationType() == Kind::FACEMILL
                                               ? GeometrySectionType::FacemillIslandFigure
                                               : GeometrySectionType::IslandFigure;
    std::size_t next = 0;
    const auto take = [&](int count, GeometrySectionType role) {
        for (int i = 0; i < count && next < lines.size(); ++i, ++next) {
            if (role == islandRole) {
                LogFile::instance().trace("IslandsFigures " + lines[next], false);
            }
            addVelkObjectParameter(static_cast<int>(next), lines[next], role);
        }
    };
    take(counters.outlineFigures, GeometrySectionType::OutlineFigure);
    take(counters.islandsFigures, islandRole);
    take(counters.outlineXzProfile == 1 ? 1 : 0, GeometrySectionType::OutlineXzProfile);
    take(counters.islandXzProfile == 1 ? 1 : 0, GeometrySectionType::IslandXzProfile);
}

void GeometrySection::writeToVDM(OperationBase* op) {
    guarded("Error in GeometrySection::writeToVDM()", [&] {
        if (!op || !op->getVDM()) {
            return;
        }
        MillTurnVdm& vdm = *op->getVDM();
        GeometrySectionSettings settings;
        const std::vector<std::string> lines = composeLines(op->getOperationType(), &settings);
        host::StoreSession session(vdm);
        if (!session || !vdm.LoadOperation(op->getNumber()) ||
            !vdm.WriteSection(sectionNr, lines)) {
            return;
        }
        if (!isMacroKind(op->getOperationType()) && !isPlainListKind(op->getOperationType())) {
            writeCounters(parameterSection(*op), settings);
        }
    });
}

std::vector<std::string> GeometrySection::composeLines(MillDrillOperationType kind,
                                                       GeometrySectionSettings* roles) const {
    std::vector<std::string> lines;
    if (isMacroKind(kind)) {
        for (const detail::EntryRef& entry : detail::SectionEntries::byName(*this)) {
            lines.push_back(entry.getValueAsString());
        }
        return lines;
    }
    for (const detail::EntryRef& entry : detail::SectionEntries::byNumber(*this)) {
        VelkObject object;
        if (entry->getValueDataType() == ValueDataType::VelkObject && entry->getValue(&object)) {
            if (roles != nullptr) {
                roles->add(object.getSectiontype());
            }
            lines.push_back(object.toString());
        }
    }
    return lines;
}

}  // namespace VelkApi
