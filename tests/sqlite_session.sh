#!/usr/bin/env bash
# The README's sqlite3 session, typed into the real shell: the lines after
# its prompts are the input, and the shell's transcript (banner dropped) must
# be the README's, byte for byte.   sqlite_session.sh README MODULE SHELL
set -euo pipefail
readme=$1 module=${2%.so} shell=$3
# The fenced block after the marker, without its first line ("$ sqlite3").
expected=$(awk '/^<!-- oxlsqlite session -->$/ { m = 1; next } /^```$/ && m { if (m++ == 2) exit; next } m == 2' "$readme" |
           sed '1d' | sed "s#build/native/lib/oxlsqlite#$module#")
[ -n "$expected" ] || { echo "the README shows no oxlsqlite session"; exit 1; }
# The shell ends non-zero after the error the session shows.
got=$(printf '%s\n' "$expected" | sed -n 's/^\(sqlite\|   \.\.\.\)> //p' | { "$shell" -interactive 2>&1 || true; } | sed -n '/^sqlite> /,$p' | sed '$d')
diff <(printf '%s\n' "$expected") <(printf '%s\n' "$got") && echo "the README's session: $(printf '%s\n' "$got" | wc -l) lines as shown"
