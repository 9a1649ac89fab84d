// The post-processor definition of the machine the host is set up for: an INI file that the host
// names in its environment value "ppdefini" (relative names lie in the folder of "-d"). The
// parameter catalogue asks it whether there is a subspindle and whether the current channel has
// a Y axis before it declares the machine-dependent options.
//
// Keys, all in section [COMMON] unless said otherwise:
//   MACHINE_NAME, SWISS_TYPE_LATHE, NR_OF_CHANNEL (else the host's "NrOfChannels"; 1..10),
//   NR_SPINDEL_SPUR (1..50, else 1), SUBSPINDLE_ON_TURRET, PP_GEN_Version, Tornelle,
//   NR_OF_LUN with LUN<i>_ROTAXIS_NAME_1/_2 and the shared lengths LUN_MAX_DIAM, LUN_ROLL_DIAM,
//   LUN_ROLL_DIST, LUN_X0_DIST; [B<n>] Rapid (B axis), [Y<n>] Rapid and [CHANNEL_<n>] YAXIS_EXIST
//   (Y axis), n being the 1-based channel number.
// The host environment gives mainSpindleMoveable, SubSpindleAvailable, TailStockAvailable,
// LunAvailable, TrailOnAvailable and MillingAvailable ("1" sets the flag).
//
// Flags are only ever set by reading, never cleared (Tornelle excepted). A file that cannot be
// read is reported once, in a message box, and every value then takes its default.
#pragma once

#include <string>
#include <vector>

namespace VelkApi {

// One steady rest of the machine.
struct SteadyRest {
    double x0Distance = 0.0;
    double maxDiameter = 0.0;
    double rollDiameter = 0.0;
    double rollDistance = 0.0;
    std::string rotaryAxisName1;
    std::string rotaryAxisName2;
};

class PpDefIni {
  public:
    PpDefIni() = default;
    virtual ~PpDefIni();
    PpDefIni(const PpDefIni&) = default;
    PpDefIni& operator=(const PpDefIni&) = default;

    // Finds the file; 0 when it is readable, else -1 after the "File can not open for read" box.
    int locate();
    // The whole definition: generator version, the common block, Tornelle, the steady rests.
    int read();
    // Machine name and swiss flag on every call; the rest of the common block only once.
    void readCommon();
    bool isSubspindleAvailable();
    // `channelIndex` is 0-based, as the host's "i_current_channel".
    bool isYaxAvailable(int channelIndex);
    // `channel` is 1-based.
    bool hasBAxis(int channel);

    const std::string& getPath() const { return path; }
    const std::string& getMachineName() const { return machineName; }
    int getGeneratorVersion() const { return generatorVersion; }
    bool isCommonBlockRead() const { return commonBlockRead; }
    bool isSwissTypeLathe() const { return swissTypeLathe; }
    int getChannelCount() const { return channelCount; }
    int getSpindleTrackCount() const { return spindleTrackCount; }
    bool isMainSpindleMoveable() const { return mainSpindleMoveable; }
    bool hasBAxisInSomeChannel() const { return bAxis; }
    bool isTailStockAvailable() const { return tailStockAvailable; }
    bool isTrailOnAvailable() const { return trailOnAvailable; }
    bool isSteadyRestAvailable() const { return steadyRestAvailable; }
    bool isMillingAvailable() const { return millingAvailable; }
    bool isSubspindleOnTurret() const { return subspindleOnTurret; }
    bool isTornelle() const { return tornelle; }
    const std::vector<SteadyRest>& getSteadyRests() const { return steadyRests; }

  private:
    // Locates the file the first time any question is asked.
    void ensureLocated();
    // The value of `key` in `section`, or `fallback`; as long as the profile buffer allows.
    std::string value(const std::string& section, const std::string& key,
                      const std::string& fallback);
    int intValue(const std::string& section, const std::string& key, const std::string& fallback);
    // A length; ',' is read as the decimal point.
    double lengthValue(const std::string& key);

    std::string path;
    std::string machineName;
    int generatorVersion = -1;
    bool commonBlockRead = false;
    bool swissTypeLathe = false;
    int channelCount = 1;
    int spindleTrackCount = 1;
    bool mainSpindleMoveable = false;
    bool subspindleAvailable = false;
    bool bAxis = false;
    bool tailStockAvailable = false;
    bool trailOnAvailable = false;
    bool steadyRestAvailable = false;
    bool millingAvailable = false;
    bool subspindleOnTurret = false;
    std::vector<SteadyRest> steadyRests;
    bool tornelle = false;
};

}  // namespace VelkApi
