// Font lists: what EnumFontsA delivers one font at a time, gathered into one
// movable block that the host walks (a 16-bit count, then packed entries),
// and single questions answered by the first font of a face.
//
// The count lives both in the FontEnumRecord of the call and at the head of
// the block. When memory runs out the block is freed and the record's handle
// set to null, so that a failed list leaves nothing behind.
#include "ui/dlgutilint.h"

#include "os/osl.h"

#include <cstring>

namespace {

constexpr size_t kMetricBytes = 53; // TEXTMETRICA without its alignment gap

// Makes room for one more entry of `size` bytes and returns it, locked (the
// caller unlocks the record's block); null, with the block gone, without memory.
BYTE* appendEntry(FontEnumRecord* rec, size_t size) {
    const OslMemoryService* mem = gOsl.memory;
    SIZE_T bytes = 2 + (SIZE_T(rec->nCount) + 1) * size;
    HGLOBAL grown = rec->hBlock ? mem->GlobalReAlloc(rec->hBlock, bytes, rec->wFlags)
                                : mem->GlobalAlloc(rec->wFlags, bytes);
    if (!grown) {
        if (rec->hBlock) mem->GlobalFree(rec->hBlock);
        rec->hBlock = nullptr;
        return nullptr;
    }
    rec->hBlock = grown;
    BYTE* block = static_cast<BYTE*>(mem->GlobalLock(grown));
    return block ? block + 2 + size_t(rec->nCount) * size : nullptr;
}

// Counts the entry just written, in the block and in the record, and unlocks.
int countEntry(FontEnumRecord* rec, BYTE* entry, size_t size) {
    BYTE* block = entry - 2 - size_t(rec->nCount) * size;
    ++rec->nCount;
    WORD count = WORD(rec->nCount);
    std::memcpy(block, &count, 2);
    gOsl.memory->GlobalUnlock(rec->hBlock);
    return 1;
}

int addFont(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM data, size_t size) {
    FontEnumRecord* rec = reinterpret_cast<FontEnumRecord*>(data);
    BYTE* entry = appendEntry(rec, size);
    if (!entry) return 0;
    if (size == FON_FACE_ENTRY) {
        std::memcpy(entry, font->lfFaceName, sizeof font->lfFaceName);
        entry[FON_FACE_ENTRY - 1] = 0;
    } else {
        std::memcpy(entry, font, sizeof(LOGFONTA));
        std::memcpy(entry + sizeof(LOGFONTA), metric, kMetricBytes);
        WORD low = WORD(type);
        if (size == FON_METRICS_ENTRY) std::memcpy(entry + FON_SIZE_ENTRY, &low, 2);
    }
    return countEntry(rec, entry, size);
}

HGLOBAL gather(HDC dc, LPCSTR face, OslFontEnumProc proc) {
    FontEnumRecord rec = {0, GMEM_MOVEABLE | GMEM_ZEROINIT, nullptr};
    gOsl.dialog->EnumFontsA(dc, face, proc, reinterpret_cast<LPARAM>(&rec));
    return rec.hBlock;
}

// The single questions: the face's first font, then the enumeration stops.
struct FirstFont {
    LOGFONTA font;
    bool found;
};
int OXLCALLBACK firstFont(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM data) {
    FirstFont* first = reinterpret_cast<FirstFont*>(data);
    std::memcpy(&first->font, font, sizeof(LOGFONTA));
    first->found = true;
    return 0;
}

// The face's first font; false for a null context.
bool firstOf(HDC dc, LPCSTR face, FirstFont* first) {
    first->found = false;
    if (!dc) return false;
    gOsl.dialog->EnumFontsA(dc, face, firstFont, reinterpret_cast<LPARAM>(first));
    return true;
}

} // namespace

int OXLCALLBACK FontEnumFaces(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM record) {
    return addFont(font, metric, type, record, FON_FACE_ENTRY);
}
int OXLCALLBACK FontEnumSizes(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM record) {
    return addFont(font, metric, type, record, FON_SIZE_ENTRY);
}
int OXLCALLBACK FontEnumMetrics(const LOGFONTA* font, const TEXTMETRICA* metric, DWORD type, LPARAM record) {
    return addFont(font, metric, type, record, FON_METRICS_ENTRY);
}

HGLOBAL OXLAPI FonGetFontFaces(HDC dc) { return gather(dc, nullptr, FontEnumFaces); }
HGLOBAL OXLAPI FonGetFontSizes(HDC dc, LPCSTR face) { return gather(dc, face, FontEnumSizes); }
HGLOBAL OXLAPI FonGetFontFaceMetrics(HDC dc) { return gather(dc, nullptr, FontEnumMetrics); }

BOOL OXLAPI FonGetFontCharSet(HDC dc, LPCSTR face, BYTE* out) {
    FirstFont first;
    if (!firstOf(dc, face, &first)) return FALSE;
    if (first.found && out) *out = first.font.lfCharSet;
    return TRUE;
}

BOOL OXLAPI FonGetFontPitchAndFamily(HDC dc, LPCSTR face, BYTE* out) {
    FirstFont first;
    if (!firstOf(dc, face, &first)) return FALSE;
    if (first.found && out) *out = first.font.lfPitchAndFamily;
    return TRUE;
}

BOOL OXLAPI FonFixLogfont(HDC dc, LOGFONTA* font) {
    FirstFont first;
    if (!font || !firstOf(dc, font->lfFaceName, &first)) return FALSE;
    if (first.found) {
        font->lfPitchAndFamily = first.font.lfPitchAndFamily;
        font->lfCharSet = first.font.lfCharSet;
    }
    return TRUE;
}
