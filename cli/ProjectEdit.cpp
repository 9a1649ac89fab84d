#include "ProjectEdit.h"

#include <velkapi/WritePreview.h>

#include <iostream>
#include <utility>

#include "ProjectDiff.h"

namespace velk {

namespace {

using VelkApi::SectionWrite;
using VelkApi::WriteChange;
using VelkApi::WriteOutcome;

// "store 1, operation 18 (MILL_5AX)"
std::string operationTitle(const VelkApi::OperationBase& op) {
    const bool tool = dynamic_cast<const VelkApi::MillDrillOperation*>(&op) == nullptr;
    return "store " + std::to_string(op.getVdmname()) + ", operation " +
           std::to_string(op.getNumber()) + " (" +
           (tool ? std::string("tool") : kindName(op.getOperationType())) + ")";
}

// "i_coolant (unset -> 2)", or "line 1 (OUTER -> none)" for a line no value accounts for.
std::string changeText(const WriteChange& change) {
    const std::string what =
        change.key.empty() ? "line " + std::to_string(change.line) : change.key;
    return what + " (" + change.before + " -> " + change.after + ")";
}

// "writing Parameter would also change i_coolant (unset -> 2), ..."
std::string lossText(const SectionWrite& section) {
    std::string text = "writing " + section.section + " would also change ";
    for (std::size_t i = 0; i < section.changes.size(); ++i) {
        text += (i == 0 ? "" : ", ") + changeText(section.changes[i]);
    }
    return text;
}

std::optional<SectionWrite> previewOf(VelkApi::OperationBase& op, const std::string& name) {
    for (SectionWrite& preview : VelkApi::WritePreview::sections(op)) {
        if (preview.section == name) {
            return std::move(preview);
        }
    }
    return std::nullopt;
}

void writeSection(VelkApi::MillDrillOperation& op, const SectionWrite& preview) {
    VelkApi::SectionDictionary& section = requireSection(op, preview.section);
    writeToHost([&] { section.writeToVDM(&op); });
    ProjectEdit::requireWritten(op, preview.section, preview.number, preview.writtenLines.size());
}

}  // namespace

void addWriteOptions(CLI::App& command, WriteOptions& options) {
    command.add_flag("--allow-loss", options.allowLoss,
                     "Write even when the write would change values or lines besides those "
                     "given (velk check lists them)");
    command.add_flag("--dry-run", options.dryRun,
                     "Print what would be saved, as velk diff prints it, and save nothing");
}

ProjectEdit::ProjectEdit(std::string projectPath, const WriteOptions& writeOptions)
    : path(std::move(projectPath)), options(writeOptions), lock(path) {
    loadProject(path);
    if (options.dryRun) {
        before = snapshotOfLoadedProject();
    }
}

void ProjectEdit::write(VelkApi::MillDrillOperation& op) const {
    if (op.isNew()) {
        const std::vector<SectionWrite> previews = VelkApi::WritePreview::sections(op);
        writeOperation(op);
        for (const SectionWrite& preview : previews) {
            requireWritten(op, preview.section, preview.number, preview.writtenLines.size());
        }
        return;
    }
    // Section by section in the library's order, each judged against the store as the
    // sections before it left it: writing the geometry sets the figure counters.
    std::string losses;
    for (const std::string& name : sectionNames()) {
        const std::optional<SectionWrite> preview = previewOf(op, name);
        if (!preview || !preview->edited) {
            continue;
        }
        if (preview->outcome == WriteOutcome::BeyondSet) {
            losses += (losses.empty() ? "" : "; ") + lossText(*preview);
        }
        writeSection(op, *preview);
    }
    if (losses.empty()) {
        return;
    }
    if (!options.allowLoss) {
        throw LossRefused(operationTitle(op) + ": " + losses +
                          "; nothing saved (--allow-loss writes it anyway)");
    }
    std::cerr << "velk: " << operationTitle(op) << ": " << losses << " (--allow-loss)\n";
}

void ProjectEdit::requireWritten(const VelkApi::OperationBase& op, const std::string& section,
                                 int number, std::size_t lines) {
    VelkApi::MillTurnVdm vdm(op.getVdmname());
    std::size_t stored = 0;
    if (vdm.Create()) {
        if (vdm.LoadOperation(op.getNumber()) && number < vdm.getSectionCount()) {
            stored = static_cast<std::size_t>(vdm.getSectionLineCount(number));
        }
        vdm.Close();
    }
    if (stored != lines) {
        throw CommandError(operationTitle(op) + ": the host stored " + std::to_string(stored) +
                           " of the " + std::to_string(lines) + " lines of " + section +
                           "; nothing saved");
    }
}

bool ProjectEdit::save() const {
    if (!options.dryRun) {
        saveProject(path);
        return true;
    }
    ProjectSnapshot after = snapshotOfLoadedProject();
    readWhatDiffers(*before, after);
    printChanges(compareProjects(*before, after));
    std::cerr << "velk: --dry-run: nothing saved\n";
    return false;
}

}  // namespace velk
