// The unit suite links the library's objects into the program. On Linux the
// library's last static object runs the attach step itself; on Windows the
// DLL entry point is not there, so the suite gives the attach notification.
#include "core/libstate.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
#ifdef _WIN32
    LibEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
#endif
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
