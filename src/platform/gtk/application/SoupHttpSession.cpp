#include "platform/gtk/application/SoupHttpSession.h"

#include <libsoup/soup.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

constexpr std::size_t kReadSize = 65536;

using Uri = std::unique_ptr<GUri, decltype([](GUri* uri) { g_uri_unref(uri); })>;
using Bytes = std::unique_ptr<GBytes, decltype([](GBytes* bytes) { g_bytes_unref(bytes); })>;

/// A session without cookies, cache or credentials. Null if the file of authorities cannot be read: otherwise
/// every system authority would be trusted.
GObjectPtr<SoupSession> makeSession(const std::string& certificateAuthorityFile) {
  auto session = adoptReference(soup_session_new());
  // libsoup enables both by default: credentials from URLs, and content decoding, which makes bodies grow
  // while they are read.
  soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_AUTH_MANAGER);
  soup_session_remove_feature_by_type(session.get(), SOUP_TYPE_CONTENT_DECODER);
  if (certificateAuthorityFile.empty()) return session;
  const auto authorities = adoptReference(g_tls_file_database_new(certificateAuthorityFile.c_str(), nullptr));
  if (!authorities) return nullptr;
  soup_session_set_tls_database(session.get(), G_TLS_DATABASE(authorities.get()));
  return session;
}

/// Null if the URL is unusable.
GObjectPtr<SoupMessage> makeMessage(const HttpRequest& request, const std::string& url) {
  const Uri uri(g_uri_parse(url.c_str(), static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS), nullptr));
  const char* host = uri ? g_uri_get_host(uri.get()) : nullptr;
  // libsoup treats a URL without a host as a programming error.
  if (!host || *host == '\0') return nullptr;
  auto message = adoptReference(soup_message_new_from_uri(SOUP_METHOD_GET, uri.get()));
  soup_message_add_flags(message.get(), SOUP_MESSAGE_NO_REDIRECT);
  // Otherwise libsoup treats a lost connection as the end of a chunked body.
  g_signal_connect(message.get(), "network-event",
                   G_CALLBACK(+[](SoupMessage*, GSocketClientEvent event, GIOStream* connection, gpointer) {
                     if (event == G_SOCKET_CLIENT_TLS_HANDSHAKING)
                       g_tls_connection_set_require_close_notify(G_TLS_CONNECTION(connection), TRUE);
                   }),
                   nullptr);
  SoupMessageHeaders* headers = soup_message_get_request_headers(message.get());
  if (request.ignoresCachedData) {
    soup_message_headers_replace(headers, "Cache-Control", "no-cache");
    soup_message_headers_replace(headers, "Pragma", "no-cache");
  }
  for (const auto& [name, value] : request.headers) {
    soup_message_headers_replace(headers, name.c_str(), value.c_str());
  }
  return message;
}

/// The absolute URL a response redirects to; `nullopt` if it is not a redirect.
std::optional<std::string> redirectOf(SoupMessage* message) {
  switch (soup_message_get_status(message)) {
    case SOUP_STATUS_MOVED_PERMANENTLY:
    case SOUP_STATUS_FOUND:
    case SOUP_STATUS_SEE_OTHER:
    case SOUP_STATUS_TEMPORARY_REDIRECT:
    case SOUP_STATUS_PERMANENT_REDIRECT:
      break;
    default:
      return std::nullopt;
  }
  const char* location = soup_message_headers_get_one(soup_message_get_response_headers(message), "Location");
  if (!location) return std::nullopt;
  const Uri target(g_uri_parse_relative(soup_message_get_uri(message), location,
                                        static_cast<GUriFlags>(SOUP_HTTP_URI_FLAGS), nullptr));
  if (!target) return std::nullopt;
  const GCharPtr text(g_uri_to_string(target.get()));
  return std::string(text.get());
}

}  // namespace

/// One exchange. Pending libsoup calls hold a reference to it until their callbacks have run.
class SoupHttpSession::Exchange : public std::enable_shared_from_this<Exchange> {
 public:
  Exchange(const std::string& certificateAuthorityFile, HttpRequest request, Completion completion)
      : certificateAuthorityFile_(certificateAuthorityFile),
        request_(std::move(request)),
        completion_(std::move(completion)),
        cancellable_(adoptReference(g_cancellable_new())) {}
  ~Exchange() { cancel(); }
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  bool hasEnded() const { return !completion_; }

  void start() {
    setDeadline(request_.timeout);
    send(request_.url);
  }

  /// Ends the exchange without calling the completion.
  void cancel() {
    completion_ = nullptr;
    setDeadline(std::nullopt);
    g_cancellable_cancel(cancellable_.get());
    closeConnection();
  }

 private:
  void setDeadline(std::optional<std::chrono::milliseconds> delay) {
    if (deadline_ != 0) g_source_remove(std::exchange(deadline_, 0));
    if (!delay) return;
    deadline_ = g_timeout_add(
        static_cast<guint>(delay->count()),
        [](gpointer self) -> gboolean {
          static_cast<Exchange*>(self)->deadline_ = 0;
          static_cast<Exchange*>(self)->finish(std::nullopt);
          return G_SOURCE_REMOVE;
        },
        this);
  }

