#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quendo {

/// What becomes of an exchange whose response is a redirect.
enum class Redirect : std::uint8_t {
  follow,
  answer,  ///< The redirect itself is the response.
  fail,
};

/// One GET request.
struct HttpRequest {
  std::string url;
  /// Sent verbatim in addition to the headers the protocol requires.
  std::vector<std::pair<std::string, std::string>> headers;
  /// Bypasses local and intermediate caches.
  bool ignoresCachedData = false;
  /// For the whole exchange: name resolution, connection, redirects, and the body to its last byte.
  std::chrono::milliseconds timeout{};
  /// Reading stops here, regardless of Content-Length; the response then has the truncated body.
  std::size_t maximumBodyBytes = 0;
  /// Called for each redirect with its absolute URL, in order, on any thread. Must not be null.
  std::function<Redirect(const std::string& url)> redirect = [](const std::string&) {
    return Redirect::answer;
  };
};

struct HttpResponse {
  int status = 0;
  std::string body;
};

/// HTTP client; https connections verify the server's certificate. Stateless and anonymous: no cookies, no
/// cache, no credentials.
class HttpSession {
 public:
  /// `nullopt` if there is no complete response: connection failure, untrusted certificate, connection lost,
  /// too many redirects, time-out.
  using Completion = std::function<void(std::optional<HttpResponse>)>;

  virtual ~HttpSession() = default;
  /// Starts an exchange. Main thread. `completion` is called once, never before this returns, on any thread;
  /// not at all if the session is destroyed first.
  virtual void dataTask(HttpRequest request, Completion completion) = 0;
};

}  // namespace quendo
