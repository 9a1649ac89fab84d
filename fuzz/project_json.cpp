// The offline host's project loader over any text; a project it takes is written out again.
#include <velkhost/OfflineHost.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
    host.reset();
    try {
        host.loadProjectText(fuzzsupport::text(data, size), "fuzz.json");
    } catch (const velkhost::ProjectError&) {
        return 0;  // refused with its reason: what a bad file must do
    }
    host.projectText();
    return 0;
}
