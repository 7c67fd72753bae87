/* A host of oxlrt31, as a host application uses it: a price and a quantity
 * kept as NUMBER records in a file, byte for byte; their product computed,
 * shown as text, and the text read back to the same record.
 *
 * Built from the installed package only:
 *   cc -std=c99 host.c $(pkg-config --cflags --libs oxlrt31)
 * or with CMake: find_package(oxlrt31) and target oxlrt31::oxlrt31.
 * Exits 0 when every step gives what it should. */
#include <oxlrt31/number.h>

#include <stdio.h>
#include <string.h>

/* The record's bytes, as a host would dump a field of its file. */
static void show(const char* what, const tagNUMBER* n) {
    int i;
    printf("%-10s", what);
    for (i = 0; i <= (n->bLength & 0x3F) && i < 25; ++i) printf(" %02X", ((const BYTE*)n)[i]);
    printf("\n");
}

int main(int argc, char** argv) {
    const char* file = argc > 1 ? argv[1] : "host.rec";
    tagNUMBER price, quantity, total, stored, back;
    char text[32];
    FILE* f;

    /* A record from text and one from an integer. */
    if (NumAsciiToNumber(&price, "19.99") != 5 || NumLongToNumber(&quantity, 3) == 0) return 1;
    NumMultiply(&total, &price, &quantity);
    show("total", &total);

    /* Hosts store the 25 bytes as they are; nothing in them points anywhere. */
    f = fopen(file, "wb");
    if (!f || fwrite(&total, sizeof total, 1, f) != 1 || fclose(f) != 0) return 2;
    f = fopen(file, "rb");
    if (!f || fread(&stored, sizeof stored, 1, f) != 1 || fclose(f) != 0) return 3;
    remove(file);

    /* The text of the stored record, and the text read back. */
    if (NumToAscii(&stored, text, 20) <= 0) return 4;
    printf("as text    %s\n", text);
    if (NumAsciiToNumber(&back, text) != (int)strlen(text)) return 5;
    show("read back", &back);
    if (strcmp(text, "59.97") != 0 || NumCompare(&back, &total) != 0) return 6;
    printf("host: ok\n");
    return 0;
}
