#pragma once

#import <AppKit/AppKit.h>

#include <vector>

#include "platform/Sharing.h"

@class QuendoSharingPickerDelegate;

namespace quendo::cocoa {

/// NSSharingServicePicker.
class CocoaSharingPicker final : public SharingServicePicker {
 public:
  explicit CocoaSharingPicker(const std::vector<SharedItem>& items);
  ~CocoaSharingPicker() override;
  CocoaSharingPicker(const CocoaSharingPicker&) = delete;
  CocoaSharingPicker& operator=(const CocoaSharingPicker&) = delete;

  void setDelegate(SharingServicePickerDelegate* delegate) override;
  void showRelativeTo(const Rect& rect, WebView& webView, RectEdge preferredEdge) override;

 private:
  NSSharingServicePicker* picker_;
  QuendoSharingPickerDelegate* pickerDelegate_;
};

}  // namespace quendo::cocoa
