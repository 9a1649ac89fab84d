// A geometry object reference from any text, in any role, and its text again.
#include <velkapi/VelkObject.h>

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzsupport::freshHost();
    const auto role =
        static_cast<VelkApi::GeometrySectionType>(fuzzsupport::takeByte(data, size) % 5);
    const VelkApi::VelkObject object(fuzzsupport::text(data, size), role);
    double x = 0;
    double y = 0;
    double z = 0;
    object.getPoint(x, y, z);
    object.toString();
    return 0;
}
