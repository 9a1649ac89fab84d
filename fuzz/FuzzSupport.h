// What the fuzz targets share: the input cut into lines, and an offline host with one
// operation whose sections hold them.
#pragma once

#include <velkapi/OperationBase.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzzsupport {

using Lines = std::vector<std::string>;

// The store every target puts its operation into, as record 0.
constexpr int kStore = 7;

// The bytes as text.
std::string text(const std::uint8_t* data, std::size_t size);
// The bytes cut at every line feed; the last line is kept even when empty.
Lines lines(const std::uint8_t* data, std::size_t size);

// Takes the first byte of the input as a small choice (0 when the input is empty) and drops it.
unsigned char takeByte(const std::uint8_t*& data, std::size_t& size);

// An empty project in the offline host, with the environment an operation needs, and the
// library's logs pointed at a folder that does not exist, so that a run writes no files.
void freshHost();

// Store kStore with one operation of host number `type` whose section `section` holds `lines`
// and whose earlier sections are empty.
void storeSection(int type, int section, const Lines& lines);

// An operation of the store that only carries its number, for a section to read and write.
class FuzzOperation : public VelkApi::OperationBase {
  public:
    explicit FuzzOperation(int nr = 0) : OperationBase(kStore, nr) {}
    void writeToVDM() override {}
    void readFromVDM() override {}
};

}  // namespace fuzzsupport