  void send(const std::string& url) {
    closeConnection();
    session_ = makeSession(certificateAuthorityFile_);
    message_ = makeMessage(request_, url);
    if (!session_ || !message_) {
      // The completion must not run before dataTask returns.
      setDeadline(std::chrono::milliseconds::zero());
      return;
    }
    soup_session_send_async(session_.get(), message_.get(), G_PRIORITY_DEFAULT, cancellable_.get(),
                            &Exchange::didSend, keepAlive());
  }

  static void didSend(GObject* session, GAsyncResult* result, gpointer data) {
    const auto self = takeBack(data);
    auto stream = adoptReference(soup_session_send_finish(SOUP_SESSION(session), result, nullptr));
    if (self->hasEnded()) return;
    if (!stream) {
      self->finish(std::nullopt);
      return;
    }
    self->stream_ = std::move(stream);
    self->didReceiveHead();
  }

  void didReceiveHead() {
    const auto target = redirectOf(message_.get());
    switch (target ? request_.redirect(*target) : Redirect::answer) {
      case Redirect::follow:
        send(*target);
        break;
      case Redirect::answer:
        readMore();
        break;
      case Redirect::fail:
        finish(std::nullopt);
        break;
    }
  }

  void readMore() {
    const std::size_t wanted = std::min(kReadSize, request_.maximumBodyBytes - body_.size());
    if (wanted == 0) {
      finishWithBody();
      return;
    }
    g_input_stream_read_bytes_async(stream_.get(), wanted, G_PRIORITY_DEFAULT, cancellable_.get(),
                                    &Exchange::didRead, keepAlive());
  }

  static void didRead(GObject* stream, GAsyncResult* result, gpointer data) {
    const auto self = takeBack(data);
    const Bytes bytes(g_input_stream_read_bytes_finish(G_INPUT_STREAM(stream), result, nullptr));
    if (self->hasEnded()) return;
    if (!bytes) {
      self->finish(std::nullopt);
      return;
    }
    gsize size = 0;
    const auto* first = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
    if (size == 0) {
      self->finishWithBody();
    } else {
      self->body_.append(first, size);
      self->readMore();
    }
  }

  /// End of stream, or the limit is reached.
  void finishWithBody() {
    if (isTruncated()) {
      finish(std::nullopt);
      return;
    }
    const auto status = static_cast<int>(soup_message_get_status(message_.get()));
    finish(HttpResponse{status, std::move(body_)});
  }

  /// Whether the connection was closed cleanly but before the end of the body, which libsoup does not report
  /// either.
  bool isTruncated() const {
    SoupMessageHeaders* headers = soup_message_get_response_headers(message_.get());
    if (soup_message_headers_get_encoding(headers) != SOUP_ENCODING_CONTENT_LENGTH) return false;
    const auto announced = static_cast<std::uint64_t>(soup_message_headers_get_content_length(headers));
    return body_.size() < std::min<std::uint64_t>(announced, request_.maximumBodyBytes);
  }

  void finish(std::optional<HttpResponse> response) {
    const auto self = shared_from_this();
    const Completion completion = std::move(completion_);
    cancel();
    if (completion) completion(std::move(response));
  }

  /// Closes the previous hop's connection.
  void closeConnection() {
    stream_.reset();
    message_.reset();
    if (session_) soup_session_abort(session_.get());
    session_.reset();
  }

  gpointer keepAlive() { return new std::shared_ptr<Exchange>(shared_from_this()); }
  static std::shared_ptr<Exchange> takeBack(gpointer data) {
    const std::unique_ptr<std::shared_ptr<Exchange>> owner(static_cast<std::shared_ptr<Exchange>*>(data));
    return *owner;
  }

  const std::string certificateAuthorityFile_;
  const HttpRequest request_;
  Completion completion_;
  const GObjectPtr<GCancellable> cancellable_;
  GObjectPtr<SoupSession> session_;
  GObjectPtr<SoupMessage> message_;
  GObjectPtr<GInputStream> stream_;
  std::string body_;
  guint deadline_ = 0;
};

SoupHttpSession::SoupHttpSession(std::string certificateAuthorityFile)
    : certificateAuthorityFile_(std::move(certificateAuthorityFile)) {}

SoupHttpSession::~SoupHttpSession() {
  for (const auto& exchange : exchanges_) exchange->cancel();
}

void SoupHttpSession::dataTask(HttpRequest request, Completion completion) {
  std::erase_if(exchanges_, [](const auto& exchange) { return exchange->hasEnded(); });
  exchanges_.push_back(
      std::make_shared<Exchange>(certificateAuthorityFile_, std::move(request), std::move(completion)));
  exchanges_.back()->start();
}

}  // namespace quendo::gtk
