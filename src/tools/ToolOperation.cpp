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
        enterSection(SectionTypeToString(SectionType::Header, 0), headerSection);
        header = headerSection.get();
        auto messageSection = std::make_shared<MessageSection>(kMessageSectionNr);
        enterSection(SectionTypeToString(SectionType::Message, 0), messageSection);
        message = messageSection.get();
        auto toolSection = std::make_shared<MillToolSection>(kToolSectionNr);
        enterSection(SectionTypeToString(SectionType::ToolData, 0), toolSection);
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
