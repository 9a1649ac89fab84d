// How a section keeps its entries.
//
// An entry's description (name, number, bit, type, axis flag, default) is one row of an entry
// table; its value is one 8-byte cell of its section. Sections of one kind declare the same rows
// in the same order, so the rows are shared: the tables form a tree of append-only row lists, and
// a section that declares the rows of a table it already follows only moves a count forward. A
// section whose rows depart from its table goes on in a branch of it, taken from the branches
// already made or made once for every later section declaring the same.
//
// Texts, geometry references and actions are kept beside the cells (a reference's and an
// action's default with it); values of a caller's own Value kinds stay boxed as handed over. A
// default that differs from its row's (the header's, which come from the record) is kept by its
// section. Rows whose names are data (geometry references) or whose values are boxed are kept in
// a table of their section alone. The shared tables live as long as the process and, like the
// library's other process-wide state, are used from the host's one thread.
#pragma once

#include <velkapi/ActionSection.h>
#include <velkapi/SectionValue.h>
#include <velkapi/Value.h>
#include <velkapi/VelkObject.h>

#include "model/PackedText.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace VelkApi::detail {

// Where an entry's value lives: in its cell, among the section's texts, objects or actions (its
// default beside it), or boxed.
enum class Storage : std::uint8_t { Number, Text, Object, Action, Boxed };

// One value: a double, an int or a bool in place, or the index of a text, of an object or action
// pair, or of a boxed pair.
union Cell {
    double real;
    int integer;
    bool flag;
    std::uint32_t index;
};

struct EntryRow {
    std::string name;  // lower-cased
    int nr = 0;
    int bit = 0;
    ValueDataType type = ValueDataType::None;
    bool axis = false;
    Storage storage = Storage::Number;
    Cell fallback{};          // the default of a Number entry
    PackedText fallbackText;  // the default of a Text entry
};

// What one adding operation declares: the row without its default, and the default and value.
struct Declaration {
    int nr;
    int bit;
    const std::string& name;  // as the caller gave it, of any case
    ValueDataType type;
    bool axis;
    Storage storage;
};

class EntryTable;

// A value and default handed over as Value objects.
struct BoxedPair {
    std::unique_ptr<Value> value;
    std::unique_ptr<Value> fallback;
};

class EntryStore;

// One entry of a section: what SectionValue offers, read from the section's row and cell.
// Empty (false) where a section has no such entry. Pointer-like, so code walks entries as it
// walks pointers to them.
class EntryRef {
  public:
    EntryRef() = default;
    EntryRef(EntryStore* owner, std::uint32_t at) : store(owner), index(at) {}

    explicit operator bool() const { return store != nullptr; }
    // Its place among its section's entries, and its section's entries.
    std::uint32_t position() const { return index; }
    const EntryStore* owner() const { return store; }
    const EntryRef* operator->() const { return this; }
    const EntryRef& operator*() const { return *this; }

    const std::string& name() const;
    std::string getName() const { return name(); }
    int getNr() const;
    int getBit() const;
    ValueDataType getValueDataType() const;
    bool isAxis() const;

    void* getValue(void* target) const;
    void setValue(const void* source) const;
    std::string getValueAsString() const;
    void* getDefault(void* target) const;
    void clearValue() const;
    void setValueToDefault() const;

  private:
    friend class EntryStore;

    const EntryRow& row() const;
    Storage storage() const;

    EntryStore* store = nullptr;
    std::uint32_t index = 0;
};

// A section's entries. Entry i has row i of `table` and cell i.
class EntryStore {
  public:
    EntryStore();
    ~EntryStore();
    EntryStore(const EntryStore&) = delete;
    EntryStore& operator=(const EntryStore&) = delete;

    std::size_t size() const { return cells.size(); }
    // True when the two sections' entries are described by the same rows.
    bool sharesRowsWith(const EntryStore& other) const { return table == other.table; }
    // The shared rows this section follows, which stay as they are while the process lives;
    // null when its rows are its own. With size(), it names what the entries are: what is
    // worked out from the rows of one such pair holds for every section of the same pair.
    const void* sharedRows() const;

    // Declares an entry unless its name is taken; false when it was taken.
    bool addNumber(const Declaration& declaration, Cell fallback, Cell value);
    bool addText(const Declaration& declaration, std::string fallback, std::string value);
    bool addObject(const Declaration& declaration, VelkObject value, VelkObject fallback);
    bool addAction(const Declaration& declaration, Action value, Action fallback);
    bool addBoxed(const Declaration& declaration, std::unique_ptr<Value> value,
                  std::unique_ptr<Value> fallback);

    // This store, still empty, takes the entries of `model`, which holds none boxed: the same
    // rows, values and defaults as declaring them again would give.
    void copyEntriesOf(const EntryStore& model);
    bool holdsBoxed() const;

    // The entry of `key` (lower-cased or not); empty when there is none.
    EntryRef find(const std::string& key);
    // Every entry in key order, and in number order (equal numbers in key order).
    std::vector<EntryRef> byName();
    std::vector<EntryRef> byNumber();

    // The entry as a SectionValue, made on first asking and kept while the entry exists.
    SectionValue* view(EntryRef entry);

    void clear();

  private:
    friend class EntryRef;

    template <typename MakeRow>
    bool declare(const Declaration& declaration, MakeRow&& makeRow);
    bool follows(const Declaration& declaration) const;
    EntryRef findLowered(const std::string& key);
    void branch(const EntryRow& next);
    void goOwn();
    void append(const EntryRow& next);

    // What few sections have: defaults unlike their rows' (the header's), boxed values, the
    // SectionValue objects handed out.
    struct Rare {
        std::vector<std::pair<std::uint32_t, Cell>> ownFallbacks;
        std::vector<BoxedPair> boxed;
        std::vector<std::unique_ptr<SectionValue>> views;
    };
    // What most sections never have, made when one is needed: a geometry section's objects, an
    // action section's actions (each value, then its default), and the rare rest.
    struct Extras {
        std::vector<VelkObject> objects;
        std::vector<Action> actions;
        std::unique_ptr<Rare> rare;
    };

    Extras& extra();
    Rare& rare();
    const BoxedPair& boxedOf(std::uint32_t entry) const;
    VelkObject* objectOf(std::uint32_t entry, bool fallback) const;
    Action* actionOf(std::uint32_t entry, bool fallback) const;
    template <typename T>
    bool addPair(const Declaration& declaration, std::vector<T>& kept, T value, T fallback);
    const Cell* ownFallbackOf(std::uint32_t entry) const;
    void growCells();
    void growTexts(std::size_t count);

    std::shared_ptr<EntryTable> table;
    std::vector<Cell> cells;
    std::vector<PackedText> texts;
    std::unique_ptr<Extras> extras;
    std::uint32_t lastFound = 0;  // the entry the last lookup found
};

}  // namespace VelkApi::detail
