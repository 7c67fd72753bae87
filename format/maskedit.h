// The edit-control filter, private: the edit state of one call and the
// control's operations, and the steps that keep the text true to the mask.
//
// Positions are 16-bit, as the control reports its selection; position p of
// the text belongs to position p of the mask. Behind the end of an
// unlimited mask every position reads as its "*"; behind the end of any
// other mask, as a literal.
#ifndef OXL_FORMAT_MASKEDIT_H
#define OXL_FORMAT_MASKEDIT_H

#include "maskint.h"

#include "os/osl.h"

// One call's view of the control: its handle, its own message handling as
// GWLP_WNDPROC gave it at the start of the call, the mask (behind "^") and
// the block's flags. Nothing of it outlives the call.
struct FMTEDIT {
    HWND hWnd;
    WNDPROC proc;
    const char* mask;
    DWORD len;       // of the mask
    bool unlimited;
    DWORD flags;
    LPARAM lParam;   // of the message, for the control's own key handling
};

// The mask's character at a position, '*' or 0 (a literal) behind its end.
char FMTEditMaskAt(const FMTEDIT& ed, WORD pos);
inline bool FMTEditIsPlaceholder(const FMTEDIT& ed, WORD pos) { return FMTIsMaskChar(FMTEditMaskAt(ed, pos)); }

// The operations of the control. "Direct" ones go straight to its handling
// (CallWindowProcA); the others by SendMessageA, through the host.
struct FMTSEL { WORD s, e; };
FMTSEL FMTEditGetSel(const FMTEDIT& ed);
void FMTEditSetSelDirect(const FMTEDIT& ed, DWORD a, DWORD b);
void FMTEditSetSel(const FMTEDIT& ed, DWORD a, DWORD b);
void FMTEditReplaceSel(const FMTEDIT& ed, const char* s);
LRESULT FMTEditSetText(const FMTEDIT& ed, const char* s);
// The whole length: buffers are sized by it, though positions are 16-bit.
DWORD FMTEditTextLength(const FMTEDIT& ed);
// The text, cut to size - 1 bytes.
void FMTEditGetText(const FMTEDIT& ed, char* out, int size);
void FMTEditDefaultKey(const FMTEDIT& ed, UINT key);
// Marks the control modified and tells the parent EN_CHANGE.
void FMTEditAnnounce(const FMTEDIT& ed);
void FMTEditBeep(void);
bool FMTEditShiftDown(void);

// Room for any text of the control and its rebuilds: NUL, one character
// more, and the mask's literals.
DWORD FMTEditRoom(const FMTEDIT& ed, DWORD textLength);
// A working buffer from MemAlloc, freed on every way out; null when the
// memory can't be had.
class FMTEditBuffer {
public:
    explicit FMTEditBuffer(DWORD bytes);
    ~FMTEditBuffer();
    FMTEditBuffer(const FMTEditBuffer&) = delete;
    FMTEditBuffer& operator=(const FMTEditBuffer&) = delete;
    char* get() const { return m_p; }

private:
    char* m_p;
};

// The steps. The type step's false is a refusal.
void FMTEditReplaceChar(const FMTEDIT& ed, char ch, WORD pos);
bool FMTEditTypeChar(const FMTEDIT& ed, char ch);
void FMTEditRemask(const FMTEDIT& ed);
void FMTEditCaretLeft(const FMTEDIT& ed);
void FMTEditCaretRight(const FMTEDIT& ed);
void FMTEditCaretHome(const FMTEDIT& ed);
void FMTEditCaretEnd(const FMTEDIT& ed);
void FMTEditSelectToEdge(const FMTEDIT& ed, bool toEnd);
void FMTEditBackspace(const FMTEDIT& ed);
void FMTEditDeleteKey(const FMTEDIT& ed);
void FMTEditDeleteSel(const FMTEDIT& ed, WORD s, WORD e);
void FMTEditDelete(const FMTEDIT& ed, WORD first, WORD last);
// A placeholder among the first min(mask length, textLength) positions.
bool FMTMaskHasPlaceholder(const FMTEDIT& ed, DWORD textLength);

#endif
