// Masks and the edit filter on any bytes, through the driver the property
// test uses (tests/support/edit_host.h): the first byte gives the mask's
// length (and a leading "^" or a trailing "*"), the mask follows, then a text
// put into and taken out of the mask, then messages to a masked control of
// the OS layer's model. After each message the text fits the mask, and after
// a caret key the caret rests on a placeholder or at the text's end. An
// invalid mask gets the same, with no promise but that nothing breaks.
#include "fuzz_check.h"
#include "tests/support/edit_host.h"

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size) {
    FuzzRequire(EditDrive(data, size).empty());
    return 0;
}
