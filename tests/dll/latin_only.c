/* Nothing but a version resource: see latin_only.rc. */
int oxl_latin_only_marker(void) { return 1; }
