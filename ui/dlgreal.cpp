// Whole numbers shown as decimal text in edit fields: plain fixed-point
// values and lengths in thousandths of an inch shown as centimetres.
//
// A centimetre counts as 1 / 2.5406 inch in both directions, and the metric
// text goes in quarter steps of a tenth; the constants below are the ones the
// fields have always been computed with, so that stored values read back the
// same.
#include "ui/dlgutilint.h"

#include "os/osl.h"
#include <oxlrt31/intl.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr double kInchPerCm = 0.3936078091789341;
constexpr double kCmPerInch = 2.5406;

// Decimals limited to 0..3; the power of ten they stand for.
int clampDecimals(int decimals) { return decimals < 0 ? 0 : decimals > 3 ? 3 : decimals; }
LONG powerOf(int decimals) { return decimals == 0 ? 1 : decimals == 1 ? 10 : decimals == 2 ? 100 : 1000; }

// Beyond the 32-bit range a value is held at its end.
constexpr LONG kLargest = 0x7FFFFFFF;
LONG saturate(double v) { return v >= double(kLargest) ? kLargest : LONG(v); }
LONG saturate(long long v) { return v > kLargest ? kLargest : LONG(v); }

LONG metricValue(const char* text) { return saturate(gOsl.crt->atof(text) * kInchPerCm * 1000.0 + 0.5); }

// A part of at most 15 characters read as a number; empty is 0.
LONG partValue(const char* from, size_t n) {
    char part[16] = "";
    std::memcpy(part, from, n < 15 ? n : 15);
    LONG v = 0;
    IntlFetchNextNumLong(&v, part);
    return v;
}

// The integer part, then the fraction padded with "0" and cut at the decimals.
LONG plainValue(const char* text, int decimals) {
    decimals = clampDecimals(decimals);
    const char* point = IntlStrChr(text, '.');
    size_t whole = point ? size_t(point - text) : std::strlen(text);
    char fraction[4] = "000";
    if (point) {
        size_t n = std::strlen(point + 1);
        std::memcpy(fraction, point + 1, n < 3 ? n : 3);
    }
    fraction[decimals] = 0;
    return saturate((long long)partValue(text, whole) * powerOf(decimals) + partValue(fraction, decimals));
}

void writeMetric(LONG value, char* out) {
    long whole = 0;
    int tenth = 0;
    double rest = 0;
    if (value != 0) {
        double cm = value * 0.001 * kCmPerInch;
        whole = long(cm);
        rest = cm - whole;
        tenth = int(rest * 10.0);
        if (tenth != 0) rest -= tenth * 0.1;
    }
    if (rest >= 0.0875) {
        if (++tenth > 9) {
            ++whole;
            tenth = 0;
        }
        rest = 0;
    }
    const char* quarter = rest >= 0.0625 ? "75" : rest >= 0.0375 ? "5" : rest >= 0.0125 ? "25" : "";
    std::snprintf(out, dlgutil::kFieldText, "%ld.%d%s", whole, tenth, quarter);
}

} // namespace

LONG OXLAPI DlgGetDlgItemReal(HWND dialog, int id, BOOL* ok, BOOL, BOOL metric, int decimals) {
    char text[dlgutil::kFieldText] = "";
    if (ok) *ok = 0;
    gOsl.dialog->GetDlgItemTextA(dialog, id, text, sizeof text);
    if (!text[0] || text[std::strspn(text, "0123456789.")]) return 0;
    LONG value = metric ? metricValue(text) : plainValue(text, decimals);
    if (ok) *ok = 1;
    return value;
}

void OXLAPI DlgSetStrRealUnits(LONG value, BOOL, LPSTR out, int decimals) {
    if (decimals <= 0) {
        std::snprintf(out, dlgutil::kFieldText, "%d", int(value));
        return;
    }
    int places = decimals == 1 ? 1 : decimals == 2 ? 2 : 3;
    DWORD divisor = DWORD(powerOf(places)), q = DWORD(value) / divisor, r = DWORD(value) % divisor;
    if (r == 0) {
        std::snprintf(out, dlgutil::kFieldText, "%d", int(q));
        return;
    }
    std::snprintf(out, dlgutil::kFieldText, "%d.%0*d", int(q), places, int(r));
    for (size_t n = std::strlen(out); out[n - 1] == '0'; --n) out[n - 1] = 0;
}

void OXLAPI DlgSetStrRealMetricUnits(LONG value, BOOL, LPSTR out) { writeMetric(value, out); }

void OXLAPI DlgSetDlgItemReal(HWND dialog, int id, LONG value, BOOL reserved, BOOL metric, int decimals) {
    char text[dlgutil::kFieldText];
    if (metric) DlgSetStrRealMetricUnits(value, reserved, text);
    else DlgSetStrRealUnits(value, reserved, text, decimals);
    HWND field = gOsl.window->GetDlgItem(dialog, id);
    gOsl.window->SendMessageA(field, dlgutil::kSetText, 0, reinterpret_cast<LPARAM>(text));
}
