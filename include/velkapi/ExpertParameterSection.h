/// \file
/// The expert form of an operation's machining parameters: the catalogue of the operation's kind
/// with every length, angle and percentage held as text, exchanged as a list of text lines
/// instead of through the record store. For MILL_5AX it also carries the machining-strategy
/// settings (see GeolibWrapper).
///
/// The lines, as writeToStrings writes them and readFromStrings reads them:
///   line k        the values numbered 100 k .. 100 k + 99 (k up to 3; numbers from 400 on go
///                 to the line of the entry before them), in number order, each followed by
///                 one blank
/// The caller sizes the list: a list of n lines holds lines 0 .. n - 2, so one of getLineCount()
/// lines holds every entry, and its last line is not used. An int is written in decimal; the
/// option bits that share a number are one unsigned field, the sum of 2^(bit-1) over the true
/// bits; a text as it stands, and an empty text as 2147483647, which reads back as an empty text.
/// Fields are separated by blanks, so a text holding a blank does not read back as it was
/// written: its first word is its field, and every later field moves one entry on.
#pragma once

#include <string>
#include <vector>

#include <velkapi/ParameterSection.h>

namespace VelkApi {

/// The machining parameters of an operation in their expert form, every value as text.
class VELKAPI_EXPORT ExpertParameterSection : public ParameterSection {
  public:
    /// Declares no entries: Init does.
    explicit ExpertParameterSection(MillDrillOperationType type);
    /// A copy of another ExpertParameterSection.
    ExpertParameterSection(const ExpertParameterSection&) = default;
    /// Becomes a copy of another ExpertParameterSection.
    ExpertParameterSection& operator=(const ExpertParameterSection&) = default;
    ~ExpertParameterSection() override;

    /// The expert form is never written to or read from the record store: both do nothing.
    void writeToVDM(OperationBase* op) override;
    /// Reads the operation's parameter section into the expert form.
    void readFromVDM(OperationBase* op) override;

    /// Declares the expert catalogue of the kind. The defaults of the clearance and retract
    /// entries are the host's "w_setup_cle" and "w_setup_ret" as "%.1f" texts ("2" each when the
    /// host cannot give them); the default of "$_project" is the host's "$_project". Sets the
    /// line count to the size of a list that receives every entry: the value lines, plus one.
    virtual void Init();
    /// The expert form has no machine-dependent entries: the same as Init().
    void Init(bool machineAware) override;
    ValueDataType getValueDataType(const std::string& key) override;

    /// Writes value lines 0 .. lines.size() - 2 into `lines`, each replacing the text it held:
    /// the caller sizes `lines` to say how many value lines it wants (getLineCount() holds every
    /// entry). Entries on later lines are left out; the last line of `lines` is left as it was,
    /// so a list of one line receives nothing.
    virtual void writeToStrings(std::vector<std::string>& lines);
    /// The reverse of writeToStrings: every field of value lines 0 .. lines.size() - 2 is read
    /// back into the entry it was written from. Entries whose line or field is missing keep
    /// their values; when a field does not fit its entry, nothing is changed. The kind's name
    /// is not part of the lines and stays as it is.
    virtual void readFromStrings(const std::vector<std::string>& lines);

    /// Takes the values of the plain parameter section of an operation of the same kind: each
    /// entry gets the value of the plain entry it stands for, numbers as text ("%g"). A value
    /// that is not set there (2147483647, 2147483647.0) becomes an empty text here. Entries of
    /// the expert form only keep their values.
    void readFromParameters(const ParameterSection& parameters);
};

}  // namespace VelkApi
