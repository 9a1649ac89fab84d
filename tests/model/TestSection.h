// A section with no store format of its own, opening the dictionary's protected building blocks
// to the tests.
#pragma once

#include <velkapi/SectionDictionary.h>

#include "model/EntryStore.h"

#include <stdexcept>

class TestSection : public VelkApi::SectionDictionary {
  public:
    explicit TestSection(int number = 7) : SectionDictionary(number) {}

    using SectionDictionary::addAxisParameter;
    using SectionDictionary::addBoolParameter;
    using SectionDictionary::addDoubleParameter;
    using SectionDictionary::addIntParameter;
    using SectionDictionary::addParameter;
    using SectionDictionary::addStringAxisParameter;
    using SectionDictionary::addStringParameter;
    using SectionDictionary::entriesByNumber;
    using SectionDictionary::findEntry;
    using SectionDictionary::getDoubleFromLine;
    using SectionDictionary::getIntFromLine;
    using SectionDictionary::getStringFromLine;

    // As if the constructor had failed to make the entry map.
    void loseEntryMap() { values.reset(); }

    // True when the two sections' entries are described by the same shared rows.
    bool sharesRowsWith(const TestSection& other) const {
        return values->sharesRowsWith(*other.values);
    }

    void writeToVDM(VelkApi::OperationBase*) override {}
    void readFromVDM(VelkApi::OperationBase*) override {}
};

// A value whose every access fails.
class ThrowingValue : public VelkApi::IntValue {
  public:
    ThrowingValue() : IntValue(0) {}
    void* getValue(void*) const override { throw std::runtime_error("broken value"); }
    void setValue(const void*) override { throw std::runtime_error("broken value"); }
    std::string getValueAsString() const override { throw std::runtime_error("broken value"); }
};

// A section whose keyed get and set fail, as a derived section's might.
class ThrowingSection : public TestSection {
  public:
    void* getValue(const std::string&, void*) const override {
        throw std::runtime_error("broken section");
    }
    void setValue(const std::string&, const void*) override {
        throw std::runtime_error("broken section");
    }
};
