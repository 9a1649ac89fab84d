#include "model/EntryStore.h"

#include <velkapi/LogFile.h>
#include <velkapi/VelkObject.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "model/EntryDefaults.h"
#include "util/ErrorBoundary.h"
#include "util/TextHelpers.h"

namespace VelkApi::detail {

// Rows in key order and in number order, over the whole table, and an index of their names; a
// section takes those below its count.
class EntryTable {
  public:
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};
    // Tables of fewer rows (most a section keeps to itself) are looked through instead.
    static constexpr std::size_t kHashedFrom = 9;

    explicit EntryTable(bool shared) : inTree(shared) {}

    // A table with the first `count` rows of `from`.
    EntryTable(const EntryTable& from, std::size_t count, bool shared) : inTree(shared) {
        rows.reserve(count + 1);
        for (std::size_t i = 0; i < count; ++i) {
            add(from.rows[i]);
        }
    }

    // The row named `lowered`, or kNone.
    std::uint32_t lookup(const std::string& lowered) const {
        if (slots.empty()) {  // a few rows, looked through
            for (std::uint32_t i = 0; i < rows.size(); ++i) {
                if (rows[i].name == lowered) {
                    return i;
                }
            }
            return kNone;
        }
        const std::size_t mask = slots.size() - 1;
        for (std::size_t slot = hashOf(lowered) & mask;; slot = (slot + 1) & mask) {
            const std::uint32_t held = slots[slot];
            if (held == 0) {
                return kNone;
            }
            if (rows[held - 1].name == lowered) {
                return held - 1;
            }
        }
    }

    // Appends a row whose name the table does not hold.
    void add(const EntryRow& next) {
        const auto at = static_cast<std::uint32_t>(rows.size());
        const bool hashed = rows.size() + 1 >= kHashedFrom;
        if (hashed && (rows.size() + 1) * 2 > slots.size()) {
            rehash(std::max<std::size_t>(32, slots.size() * 2));
        }
        rows.push_back(next);
        // Nothing below allocates but byName's insertion; on its failure the row goes again.
        try {
            // Most sections declare in key order: such a key goes last without a search.
            auto place = byName.end();
            if (!byName.empty() && rows[byName.back()].name >= next.name) {
                place = std::lower_bound(byName.begin(), byName.end(), next.name,
                                         [this](std::uint32_t i, const std::string& name) {
                                             return rows[i].name < name;
                                         });
            }
            byName.insert(place, at);
        } catch (...) {
            rows.pop_back();
            throw;
        }
        if (hashed) {
            index(at);
        }
        byNumber.clear();
        if (next.storage == Storage::Text) {
            ++textRows;
        }
    }

    std::vector<EntryRow> rows;
    std::vector<std::uint32_t> byName;
    std::vector<std::uint32_t> byNumber;  // made when asked for, after the last row came
    std::vector<std::pair<std::uint32_t, std::shared_ptr<EntryTable>>> branches;
    std::size_t textRows = 0;
    const bool inTree;  // shared by every section declaring its rows; else one section's own

  private:
    // Eight bytes at a time, each mixed in with a multiplication.
    static std::size_t hashOf(const std::string& name) {
        std::uint64_t hash = name.size();
        for (std::size_t at = 0; at < name.size(); at += 8) {
            std::uint64_t chunk = 0;
            std::memcpy(&chunk, name.data() + at, std::min<std::size_t>(8, name.size() - at));
            hash = (hash ^ chunk) * 0x9E3779B97F4A7C15u;
            hash ^= hash >> 29;
        }
        return static_cast<std::size_t>(hash);
    }

    void rehash(std::size_t size) {
        std::vector<std::uint32_t> grown(size, 0);
        slots.swap(grown);
        for (std::uint32_t i = 0; i < rows.size(); ++i) {
            index(i);
        }
    }

    void index(std::uint32_t row) {
        const std::size_t mask = slots.size() - 1;
        std::size_t slot = hashOf(rows[row].name) & mask;
        while (slots[slot] != 0) {
            slot = (slot + 1) & mask;
        }
        slots[slot] = row + 1;
    }

    std::vector<std::uint32_t> slots;  // row + 1 by the name's hash, open addressing; 0 is free
};

