#include "StoreSessions.h"

#include <algorithm>
#include <string>

#include "CText.h"
#include "HostAbi.h"

namespace velkhost::detail {

namespace {

constexpr std::size_t kLineBufferSize = VelkApi::host::kLineBufferSize;

// A line is stored cut to the longest line a caller's buffer can take back.
std::string storedLine(const char* text) {
    return cutText(text, kLineBufferSize - 1);
}

bool isWithin(long long value, std::size_t upperBound) {
    return value >= 0 && static_cast<unsigned long long>(value) <= upperBound;
}

}  // namespace

int StoreSessions::exists(int vdm) const {
    return stores.count(vdm) ? 1 : 0;
}

int StoreSessions::checkOpen(int vdm) const {
    const auto holders = std::count_if(cursors.begin(), cursors.end(), [vdm](const auto& entry) {
        return entry.second.vdm == vdm;
    });
    return static_cast<int>(holders) + (heldElsewhere.count(vdm) ? 1 : 0);
}

int StoreSessions::open(int vdm) {
    if (!stores.count(vdm) || failingOpens.count(vdm)) {
        return -1;
    }
    const int handle = nextHandle++;
    if (!closingOnOpen.count(vdm)) {
        cursors[handle] = Cursor{vdm, 0, 0};
    }
    return handle;
}

int StoreSessions::close(int handle) {
    return cursors.erase(handle) ? 1 : 0;
}

int StoreSessions::size(int handle) const {
    const Cursor* at = cursor(handle);
    const Records* store = at ? storeOf(*at) : nullptr;
    return store ? static_cast<int>(store->size()) : 0;
}

int StoreSessions::seek(int handle, int pos, int origin) {
    Cursor* at = cursor(handle);
    const Records* store = at ? storeOf(*at) : nullptr;
    if (!store || origin != 0 || !isWithin(pos, store->size())) {
        return 0;
    }
    at->record = static_cast<std::size_t>(pos);
    at->line = 0;
    return 1;
}

int StoreSessions::singleSeek(int handle, int n) {
    Cursor* at = cursor(handle);
    const Record* record = at ? recordAt(*at) : nullptr;
    if (!record) {
        return 0;
    }
    const long long target = static_cast<long long>(at->line) + n;
    if (!isWithin(target, record->size())) {
        return 0;
    }
    at->line = static_cast<std::size_t>(target);
    return 1;
}

int StoreSessions::singleGet(int handle, char* buffer) {
    Cursor* at = cursor(handle);
    const Record* record = at ? recordAt(*at) : nullptr;
    if (!record || !buffer || at->line >= record->size()) {
        return 0;
    }
    copyToBuffer((*record)[at->line], buffer, kLineBufferSize);
    ++at->line;
    return 1;
}

int StoreSessions::singleAdd(int handle, const char* line) {
    Cursor* at = cursor(handle);
    Record* record = at ? recordAt(*at) : nullptr;
    if (!record || !line || at->line > record->size() || !takeAddAllowance(at->vdm)) {
        return 0;
    }
    record->insert(record->begin() + static_cast<std::ptrdiff_t>(at->line), storedLine(line));
    ++at->line;
    return 1;
}

int StoreSessions::singleReplace(int handle, const char* line) {
    Cursor* at = cursor(handle);
    Record* record = at ? recordAt(*at) : nullptr;
    if (!record || !line || at->line >= record->size()) {
        return 0;
    }
    (*record)[at->line] = storedLine(line);
    return 1;
}

int StoreSessions::insert(int handle, const char* text) {
    Cursor* at = cursor(handle);
    Records* store = at ? storeOf(*at) : nullptr;
    if (!store || !text || at->record > store->size()) {
        return 0;
    }
    store->insert(store->begin() + static_cast<std::ptrdiff_t>(at->record),
                  Record{storedLine(text)});
    at->line = 0;
    return 1;
}

int StoreSessions::singleDelete(int handle, int n) {
    Cursor* at = cursor(handle);
    Record* record = at ? recordAt(*at) : nullptr;
    if (!record || n < 0 || !isWithin(static_cast<long long>(at->line) + n, record->size())) {
        return 0;
    }
    const auto first = record->begin() + static_cast<std::ptrdiff_t>(at->line);
    record->erase(first, first + n);
    return 1;
}

void StoreSessions::holdOpenElsewhere(int vdm, bool held) {
    if (held) {
        heldElsewhere.insert(vdm);
    } else {
        heldElsewhere.erase(vdm);
    }
}

void StoreSessions::failOpen(int vdm, bool fail) {
    if (fail) {
        failingOpens.insert(vdm);
    } else {
        failingOpens.erase(vdm);
    }
}

void StoreSessions::failAddsAfter(int vdm, int successfulAdds) {
    if (successfulAdds < 0) {
        addsLeft.erase(vdm);
    } else {
        addsLeft[vdm] = successfulAdds;
    }
}

void StoreSessions::closeHandlesOf(int vdm) {
    for (auto entry = cursors.begin(); entry != cursors.end();) {
        entry = entry->second.vdm == vdm ? cursors.erase(entry) : std::next(entry);
    }
}

void StoreSessions::closeOnOpen(int vdm, bool close) {
    if (close) {
        closingOnOpen.insert(vdm);
    } else {
        closingOnOpen.erase(vdm);
    }
}

void StoreSessions::clearFaults() {
    heldElsewhere.clear();
    failingOpens.clear();
    closingOnOpen.clear();
    addsLeft.clear();
}

void StoreSessions::closeAll() {
    cursors.clear();
}

StoreSessions::Cursor* StoreSessions::cursor(int handle) {
    const auto entry = cursors.find(handle);
    return entry == cursors.end() ? nullptr : &entry->second;
}

const StoreSessions::Cursor* StoreSessions::cursor(int handle) const {
    const auto entry = cursors.find(handle);
    return entry == cursors.end() ? nullptr : &entry->second;
}

Records* StoreSessions::storeOf(const Cursor& at) const {
    const auto store = stores.find(at.vdm);
    return store == stores.end() ? nullptr : &store->second;
}

Record* StoreSessions::recordAt(const Cursor& at) const {
    Records* store = storeOf(at);
    return store && at.record < store->size() ? &(*store)[at.record] : nullptr;
}

bool StoreSessions::takeAddAllowance(int vdm) {
    const auto limit = addsLeft.find(vdm);
    if (limit == addsLeft.end()) {
        return true;
    }
    if (limit->second == 0) {
        return false;
    }
    --limit->second;
    return true;
}

}  // namespace velkhost::detail
