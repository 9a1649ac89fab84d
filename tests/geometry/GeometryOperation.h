// An operation of a given kind whose parameter section holds just the four geometry counters,
// for a geometry section under test to read and write.
#pragma once

#include <velkapi/OperationBase.h>

#include <memory>
#include <stdexcept>

namespace geometrytest {

class CounterSection : public VelkApi::SectionDictionary {
  public:
    CounterSection() : SectionDictionary(2) {
        addIntParameter(0, "i_nr_of_figs", 0);
        addIntParameter(1, "i_nr_of_isle", 0);
        addIntParameter(2, "i_xz_fig", 0);
        addIntParameter(3, "i_xz_isle", 0);
    }
    void writeToVDM(VelkApi::OperationBase*) override {}
    void readFromVDM(VelkApi::OperationBase*) override {}

    void setCounters(int figures, int islands, int xzFigure, int xzIsland) {
        setInt("i_nr_of_figs", figures);
        setInt("i_nr_of_isle", islands);
        setInt("i_xz_fig", xzFigure);
        setInt("i_xz_isle", xzIsland);
    }
    std::vector<int> counters() const {
        return {getInt("i_nr_of_figs"), getInt("i_nr_of_isle"), getInt("i_xz_fig"),
                getInt("i_xz_isle")};
    }
};

class GeometryOperation : public VelkApi::OperationBase {
  public:
    GeometryOperation(int store, int nr, VelkApi::MillDrillOperationType kind)
        : OperationBase(store, nr), counterSection(std::make_shared<CounterSection>()) {
        setOperationType(kind);
        enterSection("Parameter", counterSection);
    }
    void writeToVDM() override {}
    void readFromVDM() override {}

    CounterSection& parameters() { return *counterSection; }

  private:
    std::shared_ptr<CounterSection> counterSection;
};

// An operation whose number cannot be asked for, as if the caller's object were broken.
class BrokenNumberOperation : public GeometryOperation {
  public:
    using GeometryOperation::GeometryOperation;
    int getNumber() const override { throw std::runtime_error("no number"); }
};

}  // namespace geometrytest
