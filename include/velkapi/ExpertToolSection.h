/// \file
/// The tool record as text, for expert editing: the 105 names of the tool line table, every one
/// held as a text whatever its kind, converted to and from 19 text lines and filled from the
/// host's global variables. It never touches the record store.
///
/// Text lines: line i holds the values of table line i + 1. A text line is the text itself; on
/// any other line every value is followed by one blank, the last one too, and an empty value is
/// written as "2147483647 ".
#pragma once

#include <string>
#include <vector>

#include <velkapi/ToolSection.h>

namespace VelkApi {

/// The tool record of an operation in its expert form, every value as text.
class VELKAPI_EXPORT ExpertToolSection : public ToolSection {
  public:
    /// Scratch arrays for the host arrays, shared by every ExpertToolSection (and separate from
    /// those of MillToolSection).
    static int bin[BIN_SIZE];
    /// The host's general tool values, "w_t_val(1)" to "w_t_val(10)", as last moved.
    static double val[VAL_SIZE];
    /// The host's turning tool values, "w_t_tur_val(1)" to "w_t_tur_val(20)", as last moved.
    static double tur_val[TUR_VAL_SIZE];

    /// An empty section that is section `sectionnr` of its operation in the store.
    explicit ExpertToolSection(int sectionnr);
    /// A copy of another ExpertToolSection.
    ExpertToolSection(const ExpertToolSection&) = default;
    /// Becomes a copy of another ExpertToolSection.
    ExpertToolSection& operator=(const ExpertToolSection&) = default;
    ~ExpertToolSection() override;

    /// Nothing: the expert form neither resets nor writes the host's variables, nor the store.
    void setDefault() override;
    /// Writes the tool record back into the operation's tool section.
    void writeToVDM(OperationBase* op) override;
    /// Reads the operation's tool section into the expert form.
    void readFromVDM(OperationBase* op) override;
    void writeToVars() override;
    /// Every key from the host's variable of its name: ints in decimal, doubles with six
    /// decimals ("%f": 12.5 gives 12.500000). A variable the host cannot give leaves its key.
    void readFromVars() override;

    /// Every key from `textLines` (no number is checked). An int or double name without a line
    /// becomes "2147483647", a text name without a line "".
    virtual void readFromStrings(const std::vector<std::string>& textLines);
    /// Appends the 19 lines to `textLines`, which is not emptied first.
    virtual void writeToStrings(std::vector<std::string>& textLines);
};

}  // namespace VelkApi
