// A double of URL sessions. The network is the test.

#import <Foundation/Foundation.h>

#include <cstdlib>

#import "Stage.h"
#import "UrlSessionDouble.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ConfigurationState {
  NSTimeInterval requestTimeout = 60;
  NSTimeInterval resourceTimeout = 604800;
  bool setsCookies = true;
  id cookies = [[NSObject alloc] init];
  id credentials = [[NSObject alloc] init];
  id cache = [[NSObject alloc] init];
};

struct SessionState {
  NSURLSessionConfiguration* configuration = nil;
  id delegate = nil;
  NSURLSessionTask* task = nil;
  bool invalid = false;
};

struct TaskState {
  NSURLSession* session = nil;
  NSURLRequest* request = nil;
  NSURLResponse* response = nil;
};

ConfigurationState& stateOfConfiguration(id configuration) {
  return stateOf<ConfigurationState>(configuration);
}

HttpRequest httpRequestOf(NSURLRequest* request, const ConfigurationState& configuration) {
  if (configuration.setsCookies || configuration.cookies || configuration.credentials || configuration.cache)
    std::abort();
  if (configuration.requestTimeout != configuration.resourceTimeout) std::abort();
  HttpRequest made;
  made.url = textFrom([[request URL] absoluteString]);
  NSDictionary* headers = [request allHTTPHeaderFields];
  for (NSString* name in [[headers allKeys] sortedArrayUsingSelector:@selector(compare:)])
    made.headers.emplace_back(textFrom(name), textFrom([headers objectForKey:name]));
  made.ignoresCachedData = [request cachePolicy] == NSURLRequestReloadIgnoringLocalAndRemoteCacheData;
  made.timeout = std::chrono::round<std::chrono::milliseconds>(
      std::chrono::duration<double>(configuration.resourceTimeout));
  return made;
}

void finish(NSURLSessionDataTask* task, const std::optional<HttpResponse>& response) {
  const Turn turn;
  TaskState& state = stateOf<TaskState>(task);
  const SessionState& session = stateOf<SessionState>(state.session);
  if (session.invalid) return;
  if (!response) {
    [session.delegate URLSession:state.session
                            task:task
            didCompleteWithError:[NSError errorWithDomain:NSURLErrorDomain code:-1009 userInfo:nil]];
    return;
  }
  state.response = [[NSHTTPURLResponse alloc] initWithURL:[state.request URL]
                                               statusCode:response->status
                                              HTTPVersion:@"HTTP/1.1"
                                             headerFields:nil];
  if (!response->body.empty()) {
    [session.delegate URLSession:state.session
                        dataTask:task
                  didReceiveData:[NSData dataWithBytes:response->body.data() length:response->body.size()]];
  }
  if (!session.invalid) [session.delegate URLSession:state.session task:task didCompleteWithError:nil];
}

NSURLSessionDataTask* newest = nil;

SessionState& newestSession() {
  return stateOf<SessionState>(stateOf<TaskState>(newest).session);
}

}  // namespace

namespace quendo::doubles {

bool followsRedirectTo(const std::string& url) {
  const Turn turn;
  NSURLRequest* request = [NSURLRequest requestWithURL:[NSURL URLWithString:stringFrom(url)]];
  __block int answers = 0;
  __block bool follows = false;
  const TaskState& state = stateOf<TaskState>(newest);
  [newestSession().delegate URLSession:state.session
                                  task:newest
            willPerformHTTPRedirection:(NSHTTPURLResponse*)state.response
                            newRequest:request
                     completionHandler:^(NSURLRequest* followed) {
                       ++answers;
                       follows = followed == request;
                     }];
  if (answers != 1) std::abort();
  return follows;
}

void respond(NSURLResponse* response) {
  stateOf<TaskState>(newest).response = response;
}

void receive(const std::string& bytes) {
  const Turn turn;
  [newestSession().delegate URLSession:stateOf<TaskState>(newest).session
                              dataTask:newest
                        didReceiveData:[NSData dataWithBytes:bytes.data() length:bytes.size()]];
}

void endExchange(NSError* error) {
  const Turn turn;
  [newestSession().delegate URLSession:stateOf<TaskState>(newest).session
                                  task:newest
                  didCompleteWithError:error];
}

bool isInvalidated() {
  return newestSession().invalid;
}

}  // namespace quendo::doubles

@implementation NSURLSessionConfiguration
+ (NSURLSessionConfiguration*)ephemeralSessionConfiguration {
  return [[self alloc] init];
}
// clang-format off
- (NSTimeInterval)timeoutIntervalForRequest { return stateOfConfiguration(self).requestTimeout; }
- (void)setTimeoutIntervalForRequest:(NSTimeInterval)value { stateOfConfiguration(self).requestTimeout = value; }
- (NSTimeInterval)timeoutIntervalForResource { return stateOfConfiguration(self).resourceTimeout; }
- (void)setTimeoutIntervalForResource:(NSTimeInterval)value { stateOfConfiguration(self).resourceTimeout = value; }
- (BOOL)HTTPShouldSetCookies { return stateOfConfiguration(self).setsCookies; }
- (void)setHTTPShouldSetCookies:(BOOL)value { stateOfConfiguration(self).setsCookies = value; }
- (NSHTTPCookieStorage*)HTTPCookieStorage { return stateOfConfiguration(self).cookies; }
- (void)setHTTPCookieStorage:(NSHTTPCookieStorage*)value { stateOfConfiguration(self).cookies = value; }
- (NSURLCredentialStorage*)URLCredentialStorage { return stateOfConfiguration(self).credentials; }
- (void)setURLCredentialStorage:(NSURLCredentialStorage*)value { stateOfConfiguration(self).credentials = value; }
- (NSURLCache*)URLCache { return stateOfConfiguration(self).cache; }
- (void)setURLCache:(NSURLCache*)value { stateOfConfiguration(self).cache = value; }
// clang-format on
@end

@implementation NSURLSessionTask
- (NSURLResponse*)response {
  return stateOf<TaskState>(self).response;
}
- (void)resume {
  const TaskState& state = stateOf<TaskState>(self);
  NSURLSessionDataTask* task = (NSURLSessionDataTask*)self;
  facilities().httpSession.dataTask(
      httpRequestOf(state.request, stateOfConfiguration(stateOf<SessionState>(state.session).configuration)),
      [task](const std::optional<HttpResponse>& response) { finish(task, response); });
}
@end

@implementation NSURLSessionDataTask
@end

@implementation NSURLSession
+ (NSURLSession*)sessionWithConfiguration:(NSURLSessionConfiguration*)configuration
                                 delegate:(id<NSURLSessionDelegate>)delegate
                            delegateQueue:(NSOperationQueue*)queue {
  if (queue != [NSOperationQueue mainQueue]) std::abort();
  NSURLSession* session = [[self alloc] init];
  stateOf<SessionState>(session).configuration = configuration;
  stateOf<SessionState>(session).delegate = delegate;
  return session;
}
- (NSURLSessionDataTask*)dataTaskWithRequest:(NSURLRequest*)request {
  NSURLSessionDataTask* task = [[NSURLSessionDataTask alloc] init];
  stateOf<TaskState>(task) = {self, [request copy], nil};
  newest = task;
  return task;
}
- (void)invalidateAndCancel {
  stateOf<SessionState>(self).invalid = true;
}
@end
