# Sourced. Finds out whether the web view's sandbox can be set up on this machine.

# The program's own trial answers, built as a program of its own (target sandbox_check).
web_sandbox_works() { timeout 10 "$root/build/release/bin/sandbox_check"; }

# Sets web_sandbox_arguments to what the program needs here, and says so when that is anything.
find_web_sandbox() {
  web_sandbox_arguments=()
  if ! web_sandbox_works; then
    say "This machine does not let programs set up the web view's sandbox, so Quendo runs without it here."
    web_sandbox_arguments=(--without-web-sandbox)
  fi
}
