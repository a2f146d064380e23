# Sourced by the project's scripts: the project root, messages, locks.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

say() { printf '%s\n' "$*"; }
complain() { printf '%s\n' "$*" >&2; }

declare -A lock_descriptors=()

# Takes a named lock until it is released or this shell ends, so two runs in one tree do not interfere. The lock
# belongs to the descriptor, so it is released however the process ends.
hold_lock() {
  local name=$1 descriptor
  mkdir -p "$root/build"
  exec {descriptor}>"$root/build/.$name.lock"
  if ! flock --nonblock "$descriptor"; then
    say "Waiting for another run to finish ($name)."
    flock "$descriptor"
  fi
  lock_descriptors[$name]=$descriptor
}

release_lock() {
  local descriptor=${lock_descriptors[$1]}
  exec {descriptor}>&-
}
