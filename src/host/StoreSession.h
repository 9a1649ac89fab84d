// One piece of work on a record store: opens the store (when it exists) and closes it again on
// every way out, exceptions included, so that no store stays open between public calls.
#pragma once

#include <velkapi/MacroVdm.h>

namespace VelkApi::host {

class StoreSession {
  public:
    explicit StoreSession(MacroVdm& store) : vdm(store), opened(store.Create()) {}
    ~StoreSession() {
        if (vdm.isOpen()) {
            vdm.Close();
        }
    }
    StoreSession(const StoreSession&) = delete;
    StoreSession& operator=(const StoreSession&) = delete;

    explicit operator bool() const { return opened; }

  private:
    MacroVdm& vdm;
    bool opened;
};

}  // namespace VelkApi::host
