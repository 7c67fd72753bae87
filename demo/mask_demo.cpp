// A small host of masked fields: a telephone number, a part code, a date and
// an amount, each an EDIT control whose window procedure passes every
// message through FMTValidateInput. Beside the date and the amount the host
// shows what it reads from them: the date under a long picture, the amount
// under a currency picture.
//
//   mask_demo [--shot FILE.png]   with --shot: types into the fields, saves
//                                 the window as a PNG and exits
#include <oxlrt31/datepic.h>
#include <oxlrt31/mask.h>
#include <oxlrt31/numpic.h>

#include <windows.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

void SaveWindowPng(HWND window, const char* file); // mask_demo_png.cpp

namespace {

struct Field { const char* label; const char* mask; const char* typed; HWND edit; HWND shown; WNDPROC control; };
Field gFields[] = {
    {"Telephone", "(999) 999-9999", "5551234567", nullptr, nullptr, nullptr},
    {"Part code", "AA-9999-N", "xq0417b", nullptr, nullptr, nullptr},
    {"Date", "99/99/9999", "12311999", nullptr, nullptr, nullptr},
    {"Amount", "^9999999", "1234567", nullptr, nullptr, nullptr},
};
constexpr int kFields = sizeof gFields / sizeof gFields[0];

Field* fieldOf(HWND edit) {
    for (Field& f : gFields) {
        if (f.edit == edit) return &f;
    }
    return nullptr;
}

LRESULT CALLBACK masked(HWND hWnd, UINT msg, WPARAM w, LPARAM l) {
    Field* f = fieldOf(hWnd);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.lpszPicture = const_cast<char*>(f->mask);
    b.dwFlags |= FMTF_EDITFILTER | FMTF_EDITNOTIFY;
    b.hWnd = DWORD(reinterpret_cast<uintptr_t>(hWnd)), b.uMsg = msg, b.wParam = DWORD(w), b.lParam = DWORD(l);
    long long whole = l;
    std::memcpy(b.abReserved, &whole, sizeof whole);
    if (FMTValidateInput(&b)) return LONG(b.lResult);
    return CallWindowProcA(f->control, hWnd, msg, w, l);
}

// What the host reads from the date and the amount, beside them.
void showValues() {
    char text[64], out[128] = "";
    GetWindowTextA(gFields[2].edit, text, sizeof text);
    FMTCNTLBLOCK b;
    FMTInitCntlBlock(&b);
    b.bUseProfile = 1, b.nType = FMT_DATE, b.lpszInput = text, b.lpszOutput = out;
    b.lpszPicture = const_cast<char*>("MM/dd/yyyy");
    if (FMTUnformatDateTimeStr(&b)) {
        b.bUseProfile = 0, b.iDateType = FMT_DATETYPE_LONG, b.lpszLongPic = const_cast<char*>("dddd, MMMM d, yyyy");
        FMTFormatDateTime(&b, 0);
    }
    SetWindowTextA(gFields[2].shown, out);
    GetWindowTextA(gFields[3].edit, text, sizeof text);
    FMTInitCntlBlock(&b);
    out[0] = 0;
    b.bUseProfile = 1, b.nType = FMT_PICTURE, b.lpszOutput = out, b.lpszPicture = const_cast<char*>("$#,##0.00");
    if (*text && NumAsciiToNumber(&b.numValue, text)) FMTFormatNumber(&b);
    SetWindowTextA(gFields[3].shown, out);
}

LRESULT CALLBACK frame(HWND hWnd, UINT msg, WPARAM w, LPARAM l) {
    if (msg == WM_COMMAND && HIWORD(w) == EN_CHANGE) showValues();
    if (msg == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcA(hWnd, msg, w, l);
}

HWND build(HINSTANCE inst) {
    WNDCLASSA wc = {};
    wc.lpfnWndProc = frame, wc.hInstance = inst, wc.lpszClassName = "OxlMaskDemo";
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1), wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    RegisterClassA(&wc);
    HWND top = CreateWindowExA(0, "OxlMaskDemo", "Masked fields", WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU, 40, 40, 580, 210,
                               nullptr, nullptr, inst, nullptr);
    HFONT font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
    for (int i = 0; i < kFields; ++i) {
        Field& f = gFields[i];
        std::string caption = std::string(f.label) + "   " + f.mask;
        HWND label = CreateWindowExA(0, "STATIC", caption.c_str(), WS_CHILD | WS_VISIBLE, 12, 16 + 40 * i, 170, 20, top, nullptr, inst, nullptr);
        f.edit = CreateWindowExA(WS_EX_CLIENTEDGE, "EDIT", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL, 190, 12 + 40 * i, 140, 24,
                                 top, reinterpret_cast<HMENU>(INT_PTR(100 + i)), inst, nullptr);
        f.shown = CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE, 342, 16 + 40 * i, 230, 20, top, nullptr, inst, nullptr);
        for (HWND h : {label, f.edit, f.shown}) SendMessageA(h, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
        f.control = reinterpret_cast<WNDPROC>(SetWindowLongPtrA(f.edit, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(masked)));
    }
    return top;
}

void pump() {
    MSG m;
    while (PeekMessageA(&m, nullptr, 0, 0, PM_REMOVE)) TranslateMessage(&m), DispatchMessageA(&m);
}

} // namespace

int main(int argc, char** argv) {
    HWND top = build(GetModuleHandleA(nullptr));
    ShowWindow(top, SW_SHOW);
    if (argc == 3 && !std::strcmp(argv[1], "--shot")) {
        for (Field& f : gFields) {
            for (const char* k = f.typed; *k; ++k) SendMessageA(f.edit, WM_CHAR, BYTE(*k), 1);
        }
        SetFocus(gFields[1].edit);
        for (int i = 0; i < 20; ++i) pump(), Sleep(50);
        SaveWindowPng(top, argv[2]);
        DestroyWindow(top);
        return 0;
    }
    MSG m;
    while (GetMessageA(&m, nullptr, 0, 0) > 0) {
        if (!IsDialogMessageA(top, &m)) TranslateMessage(&m), DispatchMessageA(&m);
    }
    return 0;
}
