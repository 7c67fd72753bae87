// The DLL's entry point: the system's notifications go to the library's.
#include "../../core/libstate.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved) {
    return LibEntry(instance, reason, reserved);
}
