// Comparing byte for byte. A null pointer equals only another null pointer.
#include "intlpriv.h"

int OXLAPI IntlIsStrEqual(const char* a, const char* b) {
    if (!a || !b) return a == b;
    return std::strcmp(a, b) == 0;
}

int OXLAPI IntlIsStrnEqual(const char* a, const char* b, WORD n) {
    if (!a || !b) return a == b;
    return std::strncmp(a, b, n) == 0;
}
