# Sourced by the set-up scripts: installs the Debian packages that are missing.
hk_packages=(cmake g++ make libgtest-dev qt6-base-dev libqt6sql6-sqlite libqt6sql6-psql
  libqt6sql6-odbc libsqlite3-dev libpq-dev libcurl4-openssl-dev tdsodbc fonts-dejavu-core
  postgresql-15 python3-aiosmtpd poppler-utils xvfb xauth openbox x11-utils xdotool clang
  libclang-rt-14-dev cups printer-driver-cups-pdf openssl libzip-dev)
# The Debian package (scripts/package) and the Windows compile check (scripts/windows-check).
hk_packages+=(dpkg-dev lintian g++-mingw-w64-x86-64)
# The coverage of the tests (scripts/coverage).
hk_packages+=(gcovr)

hk_install_missing() {
  local missing=()
  for p in "${hk_packages[@]}" "$@"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'ok installed' || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  local sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

hk_configure() {
  local dir="$1"
  local launcher=()
  command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  cmake -S "$hk_root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" "${@:2}" >/dev/null
}

hk_build() {
  hk_configure "$@"
  cmake --build "$1" -j2
}
