#include <velkapi/Value.h>
#include <velkapi/VelkObject.h>

namespace VelkApi {

VelkObjectValue::VelkObjectValue(const VelkObject& object)
    : Value(4, std::make_shared<VelkObject>(object)) {}

VelkObjectValue::~VelkObjectValue() {
    datum.reset();
}

void* VelkObjectValue::getValue(void* target) const {
    const VelkObject* object = data<VelkObject>();
    if (!object) {
        return nullptr;
    }
    if (!target) {
        return new VelkObject(*object);
    }
    *static_cast<VelkObject*>(target) = *object;
    return target;
}

void VelkObjectValue::setValue(const void* source) {
    if (source && datum) {
        *data<VelkObject>() = *static_cast<const VelkObject*>(source);
    }
}

std::string VelkObjectValue::getValueAsString() const {
    const VelkObject* object = data<VelkObject>();
    return object ? object->getName() : std::string();
}

}  // namespace VelkApi
