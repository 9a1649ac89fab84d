// The settings object of the stand-in machining-parameter library: every machining-strategy
// setting of one object, and its settings file.
//
// Settings file (text): the line "MwApi settings 1", then one line "<Name> = <value>" per
// setting, in the order of kSettings; numbers are written so that they read back exactly.
// Reading accepts blank lines and lines starting with '#', the settings in any order, and
// leaves a setting the file does not name as it is. A file that cannot be read, a line that is
// not "<Name> = <value>", an unknown or repeated name, or a value that is not a number (a whole
// number for the whole settings) fails the whole read and changes nothing.
#pragma once

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace mwapi {

struct SettingSpec {
    const char* name;
    bool whole;  // an int setting
    double initial;
};

// clang-format off
constexpr SettingSpec kSettings[] = {
    {"StartHeight",                               false, 0.0},
    {"EndHeight",                                 false, 0.0},
    {"DepthStepMode",                             true,  1.0},  // 0: fixed depth step, 1: slices
    {"DepthStep",                                 false, 0.0},
    {"NumberOfSlices4DepthStep",                  true,  1.0},
    {"MaxStepoverDistance",                       false, 0.0},
    {"StockRemain",                               false, 0.0},
    {"RampAngle",                                 false, 0.0},
    {"RampLengthPercent",                         false, 0.0},
    {"AdaptiveRoughingLinkClearanceHeight",       false, 0.0},
    {"AdaptiveRoughingLinkLengthThresholdFactor", false, 0.0},
    {"CurMachType",                               true,  0.0},
};
// clang-format on

constexpr std::size_t kSettingCount = sizeof kSettings / sizeof kSettings[0];

// The index of the setting `name`; throws std::out_of_range for a name that is not one.
std::size_t settingIndex(const std::string& name);

// A settings file that cannot be read or written; the message says which and why.
class SettingsFileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class GeoLib {
  public:
    GeoLib();

    double value(std::size_t index) const { return values[index]; }
    void setValue(std::size_t index, double value) { values[index] = value; }

    // Both throw SettingsFileError; a failed read changes no value, a failed write leaves an
    // existing file as it was.
    void read(const std::string& path);
    void write(const std::string& path) const;

  private:
    std::array<double, kSettingCount> values;
};

}  // namespace mwapi
