#include "HostFixture.h"

namespace testsupport {

std::vector<std::string> HostTest::boxes() {
    std::vector<std::string> shown;
    for (const auto& box : host().messageBoxes()) {
        shown.push_back(box.caption + "|" + box.text);
    }
    return shown;
}

}  // namespace testsupport
