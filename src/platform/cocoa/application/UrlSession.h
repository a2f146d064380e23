#pragma once

#import <Foundation/Foundation.h>

#include <memory>
#include <vector>

#include "platform/HttpSession.h"

namespace quendo::cocoa {

/// NSURLSession: an ephemeral session for each exchange. Everything runs on the main thread.
class UrlSession final : public HttpSession {
 public:
  UrlSession();
  ~UrlSession() override;
  UrlSession(const UrlSession&) = delete;
  UrlSession& operator=(const UrlSession&) = delete;

  void dataTask(HttpRequest request, Completion completion) override;

  class Exchange;

 private:
  std::vector<std::unique_ptr<Exchange>> exchanges_;
};

}  // namespace quendo::cocoa
