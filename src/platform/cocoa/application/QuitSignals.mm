#import "platform/cocoa/application/QuitSignals.h"

#include <csignal>

namespace quendo::cocoa {

QuitSignals::QuitSignals(std::function<void()> quit) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    // The source sees signals that are ignored too.
    std::signal(number, SIG_IGN);
    dispatch_source_t source = dispatch_source_create(
        DISPATCH_SOURCE_TYPE_SIGNAL, static_cast<uintptr_t>(number), 0, dispatch_get_main_queue());
    dispatch_source_set_event_handler(source, ^{
      quit();
    });
    dispatch_resume(source);
    sources_.push_back(source);
  }
}

}  // namespace quendo::cocoa
