// List and combo box helpers: exact (case-sensitive) string search and
// adding, and the horizontal extent fitted to the widest entry.
//
// The system's own search (LB_FINDSTRINGEXACT) ignores case. It gives the
// first entry that matches without case; in a sorted list the entries equal
// to the text with case follow it while their first byte agrees, so the walk
// stops at the first entry whose first byte differs.
#include "ui/dlgutilint.h"

#include "os/osl.h"
#include <oxlrt31/intl.h>
#include <oxlrt31/mem.h>

#include <cstring>

namespace {

using dlgutil::ListMessages;

LRESULT send(HWND w, UINT msg, WPARAM wp = 0, LPARAM lp = 0) { return gOsl.window->SendMessageA(w, msg, wp, lp); }

// Entry i of the list in a block of MemAlloc (the caller frees it); null
// with *empty set for an entry of no text, null alone without memory.
char* entryText(HWND list, const ListMessages& m, int i, bool* empty) {
    LRESULT n = send(list, m.textLength, WPARAM(i));
    *empty = n <= 0;
    if (*empty) return nullptr;
    char* text = static_cast<char*>(MemAlloc(DWORD(n + 1)));
    if (text) send(list, m.text, WPARAM(i), reinterpret_cast<LPARAM>(text));
    return text;
}

// 1 when an entry equals `text` exactly, 0 when none does, -1 without memory.
int hasExact(HWND list, const ListMessages& m, LPCSTR text) {
    int i = int(send(list, m.findExact, WPARAM(-1), reinterpret_cast<LPARAM>(text)));
    if (i < 0) return 0;
    for (int count = int(send(list, m.count)); i < count; ++i) {
        bool empty;
        char* entry = entryText(list, m, i, &empty);
        if (empty) return 0;
        if (!entry) return -1;
        bool same = gOsl.text->lstrcmpA(entry, text) == 0, sameStart = entry[0] == text[0];
        MemFree(entry);
        if (same) return 1;
        if (!sameStart) return 0;
    }
    return 0;
}

BOOL addDistinct(HWND list, const ListMessages& m, LPCSTR text) {
    if (!text) return FALSE;
    if (!*text) return TRUE;
    int found = hasExact(list, m, text);
    if (found) return found > 0;
    LRESULT r = send(list, m.add, 0, reinterpret_cast<LPARAM>(text));
    return r != -1 && r != -2;
}

// The widest entry's width (low 16 bits of its extent) in the list's font.
int widestEntry(HWND list) {
    const ListMessages& m = dlgutil::kListBox;
    int count = int(send(list, m.count));
    if (count == -1) return 0;
    const OslDialogService* d = gOsl.dialog;
    HDC dc = gOsl.window->GetDC(list);
    HANDLE font = reinterpret_cast<HANDLE>(send(list, dlgutil::kGetFont));
    HANDLE old = font ? d->SelectObject(dc, font) : nullptr;
    int tab = int(reinterpret_cast<INT_PTR>(d->GetPropA(list, "LBTABSIZE")));
    int widest = 0;
    for (int i = 0; i < count; ++i) {
        bool empty;
        char* entry = entryText(list, m, i, &empty);
        if (!entry) continue;
        DWORD extent = d->GetTabbedTextExtentA(dc, entry, int(std::strlen(entry)), tab ? 1 : 0, tab ? &tab : nullptr);
        MemFree(entry);
        if (int(extent & 0xFFFF) > widest) widest = int(extent & 0xFFFF);
    }
    if (font) d->SelectObject(dc, old);
    gOsl.window->ReleaseDC(list, dc);
    return widest;
}

} // namespace

BOOL OXLAPI DlgAddDistinctStringIntoListbox(HWND list, LPCSTR text) { return addDistinct(list, dlgutil::kListBox, text); }
BOOL OXLAPI DlgAddDistinctStringIntoCombo(HWND combo, LPCSTR text) { return addDistinct(combo, dlgutil::kComboBox, text); }

int OXLAPI DlgLocateStringInListbox(HWND list, LPCSTR text) {
    const ListMessages& m = dlgutil::kListBox;
    if (!text || !*text) return -1;
    int count = int(send(list, m.count));
    for (int i = 0; i < count; ++i) {
        bool empty;
        char* entry = entryText(list, m, i, &empty);
        if (empty) return -1;
        if (!entry) return 0;
        bool same = gOsl.text->lstrcmpA(entry, text) == 0;
        MemFree(entry);
        if (same) return i;
    }
    return -1;
}

BOOL OXLAPI DlgSetListHScroll(HWND list) {
    char cls[80] = "";
    gOsl.dialog->GetClassNameA(list, cls, sizeof cls);
    if (gOsl.text->lstrcmpiA(cls, "CBCtrlComboBox") == 0) {
        HWND inner = reinterpret_cast<HWND>(send(list, dlgutil::kComboListBox));
        if (gOsl.window->IsWindow(inner)) list = inner;
    }
    RECT client = {};
    gOsl.dialog->GetClientRect(list, &client);
    int w = client.right - client.left, e = int(send(list, dlgutil::kGetHExtent));
    int m = widestEntry(list);
    if (gOsl.window->GetWindowLongPtrA(list, GWL_STYLE) & 0x10) m += 15; // LBS_OWNERDRAWFIXED
    int extent = m > w && m > e ? m : m < w && e > w ? w : -1;
    if (extent >= 0) {
        send(list, dlgutil::kSetHExtent, WPARAM(extent));
        send(list, dlgutil::kSetRedraw, 1);
    }
    return TRUE;
}

BOOL OXLAPI DlgSearchSpec(LPCSTR text) { return text && (IntlStrChr(text, '*') || IntlStrChr(text, '?')); }
