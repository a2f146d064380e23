#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quendo {

/// One GET request.
struct HttpRequest {
  std::string url;
  /// Sent as they are, beside those that the protocol itself needs.
  std::vector<std::pair<std::string, std::string>> headers;
  /// Neither what is kept here nor what a server on the way keeps may answer.
  bool ignoresCachedData = false;
  /// For the whole exchange: names, connections, redirects, and the last byte of the body.
  std::chrono::milliseconds timeout{};
  /// Reading the body stops here, whatever length the server announces. What was read is the body then.
  std::size_t maximumBodyBytes = 0;
  /// Asked before each redirect, with its absolute address; any thread. Where it refuses, or is empty, the
  /// redirect itself is the response.
  std::function<bool(const std::string& url)> allowsRedirectTo;
  /// How many redirects are followed. One more that is allowed ends the exchange without a response.
  int maximumRedirects = 0;
};

struct HttpResponse {
  int status = 0;
  std::string body;
};

/// Fetches what a server has, over a connection that shows its certificate where the address asks for one.
/// It keeps nothing from one exchange to the next and tells nothing of the user: no cookies, no cached
/// answers, no passwords.
class HttpSession {
 public:
  /// Nothing when there was no whole response: no connection, a certificate that is not trusted, a
  /// connection that broke off, too many redirects, the time-out.
  using Completion = std::function<void(std::optional<HttpResponse>)>;

  virtual ~HttpSession() = default;
  /// Main thread. `completion` is called once, later, on any thread; never when the session ends first.
  virtual void dataTask(HttpRequest request, Completion completion) = 0;
};

}  // namespace quendo
