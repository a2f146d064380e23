#import "CocoaTest.h"
#import "UrlSessionDouble.h"

namespace quendo::cocoa {
namespace {

using namespace std::chrono_literals;

NSHTTPURLResponse* responseWith(int status) {
  return [[NSHTTPURLResponse alloc] initWithURL:[NSURL URLWithString:@"https://quendo.example/"]
                                     statusCode:status
                                    HTTPVersion:@"HTTP/1.1"
                                   headerFields:nil];
}

NSError* connectionLost() {
  return [NSError errorWithDomain:NSURLErrorDomain code:-1005 userInfo:nil];
}

class CocoaUrlSessionTest : public CocoaTest {
 protected:
  CocoaUrlSessionTest() {
    request_.url = "https://quendo.example/latest.json";
    request_.timeout = 12s;
    request_.maximumBodyBytes = 10;
    request_.redirect = [followed = 0](const std::string& url) mutable {
      if (!url.starts_with("https://quendo.example/")) return Redirect::answer;
      return ++followed > 2 ? Redirect::fail : Redirect::follow;
    };
  }
  void start() { session_->dataTask(request_, completion()); }
  HttpSession::Completion completion() {
    return [this](std::optional<HttpResponse> response) { responses_.push_back(std::move(response)); };
  }
  std::string body() const { return responses_.at(0) ? responses_[0]->body : "none"; }

  HttpRequest request_;
  std::unique_ptr<UrlSession> session_ = std::make_unique<UrlSession>();
  std::vector<std::optional<HttpResponse>> responses_;
};

TEST_F(CocoaUrlSessionTest, SendsWhatTheCoreAsksForAndNothingElse) {
  request_.headers = {{"Accept", "application/json"}, {"User-Agent", "Quendo/1.5"}};
  request_.ignoresCachedData = true;
  start();
  const HttpRequest& sent = platform_.httpSession.tasks.at(0).request;
  EXPECT_EQ(sent.url, request_.url);
  EXPECT_EQ(sent.headers, request_.headers);
  EXPECT_TRUE(sent.ignoresCachedData);
  EXPECT_EQ(sent.timeout, 12s);
}

TEST_F(CocoaUrlSessionTest, GivesTheStatusAndTheWholeBodyOnce) {
  start();
  EXPECT_TRUE(responses_.empty()) << "never before the call returns";
  doubles::respond(responseWith(404));
  doubles::receive("abc");
  doubles::receive("def");
  EXPECT_TRUE(responses_.empty());
  doubles::endExchange(nil);
  ASSERT_EQ(responses_.size(), 1U);
  EXPECT_EQ(responses_[0]->status, 404);
  EXPECT_EQ(body(), "abcdef");
  doubles::endExchange(connectionLost());
  EXPECT_EQ(responses_.size(), 1U);
}

TEST_F(CocoaUrlSessionTest, EndsOnceTheBodyIsAsLongAsItMayGet) {
  start();
  doubles::respond(responseWith(200));
  doubles::receive("0123456");
  EXPECT_TRUE(responses_.empty());
  doubles::receive("789abc");
  ASSERT_EQ(responses_.size(), 1U);
  EXPECT_EQ(body(), "0123456789");
  EXPECT_TRUE(doubles::isInvalidated());
  doubles::receive("more");
  doubles::endExchange(connectionLost());
  EXPECT_EQ(responses_.size(), 1U);
}

TEST_F(CocoaUrlSessionTest, FailsWhenTheConnectionDoes) {
  start();
  doubles::respond(responseWith(200));
  doubles::receive("abc");
  doubles::endExchange(connectionLost());
  ASSERT_EQ(responses_.size(), 1U);
  EXPECT_FALSE(responses_[0]);
}

TEST_F(CocoaUrlSessionTest, FailsWhenTheAnswerIsNotHttp) {
  for (NSURLResponse* response : {(NSURLResponse*)nil, [[NSURLResponse alloc] init]}) {
    responses_.clear();
    start();
    doubles::respond(response);
    doubles::endExchange(nil);
    ASSERT_EQ(responses_.size(), 1U);
    EXPECT_FALSE(responses_[0]);
  }
}

TEST_F(CocoaUrlSessionTest, FollowsTheRedirectsThatItMay) {
  start();
  EXPECT_TRUE(doubles::followsRedirectTo("https://quendo.example/1"));
  EXPECT_TRUE(doubles::followsRedirectTo("https://quendo.example/2"));
  EXPECT_TRUE(responses_.empty());
}

TEST_F(CocoaUrlSessionTest, ARefusedRedirectIsTheAnswer) {
  start();
  EXPECT_FALSE(doubles::followsRedirectTo("https://elsewhere.example/"));
  EXPECT_TRUE(responses_.empty());
  doubles::respond(responseWith(302));
  doubles::endExchange(nil);
  ASSERT_EQ(responses_.size(), 1U);
  EXPECT_EQ(responses_[0]->status, 302);
}

TEST_F(CocoaUrlSessionTest, WithoutARuleNoRedirectIsFollowed) {
  request_.redirect = HttpRequest().redirect;
  start();
  EXPECT_FALSE(doubles::followsRedirectTo("https://quendo.example/1"));
}

TEST_F(CocoaUrlSessionTest, FailsAfterTooManyRedirects) {
  start();
  doubles::followsRedirectTo("https://quendo.example/1");
  doubles::followsRedirectTo("https://quendo.example/2");
  EXPECT_FALSE(doubles::followsRedirectTo("https://quendo.example/3"));
  ASSERT_EQ(responses_.size(), 1U);
  EXPECT_FALSE(responses_[0]);
  EXPECT_TRUE(doubles::isInvalidated());
}

TEST_F(CocoaUrlSessionTest, NothingComesOnceItIsGone) {
  start();
  session_.reset();
  EXPECT_TRUE(doubles::isInvalidated());
  EXPECT_FALSE(doubles::followsRedirectTo("https://quendo.example/1"));
  doubles::respond(responseWith(200));
  doubles::receive("0123456789abc");
  doubles::endExchange(nil);
  EXPECT_TRUE(responses_.empty());
}

TEST_F(CocoaUrlSessionTest, ACompletionMayStartTheNextExchange) {
  session_->dataTask(request_, [this](std::optional<HttpResponse> first) {
    responses_.push_back(std::move(first));
    start();
  });
  doubles::respond(responseWith(503));
  doubles::endExchange(nil);
  doubles::respond(responseWith(200));
  doubles::endExchange(nil);
  ASSERT_EQ(responses_.size(), 2U);
  EXPECT_EQ(responses_[0]->status, 503);
  EXPECT_EQ(responses_[1]->status, 200);
}

TEST_F(CocoaUrlSessionTest, ACompletionMayTakeTheSessionWithIt) {
  session_->dataTask(request_, [this](std::optional<HttpResponse> response) {
    session_.reset();
    responses_.push_back(std::move(response));
  });
  doubles::respond(responseWith(200));
  doubles::endExchange(nil);
  EXPECT_EQ(responses_.size(), 1U);
}

}  // namespace
}  // namespace quendo::cocoa
