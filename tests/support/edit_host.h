// A host of one masked edit control, as an application makes it: a parent
// window and an EDIT child whose window procedure passes every message
// through FMTValidateInput first. Real windows on Windows, the OS layer's
// model elsewhere. Beeps are counted and the Shift key is scripted.
#ifndef OXL_TESTS_EDIT_HOST_H
#define OXL_TESTS_EDIT_HOST_H

#include "os/osl.h"

#include <string>
#include <utility>

class EditHost {
public:
    EditHost(const char* mask, DWORD flags);
    ~EditHost();
    // Text and selection put straight into the control, past the filter.
    void Set(const char* text, WORD s, WORD e);
    // A message to the control, through the host's procedure.
    LRESULT Send(UINT msg, WPARAM w, LPARAM l);
    // A key: \1 Left, \2 Right, \3 Home, \4 End, \x7f Delete (each with Shift
    // held when `shift`), \5 Shift+End, \6 Shift+Home, \b Backspace, \x0e
    // WM_CHAR 8 with lParam 0, \x0f WM_CLEAR; any other character is typed.
    void Key(char k, bool shift = false);
    std::string Text() const;
    std::pair<WORD, WORD> Sel() const; // start and end
    int beeps = 0;
    bool shift = false;
    WPARAM setTextId = 0; // wParam of the last FMTM_SETTEXT the host saw

private:
    HWND m_parent, m_edit;
    const OslEditService* m_saved;
};

// FMTUnmaskInput of a text into `out` (null: a buffer of its own).
LONG Unmask(const char* text, const char* mask, char* out);

// Drives a masked control from bytes, for the fuzz target and the property
// test alike. Byte 0 gives the mask's length (1 + its low four bits), a
// leading "^" (0x40) and a trailing "*" (0x80); the mask follows (a zero byte
// stands for "X"); the rest is a text (up to its first zero byte), put into
// and taken out of the mask in buffers of exactly their promised room, and, two
// bytes each, messages: characters, caret keys with or without Shift,
// deletions, selections, pastes and text set from outside. After each
// message to a control with a valid mask the text must still fit the mask,
// and after a caret key the caret must rest on a placeholder or the text's
// end. Returns the first breach, "" for none.
std::string EditDrive(const unsigned char* data, size_t size);

#endif
