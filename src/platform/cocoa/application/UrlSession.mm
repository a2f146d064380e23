#import "platform/cocoa/application/UrlSession.h"

#import "platform/cocoa/Text.h"

#include <algorithm>
#include <string>
#include <utility>

@interface QuendoExchangeDelegate : NSObject <NSURLSessionDataDelegate> {
  quendo::cocoa::UrlSession::Exchange* exchange_;
}
@end

namespace quendo::cocoa {
namespace {

NSURLSessionConfiguration* configurationFor(const HttpRequest& request) {
  NSURLSessionConfiguration* configuration = NSURLSessionConfiguration.ephemeralSessionConfiguration;
  configuration.HTTPShouldSetCookies = NO;
  configuration.HTTPCookieStorage = nil;
  configuration.URLCredentialStorage = nil;
  configuration.URLCache = nil;
  // The one between two packets, and the one for everything.
  const NSTimeInterval seconds = std::chrono::duration<double>(request.timeout).count();
  configuration.timeoutIntervalForRequest = seconds;
  configuration.timeoutIntervalForResource = seconds;
  return configuration;
}

NSURLRequest* requestFor(const HttpRequest& request) {
  NSMutableURLRequest* made =
      [NSMutableURLRequest requestWithURL:[NSURL URLWithString:stringFrom(request.url)]];
  made.HTTPMethod = @"GET";
  made.timeoutInterval = std::chrono::duration<double>(request.timeout).count();
  if (request.ignoresCachedData) made.cachePolicy = NSURLRequestReloadIgnoringLocalAndRemoteCacheData;
  for (const auto& [name, value] : request.headers)
    [made setValue:stringFrom(value) forHTTPHeaderField:stringFrom(name)];
  return made;
}

}  // namespace

/// One exchange. Its session holds the delegate, which holds nothing.
class UrlSession::Exchange {
 public:
  Exchange(HttpRequest request, Completion completion)
      : request_(std::move(request)), completion_(std::move(completion)) {}
  ~Exchange() { cancel(); }
  Exchange(const Exchange&) = delete;
  Exchange& operator=(const Exchange&) = delete;

  bool hasEnded() const { return !completion_; }

  void start();
  /// Ends the exchange without calling the completion.
  void cancel();
  void finish(std::optional<HttpResponse> response) {
    const Completion completion = std::move(completion_);
    cancel();
    if (completion) completion(std::move(response));
  }

  Redirect redirect(NSURL* url) const { return request_.redirect(textOf(url.absoluteString)); }

  /// False when the body is as long as it may get.
  bool append(NSData* data) {
    const std::size_t room = request_.maximumBodyBytes - body_.size();
    body_.append(static_cast<const char*>(data.bytes), std::min<std::size_t>(room, data.length));
    return body_.size() < request_.maximumBodyBytes;
  }
  void finishWithBody(NSURLResponse* response) {
    if (![response isKindOfClass:NSHTTPURLResponse.class]) {
      finish(std::nullopt);
      return;
    }
    const auto status = static_cast<int>(static_cast<NSHTTPURLResponse*>(response).statusCode);
    finish(HttpResponse{status, std::move(body_)});
  }

 private:
  const HttpRequest request_;
  Completion completion_;
  QuendoExchangeDelegate* delegate_ = nil;
  NSURLSession* session_ = nil;
  std::string body_;
};

}  // namespace quendo::cocoa

using quendo::Redirect;
using quendo::cocoa::UrlSession;

@implementation QuendoExchangeDelegate

- (instancetype)initWithExchange:(UrlSession::Exchange*)exchange {
  self = [super init];
  if (self) exchange_ = exchange;
  return self;
}

- (void)forget {
  exchange_ = nullptr;
}

- (void)URLSession:(NSURLSession*)session
                          task:(NSURLSessionTask*)task
    willPerformHTTPRedirection:(NSHTTPURLResponse*)response
                    newRequest:(NSURLRequest*)request
             completionHandler:(void (^)(NSURLRequest*))completionHandler {
  const Redirect redirect = exchange_ ? exchange_->redirect(request.URL) : Redirect::fail;
  completionHandler(redirect == Redirect::follow ? request : nil);
  if (redirect == Redirect::fail && exchange_) exchange_->finish(std::nullopt);
}

- (void)URLSession:(NSURLSession*)session dataTask:(NSURLSessionDataTask*)task didReceiveData:(NSData*)data {
  if (exchange_ && !exchange_->append(data)) exchange_->finishWithBody(task.response);
}

- (void)URLSession:(NSURLSession*)session task:(NSURLSessionTask*)task didCompleteWithError:(NSError*)error {
  if (!exchange_) return;
  if (error) {
    exchange_->finish(std::nullopt);
  } else {
    exchange_->finishWithBody(task.response);
  }
}

@end

namespace quendo::cocoa {

void UrlSession::Exchange::start() {
  delegate_ = [[QuendoExchangeDelegate alloc] initWithExchange:this];
  session_ = [NSURLSession sessionWithConfiguration:configurationFor(request_)
                                           delegate:delegate_
                                      delegateQueue:NSOperationQueue.mainQueue];
  [[session_ dataTaskWithRequest:requestFor(request_)] resume];
}

void UrlSession::Exchange::cancel() {
  completion_ = nullptr;
  [delegate_ forget];
  [session_ invalidateAndCancel];
  session_ = nil;
}

UrlSession::UrlSession() = default;
UrlSession::~UrlSession() = default;

void UrlSession::dataTask(HttpRequest request, Completion completion) {
  std::erase_if(exchanges_, [](const auto& exchange) { return exchange->hasEnded(); });
  exchanges_.push_back(std::make_unique<Exchange>(std::move(request), std::move(completion)));
  exchanges_.back()->start();
}

}  // namespace quendo::cocoa
