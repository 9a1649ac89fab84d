// The files of expected/, built into the test program so that it finds them wherever it runs.
#pragma once

#include <string>

namespace testdata {

// The content of expected/<fileName>; throws std::out_of_range for a file that is not there.
std::string expectedLines(const std::string& fileName);

}  // namespace testdata
