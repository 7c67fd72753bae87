/* A host written in C: the public headers compile as C, the exports link by
 * name (through the import library on Windows), and the exported objects are
 * reached as data. Prints what failed and exits non-zero. */
#include <oxlrt31/crsect.h>
#include <oxlrt31/mem.h>
#include <oxlrt31/memshared.h>
#include <oxlrt31/tls.h>
#include <oxlrt31/intl.h>
#include <oxlrt31/number.h>

#include <stdio.h>
#include <string.h>

static int failures, destroyed;

static void check(int ok, const char* what) {
    if (!ok) printf("c_host: %s\n", what), ++failures;
}
static void OXLCALLBACK destroy(void* value) { destroyed += value == &destroyed; }

int main(void) {
    static const unsigned char minusOne[] = {0x03, 0x3E, 0x63, 0x65};
    tagNUMBER a, b;
    int slot;
    unsigned char* block;

    check(gpCRSECTMain == &gCRMainSect, "gpCRSECTMain points at gCRMainSect");
    check(CR_LockCount(gpCRSECTMain) == 0 && CR_Unwind(gpCRSECTMain) == 0, "the main region is not held");
    NumCreateSmall(&a, 1);
    check(NumNegate(&a) == 3 && memcmp(&a, minusOne, sizeof minusOne) == 0, "NumNegate(1) is 03 3E 63 65");
    NumCreateSmall(&b, 0);
    check(NumCompare(&a, &b) == -1 && NumIsZero(&b) == 1, "NumCompare(-1, 0) is -1, NumIsZero(0) is 1");
    slot = TLS_AllocIndex();
    check(slot == 103, "a host's first slot is 103");
    TLS_SetItem(slot, &destroyed, destroy);
    check(TLS_GetItem(slot) == &destroyed, "TLS_GetItem gives the stored item");
    TLS_FreeIndex(slot);
    check(destroyed == 1, "TLS_FreeIndex destroys the item");
    check(IntlDBCSEnabled() == 0 || IntlDBCSEnabled() == 1, "IntlDBCSEnabled is 0 or 1");
    block = (unsigned char*)MemAlloc(4);
    check(block != NULL && MemSize(block) == 4, "MemAlloc(4) gives a 4-byte block");
    block = (unsigned char*)MemRealloc(block, 8);
    check(block != NULL && block[7] == 0, "MemRealloc(block, 8) zero-fills the new bytes");
    MemFree(block);
    check(MemAlloc(0) == NULL && MemSharedCheck(NULL) == 1, "MemAlloc(0) is null, MemSharedCheck(NULL) is 1");
    printf("c_host: %s\n", failures ? "FAILED" : "ok");
    return failures != 0;
}
