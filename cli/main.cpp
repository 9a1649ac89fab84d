// velk: inspect and edit the operations of a project file through the VelkApi library, with
// the offline host standing in for the CAM application.
#include <velkapi/Version.h>
#include <velkhost/OfflineHost.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

#include "Commands.h"
#include "Project.h"

namespace {

// What a failure the library let through means for the user. Every operation reads the
// machine's "TURNDRIVENTOOLS" setting from the environment as a whole number and fails when it is
// missing or is no number: that is named; anything else is reported as the library said it.
std::string unexpectedFailure(const std::exception& e) {
    const bool conversion = dynamic_cast<const std::invalid_argument*>(&e) != nullptr ||
                            dynamic_cast<const std::out_of_range*>(&e) != nullptr;
    const std::string value = velkhost::OfflineHost::instance().environment("TURNDRIVENTOOLS");
    if (!conversion || velk::parseWholeNumber(value)) {
        return e.what();
    }
    if (value.empty()) {
        return "the project's environment has no TURNDRIVENTOOLS value (a whole number, 2 when "
               "the machine has turning-driven tools)";
    }
    return "the project's environment value TURNDRIVENTOOLS '" + value + "' is not a whole number";
}

// Everything printed reached standard output: not so on a full disk or a closed pipe.
bool outputWritten() {
    std::cout.flush();
    return !std::cout.fail() && std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

// The exit status of a run that got to its end: what it printed must have arrived, and host
// messages while reading mean the project was not read as it stands.
int finish(int status) {
    if (!outputWritten()) {
        std::cerr << "velk: standard output cannot be written (a full disk, or the reader has "
                     "gone): the output is incomplete\n";
        return 2;
    }
    return velk::hostReportedErrors() ? 2 : status;
}

// "velk 0.2.0 (VelkApi library 0.2.0)": velk's own version and that of the library it loaded.
std::string versionText() {
    return std::string("velk ") + VELK_VERSION + " (VelkApi library " + VelkApi::libraryVersion() +
           ")";
}

// A mistake on the command line is one line, which says where the right form is shown.
std::string commandLineFailure(const CLI::App* app, const CLI::Error& e) {
    const std::vector<CLI::App*> used = app->get_subcommands();
    const std::string help =
        used.empty() ? "velk --help" : "velk " + used.front()->get_name() + " --help";
    return "velk: " + std::string(e.what()) + " (" + help + " shows the options)\n";
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"velk - read and edit the milling and drilling operations of a project file"};
    app.require_subcommand(1);
    app.set_version_flag("--version", versionText(), "Print velk's version and the library's");
    app.footer(versionText());
    app.failure_message(commandLineFailure);
    velk::addWalkCommand(app);
    velk::addOpsCommand(app);
    velk::addShowCommand(app);
    velk::addSetCommand(app);
    velk::addAddCommand(app);
    velk::addActionsCommand(app);
    velk::addExpertCommand(app);
    velk::addStrategyCommand(app);
    velk::addToolsCommand(app);
    velk::addDiffCommand(app);
    velk::addInitCommand(app);
    velk::addCheckCommand(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return finish(app.exit(e));
    } catch (const velkhost::ProjectError& e) {
        std::cerr << "velk: " << e.what() << "\n";
        return 2;
    } catch (const velk::CommandTrouble& e) {
        std::cerr << "velk: " << e.what() << "\n";
        return 2;
    } catch (const velk::CommandError& e) {
        std::cerr << "velk: " << e.what() << "\n";
        return 1;
    } catch (const std::exception& e) {
        // Like a project that cannot be read: 2, which diff's "different" (1) cannot be taken for.
        std::cerr << "velk: " << unexpectedFailure(e) << "\n";
        return 2;
    }
    return finish(0);
}
