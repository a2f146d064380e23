#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/HttpSession.h"

namespace quendo::gtk {

/// Exchanges over libsoup, on the main thread; completions run there too. Each exchange has a connection of
/// its own, which ends with it. An exchange that runs when the session ends is broken off.
class SoupHttpSession final : public HttpSession {
 public:
  /// `certificateAuthorityFile` has the authorities, in PEM form, that a server's certificate may come from;
  /// empty stands for the system's. A file that cannot be read leaves no authority at all.
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
