// Checks that a value typed on the command line reads back from the host's record as it was
// typed. Each throws CommandError with one line naming the key and the reason; the commands
// call them before anything is written.
#pragma once

#include <string>

namespace velk {

// A text for a line of the record: no line break (the record ends the text there), no NUL, and
// no longer than the host's line.
void checkTypedText(const std::string& name, const std::string& text);

// A double the record keeps with six significant digits: refused when it has more, unless
// `allowLoss` (then the record keeps it rounded).
void checkTypedDouble(const std::string& name, const std::string& typed, double value,
                      bool allowLoss);

// After the edit, the value as the record gives it back (`readBack`) must be the value set
// (`set`), both as velk shows them; `typed` is what the user gave, for the message.
void checkReadBack(const std::string& name, const std::string& typed, const std::string& set,
                   const std::string& readBack);

}  // namespace velk
