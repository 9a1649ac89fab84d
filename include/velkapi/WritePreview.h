/// \file
/// What writing an operation back would do to its lines in the store, worked out before anything
/// is written.
///
/// Some records do not survive a read and a write unchanged: the library reads and writes them
/// the way the CAM application's add-ons have always had it, and a record can hold more than
/// that way carries. WritePreview composes, for each section, the lines its writeToVDM would
/// write (with the very code writeToVDM uses), compares them with the lines the store holds,
/// and says per section whether the write changes nothing, changes only the values the caller
/// set, or changes more than that: then it lists each value or line that would be lost or
/// altered, with its cause. It reads the record and writes nothing.
///
/// The causes it detects, in the words of WriteChange::cause:
/// - "MILL_5AX moves its first value line by one field": the first value line of a five-axis
///   operation is numbered from 1, while writing puts the values one after another from the
///   first field, so every value of that line moves one field on each round trip;
/// - "a number keeps six significant digits": a double is written as 1234.57, not 1234.5678;
/// - "the not-set marker of a double is written as 2.14748e+09 and reads back as 2147480000, a
///   set value";
/// - "a text holding a blank reads back cut at the blank": texts are written without quotes;
/// - "this kind does not read its geometry back": its parameters have no figure counters
///   (ENGRAVE, TOOLS, MOVING, MILL_5AX, kind 15), so its geometry lines are not read and the
///   next write leaves them out;
/// - "this kind reads back only its outline figures": drilling, pocket cycles and threading
///   count only "i_nr_of_figs", so islands and XZ profiles are lost;
/// - "the figure counters of the parameters do not count this line": a geometry line beyond
///   what the counters announce;
/// - "the drawing object the line names is written back under another text": a geometry line
///   is read as a reference to a drawing object and written as that object's text;
/// - "nine or more actions come back in another order": actions are written in the order of
///   their numbers as texts, where 10 comes before 2;
/// - "the line lies beyond the lines this kind writes" and "the line holds fields beyond those
///   this kind writes": stored text that no entry reads;
/// - "the value does not read back where it is written": any other value that comes back
///   different.
///
/// What it cannot see: a write the host cuts short (the host decides that while writing), and
/// changes a caller makes to the host's global variables. The parameter section is composed
/// with the figure counters the operation holds; writeToVDM writes the geometry first and sets
/// the counters from the objects it wrote, so after a change of the roles of the geometry's
/// objects, preview again once the geometry is written.
#pragma once

#include <string>
#include <vector>

#include <velkapi/Export.h>

namespace VelkApi {

class OperationBase;

/// How the lines a section would write compare with the lines the store holds.
enum class WriteOutcome {
    Unchanged = 0,  ///< the section would write the very lines the store holds
    AsSet = 1,      ///< the lines change, and every value reads back as the caller holds it
    BeyondSet = 2,  ///< the write would also lose or alter what the caller holds
};

/// One value or line that a write would lose or alter.
struct WriteChange {
    /// The entry's key (lower-cased); empty for a line that no entry accounts for.
    std::string key;
    /// The section line (0-based) where the value or line lies; -1 when unknown.
    int line = -1;
    /// The value as the caller holds it (the store's value unless the caller set it), or the
    /// line as the store holds it. Values are shown as velk shows them: "unset" for the
    /// not-set marker (an empty text and the text "2147483647", which the record holds for it,
    /// included), numbers in their shortest exact form, true or false, texts as they are.
    std::string before;
    /// The value as a read after the write gives it back, or the line as it would be written;
    /// "none" for a line the write would leave out.
    std::string after;
    /// Why, in words a CAM programmer understands (the list in this file's description).
    std::string cause;
};

/// What writing one section would do.
struct SectionWrite {
    /// The section's name in the operation: "Additional_1", "Geometry", "Parameter", ...
    std::string section;
    /// The section's number in the store.
    int number = -1;
    /// What the write would do to the section's lines.
    WriteOutcome outcome = WriteOutcome::Unchanged;
    /// True when the caller holds values other than those the store's lines give.
    bool edited = false;
    /// The section's lines in the store; none when the store has no such section.
    std::vector<std::string> storedLines;
    /// The lines the section's writeToVDM would write; none for an action section without
    /// actions, which the write removes.
    std::vector<std::string> writtenLines;
    /// Every value or line lost or altered; empty unless the outcome is BeyondSet.
    std::vector<WriteChange> changes;
};

/// Works out what writing an operation back would do, without writing.
class VELKAPI_EXPORT WritePreview {
  public:
    /// Every section a MillDrillOperation's writeToVDM writes, in the order it writes them
    /// ("Additional_1", "Additional_2", "Geometry", "Message", "Parameter", "ToolData"; the
    /// header has no lines of its own), or the "ToolData" section of a ToolOperation (the tool
    /// record). The operation must have been read (readFromVDM); it may have been edited since.
    /// A new operation (mode 1) holds nothing in the store yet: every section it writes is
    /// AsSet. Nothing for an operation of kind 10 or 42, or outside a store. Reads the record
    /// through the host; writes nothing and leaves the operation's values as they are. A failure
    /// is logged as "Error in WritePreview::sections()" and gives no sections.
    static std::vector<SectionWrite> sections(OperationBase& op);

    /// True when no section's outcome is BeyondSet.
    static bool keepsEverything(const std::vector<SectionWrite>& sections);
};

}  // namespace VelkApi
