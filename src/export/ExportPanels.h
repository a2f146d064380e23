#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bridge/MessageOwners.h"
#include "bridge/PageCalls.h"
#include "i18n/Localization.h"
#include "platform/ContentTypes.h"
#include "platform/FileManager.h"
#include "platform/Lifetime.h"
#include "platform/SavePanel.h"
#include "platform/Window.h"

namespace quendo {

/// Writes notes to files of the user's choice: export, and Save As. Each request is answered to the page
/// once, however its panel ends. Main thread.
class ExportPanels final : public ExportOwner {
 public:
  ExportPanels(const Localization& localization, PageCalls& pageCalls, FileManager& fileManager,
               const ContentTypes& contentTypes)
      : localization_(localization),
        pageCalls_(pageCalls),
        fileManager_(fileManager),
        contentTypes_(contentTypes) {}

  /// The window whose sheets the panels are, or null. It must be taken back before it is destroyed.
  void setWindow(Window* window) { window_ = window; }

  void presentExportPanel(std::string filename, std::string content, std::string format) override;
  void presentSaveAsPanel(std::string noteId, std::string filename, std::string content) override;
  /// The user selected another extension in the row of a Save As panel.
  void saveAsExtensionDidChange(SavePanel& panel) const;

 private:
  std::string exportType(const std::string& extension, bool plain) const;
  void finishNativeExport(bool success, std::string_view message);
  void exportDidEnd(const std::optional<std::string>& path, const std::string& content, bool plain);
  void saveAsDidEnd(SavePanel& panel, const std::optional<std::string>& path, const std::string& noteId,
                    const std::string& content);

  const Localization& localization_;
  PageCalls& pageCalls_;
  FileManager& fileManager_;
  const ContentTypes& contentTypes_;
  Window* window_ = nullptr;
  /// The newest Save As panel while it is shown; its extension chooser is a part of it.
  std::shared_ptr<SavePanel> activeSaveAsPanel_;
  Lifetime lifetime_;
};

}  // namespace quendo
