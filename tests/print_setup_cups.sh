#!/bin/bash
# The setup dialog, device modes and paper lists on a real spooler: CUPS with
# the PDF printer made the default, under Wine. oxl papers must list every
# paper of the printer's PPD with its size (points to tenths of a millimetre,
# truncated, as the driver reads the PPD) and its bins (the driver's one
# automatic bin when the PPD has no input slots); oxl setup must show the
# dialog (saved as setup.png in OUT); the unit suite's real-spooler tests run
# against the printer. Exit 77 (skipped) where CUPS can't be had.
#   print_setup_cups.sh WINE OXL_EXE UNIT_EXE OUT
set -u
wine=$1 oxl=$2 unit=$3 out=$4
fail() { echo "FAILED: $*"; exit 1; }
source "$(dirname "$0")/cups_printer.sh"
cups_printer || { echo "SKIPPED: $CUPS_PRINTER_WHY"; exit 77; }
rm -rf "$out" && mkdir -p "$out"
"$wine" "$oxl" papers | tr -d "\r" | tee "$out/papers.txt"
ppd=/etc/cups/ppd/OxlPDF.ppd
[ -f $ppd ] || ppd=$CUPS_PRINTER_PPD
awk -F'[/:"]' '/^\*PaperDimension/ { split($4, s, " "); printf "%6.1f x %6.1f  %s\n", int(s[1] * 254 / 72) / 10, int(s[2] * 254 / 72) / 10, $2 }' \
  $ppd >"$out/ppd-papers.txt"
n=$(wc -l <"$out/ppd-papers.txt")
grep -q "^$n papers" "$out/papers.txt" || fail "the PPD has $n papers, oxl papers says otherwise"
while IFS= read -r paper; do
  grep -qF -- "$paper" "$out/papers.txt" || fail "the PPD's paper \"$paper\" is not in oxl papers' list"
done <"$out/ppd-papers.txt"
slots=$(grep -c "^\*InputSlot" $ppd)
if [ "$slots" -eq 0 ]; then
  grep -qE "^1 bins" "$out/papers.txt" && grep -qE "^ +15  Automatically Select$" "$out/papers.txt" || fail "not the one automatic bin"
else
  grep -q "^$slots bins" "$out/papers.txt" || fail "the PPD has $slots input slots"
fi
"$wine" "$oxl" setup --shot "Z:$out/setup.png" | tr -d "\r" | tee "$out/setup.txt"
[ -s "$out/setup.png" ] && grep -q "^nothing changed: \"OxlPDF\"" "$out/setup.txt" || fail "oxl setup did not show the dialog"
OXL_TEST_PRINTER=OxlPDF "$wine" "$unit" --gtest_filter="PrintReal*" | tr -d "\r" | tee "$out/unit.txt"
grep -q "PASSED.* 2 tests" "$out/unit.txt" || fail "the real-spooler tests"
echo "PASSED: $n papers and the bins as the PPD has them, the dialog shown, the real-spooler tests"
