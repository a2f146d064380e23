# Sourced. Configures and builds.

# ./test sets this to -Werror; see cmake/QuendoWarnings.cmake.
warning_options=

# Builds targets of a preset (everything when none is named). One line when there is work, none when
# there is nothing to do; the whole output when something fails.
build_preset() {
  local preset=$1
  shift
  local directory=$root/build/$preset log=$root/build/$preset.log
  local -a targets=()
  (($#)) && targets=(--target "$@")
  hold_lock "$preset"
  if [[ $preset == release ]]; then
    mkdir -p "$directory"
    [[ -f $directory/warning-options && $(<"$directory/warning-options") == "$warning_options" ]] ||
      printf '%s\n' "$warning_options" >"$directory/warning-options"
  fi
  # Only configuring by name applies a preset that has changed.
  if [[ ! -f $directory/build.ninja || $root/CMakePresets.json -nt $directory/build.ninja ]]; then
    say "Configuring $preset."
    if ! (cd "$root" && cmake --preset "$preset") >"$log" 2>&1; then
      cat "$log" >&2
      complain "Configuring $preset failed."
      release_lock "$preset"
      return 1
    fi
  fi
  # A dry run would not notice a change in the build files themselves, so the real one is started and
  # tells by itself whether it has anything to do.
  local status=0 started=$SECONDS
  (cd "$root" && cmake --build "$directory" "${targets[@]}") >"$log" 2>&1 &
  local builder=$!
  local said=
  while kill -0 "$builder" 2>/dev/null; do
    if [[ -z $said ]] && grep -q '^\[[1-9][0-9]*/[0-9]*\]' "$log" 2>/dev/null; then
      say "Building $preset."
      said=yes
    fi
    sleep 0.1
  done
  wait "$builder" || status=$?
  release_lock "$preset"
  if ((status)); then
    cat "$log" >&2
    complain "Building $preset failed."
    return 1
  fi
  [[ -n $said ]] && say "Built $preset in $((SECONDS - started)) s."
  return 0
}
