/*
 * International strings: the character environment and the string family.
 *
 * The environment is settled once at load from the system's language and
 * does not change afterwards, so every function reads it without a lock.
 */
#ifndef OXL_INTL_INTL_H
#define OXL_INTL_INTL_H

#include "../core/oxlapi.h"

OXL_EXTERN_C_BEGIN

/* Settles the environment from the system and user languages (at load). */
void OXLAPI IntlInit(void);
/* The double-byte path is on (Chinese, Japanese or Korean system language). */
int OXLAPI IntlDBCSEnabled(void);
/* A right-to-left language is in use, as system or user language. */
int OXLAPI IntlIsBiDiEnabled(void);

OXL_EXTERN_C_END

#endif
