// Reads one value from an INI file with the lookup rules of the Windows profile API, for
// platforms that do not have it.
//
// Rules:
//  - A line "[name]" starts section `name`; a line "key=value" is an entry of the section above
//    it. Other lines, lines before the first section, and lines whose first non-blank character
//    is ';' are ignored.
//  - Section and key names are trimmed of blanks and matched without regard to case.
//  - Only the first section of a name is searched; in it the first entry of a key wins.
//  - The value is trimmed of blanks (spaces, tabs, CR); a value wrapped in a pair of the same
//    quote character (' or ") loses the pair. Everything after '=' belongs to the value,
//    ';' included.
//  - A file that cannot be read, a missing section or a missing key yields the fallback.
#pragma once

#include <istream>
#include <string>

namespace VelkApi::platform {

class IniReader {
  public:
    static std::string lookup(const std::string& path, const std::string& section,
                              const std::string& key, const std::string& fallback);
    static std::string lookup(std::istream& in, const std::string& section, const std::string& key,
                              const std::string& fallback);
};

}  // namespace VelkApi::platform
