/*
 * Window helpers inside the library.
 */
#ifndef OXL_UI_DLG_H
#define OXL_UI_DLG_H

#include <oxlrt31/dlg.h>

/* Disables (enable 0) `window` and its parents that are enabled, up to 50,
 * and returns the record of them; enabling enables the recorded ones, frees
 * the record and returns null. */
HGLOBAL DlgEnableParentChain(HWND window, BOOL enable, HGLOBAL saved);

#endif
