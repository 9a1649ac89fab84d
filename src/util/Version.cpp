#include <velkapi/Version.h>

namespace VelkApi {

const char* libraryVersion() {
    return VELKAPI_VERSION;
}

}  // namespace VelkApi
