# Shared by ./run and ./test; sourced from the top of the tree.

readonly packageList=cmake/packages.list

# Says what is being done, on a line of its own.
say() { printf '\n== %s\n' "$*"; }

die() {
  printf '%s\n' "$*" >&2
  exit 1
}

# The packages of the list; with "test" those of the tests too.
wanted_packages() {
  awk -v all="${1:-}" '/^[[:space:]]*(#|$)/ { next } $2 == "" || $2 == all { print $1 }' "$packageList"
}

missing_packages() {
  local wanted
  wanted=$(wanted_packages "${1:-}")
  # A package that was never heard of makes dpkg-query fail; that is an answer, no error.
  # shellcheck disable=SC2086
  { dpkg-query -W -f '${db:Status-Status} ${Package}\n' $wanted 2>/dev/null || true; } |
    awk -v wanted="$wanted" '
      $1 == "installed" { there[$2] = 1 }
      END { n = split(wanted, name, "\n"); for (i = 1; i <= n; i++) if (!there[name[i]]) print name[i] }'
}

# Installs what is missing of the list, through sudo when not root. Ends with the names of what it
# could not install.
prepare_packages() {
  local missing root=()
  missing=$(missing_packages "${1:-}")
  [ -n "$missing" ] || return 0
  say "Installing $(wc -w <<<"$missing") packages: $(tr '\n' ' ' <<<"$missing")"
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      die "Not root, and there is no sudo. Please install: $(tr '\n' ' ' <<<"$missing")"
    root=(sudo)
  fi
  root+=(env DEBIAN_FRONTEND=noninteractive)
  "${root[@]}" apt-get -qq update || say "The package lists could not be renewed; trying with the old ones"
  # shellcheck disable=SC2086
  "${root[@]}" apt-get -y -qq -o Dpkg::Use-Pty=0 --no-install-recommends install $missing || true
  missing=$(missing_packages "${1:-}")
  [ -z "$missing" ] || die "Could not be installed: $(tr '\n' ' ' <<<"$missing")"
}

# Configures and builds targets of a preset; without targets all of them. CMake runs only when the
# preset was not configured before: the build itself notices changes.
build_preset() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" || return
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
