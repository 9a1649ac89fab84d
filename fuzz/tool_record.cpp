// The tool record lines of a mill tool section, read from the store and written back.
#include <velkapi/ToolSection.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    fuzzsupport::storeSection(0, 1, fuzzsupport::lines(data, size));
    fuzzsupport::FuzzOperation op;
    VelkApi::MillToolSection section(1);
    section.readFromVDM(&op);
    section.writeToVDM(&op);
    return 0;
}
