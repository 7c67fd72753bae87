# Shared by scripts/tour and scripts/test: packages, builds, and a private
# Wine (prefix inside build/, its own server and X display) that is taken down
# again on exit. Sourced, not run.
set -euo pipefail

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
WINE=/usr/lib/wine/wine64
WINESERVER=/usr/lib/wine/wineserver

PACKAGES=(
  cmake ninja-build g++ clang libclang-rt-14-dev
  googletest libgtest-dev libbenchmark-dev libboost-dev valgrind locales-all
  g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix
  wine64 libxrender1 libxrandr2 libxi6 libxcursor1 libxinerama1 libxcomposite1 libcups2 fonts-dejavu-core
  fonts-ipafont-gothic
  xvfb xauth pkg-config
  cups cups-client cups-bsd printer-driver-cups-pdf ghostscript poppler-utils
  libsqlite3-dev sqlite3
)

log() { printf '\n== %s ==\n' "$*"; }

# Installs whatever of the packages is missing (Debian 12).
ensure_packages() {
  local missing=()
  for p in "${PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  log "installing ${missing[*]}"
  local sudo=""
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# cmake configure (first time) and build of one preset.
build() {
  local preset=$1
  log "building $preset"
  [ -f "$ROOT/build/$preset/build.ninja" ] || cmake --preset "$preset" -S "$ROOT" >/dev/null
  cmake --build "$ROOT/build/$preset"
}

# A private Wine: prefix in build/wine, server kept running (ctest is slow
# when each test starts one), an Xvfb display of its own for windows.
wine_up() {
  export WINEPREFIX="$ROOT/build/wine" WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
  local display=$(( 90 + RANDOM % 400 ))
  while [ -e "/tmp/.X11-unix/X$display" ] || [ -e "/tmp/.X$display-lock" ]; do display=$((display + 1)); done
  Xvfb ":$display" -screen 0 1280x1024x24 -nolisten tcp >/dev/null 2>&1 &
  XVFB_PID=$!
  export DISPLAY=":$display"
  trap wine_down EXIT
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    log "creating the Wine prefix in build/wine"
    "$WINE" wineboot --init </dev/null >/dev/null 2>&1
    "$WINESERVER" -w
    # Without a window manager each window close costs seconds; unmanaged windows don't wait.
    "$WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f </dev/null >/dev/null 2>&1
  fi
  "$WINESERVER" -p </dev/null >/dev/null 2>&1 || true  # fails when one is already up
  "$WINE" cmd /c exit </dev/null >/dev/null 2>&1
}

wine_down() {
  [ -n "${WINEPREFIX:-}" ] && "$WINESERVER" -k >/dev/null 2>&1 || true
  [ -n "${XVFB_PID:-}" ] && kill "$XVFB_PID" 2>/dev/null || true
}
