# Sourced. Finds out whether the web view's sandbox can be set up on this machine.

# The program's own check, built separately (target sandbox_check).
web_sandbox_works() { timeout 10 "$root/build/release/bin/sandbox_check"; }

# Sets web_sandbox_arguments to the options the program needs here, and says so if there are any.
find_web_sandbox() {
  web_sandbox_arguments=()
  if ! web_sandbox_works; then
    say "This machine does not allow the web view's sandbox, so Quendo runs without it."
    web_sandbox_arguments=(--without-web-sandbox)
  fi
}
