// The abort side of a job: the abort procedure and its message pump, the
// abort dialog, the reports of failed spooler calls, the page text.
#include "print/print.h"

#include "os/osl.h"
#include <oxlrt31/mem.h>
#include "ui/dlg.h"

#include <cstdio>
#include <cstring>

namespace {

enum { kIdLine1 = 800, kIdLine2 = 801, kIdPage = 802, kIdDevice = 803 };
enum { kStrNoDisk = 1961, kStrNoMemory = 1962, kStrError = 1963, kStrOn = 1964, kStrPage = 1965 };
constexpr int kNotReported = 0x4000; // the platform's mark in the codes -1 to -5

void deviceLine(PrintJobState* s, HWND dialog) {
    char on[12] = "";
    gOsl.profile->LoadStringA(s->hInstance, kStrOn, on, sizeof on);
    const PrintJobInfo& j = s->job;
    SIZE_T n = std::strlen(j.Device) + std::strlen(j.Port) + 12;
    char* text = static_cast<char*>(MemAlloc(DWORD(n)));
    if (!text) return; // the line stays empty
    std::snprintf(text, n, "%s%s%s", j.Device, on, j.Port);
    gOsl.window->SetDlgItemTextA(dialog, kIdDevice, text);
    MemFree(text);
}

INT_PTR initDialog(HWND dialog, PrintJobState* s) {
    const OslWindowService* win = gOsl.window;
    s->hDialog = dialog;
    s->hSysMenu = win->GetSystemMenu(dialog, FALSE);
    win->SetWindowTextA(dialog, s->job.Title);
    win->SetDlgItemTextA(dialog, kIdLine1, s->job.TextLine1);
    win->SetDlgItemTextA(dialog, kIdLine2, s->job.TextLine2);
    deviceLine(s, dialog);
    PrintJobShowPage(s);
    win->UpdateWindow(win->GetDlgItem(dialog, kIdLine1));
    DlgCenterDialog(dialog);
    win->SetFocus(dialog);
    if (s->job.DialogInitProc) s->job.DialogInitProc(dialog);
    return TRUE;
}

} // namespace

void PrintJobCloseDialog(PrintJobState* s) {
    if (!s->hDialog) return;
    if (s->job.Flags & PRINT_USE_ENABLEPROC) {
        if (s->job.EnableProc) s->job.EnableProc(s->hInstance, nullptr, TRUE, s->hDisabled);
    } else {
        DlgEnableParentChain(s->hParent, TRUE, s->hDisabled);
    }
    gOsl.window->DestroyWindow(s->hDialog); // WM_DESTROY still finds the slot
    s->hDialog = nullptr;
}

void PrintJobShowPage(PrintJobState* s) {
    ++s->nPage;
    char label[32] = "", text[48];
    gOsl.profile->LoadStringA(s->hInstance, kStrPage, label, sizeof label);
    int number = s->job.PageNumberProc ? s->job.PageNumberProc(s->job.UserData) : int(s->nPage);
    std::snprintf(text, sizeof text, "%s%d", label, number);
    if (s->hDialog) gOsl.window->SetDlgItemTextA(s->hDialog, kIdPage, text);
}

void PrintJobReport(HWND parent, HDC dc, int code) {
    PrintJobState* s = PrintJobStateForDC(dc);
    if (!s) return;
    PrintJobCloseDialog(s);
    if (code & kNotReported) {
        if (s->bAbort && s->nAbortCode == -3) code = -3;
        s->bAbort = TRUE;
        UINT id = code == -5 ? kStrNoMemory : code == -4 ? kStrNoDisk : kStrError;
        if (code == -3 || code == -2) return;
        char text[128];
        if (gOsl.profile->LoadStringA(s->hInstance, id, text, sizeof text) > 0)
            gOsl.window->MessageBoxA(parent, text, s->job.Title, MB_ICONEXCLAMATION);
        return;
    }
    s->bAbort = TRUE;
}

BOOL OXLCALLBACK PrintJobYield(LONG value) {
    MSG msg;
    BOOL waiting;
    do waiting = gOsl.window->PeekMessageA(&msg, nullptr, 0, 0, PM_NOREMOVE);
    while (value && !waiting);
    return waiting;
}

BOOL OXLAPI AbortTest(HDC dc, int code) {
    if (!dc) return TRUE;
    PrintJobState* s = PrintJobStateForDC(dc);
    if (!s) return TRUE;
    const OslWindowService* win = gOsl.window;
    MSG msg;
    while (!s->bAbort && win->PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        HWND dialog = s->hDialog;
        if (!dialog || !win->IsDialogMessageA(dialog, &msg)) {
            win->TranslateMessage(&msg);
            win->DispatchMessageA(&msg);
        }
        if (!(s = PrintJobStateForDC(dc))) return TRUE;
    }
    if (s->job.YieldProc) {
        s->job.YieldProc(0);
        if (!(s = PrintJobStateForDC(dc))) return TRUE;
    }
    if (code < 0) {
        s->bAbort = TRUE;
        s->nAbortCode = short(code);
    }
    return !s->bAbort;
}

BOOL OXLAPI PrintAbort(HDC dc) {
    PrintJobState* s = PrintJobStateForDC(dc);
    if (!s) return FALSE;
    if (s->hDialog) gOsl.window->SendMessageA(s->hDialog, WM_COMMAND, 0, 0);
    return TRUE;
}

INT_PTR OXLAPI DlgFnAbort(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
    switch (message) {
    case WM_INITDIALOG:
        return initDialog(dialog, reinterpret_cast<PrintJobState*>(lParam));
    case WM_COMMAND:
        if (!PrintJobInStartDoc()) {
            if (PrintJobState* s = PrintJobStateForDialog(dialog)) {
                s->bAbort = TRUE;
                s->nAbortCode = -3;
                PrintJobCloseDialog(s);
            }
        }
        return TRUE;
    case WM_INITMENU:
        if (PrintJobState* s = PrintJobStateForDialog(dialog))
            gOsl.window->EnableMenuItem(s->hSysMenu, SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
        return TRUE;
    case WM_DESTROY:
        if (PrintJobState* s = PrintJobStateForDialog(dialog)) {
            if (s->job.DialogDestroyProc) s->job.DialogDestroyProc(dialog);
        }
        return TRUE;
    default:
        return FALSE;
    }
}
