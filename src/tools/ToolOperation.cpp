#include <velkapi/ToolList.h>

#include "host/ErrorBoundary.h"

namespace VelkApi {

using detail::guarded;

namespace {

// The sections' numbers in the store.
constexpr int kMessageSectionNr = 0;
constexpr int kToolSectionNr = 1;

}  // namespace

ToolOperation::ToolOperation(int store, int nr) : OperationBase(store, nr) {
    guarded("Error in ToolOperation::ToolOperation()", [&] {
        auto headerSection = std::make_shared<HeaderSection>();
        header = headerSection.get();
        enterSection("Header", headerSection);
        auto messageSection = std::make_shared<MessageSection>(kMessageSectionNr);
        message = messageSection.get();
        enterSection("Message", messageSection);
        auto toolSection = std::make_shared<MillToolSection>(kToolSectionNr);
        tool = toolSection.get();
        enterSection("ToolData", toolSection);
    });
}

ToolOperation::~ToolOperation() = default;

void ToolOperation::writeToVDM() {}

void ToolOperation::readFromVDM() {
    guarded("Error in ToolOperation::readFromVDM()", [&] {
        if (header != nullptr) {
            header->readFromVDM(this);
        }
        if (tool != nullptr) {
            tool->readFromVDM(this);
        }
    });
}

}  // namespace VelkApi
