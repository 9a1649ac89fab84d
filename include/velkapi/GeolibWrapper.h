/// \file
/// The machining-strategy settings of high-speed roughing (heights, depth step or slices,
/// stepover, ramping, link clearances, machine type), held by the machining-parameter library:
/// "MwApi.dll" on Windows, "libMwApi.so" elsewhere, found where the system's loader looks (next to
/// the host program on Windows, the loader's library path elsewhere) and loaded on first use. A
/// wrapper owns one settings object of the library; every operation forwards to one function of
/// the library, and the settings file is in the library's own format.
///
/// Without the library, or for a function it lacks, the call goes to the host's "VelkMissingAPI"
/// instead, which reports the missing function; its result stands for the function's.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <velkapi/Export.h>

namespace VelkApi {

/// The machine type, passed to and from the library unchanged: any 32-bit value is taken.
enum class MachType : std::int32_t {
    Undefined = 0,
    Mill3Axis = 1,  // three linear axes
    Mill4Axis = 2,  // three linear axes and one rotary axis
    Mill5Axis = 3,  // three linear axes and two rotary axes
    MillTurn = 4,   // a turning machine with driven tools
};

/// The roughing-strategy settings of the machining-parameter library: read, change, load and save.
class VELKAPI_EXPORT GeolibWrapper {
  public:
    /// Creates a settings object of the library.
    GeolibWrapper();
    GeolibWrapper(const GeolibWrapper&) = delete;
    /// Shares the other wrapper's settings object (it is not duplicated); a settings object is
    /// deleted when the last wrapper that holds it lets it go.
    GeolibWrapper& operator=(const GeolibWrapper& other);
    ~GeolibWrapper();

    /// Sets the clearance height of links between adaptive roughing passes.
    void setAdaptiveRoughingLinkClearanceHeight(double value);
    /// The clearance height of links between adaptive roughing passes.
    double getAdaptiveRoughingLinkClearanceHeight() const;
    /// Sets the link length threshold factor of adaptive roughing.
    void setAdaptiveRoughingLinkLengthThresholdFactor(double value);
    /// The link length threshold factor of adaptive roughing.
    double getAdaptiveRoughingLinkLengthThresholdFactor() const;
    /// Sets the ramp angle of the infeed, in degrees.
    void setRampAngle(double value);
    /// The ramp angle of the infeed, in degrees.
    double getRampAngle() const;
    /// Sets the ramp length, in percent.
    void setRampLengthPercent(double value);
    /// The ramp length, in percent.
    double getRampLengthPercent() const;
    /// Sets the fixed depth step.
    void setDepthStep(double value);
    /// The fixed depth step.
    double getDepthStep() const;
    /// Sets the number of slices the depth is cut in.
    void setNumberOfSlices4DepthStep(int value);
    /// The number of slices the depth is cut in.
    int getNumberOfSlices4DepthStep() const;
    /// Sets the height the roughing starts at.
    void setStartHeight(double value);
    /// The height the roughing starts at.
    double getStartHeight() const;
    /// Sets the height the roughing ends at.
    void setEndHeight(double value);
    /// The height the roughing ends at.
    double getEndHeight() const;
    /// Sets the largest sideways step between passes.
    void setMaxStepoverDistance(double value);
    /// The largest sideways step between passes.
    double getMaxStepoverDistance() const;
    /// Sets the stock left on the part.
    void setStockRemain(double value);
    /// The stock left on the part.
    double getStockRemain() const;
    /// Sets the machine type the settings are for.
    void setCurMachType(MachType value);
    /// The machine type the settings are for.
    MachType getCurMachType() const;

    /// The infeed stands for the depth step or the number of slices: a negative infeed is a fixed
    /// depth step of its size, zero or more that many slices (the fraction dropped).
    void setInfeed(double value);
    /// Minus the depth step, or the number of slices; 2147483647.0 (not set) when the library's
    /// depth-step mode is neither of the two.
    double getInfeed() const;

    /// Loads the settings from a file, or saves them to one; true when the library reports it
    /// done. A file the library cannot read leaves the settings as they were.
    bool OpenBin(const std::string& path);
    /// Saves the settings to the file `path`; true when the library reports it done.
    bool SaveBin(const std::string& path) const;
    /// Loads the installed standard settings "support/mill/bin/2dhighspeedrough.bin" under the
    /// host's "$_root_dir"; where that file does not exist, the user's
    /// "data/mill/settings/2dhighspeedrough.bin" under its "$_user_data_dir" (the folders end in
    /// their separator; the pieces are joined with the platform's own).
    bool OpenStandardBin();

  private:
    std::shared_ptr<void> handle;
};

}  // namespace VelkApi
