#include "parameters/ParameterLines.h"

#include <algorithm>
#include <charconv>

#include "model/SharedRowsMemo.h"
#include "util/TextHelpers.h"

namespace VelkApi::parameters {

namespace {

// The bit an option entry owns in its option word; none for a bit outside 1..32.
std::uint32_t bitMask(int bit) {
    return bit >= 1 && bit <= 32 ? std::uint32_t{1} << (bit - 1) : 0;
}

bool isOptionOf(const detail::EntryRef& entry, int number) {
    return entry->getValueDataType() == ValueDataType::Bool && entry->getNr() == number;
}

int lineOf(int number, int previousLine, int lastNumberedLine) {
    const int line = number < 100 ? 0 : number / 100;
    return line <= lastNumberedLine ? line : previousLine;
}

// The sum of 2^(bit-1) over the true bits of an option group.
std::uint32_t optionWord(const std::vector<detail::EntryRef>& sorted, const Field& field) {
    std::uint32_t word = 0;
    for (std::size_t i = field.first; i < field.end; ++i) {
        bool set = false;
        sorted[i]->getValue(&set);
        if (set) {
            word += bitMask(sorted[i]->getBit());
        }
    }
    return word;
}

template <typename Number>
void appendNumber(std::string& line, Number number) {
    char buffer[16];
    line.append(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
}

// Appends one field and its blank; nothing for entries that are not written. A text is written
// as it stands, the empty text as the "not set" marker.
void appendField(std::string& line, const std::vector<detail::EntryRef>& sorted, const Field& field,
                 const LineLayout& layout) {
    const detail::EntryRef& entry = sorted[field.first];
    switch (entry.getValueDataType()) {
        case ValueDataType::Bool: {
            const std::uint32_t word = optionWord(sorted, field);
            // The bits of a full word wrap into the sign of the host's int.
            if (layout.signedOptionWords) {
                appendNumber(line, static_cast<std::int32_t>(word));
            } else {
                appendNumber(line, word);
            }
            break;
        }
        case ValueDataType::Double: {
            double value = 0.0;
            entry.getValue(&value);
            text::appendGeneral6(line, value);
            break;
        }
        case ValueDataType::Int: {
            int value = 0;
            entry.getValue(&value);
            text::appendInt(line, value);
            break;
        }
        case ValueDataType::String: {
            std::string value;
            entry.getValue(&value);
            line += value.empty() ? kEmptyText : value;
            break;
        }
        default:
            return;
    }
    line += ' ';
}

}  // namespace

namespace {

std::vector<Field> walkFields(const std::vector<detail::EntryRef>& sorted,
                              const LineLayout& layout) {
    std::vector<Field> fields;
    int line = 0;
    for (std::size_t first = 0; first < sorted.size();) {
        const int number = sorted[first]->getNr();
        std::size_t end = first + 1;
        if (sorted[first]->getValueDataType() == ValueDataType::Bool) {
            while (end < sorted.size() && isOptionOf(sorted[end], number)) {
                ++end;
            }
        }
        line = lineOf(number, line, layout.lastNumberedLine);
        fields.push_back({first, end, line});
        first = end;
    }
    return fields;
}

}  // namespace

std::vector<Field> fieldsOf(const std::vector<detail::EntryRef>& sorted, const LineLayout& layout) {
    if (sorted.empty()) {
        return {};
    }
    static detail::SharedRowsMemo<std::vector<Field>> fields;
    const int variant = layout.lastNumberedLine * 2 + (layout.signedOptionWords ? 1 : 0);
    return fields.of(*sorted.front().owner(), variant, [&] { return walkFields(sorted, layout); });
}

std::vector<std::string> composeValueLines(const std::vector<detail::EntryRef>& sorted,
                                           std::size_t count, const LineLayout& layout) {
    std::vector<std::string> lines(count);
    for (const Field& field : fieldsOf(sorted, layout)) {
        if (field.line >= 0 && static_cast<std::size_t>(field.line) < count) {
            appendField(lines[static_cast<std::size_t>(field.line)], sorted, field, layout);
        }
    }
    return lines;
}

int linesHolding(const std::vector<Field>& fields) {
    int lastLine = 0;
    for (const Field& field : fields) {
        lastLine = std::max(lastLine, field.line);
    }
    return lastLine + 2;
}

void setOptionWord(const std::vector<detail::EntryRef>& sorted, const Field& field,
                   std::uint32_t word) {
    for (std::size_t i = field.first; i < field.end; ++i) {
        const std::uint32_t mask = bitMask(sorted[i]->getBit());
        const bool set = mask != 0 && (word & mask) == mask;
        sorted[i]->setValue(&set);
    }
}

}  // namespace VelkApi::parameters
