// oxl fonts and oxl open: the font lists the library gathers, and what
// CBOpenFile does with a name.
#include "oxl_tool.h"

#include <oxlrt31/dlgutil.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace {

struct Named { unsigned value; const char* name; };
#ifdef _WIN32
constexpr Named kCharSets[] = {
    {0, "ANSI"}, {1, "DEFAULT"}, {2, "SYMBOL"}, {77, "MAC"}, {128, "SHIFTJIS"}, {129, "HANGUL"}, {130, "JOHAB"},
    {134, "GB2312"}, {136, "CHINESEBIG5"}, {161, "GREEK"}, {162, "TURKISH"}, {163, "VIETNAMESE"}, {177, "HEBREW"},
    {178, "ARABIC"}, {186, "BALTIC"}, {204, "RUSSIAN"}, {222, "THAI"}, {238, "EASTEUROPE"}, {255, "OEM"},
};
#endif
constexpr Named kFlags[] = {
    {OF_READ, "read"}, {OF_WRITE, "write"}, {OF_READWRITE, "readwrite"}, {OF_SHARE_EXCLUSIVE, "exclusive"},
    {OF_SHARE_DENY_WRITE, "denywrite"}, {OF_SHARE_DENY_READ, "denyread"}, {OF_SHARE_DENY_NONE, "denynone"},
    {OF_PARSE, "parse"}, {OF_DELETE, "delete"}, {OF_CREATE, "create"}, {OF_EXIST, "exist"},
};

#ifdef _WIN32
std::string charSetName(unsigned c) {
    for (const Named& n : kCharSets)
        if (n.value == c) return std::to_string(c) + " " + n.name;
    return std::to_string(c);
}

// The entries of a list block: its count and a pointer to the first.
const unsigned char* entries(HGLOBAL block, unsigned* count) {
    const unsigned char* b = static_cast<const unsigned char*>(GlobalLock(block));
    *count = b ? unsigned(b[0] | b[1] << 8) : 0;
    return b ? b + 2 : nullptr;
}

void showFace(HDC dc, const char* face) {
    HGLOBAL sizes = FonGetFontSizes(dc, face);
    unsigned n = 0;
    const unsigned char* e = sizes ? entries(sizes, &n) : nullptr;
    std::set<unsigned> sets;
    for (unsigned i = 0; i < n; ++i) sets.insert(e[i * FON_SIZE_ENTRY + 23]);
    BYTE pitch = 0;
    FonGetFontPitchAndFamily(dc, face, &pitch);
    std::printf("%-32s pitch and family 0x%02X, %u fonts, character sets:", face, pitch, n);
    for (unsigned c : sets) std::printf(" %s", charSetName(c).c_str());
    std::printf("\n");
    if (sizes) {
        GlobalUnlock(sizes);
        GlobalFree(sizes);
    }
}

#endif

void closeFile(HANDLE h) {
#ifdef _WIN32
    CloseHandle(h);
#else
    close(int(reinterpret_cast<intptr_t>(h)));
#endif
}

} // namespace

int OxlFonts(int, char**) {
#ifdef _WIN32
    HDC dc = GetDC(nullptr);
    HGLOBAL faces = FonGetFontFaces(dc);
    unsigned n = 0;
    const unsigned char* e = faces ? entries(faces, &n) : nullptr;
    std::printf("%u faces\n", n);
    for (unsigned i = 0; i < n; ++i) showFace(dc, reinterpret_cast<const char*>(e + i * FON_FACE_ENTRY));
    if (faces) {
        GlobalUnlock(faces);
        GlobalFree(faces);
    }
    ReleaseDC(nullptr, dc);
#else
    // There is no font system behind the library here: it finds no fonts.
    std::printf("%u faces\n", FonGetFontFaces(nullptr) ? 1u : 0u);
#endif
    return 0;
}

int OxlOpen(int argc, char** argv) {
    DWORD flags = 0;
    for (int i = 1; i < argc; ++i) {
        const Named* f = nullptr;
        for (const Named& n : kFlags)
            if (!std::strcmp(argv[i], n.name)) f = &n;
        char* end = nullptr;
        unsigned long v = f ? f->value : std::strtoul(argv[i], &end, 0);
        if (!f && (!*argv[i] || *end)) {
            std::fprintf(stderr, "oxl open: '%s' is no flag (a number, or one of read write readwrite exclusive\n"
                                 "denywrite denyread denynone parse delete create exist)\n", argv[i]);
            return 2;
        }
        flags |= DWORD(v);
    }
    char full[CBOF_PATHMAX] = "";
    HANDLE h = CBOpenFile(argv[0], full, flags);
#ifdef _WIN32
    DWORD error = GetLastError();
#endif
    std::printf("CBOpenFile(\"%s\", flags 0x%04lX)\n", argv[0], static_cast<unsigned long>(flags));
#ifdef _WIN32
    if (h == INVALID_HANDLE_VALUE) std::printf("  = -1, failed (last error %lu)\n", static_cast<unsigned long>(error));
#else
    if (h == INVALID_HANDLE_VALUE) std::printf("  = -1, failed\n"); // the library keeps its last error to itself here
#endif
    else if (!h) std::printf("  = 0, done without opening\n");
    else std::printf("  = a file handle, opened\n");
    std::printf("  full name: \"%s\"\n", full);
    if (h != INVALID_HANDLE_VALUE && h) closeFile(h);
    return h == INVALID_HANDLE_VALUE ? 1 : 0;
}
