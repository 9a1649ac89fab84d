// The three field readers of the section line format over any line and any field number.
#include <velkapi/SectionDictionary.h>

#include "FuzzSupport.h"

namespace {

class FieldReader : public VelkApi::SectionDictionary {
  public:
    FieldReader() : SectionDictionary(0) {}
    void writeToVDM(VelkApi::OperationBase*) override {}
    void readFromVDM(VelkApi::OperationBase*) override {}
    using SectionDictionary::getDoubleFromLine;
    using SectionDictionary::getIntFromLine;
    using SectionDictionary::getStringFromLine;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    const std::size_t field = fuzzsupport::takeByte(data, size);
    const std::string line = fuzzsupport::text(data, size);
    FieldReader reader;
    reader.getIntFromLine(line, field, 7);
    reader.getDoubleFromLine(line, field, 7.5);
    reader.getStringFromLine(line, field, "fallback");
    return 0;
}
