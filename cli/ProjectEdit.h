// How a command that changes the project writes it: only the sections the user changed, each
// through its own writeToVDM, never losing what the user did not ask to change, and saving only
// when everything was written. Every such command takes --allow-loss and --dry-run.
#pragma once

#include <velkapi/MillDrillOperation.h>

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

#include "Project.h"
#include "ProjectLock.h"
#include "ProjectSnapshot.h"

namespace velk {

// The options every command that changes the project takes.
struct WriteOptions {
    bool allowLoss = false;  // write even what changes more than the user set
    bool dryRun = false;     // print what would be saved, in velk diff's form; save nothing
};

// Adds --allow-loss and --dry-run to the command.
void addWriteOptions(CLI::App& command, WriteOptions& options);

// A write refused because it would change more than the user set: exit status 2, nothing saved.
class LossRefused : public CommandTrouble {
  public:
    using CommandTrouble::CommandTrouble;
};

// The project file being changed by one command.
class ProjectEdit {
  public:
    // Takes the project's lock, then loads the project; with --dry-run also takes its values as
    // they are, to compare with. The lock is held until the edit ends.
    ProjectEdit(std::string path, const WriteOptions& options);

    // Writes the operation: a new one whole, a read one section by section, only the sections
    // whose values the user changed. Throws LossRefused (unless --allow-loss) when a section's
    // write would lose or alter anything else, CommandError when the host refuses a write or
    // cuts a section short.
    void write(VelkApi::MillDrillOperation& op) const;

    // Checks that the host stored every line of the section that was meant for it; throws
    // CommandError naming the section otherwise.
    static void requireWritten(const VelkApi::OperationBase& op, const std::string& section,
                               int number, std::size_t lines);

    // Saves the project; with --dry-run prints what would change instead and returns false.
    bool save() const;

  private:
    std::string path;
    WriteOptions options;
    ProjectLock lock;
    // Its records are read in full only where they differ from those saved (a dry run).
    mutable std::optional<ProjectSnapshot> before;
};

}  // namespace velk
