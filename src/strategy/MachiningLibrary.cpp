#include "strategy/MachiningLibrary.h"

namespace VelkApi::strategy {

void* machiningLibrary() {
    static void* library = nullptr;
    if (!library) {
        library = platform::loadMachiningLibrary();
    }
    return library;
}

}  // namespace VelkApi::strategy
