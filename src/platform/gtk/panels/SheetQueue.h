#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace quendo::gtk {

/// Shows the sheets of one window one at a time: a second waits for the first. Main thread.
class SheetQueue {
 public:
  /// Shows a sheet; it must call the function that it is given once, when it is gone.
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
