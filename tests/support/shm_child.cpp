// A second process for the shared-heap tests: it opens the test's shared
// block (its names carry the suffix it is given) of VIEW bytes, formatted by
// the test with a heap of HEAP bytes, and holds its mutex until it is killed:
//   oxl_shm_child SUFFIX VIEW HEAP
// Word 0 of the mailbox, the test's first block at the heap's base + 52, says
// the mutex is held. Exit codes: 2 bad arguments, 3 the block or its heap
// couldn't be had, 5 nobody killed the holder.
#include "core/libstate.h"
#include <oxlrt31/memshared.h>
#include "scripted_osl.h"

#include <chrono>
#include <cstdlib>
#include <thread>

int main(int argc, char** argv) {
#ifdef _WIN32
    LibEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
#endif
    if (argc < 4) return 2;
    ScriptedShared shared({argv[1]});
    LONG created = -7;
    auto* view = static_cast<char*>(MemSharedInit(&created, DWORD(std::strtoul(argv[2], nullptr, 0))));
    if (!view || created != 0 || !MemSharedInitHeap(view, DWORD(std::strtoul(argv[3], nullptr, 0)), 0)) return 3;
    int code = 2;
    if (MemAcquireMutex()) {
        __atomic_store_n(reinterpret_cast<uint32_t*>(view + 52), 1, __ATOMIC_SEQ_CST);
        std::this_thread::sleep_for(std::chrono::seconds(60));
        code = 5;
    }
    MemSharedTerminate();
    return code;
}
