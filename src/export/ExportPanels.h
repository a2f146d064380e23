#pragma once

#include <cstddef>
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
#include "platform/Workspace.h"

namespace quendo {

/// Writes notes to files of the user's choice: export, and Save As. Each request is answered to the page
/// once, however its panel ends. A panel waits while another is on show, and its text with it; a request for
/// which there is no more room fails at once. Main thread.
class ExportPanels final : public ExportHandler {
 public:
  ExportPanels(const Localization& localization, PageCalls& pageCalls, const Surface& surface,
               FileManager& fileManager, const ContentTypes& contentTypes, const Workspace& workspace)
      : localization_(localization),
        pageCalls_(pageCalls),
        surface_(surface),
        fileManager_(fileManager),
        contentTypes_(contentTypes),
        workspace_(workspace) {}

  void presentExportPanel(std::string filename, std::string content, std::string format) override;
  void presentSaveAsPanel(std::string noteId, std::string filename, std::string content) override;
  /// The user selected another extension in the row of a Save As panel.
  void saveAsExtensionDidChange(SavePanel& panel) const;

 private:
  bool takeRoom(std::size_t bytes);
  void giveRoomBack(std::size_t bytes);
  /// What both panels have in common.
  SavePanelConfiguration panelFor(std::string_view filename) const;
  std::string startingFolder() const;
  std::string exportType(const std::string& extension, bool plain) const;
  void finishNativeExport(bool success, std::string_view message);
  void exportDidEnd(const SavePanelResult& result, const std::string& content, bool plain);
  void saveAsDidEnd(SavePanel& panel, const SavePanelResult& result, const std::string& noteId,
                    const std::string& content);
  /// Writes `content` where the user confirmed. False when that fails, or is no place on this machine.
  bool write(const SavePanelResult& result, const std::string& content);

  const Localization& localization_;
  PageCalls& pageCalls_;
  const Surface& surface_;
  FileManager& fileManager_;
  const ContentTypes& contentTypes_;
  const Workspace& workspace_;
  std::string lastFolder_;  ///< Where the user confirmed last; empty before.
  /// The newest Save As panel while it is shown; its extension chooser is a part of it.
  std::shared_ptr<SavePanel> activeSaveAsPanel_;
  /// Panels that have not ended, and the bytes of text that they hold.
  std::size_t panelCount_ = 0;
  std::size_t heldBytes_ = 0;
  Lifetime lifetime_;
};

}  // namespace quendo
