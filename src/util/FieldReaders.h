// The readers of one field of a section line, from the field's start (as text::fieldPosition or
// a text::FieldCursor finds it; kNotFound gives the fallback). Each logs a failure with the text
// of the section's field reader of its type and returns that reader's neutral result.
#pragma once

#include <cstddef>
#include <string>

namespace VelkApi::fields {

int intField(const std::string& line, std::size_t pos, int defaultval);
double doubleField(const std::string& line, std::size_t pos, double defaultval);
std::string stringField(const std::string& line, std::size_t pos, const std::string& defaultval);

}  // namespace VelkApi::fields
