// A second process for the shared-heap tests. It opens the test's shared
// block (its names carry the suffix it is given), formatted by the test, and
// does one thing:
//   oxl_shm_child SUFFIX SIZE hold                 takes the mutex, says so in the mailbox, waits to be killed
//   oxl_shm_child SUFFIX SIZE stress ROUNDS SEED   random allocations and frees, every block checked
// The mailbox is the test's first block, at the heap's base + 52: word 0 says
// the mutex is held, word 1 counts the stress children ready, word 2 says go.
// Exit codes: 0 done, 2 bad arguments, 3 the block or its heap couldn't be
// had, 4 a block came back wrong, 5 nobody killed the holder.
#include "core/libstate.h"
#include <oxlrt31/memshared.h>
#include "child_process.h"
#include "scripted_osl.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Live { unsigned char* p; unsigned size; unsigned char fill; };

bool Intact(const Live& b) {
    for (unsigned i = 0; i < b.size; ++i)
        if (b.p[i] != b.fill) return false;
    return MemSharedCheck(b.p) == 1;
}

// Each block is filled with a byte of its own and looked at again before it
// goes back: another process writing into it, or a block handed out twice,
// shows. The rounds start when the test says go, so that all children run at once.
int Stress(uint32_t* mailbox, unsigned rounds, unsigned seed) {
    __atomic_add_fetch(&mailbox[1], 1, __ATOMIC_SEQ_CST);
    for (int i = 0; i < 30000 && !__atomic_load_n(&mailbox[2], __ATOMIC_SEQ_CST); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    std::mt19937 random(seed);
    std::vector<Live> live;
    for (unsigned round = 0; round < rounds; ++round) {
        if (live.size() == 16 || (!live.empty() && random() % 2)) {
            size_t i = random() % live.size();
            if (!Intact(live[i])) return 4;
            MemSharedFree(live[i].p);
            live.erase(live.begin() + long(i));
        } else {
            unsigned size = 1 + random() % 200;
            auto* p = static_cast<unsigned char*>(MemSharedAlloc(size));
            if (!p) return 4;
            for (unsigned i = 0; i < size; ++i)
                if (p[i]) return 4;
            live.push_back({p, size, static_cast<unsigned char>(1 + random() % 255)});
            std::memset(p, live.back().fill, size);
        }
        if (round % 1000 == 0 && !MemSharedCheckAll()) return 4;
    }
    for (const Live& b : live) {
        if (!Intact(b)) return 4;
        MemSharedFree(b.p);
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
#ifdef _WIN32
    LibEntry(GetModuleHandleA(nullptr), DLL_PROCESS_ATTACH, nullptr);
#endif
    if (argc < 4) return 2;
    ScriptedShared shared({argv[1]});
    auto size = DWORD(std::strtoul(argv[2], nullptr, 0));
    std::string action = argv[3];
    LONG created = -7;
    auto* view = static_cast<char*>(MemSharedInit(&created, size));
    if (!view || created != 0 || !MemSharedInitHeap(view, size, 0)) return 3;
    auto* mailbox = reinterpret_cast<uint32_t*>(view + 52);
    int code = 2;
    if (action == "stress" && argc == 6) code = Stress(mailbox, unsigned(std::atoi(argv[4])), unsigned(std::atoi(argv[5])));
    else if (action == "hold" && MemAcquireMutex()) {
        __atomic_store_n(&mailbox[0], 1, __ATOMIC_SEQ_CST);
        std::this_thread::sleep_for(std::chrono::seconds(60));
        code = 5;
    }
    MemSharedTerminate();
    return code;
}
