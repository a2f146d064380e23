#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Sharing.h"

namespace quendo::gtk {

/// One entry of the share picker. It can be started once; it keeps itself alive until it has reported.
class GtkSharingService : public SharingService, public std::enable_shared_from_this<GtkSharingService> {
 public:
  explicit GtkSharingService(std::string title) : title_(std::move(title)) {}
  void setDelegate(SharingServiceDelegate* delegate) override { delegate_ = delegate; }
  const std::string& title() const { return title_; }
  virtual void start() = 0;

 protected:
  void report(bool success);

 private:
  std::string title_;
  SharingServiceDelegate* delegate_ = nullptr;
};

using SharingServices = std::vector<std::shared_ptr<GtkSharingService>>;

/// What this desktop can do with the items: e-mail, the programs for the file's type, copying. In the order
/// in which they are listed; each inner list is a section. Main thread.
std::vector<SharingServices> sharingServicesFor(const SharedItems& shared);

}  // namespace quendo::gtk
