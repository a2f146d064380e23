#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bridge/MessageHandlers.h"
#include "bridge/PageCalls.h"
#include "bridge/Surface.h"
#include "i18n/Localization.h"
#include "platform/ContentTypes.h"
#include "platform/FileManager.h"
#include "platform/Lifetime.h"
#include "platform/SavePanel.h"
#include "platform/Window.h"

namespace quendo {

/// Writes notes to files of the user's choice: export, and Save As. Each request is answered to the page
/// once, however its panel ends. Main thread.
class ExportPanels final : public ExportHandler {
 public:
  ExportPanels(const Localization& localization, PageCalls& pageCalls, const Surface& surface,
               FileManager& fileManager, const ContentTypes& contentTypes)
      : localization_(localization),
        pageCalls_(pageCalls),
        surface_(surface),
        fileManager_(fileManager),
        contentTypes_(contentTypes) {}

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
  const Surface& surface_;
  FileManager& fileManager_;
  const ContentTypes& contentTypes_;
  /// The newest Save As panel while it is shown; its extension chooser is a part of it.
  std::shared_ptr<SavePanel> activeSaveAsPanel_;
  Lifetime lifetime_;
};

}  // namespace quendo
