#import "platform/cocoa/web/QuendoPageDelegate.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/PageRequests.h"
#import "platform/cocoa/Text.h"
#import "platform/cocoa/web/WebKitView.h"

using quendo::answerTo;
using quendo::PageAnswer;
using quendo::PageRequest;
using quendo::cocoa::stringFrom;
using quendo::cocoa::textOf;

namespace {

std::optional<std::string> urlOf(WKNavigationAction* action) {
  NSURL* url = action.request.URL;
  return url ? std::optional(textOf(url.absoluteString)) : std::nullopt;
}

bool isAllowed(PageRequest request) {
  return answerTo(request) == PageAnswer::allow;
}

bool isDelegated(PageRequest request) {
  return answerTo(request) == PageAnswer::delegate;
}

/// What the page waits for: WebKit takes it for an error of the program when nobody answers.
template <typename Answer>
class Pending {
 public:
  explicit Pending(void (^handler)(Answer)) : handler_([handler copy]) {}
  ~Pending() { answer(nil); }
  Pending(const Pending&) = delete;
  Pending& operator=(const Pending&) = delete;

  void answer(Answer value) {
    if (handler_) std::exchange(handler_, nil)(value);
  }

 private:
  void (^handler_)(Answer);
};

/// Whether nothing failed: the load gave way to another one, or the delegate refused it.
bool wasGivenUp(NSError* error) {
  constexpr NSInteger kInterruptedByPolicyChange = 102;
  if ([error.domain isEqualToString:NSURLErrorDomain]) return error.code == NSURLErrorCancelled;
  return [error.domain isEqualToString:@"WebKitErrorDomain"] && error.code == kInterruptedByPolicyChange;
}

}  // namespace

@implementation QuendoPageDelegate

@synthesize owner = owner_;
@synthesize navigation = navigation_;
@synthesize ui = ui_;

- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationAction:(WKNavigationAction*)action
                    decisionHandler:(void (^)(WKNavigationActionPolicy))decisionHandler {
  const bool isLink = action.navigationType == WKNavigationTypeLinkActivated;
  const bool isRefusedDownload = action.shouldPerformDownload && !isAllowed(PageRequest::download);
  const bool allowed =
      !isRefusedDownload && self.navigation &&
      self.navigation->decidePolicyForNavigation(quendo::NavigationAction{urlOf(action), isLink});
  decisionHandler(allowed ? WKNavigationActionPolicyAllow : WKNavigationActionPolicyCancel);
}

- (void)webView:(WKWebView*)webView
    decidePolicyForNavigationResponse:(WKNavigationResponse*)response
                      decisionHandler:(void (^)(WKNavigationResponsePolicy))decisionHandler {
  // What the web view cannot show would become a download.
  const bool allowed = response.canShowMIMEType || isAllowed(PageRequest::download);
  decisionHandler(allowed ? WKNavigationResponsePolicyAllow : WKNavigationResponsePolicyCancel);
}

- (void)webView:(WKWebView*)webView didCommitNavigation:(WKNavigation*)navigation {
  if (self.owner) self.owner->unanswered().documentWasReplaced();
}

- (void)webView:(WKWebView*)webView didFinishNavigation:(WKNavigation*)navigation {
  if (self.navigation) self.navigation->didFinishNavigation();
}

- (void)webView:(WKWebView*)webView didFailNavigation:(WKNavigation*)navigation withError:(NSError*)error {
  if (self.navigation && !wasGivenUp(error))
    self.navigation->didFailNavigation(textOf(error.localizedDescription));
}

- (void)webView:(WKWebView*)webView
    didFailProvisionalNavigation:(WKNavigation*)navigation
                       withError:(NSError*)error {
  if (self.navigation && !wasGivenUp(error))
    self.navigation->didFailProvisionalNavigation(textOf(error.localizedDescription));
}

- (void)webViewWebContentProcessDidTerminate:(WKWebView*)webView {
  if (self.owner) self.owner->unanswered().processDidTerminate(self.navigation);
}

