// A double of the web view. Its page is the test.

#import <WebKit/WebKit.h>

#include <cstdlib>

#import "PageValues.h"
#import "Stage.h"
#import "WebKitDoubles.h"
#import "Windows.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ConfigurationState {
  WKPreferences* preferences = nil;
  WKUserContentController* content = nil;
  WKWebsiteDataStore* dataStore = nil;
};

struct PreferencesState {
  bool canOpenWindows = true;
};

struct ActionState {
  NSURLRequest* request = nil;
  bool isLink = false;
};

struct ViewState {
  std::unique_ptr<WebView> keeps;
  fake::FakeWebView* page = nullptr;
  id navigation = nil;
  id ui = nil;
  std::unique_ptr<NavigationDelegate> navigationAdaptor;
  std::unique_ptr<UiDelegate> uiAdaptor;
  bool inspectable = true;
  bool showsPreviews = true;
  int keysThrough = 0;  ///< Questions about keys that find none on their way any more.
};

WKNavigationAction* actionOf(const std::optional<std::string>& url, bool isLink) {
  WKNavigationAction* action = [[WKNavigationAction alloc] init];
  NSURL* target = url ? [NSURL URLWithString:stringFrom(*url)] : nil;
  stateOf<ActionState>(action) = {[NSURLRequest requestWithURL:target], isLink};
  return action;
}

NSError* errorOf(NSString* domain, const std::string& description) {
  return [NSError errorWithDomain:domain
                             code:4
                         userInfo:[NSDictionary dictionaryWithObject:stringFrom(description)
                                                              forKey:NSLocalizedDescriptionKey]];
}

class NavigationAdaptor final : public NavigationDelegate {
 public:
  explicit NavigationAdaptor(WKWebView* view) : view_(view) {}
  bool decidePolicyForNavigation(const NavigationAction& action) override {
    const Turn turn;
    __block int answers = 0;
    __block bool allowed = false;
    [delegate() webView:view_
        decidePolicyForNavigationAction:actionOf(action.url, action.linkActivated)
                        decisionHandler:^(WKNavigationActionPolicy policy) {
                          ++answers;
                          allowed = policy == WKNavigationActionPolicyAllow;
                        }];
    if (answers != 1) std::abort();
    return allowed;
  }
  void didFinishNavigation() override {
    const Turn turn;
    [delegate() webView:view_ didCommitNavigation:nil];
    [delegate() webView:view_ didFinishNavigation:nil];
  }
  void didFailNavigation(const std::string& localizedDescription) override {
    const Turn turn;
    [delegate() webView:view_
        didFailNavigation:nil
                withError:errorOf(NSURLErrorDomain, localizedDescription)];
  }
  void didFailProvisionalNavigation(const std::string& localizedDescription) override {
    const Turn turn;
    [delegate() webView:view_
        didFailProvisionalNavigation:nil
                           withError:errorOf(NSURLErrorDomain, localizedDescription)];
  }
  void webContentProcessDidTerminate() override {
    const Turn turn;
    [delegate() webViewWebContentProcessDidTerminate:view_];
  }

 private:
  id delegate() const { return stateOf<ViewState>(view_).navigation; }
  WKWebView* view_;
};

class UiAdaptor final : public UiDelegate {
 public:
  explicit UiAdaptor(WKWebView* view) : view_(view) {}
  void createWebView(const std::optional<std::string>& url) override {
    const Turn turn;
    WKWebView* made = [delegate() webView:view_
           createWebViewWithConfiguration:[[WKWebViewConfiguration alloc] init]
                      forNavigationAction:actionOf(url, true)
                           windowFeatures:nil];
    if (made) std::abort();
  }
  void runTextInputPanel(const std::string& prompt, const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> completion) override {
    const Turn turn;
    [delegate() webView:view_
        runJavaScriptTextInputPanelWithPrompt:stringFrom(prompt)
                                  defaultText:stringFrom(defaultText)
                             initiatedByFrame:nil
                            completionHandler:[^(NSString* answer) {
                              completion(answer ? std::optional(textFrom(answer)) : std::nullopt);
                            } copy]];
  }
  void runOpenPanel(std::function<void(std::optional<std::vector<std::string>>)> completion) override {
    const Turn turn;
    [delegate() webView:view_
        runOpenPanelWithParameters:nil
                  initiatedByFrame:nil
                 completionHandler:[^(NSArray* urls) {
                   if (!urls) {
                     completion(std::nullopt);
                     return;
                   }
                   std::vector<std::string> paths;
                   for (NSURL* url in urls) paths.push_back(textFrom([url path]));
                   completion(std::move(paths));
                 } copy]];
  }

