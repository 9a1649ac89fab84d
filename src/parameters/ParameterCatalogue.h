// The parameter catalogue: for each kind of operation, the parameters its "Parameter" section
// holds, as a table of rows (number, bit, name, kind, default) in the order they are declared.
// ParameterSection::Init walks the table of its kind.
//
// Besides plain entries a table has
//  - rows that exist only for machine-aware operations (operations inside a running host with
//    turning-driven tools),
//  - rows that belong to one kind only, where two kinds share a table,
//  - the machine block: one row standing for the machine-dependent option bits of one option
//    word. Machine-aware, it declares the Y-axis bits (when the current channel has a Y axis),
//    the subspindle bit (when there is a subspindle) and GOH_0 .. GOH_5; otherwise it declares
//    the row's plain bits, in the row's own order (which differs between kinds).
#pragma once

#include <array>
#include <cstddef>

#include <velkapi/MillDrillOperationType.h>

namespace VelkApi::catalogue {

enum class Kind {
    Int,
    Double,
    Axis,    // a double stored as an axis value
    String,  // `text` is its default, null for none
    Option,  // bit `bit` of option word `number`
    MachineBlock,
};

enum class When {
    Always,
    MachineAware,  // only for machine-aware operations
};

// A default: a number, or one of the two setup values read when the catalogue is declared.
struct Default {
    enum class Source { Number, SetupClearance, SetupRetract };

    // Not explicit: a table writes a number default as the number.
    constexpr Default(double value) : source(Source::Number), number(value) {}
    constexpr explicit Default(Source from) : source(from), number(0.0) {}

    Source source;
    double number;
};

// One option bit of a machine block's plain form.
struct PlainBit {
    int bit;
    const char* name;
};

struct PlainBits {
    std::array<PlainBit, 4> bits;
    std::size_t count;
};

// Any kind: the row is declared for every kind that uses the table.
constexpr int kEveryKind = -1;

struct Row {
    int number;
    int bit;
    const char* name;
    Kind kind;
    Default value;
    const char* text;
    When when;
    int onlyForKind;
    PlainBits plain;
};

// The rows of one kind, and the number of lines its section takes in the record (the kind's
// name line included) for plain and for machine-aware operations.
struct Catalogue {
    const Row* rows;
    std::size_t size;
    int plainLineCount;
    int awareLineCount;

    const Row* begin() const { return rows; }
    const Row* end() const { return rows + size; }
};

// The catalogue of `type`; kinds without one of their own get the single entry "Dummy".
const Catalogue& catalogueOf(MillDrillOperationType type);

}  // namespace VelkApi::catalogue
