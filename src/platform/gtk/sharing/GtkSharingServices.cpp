#include "platform/gtk/sharing/GtkSharingServices.h"

#include <gdk/gdk.h>
#include <gio/gio.h>

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/GdkPasteboard.h"
#include "platform/gtk/sharing/EmailService.h"
#include "platform/gtk/sharing/OpenWithService.h"
#include "platform/gtk/sharing/SharedCopies.h"

namespace quendo::gtk {
namespace {

/// Texts of the picker, which on other systems is the system's own.
struct Texts {
  std::string_view language;
  const char* email;
  const char* openWith;
  const char* copyFile;
  const char* copyText;
  const char* copyLink;
};

constexpr std::array kTexts = {
    Texts{"pt", "Enviar por e-mail", "Abrir com ", "Copiar arquivo", "Copiar texto", "Copiar link"},
    Texts{"en", "Send by E-mail", "Open with ", "Copy File", "Copy Text", "Copy Link"},
    Texts{"es", "Enviar por correo", "Abrir con ", "Copiar archivo", "Copiar texto", "Copiar enlace"}};

const Texts& textsIn(std::string_view language) {
  for (const Texts& texts : kTexts) {
    if (texts.language == language) return texts;
  }
  return kTexts[0];
}

const std::string* valueOf(const SharedItems& shared, SharedItem::Kind kind) {
  for (const SharedItem& item : shared.items) {
    if (item.kind == kind) return &item.value;
  }
  return nullptr;
}

std::optional<std::string> textOfFile(const std::string& path) {
  gchar* bytes = nullptr;
  gsize size = 0;
  if (!g_file_get_contents(path.c_str(), &bytes, &size, nullptr)) return std::nullopt;
  const GCharPtr owned(bytes);
  return std::string(bytes, size);
}

class CopyTextService final : public GtkSharingService {
 public:
  CopyTextService(std::string title, std::function<std::optional<std::string>()> text)
      : GtkSharingService(std::move(title)), text_(std::move(text)) {}
  void start() override {
    const auto text = text_();
    report(text && GdkPasteboard().setString(*text));
  }

 private:
  std::function<std::optional<std::string>()> text_;
};

class CopyFileService final : public GtkSharingService {
 public:
  CopyFileService(std::string title, std::string path)
      : GtkSharingService(std::move(title)), path_(std::move(path)) {}
  void start() override {
    const auto copy = copyForAnotherProgram(path_);
    GdkDisplay* display = gdk_display_get_default();
    if (!copy || !display) {
      report(false);
      return;
    }
    const auto file = adoptReference(g_file_new_for_path(copy->c_str()));
    GSList entry{file.get(), nullptr};
    GValue files = G_VALUE_INIT;
    g_value_init(&files, GDK_TYPE_FILE_LIST);
    g_value_set_boxed(&files, &entry);
    gdk_clipboard_set_value(gdk_display_get_clipboard(display), &files);
    g_value_unset(&files);
    report(true);
  }

 private:
  std::string path_;
};

}  // namespace

void GtkSharingService::report(bool success) {
  SharingServiceDelegate* delegate = std::exchange(delegate_, nullptr);
  if (!delegate) return;
  if (success) {
    delegate->didShareItems(*this);
  } else {
    delegate->didFailToShareItems(*this);
  }
}

std::vector<SharingServices> sharingServicesFor(const SharedItems& shared) {
  const Texts& texts = textsIn(shared.languageCode);
  const std::string* file = valueOf(shared, SharedItem::Kind::file);
  const std::string* text = valueOf(shared, SharedItem::Kind::text);
  const std::string* link = valueOf(shared, SharedItem::Kind::link);
  std::vector<SharingServices> sections;
  sections.push_back(
      {makeEmailService(texts.email, shared.title, file ? *file : "", text ? *text : "", link ? *link : "")});
  if (file) sections.push_back(openWithServices(*file, texts.openWith));
  SharingServices copies;
  if (file) copies.push_back(std::make_shared<CopyFileService>(texts.copyFile, *file));
  if (file) {
    copies.push_back(
        std::make_shared<CopyTextService>(texts.copyText, [path = *file] { return textOfFile(path); }));
  } else if (text) {
    copies.push_back(std::make_shared<CopyTextService>(texts.copyText,
                                                       [copied = *text] { return std::optional(copied); }));
  }
  if (link) {
    copies.push_back(std::make_shared<CopyTextService>(texts.copyLink,
                                                       [copied = *link] { return std::optional(copied); }));
  }
  sections.push_back(std::move(copies));
  return sections;
}

}  // namespace quendo::gtk
