// A second process for the shared-heap tests: it opens the test's shared
// block (its names carry the suffix it is given) of VIEW bytes, formatted by
// the test with a heap of HEAP bytes, takes its mutex and ends holding it, so
// that the mutex is left abandoned:
//   oxl_shm_child SUFFIX VIEW HEAP
// Exit codes: 0 it ended holding the mutex, 2 bad arguments, 3 the block or
// its heap couldn't be had, 4 the mutex couldn't be had.
#include "core/libstate.h"
#include <oxlrt31/memshared.h>
#include "scripted_osl.h"

#include <cstdlib>

int main(int argc, char** argv) {
#ifdef _WIN32
    LibEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
#endif
    if (argc < 4) return 2;
    ScriptedShared shared({argv[1]});
    LONG created = -7;
    void* view = MemSharedInit(&created, DWORD(std::strtoul(argv[2], nullptr, 0)));
    if (!view || created != 0 || !MemSharedInitHeap(view, DWORD(std::strtoul(argv[3], nullptr, 0)), 0)) return 3;
    // _Exit runs no exit handler that could give the mutex back.
    std::_Exit(MemAcquireMutex() ? 0 : 4);
}
