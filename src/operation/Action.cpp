#include <velkapi/ActionSection.h>

namespace VelkApi {

Action::Action() = default;

Action::Action(ActionType kind, const std::string& text) : command(text), type(kind) {}

}  // namespace VelkApi
