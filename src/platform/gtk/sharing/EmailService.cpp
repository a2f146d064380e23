#include "platform/gtk/sharing/EmailService.h"

#include <fcntl.h>
#include <gio/gio.h>
#include <gio/gunixfdlist.h>

#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/QuitSignals.h"
#include "platform/gtk/sharing/SharedCopies.h"
#include "platform/posix/FileDescriptor.h"

namespace quendo::gtk {
namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";

class EmailService final : public GtkSharingService {
 public:
  EmailService(std::string title, std::string subject, std::string file, std::string body)
      : GtkSharingService(std::move(title)),
        subject_(std::move(subject)),
        file_(std::move(file)),
        body_(std::move(body)) {}
  ~EmailService() override { forgetRequest(); }
  EmailService(const EmailService&) = delete;
  EmailService& operator=(const EmailService&) = delete;

  void start() override {
    if (!file_.empty()) {
      attachment_ = copyForAnotherProgram(file_);
      if (!attachment_) {
        report(false);
        return;
      }
    }
    bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus_) {
      runXdgEmail();
      return;
    }
    askPortal();
  }

 private:
  /// Keeps the service alive while an answer is awaited.
  using Waiting = std::shared_ptr<EmailService>;
  Waiting* wait() { return new Waiting(std::static_pointer_cast<EmailService>(shared_from_this())); }
  static Waiting arrived(gpointer data) {
    const std::unique_ptr<Waiting> waiting(static_cast<Waiting*>(data));
    return *waiting;
  }

  void askPortal() {
    const auto descriptors = adoptReference(g_unix_fd_list_new());
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    g_variant_builder_add(&options, "{sv}", "subject", g_variant_new_string(subject_.c_str()));
    g_variant_builder_add(&options, "{sv}", "body", g_variant_new_string(body_.c_str()));
    if (attachment_) {
      const FileDescriptor file(::open(attachment_->c_str(), O_RDONLY | O_CLOEXEC));
      const int index = g_unix_fd_list_append(descriptors.get(), file.get(), nullptr);
      GVariant* handle = g_variant_new_handle(index);
      g_variant_builder_add(&options, "{sv}", "attachment_fds",
                            g_variant_new_array(G_VARIANT_TYPE_HANDLE, &handle, 1));
    }
    g_dbus_connection_call_with_unix_fd_list(bus_.get(), kPortal, kPortalPath, "org.freedesktop.portal.Email",
                                             "ComposeEmail", g_variant_new("(sa{sv})", "", &options),
                                             G_VARIANT_TYPE("(o)"), G_DBUS_CALL_FLAGS_NONE, -1,
                                             descriptors.get(), nullptr, onPortalAnswered, wait());
  }

  static void onPortalAnswered(GObject* source, GAsyncResult* result, gpointer data) {
    const Waiting self = arrived(data);
    GVariant* answer =
        g_dbus_connection_call_with_unix_fd_list_finish(G_DBUS_CONNECTION(source), nullptr, result, nullptr);
    // No portal, or one that sends no mail.
    if (!answer) {
      self->runXdgEmail();
      return;
    }
    const char* request = nullptr;
    g_variant_get(answer, "(&o)", &request);
    self->awaitResponse(request);
    g_variant_unref(answer);
  }

  void awaitResponse(const char* request) {
    subscription_ =
        g_dbus_connection_signal_subscribe(bus_.get(), kPortal, "org.freedesktop.portal.Request", "Response",
                                           request, nullptr, G_DBUS_SIGNAL_FLAGS_NONE, onResponse, wait(),
                                           [](gpointer waiting) { delete static_cast<Waiting*>(waiting); });
  }

  static void onResponse(GDBusConnection*, const char*, const char*, const char*, const char*,
                         GVariant* parameters, gpointer data) {
    const Waiting self = *static_cast<Waiting*>(data);
    guint32 response = 1;
    g_variant_get(parameters, "(ua{sv})", &response, nullptr);
    self->forgetRequest();
    self->report(response == 0);
  }

  void forgetRequest() {
    if (subscription_ != 0) g_dbus_connection_signal_unsubscribe(bus_.get(), std::exchange(subscription_, 0));
  }

  void runXdgEmail() {
    std::vector<const char*> command = {"xdg-email", "--utf8"};
    for (const auto& [option, value] : {std::pair("--subject", &subject_), std::pair("--body", &body_)}) {
      if (!value->empty()) command.insert(command.end(), {option, value->c_str()});
    }
    if (attachment_) command.insert(command.end(), {"--attach", attachment_->c_str()});
    command.push_back(nullptr);
    const auto launcher = adoptReference(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_NONE));
    g_subprocess_launcher_set_child_setup(launcher.get(), restoreQuitSignals, nullptr, nullptr);
    auto* process = g_subprocess_launcher_spawnv(launcher.get(), command.data(), nullptr);
    if (!process) {
      report(false);
      return;
    }
    g_subprocess_wait_check_async(process, nullptr, onXdgEmailEnded, wait());
    g_object_unref(process);
  }

  static void onXdgEmailEnded(GObject* source, GAsyncResult* result, gpointer data) {
    const bool success = g_subprocess_wait_check_finish(G_SUBPROCESS(source), result, nullptr) == TRUE;
    arrived(data)->report(success);
  }

  std::string subject_;
  std::string file_;
  std::string body_;
  std::optional<std::string> attachment_;
  GObjectPtr<GDBusConnection> bus_;
  guint subscription_ = 0;
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
