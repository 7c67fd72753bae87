// A host of one masked edit control, as an application makes it: a parent
// window and an EDIT child whose window procedure passes every message
// through FMTValidateInput first. Real windows on Windows, the OS layer's
// model elsewhere. Beeps are counted and the Shift key is scripted.
#ifndef OXL_TESTS_EDIT_HOST_H
#define OXL_TESTS_EDIT_HOST_H

#include "os/osl.h"

#include <string>

class EditHost {
public:
    EditHost(const char* mask, DWORD flags);
    ~EditHost();
    // Text and selection put straight into the control, past the filter.
    void Set(const char* text, WORD s, WORD e);
    // A message to the control, through the host's procedure.
    LRESULT Send(UINT msg, WPARAM w, LPARAM l);
    std::string Text() const;
    WORD SelStart() const;
    WORD SelEnd() const;
    bool Modified() const;
    int beeps = 0;
    bool shift = false;
    WPARAM setTextId = 0; // wParam of the last FMTM_SETTEXT the host saw

private:
    HWND m_parent, m_edit;
    const OslEditService* m_saved;
};

#endif
