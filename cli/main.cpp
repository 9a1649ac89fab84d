// velk: inspect and edit the operations of a project file through the VelkApi library, with
// the offline host standing in for the CAM application.
#include <velkhost/OfflineHost.h>

#include <iostream>

#include "Commands.h"
#include "Project.h"

int main(int argc, char** argv) {
    CLI::App app{"velk - read and edit the milling and drilling operations of a project file"};
    app.require_subcommand(1);
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
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    } catch (const velkhost::ProjectError& e) {
        std::cerr << "velk: " << e.what() << "\n";
        return 2;
    } catch (const velk::CommandError& e) {
        std::cerr << "velk: " << e.what() << "\n";
        return 1;
    }
    return 0;
}
