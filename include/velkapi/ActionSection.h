/// \file
/// The actions an operation carries: free-text commands the host runs before ("Additional_1",
/// store section 4) and after ("Additional_2", store section 5) the operation. Each action is an
/// entry whose name is its number (2, 3, ...) and whose value is an ActionValue.
///
/// Store lines of an action section:
///   0        "###PREOPERATION###", or "###POSTOPERATION###" for the post-operation list
///   1        the kind of every action in decimal, each followed by one blank: "5 1 "
///   2 ...    the command of each action, in the order of line 1
/// A section without actions is removed from the store when it is written (see writeToVDM).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <velkapi/SectionDictionary.h>

namespace VelkApi {

/// The host's kind of an action. The library stores and returns the number as it is; a default
/// action has kind 5.
enum class ActionType : std::int32_t {
    Default = 5,
};

/// Which list a section holds: PostOperation (2); every other value means the pre-operation list.
enum class ActionSectionType : std::int32_t {
    PreOperation = 1,
    PostOperation = 2,
};

/// An action run before or after an operation: its kind and its command.
class VELKAPI_EXPORT Action {
  public:
    /// Kind 5, empty command.
    Action();
    /// An action of kind `type` that runs `command`.
    Action(ActionType type, const std::string& command);
    /// A copy of another Action.
    Action(const Action&) = default;
    /// Becomes a copy of another Action.
    Action& operator=(const Action&) = default;

    /// Sets the command the action runs.
    void setCommand(const std::string& newCommand) { command = newCommand; }
    /// The command the action runs.
    const std::string& getCommand() const { return command; }
    /// Sets the action's kind.
    void setType(ActionType newType) { type = newType; }
    /// The action's kind.
    ActionType getType() const { return type; }

  private:
    std::string command;
    ActionType type = ActionType::Default;
};

/// The actions run before, or after, an operation, as a section of it.
class VELKAPI_EXPORT ActionSection : public SectionDictionary {
  public:
    /// The operation makes the pre-operation list as section 4 and the post-operation list as
    /// section 5: the section number is the type + 3.
    ActionSection(ActionSectionType type, int sectionnr);
    /// A copy of another ActionSection.
    ActionSection(const ActionSection&) = default;
    /// Becomes a copy of another ActionSection.
    ActionSection& operator=(const ActionSection&) = default;
    ~ActionSection() override;

    /// Adds action `nr` (its name is the number in decimal) unless that number exists.
    void addActionParameter(int nr, ActionType type, const std::string& command);
    /// Appends a copy of every action to *out, in the dictionary's order of names (so action 10
    /// comes before action 2), and returns out.
    std::vector<Action>* getValues(std::vector<Action>* out);

    /// Writes the marker, the kinds line and the commands. A section without actions has its
    /// lines removed instead; when no section follows it in the store, its place in the
    /// operation's header goes too, together with every empty action section before it.
    void writeToVDM(OperationBase* op) override;
    /// Reads actions 2, 3, ... from the command lines, each with its kind from line 1 (0 when the
    /// kinds line has no number left for it). The marker line is not checked.
    void readFromVDM(OperationBase* op) override;

    /// Which list the section holds: before or after the operation.
    ActionSectionType getSectionType() const { return sectionType; }

    /// The lines writeToVDM writes: the marker, the kinds line and one command a line, in
    /// dictionary order; none when the section holds no action (writeToVDM then removes it).
    std::vector<std::string> composeLines() const;

  private:
    /// Every action entry, in the dictionary's order of names. Writing keeps that order too, so
    /// a list of more than eight actions comes back from the store with 10, 11, ... first.
    std::vector<Action> actions() const;

    ActionSectionType sectionType;
};

}  // namespace VelkApi
