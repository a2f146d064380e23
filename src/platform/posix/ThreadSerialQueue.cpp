#include "platform/posix/ThreadSerialQueue.h"

#include <future>
#include <memory>
#include <utility>

namespace quendo {

ThreadSerialQueue::ThreadSerialQueue() : thread_([this] { runTasks(); }) {}

ThreadSerialQueue::~ThreadSerialQueue() {
  {
    const std::scoped_lock lock(mutex_);
    ending_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

void ThreadSerialQueue::async(std::function<void()> task) {
  {
    const std::scoped_lock lock(mutex_);
    tasks_.push_back(std::move(task));
  }
  changed_.notify_one();
}

void ThreadSerialQueue::sync(const std::function<void()>& task) {
  // Shared with the task, which may still be inside set_value when this thread resumes.
  const auto done = std::make_shared<std::promise<void>>();
  async([&task, done] {
    task();
    done->set_value();
  });
  done->get_future().wait();
}

void ThreadSerialQueue::runTasks() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return ending_ || !tasks_.empty(); });
    if (tasks_.empty()) return;
    {
      // Run and destroyed without the lock: a task may submit others and may own a large document.
      const auto task = std::move(tasks_.front());
      tasks_.pop_front();
      lock.unlock();
      task();
    }
    lock.lock();
  }
}

}  // namespace quendo
