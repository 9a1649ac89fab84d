// The operation header line: loading the operation reads it, rewriting the header writes what
// was read.
#include <velkapi/MillTurnVdm.h>
#include <velkhost/OfflineHost.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    velkhost::OfflineHost::instance().setStore(fuzzsupport::kStore,
                                               {{fuzzsupport::text(data, size), "a", "b", "c"}});
    VelkApi::MillTurnVdm vdm(fuzzsupport::kStore);
    if (vdm.Create() && vdm.LoadOperation(0)) {
        for (int s = 0; s < vdm.getSectionCount() && s < 8; ++s) {
            vdm.SeekSection(s);
        }
        vdm.WriteHeader();
    }
    vdm.Close();
    return 0;
}
