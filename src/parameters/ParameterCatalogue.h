// The parameter catalogue: for each kind of operation, the parameters its "Parameter" section
// holds, as a table of rows (number, bit, name, kind, default) in the order they are declared.
// ParameterSection::Init declares them from `declarationsOf`: the same rows, in the entry map's
// key order.
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
#include <string>
#include <vector>

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

// What, beside the row's own `when` and `onlyForKind`, decides whether a declaration is made:
// the machine block's bits depend on the operation and its machine.
enum class Condition {
    Always,
    Plain,         // a plain bit of a machine block: plain operations only
    MachineAware,  // GOH_0 .. GOH_5 of a machine block
    YAxis,         // machine-aware, and the current channel has a Y axis
    Subspindle,    // machine-aware, and the machine has a subspindle
};

// One entry a catalogue may declare: `row` as an entry row (a machine block's bit is an Option
// row of the block's number, default false), `key` its name lower-cased.
struct Declaration {
    std::string key;
    Row row;
    Condition condition;
};

// Every entry the catalogue of `type` may declare, built once per catalogue, ordered by key and,
// for a key declared twice, in the table's order. Declared in this order, each entry goes to the
// end of the section's entry map, and a key's first declaration keeps it.
const std::vector<Declaration>& declarationsOf(MillDrillOperationType type);

// What an operation's declarations depend on besides its kind.
struct Machine {
    bool aware;       // a machine-aware operation
    bool yAxis;       // its current channel has a Y axis
    bool subspindle;  // its machine has a subspindle
};

// True when an operation of `type` on `machine` declares `declaration`.
bool isDeclared(const Declaration& declaration, MillDrillOperationType type,
                const Machine& machine);

}  // namespace VelkApi::catalogue
