# Shared by ./run and ./test; sourced from the top of the tree.

readonly packageList=cmake/packages.list

# Says what is being done, on a line of its own.
say() { printf '\n== %s\n' "$*"; }

# What long steps print goes to logs of this folder.
readonly logs=build/logs

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

# Runs apt-get as root. What it prints goes to the log of the packages, as well as to its caller.
apt() {
  "${asRoot[@]}" env LC_ALL=C DEBIAN_FRONTEND=noninteractive apt-get "$@" </dev/null 2>&1 | tee -a "$logs/packages.log"
}

# Installs what is missing of the list, through sudo when not root: says what and how much it is, and keeps
# what the installer prints in a log. Ends with the names of what it could not install.
prepare_packages() {
  local missing
  missing=$(missing_packages "${1:-}")
  [ -n "$missing" ] || return 0
  say "Installing $(wc -w <<<"$missing") packages (log: $logs/packages.log): $(tr '\n' ' ' <<<"$missing")"
  asRoot=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      die "Not root, and there is no sudo. Please install: $(tr '\n' ' ' <<<"$missing")"
    asRoot=(sudo)
  fi
  mkdir -p "$logs"
  : >"$logs/packages.log"
  apt -qq update >/dev/null || say "The package lists could not be renewed; trying with the old ones"
  # shellcheck disable=SC2086
  apt --assume-no --no-install-recommends install $missing | grep -E '^(Need to get|After this)' || true
  # Images of small machines leave out manual pages, which the help indexes are made from.
  # shellcheck disable=SC2086
  apt -y -qq -o Dpkg::Use-Pty=0 -o "Dpkg::Options::=--path-include=/usr/share/man/*" --no-install-recommends install $missing >/dev/null || true
  missing=$(missing_packages "${1:-}")
  [ -z "$missing" ] || {
    tail -n 20 "$logs/packages.log" >&2
    die "Could not be installed: $(tr '\n' ' ' <<<"$missing")"
  }
}

# Of a build's output what somebody wants to watch: all files that are built, or, where nobody sits before a
# terminal, one now and then.
progress() {
  if [ -t 1 ]; then grep --line-buffered -aE '^\[[0-9]+/' || true
  else grep --line-buffered -aE '^\[[0-9]*[05]0/|^== ' || true; fi
}

# What was compiled before, from this folder or another, is taken from the compiler cache where there is one.
if [ -z "${CMAKE_CXX_COMPILER_LAUNCHER:-}" ] && command -v ccache >/dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache
fi
# Precompiled headers need it.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}
# A clean clone of continuous integration has a folder of its own and nobody debugs what it builds.
if [ -n "${CI:-}" ]; then
  export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$PWD} CCACHE_NOHASHDIR=1
fi

# Configures and builds targets of a preset; without targets all of them. CMake runs only when the
# preset was not configured before: the build itself notices changes.
build_preset() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" || return
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
