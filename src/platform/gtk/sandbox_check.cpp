// Ends with 0 where the web view's sandbox can be set up, with 1 where it cannot: the scripts ask the
// program's own trial whether to start it with --without-web-sandbox. Never installed.

#include <cstdlib>

#include "platform/gtk/web/SandboxProbe.h"

int main() {
  return quendo::gtk::SandboxProbe().sandboxWorks() ? EXIT_SUCCESS : EXIT_FAILURE;
}
