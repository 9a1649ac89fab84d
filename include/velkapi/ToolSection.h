/// \file
/// An operation's tool data (section "ToolData", store section 1): one fixed record of 105 named
/// tool parameters on 19 lines, defined once by the tool line table below. The first character
/// of a name gives its kind: "i" an int, "w" a double, "$" a text. "i_t_holder_id" stands on
/// line 1 and on line 5; both slots name the same key.
///
/// ToolSection is the base of every tool section; MillToolSection is the tool section of milling
/// and drilling operations. It moves the record between its entries, the operation's lines in
/// the store and the host's global variables of the same names.
#pragma once

#include <string>
#include <vector>

#include <velkapi/SectionDictionary.h>

namespace VelkApi {

/// The base of every tool section: the tool record of 105 named parameters on 19 lines.
class VELKAPI_EXPORT ToolSection : public SectionDictionary {
  public:
    /// Lines of a tool record, and name slots of a table line.
    static constexpr int LINESCOUNT = 19;
    /// The most names a line of the tool line table holds.
    static constexpr int LINESLOTS = 23;
    /// Elements of the host arrays "i_t_bin", "w_t_val" and "w_t_tur_val".
    static constexpr int BIN_SIZE = 3;
    /// Elements of "w_t_val".
    static constexpr int VAL_SIZE = 10;
    /// Elements of "w_t_tur_val".
    static constexpr int TUR_VAL_SIZE = 20;

    /// The tool line table: line i holds lineslen[i] names; its further slots are empty.
    static const std::string lines[LINESCOUNT][LINESLOTS];
    /// The number of names on each line of the tool line table.
    static const int lineslen[LINESCOUNT];

    /// An empty section that is section `sectionnr` of its operation in the store.
    explicit ToolSection(int sectionnr);
    /// A copy of another ToolSection.
    ToolSection(const ToolSection&) = default;
    /// Becomes a copy of another ToolSection.
    ToolSection& operator=(const ToolSection&) = default;
    ~ToolSection() override;

    void setDefault() override = 0;
    void writeToVDM(OperationBase* op) override = 0;
    void readFromVDM(OperationBase* op) override = 0;
    /// The data type of the key's entry (any case); None when there is none.
    virtual ValueDataType getValueDataType(const std::string& key);
    /// Fills the entries from the host's global variables of the same names.
    virtual void readFromVars() = 0;
    /// Writes the entries to the host's global variables of the same names.
    virtual void writeToVars() = 0;
};

/// The tool record of a milling or drilling operation. In the store it is 19 lines, one per
/// table line: the line's values in slot order, separated by one blank, ints in decimal,
/// doubles with six significant digits (2147483647.0 as 2.14748e+09); a text line is the text
/// as it stands, blanks and all.
class VELKAPI_EXPORT MillToolSection : public ToolSection {
  public:
    /// Scratch arrays for the host arrays, shared by every MillToolSection.
    static int bin[BIN_SIZE];
    /// The host's general tool values, "w_t_val(1)" to "w_t_val(10)", as last moved.
    static double val[VAL_SIZE];
    /// The host's turning tool values, "w_t_tur_val(1)" to "w_t_tur_val(20)", as last moved.
    static double tur_val[TUR_VAL_SIZE];

    /// Every int 2147483647, every double 2147483647.0, every text "".
    explicit MillToolSection(int sectionnr);
    /// A copy of another MillToolSection.
    MillToolSection(const MillToolSection&) = default;
    /// Becomes a copy of another MillToolSection.
    MillToolSection& operator=(const MillToolSection&) = default;
    ~MillToolSection() override;

    /// Sets the host's tool variables to "not set": ints 2147483647, doubles 2147483647.0,
    /// texts " ". The entries stay as they are.
    void setDefault() override;
    void writeToVDM(OperationBase* op) override;
    /// Reads as many lines as the header gives the tool data section; a line beyond the 19th is
    /// read and ignored.
    void readFromVDM(OperationBase* op) override;
    void readFromVars() override;
    /// Writes every entry to the host, except the doubles of "w_t_val" and "w_t_tur_val": those
    /// arrays are read from the host into the scratch arrays instead, and stay as the host has
    /// them.
    void writeToVars() override;

    /// The tool record's lines as writeToVDM writes them: one line per line of the table, each
    /// value followed by one blank but the last.
    std::vector<std::string> composeLines() const;
    /// Reads the tool record's lines, as readFromVDM reads them from the store; lines beyond
    /// the table are passed over, and no line at all leaves every entry as it is.
    void readFromLines(const std::vector<std::string>& record);

  private:
    void declareEntries();
    void read(OperationBase* op);
    void write(OperationBase* op);
};

}  // namespace VelkApi
