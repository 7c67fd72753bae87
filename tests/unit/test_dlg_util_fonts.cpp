// Font lists: the blocks' layout over three scripted fonts, and on Windows
// the fonts the system really has (a Japanese face among them).
#include "os/osl.h"
#include "tests/support/scripted_osl.h"

#include <oxlrt31/dlgutil.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

struct Font { const char* face; BYTE charSet, pitch; DWORD type; };
const Font kFonts[] = {{"Alpha", 0, 0x22, 4}, {"Beta", 128, 0x31, 4}, {"Beta", 0, 0x31, 0x12345}};

// The records of a font: every byte 0x11 (0x22 in TEXTMETRICA) but the ones that tell it.
void recordsOf(const Font& f, LOGFONTA* lf, TEXTMETRICA* tm) {
    std::memset(lf, 0x11, sizeof *lf), std::memset(tm, 0x22, sizeof *tm), std::strcpy(lf->lfFaceName, f.face);
    lf->lfCharSet = tm->tmCharSet = f.charSet, lf->lfPitchAndFamily = f.pitch;
}
// The three fonts, or those of the named face.
int WINAPI enumFonts(HDC, LPCSTR face, OslFontEnumProc proc, LPARAM data) {
    LOGFONTA lf; TEXTMETRICA tm;
    for (const Font& f : kFonts)
        if (!face || !std::strcmp(face, f.face))
            if (recordsOf(f, &lf, &tm), !proc(&lf, &tm, f.type, data)) return 0;
    return 1;
}
struct ScriptedFonts {
    const OslDialogService* saved = gOsl.dialog;
    OslDialogService table = *gOsl.dialog;
    ScriptedFonts() { table.EnumFontsA = enumFonts, gOsl.dialog = &table; }
    ~ScriptedFonts() { gOsl.dialog = saved; }
};
const HDC kDC = HDC(0x40);

// Entries: the face name (32 bytes), or LOGFONTA and TEXTMETRICA (113), and the font
// type (115). With the Nth allocation failing (the first, or a growth) nothing is left.
struct ListRow { size_t entry; const char* face; std::vector<int> fonts; int failFrom = 0; };
const ListRow kLists[] = {{32, nullptr, {0, 1, 2}}, {113, "Beta", {1, 2}}, {115, nullptr, {0, 1, 2}}, {113, "Alpha", {0}}, {113, "Gamma", {}},
                          {115, nullptr, {}, 1}, {115, nullptr, {}, 2}, {32, nullptr, {}, 3}};
TEST(FonLists, BlockLayout) {
    for (const ListRow& r : kLists) {
        ScriptedFonts fonts;
        ScriptedHeap heap(r.failFrom);
        HGLOBAL h = r.entry == 32 ? FonGetFontFaces(kDC) : r.entry == 115 ? FonGetFontFaceMetrics(kDC) : FonGetFontSizes(kDC, r.face);
        std::string what = "the list of " + std::to_string(r.entry) + "-byte entries of " + (r.face ? r.face : "every face");
        EXPECT_EQ(h != nullptr, !r.fonts.empty()) << what;
        // A face's first font answers the single questions; with none the byte stays; no context, no answer.
        BYTE charSet = 0x77, pitch = 0x77;
        BOOL asked = FonGetFontCharSet(kDC, r.face, &charSet) && FonGetFontPitchAndFamily(kDC, r.face, &pitch) && !FonGetFontCharSet(nullptr, r.face, &charSet);
        if (r.face) {
            EXPECT_TRUE(asked && charSet == (r.fonts.empty() ? 0x77 : kFonts[r.fonts[0]].charSet) && pitch == (r.fonts.empty() ? 0x77 : kFonts[r.fonts[0]].pitch)) << what;
        }
        EXPECT_TRUE(h || heap.Outstanding() == 0) << what << ", allocation " << r.failFrom << " failing: a block left";
        if (!h) continue;
        EXPECT_EQ(gOsl.memory->GlobalSize(h), 2 + r.fonts.size() * r.entry) << what;
        const BYTE* b = static_cast<const BYTE*>(gOsl.memory->GlobalLock(h));
        EXPECT_EQ(size_t(b[0] | b[1] << 8), r.fonts.size()) << what << ": the count at the head";
        for (size_t i = 0; i < r.fonts.size(); ++i) {
            const Font& f = kFonts[r.fonts[i]];
            LOGFONTA lf; TEXTMETRICA tm; recordsOf(f, &lf, &tm);
            const BYTE* e = b + 2 + i * r.entry;
            bool same = r.entry == 32 ? !std::strcmp(reinterpret_cast<const char*>(e), f.face) : !std::memcmp(e, &lf, 60) && !std::memcmp(e + 60, &tm, 53);
            EXPECT_TRUE(same && (r.entry != 115 || (e[113] | e[114] << 8) == int(f.type & 0xFFFF))) << what << ", entry " << i;
        }
        gOsl.memory->GlobalUnlock(h), gOsl.memory->GlobalFree(h);
    }
}

#ifdef _WIN32
// The system's own fonts: the Japanese faces have a Shift-JIS (128) font, DejaVu none.
struct RealRow { const char* face; bool shiftJis; };
const RealRow kReal[] = {{"IPAGothic", true}, {"IPAPGothic", true}, {"DejaVu Sans", false}};
TEST(FonSystem, FacesAndCharSets) {
    HDC dc = GetDC(nullptr);
    for (const RealRow& r : kReal) {
        HGLOBAL faces = FonGetFontFaces(dc), sizes = FonGetFontSizes(dc, r.face);
        EXPECT_TRUE(faces && sizes) << "the faces of the screen, and the sizes of " << r.face;
        if (!faces || !sizes) continue;
        const BYTE *b = static_cast<const BYTE*>(GlobalLock(faces)), *s = static_cast<const BYTE*>(GlobalLock(sizes));
        bool listed = false, shiftJis = false;
        for (int i = 0; i < (b[0] | b[1] << 8); ++i) listed |= !std::strcmp(reinterpret_cast<const char*>(b + 2 + i * 32), r.face) && GlobalSize(faces) == 2u + (b[0] | b[1] << 8) * 32u;
        for (int i = 0; i < (s[0] | s[1] << 8); ++i) shiftJis |= s[2 + i * 113 + 23] == SHIFTJIS_CHARSET;
        // The first font answers; FonFixLogfont changes only its character set and pitch.
        LOGFONTA lf, fixed;
        std::strcpy(static_cast<char*>(std::memset(&lf, 0x77, sizeof lf)) + 28, r.face);
        fixed = lf, fixed.lfCharSet = s[2 + 23], fixed.lfPitchAndFamily = s[2 + 27];
        EXPECT_TRUE(FonFixLogfont(dc, &lf) && !std::memcmp(&lf, &fixed, sizeof lf)) << r.face << ": FonFixLogfont";
        EXPECT_TRUE(listed && shiftJis == r.shiftJis) << r.face << " in the faces block, a Shift-JIS font among its sizes " << r.shiftJis;
        GlobalUnlock(faces), GlobalUnlock(sizes), GlobalFree(faces), GlobalFree(sizes);
    }
    ReleaseDC(nullptr, dc);
}
#endif

} // namespace
