/// \file
/// An operation's free text lines: line n is the String entry keyed "n" (decimal). The lines are
/// stored as they are, one store line each.
#pragma once

#include <string>
#include <vector>

#include <velkapi/SectionDictionary.h>

namespace VelkApi {

/// The message of an operation: its description, one text entry a line.
class VELKAPI_EXPORT MessageSection : public SectionDictionary {
  public:
    /// An empty section that is section `sectionnr` of its operation in the store.
    explicit MessageSection(int sectionnr);
    /// A copy of another MessageSection.
    MessageSection(const MessageSection&) = default;
    /// Becomes a copy of another MessageSection.
    MessageSection& operator=(const MessageSection&) = default;
    ~MessageSection() override;

    /// Writes the entries "0", "1", ... up to the number of entries minus 1 (a missing key gives
    /// no line) into the operation that is current in the store object.
    void writeToVDM(OperationBase* op) override;
    /// Reads the lines of the operation's message section.
    void readFromVDM(OperationBase* op) override;

    /// Adds line n, empty, unless it exists.
    virtual void createLine(size_t n);
    /// Adds line n unless it exists, then sets it to `text`.
    virtual void createandsetLine(size_t n, const std::string& text);
    /// Takes `lines` as the message, one entry a line.
    virtual void readFromStrings(const std::vector<std::string>& lines);
    /// Appends the lines to `lines`, which is not emptied first.
    virtual void writeToStrings(std::vector<std::string>& lines);
    /// The lines writeToVDM writes: the entries "0" .. "<count - 1>" that exist, in order.
    std::vector<std::string> composeLines() const;
};

}  // namespace VelkApi
