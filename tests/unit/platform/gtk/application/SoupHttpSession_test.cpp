#include "platform/gtk/application/SoupHttpSession.h"

#include <string>
#include <vector>

#include "unit/platform/gtk/application/SoupFixture.h"

namespace quendo::gtk {
namespace {

TEST_F(SoupHttpSessionTest, GivesStatusAndBody) {
  const auto response = fetch(request("/a"));
  ASSERT_TRUE(response);
  EXPECT_EQ(response->status, 200);
  EXPECT_EQ(response->body, "body");
  handler_ = [](SoupServerMessage* message, const std::string&) { respond(message, "gone", 410); };
  EXPECT_EQ(fetch(request("/a"))->status, 410);
}

TEST_F(SoupHttpSessionTest, SendsTheHeadersOfTheRequestAndNoneThatTellMore) {
  HttpRequest made = request("/a");
  made.headers = {{"Accept", "application/json"}, {"User-Agent", "Quendo/1.0"}};
  made.ignoresCachedData = true;
  fetch(made);
  auto headers = received_.at(0).headers;
  EXPECT_TRUE(headers.erase("Host"));
  headers.erase("Connection");
  EXPECT_EQ(headers, (std::map<std::string, std::string>{{"Accept", "application/json"},
                                                         {"User-Agent", "Quendo/1.0"},
                                                         {"Cache-Control", "no-cache"},
                                                         {"Pragma", "no-cache"}}));
}

TEST_F(SoupHttpSessionTest, KeepsNothingFromOneExchangeToTheNext) {
  handler_ = [](SoupServerMessage* message, const std::string&) {
    respond(message, "body");
    SoupMessageHeaders* headers = soup_server_message_get_response_headers(message);
    soup_message_headers_append(headers, "Set-Cookie", "a=b; Path=/; Max-Age=1000");
    soup_message_headers_append(headers, "Cache-Control", "public, max-age=1000");
    soup_message_headers_append(headers, "ETag", "\"tag\"");
  };
  fetch(request("/a"));
  fetch(request("/a"));
  ASSERT_EQ(received_.size(), 2U);
  for (const char* name : {"Cookie", "If-None-Match", "Authorization"}) {
    EXPECT_FALSE(received_[1].headers.contains(name)) << name;
  }
}

TEST_F(SoupHttpSessionTest, SendsNoPasswordThatStandsInAnAddress) {
  handler_ = [this](SoupServerMessage* message, const std::string& path) {
    if (path == "/a") {
      redirect(message, url("/b", "user:word@"));
    } else {
      respond(message, "who are you?", 401);
      soup_message_headers_append(soup_server_message_get_response_headers(message), "WWW-Authenticate",
                                  "Basic realm=\"all\"");
    }
  };
  EXPECT_EQ(fetch(request("/a"))->status, 401);
  ASSERT_EQ(received_.size(), 2U);
  EXPECT_FALSE(received_[1].headers.contains("Authorization"));
}

TEST_F(SoupHttpSessionTest, StopsReadingAtTheLimit) {
  handler_ = [](SoupServerMessage* message, const std::string&) {
    respond(message, std::string(5'000'000, 'x'));
  };
  EXPECT_EQ(fetch(request("/a"))->body, std::string(1000, 'x'));
  handler_ = [](SoupServerMessage* message, const std::string&) { respond(message, std::string(1000, 'x')); };
  EXPECT_EQ(fetch(request("/a"))->body.size(), 1000U);
  handler_ = [](SoupServerMessage* message, const std::string&) { respond(message, std::string(999, 'x')); };
  EXPECT_EQ(fetch(request("/a"))->body.size(), 999U);
}

TEST_F(SoupHttpSessionTest, FollowsRedirectsThatAreAllowed) {
  for (const guint status : {301U, 302U, 303U, 307U, 308U}) {
    received_.clear();
    handler_ = [this, status](SoupServerMessage* message, const std::string& path) {
      if (path == "/a/b") {
        redirect(message, "../c?d", status);
      } else if (path == "/c") {
        redirect(message, url("/e"), status);
      } else {
        respond(message, "there");
      }
    };
    std::vector<std::string> asked;
    HttpRequest made = request("/a/b");
    made.headers = {{"User-Agent", "Quendo/1.0"}};
    made.redirect = [&](const std::string& target) {
      asked.push_back(target);
      return Redirect::follow;
    };
    EXPECT_EQ(fetch(made)->body, "there");
    EXPECT_EQ(asked, (std::vector<std::string>{url("/c?d"), url("/e")}));
    EXPECT_EQ(received_.back().headers["User-Agent"], "Quendo/1.0") << "the headers are those of every hop";
  }
}

TEST_F(SoupHttpSessionTest, GivesTheRedirectItselfWhereItIsRefused) {
  handler_ = [](SoupServerMessage* message, const std::string&) { redirect(message, "/b"); };
  HttpRequest made = request("/a");
  made.redirect = [](const std::string&) { return Redirect::answer; };
  EXPECT_EQ(fetch(made)->status, 302);
  EXPECT_EQ(received_.size(), 1U);
  handler_ = [](SoupServerMessage* message, const std::string&) { redirect(message, "http://["); };
  EXPECT_EQ(fetch(request("/a"))->status, 302) << "it leads nowhere";
}

TEST_F(SoupHttpSessionTest, FailsAtTheRedirectThatIsOneTooMany) {
  int redirects = 0;
  handler_ = [&](SoupServerMessage* message, const std::string&) {
    if (redirects-- > 0) {
      redirect(message, "/more");
    } else {
      respond(message, "there");
    }
  };
  for (const int limit : {0, 1, 3, 12}) {
    HttpRequest made = request("/a");
    made.redirect = [limit, followed = 0](const std::string&) mutable {
      return ++followed > limit ? Redirect::fail : Redirect::follow;
    };
    received_.clear();
    redirects = limit;
    const auto response = fetch(made);
    ASSERT_TRUE(response) << limit;
    EXPECT_EQ(response->body, "there") << limit;
    EXPECT_EQ(received_.size(), static_cast<std::size_t>(limit) + 1);
    redirects = limit + 1;
    EXPECT_FALSE(fetch(made)) << limit;
    EXPECT_EQ(redirects, 0) << "the one too many was received and not followed";
  }
}

TEST_F(SoupHttpSessionTest, EndsAtTheTimeOutWhileTheServerIsSilent) {
  handler_ = [](SoupServerMessage* message, const std::string&) { soup_server_message_pause(message); };
  HttpRequest made = request("/a");
  made.timeout = 100ms;
  EXPECT_FALSE(fetch(made));
}

TEST_F(SoupHttpSessionTest, EndsAtTheTimeOutWhileTheBodyStillComes) {
  handler_ = [](SoupServerMessage* message, const std::string&) {
    soup_server_message_set_status(message, 200, nullptr);
    soup_message_headers_set_encoding(soup_server_message_get_response_headers(message),
                                      SOUP_ENCODING_CHUNKED);
    SoupMessageBody* body = soup_server_message_get_response_body(message);
    soup_message_body_append(body, SOUP_MEMORY_STATIC, "x", 1);
    for (const char* end : {"finished", "disconnected"}) {
      g_signal_connect(message, end, G_CALLBACK(+[](SoupServerMessage* sender, gpointer) {
                         g_object_set_data(G_OBJECT(sender), "ended", sender);
                       }),
                       nullptr);
    }
    // Sends one byte after another for as long as the client reads.
    g_signal_connect(message, "wrote-chunk", G_CALLBACK(+[](SoupServerMessage* sender, gpointer) {
                       soup_server_message_pause(sender);
                       g_timeout_add_full(
                           G_PRIORITY_DEFAULT, 10,
                           [](gpointer paused) -> gboolean {
                             auto* one = static_cast<SoupServerMessage*>(paused);
                             if (g_object_get_data(G_OBJECT(one), "ended")) return G_SOURCE_REMOVE;
                             soup_message_body_append(soup_server_message_get_response_body(one),
                                                      SOUP_MEMORY_STATIC, "x", 1);
                             soup_server_message_unpause(one);
                             return G_SOURCE_REMOVE;
                           },
                           g_object_ref(sender), g_object_unref);
                     }),
                     nullptr);
  };
  HttpRequest made = request("/a");
  made.timeout = 300ms;
  EXPECT_FALSE(fetch(made));
}

TEST_F(SoupHttpSessionTest, CountsRedirectsIntoTheTimeOut) {
  handler_ = [](SoupServerMessage* message, const std::string& path) {
    if (path == "/a") {
      redirect(message, "/b");
    } else {
      soup_server_message_pause(message);
    }
  };
  HttpRequest made = request("/a");
  made.timeout = 200ms;
  EXPECT_FALSE(fetch(made));
  EXPECT_EQ(received_.size(), 2U);
}

TEST_F(SoupHttpSessionTest, GivesNothingForAnAddressThatLeadsNowhere) {
  for (const std::string& wrong :
       {std::string(), std::string("no address"), std::string("file:///etc/hostname"),
        std::string("https://"), std::string("http://127.0.0.1:1/")}) {
    HttpRequest made = request("/a");
    made.url = wrong;
    EXPECT_FALSE(fetch(made)) << wrong;
  }
}

TEST_F(SoupHttpSessionTest, TrustsNobodyWhenTheAuthoritiesCannotBeRead) {
  session_ = std::make_unique<SoupHttpSession>("/proc/no/such/file.pem");
  EXPECT_FALSE(fetch(request("/a")));
  EXPECT_TRUE(received_.empty());
}

TEST_F(SoupHttpSessionTest, BreaksOffWhatRunsAtItsEnd) {
  handler_ = [](SoupServerMessage* message, const std::string&) { soup_server_message_pause(message); };
  int completions = 0;
  HttpRequest made = request("/a");
  made.timeout = 300ms;
  for (int i = 0; i < 2; ++i) {
    session_->dataTask(made, [&](const std::optional<HttpResponse>&) { ++completions; });
  }
  while (received_.size() < 2) g_main_context_iteration(nullptr, TRUE);
  session_.reset();
  bool isOver = false;
  g_timeout_add(
      500,
      [](gpointer over) -> gboolean {
        *static_cast<bool*>(over) = true;
        return G_SOURCE_REMOVE;
      },
      &isOver);
  while (!isOver) g_main_context_iteration(nullptr, TRUE);
  EXPECT_EQ(completions, 0);
}

}  // namespace
}  // namespace quendo::gtk
