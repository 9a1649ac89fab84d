#include <velkapi/ToolList.h>

#include "util/ErrorBoundary.h"

namespace VelkApi {

using detail::guarded;

namespace {

// The sections' numbers in the store.
constexpr int kMessageSectionNr = 0;
constexpr int kToolSectionNr = 1;

}  // namespace

ToolOperation::ToolOperation(int store, int nr) : OperationBase(store, nr) {
    guarded("Error in ToolOperation::ToolOperation()", [&] {
        // Each pointer is kept once its section is entered, so that none outlives its section.
        auto headerSection = std::make_shared<HeaderSection>();
        enterSection("Header", headerSection);
        header = headerSection.get();
        auto messageSection = std::make_shared<MessageSection>(kMessageSectionNr);
        enterSection("Message", messageSection);
        message = messageSection.get();
        auto toolSection = std::make_shared<MillToolSection>(kToolSectionNr);
        enterSection("ToolData", toolSection);
        tool = toolSection.get();
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