 private:
  id delegate() const { return stateOf<ViewState>(view_).ui; }
  WKWebView* view_;
};

/// Answers a call as WebKit does. What failed is dealt with in the main queue's next turn.
EvaluationHandler answering(void (^handler)(id, NSError*)) {
  if (!handler) return {};
  void (^kept)(id, NSError*) = [handler copy];
  return [kept](const EvaluationResult& result) {
    const Turn turn;
    if (result.error) {
      const bool waits = facilities().mainQueue.postedCount() > 0;
      kept(nil, errorOf(@"WKErrorDomain", *result.error));
      if (!waits) facilities().mainQueue.runPending();
    } else {
      kept(objectFrom(result.value), nil);
    }
  };
}

}  // namespace

@implementation WKPreferences
- (BOOL)javaScriptCanOpenWindowsAutomatically {
  return stateOf<PreferencesState>(self).canOpenWindows;
}
- (void)setJavaScriptCanOpenWindowsAutomatically:(BOOL)value {
  stateOf<PreferencesState>(self).canOpenWindows = value;
}
@end

@implementation WKWebViewConfiguration
- (instancetype)init {
  self = [super init];
  stateOf<ConfigurationState>(self).preferences = [[WKPreferences alloc] init];
  return self;
}
// clang-format off
- (WKPreferences*)preferences { return stateOf<ConfigurationState>(self).preferences; }
- (void)setPreferences:(WKPreferences*)value { stateOf<ConfigurationState>(self).preferences = value; }
- (WKUserContentController*)userContentController { return stateOf<ConfigurationState>(self).content; }
- (void)setUserContentController:(WKUserContentController*)value { stateOf<ConfigurationState>(self).content = value; }
- (WKWebsiteDataStore*)websiteDataStore { return stateOf<ConfigurationState>(self).dataStore; }
- (void)setWebsiteDataStore:(WKWebsiteDataStore*)value { stateOf<ConfigurationState>(self).dataStore = value; }
// clang-format on
@end

@implementation WKNavigationAction
- (WKNavigationType)navigationType {
  return stateOf<ActionState>(self).isLink ? WKNavigationTypeLinkActivated : WKNavigationTypeOther;
}
- (NSURLRequest*)request {
  return stateOf<ActionState>(self).request;
}
- (BOOL)shouldPerformDownload {
  return NO;
}
@end

@implementation WKNavigationResponse
- (BOOL)canShowMIMEType {
  return YES;
}
@end

