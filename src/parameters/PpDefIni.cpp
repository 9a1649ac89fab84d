#include "parameters/PpDefIni.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

#include "host/HostExports.h"
#include "platform/Platform.h"

namespace VelkApi {

namespace {

// The longest text the profile and path buffers hold (1024 bytes with the closing zero).
constexpr std::size_t kMaxText = 1023;

constexpr const char* kCommon = "COMMON";

std::string clipped(std::string text) {
    if (text.size() > kMaxText) {
        text.resize(kMaxText);
    }
    return text;
}

// C's atoi: leading blanks, sign, digits; 0 when nothing converts. Out-of-range values stop at
// the int's limits.
int atoiOf(const std::string& text) {
    const long value = std::strtol(text.c_str(), nullptr, 10);
    return static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
}

// C's atof; 0.0 when nothing converts.
double atofOf(const std::string& text) {
    return std::strtod(text.c_str(), nullptr);
}

// A host environment flag is set by the value 1.
bool environmentFlag(const char* name) {
    return atoiOf(host::environment(name)) == 1;
}

}  // namespace

PpDefIni::~PpDefIni() = default;

void PpDefIni::ensureLocated() {
    if (path.empty()) {
        locate();
    }
}

std::string PpDefIni::value(const std::string& section, const std::string& key,
                            const std::string& fallback) {
    return clipped(platform::iniValue(path, section, key, fallback));
}

int PpDefIni::intValue(const std::string& section, const std::string& key,
                       const std::string& fallback) {
    return atoiOf(value(section, key, fallback));
}

double PpDefIni::lengthValue(const std::string& key) {
    std::string text = value(kCommon, key, "0");
    std::replace(text.begin(), text.end(), ',', '.');
    return atofOf(text);
}

int PpDefIni::locate() {
    const std::string named = clipped(host::environment("ppdefini"));
    // A relative name lies in the host's data folder.
    path = platform::resolveInFolder(named, host::environment("-d"));
    if (!platform::fileReadable(path)) {
        platform::showMessageBox(nullptr, path, "File can not open for read",
                                 platform::kMbIconExclamation);
        return -1;
    }
    return 0;
}

int PpDefIni::read() {
    ensureLocated();
    generatorVersion = intValue(kCommon, "PP_GEN_Version", "-1");
    readCommon();

    tornelle = false;
    if (intValue(kCommon, "Tornelle", "-1") == 1) {
        tornelle = true;
    }

    steadyRests.clear();
    const int count = intValue(kCommon, "NR_OF_LUN", "0");
    for (int i = 1; i <= count; ++i) {
        const std::string prefix = "LUN" + std::to_string(i);
        SteadyRest rest;
        rest.rotaryAxisName1 = value(kCommon, prefix + "_ROTAXIS_NAME_1", "");
        rest.rotaryAxisName2 = value(kCommon, prefix + "_ROTAXIS_NAME_2", "");
        // The lengths carry no index: every steady rest of a machine has the same ones.
        rest.maxDiameter = lengthValue("LUN_MAX_DIAM");
        rest.rollDiameter = lengthValue("LUN_ROLL_DIAM");
        rest.rollDistance = lengthValue("LUN_ROLL_DIST");
        rest.x0Distance = lengthValue("LUN_X0_DIST");
        steadyRests.push_back(rest);
    }
    return 0;
}

void PpDefIni::readCommon() {
    ensureLocated();
    machineName = value(kCommon, "MACHINE_NAME", "-1");
    if (intValue(kCommon, "SWISS_TYPE_LATHE", "-1") == 1) {
        swissTypeLathe = true;
    }
    if (commonBlockRead) {
        return;
    }

    int channels = intValue(kCommon, "NR_OF_CHANNEL", "-1");
    if (channels == -1) {
        channels = atoiOf(host::environment("NrOfChannels"));
    }
    channelCount = std::clamp(channels, 1, 10);

    const int tracks = intValue(kCommon, "NR_SPINDEL_SPUR", "-1");
    spindleTrackCount = tracks >= 1 && tracks <= 50 ? tracks : 1;

    if (environmentFlag("mainSpindleMoveable")) {
        mainSpindleMoveable = true;
    }
    if (environmentFlag("SubSpindleAvailable")) {
        subspindleAvailable = true;
    }
    for (int channel = 1; channel <= channelCount; ++channel) {
        if (hasBAxis(channel)) {
            bAxis = true;
            break;
        }
    }
    if (environmentFlag("TailStockAvailable")) {
        tailStockAvailable = true;
    }
    if (environmentFlag("LunAvailable")) {
        steadyRestAvailable = true;
    }
    if (environmentFlag("TrailOnAvailable")) {
        trailOnAvailable = true;
    }
    if (environmentFlag("MillingAvailable")) {
        millingAvailable = true;
    }
    if (intValue(kCommon, "SUBSPINDLE_ON_TURRET", "-1") == 1) {
        subspindleOnTurret = true;
    }
    commonBlockRead = true;
}

bool PpDefIni::isSubspindleAvailable() {
    ensureLocated();
    if (commonBlockRead) {
        return subspindleAvailable;
    }
    subspindleAvailable = environmentFlag("SubSpindleAvailable");
    return subspindleAvailable;
}

bool PpDefIni::isYaxAvailable(int channelIndex) {
    ensureLocated();
    // Widened: the host's "not set" marker is the largest int.
    const std::string channel = std::to_string(static_cast<long long>(channelIndex) + 1);
    // The Y axis's rapid entry decides whenever it is there.
    const std::string rapid = value("Y" + channel, "Rapid", "");
    if (!rapid.empty()) {
        return atoiOf(rapid) > 0;
    }
    return intValue("CHANNEL_" + channel, "YAXIS_EXIST", "0") > 0;
}

bool PpDefIni::hasBAxis(int channel) {
    ensureLocated();
    return intValue("B" + std::to_string(channel), "Rapid", "0") > 0;
}

}  // namespace VelkApi
