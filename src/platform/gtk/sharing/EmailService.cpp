#include "platform/gtk/sharing/EmailService.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include <optional>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/sharing/PortalRequest.h"
#include "platform/gtk/sharing/SharedCopies.h"
#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {
namespace {

class EmailService final : public GtkSharingService {
 public:
  EmailService(std::string title, std::string subject, std::string file, std::string body)
      : GtkSharingService(std::move(title)),
        subject_(std::move(subject)),
        file_(std::move(file)),
        body_(std::move(body)) {}

  void start() override {
    if (!file_.empty()) {
      attachment_ = copyForAnotherProgram(file_);
      if (!attachment_) {
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
    if (attachment_) {
      const FileDescriptor file(::open(attachment_->c_str(), O_RDONLY | O_CLOEXEC));
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
    call.options.emplace_back("subject", g_variant_new_string(subject_.c_str()));
    call.options.emplace_back("body", g_variant_new_string(body_.c_str()));
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
    for (const auto& [option, value] : {std::pair("--subject", &subject_), std::pair("--body", &body_)}) {
      if (!value->empty()) command.insert(command.end(), {option, value->c_str()});
    }
    if (attachment_) command.insert(command.end(), {"--attach", attachment_->c_str()});
    command.push_back(nullptr);
    const auto process = adoptReference(g_subprocess_newv(command.data(), G_SUBPROCESS_FLAGS_NONE, nullptr));
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

  std::string subject_;
  std::string file_;
  std::string body_;
  std::optional<std::string> attachment_;
};

}  // namespace

std::shared_ptr<GtkSharingService> makeEmailService(std::string title, std::string subject, std::string file,
                                                    std::string text, const std::string& link) {
  // The text that stands in for a file that could not be made begins with the title.
  std::string body = std::move(text);
  if (!link.empty()) body += (body.empty() ? "" : "\n\n") + link;
  return std::make_shared<EmailService>(std::move(title), std::move(subject), std::move(file),
                                        std::move(body));
}

}  // namespace quendo::gtk
