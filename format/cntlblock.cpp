// Preparing a control block. Fields the host may have set for the number
// operations (currency symbol and forms), the reserved word and the message
// result keep what they held.
#include "fmtint.h"

namespace {
// Bits 0, 2 and 5 set, 1, 3, 4 and 6 to 12 clear, 13 to 31 kept.
constexpr DWORD kFlagsOwned = 0x1FFF;
constexpr DWORD kFlagsInitial = FMTF_DEFAULTTIME | FMTF_MICROSECONDS | FMTF_NUMBERVALUE;
} // namespace

void OXLAPI FMTInitCntlBlock(FMTCNTLBLOCK* b) {
    b->nType = FMT_NONE;
    b->lpszInput = b->lpszOutput = b->lpszShortPic = b->lpszLongPic = nullptr;
    b->b24Hour = 0;
    b->lpszTimeSep = nullptr;
    b->bTimeLeadZero = 0;
    b->lpsz1159 = b->lpsz2359 = nullptr;
    b->bUseProfile = 0;
    b->datDef = DATDEF{};
    b->iDateType = 0;
    b->lpszPicture = nullptr;
    b->chThousand = b->chDecimal = 0;
    b->dblValue = 0;
    b->bLeadZero = 0;
    b->nDigits = 0;
    b->iCountry = 1;
    b->bEmpBoundryCheck = 0;
    b->dwFlags = (b->dwFlags & ~kFlagsOwned) | kFlagsInitial;
    NumWordToNumber(&b->numValue, 0);
    b->hWnd = b->uMsg = b->wParam = b->lParam = 0;
}
