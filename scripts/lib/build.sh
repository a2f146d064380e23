# Sourced. Configures and builds.

# ./test sets this to -Werror; see cmake/QuendoWarnings.cmake.
warning_options=

# Builds targets of a preset, by default all. Prints one line if there is work, nothing if there is none, and the
# whole output on failure.
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
  # A changed preset takes effect only when configured by name.
  if [[ ! -f $directory/build.ninja || $root/CMakePresets.json -nt $directory/build.ninja ]]; then
    say "Configuring $preset."
    if ! (cd "$root" && cmake --preset "$preset") >"$log" 2>&1; then
      cat "$log" >&2
      complain "Configuring $preset failed."
      release_lock "$preset"
      return 1
    fi
  fi
  # A dry run would miss changes in the build files themselves, so start the real build and see from its output
  # whether it has anything to do.
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
