// The INI reader: the first line names the section, the second the key, the rest is the file.
#include <sstream>

#include "FuzzSupport.h"
#include "platform/IniReader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzsupport::Lines lines = fuzzsupport::lines(data, size);
    const std::string section = lines[0];
    const std::string key = lines.size() > 1 ? lines[1] : "";
    std::string file;
    for (std::size_t i = 2; i < lines.size(); ++i) {
        file += lines[i] + '\n';
    }
    std::istringstream in(file);
    VelkApi::platform::IniReader::lookup(in, section, key, "fallback");
    return 0;
}
