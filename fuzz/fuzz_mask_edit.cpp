// Masks and the edit filter on any bytes. The first byte gives the mask's
// length (and a leading "^" or a trailing "*"), the mask follows; the rest
// is a text for FMTMaskText and FMTUnmaskInput, in buffers of exactly the
// room the header promises, and then, read two bytes at a time, messages to
// a masked control of the OS layer's model: after each one the text fits
// the mask, and after a caret key the caret rests on a placeholder or at
// the text's end. An invalid mask gets the same messages, with no promise
// but that nothing breaks.
#include "format/maskint.h"
#include "fuzz_check.h"
#include "tests/support/edit_host.h"

#include <string>
#include <vector>

namespace {

void putAndTake(const std::string& mask, const std::string& text) {
    const char* m = FMTMaskProper(mask.c_str());
    size_t room = FMTIsPicUnlimited(m) ? FMTCntNonMaskChars(m) + (*m == '^') + text.size() + 1 : std::strlen(m) + 1;
    std::vector<char> out(room), plain(text.size() + 1);
    if (FMTMaskText(text.c_str(), out.data(), m)) FuzzRequire(std::strlen(out.data()) < room);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszInput = const_cast<char*>(text.c_str()), b.lpszPicture = const_cast<char*>(mask.c_str()), b.lpszOutput = plain.data();
    FMTUnmaskInput(&b);
}

bool fits(EditHost& host, const std::string& mask) {
    std::string text = host.Text();
    std::vector<char> plain(text.size() + 1);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszInput = text.data(), b.lpszPicture = const_cast<char*>(mask.c_str()), b.lpszOutput = plain.data();
    return FMTUnmaskInput(&b) == 1;
}

bool caretAllowed(EditHost& host, const char* mask) {
    WORD caret = host.SelStart();
    size_t len = std::strlen(mask);
    return caret >= host.Text().size() || FMTIsMaskChar(caret < len ? mask[caret] : FMTIsPicUnlimited(mask) ? '*' : 0);
}

void message(EditHost& host, BYTE kind, BYTE value, const std::string& text) {
    static const UINT kKeys[] = {OSL_VK_LEFT, OSL_VK_RIGHT, OSL_VK_HOME, OSL_VK_END, OSL_VK_DELETE};
    switch (kind % 8) {
    case 0: case 1: host.Send(OSL_WM_CHAR, value, 1); break;
    case 2: host.shift = value & 0x80; host.Send(OSL_WM_KEYDOWN, kKeys[value % 5], 1); host.shift = false; break;
    case 3: host.Send(value & 1 ? OSL_WM_CLEAR : OSL_WM_CHAR, 8, value & 2); break;
    case 4: host.Send(OSL_EM_SETSEL, value % 32, (value >> 3) % 32); break;
    case 5: host.Send(OSL_EM_REPLACESEL, 0, reinterpret_cast<LPARAM>(text.c_str() + value % (text.size() + 1))); break;
    case 6: host.Send(OSL_WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str() + value % (text.size() + 1))); break;
    default: host.Send(FMTM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str() + value % (text.size() + 1))); break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    size_t n = 1 + data[0] % 16;
    if (size < 1 + n) return 0;
    std::string mask = data[0] & 0x40 ? "^" : "";
    for (size_t i = 1; i <= n; ++i) mask += data[i] ? char(data[i]) : 'X';
    if (data[0] & 0x80) mask += '*';
    std::string rest(reinterpret_cast<const char*>(data) + 1 + n, size - 1 - n);
    std::string text = rest.substr(0, rest.find('\0'));
    putAndTake(mask, text);
    const char* proper = FMTMaskProper(mask.c_str());
    // An invalid mask must do no harm either; only a valid one keeps the text true.
    bool valid = FMTIsValidMaskFormat(proper);
    EditHost host(mask.c_str(), FMTF_EDITFILTER | FMTF_EDITNOTIFY);
    for (size_t i = 0; i + 1 < rest.size(); i += 2) {
        BYTE kind = BYTE(rest[i]), value = BYTE(rest[i + 1]);
        message(host, kind, value, text);
        if (!valid) continue;
        FuzzRequire(fits(host, mask));
        if (kind % 8 == 2 && value % 5 < 4 && !(value & 0x80)) FuzzRequire(caretAllowed(host, proper));
    }
    return 0;
}
