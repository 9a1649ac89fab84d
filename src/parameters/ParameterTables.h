// The parameter tables: for each kind of operation, the rows of the parameters its "Parameter"
// section holds (number, bit, name, kind, default) in the order they are declared, and the
// number of lines the section takes in the record. Kinds with the same parameters share a
// table; one index gives each table the kinds that read it.
//
// Besides plain entries a table has
//  - rows that exist only for machine-aware operations (operations inside a running host with
//    turning-driven tools),
//  - rows that belong to one kind only, where two kinds share a table,
//  - the machine block: one row standing for the machine-dependent option bits of one option
//    word, with the bits of its plain form in the row's own order (which differs between
//    kinds). ParameterCatalogue.h says what a machine block declares.
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

// The rows of one table, and the number of lines its section takes in the record (the kind's
// name line included) for plain and for machine-aware operations.
struct Catalogue {
    const Row* rows;
    std::size_t size;
    int plainLineCount;
    int awareLineCount;

    const Row* begin() const { return rows; }
    const Row* end() const { return rows + size; }
};

// The number of tables in the index; each has its place there, from 0.
std::size_t tableCount();

// The table at `place` in the index.
const Catalogue& tableAt(std::size_t place);

// The place in the index of the table `type` reads: the table that lists the kind, or the
// table with the single entry "Dummy" for a kind that none lists.
std::size_t placeOf(MillDrillOperationType type);

}  // namespace VelkApi::catalogue
