#include "export/ExportPanels.h"

#include <utility>

#include "export/SaveAsExtensions.h"
#include "export/SaveNames.h"
#include "files/Path.h"
#include "files/SafeFilename.h"
#include "files/WriteTextFile.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

// The page gets the result of a Save As in Portuguese, whatever the interface language.
constexpr std::string_view kSaveCancelled = "Salvamento cancelado";
constexpr std::string_view kSaveFailed = "Não foi possível salvar o arquivo";
constexpr std::string_view kSavedAs = "Salvo como ";

// More panels than a user can open, since the first one takes all input. Enough bytes for two texts of the
// maximum message size, with their names.
constexpr std::size_t kMaximumPanels = 8;
constexpr std::size_t kMaximumHeldBytes = 50'000'000;

std::string saveAsPath(const SavePanel& panel, std::string path) {
  return withExtension(std::move(path), saveAsExtensionAt(panel.indexOfSelectedItem()));
}

}  // namespace

SavePanelConfiguration ExportPanels::panelFor(std::string_view filename) const {
  SavePanelConfiguration panel;
  panel.nameFieldStringValue = safeFilename(filename);
  panel.startingFolder = [this] { return startingFolder(); };
  panel.cancel = localization_.tr("Cancelar");
  return panel;
}

std::string ExportPanels::startingFolder() const {
  if (!lastFolder_.empty()) return lastFolder_;
  if (auto documents = workspace_.documentsDirectory()) return *std::move(documents);
  return workspace_.homeDirectory();
}

void ExportPanels::presentExportPanel(std::string filename, std::string content, std::string format) {
  if (!surface_.window) {
    finishNativeExport(false, "Exportação cancelada");
    return;
  }
  const bool plain = format == "plain";
  SavePanelConfiguration panel = panelFor(filename);
  const std::size_t held = content.size() + panel.nameFieldStringValue.size();
  if (!reserveSpace(held)) {
    finishNativeExport(false, "Não foi possível exportar o arquivo");
    return;
  }
  const std::string extension(pathExtension(panel.nameFieldStringValue));
  panel.title = localization_.tr(plain ? "Exportar arquivo de texto" : "Exportar nota em Markdown");
  panel.prompt = localization_.tr("Exportar");
  const auto type = registeredType(extension);
  panel.allowedContentType = type ? *type : usualType(plain);
  // A name typed without an extension gets the allowed type's.
  std::string added = type ? extension : plain ? "txt" : "md";
  panel.pathToWrite = [added = std::move(added)](const SavePanel&, std::string path) {
    return withExtension(std::move(path), added);
  };
  surface_.window->beginSheet(std::move(panel),
                              lifetime_.guard([this, plain, held, content = std::move(content)](
                                                  SavePanel&, const SavePanelResult& result) {
                                releaseSpace(held);
                                exportDidEnd(result, content, plain);
                              }));
}

bool ExportPanels::reserveSpace(std::size_t bytes) {
  if (panelCount_ == kMaximumPanels || bytes > kMaximumHeldBytes - heldBytes_) return false;
  ++panelCount_;
  heldBytes_ += bytes;
  return true;
}

void ExportPanels::releaseSpace(std::size_t bytes) {
  --panelCount_;
  heldBytes_ -= bytes;
}

std::optional<std::string> ExportPanels::registeredType(const std::string& extension) const {
  return extension.empty() ? std::nullopt : contentTypes_.typeForExtension(extension);
}

std::string ExportPanels::usualType(bool plain) const {
  if (plain) return contentTypes_.plainText();
  return contentTypes_.typeForExtension("md").value_or(contentTypes_.plainText());
}

bool ExportPanels::write(const SavePanelResult& result, const std::string& content) {
  if (!result.path) return false;
  lastFolder_ = deletingLastPathComponent(*result.path);
  return writeTextFile(fileManager_, *result.path, content);
}

void ExportPanels::exportDidEnd(const SavePanelResult& result, const std::string& content, bool plain) {
  if (!result.confirmed) {
    finishNativeExport(false, "Exportação cancelada");
  } else if (!write(result, content)) {
    finishNativeExport(false, "Não foi possível exportar o arquivo");
  } else {
    finishNativeExport(true, plain ? "Arquivo exportado" : "Markdown exportado");
  }
}

void ExportPanels::finishNativeExport(bool success, std::string_view message) {
  pageCalls_.nativeExportDidFinish(success, localization_.tr(message));
}

void ExportPanels::presentSaveAsPanel(std::string noteId, std::string filename, std::string content) {
  SavePanelConfiguration panel = panelFor(filename);
  const std::size_t held = content.size() + panel.nameFieldStringValue.size();
  if (!surface_.window) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveCancelled);
    return;
  }
  if (!reserveSpace(held)) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveFailed);
    return;
  }
  panel.title = localization_.tr("Salvar nota como");
  panel.prompt = localization_.tr("Salvar");
  panel.allowsOtherFileTypes = true;
  panel.allowedContentType = contentTypes_.data();
  SavePanelConfiguration::Accessory accessory;
  accessory.label = localization_.tr("Extensão:");
  for (const SaveAsExtension& row : kSaveAsExtensions)
    accessory.items.push_back(std::string(row.label) + " (." + std::string(row.extension) + ")");
  accessory.items.emplace_back(localization_.tr("Personalizada (digite no nome)"));
  accessory.selected = saveAsExtensionOf(panel.nameFieldStringValue);
  accessory.didChange = lifetime_.guard([this](SavePanel& changed) { saveAsExtensionDidChange(changed); });
  panel.accessory = std::move(accessory);
  panel.pathToWrite = saveAsPath;
  activeSaveAsPanel_ = surface_.window->beginSheet(
      std::move(panel),
      lifetime_.guard([this, held, noteId = std::move(noteId), content = std::move(content)](
                          SavePanel& ended, const SavePanelResult& result) {
        releaseSpace(held);
        saveAsDidEnd(ended, result, noteId, content);
      }));
}

void ExportPanels::saveAsDidEnd(SavePanel& panel, const SavePanelResult& result, const std::string& noteId,
                                const std::string& content) {
  if (!result.confirmed) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveCancelled);
  } else if (!write(result, content)) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveFailed);
  } else {
    // The page stores the name as text; invalid UTF-8 is shown as well as possible.
    const std::string name = repairedUtf8(lastPathComponent(*result.path));
    pageCalls_.nativeSaveAsDidFinish(true, noteId, name, std::string(kSavedAs) + name);
  }
  // If a newer panel is queued behind this one, that one stays active.
  if (activeSaveAsPanel_.get() == &panel) activeSaveAsPanel_.reset();
}

void ExportPanels::saveAsExtensionDidChange(SavePanel& panel) const {
  const std::string_view extension = saveAsExtensionAt(panel.indexOfSelectedItem());
  if (!activeSaveAsPanel_ || extension.empty()) return;
  panel.setNameFieldStringValue(replacingExtension(panel.nameFieldStringValue(), extension));
}

}  // namespace quendo
