// Reading typed numbers back: the settings it reads under and the helpers
// of FMTValidateNumber and FMTUnformatNumberStr.
#ifndef OXL_FORMAT_NUMVALINT_H
#define OXL_FORMAT_NUMVALINT_H

#include "numpicint.h"

// The settings in force for reading: a separator of 0 means none.
struct FMTNUMVALSET {
    char chThousand;
    char chDecimal;
    const char* pszSymbol; // never null; the profile's lives for the call
    LONG iCurrency;
};
void FMTNumValSettings(const FMTCNTLBLOCK* block, FMTNUMVALSET* set);

// The text without its currency, with a leading "-" if it was negative.
// `output` holds the text and two bytes more.
void FMTStripCurrency(const char* text, const char* symbol, char* output, bool symbolBehind);
// Cuts the section's literal text from `text` in place: 1, or 0 when the
// section has no "#" or "0". `percentFound` says the text held the "%".
int FMTStripPicText(char* text, const char* section, bool* percentFound, bool keepLeadingMinus, char thousand,
                    char decimal);
// A text with an exponent under a scientific picture, into numValue: 1 or 0.
int FMTUnformatScientific(FMTCNTLBLOCK* block);

#endif
