// FreeCAD CAM tool bits (.fctb, one JSON file per tool) and tool libraries (.fctl, the bits by
// tool number and path).
#pragma once

#include <string>
#include <vector>

#include "ExchangedTool.h"

namespace velk {

// The tool of a bit: its name, its shape as the tool type, its parameters converted from their
// own units. Throws ExchangeFileError naming the file and JSON path of what is wrong.
ExchangedTool readToolBit(const std::string& path);

// The tools of a library, each with the library's tool number. A bit's path is taken relative
// to the library's folder, then to a Bit folder beside it.
std::vector<ExchangedTool> readToolLibrary(const std::string& path);

struct TextFile {
    std::string path;
    std::string text;
};

// The library file at `path` and a bit file beside it for each tool (every tool has a tool
// number), lengths in `units`. What FreeCAD cannot draw is added to `notes`.
std::vector<TextFile> toolLibraryFiles(const std::string& path,
                                       const std::vector<ExchangedTool>& tools, Units units,
                                       std::vector<std::string>& notes);

// The record names a bit carries.
std::vector<std::string> toolBitNames();

}  // namespace velk
