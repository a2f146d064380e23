// Exits with 0 if the web view's sandbox can be set up, otherwise with 1: scripts use the program's own probe
// to decide whether to pass --without-web-sandbox. Never installed.

#include <cstdlib>

#include "platform/gtk/web/SandboxProbe.h"

int main() {
  return quendo::gtk::SandboxProbe().sandboxWorks() ? EXIT_SUCCESS : EXIT_FAILURE;
}
