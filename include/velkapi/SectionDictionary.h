/// \file
/// The base of every section of an operation: its parameters as named entries, looked up without
/// regard to case, with typed keyed access for callers and, for derived sections, the adding
/// operations that declare entries and the field readers of the section line format.
///
/// Section line format: fields separated by runs of white space, numbered from 0. Doubles are
/// written with six significant digits ("%g") and read with strtod after every ',' of the line
/// became '.'; ints are decimal; a group of option bits sharing one number is one int, the sum of
/// 2^(bit-1) over its true bits; a text is written as it is (an empty text as 2147483647) and
/// read as a bare run of non-blank characters or as a text in single quotes.
///
/// No operation lets an exception out: each logs its own text and returns a neutral result.
/// A copy shares its source's entries.
///
/// Entries are kept compactly: a section holds one value cell per entry, and the names, numbers,
/// types and defaults that sections of one kind declare alike are held once for all of them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <velkapi/SectionValue.h>

namespace VelkApi {

class OperationBase;
namespace detail {
struct SectionEntries;
class EntryStore;
struct Declaration;
union Cell;
}  // namespace detail

/// The base of every section of an operation: its parameters as named, typed entries.
class VELKAPI_EXPORT SectionDictionary {
  public:
    /// An empty section that is section `sectionnr` of its operation in the store.
    explicit SectionDictionary(int sectionnr);
    /// A copy of another SectionDictionary.
    SectionDictionary(const SectionDictionary&) = default;
    /// Becomes a copy of another SectionDictionary.
    SectionDictionary& operator=(const SectionDictionary&) = default;
    virtual ~SectionDictionary();

    /// Copies the value of `key` into *target (of the entry's own type) and returns target.
    virtual void* getValue(const std::string& key, void* target) const;
    /// The value of `key` becomes *source (of the entry's own type).
    virtual void setValue(const std::string& key, const void* source);
    /// The value of `key` as text.
    virtual std::string getValueAsString(const std::string& key) const;
    /// Sets the int entry `key` to `val`.
    virtual void setInt(const std::string& key, int val);
    /// The value of the int entry `key`.
    virtual int getInt(const std::string& key) const;
    /// Sets the double entry `key` to `val`.
    virtual void setDouble(const std::string& key, double val);
    /// The value of the double entry `key`.
    virtual double getDouble(const std::string& key) const;
    /// Sets the bool entry `key` to `val`.
    virtual void setBool(const std::string& key, bool val);
    /// The value of the bool entry `key`.
    virtual bool getBool(const std::string& key) const;
    /// Sets the text entry `key` to `val`.
    virtual void setString(const std::string& key, const std::string& val);
    /// The value of the text entry `key`.
    virtual std::string getString(const std::string& key) const;
    /// Empties `keys`, then lists every key in ascending byte order.
    virtual std::vector<std::string>& readKeys(std::vector<std::string>& keys) const;
    /// True when the section has an entry `key`.
    virtual bool existsKey(const std::string& key) const;
    /// True when the entry `key` is an axis value.
    virtual bool isAxis(const std::string& key) const;
    /// Every entry takes its default.
    virtual void setDefault();
    /// Every entry is cleared (ints and doubles to their "not set" markers), whatever its name.
    virtual void clearAdditionals();
    /// Writes the section into operation `op` in its store.
    virtual void writeToVDM(OperationBase* op) = 0;
    /// Reads the section from operation `op` in its store.
    virtual void readFromVDM(OperationBase* op) = 0;
    /// Removes every entry.
    virtual void clear();

    /// The data type of the entry of `key`; None when there is none.
    ValueDataType dataTypeOf(const std::string& key) const;

    /// Makes `op` the operation the section belongs to.
    void setOperation(OperationBase* op) { operation = op; }
    /// The operation the section belongs to.
    OperationBase* getOperation() const { return operation; }
    /// The section's number in its operation.
    int getSectionNr() const { return sectionNr; }

  protected:
    friend struct detail::SectionEntries;  // the library's own look at the entries

    /// Field `n` of a section line, or `defaultval` when the line has no such field.
    int getIntFromLine(const std::string& line, size_t n, int defaultval);
    double getDoubleFromLine(const std::string& line, size_t n, double defaultval);
    std::string getStringFromLine(const std::string& line, size_t n, std::string defaultval);

    /// Declaring entries: the name is lower-cased, and a name already declared keeps its first
    /// entry. addParameter takes ownership of both values.
    void addParameter(int pnr, const std::string& name, Value* value, Value* defaultval,
                      ValueDataType vdtype, bool isaxis);
    void addDoubleParameter(int pnr, const std::string& name, double defaultval, double val);
    void addDoubleParameter(int pnr, const std::string& name, double defaultval);
    void addAxisParameter(int pnr, const std::string& name, double defaultval);
    void addIntParameter(int pnr, const std::string& name, int defaultval, int val);
    void addIntParameter(int pnr, const std::string& name, int defaultval);
    void addBoolParameter(int pnr, int bit, const std::string& name, bool defaultval, bool val);
    void addStringParameter(int pnr, const std::string& name, const std::string& defaultval,
                            const std::string& value);
    void addStringParameter(int pnr, const std::string& name, const std::string& defaultval);
    void addStringParameter(int pnr, const std::string& name);
    void addStringAxisParameter(int pnr, const std::string& name, const std::string& defaultval);

    /// The entry of `key` (any case), or null. The section makes the SectionValue when first
    /// asked and keeps it while the entry exists; it, and a copy of it, read and write the
    /// section's own value, so neither may outlive the section.
    SectionValue* findEntry(const std::string& key) const;
    /// Every entry, ordered by number (entries of equal number in key order).
    std::vector<SectionValue*> entriesByNumber() const;
    /// The number of entries.
    std::size_t entryCount() const;

    OperationBase* operation = nullptr;
    std::shared_ptr<detail::EntryStore> values;
    int sectionNr;

  private:
    detail::EntryStore& entryStore() const;
    void addEntry(const detail::Declaration& declaration, detail::Cell fallback,
                  detail::Cell value);
    void addTextEntry(const detail::Declaration& declaration, std::string fallback,
                      std::string value);
};

}  // namespace VelkApi
