#include "platform/gtk/application/GLibMainQueue.h"

#include <glib.h>

#include <utility>

namespace quendo::gtk {
namespace {

class GLibDelayedTask final : public DelayedTask, public std::enable_shared_from_this<GLibDelayedTask> {
 public:
  explicit GLibDelayedTask(std::function<void()> task) : task_(std::move(task)) {}

  void start(std::chrono::milliseconds delay) {
    // The source keeps the task alive: its owner may drop it without cancelling.
    auto* self = new std::shared_ptr<GLibDelayedTask>(shared_from_this());
    sourceId_ = g_timeout_add_full(
        G_PRIORITY_DEFAULT, static_cast<guint>(delay.count()), &GLibDelayedTask::run, self,
        [](gpointer data) { delete static_cast<std::shared_ptr<GLibDelayedTask>*>(data); });
  }

  void cancel() override {
    if (sourceId_ != 0) g_source_remove(std::exchange(sourceId_, 0));
  }

 private:
  static gboolean run(gpointer data) {
    const auto self = *static_cast<std::shared_ptr<GLibDelayedTask>*>(data);
    self->sourceId_ = 0;
    std::exchange(self->task_, {})();
    return G_SOURCE_REMOVE;
  }

  std::function<void()> task_;
  guint sourceId_ = 0;
};

}  // namespace

void GLibMainQueue::async(std::function<void()> task) {
  g_idle_add_full(
      G_PRIORITY_DEFAULT,
      [](gpointer data) -> gboolean {
        (*static_cast<std::function<void()>*>(data))();
        return G_SOURCE_REMOVE;
      },
      new std::function<void()>(std::move(task)),
      [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
}

std::shared_ptr<DelayedTask> GLibMainQueue::asyncAfter(std::chrono::milliseconds delay,
                                                       std::function<void()> task) {
  auto delayed = std::make_shared<GLibDelayedTask>(std::move(task));
  delayed->start(delay);
  return delayed;
}

}  // namespace quendo::gtk
