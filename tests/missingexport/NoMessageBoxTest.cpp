// A host without a MessageBoxA export: on POSIX the library writes its boxes to stderr.
#include <gtest/gtest.h>
#include <velkapi/MacroExport.h>

#include "HostStub.h"

STUB_EXPORT void* VelkGetWnd(int) {
    return nullptr;
}

STUB_EXPORT int VelkMissingAPI() {
    return 0;
}

TEST(NoMessageBox, BoxBecomesOneLineOnStandardError) {
#ifdef _WIN32
    GTEST_SKIP() << "Windows shows the box through user32, which would wait for a click";
#else
    ::testing::internal::CaptureStderr();
    VelkApi::MacroExport::SetGlobalIntVar("i_t_nr");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "VelkApi::MacroExport::SetGlobalIntVar Failed: i_t_nr\n");
#endif
}
