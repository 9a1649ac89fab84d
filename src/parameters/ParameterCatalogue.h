// The parameter catalogue: the entries a kind's "Parameter" section declares, derived from the
// kind's table (ParameterTables.h). ParameterSection::Init declares them from `declarationsOf`:
// the table's rows, in the entry map's key order.
//
// A machine block, machine-aware, declares the Y-axis bits (when the current channel has a
// Y axis), the subspindle bit (when there is a subspindle) and GOH_0 .. GOH_5; otherwise it
// declares the row's plain bits, in the row's own order.
#pragma once

#include <string>
#include <vector>

#include <velkapi/MillDrillOperationType.h>

#include "parameters/ParameterTables.h"

namespace VelkApi::catalogue {

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
