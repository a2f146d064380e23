#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

#include "platform/SerialQueue.h"

namespace quendo {

/// A serial queue with its own thread. Tasks must not throw.
class ThreadSerialQueue final : public SerialQueue {
 public:
  ThreadSerialQueue();
  ~ThreadSerialQueue() override;
  ThreadSerialQueue(const ThreadSerialQueue&) = delete;
  ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;

  void async(std::function<void()> task) override;
  void sync(const std::function<void()>& task) override;

 private:
  void runTasks();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::function<void()>> tasks_;
  bool ending_ = false;
  std::thread thread_;  // Declared last: it starts once all members it uses exist.
};

}  // namespace quendo
