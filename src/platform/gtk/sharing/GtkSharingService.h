#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/Sharing.h"

namespace quendo::gtk {

/// An entry of the share picker. It can be started once and keeps itself alive until it has reported. Main
/// thread.
class GtkSharingService : public SharingService, public std::enable_shared_from_this<GtkSharingService> {
 public:
  void setDelegate(SharingServiceDelegate* delegate) override { delegate_ = delegate; }
  virtual void start() = 0;

 protected:
  void report(bool success) {
    SharingServiceDelegate* delegate = std::exchange(delegate_, nullptr);
    if (!delegate) return;
    if (success) {
      delegate->didShareItems(*this);
    } else {
      delegate->didFailToShareItems(*this);
    }
  }

 private:
  SharingServiceDelegate* delegate_ = nullptr;
};

}  // namespace quendo::gtk
