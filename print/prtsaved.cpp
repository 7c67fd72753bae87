// The printer setup saved for the process. The setup dialog that fills it is
// not built yet, so there is never a saved setup to release.
#include "print.h"

void PrtClearSaved(void) {}
