/// \file
/// What an operation machines: store section 3. For most kinds it lists geometry objects
/// (VelkObject) in their roles: outline figures, island figures, an outline XZ profile and an
/// island XZ profile, one object text per store line in that order. How many lines each role
/// has is kept in the operation's parameter section ("i_nr_of_figs", "i_nr_of_isle",
/// "i_xz_fig", "i_xz_isle"). Editor kinds (MEDITOR, UEDITOR_MAX) hold their macro's raw lines
/// instead, and STD3DGEO and RSURFING a plain list of objects without those counters.
///
/// Entries: object n is keyed "%04d(<name>)" lower-cased, "0003(contour1)"; macro line n is
/// keyed by n with at least four digits, "0007". Objects are written in the order of their
/// numbers, so a caller numbers them outline figures first, then islands, then the profiles, for
/// them to read back in their roles.
///
/// ENGRAVE, TOOLS and MOVING keep none of those counters among their parameters. Their objects
/// are written to the store, but a read finds no count of figures and reads none of them;
/// writing such an operation after reading it therefore stores an empty geometry section. A
/// caller that edits such an operation adds its objects again before writing it back.
#pragma once

#include <string>
#include <vector>

#include <velkapi/MillDrillOperationType.h>
#include <velkapi/SectionDictionary.h>
#include <velkapi/VelkObject.h>

namespace VelkApi {

class MillTurnVdm;

/// How many objects of each role a geometry section holds.
class VELKAPI_EXPORT GeometrySectionSettings {
  public:
    /// No figures and no profiles.
    GeometrySectionSettings();
    /// How many outline and island figures a kind machines, and whether it has XZ profiles.
    GeometrySectionSettings(int outlineFigures, int islandsFigures, bool outlineXzProfile,
                            bool islandXzProfile);
    /// A copy of another GeometrySectionSettings.
    GeometrySectionSettings(const GeometrySectionSettings&) = default;
    /// Becomes a copy of another GeometrySectionSettings.
    GeometrySectionSettings& operator=(const GeometrySectionSettings&) = default;

    /// Counts one object of that role; roles outside 0..4 change nothing.
    void add(GeometrySectionType t);

    /// The number of outline figures.
    int getOutlineFigures() const { return outlineFigures; }
    /// The number of island figures.
    int getIslandsFigures() const { return islandsFigures; }
    /// True when the kind has an outline XZ profile.
    bool existsOutlineXzProfile() const { return outlineXzProfile; }
    /// True when the kind has an island XZ profile.
    bool existsIslandXzProfile() const { return islandXzProfile; }

  private:
    int outlineFigures = 0;
    int islandsFigures = 0;
    bool outlineXzProfile = false;
    bool islandXzProfile = false;
};

/// The drawing objects an operation machines, each a VelkObject with its role.
class VELKAPI_EXPORT GeometrySection : public SectionDictionary {
  public:
    /// An empty section that is section `sectionnr` of its operation in the store.
    explicit GeometrySection(int sectionnr);
    /// A copy of another GeometrySection.
    GeometrySection(const GeometrySection&) = default;
    /// Becomes a copy of another GeometrySection.
    GeometrySection& operator=(const GeometrySection&) = default;
    ~GeometrySection() override;

    /// Adds macro line `nr` (a text entry) unless its key exists.
    void addMacroLine(int nr, const std::string& line);
    /// Adds object `nr`, a copy of `obj`, unless its key exists. Its default is the figure of the
    /// same name, instance 1, as the host resolves it.
    void addVelkObjectParameter(int nr, const VelkObject& obj);
    /// Adds object `nr` read from any of the object text forms.
    void addVelkObjectParameter(int nr, const std::string& str, GeometrySectionType sectiontype);
    /// Replaces the object of `key` (any case); nothing when the key holds no object.
    void setVelkObject(const std::string& key, const VelkObject& obj);
    /// Copies the object of `key` (any case) into `obj` and returns `obj`, which stays as it was
    /// when the key holds no object.
    VelkObject& getVelkObject(const std::string& key, VelkObject& obj);

    /// Objects, with their roles counted into the parameter section's counters (not for
    /// STD3DGEO and RSURFING), or an editor's macro lines in key order. Entries that are not
    /// objects have no place among an object list's lines and are left out of it.
    void writeToVDM(OperationBase* op) override;
    /// Reads the lines by the operation's kind; for the figure kinds, as many of each role as
    /// the parameter section's counters give, never past the section's lines.
    void readFromVDM(OperationBase* op) override;

    /// The lines writeToVDM writes for an operation of that kind: for the macro kinds each
    /// entry's text in key order, for the others each object's text in number order, whose
    /// roles are counted into `roles` when it is given.
    std::vector<std::string> composeLines(MillDrillOperationType kind,
                                          GeometrySectionSettings* roles = nullptr) const;

  private:
    void readObjects(OperationBase& op, const std::vector<std::string>& lines);
};

}  // namespace VelkApi
