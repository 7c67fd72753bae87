// The date picture scanner and parser on arbitrary text in every mode: as a
// value text and a picture (FMTParseDateText), and as each kind of known
// form (FMTMatchDateForm), whose picture buffer is malloc'd to exactly its
// 35 bytes. Checked: a list is linked both ways from its head, each element
// is of a type its mode can make and a text fits a token; a form gives a
// picture exactly when it gives a list. A mode marker (02 n 02) inside a
// text switches the scanner's mode, so either kind of element may come of
// either kind of text.
//
// Input: [mode] text
#include "fuzz_check.h"

#include "format/datepic.h"

#include <cstdlib>

namespace {

bool WellFormed(const FMTDATETOKEN* e) {
    if (!e || e->pPrev) return false;
    for (; e; e = e->pNext) {
        if (e->pNext && e->pNext->pPrev != e) return false;
        int32_t t = e->nType;
        if (t < FMTDT_NUMBER || t > FMTDT_HOUR24N || (t == FMTDT_STRING && strnlen(e->pszText, kFMTDateWordMax) >= size_t(kFMTDateWordMax)) ||
            (t == FMTDT_BLANK && (e->lValue < 1 || e->lValue >= kFMTDateWordMax)))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    text = text.c_str(); // up to the first zero byte
    int mode = data[0] % 8;
    char* picture = static_cast<char*>(std::malloc(kFMTDateFormPicSize));
    FMTDATETOKEN* list = mode < 4 ? FMTParseDateText(text.c_str(), mode + 1) : FMTMatchDateForm(text.c_str(), mode == 7 ? 3 : mode - 3, picture, data[0] >> 7);
    FuzzRequire((mode < 4 || (list != nullptr) == (picture[0] != 0)) && (!list || WellFormed(list)));
    std::free(picture), FMTFreeDateTokens(list);
    return 0;
}
