// The value lines of a parameter section, shared by the record form (ParameterSection) and the
// text form (ExpertParameterSection).
//
// The entries are taken in number order. An entry numbered n lies on value line n / 100 up to
// the layout's last numbered line; beyond it, on the line of the entry before it. Its field is
// the next one of that line: the field position n % 100 is not consulted. Option bits that share
// a number, one after the other, make one field: the sum of 2^(bit-1) over their true bits.
// Every field is followed by one blank; a text is written as it stands, the empty text as
// kEmptyText.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "model/EntryStore.h"

namespace VelkApi::parameters {

// The field of an empty text, which the host reads as "not set".
constexpr const char* kEmptyText = "2147483647";

struct LineLayout {
    int lastNumberedLine;    // from 100 * (this + 1) on, the line of the entry before
    bool signedOptionWords;  // an option word of 32 bits written as a signed or unsigned int
};

// One field: the entry sorted[first], or the option group sorted[first] .. sorted[end - 1].
struct Field {
    std::size_t first;
    std::size_t end;
    int line;
};

// The fields of entries sorted by number, in order.
std::vector<Field> fieldsOf(const std::vector<detail::EntryRef>& sorted, const LineLayout& layout);

// Value lines 0 .. count - 1 of the entries sorted by number; fields of later lines are left out.
std::vector<std::string> composeValueLines(const std::vector<detail::EntryRef>& sorted,
                                           std::size_t count, const LineLayout& layout);

// The number of lines that hold every field, plus one: the record's name line before them, or
// the line the expert form's caller adds after them.
int linesHolding(const std::vector<Field>& fields);

// Each option entry of a group becomes true exactly when its bit is set in `word`.
void setOptionWord(const std::vector<detail::EntryRef>& sorted, const Field& field,
                   std::uint32_t word);

}  // namespace VelkApi::parameters
