// The expert form of the parameters of every kind over any lines: the first byte picks the
// kind. What was read is written out again.
#include <velkapi/ExpertParameterSection.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    const auto kind =
        static_cast<VelkApi::MillDrillOperationType>(1 + fuzzsupport::takeByte(data, size) % 20);
    VelkApi::ExpertParameterSection section(kind);
    section.Init();
    section.readFromStrings(fuzzsupport::lines(data, size));
    std::vector<std::string> written(static_cast<std::size_t>(section.getLineCount()));
    section.writeToStrings(written);
    return 0;
}
