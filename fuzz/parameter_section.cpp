// The parameter section of every kind over any lines: the first byte picks the kind, the other
// lines are the section's lines in the store. What was read is written back.
#include <velkapi/ParameterSection.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    const auto kind =
        static_cast<VelkApi::MillDrillOperationType>(1 + fuzzsupport::takeByte(data, size) % 20);
    fuzzsupport::storeSection(VelkApi::millDrillOperationTypeToVelk(kind), 2,
                              fuzzsupport::lines(data, size));
    fuzzsupport::FuzzOperation op;
    VelkApi::ParameterSection section(kind, 2);
    section.Init(false);
    section.readFromVDM(&op);
    section.writeToVDM(&op);
    return 0;
}
