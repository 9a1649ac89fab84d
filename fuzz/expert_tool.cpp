// The expert form of a tool record over any lines, written out again.
#include <velkapi/ExpertToolSection.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    VelkApi::ExpertToolSection section(1);
    section.readFromStrings(fuzzsupport::lines(data, size));
    std::vector<std::string> written;
    section.writeToStrings(written);
    return 0;
}
