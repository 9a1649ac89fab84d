#include "parameters/ParameterCatalogue.h"

#include <algorithm>

#include "util/TextHelpers.h"

namespace VelkApi::catalogue {

const Catalogue& catalogueOf(MillDrillOperationType type) {
    return tableAt(placeOf(type));
}

namespace {

// The machine-aware bits of a machine block, in the order they are declared.
struct AwareBit {
    int bit;
    const char* name;
    Condition condition;
};

constexpr AwareBit kAwareBits[] = {
    {14, "o_yax_drilling", Condition::YAxis}, {21, "o_cax_index", Condition::YAxis},
    {22, "o_cax_break", Condition::YAxis},    {25, "o_subspindle", Condition::Subspindle},
    {15, "GOH_0", Condition::MachineAware},   {16, "GOH_1", Condition::MachineAware},
    {17, "GOH_2", Condition::MachineAware},   {18, "GOH_3", Condition::MachineAware},
    {19, "GOH_4", Condition::MachineAware},   {20, "GOH_5", Condition::MachineAware},
};

// Bit `bit` of the block's option word, declared under the block's own `when` and kind.
Declaration blockBit(const Row& block, int bit, const char* name, Condition condition) {
    Row row = block;
    row.bit = bit;
    row.name = name;
    row.kind = Kind::Option;
    row.value = 0.0;
    return {text::lowerCased(name), row, condition};
}

void appendMachineBlock(std::vector<Declaration>& list, const Row& block) {
    for (std::size_t i = 0; i < block.plain.count; ++i) {
        const PlainBit& plainBit = block.plain.bits[i];
        list.push_back(blockBit(block, plainBit.bit, plainBit.name, Condition::Plain));
    }
    for (const AwareBit& awareBit : kAwareBits) {
        list.push_back(blockBit(block, awareBit.bit, awareBit.name, awareBit.condition));
    }
}

std::vector<Declaration> declarationsInKeyOrder(const Catalogue& catalogue) {
    std::vector<Declaration> list;
    for (const Row& row : catalogue) {
        if (row.kind == Kind::MachineBlock) {
            appendMachineBlock(list, row);
        } else {
            list.push_back({text::lowerCased(row.name), row, Condition::Always});
        }
    }
    std::stable_sort(list.begin(), list.end(),
                     [](const Declaration& a, const Declaration& b) { return a.key < b.key; });
    return list;
}

}  // namespace

const std::vector<Declaration>& declarationsOf(MillDrillOperationType type) {
    static const auto declarations = [] {
        std::vector<std::vector<Declaration>> lists;
        for (std::size_t place = 0; place < tableCount(); ++place) {
            lists.push_back(declarationsInKeyOrder(tableAt(place)));
        }
        return lists;
    }();
    return declarations[placeOf(type)];
}

bool isDeclared(const Declaration& declaration, MillDrillOperationType type,
                const Machine& machine) {
    const Row& row = declaration.row;
    if (row.when == When::MachineAware && !machine.aware) {
        return false;
    }
    if (row.onlyForKind != kEveryKind && row.onlyForKind != static_cast<int>(type)) {
        return false;
    }
    switch (declaration.condition) {
        case Condition::Plain:
            return !machine.aware;
        case Condition::MachineAware:
            return machine.aware;
        case Condition::YAxis:
            return machine.aware && machine.yAxis;
        case Condition::Subspindle:
            return machine.aware && machine.subspindle;
        default:
            return true;
    }
}

}  // namespace VelkApi::catalogue
