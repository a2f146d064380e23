#include "platform/gtk/panels/GtkAlert.h"

#include <giomm/file.h>
#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/entry.h>
#include <gtkmm/filechoosernative.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/textview.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

// The toolkit leaves the text no room below a title bar that the window manager draws.
constexpr int kTextMargin = 12;

Gtk::MessageType messageType(AlertStyle style) {
  switch (style) {
    case AlertStyle::informational:
      return Gtk::MessageType::INFO;
    case AlertStyle::critical:
      return Gtk::MessageType::ERROR;
    case AlertStyle::warning:
      break;
  }
  return Gtk::MessageType::WARNING;
}

// In points. A dialog grows with its labels, beyond the screen and with its buttons out of reach.
constexpr int kLongTextWidth = 420;
constexpr int kLongTextHeight = 280;

/// Whether a text may need more room than `kLongTextHeight`.
bool isLong(const std::string& text) {
  constexpr std::size_t kManyBytes = 600;
  constexpr auto kManyLines = 12;
  return text.size() > kManyBytes || std::count(text.begin(), text.end(), '\n') > kManyLines;
}

// A text view lays out only the lines on show, but each line as a whole: a line of a megabyte would keep the
// program busy for seconds. It is wrapped anyway.
std::string withShortLines(const std::string& text) {
  constexpr std::size_t kLongLine = 4096;
  std::string lines;
  std::size_t length = 0;
  for (const char c : text) {
    const bool startsCharacter = (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    if (length >= kLongLine && startsCharacter) {
      lines += '\n';
      length = 0;
    }
    lines += c;
    length = c == '\n' ? 0 : length + 1;
  }
  return lines;
}

/// Adds a text of any length, all of which can be scrolled to, with the keyboard too.
void addScrollingText(Gtk::MessageDialog& dialog, const std::string& text) {
  auto* view = Gtk::make_managed<Gtk::TextView>();
  view->get_buffer()->set_text(withShortLines(text));
  view->set_editable(false);
  view->set_cursor_visible(false);
  view->set_accepts_tab(false);
  view->set_wrap_mode(Gtk::WrapMode::WORD_CHAR);
  auto* scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
  scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scroller->set_size_request(kLongTextWidth, kLongTextHeight);
  scroller->set_child(*view);
  dialog.get_message_area()->append(*scroller);
}

Gtk::Entry* addTextField(Gtk::MessageDialog& dialog, const Alert::TextField& field) {
  auto* entry = Gtk::make_managed<Gtk::Entry>();
  entry->set_text(field.text);
  entry->set_size_request(field.width, field.height);
  entry->set_activates_default(true);
  dialog.get_message_area()->append(*entry);
  return entry;
}

/// Paths of the chosen files; nothing when none of them is a file of this machine.
std::optional<std::vector<std::string>> chosenPaths(GtkFileChooserNative* chooser) {
  std::vector<std::string> paths;
  const auto files = adoptReference(gtk_file_chooser_get_files(GTK_FILE_CHOOSER(chooser)));
  for (guint i = 0; i < g_list_model_get_n_items(files.get()); ++i) {
    const auto file = adoptReference(static_cast<GFile*>(g_list_model_get_item(files.get(), i)));
    const GCharPtr path(g_file_get_path(file.get()));
    if (path) paths.emplace_back(path.get());
  }
  return paths.empty() ? std::nullopt : std::optional(std::move(paths));
}

class ShownAlert final : public PresentedAlert {
 public:
  explicit ShownAlert(const std::shared_ptr<Gtk::MessageDialog>& dialog) : dialog_(dialog) {}
  void dismiss() override {
    const auto dialog = dialog_.lock();
    if (dialog && dialog->get_visible()) dialog->response(static_cast<int>(Gtk::ResponseType::CANCEL));
  }

 private:
  std::weak_ptr<Gtk::MessageDialog> dialog_;
};

}  // namespace

