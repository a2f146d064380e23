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

/// Writes notes to files the user chooses: Export and Save As. Each request gets exactly one reply, however
/// its panel ends. Panels and their texts queue behind the one on screen; a request that exceeds the queue's
/// limits fails at once. Main thread.
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
  /// The user selected another extension in a Save As panel.
  void saveAsExtensionDidChange(SavePanel& panel) const;

 private:
  bool reserveSpace(std::size_t bytes);
  void releaseSpace(std::size_t bytes);
  /// The settings both panels share.
  SavePanelConfiguration panelFor(std::string_view filename) const;
  std::string startingFolder() const;
  std::optional<std::string> registeredType(const std::string& extension) const;
  std::string usualType(bool plain) const;
  void finishNativeExport(bool success, std::string_view message);
  void exportDidEnd(const SavePanelResult& result, const std::string& content, bool plain);
  void saveAsDidEnd(SavePanel& panel, const SavePanelResult& result, const std::string& noteId,
                    const std::string& content);
  /// Writes `content` to the confirmed path. False if that fails or the location has no local path.
  bool write(const SavePanelResult& result, const std::string& content);

  const Localization& localization_;
  PageCalls& pageCalls_;
  const Surface& surface_;
  FileManager& fileManager_;
  const ContentTypes& contentTypes_;
  const Workspace& workspace_;
  std::string lastFolder_;  ///< Folder of the last confirmed panel; empty before the first.
  /// The newest open Save As panel; it contains the extension chooser.
  std::shared_ptr<SavePanel> activeSaveAsPanel_;
  /// Open and queued panels, and the bytes of text they hold.
  std::size_t panelCount_ = 0;
  std::size_t heldBytes_ = 0;
  Lifetime lifetime_;
};

}  // namespace quendo
