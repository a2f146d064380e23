#include "platform/gtk/sharing/GtkSharingServices.h"

#include <gdk/gdk.h>
#include <gio/gio.h>

#include <algorithm>
#include <utility>
#include <variant>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/GdkPasteboard.h"
#include "platform/gtk/sharing/EmailService.h"
#include "platform/gtk/sharing/OpenWithService.h"

namespace quendo::gtk {
namespace {

class CopyTextService final : public GtkSharingService {
 public:
  explicit CopyTextService(std::string text) : text_(std::move(text)) {}
  void start() override { report(GdkPasteboard().setString(text_)); }

 private:
  std::string text_;
};

class CopyFileService final : public GtkSharingService {
 public:
  CopyFileService(std::string path, std::shared_ptr<SharingOffers> offers)
      : path_(std::move(path)), offers_(std::move(offers)) {}
  void start() override {
    const auto copy = offers_->copyForAnotherProgram(path_);
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
  std::shared_ptr<SharingOffers> offers_;
};

/// Creates the service for an offer.
class ServiceFactory {
 public:
  ServiceFactory(const Programs& programs, const std::shared_ptr<SharingOffers>& offers)
      : programs_(programs), offers_(offers) {}
  std::shared_ptr<GtkSharingService> operator()(const ShareByMail& mail) const {
    return makeEmailService(mail, offers_);
  }
  std::shared_ptr<GtkSharingService> operator()(const ShareWithProgram& with) const {
    return makeOpenWithService(programs_[with.program], with, offers_);
  }
  std::shared_ptr<GtkSharingService> operator()(const CopySharedFile& copy) const {
    return std::make_shared<CopyFileService>(copy.file, offers_);
  }
  std::shared_ptr<GtkSharingService> operator()(const CopySharedText& copy) const {
    return std::make_shared<CopyTextService>(copy.text);
  }

 private:
  const Programs& programs_;
  const std::shared_ptr<SharingOffers>& offers_;
};

}  // namespace

std::vector<std::vector<TitledService>> sharingServicesFor(const SharedItems& shared) {
  const auto file = std::ranges::find(shared.items, SharedItem::Kind::file, &SharedItem::kind);
  const Programs programs = file == shared.items.end() ? Programs() : programsFor(file->value);
  const ServiceFactory makeService(programs, shared.offersWithoutSystemPicker);
  std::vector<std::vector<TitledService>> sections;
  for (const SharingSection& offers : shared.offersWithoutSystemPicker->sections(described(programs))) {
    std::vector<TitledService>& section = sections.emplace_back();
    for (const SharingOffer& offer : offers)
      section.push_back({offer.title, std::visit(makeService, offer.action)});
  }
  return sections;
}

}  // namespace quendo::gtk
