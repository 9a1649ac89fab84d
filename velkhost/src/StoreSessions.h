// The record stores as the host's exported store functions see them: handles with their own
// positions, and the faults that make those functions refuse.
#pragma once

#include <cstddef>
#include <map>
#include <set>

#include "Project.h"

namespace velkhost::detail {

class StoreSessions {
  public:
    explicit StoreSessions(Stores& projectStores) : stores(projectStores) {}

    int exists(int vdm) const;
    int checkOpen(int vdm) const;
    int open(int vdm);
    int close(int handle);
    int size(int handle) const;
    int seek(int handle, int pos, int origin);
    int singleSeek(int handle, int n);
    int singleGet(int handle, char* buffer);
    int singleAdd(int handle, const char* line);
    int singleReplace(int handle, const char* line);
    int insert(int handle, const char* text);
    int singleDelete(int handle, int n);

    void holdOpenElsewhere(int vdm, bool held);
    void failOpen(int vdm, bool fail);
    void failAddsAfter(int vdm, int successfulAdds);
    void closeHandlesOf(int vdm);
    void closeOnOpen(int vdm, bool close);
    void clearFaults();
    void closeAll();

  private:
    struct Cursor {
        int vdm;
        std::size_t record;
        std::size_t line;
    };

    Cursor* cursor(int handle);
    const Cursor* cursor(int handle) const;
    Records* storeOf(const Cursor& cursor) const;
    Record* recordAt(const Cursor& cursor) const;
    bool takeAddAllowance(int vdm);

    Stores& stores;
    std::map<int, Cursor> cursors;
    int nextHandle = 1;
    std::set<int> heldElsewhere;
    std::set<int> failingOpens;
    std::set<int> closingOnOpen;
    std::map<int, int> addsLeft;
};

}  // namespace velkhost::detail
