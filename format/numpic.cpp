// The three translations of a number picture, as the host calls them: the
// output's size is not passed, so the writer's room is unbounded here.
#include "numpicint.h"

#include <cstdint>

namespace {

using Translation = void (*)(const FMTNUMSET&, const char*, char*, size_t);

LONG translate(FMTCNTLBLOCK* block, Translation how) {
    if (!block->lpszPicture) {
        if (block->lpszOutput) block->lpszOutput[0] = 0;
        return 0;
    }
    FMTNUMSET set;
    FMTNumSettings(block, &set);
    how(set, block->lpszPicture, block->lpszOutput, SIZE_MAX);
    return 1;
}

} // namespace

LONG OXLAPI FMTTokenizeNumberPic(FMTCNTLBLOCK* block) { return translate(block, FMTpTokenize); }
LONG OXLAPI FMTUnTokenizeNumberPic(FMTCNTLBLOCK* block) { return translate(block, FMTpUnTokenize); }
LONG OXLAPI FMTCnvOldNumberPic(FMTCNTLBLOCK* block) { return translate(block, FMTpCnvOld); }
