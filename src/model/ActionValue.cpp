#include <velkapi/ActionSection.h>
#include <velkapi/Value.h>

namespace VelkApi {

ActionValue::ActionValue(const Action& action) : Value(5, std::make_shared<Action>(action)) {}

ActionValue::~ActionValue() {
    datum.reset();
}

void* ActionValue::getValue(void* target) const {
    const Action* action = data<Action>();
    if (!action || !target) {
        return nullptr;
    }
    *static_cast<Action*>(target) = *action;
    return target;
}

void ActionValue::setValue(const void* source) {
    if (source && datum) {
        *data<Action>() = *static_cast<const Action*>(source);
    }
}

std::string ActionValue::getValueAsString() const {
    const Action* action = data<Action>();
    return action ? action->getCommand() : std::string();
}

}  // namespace VelkApi