namespace {

// The tree of shared tables. Its rows are bounded: past the bound, and past a bound of branches
// from one table, a section keeps its rows to itself.
constexpr std::size_t kSharedRowBound = std::size_t{1} << 16;
constexpr std::size_t kBranchBound = 64;

struct Tree {
    std::shared_ptr<EntryTable> root = std::make_shared<EntryTable>(true);
    std::size_t sharedRows = 0;
};

Tree& tree() {
    static Tree shared;
    return shared;
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// A lower-cased name against a key of any case.
bool sameName(const std::string& lowered, const std::string& key) {
    return lowered.size() == key.size() && std::equal(lowered.begin(), lowered.end(), key.begin(),
                                                      [](char a, char b) { return a == lower(b); });
}

bool sameRow(const EntryRow& row, const Declaration& declaration) {
    return row.nr == declaration.nr && row.bit == declaration.bit && row.type == declaration.type &&
           row.axis == declaration.axis && row.storage == declaration.storage &&
           sameName(row.name, declaration.name);
}

bool sameRows(const EntryRow& a, const EntryRow& b) {
    return a.nr == b.nr && a.bit == b.bit && a.type == b.type && a.axis == b.axis &&
           a.storage == b.storage && a.name == b.name;
}

// Two defaults of one type alike to the bit (-0.0 is written otherwise than 0.0).
bool sameNumber(ValueDataType type, Cell a, Cell b) {
    switch (type) {
        case ValueDataType::Double:
            return std::memcmp(&a.real, &b.real, sizeof a.real) == 0;
        case ValueDataType::Int:
            return a.integer == b.integer;
        default:
            return a.flag == b.flag;
    }
}

// Rows whose names are data (geometry references) or whose values are a caller's own are kept
// by their section alone.
bool isShareable(const EntryRow& row) {
    return row.storage != Storage::Boxed && row.storage != Storage::Object;
}

EntryRow rowOf(const Declaration& declaration) {
    EntryRow row;
    row.name = text::lowerCased(declaration.name);
    row.nr = declaration.nr;
    row.bit = declaration.bit;
    row.type = declaration.type;
    row.axis = declaration.axis;
    row.storage = declaration.storage;
    return row;
}

// Room for `count` more without a later allocation, growing as push_back would: what follows
// then cannot fail halfway.
template <typename Vector>
void makeRoom(Vector& vector, std::size_t count) {
    if (vector.capacity() - vector.size() < count) {
        vector.reserve(std::max(vector.size() * 2, vector.size() + count));
    }
}

// Copies a number kept in place into *target, an object of the entry's type; returns target.
void* copyNumber(ValueDataType type, Cell cell, void* target) {
    switch (type) {
        case ValueDataType::Double:
            *static_cast<double*>(target) = cell.real;
            break;
        case ValueDataType::Int:
            *static_cast<int*>(target) = cell.integer;
            break;
        default:
            *static_cast<bool*>(target) = cell.flag;
            break;
    }
    return target;
}

// As a VelkObjectValue gives its object: a null target gets a new copy the caller deletes.
void* copyText(const PackedText& text, void* target) {
    static_cast<std::string*>(target)->assign(text.data(), text.size());
    return target;
}

void* copyObject(const VelkObject& object, void* target) {
    if (target == nullptr) {
        return new VelkObject(object);
    }
    *static_cast<VelkObject*>(target) = object;
    return target;
}

// As an ActionValue gives its action: nothing for a null target.
void* copyAction(const Action& action, void* target) {
    if (target == nullptr) {
        return nullptr;
    }
    *static_cast<Action*>(target) = action;
    return target;
}

void logNullReference(const char* operation) {
    LogFile::instance().error(std::string("NULLREFERENCE-Error in SectionValue::") + operation);
}

// The value of an entry kept in place or among the texts, for a SectionValue made of it.
class CellValue : public Value {
  public:
    explicit CellValue(EntryRef of)
        : Value(static_cast<int>(of.getValueDataType()) - 1, nullptr), entry(of) {}
    void* getValue(void* target) const override { return entry.getValue(target); }
    void setValue(const void* source) override { entry.setValue(source); }
    std::string getValueAsString() const override { return entry.getValueAsString(); }

  private:
    EntryRef entry;
};

std::shared_ptr<Value> defaultObject(const EntryRef& entry) {
    switch (entry.getValueDataType()) {
        case ValueDataType::Double: {
            double fallback = 0.0;
            return std::make_shared<DoubleValue>(
                *static_cast<double*>(entry.getDefault(&fallback)));
        }
        case ValueDataType::Int: {
            int fallback = 0;
            return std::make_shared<IntValue>(*static_cast<int*>(entry.getDefault(&fallback)));
        }
        case ValueDataType::Bool: {
            bool fallback = false;
            return std::make_shared<BoolValue>(*static_cast<bool*>(entry.getDefault(&fallback)));
        }
        case ValueDataType::VelkObject: {
            VelkObject fallback;
            entry.getDefault(&fallback);
            return std::make_shared<VelkObjectValue>(fallback);
        }
        case ValueDataType::Action: {
            Action fallback;
            entry.getDefault(&fallback);
            return std::make_shared<ActionValue>(fallback);
        }
        default: {
            std::string fallback;
            entry.getDefault(&fallback);
            return std::make_shared<StringValue>(fallback);
        }
    }
}

}  // namespace

// ---- one entry

const EntryRow& EntryRef::row() const {
    return store->table->rows[index];
}

Storage EntryRef::storage() const {
    return row().storage;
}

const std::string& EntryRef::name() const {
    return row().name;
}

int EntryRef::getNr() const {
    return row().nr;
}

int EntryRef::getBit() const {
    return row().bit;
}

ValueDataType EntryRef::getValueDataType() const {
    return row().type;
}

bool EntryRef::isAxis() const {
    return row().axis;
}

void* EntryRef::getValue(void* target) const {
    const Cell cell = store->cells[index];
    switch (storage()) {
        case Storage::Boxed: {
            const std::unique_ptr<Value>& value = store->boxedOf(index).value;
            if (!value) {
                logNullReference("getValue");
                return nullptr;
            }
            return value->getValue(target);
        }
        case Storage::Text:
            copyText(store->texts[cell.index], target);
            return target;
        case Storage::Object:
            return copyObject(*store->objectOf(index, false), target);
        case Storage::Action:
            return copyAction(*store->actionOf(index, false), target);
        default:
            break;
    }
    return copyNumber(getValueDataType(), cell, target);
}

void EntryRef::setValue(const void* source) const {
    Cell& cell = store->cells[index];
    switch (storage()) {
        case Storage::Boxed: {
            const std::unique_ptr<Value>& value = store->boxedOf(index).value;
            if (!value) {
                logNullReference("setValue");
                return;
            }
            value->setValue(source);
            return;
        }
        case Storage::Text:
            store->texts[cell.index] = *static_cast<const std::string*>(source);
            return;
        case Storage::Object:
            if (source != nullptr) {
                *store->objectOf(index, false) = *static_cast<const VelkObject*>(source);
            }
            return;
        case Storage::Action:
            if (source != nullptr) {
                *store->actionOf(index, false) = *static_cast<const Action*>(source);
            }
            return;
        default:
            break;
    }
    switch (getValueDataType()) {
        case ValueDataType::Double:
            cell.real = *static_cast<const double*>(source);
            break;
        case ValueDataType::Int:
            cell.integer = *static_cast<const int*>(source);
            break;
        default:
            cell.flag = *static_cast<const bool*>(source);
            break;
    }
}

std::string EntryRef::getValueAsString() const {
    const Cell cell = store->cells[index];
    switch (storage()) {
        case Storage::Boxed: {
            const std::unique_ptr<Value>& value = store->boxedOf(index).value;
            if (!value) {
                logNullReference("getValueAsString");
                return "";
            }
            return value->getValueAsString();
        }
        case Storage::Text:
            return store->texts[cell.index].str();
        case Storage::Object:
            return store->objectOf(index, false)->getName();
        case Storage::Action:
            return store->actionOf(index, false)->getCommand();
        default:
            break;
    }
    switch (getValueDataType()) {
        case ValueDataType::Double:
            return DoubleValue(cell.real).getValueAsString();
        case ValueDataType::Int:
            return IntValue(cell.integer).getValueAsString();
        default:
            return cell.flag ? "true" : "false";
    }
}

void* EntryRef::getDefault(void* target) const {
    const EntryRow& entryRow = row();
    if (entryRow.storage == Storage::Boxed) {
        const std::unique_ptr<Value>& fallback = store->boxedOf(index).fallback;
        if (!fallback) {
            logNullReference("getDefault");
            return nullptr;
        }
        return fallback->getValue(target);
    }
    if (entryRow.storage == Storage::Object) {
        return copyObject(*store->objectOf(index, true), target);
    }
    if (entryRow.storage == Storage::Action) {
        return copyAction(*store->actionOf(index, true), target);
    }
    const Cell* own = store->ownFallbackOf(index);
    if (entryRow.storage == Storage::Text) {
        return copyText(own ? store->texts[own->index] : entryRow.fallbackText, target);
    }
    return copyNumber(entryRow.type, own ? *own : entryRow.fallback, target);
}

void EntryRef::clearValue() const {
    const int marker = isAxis() ? kClearedAxis : kUnsetInt;
    if (storage() == Storage::Boxed && !store->boxedOf(index).value) {
        return;
    }
    if (getValueDataType() == ValueDataType::Int) {
        setValue(&marker);
    } else if (getValueDataType() == ValueDataType::Double) {
        const double cleared = marker;
        setValue(&cleared);
    }
}

void EntryRef::setValueToDefault() const {
    setToDefault(*this, getValueDataType());
}

// ---- the entries of a section

EntryStore::EntryStore() : table(tree().root) {}

EntryStore::~EntryStore() = default;

bool EntryStore::addNumber(const Declaration& declaration, Cell fallback, Cell value) {
    const bool declared = declare(declaration, [&] {
        EntryRow row = rowOf(declaration);
        row.fallback = fallback;
        return row;
    });
    if (!declared) {
        return false;
    }
    const auto at = static_cast<std::uint32_t>(cells.size());
    const bool ownFallback = !sameNumber(declaration.type, table->rows[at].fallback, fallback);
    growCells();
    if (ownFallback) {
        std::vector<std::pair<std::uint32_t, Cell>>& own = rare().ownFallbacks;
        makeRoom(own, 1);
        own.emplace_back(at, fallback);
    }
    cells.push_back(value);
    return true;
}

bool EntryStore::addText(const Declaration& declaration, std::string fallback, std::string value) {
    const bool declared = declare(declaration, [&] {
        EntryRow row = rowOf(declaration);
        row.fallbackText = fallback;
        return row;
    });
    if (!declared) {
        return false;
    }
    const auto at = static_cast<std::uint32_t>(cells.size());
    const bool ownFallback = table->rows[at].fallbackText != fallback;
    growCells();
    growTexts(ownFallback ? 2 : 1);
    if (ownFallback) {
        std::vector<std::pair<std::uint32_t, Cell>>& ownFallbacks = rare().ownFallbacks;
        makeRoom(ownFallbacks, 1);
        Cell own{};
        own.index = static_cast<std::uint32_t>(texts.size());
        texts.emplace_back(fallback);
        ownFallbacks.emplace_back(at, own);
    }
    Cell cell{};
    cell.index = static_cast<std::uint32_t>(texts.size());
    texts.emplace_back(value);
    cells.push_back(cell);
    return true;
}

bool EntryStore::addObject(const Declaration& declaration, VelkObject value, VelkObject fallback) {
    return addPair(declaration, extra().objects, std::move(value), std::move(fallback));
}

bool EntryStore::addAction(const Declaration& declaration, Action value, Action fallback) {
    return addPair(declaration, extra().actions, std::move(value), std::move(fallback));
}

template <typename T>
bool EntryStore::addPair(const Declaration& declaration, std::vector<T>& kept, T value,
                         T fallback) {
    if (!declare(declaration, [&] { return rowOf(declaration); })) {
        return false;
    }
    growCells();
    makeRoom(kept, 2);
    Cell cell{};
    cell.index = static_cast<std::uint32_t>(kept.size());
    kept.push_back(std::move(value));
    kept.push_back(std::move(fallback));
    cells.push_back(cell);
    return true;
}

bool EntryStore::addBoxed(const Declaration& declaration, std::unique_ptr<Value> value,
                          std::unique_ptr<Value> fallback) {
    if (!declare(declaration, [&] { return rowOf(declaration); })) {
        return false;
    }
    growCells();
    std::vector<BoxedPair>& boxed = rare().boxed;
    makeRoom(boxed, 1);
    Cell cell{};
    cell.index = static_cast<std::uint32_t>(boxed.size());
    boxed.push_back({std::move(value), std::move(fallback)});
    cells.push_back(cell);
    return true;
}

EntryStore::Extras& EntryStore::extra() {
    if (!extras) {
        extras = std::make_unique<Extras>();
    }
    return *extras;
}

EntryStore::Rare& EntryStore::rare() {
    Extras& more = extra();
    if (!more.rare) {
        more.rare = std::make_unique<Rare>();
    }
    return *more.rare;
}

const BoxedPair& EntryStore::boxedOf(std::uint32_t entry) const {
    return extras->rare->boxed[cells[entry].index];
}

VelkObject* EntryStore::objectOf(std::uint32_t entry, bool fallback) const {
    return &extras->objects[cells[entry].index + (fallback ? 1 : 0)];
}

Action* EntryStore::actionOf(std::uint32_t entry, bool fallback) const {
    return &extras->actions[cells[entry].index + (fallback ? 1 : 0)];
}

const Cell* EntryStore::ownFallbackOf(std::uint32_t entry) const {
    if (!extras || !extras->rare) {
        return nullptr;
    }
    for (const auto& [at, fallback] : extras->rare->ownFallbacks) {
        if (at == entry) {
            return &fallback;
        }
    }
    return nullptr;
}

// While a section declares the rows of its table, its cells and texts grow to what the table
// holds and no further; past the table, as push_back would.
void EntryStore::growCells() {
    if (cells.size() < cells.capacity()) {
        return;
    }
    std::size_t room = std::max<std::size_t>(cells.size() * 2, 4);
    if (cells.size() < table->rows.size()) {
        room = std::min(room, table->rows.size());
    }
    cells.reserve(room);
}

void EntryStore::growTexts(std::size_t count) {
    if (texts.capacity() - texts.size() >= count) {
        return;
    }
    std::size_t room = std::max<std::size_t>(texts.size() * 2, 4);
    if (texts.size() < table->textRows) {
        room = std::min(room, table->textRows);
    }
    texts.reserve(std::max(room, texts.size() + count));
}

// Makes row cells.size() of the table the declared one: the row the table has there when it is
// alike, a branch's when the table has another, a new last row otherwise. False, and nothing
// changed, when the section has an entry of that name. The row is made only when it is new.
template <typename MakeRow>
bool EntryStore::declare(const Declaration& declaration, MakeRow&& makeRow) {
    // A table's names are all different, so the row the section follows is never one it has.
    if (follows(declaration)) {
        return true;
    }
    if (find(declaration.name)) {
        return false;
    }
    const EntryRow candidate = makeRow();
    if (cells.size() < table->rows.size()) {
        branch(candidate);
        return true;
    }
    const bool shareable = isShareable(candidate);
    if (table->inTree && !(shareable && tree().sharedRows < kSharedRowBound)) {
        goOwn();
    }
    append(candidate);
    return true;
}

bool EntryStore::follows(const Declaration& declaration) const {
    return cells.size() < table->rows.size() && sameRow(table->rows[cells.size()], declaration);
}

void EntryStore::branch(const EntryRow& next) {
    const std::size_t at = cells.size();
    for (const auto& [from, taken] : table->branches) {
        if (from == at && sameRows(taken->rows[at], next)) {
            table = taken;
            return;
        }
    }
    Tree& shared = tree();
    const bool inTree = table->inTree && isShareable(next) &&
                        table->branches.size() < kBranchBound &&
                        shared.sharedRows + at < kSharedRowBound;
    auto made = std::make_shared<EntryTable>(*table, at, inTree);
    if (inTree) {
        table->branches.emplace_back(static_cast<std::uint32_t>(at), made);
        shared.sharedRows += at;
    }
    table = std::move(made);
    append(next);
}

void EntryStore::goOwn() {
    table = std::make_shared<EntryTable>(*table, cells.size(), false);
}

void EntryStore::append(const EntryRow& next) {
    table->add(next);
    if (table->inTree) {
        ++tree().sharedRows;
    }
}

void EntryStore::copyEntriesOf(const EntryStore& model) {
    if (!cells.empty() || model.holdsBoxed()) {
        throw std::logic_error("entries are copied into an empty section, and none boxed");
    }
    std::unique_ptr<Extras> copiedExtras;
    if (model.extras) {
        copiedExtras = std::make_unique<Extras>();
        copiedExtras->objects = model.extras->objects;
        copiedExtras->actions = model.extras->actions;
        if (model.extras->rare) {
            copiedExtras->rare = std::make_unique<Rare>();
            copiedExtras->rare->ownFallbacks = model.extras->rare->ownFallbacks;
        }
    }
    std::vector<PackedText> copiedTexts = model.texts;
    cells = model.cells;
    texts.swap(copiedTexts);
    extras = std::move(copiedExtras);
    table = model.table;
}

const void* EntryStore::sharedRows() const {
    return table->inTree ? table.get() : nullptr;
}

bool EntryStore::holdsBoxed() const {
    return extras && extras->rare && !extras->rare->boxed.empty();
}

EntryRef EntryStore::find(const std::string& key) {
    // Most keys asked for are lower-case already and are compared as they are.
    const bool lowerCase =
        std::none_of(key.begin(), key.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    return lowerCase ? findLowered(key) : findLowered(text::lowerCased(key));
}

EntryRef EntryStore::findLowered(const std::string& key) {
    // Callers often ask for one key several times in a row (its type, then its value).
    if (lastFound < cells.size() && table->rows[lastFound].name == key) {
        return {this, lastFound};
    }
    const std::uint32_t found = table->lookup(key);
    if (found == EntryTable::kNone || found >= cells.size()) {
        return {};
    }
    lastFound = found;
    return {this, found};
}

std::vector<EntryRef> EntryStore::byName() {
    std::vector<EntryRef> entries;
    entries.reserve(cells.size());
    for (std::uint32_t i : table->byName) {
        if (i < cells.size()) {
            entries.emplace_back(this, i);
        }
    }
    return entries;
}

std::vector<EntryRef> EntryStore::byNumber() {
    EntryTable& rows = *table;
    if (rows.byNumber.size() != rows.rows.size()) {
        rows.byNumber = rows.byName;
        std::stable_sort(rows.byNumber.begin(), rows.byNumber.end(),
                         [&rows](std::uint32_t a, std::uint32_t b) {
                             return rows.rows[a].nr < rows.rows[b].nr;
                         });
    }
    std::vector<EntryRef> entries;
    entries.reserve(cells.size());
    for (std::uint32_t i : rows.byNumber) {
        if (i < cells.size()) {
            entries.emplace_back(this, i);
        }
    }
    return entries;
}

SectionValue* EntryStore::view(EntryRef entry) {
    std::vector<std::unique_ptr<SectionValue>>& views = rare().views;
    if (views.size() < cells.size()) {
        views.resize(cells.size());
    }
    const std::uint32_t at = entry.index;
    if (!views[at]) {
        std::shared_ptr<Value> value;
        std::shared_ptr<Value> fallback;
        if (entry.storage() == Storage::Boxed) {
            // The section keeps owning its boxed values; the view, which it owns as well, only
            // refers to them.
            const BoxedPair& pair = boxedOf(at);
            value = std::shared_ptr<Value>(std::shared_ptr<Value>(), pair.value.get());
            fallback = std::shared_ptr<Value>(std::shared_ptr<Value>(), pair.fallback.get());
        } else {
            value = std::make_shared<CellValue>(entry);
            fallback = defaultObject(entry);
        }
        views[at] = std::make_unique<SectionValue>(entry.getNr(), entry.getBit(), entry.name(),
                                                   std::move(value), std::move(fallback),
                                                   entry.getValueDataType(), entry.isAxis());
    }
    return views[at].get();
}

void EntryStore::clear() {
    extras.reset();
    texts.clear();
    cells.clear();
    table = tree().root;
}

}  // namespace VelkApi::detail
