#!/bin/bash
# A job on a real spooler: CUPS with a PDF printer (cups-pdf) made the default,
# the sample document of `oxl print` printed under Wine through PagePrint (a
# page of 15 by 21 inches: two by two tiles, framed, two copies), and the PDF
# read back: the paper size, and each tile's label on its sheets in order,
# along the row, then down; a tile twice in a row when the copies were made
# in software, once when the device was asked for them (Wine's PostScript
# driver takes the copy count; cups-pdf writes one copy).
# The first sheet becomes sheet-1.png in OUT. Exit 77 (skipped) where CUPS
# can't be started.
#   print_cups.sh WINE OXL_EXE OUT
set -u
wine=$1 oxl=$2 out=$3
skip() { echo "SKIPPED: $*"; exit 77; }
fail() { echo "FAILED: $*"; exit 1; }
ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
[ -x /usr/sbin/cupsd ] && [ -f $ppd ] && command -v pdftotext >/dev/null || skip "cups, printer-driver-cups-pdf or poppler-utils missing"
[ -w /etc/cups ] || skip "no write access to /etc/cups to add the PDF printer"
rm -rf "$out" && mkdir -p "$out/pdf" && chmod 1777 "$out/pdf"
printf 'Out %s\nAnonDirName %s\nLabel 0\nUserUMask 0022\n' "$out/pdf" "$out/pdf" >/etc/cups/cups-pdf-oxltest.conf
pgrep -x cupsd >/dev/null || /usr/sbin/cupsd || skip "cupsd does not start"
for _ in $(seq 50); do lpstat -r 2>/dev/null | grep -q "is running" && break; sleep 0.1; done
lpadmin -p OxlPDF -v cups-pdf:/oxltest -E -P $ppd 2>/dev/null && lpadmin -d OxlPDF || skip "CUPS does not take the PDF printer"
"$wine" "$oxl" printers | tr -d "\r" | tee "$out/printers.txt"
grep -q "^default printer  OxlPDF" "$out/printers.txt" || fail "the library does not find OxlPDF as the default printer"
"$wine" "$oxl" print | tr -d "\r" | tee "$out/print.txt"
sheets=$(sed -n 's/^oxl sample: \([0-9]*\) sheets.*status 0, done$/\1/p' "$out/print.txt")
case "$sheets" in
  4) order="A1 B1 A2 B2" ;;
  8) order="A1 A1 B1 B1 A2 A2 B2 B2" ;;
  *) fail "oxl print did not print 4 tiles in 2 copies" ;;
esac
pdf=
for _ in $(seq 150); do
  pdf=$(ls "$out"/pdf/*.pdf 2>/dev/null | head -1)
  [ -n "$pdf" ] && pdfinfo "$pdf" >/dev/null 2>&1 && break
  sleep 0.2
done
[ -n "$pdf" ] || fail "no PDF in $out/pdf"
pdfinfo "$pdf" | tee "$out/pdfinfo.txt" | grep -E "^(Pages|Page size)"
grep -q "^Pages: *$sheets$" "$out/pdfinfo.txt" || fail "the PDF does not have $sheets pages"
grep -qE "^Page size: *(595|612) x (842|792) pts" "$out/pdfinfo.txt" || fail "the paper is neither A4 nor Letter"
sheet=0
for label in $order; do
  sheet=$((sheet + 1))
  text=$(pdftotext -f $sheet -l $sheet "$pdf" - | tr -s ' \n' ' ')
  [[ "$text" == *"Tile $label"* ]] || fail "sheet $sheet has \"$text\", not Tile $label"
done
pdftoppm -f 1 -l 1 -r 30 -png -singlefile "$pdf" "$out/sheet-1" || fail "pdftoppm"
echo "PASSED: $pdf, $sheets sheets, the tiles in order $order; $out/sheet-1.png"
