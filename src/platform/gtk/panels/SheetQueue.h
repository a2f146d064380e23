#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace quendo::gtk {

/// Shows a window's sheets one at a time; further ones queue. Main thread.
class SheetQueue {
 public:
  /// Shows a sheet; must call `gone` once, when the sheet has closed.
  using Presenter = std::function<void(std::function<void()> gone)>;

  void present(Presenter presenter) {
    waiting_.push_back(std::move(presenter));
    if (!showing_) showNext();
  }
  bool isShowing() const { return showing_; }

 private:
  void showNext() {
    showing_ = !waiting_.empty();
    if (!showing_) return;
    const Presenter presenter = std::move(waiting_.front());
    waiting_.erase(waiting_.begin());
    presenter([this] { showNext(); });
  }

  std::vector<Presenter> waiting_;
  bool showing_ = false;
};

}  // namespace quendo::gtk
