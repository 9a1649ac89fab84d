/// \file
/// The tool section of an operation with turning-driven tools. It keeps the section's place and
/// line structure but carries no tool parameters: its entries are 19 empty texts "LINE0" to
/// "LINE18", reading passes over the stored lines, and writing stores one empty line.
#pragma once

#include <velkapi/ToolSection.h>

namespace VelkApi {

/// The tool section of an operation with turning-driven tools: one empty line.
class VELKAPI_EXPORT TurnToolSection : public ToolSection {
  public:
    /// An empty section that is section `sectionnr` of its operation in the store.
    explicit TurnToolSection(int sectionnr);
    /// A copy of another TurnToolSection.
    TurnToolSection(const TurnToolSection&) = default;
    /// Becomes a copy of another TurnToolSection.
    TurnToolSection& operator=(const TurnToolSection&) = default;
    ~TurnToolSection() override;

    /// Nothing: the section has no host variables.
    void setDefault() override;
    /// Stores exactly one empty line, whatever the entries hold.
    void writeToVDM(OperationBase* op) override;
    /// Reads the stored lines and keeps none of them.
    void readFromVDM(OperationBase* op) override;
    /// Nothing: the section has no host variables.
    void readFromVars() override;
    void writeToVars() override;

    /// The lines writeToVDM writes: one empty line.
    std::vector<std::string> composeLines() const;

  private:
    void read(OperationBase* op);
    void write(OperationBase* op);
};

}  // namespace VelkApi
