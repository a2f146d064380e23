# Sourced by the scripts of this project. Finds the project's root and says things.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)

say() { printf '%s\n' "$*"; }
complain() { printf '%s\n' "$*" >&2; }

declare -A lock_descriptors=()

# Holds a lock by name until it is released or this shell ends, so that two runs in one tree do not build or
# write over each other. The lock is the descriptor's: it ends with the process, however that ends.
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
