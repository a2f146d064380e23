#include "platform/gtk/sharing/EmailService.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/QuitSignals.h"
#include "platform/gtk/sharing/PortalRequest.h"
#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {
namespace {

class EmailService final : public GtkSharingService {
 public:
  EmailService(ShareByMail mail, std::shared_ptr<SharingOffers> offers)
      : mail_(std::move(mail)), offers_(std::move(offers)) {}

  void start() override {
    if (mail_.attachment) {
      copy_ = offers_->copyForAnotherProgram(*mail_.attachment);
      if (!copy_) {
        report(false);
        return;
      }
    }
    askPortal();
  }

 private:
  std::shared_ptr<EmailService> self() { return std::static_pointer_cast<EmailService>(shared_from_this()); }

  void askPortal() {
    PortalCall call;
    call.interface = "org.freedesktop.portal.Email";
    call.method = "ComposeEmail";
    if (copy_) {
      const FileDescriptor file(::open(copy_->c_str(), O_RDONLY | O_CLOEXEC));
      call.descriptors = adoptReference(g_unix_fd_list_new());
      const int index =
          file.isOpen() ? g_unix_fd_list_append(call.descriptors.get(), file.get(), nullptr) : -1;
      if (index < 0) {
        report(false);
        return;
      }
      GVariant* handle = g_variant_new_handle(index);
      call.options.emplace_back("attachment_fds", g_variant_new_array(G_VARIANT_TYPE_HANDLE, &handle, 1));
    }
    call.options.emplace_back("subject", g_variant_new_string(mail_.subject.c_str()));
    call.options.emplace_back("body", g_variant_new_string(mail_.body.c_str()));
    askThePortal(std::move(call), [service = self()](PortalAnswer answer) {
      if (answer == PortalAnswer::noPortal) {
        service->runXdgEmail();
      } else {
        service->report(answer == PortalAnswer::done);
      }
    });
  }

  void runXdgEmail() {
    std::vector<const char*> command = {"xdg-email", "--utf8"};
    for (const auto& [option, value] :
         {std::pair("--subject", &mail_.subject), std::pair("--body", &mail_.body)}) {
      if (!value->empty()) command.insert(command.end(), {option, value->c_str()});
    }
    if (copy_) command.insert(command.end(), {"--attach", copy_->c_str()});
    command.push_back(nullptr);
    const auto launcher = adoptReference(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_NONE));
    g_subprocess_launcher_set_child_setup(launcher.get(), restoreQuitSignals, nullptr, nullptr);
    const auto process =
        adoptReference(g_subprocess_launcher_spawnv(launcher.get(), command.data(), nullptr));
    if (!process) {
      report(false);
      return;
    }
    g_subprocess_wait_check_async(process.get(), nullptr, onXdgEmailEnded, new std::shared_ptr(self()));
  }

  static void onXdgEmailEnded(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<std::shared_ptr<EmailService>> service(
        static_cast<std::shared_ptr<EmailService>*>(data));
    (*service)->report(g_subprocess_wait_check_finish(G_SUBPROCESS(source), result, nullptr) == TRUE);
  }

  const ShareByMail mail_;
  const std::shared_ptr<SharingOffers> offers_;
  std::optional<std::string> copy_;
};

}  // namespace

std::shared_ptr<GtkSharingService> makeEmailService(ShareByMail mail, std::shared_ptr<SharingOffers> offers) {
  return std::make_shared<EmailService>(std::move(mail), std::move(offers));
}

}  // namespace quendo::gtk
