// The geometry section of an operation over any lines, read and written back through the whole
// operation. The first byte picks the kind, the second the parameter section's counters of
// outline figures (bits 0-2), islands (bits 3-5) and XZ profiles (bits 6, 7), which say how the
// lines are taken; the other lines are the geometry section's lines in the store. The drawing
// holds three figures, one of them with an instance, a point and an object that is no CAD object,
// so that the lines' texts can name something.
#include <velkapi/MillDrillOperation.h>
#include <velkhost/OfflineHost.h>

#include <string>

#include "FuzzSupport.h"

namespace {

constexpr int kOperation = 3;

void drawing() {
    velkhost::OfflineHost& host = velkhost::OfflineHost::instance();
    host.setFigure({1, "OUTER"});
    host.setFigure({2, "POCKET"});
    host.setFigure({3, "ISLAND"});
    host.setCadObject({101, velkhost::kFigureObject, 1, 0, {0.0, 0.0, 0.0}, 1, false});
    host.setCadObject({102, velkhost::kFigureObject, 2, 0, {10.0, 5.0, 0.0}, 1, false});
    host.setCadObject({103, velkhost::kFigureObject, 3, 0, {20.0, 15.0, 0.0}, 1, false});
    host.setCadObject({104, velkhost::kFigureObject, 3, 1, {25.0, 15.0, 0.0}, 1, false});
    host.setCadObject({105, velkhost::kPointObject, 0, 0, {12.5, -4.0, 0.0}, 1, false});
    host.setCadObject({106, velkhost::kNonCadObject, 7, 0, {0.0, 0.0, 0.0}, 1, false});
}

// The operation: its kind's name and counters in the parameter section, `lines` as its
// geometry section, after three records that are no machining operations.
void storeOperation(VelkApi::MillDrillOperationType kind, unsigned char counters,
                    const fuzzsupport::Lines& lines) {
    const std::string values =
        std::to_string(counters & 7) + " " + std::to_string((counters >> 3) & 7) + " " +
        std::to_string((counters >> 6) & 1) + " " + std::to_string((counters >> 7) & 1) + " ";
    velkhost::Record record{std::to_string(VelkApi::millDrillOperationTypeToVelk(kind)) +
                                " 1 4 0 0 2 " + std::to_string(lines.size()),
                            VelkApi::millDrillOperationTypeToString(kind), values};
    record.insert(record.end(), lines.begin(), lines.end());
    velkhost::Records records(kOperation, velkhost::Record{"0 1 1 1", "not machining"});
    records.push_back(record);
    velkhost::OfflineHost::instance().setStore(fuzzsupport::kStore, records);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    drawing();
    const auto kind =
        static_cast<VelkApi::MillDrillOperationType>(1 + fuzzsupport::takeByte(data, size) % 20);
    const unsigned char counters = fuzzsupport::takeByte(data, size);
    storeOperation(kind, counters, fuzzsupport::lines(data, size));
    VelkApi::MillDrillOperation op(fuzzsupport::kStore, kOperation);
    op.readFromVDM();
    op.writeToVDM();
    return 0;
}
