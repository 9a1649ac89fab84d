#include "host/HostExports.h"

#include <string>

namespace VelkApi::host {

std::string environment(const char* name) {
    const char* value = Environment(name);
    return value ? value : "";
}

void showError(const std::string& caption, const std::string& text) {
    platform::showMessageBox(GetWnd(2), text, caption, platform::kMbOk);
}

}  // namespace VelkApi::host
