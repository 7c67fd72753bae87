/*
 * Window helpers for hosts and for the library's own dialogs: lengths in
 * screen pixels, disabling a group of windows and enabling it again, centring
 * a dialog, a message box from string resources, and a chain of wizard
 * dialogs.
 */
#ifndef OXLRT31_DLG_H
#define OXLRT31_DLG_H

#include "oxlapi.h"

#include <stddef.h>

OXL_EXTERN_C_BEGIN

/* The record of DlgDoDlgWizard, filled by the host. Packed. */
#pragma pack(push, 1)
typedef struct tagDLGWIZARD {
    HWND DlgOwner;          /* owner of every dialog */
    LPARAM Reserved;        /* not used by the library */
    HINSTANCE DlgInstance;  /* module holding the templates */
    LPCSTR DlgTemplates;    /* names one after the other, each ended by 0, the list by an empty name */
    DLGPROC* DlgProcs;      /* one dialog procedure per name */
    LONG DlgCount;          /* number of steps */
    LONG DlgCurrent;        /* written before each dialog: the step shown */
    LONG DlgNext;           /* step to show next; negative ends the wizard */
} DLGWIZARD;
#pragma pack(pop)

#define OXL_DLG_P (sizeof(void*))
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgOwner) == 0, "DLGWIZARD.DlgOwner");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, Reserved) == OXL_DLG_P, "DLGWIZARD.Reserved");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgInstance) == 2 * OXL_DLG_P, "DLGWIZARD.DlgInstance");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgTemplates) == 3 * OXL_DLG_P, "DLGWIZARD.DlgTemplates");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgProcs) == 4 * OXL_DLG_P, "DLGWIZARD.DlgProcs");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgCount) == 5 * OXL_DLG_P, "DLGWIZARD.DlgCount");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgCurrent) == 5 * OXL_DLG_P + 4, "DLGWIZARD.DlgCurrent");
OXL_STATIC_ASSERT(offsetof(DLGWIZARD, DlgNext) == 5 * OXL_DLG_P + 8, "DLGWIZARD.DlgNext");
OXL_STATIC_ASSERT(sizeof(DLGWIZARD) == (OXL_DLG_P == 4 ? 32 : 52), "DLGWIZARD: 32 bytes on i686, 52 on 64-bit");

/* `length` thousandths of an inch in display pixels, across (vertical 0) or
 * down, rounded to the nearest, halves away from zero. */
int OXLAPI DlgGetScreenPixels(LONG length, BOOL vertical);
/* Disabling (enable 0): disables every enabled top-level window of this
 * thread (and of `instance` on NT) but `except`, up to 50, and returns the
 * handle that records them, null when nothing could be recorded. Enabling:
 * enables the windows recorded in `saved`, frees it and returns null; a
 * window that was disabled before stays so. A null instance does nothing. */
HGLOBAL OXLAPI DlgEnableAllWindows(HINSTANCE instance, HWND except, BOOL enable, HGLOBAL saved);
/* Centres `dialog` on its parent (else owner, else the desktop), kept on the
 * screen; the result of MoveWindow. */
BOOL OXLAPI DlgCenterDialog(HWND dialog);
/* Loads string `textId` (200 bytes) and `captionId` (40) from `instance`,
 * formats the text with `argument` and shows it; MessageBoxA's result. */
int OXLAPI DlgMessageBoxString(HINSTANCE instance, HWND owner, WORD textId, WORD captionId, LPARAM argument, WORD style);
/* Runs the wizard's dialogs from DlgNext on: 1 when a dialog set DlgNext
 * negative, 0 on Cancel, a failed dialog or a step out of the list. */
BOOL OXLAPI DlgDoDlgWizard(DLGWIZARD* wizard);

OXL_EXTERN_C_END

#endif
