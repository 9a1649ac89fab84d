#include <velkapi/MacroVdm.h>
#include <velkapi/ToolList.h>

#include <algorithm>

#include "host/HostExports.h"
#include "host/StoreSession.h"
#include "util/ErrorBoundary.h"

namespace VelkApi {

using detail::guarded;

namespace {

// Every record of a tool store but its leading one is a tool. A store without even that record
// has no tools.
int storedToolCount(int vdmname) {
    MacroVdm store(vdmname);
    host::StoreSession session(store);
    return session ? std::max(host::MacroVdmSize(store.getHandle()) - 1, 0) : 0;
}

}  // namespace

ToolList::ToolList(int vdmname) {
    guarded("Error in ToolList::ToolList(int vdmname)", [&] {
        const int count = storedToolCount(vdmname);
        tools.reserve(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i) {
            tools.push_back(std::make_shared<ToolOperation>(vdmname, i + 1));
            ++toolCount;
        }
    });
}

ToolList::~ToolList() = default;

void ToolList::writeToVDM() {}

void ToolList::readFromVDM() {
    guarded("Error in ToolList::readFromVDM()", [&] {
        for (const auto& tool : tools) {
            tool->readFromVDM();
        }
    });
}

ToolOperation* ToolList::getTool(int i) const {
    return i >= 0 && i < toolCount ? tools[static_cast<std::size_t>(i)].get() : nullptr;
}

}  // namespace VelkApi
