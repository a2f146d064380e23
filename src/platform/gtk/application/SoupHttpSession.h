#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/HttpSession.h"

namespace quendo::gtk {

/// Exchanges over libsoup, on the main thread; completions run there too. Each exchange has its own
/// connection. Destroying the session aborts running exchanges.
class SoupHttpSession final : public HttpSession {
 public:
  /// `certificateAuthorityFile`: PEM file of the accepted certificate authorities; empty means the system's.
  /// If it cannot be read, no authority is trusted.
  explicit SoupHttpSession(std::string certificateAuthorityFile);
  ~SoupHttpSession() override;
  SoupHttpSession(const SoupHttpSession&) = delete;
  SoupHttpSession& operator=(const SoupHttpSession&) = delete;

  void dataTask(HttpRequest request, Completion completion) override;

 private:
  class Exchange;

  const std::string certificateAuthorityFile_;
  std::vector<std::shared_ptr<Exchange>> exchanges_;
};

}  // namespace quendo::gtk
