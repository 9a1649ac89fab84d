// The action lines of a pre- or post-operation section, read from the store and written back.
#include <velkapi/ActionSection.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    const bool post = fuzzsupport::takeByte(data, size) % 2 == 1;
    const int section = post ? 5 : 4;
    fuzzsupport::storeSection(0, section, fuzzsupport::lines(data, size));
    fuzzsupport::FuzzOperation op;
    VelkApi::ActionSection actions(
        post ? VelkApi::ActionSectionType::PostOperation : VelkApi::ActionSectionType::PreOperation,
        section);
    actions.readFromVDM(&op);
    std::vector<VelkApi::Action> list;
    actions.getValues(&list);
    actions.writeToVDM(&op);
    return 0;
}
