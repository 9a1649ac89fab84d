// Thousands of random read-edit-write cycles on the offline host: each cycle reads a random
// operation, sets random keys of one of its sections to random values, writes the operation back
// and checks that the header counts the lines there are, that every value set reads back (doubles
// to six significant digits) and that nothing was shown or logged.
//
// The run is seeded: the seed is printed, and VELKAPI_SOAK_SEED=<seed> repeats a run. It stops
// after VELKAPI_SOAK_CYCLES cycles (SOAK_CYCLES unless set) or VELKAPI_SOAK_SECONDS seconds
// (SOAK_SECONDS unless set), whichever comes first.
#include <gtest/gtest.h>
#include <velkapi/MillDrillOperation.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <variant>
#include <vector>

#include "ErrorLog.h"
#include "HostFixture.h"

using namespace VelkApi;
using Kind = MillDrillOperationType;
using Texts = std::vector<std::string>;

namespace {

constexpr int kStore = 7;
constexpr int kFirstOperation = 3;  // the host's first three records are not operations
constexpr int kOperations = 8;

const std::vector<Kind> kKinds = {Kind::PROFILE,  Kind::CORNER,     Kind::CHAMFER,  Kind::POCKET,
                                  Kind::FACEMILL, Kind::RESTMATL,   Kind::DRILLING, Kind::POCCYCLE,
                                  Kind::ENGRAVE,  Kind::THREADING,  Kind::TOOLS,    Kind::MEDITOR,
                                  Kind::MOVING,   Kind::STD3DGEO,   Kind::RSURFING, Kind::MILL_5AX,
                                  Kind::SLOT,     Kind::UEDITOR_MAX};

// The counters that say how many figures the geometry section holds: they describe that
// section rather than hold a free value.
const std::set<std::string> kGeometryCounters = {"i_nr_of_figs", "i_nr_of_isle", "i_xz_fig",
                                                 "i_xz_isle"};

enum class Edited { Message, Tool, Parameter };

using Value = std::variant<int, double, bool, std::string>;

unsigned long long setting(const char* name, unsigned long long fallback) {
    const char* text = std::getenv(name);
    return text && *text ? std::strtoull(text, nullptr, 10) : fallback;
}

class Soak {
  public:
    explicit Soak(unsigned long long seed) : random(seed) {}

