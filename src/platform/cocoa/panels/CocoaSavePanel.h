#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "platform/SavePanel.h"

@class QuendoSavePanelDelegate;

namespace quendo::cocoa {

/// NSSavePanel. The system remembers the folder and localises the cancel button itself.
class CocoaSavePanel final : public SavePanel, public std::enable_shared_from_this<CocoaSavePanel> {
 public:
  CocoaSavePanel(SavePanelConfiguration configuration, SavePanelCompletion completion);
  ~CocoaSavePanel() override;
  CocoaSavePanel(const CocoaSavePanel&) = delete;
  CocoaSavePanel& operator=(const CocoaSavePanel&) = delete;

  /// Shows the panel as a sheet, and keeps this alive until it has ended.
  void begin(NSWindow* window);

  std::string nameFieldStringValue() const override;
  void setNameFieldStringValue(const std::string& name) override;
  std::size_t indexOfSelectedItem() const override;

  // What the panel's delegate reports.
  /// Whether the place that the user confirmed is to be written. Otherwise the panel now shows another one.
  bool isToBeWritten(NSURL* url);
  void selectionDidChange();

 private:
  void addAccessory(const SavePanelConfiguration::Accessory& accessory);

  NSSavePanel* panel_;
  NSPopUpButton* popUp_ = nil;
  QuendoSavePanelDelegate* panelDelegate_;
  SavePanelConfiguration configuration_;
  SavePanelCompletion completion_;
  std::string refused_;  ///< The path that was confirmed last and not to be written.
};

}  // namespace quendo::cocoa