- (void)webView:(WKWebView*)webView
    didReceiveAuthenticationChallenge:(NSURLAuthenticationChallenge*)challenge
                    completionHandler:
                        (void (^)(NSURLSessionAuthChallengeDisposition, NSURLCredential*))completionHandler {
  // The system judges a server's certificate, and refuses one that it does not trust.
  const bool isServer =
      [challenge.protectionSpace.authenticationMethod isEqualToString:NSURLAuthenticationMethodServerTrust];
  const bool usual = isServer || isAllowed(PageRequest::authentication);
  completionHandler(usual ? NSURLSessionAuthChallengePerformDefaultHandling
                          : NSURLSessionAuthChallengeCancelAuthenticationChallenge,
                    nil);
}

- (WKWebView*)webView:(WKWebView*)webView
    createWebViewWithConfiguration:(WKWebViewConfiguration*)configuration
               forNavigationAction:(WKNavigationAction*)action
                    windowFeatures:(WKWindowFeatures*)windowFeatures {
  if (self.ui && isDelegated(PageRequest::newWindow)) self.ui->createWebView(urlOf(action));
  return nil;
}

- (void)webView:(WKWebView*)webView
    runJavaScriptAlertPanelWithMessage:(NSString*)message
                      initiatedByFrame:(WKFrameInfo*)frame
                     completionHandler:(void (^)(void))completionHandler {
  completionHandler();
}

- (void)webView:(WKWebView*)webView
    runJavaScriptConfirmPanelWithMessage:(NSString*)message
                        initiatedByFrame:(WKFrameInfo*)frame
                       completionHandler:(void (^)(BOOL))completionHandler {
  completionHandler(isAllowed(PageRequest::confirm));
}

- (void)webView:(WKWebView*)webView
    runJavaScriptTextInputPanelWithPrompt:(NSString*)prompt
                              defaultText:(NSString*)defaultText
                         initiatedByFrame:(WKFrameInfo*)frame
                        completionHandler:(void (^)(NSString*))completionHandler {
  if (!self.ui || !isDelegated(PageRequest::textInputPanel)) {
    completionHandler(nil);
    return;
  }
  const auto pending = std::make_shared<Pending<NSString*>>(completionHandler);
  self.ui->runTextInputPanel(
      textOf(prompt), textOf(defaultText),
      [pending](std::optional<std::string> answer) { pending->answer(answer ? stringFrom(*answer) : nil); });
}

- (void)webView:(WKWebView*)webView
    runOpenPanelWithParameters:(WKOpenPanelParameters*)parameters
              initiatedByFrame:(WKFrameInfo*)frame
             completionHandler:(void (^)(NSArray<NSURL*>*))completionHandler {
  if (!self.ui || !isDelegated(PageRequest::openPanel)) {
    completionHandler(nil);
    return;
  }
  const auto pending = std::make_shared<Pending<NSArray<NSURL*>*>>(completionHandler);
  self.ui->runOpenPanel([pending](std::optional<std::vector<std::string>> paths) {
    if (!paths) {
      pending->answer(nil);
      return;
    }
    NSMutableArray<NSURL*>* urls = [NSMutableArray array];
    for (const std::string& path : *paths) [urls addObject:quendo::cocoa::fileUrl(path)];
    pending->answer(urls);
  });
}

- (void)webView:(WKWebView*)webView
    requestMediaCapturePermissionForOrigin:(WKSecurityOrigin*)origin
                          initiatedByFrame:(WKFrameInfo*)frame
                                      type:(WKMediaCaptureType)type
                           decisionHandler:(void (^)(WKPermissionDecision))decisionHandler {
  const bool allowed = isAllowed(PageRequest::camera) && isAllowed(PageRequest::microphone);
  decisionHandler(allowed ? WKPermissionDecisionGrant : WKPermissionDecisionDeny);
}

@end
