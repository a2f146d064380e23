#pragma once

#include <gtest/gtest.h>
#include <libsoup/soup.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"
#include "platform/gtk/application/SoupHttpSession.h"

namespace quendo::gtk {

using namespace std::chrono_literals;

/// Exchanges with an in-process server over loopback, without TLS: certificates are tested with the whole
/// program.
class SoupHttpSessionTest : public ::testing::Test {
 protected:
  SoupHttpSessionTest() : server_(adoptReference(soup_server_new("raw-paths", FALSE, nullptr))) {
    soup_server_add_handler(server_.get(), nullptr, &SoupHttpSessionTest::handle, this, nullptr);
    // The first URI is the IPv4 loopback one; any free port.
    EXPECT_TRUE(soup_server_listen_local(server_.get(), 0, SOUP_SERVER_LISTEN_IPV4_ONLY, nullptr));
    GSList* uris = soup_server_get_uris(server_.get());
    port_ = g_uri_get_port(static_cast<GUri*>(uris->data));
    g_slist_free_full(uris, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
  }

  std::string url(const std::string& path, const std::string& user = "") const {
    return "http://" + user + "127.0.0.1:" + std::to_string(port_) + path;
  }
  HttpRequest request(const std::string& path) const {
    HttpRequest made;
    made.url = url(path);
    made.timeout = 20s;
    made.maximumBodyBytes = 1000;
    made.redirect = [](const std::string&) { return Redirect::follow; };
    return made;
  }

  /// Starts an exchange and waits for its completion.
  std::optional<HttpResponse> fetch(HttpRequest made) {
    int completions = 0;
    std::optional<HttpResponse> answered;
    session_->dataTask(std::move(made), [&](std::optional<HttpResponse> response) {
      ++completions;
      answered = std::move(response);
    });
    EXPECT_EQ(completions, 0) << "not before the call has returned";
    while (completions == 0) g_main_context_iteration(nullptr, TRUE);
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
    EXPECT_EQ(completions, 1);
    return answered;
  }

  static void redirect(SoupServerMessage* message, const std::string& location, guint status = 302) {
    soup_server_message_set_status(message, status, nullptr);
    soup_message_headers_replace(soup_server_message_get_response_headers(message), "Location",
                                 location.c_str());
  }
  static void respond(SoupServerMessage* message, const std::string& body, guint status = 200) {
    soup_server_message_set_status(message, status, nullptr);
    soup_server_message_set_response(message, "text/plain", SOUP_MEMORY_COPY, body.data(), body.size());
  }

  struct Received {
    std::string path;
    std::map<std::string, std::string> headers;
  };
  std::vector<Received> received_;
  std::function<void(SoupServerMessage*, const std::string& path)> handler_ =
      [](SoupServerMessage* message, const std::string&) { respond(message, "body"); };
  std::unique_ptr<SoupHttpSession> session_ = std::make_unique<SoupHttpSession>("");

 private:
  static void handle(SoupServer*, SoupServerMessage* message, const char* path, GHashTable*, gpointer data) {
    auto* self = static_cast<SoupHttpSessionTest*>(data);
    Received received{path, {}};
    soup_message_headers_foreach(
        soup_server_message_get_request_headers(message),
        [](const char* name, const char* value, gpointer headers) {
          (*static_cast<std::map<std::string, std::string>*>(headers))[name] = value;
        },
        &received.headers);
    self->received_.push_back(received);
    self->handler_(message, path);
  }

  GObjectPtr<SoupServer> server_;
  int port_ = 0;
};

}  // namespace quendo::gtk
