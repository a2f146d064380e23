#pragma once

#include <memory>
#include <optional>

#include "platform/UserDefaults.h"
#include "platform/gtk/rendering/OpenGlProbe.h"
#include "platform/gtk/rendering/RenderingPolicy.h"

namespace quendo::gtk {

/// What draws the window and its page: chosen when the program starts, and left to the processor from then on
/// where the card turns out to show nothing. Main thread.
class Rendering {
 public:
  /// `option` is the path that the command line asks for; `defaults` must outlive this. Make it before the
  /// first thread: it may have to find out what draws OpenGL here.
  Rendering(std::optional<RenderingPath> option, UserDefaults& defaults);

  /// Chooses, and tells the toolkit. Before the first window.
  void begin();

  /// What was chosen; `nullopt` if the web view chooses for itself.
  std::optional<RenderingPath> path() const { return path_; }

  /// The card has shown nothing of the page: the processor draws the page from now on, and the window too
  /// from the next start on, until there is another driver.
  void giveUpCard();

 private:
  UserDefaults& defaults_;
  RenderingFacts facts_;
  std::unique_ptr<OpenGlProbe> probe_;
  std::optional<RenderingPath> path_;
};

}  // namespace quendo::gtk