std::shared_ptr<PresentedAlert> showAlert(Gtk::Window* parent, const Alert& alert,
                                          std::function<void(AlertResult)> completion) {
  const bool isMessageLong = isLong(alert.messageText);
  auto dialog = std::make_shared<Gtk::MessageDialog>(
      isMessageLong ? std::string() : alert.messageText, false, messageType(alert.style),
      alert.buttons.empty() ? Gtk::ButtonsType::OK : Gtk::ButtonsType::NONE, true);
  if (isMessageLong) {
    dialog->get_message_area()->get_first_child()->set_visible(false);
    addScrollingText(*dialog, alert.messageText);
  }
  if (isLong(alert.informativeText)) {
    addScrollingText(*dialog, alert.informativeText);
  } else if (!alert.informativeText.empty()) {
    dialog->set_secondary_text(alert.informativeText);
  }
  for (std::size_t i = 0; i < alert.buttons.size(); ++i)
    dialog->add_button(alert.buttons[i], static_cast<int>(i));
  const int defaultResponse = alert.buttons.empty() ? static_cast<int>(Gtk::ResponseType::OK) : 0;
  dialog->set_default_response(defaultResponse);
  dialog->get_message_area()->set_margin_top(kTextMargin);
  if (parent) dialog->set_transient_for(*parent);
  Gtk::Entry* entry = alert.accessory ? addTextField(*dialog, *alert.accessory) : nullptr;
  // A field of the toolkit holds 65,534 characters; a longer text that nobody changed is answered whole.
  const std::string shown = entry ? entry->get_text().raw() : std::string();
  const std::string given = alert.accessory ? alert.accessory->text : std::string();
  // The handler keeps the dialog alive until it has run.
  dialog->signal_response().connect(
      [dialog, entry, shown, given, completion = std::move(completion)](int response) mutable {
        AlertResult result{response >= 0 ? response : -1, given};
        if (entry && entry->get_text().raw() != shown) result.text = entry->get_text().raw();
        dialog->hide();
        const auto finish = std::exchange(completion, {});
        Glib::signal_idle().connect_once([dialog = std::move(dialog)] {});
        if (finish) finish(std::move(result));
      });
  dialog->present();
  if (entry) {
    entry->grab_focus();
  } else if (auto* button = dialog->get_widget_for_response(defaultResponse)) {
    // A text that scrolls comes first, but the keyboard is for the answer.
    button->grab_focus();
  }
  return std::make_shared<ShownAlert>(dialog);
}

void AlertSheet::show(Gtk::Window& parent, std::function<void()> gone) {
  if (ended_) {
    gone();
    return;
  }
  shown_ =
      showAlert(&parent, alert_, [self = shared_from_this(), gone = std::move(gone)](AlertResult result) {
        const auto completion = std::exchange(self->completion_, {});
        gone();
        if (completion) completion(std::move(result));
      });
}

void AlertSheet::dismiss() {
  if (shown_) {
    shown_->dismiss();
  } else if (!std::exchange(ended_, true)) {
    if (const auto completion = std::exchange(completion_, {})) completion({});
  }
}

void showOpenPanel(Gtk::Window& parent, const OpenPanel& panel,
                   std::function<void(std::optional<std::vector<std::string>>)> completion) {
  auto chooser = Gtk::FileChooserNative::create(
      panel.title, parent,
      panel.canChooseDirectories ? Gtk::FileChooser::Action::SELECT_FOLDER : Gtk::FileChooser::Action::OPEN,
      panel.prompt);
  chooser->set_modal(true);
  if (!panel.startingFolder.empty())
    chooser->set_current_folder(Gio::File::create_for_path(panel.startingFolder));
  chooser->set_select_multiple(panel.allowsMultipleSelection);
  chooser->signal_response().connect([chooser, completion = std::move(completion)](int response) mutable {
    std::optional<std::vector<std::string>> paths;
    if (response == static_cast<int>(Gtk::ResponseType::ACCEPT)) {
      paths = chosenPaths(chooser->gobj());
    }
    const auto finish = std::exchange(completion, {});
    Glib::signal_idle().connect_once([chooser = std::move(chooser)] {});
    if (finish) finish(std::move(paths));
  });
  chooser->show();
}

}  // namespace quendo::gtk
