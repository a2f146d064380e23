#include "export/ExportPanels.h"

#include <utility>

#include "export/SaveAsExtensions.h"
#include "files/Path.h"
#include "files/SafeFilename.h"
#include "files/WriteTextFile.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

// The page is told of a Save As in Portuguese whatever the interface language.
constexpr std::string_view kSaveCancelled = "Salvamento cancelado";
constexpr std::string_view kSaveFailed = "Não foi possível salvar o arquivo";
constexpr std::string_view kSavedAs = "Salvo como ";

std::string withExtension(std::string path, std::string_view extension) {
  if (!extension.empty() && pathExtension(path).empty()) path.append(".").append(extension);
  return path;
}

std::string saveAsPath(const SavePanel& panel, std::string path) {
  return withExtension(std::move(path), saveAsExtensionAt(panel.indexOfSelectedItem()));
}

}  // namespace

void ExportPanels::presentExportPanel(std::string filename, std::string content, std::string format) {
  if (!surface_.window) {
    finishNativeExport(false, "Exportação cancelada");
    return;
  }
  const bool plain = format == "plain";
  SavePanelConfiguration panel;
  panel.nameFieldStringValue = safeFilename(filename);
  const std::string extension(pathExtension(panel.nameFieldStringValue));
  panel.title = localization_.tr(plain ? "Exportar arquivo de texto" : "Exportar nota em Markdown");
  panel.prompt = localization_.tr("Exportar");
  panel.cancel = localization_.tr("Cancelar");
  panel.allowedContentType = exportType(extension, plain);
  // A name typed without an extension gets the one that the allowed type stands for.
  panel.pathToWrite = [extension = !extension.empty() ? extension
                                   : plain            ? "txt"
                                                      : "md"](const SavePanel&, std::string path) {
    return withExtension(std::move(path), extension);
  };
  surface_.window->beginSheet(std::move(panel),
                              lifetime_.guard([this, plain, content = std::move(content)](
                                                  SavePanel&, const std::optional<std::string>& path) {
                                exportDidEnd(path, content, plain);
                              }));
}

std::string ExportPanels::exportType(const std::string& extension, bool plain) const {
  if (auto type = contentTypes_.typeForExtension(extension)) return *type;
  if (plain) return contentTypes_.plainText();
  return contentTypes_.typeForExtension("md").value_or(contentTypes_.plainText());
}

void ExportPanels::exportDidEnd(const std::optional<std::string>& path, const std::string& content,
                                bool plain) {
  if (!path) {
    finishNativeExport(false, "Exportação cancelada");
  } else if (!writeTextFile(fileManager_, *path, content)) {
    finishNativeExport(false, "Não foi possível exportar o arquivo");
  } else {
    finishNativeExport(true, plain ? "Arquivo exportado" : "Markdown exportado");
  }
}

void ExportPanels::finishNativeExport(bool success, std::string_view message) {
  pageCalls_.nativeExportDidFinish(success, localization_.tr(message));
}

void ExportPanels::presentSaveAsPanel(std::string noteId, std::string filename, std::string content) {
  if (!surface_.window) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveCancelled);
    return;
  }
  SavePanelConfiguration panel;
  panel.nameFieldStringValue = safeFilename(filename);
  panel.title = localization_.tr("Salvar nota como");
  panel.prompt = localization_.tr("Salvar");
  panel.cancel = localization_.tr("Cancelar");
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
      std::move(panel), lifetime_.guard([this, noteId = std::move(noteId), content = std::move(content)](
                                            SavePanel& ended, const std::optional<std::string>& path) {
        saveAsDidEnd(ended, path, noteId, content);
      }));
}

void ExportPanels::saveAsDidEnd(SavePanel& panel, const std::optional<std::string>& path,
                                const std::string& noteId, const std::string& content) {
  if (!path) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveCancelled);
  } else if (!writeTextFile(fileManager_, *path, content)) {
    pageCalls_.nativeSaveAsDidFinish(false, noteId, "", kSaveFailed);
  } else {
    // The page keeps the name in a text; a name of other bytes is shown as well as it can be.
    const std::string name = repairedUtf8(lastPathComponent(*path));
    pageCalls_.nativeSaveAsDidFinish(true, noteId, name, std::string(kSavedAs) + name);
  }
  // A newer panel may wait behind this one, and stays the active one.
  if (activeSaveAsPanel_.get() == &panel) activeSaveAsPanel_.reset();
}

void ExportPanels::saveAsExtensionDidChange(SavePanel& panel) const {
  const std::string_view extension = saveAsExtensionAt(panel.indexOfSelectedItem());
  if (!activeSaveAsPanel_ || extension.empty()) return;
  const std::string name = panel.nameFieldStringValue();
  std::string base(deletingPathExtension(name));
  if (base.empty()) base = "nota";
  panel.setNameFieldStringValue(base.append(".").append(extension));
}

}  // namespace quendo
