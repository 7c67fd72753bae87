/* A host written in C, linked through the import library: the exported data
 * objects are reached as dllimport data, and a host's first slot follows the
 * library's own three. Prints what failed and exits non-zero. */
#include <oxlrt31/crsect.h>
#include <oxlrt31/tls.h>

#include <stdio.h>

int main(void) {
    int failures = 0, slot = TLS_AllocIndex();
    if (gpCRSECTMain != &gCRMainSect) printf("c_host: gpCRSECTMain does not point at gCRMainSect\n"), ++failures;
    if (CR_LockCount(gpCRSECTMain) != 0) printf("c_host: the main region is held\n"), ++failures;
    if (slot != 103) printf("c_host: a host's first slot is %d, not 103\n", slot), ++failures;
    TLS_FreeIndex(slot);
    return failures != 0;
}
