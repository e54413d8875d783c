# Shared by ./run, ./test and .ci/run: what the project needs of the system, and how it gets it.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Two checkouts of the same sources share what the compiler cache holds.
export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1

packages_build="g++ cmake ninja-build ccache qt6-base-dev qt6-svg-dev libqcustomplot-dev
  libqcustomplot2.1-qt6 libgtest-dev libgl-dev"
packages_manual="cmark-gfm"
packages_window="fonts-dejavu-core"
packages_virtual_display="xvfb openbox xauth dbus at-spi2-core"
packages_bench="libbenchmark-dev"
packages_lint="clang-format clang-tidy"
packages_fuzz="clang libclang-rt-14-dev"

say() { printf '\n== %s\n' "$*"; }

# install NAME...: installs the missing ones of these Debian packages, with sudo where the user is not root.
install() {
  local missing=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  say "Installing ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET TARGET...
build() {
  local preset=$1
  shift
  say "Building ($preset)"
  (cd "$root" && cmake --preset "$preset" --log-level=WARNING && cmake --build --preset "$preset" --target "$@")
}

# with_virtual_display COMMAND...: runs a command on a display of its own, once its window manager is there, without what
# the user has set for the own display. The manager ends with the display.
with_virtual_display() {
  xvfb-run -a -s "-screen 0 1280x900x24" dbus-run-session -- sh -c '
    ready=$(mktemp -d) && mkfifo "$ready/pipe"
    { openbox --startup "sh -c \"echo >$ready/pipe\""; echo >"$ready/pipe"; } >/dev/null 2>&1 &
    read -r _ <"$ready/pipe"
    rm -r "$ready"
    exec env -u WAYLAND_DISPLAY -u QT_SCALE_FACTOR -u QT_FONT_DPI -u QT_STYLE_OVERRIDE QT_QPA_PLATFORM=xcb "$@"' sh "$@"
}