@implementation WKWebView
- (instancetype)initWithFrame:(NSRect)frame configuration:(WKWebViewConfiguration*)configuration {
  self = [super initWithFrame:frame];
  WebViewConfiguration given;
  given.userContentController = keptContentOf(configuration.userContentController);
  given.websiteDataStore = configuration.websiteDataStore == [WKWebsiteDataStore nonPersistentDataStore]
                               ? WebsiteDataStore::nonPersistent
                               : WebsiteDataStore::defaultStore;
  given.javaScriptCanOpenWindowsAutomatically =
      configuration.preferences.javaScriptCanOpenWindowsAutomatically;
  ViewState& state = stateOf<ViewState>(self);
  state.keeps = facilities().toolkit.makeWebView(given);
  state.page = facilities().toolkit.webView;
  state.page->setPageObserver(&valuesOf(self));
  return self;
}
- (NSRect)bounds {
  const Rect area = stateOf<ViewState>(self).page->area;
  return NSMakeRect(area.x, area.y, area.width, area.height);
}
// clang-format off
- (NSString*)title { return valuesOf(self).title; }
- (NSColor*)themeColor { return valuesOf(self).themeColor; }
- (BOOL)allowsLinkPreview { return stateOf<ViewState>(self).showsPreviews; }
- (void)setAllowsLinkPreview:(BOOL)value { stateOf<ViewState>(self).showsPreviews = value; }
// clang-format on
- (id<WKNavigationDelegate>)navigationDelegate {
  return stateOf<ViewState>(self).navigation;
}
- (void)setNavigationDelegate:(id<WKNavigationDelegate>)delegate {
  ViewState& state = stateOf<ViewState>(self);
  state.navigation = delegate;
  state.navigationAdaptor = delegate ? std::make_unique<NavigationAdaptor>(self) : nullptr;
  state.page->setNavigationDelegate(state.navigationAdaptor.get());
}
- (id<WKUIDelegate>)UIDelegate {
  return stateOf<ViewState>(self).ui;
}
- (void)setUIDelegate:(id<WKUIDelegate>)delegate {
  ViewState& state = stateOf<ViewState>(self);
  state.ui = delegate;
  state.uiAdaptor = delegate ? std::make_unique<UiAdaptor>(self) : nullptr;
  state.page->setUiDelegate(state.uiAdaptor.get());
}
- (BOOL)isInspectable {
  return stateOf<ViewState>(self).inspectable;
}
- (void)setInspectable:(BOOL)inspectable {
  stateOf<ViewState>(self).inspectable = inspectable;
  stateOf<ViewState>(self).page->setInspectable(inspectable);
}
- (WKNavigation*)loadFileURL:(NSURL*)URL allowingReadAccessToURL:(NSURL*)readAccessURL {
  stateOf<ViewState>(self).page->loadFile(textFrom([URL path]), textFrom([readAccessURL path]));
  return nil;
}
- (void)evaluateJavaScript:(NSString*)script completionHandler:(void (^)(id, NSError*))completionHandler {
  stateOf<ViewState>(self).page->evaluateJavaScript(textFrom(script), answering(completionHandler));
}
// In the host's world there is nothing but the count of the keys that have reached the page.
- (void)evaluateJavaScript:(NSString*)script
                   inFrame:(WKFrameInfo*)frame
            inContentWorld:(WKContentWorld*)contentWorld
         completionHandler:(void (^)(id, NSError*))completionHandler {
  if (contentWorld == [WKContentWorld pageWorld] || ![script isEqualToString:@"window.quendoKeyEvents"])
    std::abort();
  void (^kept)(id, NSError*) = [completionHandler copy];
  ViewState* state = &stateOf<ViewState>(self);
  fake::FakeWebView* page = state->page;
  const auto answer = [kept, state] {
    const Turn turn;
    if (state->keysThrough == 0) state->keysThrough = 4;
    --state->keysThrough;
    id count = [NSNumber numberWithInt:0];
    if (!keyCounts().empty()) {
      count = keyCounts().front();
      keyCounts().pop_front();
    }
    kept(count, nil);
  };
  if (page->keysWait && state->keysThrough == 0) {
    page->waitingForKeys.push_back(answer);
  } else {
    answer();
  }
}
- (void)callAsyncJavaScript:(NSString*)functionBody
                  arguments:(NSDictionary*)arguments
                    inFrame:(WKFrameInfo*)frame
             inContentWorld:(WKContentWorld*)contentWorld
          completionHandler:(void (^)(id, NSError*))completionHandler {
  if (frame || contentWorld != [WKContentWorld pageWorld]) std::abort();
  Value value = valueFrom(arguments);
  stateOf<ViewState>(self).page->callAsyncJavaScript(textFrom(functionBody), *value.dictionary(),
                                                     answering(completionHandler));
}
@end
