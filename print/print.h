/*
 * Printing: printer names and device modes, the setup dialog and the
 * per-process saved setup, paper queries, the print job and the page layer.
 */
#ifndef OXL_PRINT_PRINT_H
#define OXL_PRINT_PRINT_H

#include <oxlrt31/oxlapi.h>

/* Forgets the printer setup the user last chose in this process (unload). */
void PrtClearSaved(void);

#endif
