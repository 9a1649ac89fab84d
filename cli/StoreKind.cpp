#include "StoreKind.h"

#include <velkhost/OfflineHost.h>

#include <algorithm>
#include <sstream>
#include <string>

#include "Project.h"

namespace velk {

namespace {

// A tool record's header declares two sections: the tool's description and its tool data. An
// operation has more, a record that is no machining operation fewer.
bool isToolRecord(const velkhost::Record& record) {
    std::istringstream header(record.empty() ? std::string() : record.front());
    int type = 0;
    int flag = 0;
    int sections = 0;
    return static_cast<bool>(header >> type >> flag >> sections) && sections == 2;
}

std::string withStore(std::string text, int store) {
    const std::string number = std::to_string(store);
    for (std::size_t at = text.find("{store}"); at != std::string::npos;
         at = text.find("{store}", at + number.size())) {
        text.replace(at, 7, number);
    }
    return text;
}

}  // namespace

bool isToolStore(int store) {
    const velkhost::Records& records = velkhost::OfflineHost::instance().records(store);
    return records.size() > 1 && std::all_of(records.begin() + 1, records.end(), isToolRecord);
}

void refuseToolStore(int store, const char* whatFits) {
    if (isToolStore(store)) {
        throw CommandError(withStore("store {store} is a tool store: ", store) +
                           withStore(whatFits, store));
    }
}

void refuseOperationStore(int store) {
    const velkhost::Records& records = velkhost::OfflineHost::instance().records(store);
    if (records.size() > 1 && !isToolStore(store)) {
        throw CommandError(
            withStore("store {store} is not a tool store: list its operations "
                      "with velk ops PROJECT --store {store}",
                      store));
    }
}

}  // namespace velk
