# Sourced. Finds out whether the web view's sandbox can be set up on this machine.

# Asks of the kernel what WebKitGTK's launcher asks: the same program with the same namespaces. Naming
# the user namespace is left to bubblewrap, as it is there, because root may not need one.
web_sandbox_works() {
  local bwrap=/usr/bin/bwrap
  [[ -x $bwrap ]] || return 1
  timeout 10 "$bwrap" --die-with-parent --unshare-uts --unshare-pid --unshare-ipc --unshare-net \
    --ro-bind / / --dev /dev --proc /proc true >/dev/null 2>&1
}

# Sets web_sandbox_arguments to what the program needs here, and says so when that is anything.
find_web_sandbox() {
  web_sandbox_arguments=()
  if ! web_sandbox_works; then
    say "This machine does not let programs set up the web view's sandbox, so Quendo runs without it here."
    web_sandbox_arguments=(--without-web-sandbox)
  fi
}