    // The store of kOperations operations of random kinds, every section filled.
    void makeStore() {
        host().setStore(kStore, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}});
        for (int i = 0; i < kOperations; ++i) {
            const Kind kind = kKinds[pick(kKinds.size())];
            MillDrillOperation op(kind, kStore, kFirstOperation + i);
            op.setMode(1);
            op.getMessageSection()->createandsetLine(0, millDrillOperationTypeToString(kind));
            op.getToolSection()->setDefault();
            op.getParameterSection()->setDefault();
            op.getActionSection(1)->addActionParameter(2, ActionType::Default, "M8");
            op.writeToVDM();
        }
    }

    // One cycle; false with the reason in `failure` when a check failed.
    bool cycle(std::string& failure) {
        const int nr = kFirstOperation + static_cast<int>(pick(kOperations));
        const Edited edited = static_cast<Edited>(pick(3));
        host().clearMessageBoxes();
        testsupport::ErrorLogWatch log;
        std::map<std::string, Value> set;
        {
            MillDrillOperation op(kStore, nr);
            op.readFromVDM();
            SectionDictionary& section = sectionOf(op, edited);
            const Texts keys = editableKeys(section, edited);
            for (std::size_t n = 1 + pick(5); n > 0 && !keys.empty(); --n) {
                const std::string& key = keys[pick(keys.size())];
                set[key] = setRandom(section, key, edited);
            }
            op.writeToVDM();
        }
        std::ostringstream why;
        why << "operation " << nr << ": ";
        if (!countsMatchLines(host().lines(kStore, nr), why)) {
            failure = why.str();
            return false;
        }
        MillDrillOperation again(kStore, nr);
        again.readFromVDM();
        const SectionDictionary& section = sectionOf(again, edited);
        for (const auto& [key, value] : set) {
            if (!readsBack(section, key, value, why)) {
                failure = why.str();
                return false;
            }
        }
        const std::string logged = log.appended();
        const auto boxes = host().messageBoxes();
        if (!logged.empty() || !boxes.empty()) {
            failure =
                why.str() + "logged \"" + logged + "\", " + std::to_string(boxes.size()) +
                " message boxes" +
                (boxes.empty() ? ""
                               : ", the first \"" + boxes[0].caption + "|" + boxes[0].text + "\"");
            return false;
        }
        return true;
    }

  private:
    static velkhost::OfflineHost& host() { return velkhost::OfflineHost::instance(); }

    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
    }

    static SectionDictionary& sectionOf(const MillDrillOperation& op, Edited edited) {
        switch (edited) {
            case Edited::Message:
                return *op.getMessageSection();
            case Edited::Tool:
                return *op.getToolSection();
            case Edited::Parameter:
                break;
        }
        return *op.getParameterSection();
    }

    // The keys a cycle may set: a parameter section's entries that its lines hold, every other
    // section's entries.
    Texts editableKeys(const SectionDictionary& section, Edited edited) {
        Texts keys;
        section.readKeys(keys);
        if (edited != Edited::Parameter) {
            return keys;
        }
        const std::set<std::string>& stored = storedKeys(section);
        Texts kept;
        for (const std::string& key : keys) {
            if (!kGeometryCounters.count(key) && stored.count(key)) {
                kept.push_back(key);
            }
        }
        return kept;
    }

    // The entries a parameter section's lines hold, found once per kind: entries past the
    // section's lines are not part of the record. Every entry gets a value of its own, the
    // operation is written, and what reads back is what the record holds.
    const std::set<std::string>& storedKeys(const SectionDictionary& section) {
        const auto& parameters = static_cast<const ParameterSection&>(section);
        const Kind kind = parameters.getOperationType();
        auto found = storedByKind.find(kind);
        if (found != storedByKind.end()) {
            return found->second;
        }
        const velkhost::Records before = host().records(kStore);
        host().setStore(kStore, {{"0 1 0"}, {"0 1 0"}, {"0 1 0"}});
        std::map<std::string, Value> values;
        {
            MillDrillOperation op(kind, kStore, kFirstOperation);
            op.setMode(1);
            Texts keys;
            for (const std::string& key : op.getParameterSection()->readKeys(keys)) {
                if (!kGeometryCounters.count(key)) {
                    values[key] = setRandom(*op.getParameterSection(), key, Edited::Parameter);
                }
            }
            op.writeToVDM();
        }
        MillDrillOperation op(kStore, kFirstOperation);
        op.readFromVDM();
        std::set<std::string>& keys = storedByKind[kind];
        for (const auto& [key, value] : values) {
            std::ostringstream ignored;
            if (readsBack(*op.getParameterSection(), key, value, ignored)) {
                keys.insert(key);
            }
        }
        host().setStore(kStore, before);
        return keys;
    }

    std::string randomText(bool blanks) {
        static const std::string letters =
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_";
        std::string text;
        for (std::size_t n = 1 + pick(12); n > 0; --n) {
            text += blanks && pick(6) == 0 ? ' ' : letters[pick(letters.size())];
        }
        if (text.front() == ' ') {
            text.front() = 'x';  // a message or tool text of blanks only is no value to keep
        }
        return text;
    }

    Value setRandom(SectionDictionary& section, const std::string& key, Edited edited) {
        switch (section.dataTypeOf(key)) {
            case ValueDataType::Int: {
                const int value = std::uniform_int_distribution<int>(-1000000, 1000000)(random);
                section.setInt(key, value);
                return value;
            }
            case ValueDataType::Double: {
                const double value = std::uniform_real_distribution<double>(-1e5, 1e5)(random) /
                                     std::pow(10.0, static_cast<double>(pick(6)));
                section.setDouble(key, value);
                return value;
            }
            case ValueDataType::Bool: {
                const bool value = pick(2) == 1;
                section.setBool(key, value);
                return value;
            }
            default: {
                // Parameter texts are one field of a line: they take no blank.
                const std::string value = randomText(edited != Edited::Parameter);
                section.setString(key, value);
                return value;
            }
        }
    }

    // The header line "<type> <flag> <N> <count 0> ... <count N-1>" against the record's lines.
    static bool countsMatchLines(const velkhost::Record& record, std::ostream& why) {
        std::istringstream header(record.at(0));
        long long type = 0;
        long long flag = 0;
        long long declared = 0;
        header >> type >> flag >> declared;
        std::vector<long long> counts;
        for (long long count = 0; header >> count;) {
            counts.push_back(count);
        }
        long long lines = 1;
        for (const long long count : counts) {
            lines += count;
        }
        if (declared != static_cast<long long>(counts.size()) ||
            lines != static_cast<long long>(record.size())) {
            why << "the header \"" << record[0] << "\" does not count the record's "
                << record.size() << " lines";
            return false;
        }
        return true;
    }

    static bool readsBack(const SectionDictionary& section, const std::string& key,
                          const Value& value, std::ostream& why) {
        bool same = false;
        if (const int* number = std::get_if<int>(&value)) {
            same = section.getInt(key) == *number;
        } else if (const double* real = std::get_if<double>(&value)) {
            // Written with six significant digits: within half a unit of the sixth digit.
            same = std::fabs(section.getDouble(key) - *real) <= 5.0000001e-6 * std::fabs(*real);
        } else if (const bool* flag = std::get_if<bool>(&value)) {
            same = section.getBool(key) == *flag;
        } else {
            same = section.getString(key) == std::get<std::string>(value);
        }
        if (!same) {
            why << "\"" << key << "\" reads back as \"" << section.getValueAsString(key) << "\"";
        }
        return same;
    }

    std::mt19937_64 random;
    std::map<Kind, std::set<std::string>> storedByKind;
};

class SoakTest : public testsupport::HostTest {};

}  // namespace

TEST_F(SoakTest, RandomReadEditWriteCyclesKeepEveryValueAndLogNothing) {
    const unsigned long long seed = setting("VELKAPI_SOAK_SEED", std::random_device{}());
    const unsigned long long cycles = setting("VELKAPI_SOAK_CYCLES", SOAK_CYCLES);
    const auto limit = std::chrono::seconds(setting("VELKAPI_SOAK_SECONDS", SOAK_SECONDS));
    std::cout << "soak seed " << seed << " (VELKAPI_SOAK_SEED=" << seed << " repeats this run)"
              << std::endl;

    host().setEnvironment("TURNDRIVENTOOLS", "1");
    host().setGlobal("w_setup_cle", 2.0);
    host().setGlobal("w_setup_ret", 10.0);
    Soak soak(seed);
    soak.makeStore();
    const auto start = std::chrono::steady_clock::now();
    unsigned long long done = 0;
    for (; done < cycles && std::chrono::steady_clock::now() - start < limit; ++done) {
        std::string failure;
        ASSERT_TRUE(soak.cycle(failure)) << "cycle " << done << ": " << failure;
    }
    std::cout << done << " cycles" << std::endl;
    EXPECT_GT(done, 0u);
}
