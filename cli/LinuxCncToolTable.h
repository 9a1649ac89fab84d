// LinuxCNC tool tables (.tbl): one tool a line, words of a letter and a number in any order
// (T tool number, P pocket, D diameter, Z length offset, X Y A B C U V W offsets, I J Q lathe
// data) and a comment after ";", in the machine's units.
#pragma once

#include <string>
#include <vector>

#include "ExchangedTool.h"

namespace velk {

// Every tool of the table, lengths converted from `units` to mm; the comment is the tool's
// description, words the record has no place for are kept. Throws ExchangeFileError naming the
// file and line of the first word that is not a letter and a number.
std::vector<ExchangedTool> readToolTable(const std::string& path, Units units);

// The table of the tools, one line each: T, P (the pocket, else the tool number), D, Z and the
// description as the comment, lengths in `units`. Every tool has a tool number.
std::string toolTableText(const std::vector<ExchangedTool>& tools, Units units);

// The record names a table carries.
std::vector<std::string> toolTableNames();

}  // namespace velk
