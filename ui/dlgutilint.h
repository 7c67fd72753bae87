// The dialog utilities inside the library: the window messages they send,
// by their Win32 numbers, and the work buffers' sizes.
#ifndef OXL_UI_DLGUTILINT_H
#define OXL_UI_DLGUTILINT_H

#include <oxlrt31/dlgutil.h>

namespace dlgutil {

constexpr UINT kSetText = 12;       // WM_SETTEXT
constexpr UINT kSetRedraw = 11;     // WM_SETREDRAW
constexpr UINT kGetFont = 49;       // WM_GETFONT
constexpr UINT kGetHExtent = 403;   // LB_GETHORIZONTALEXTENT
constexpr UINT kSetHExtent = 404;   // LB_SETHORIZONTALEXTENT
constexpr UINT kComboListBox = 4064; // the inner list of a host combo box
constexpr int kFieldText = 32;      // a real-number field's text and its NUL

// The messages of one kind of list control.
struct ListMessages {
    UINT findExact, count, textLength, text, add;
};
constexpr ListMessages kListBox = {399, 395, 394, 393, 384};
constexpr ListMessages kComboBox = {332, 326, 329, 328, 323};

} // namespace dlgutil

#endif
