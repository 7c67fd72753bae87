# The CUPS PDF printer OxlPDF (cups-pdf), made the default: cupsd started when
# it isn't running. Sourced; cups_printer returns non-zero, with the reason
# in CUPS_PRINTER_WHY, where CUPS can't be had.
cups_printer() {
  local ppd=/usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
  CUPS_PRINTER_PPD=$ppd
  CUPS_PRINTER_WHY="cups or printer-driver-cups-pdf missing"
  [ -x /usr/sbin/cupsd ] && [ -f $ppd ] || return 1
  CUPS_PRINTER_WHY="no write access to /etc/cups"
  [ -w /etc/cups ] || return 1
  CUPS_PRINTER_WHY="cupsd does not start"
  pgrep -x cupsd >/dev/null || /usr/sbin/cupsd || return 1
  for _ in $(seq 50); do lpstat -r 2>/dev/null | grep -q "is running" && break; sleep 0.1; done
  CUPS_PRINTER_WHY="CUPS does not take the PDF printer"
  lpadmin -p OxlPDF -v cups-pdf:/oxltest -E -P $ppd 2>/dev/null && lpadmin -d OxlPDF
}
