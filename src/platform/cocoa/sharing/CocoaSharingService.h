#pragma once

#import <AppKit/AppKit.h>

#include "platform/Sharing.h"

@class QuendoSharingServiceDelegate;

namespace quendo::cocoa {

/// NSSharingService. The system performs it once its picker's delegate has returned.
class CocoaSharingService final : public SharingService {
 public:
  explicit CocoaSharingService(NSSharingService* service);
  ~CocoaSharingService() override;
  CocoaSharingService(const CocoaSharingService&) = delete;
  CocoaSharingService& operator=(const CocoaSharingService&) = delete;

  void setDelegate(SharingServiceDelegate* delegate) override;

 private:
  NSSharingService* service_;
  QuendoSharingServiceDelegate* serviceDelegate_;
};

}  // namespace quendo::cocoa
