#pragma once

#import <AppKit/AppKit.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/WebView.h"

namespace quendo::doubles {

/// The name of an appearance; empty for none.
std::string nameOf(NSAppearance* appearance);
NSAppearance* systemAppearance();
/// Switches the whole system to light or dark.
void setSystemAppearance(NSAppearanceName name);

/// A colour of a page. Without one, it is a pattern, which no colour space knows.
NSColor* colorOf(const std::optional<Color>& color);

/// Those who observe an object, by what they observe of it.
class Observers {
 public:
  void add(NSObject* observer, NSString* key);
  void remove(NSObject* observer, NSString* key);
  /// Tells those who observe a value that it has changed.
  void tell(NSString* key, id object) const;
  std::size_t count() const { return observers_.size(); }

 private:
  std::vector<std::pair<std::string, NSObject*>> observers_;
};

/// Those who observe the application.
Observers& applicationObservers();

}  // namespace quendo::doubles
