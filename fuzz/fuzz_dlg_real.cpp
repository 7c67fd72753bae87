// The reader of real-number fields on any text, through a dialog whose item
// holds the input: text that isn't digits and at most one point reads as 0
// and not ok; a plain value read is written back by DlgSetStrRealUnits and
// reads back the same.
//
// Input: [decimals and metric] text
#include "fuzz_check.h"
#include "os/osl.h"

#include <oxlrt31/dlgutil.h>

#include <cstring>
#include <string>

static std::string sItem;

static LONG readField(const std::string& text, BOOL metric, int decimals, BOOL* ok) {
    static OslDialogService dialog = [] {
        OslDialogService d = *gOsl.dialog;
        d.GetDlgItemTextA = [](HWND, int, LPSTR out, int size) { return UINT(std::strlen(std::strncpy(out, sItem.substr(0, size_t(size - 1)).c_str(), size_t(size)))); };
        return d;
    }();
    gOsl.dialog = &dialog, sItem = text;
    return DlgGetDlgItemReal(nullptr, 1, ok, 0, metric, decimals);
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    if (size < 1) return 0;
    int decimals = int(data[0] % 6) - 1; // -1 to 4: outside 0 to 3 counts as the nearer end
    BOOL metric = data[0] >> 7, ok = 2, again = 0;
    LONG v = readField(std::string(reinterpret_cast<const char*>(data + 1), size - 1).c_str(), metric, decimals, &ok);
    FuzzRequire((ok == 1 && v >= 0) || (ok == 0 && v == 0));
    char out[64];
    if (ok && !metric) DlgSetStrRealUnits(v, 0, out, decimals), FuzzRequire(readField(out, 0, decimals, &again) == v && again == 1);
    return 0;
}
