#!/usr/bin/env bash
# Checks the Debian package as a store gets it: check.sh PACKAGE DEMO_SEEDER
# What it holds and needs, lintian's verdict when lintian is there, and the
# program unpacked into a throwaway root and started once on a real display,
# on a demo store, up to its set list.
set -euo pipefail
deb="$(realpath "$1")"
seeder="$(realpath "$2")"
here="$(cd "$(dirname "$0")" && pwd)"
fail() {
  echo "package check: $*"
  exit 1
}

echo "== what the package holds"
contents="$(dpkg-deb --contents "$deb" | awk '{$1 = $2 = $3 = $4 = $5 = ""; sub(/^ +/, ""); print}')"
for path in ./usr/lib/hotkeys/hotkeys ./usr/lib/hotkeys/upper.alt \
  ./usr/share/applications/hotkeys.desktop ./usr/share/icons/hicolor/scalable/apps/hotkeys.svg \
  ./usr/share/doc/hotkeys/copyright ./usr/share/doc/hotkeys/changelog.gz \
  ./usr/share/man/man1/hotkeys.1.gz; do
  grep -qx "$path" <<<"$contents" || fail "$path is missing"
done
grep -qx './usr/bin/hotkeys -> ../lib/hotkeys/hotkeys' <<<"$contents" ||
  fail "/usr/bin/hotkeys is not the link to the program"
depends="$(dpkg-deb --field "$deb" Depends)"
echo "Depends: $depends"
for package in libqt6widgets6 libqt6sql6 libqt6printsupport6 libqt6network6 libcurl4 \
  libsqlite3-0 libqt6sql6-sqlite libqt6sql6-psql libqt6sql6-odbc fonts-dejavu-core; do
  grep -qE "(^|, )$package( |,|$)" <<<"$depends" || fail "Depends lacks $package"
done
# Every dependency can be met from the packages this machine knows.
apt-get install --simulate --no-install-recommends "$deb" >/dev/null ||
  fail "apt-get cannot meet the dependencies"

if command -v lintian >/dev/null; then
  echo "== lintian"
  lintian --fail-on error,warning "$deb" || fail "lintian finds fault with the package"
fi

echo "== the program, unpacked and started"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
dpkg-deb -x "$deb" "$work/root"
mkdir -p "$work/settings" "$work/drive-c"
mkdir -m 700 "$work/runtime"
export XDG_CONFIG_HOME="$work/settings" HOTKEYS_DRIVE_C="$work/drive-c" HOME="$work" \
  XDG_RUNTIME_DIR="$work/runtime"
QT_QPA_PLATFORM=offscreen "$seeder" "$work/data" >/dev/null
rm -f "$work/data/upper.alt"
"$here/../display/run.sh" "$here/start_once.sh" "$work/root/usr/bin/hotkeys"
cmp "$work/root/usr/lib/hotkeys/upper.alt" "$work/data/upper.alt" ||
  fail "upper.alt was not copied into the data folder"
echo "package check passed: $(basename "$deb")"
