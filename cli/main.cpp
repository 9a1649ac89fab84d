// velk: inspect and edit the record stores of a project file through the VelkApi library, with
// the offline host standing in for the CAM application.
#include <velkhost/OfflineHost.h>

#include <iostream>

#include "Commands.h"

int main(int argc, char** argv) {
    CLI::App app{"velk - read and edit milling and drilling operations of a project file"};
    app.require_subcommand(1);
    velk::addWalkCommand(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e);
    } catch (const velkhost::ProjectError& e) {
        std::cerr << "velk: " << e.what() << "\n";
        return 2;
    }
    return 0;
}
