# Sourced by ./test. Runs suites, counts their tests and prints the total.
#
# A suite that fails without naming a failed test, or runs no test at all, counts as one failure: silence must
# never look like success.

results=
passed=0
failed=0
failed_suites=()
retried=()

# start_part PART: clears its results, and waits for another run of the same part in this tree.
start_part() {
  hold_lock "test-$1"
  results=$root/build/test-results/$1
  rm -rf "$results"
  mkdir -p "$results"
}
end_part() { release_lock "test-$1"; }

finish_suites() {
  local status=$?
  local one
  for one in "${failed_suites[@]}"; do say "FAILED: $one"; done
  for one in "${retried[@]}"; do say "Retried: $one"; done
  # Ending early is a failure even if no suite has recorded one.
  if ((status != 0 && failed == 0)); then failed=1; fi
  say "retried: ${#retried[@]}"
  say "$passed passed, $failed failed"
  ((failed == 0)) || exit 1
  exit 0
}

# record NAME PASSED FAILED [SKIPPED] [SECONDS]
record() {
  local name=$1 skipped=${4:-0} seconds=${5:-}
  passed=$((passed + $2))
  failed=$((failed + $3))
  local line="$name: $2 passed, $3 failed"
  ((skipped == 0)) || line+=", $skipped skipped"
  [[ -z $seconds ]] || line+=" ($seconds s)"
  say "$line"
  if (($3)); then failed_suites+=("$name"); fi
}

# The end of a failed suite's log, and where the rest is.
show_log() {
  tail -n 300 "$1"
  say "(full log: $1)"
}

file_name() { printf '%s' "${1//[^a-zA-Z0-9]/-}"; }

# One check that passes or fails. suite_check NAME COMMAND...
suite_check() {
  local name=$1 started=$SECONDS
  shift
  local log
  log=$results/$(file_name "$name").log
  if "$@" >"$log" 2>&1; then
    record "$name" 1 0 0 $((SECONDS - started))
  else
    show_log "$log"
    record "$name" 0 1 0 $((SECONDS - started))
  fi
}

# Collects the tests a suite has retried: the lines of its log that begin with "retried: ".
note_retries() {
  local -a lines=()
  mapfile -t lines < <(sed -n 's/^retried: //p' "$1")
  retried+=("${lines[@]}")
}

# Counts from JUnit files. Sets counted=(passed failed skipped).
count_junit() {
  read -r -a counted < <(/usr/bin/python3 "$root/scripts/lib/count-junit.py" "$@")
  ((${#counted[@]} == 3)) || counted=(0 0 0)
}

# settle NAME STATUS SECONDS: records `counted`, plus a failure if the numbers hide one.
settle() {
  local name=$1 status=$2 seconds=$3
  if ((status != 0 && counted[1] == 0)); then
    say "$name ended with status $status although no test failed."
    counted[1]=1
  elif ((counted[0] + counted[1] == 0)); then
    say "$name ran no test."
    counted[1]=1
  fi
  record "$name" "${counted[@]}" "$seconds"
}

# A command that writes a JUnit file; "JUNIT" in its arguments stands for the path.
suite_junit() {
  local name=$1 started=$SECONDS status=0
  shift
  local base
  base=$results/$(file_name "$name")
  "${@//JUNIT/$base.xml}" >"$base.log" 2>&1 || status=$?
  ((status == 0)) || show_log "$base.log"
  note_retries "$base.log"
  count_junit "$base.xml"
  settle "$name" "$status" $((SECONDS - started))
}

# The test programs of a preset, each judged separately, so the numbers of one do not hide the crash of another.
# suite_gtest NAME PRESET FILTER
suite_gtest() {
  local name=$1 preset=$2 filter=$3
  local -a programs=()
  mapfile -t programs < <(/usr/bin/python3 "$root/scripts/lib/list-test-programs.py" "$root/build/$preset")
  if ((${#programs[@]} == 0)); then
    say "$name: there is no test program."
    record "$name" 0 1
    return
  fi
  local program base status started
  for program in "${programs[@]}"; do
    base=$results/$(file_name "$preset $(basename "$program")")
    status=0 started=$SECONDS
    "$program" --gtest_brief=1 --gtest_filter="$filter" --gtest_output="xml:$base.xml" >"$base.log" 2>&1 ||
      status=$?
    ((status == 0)) || show_log "$base.log"
    count_junit "$base.xml"
    settle "$name $(basename "$program")" "$status" $((SECONDS - started))
  done
}

# The desktop tests, with as many files in parallel as there are processors, at most three. Each has a display of
# its own, because a display has only one keyboard focus.
suite_desktop() {
  local name="desktop" started=$SECONDS status=0 displays log
  displays=$(nproc)
  ((displays > 3)) && displays=3
  displays=${QUENDO_DESKTOP_PARTS:-$displays}
  say "Running the desktop tests on $displays displays."
  export QUENDO_TEST_PICTURES=$results/pictures
  "$root/scripts/lib/desktop-suite.py" "$displays" "$results" | tee "$results/desktop.out" || status=$?
  note_retries "$results/desktop.out"
  local -a files=()
  mapfile -t files < <(find "$results" -maxdepth 1 -name 'desktop-*.xml' | sort)
  if ((status != 0)); then
    while read -r log; do show_log "$log"; done < <(
      grep -lE '<(failure|error)' "${files[@]}" | sed 's/\.xml$/-1.log/')
  fi
  count_junit "${files[@]}"
  settle "$name" "$status" $((SECONDS - started))
}
