#import "platform/cocoa/web/WebKitView.h"

#include <utility>

#import "platform/cocoa/Geometry.h"
#import "platform/cocoa/Text.h"
#import "platform/cocoa/application/CocoaApplication.h"
#import "platform/cocoa/web/QuendoPageDelegate.h"
#import "platform/cocoa/web/QuendoWebView.h"
#import "platform/cocoa/web/WebKitValues.h"

namespace quendo::cocoa {
namespace {

// WebKit reads these when it makes the first view. Without the first one it marks nothing; the others would
// alter what is typed, which may be Markdown or code.
void registerTypingDefaults() {
  NSNumber* on = [NSNumber numberWithBool:YES];
  NSNumber* off = [NSNumber numberWithBool:NO];
  [NSUserDefaults.standardUserDefaults registerDefaults:@{
    @"WebContinuousSpellCheckingEnabled" : on,
    @"WebAutomaticSpellingCorrectionEnabled" : off,
    @"WebAutomaticQuoteSubstitutionEnabled" : off,
    @"WebAutomaticDashSubstitutionEnabled" : off,
    @"WebAutomaticTextReplacementEnabled" : off,
    @"WebAutomaticLinkDetectionEnabled" : off,
  }];
}

QuendoWebView* makeView(const WebViewConfiguration& configuration, WebKitUserContent& content) {
  registerTypingDefaults();
  WKWebViewConfiguration* made = [[WKWebViewConfiguration alloc] init];
  made.userContentController = content.controller();
  made.websiteDataStore = configuration.websiteDataStore == WebsiteDataStore::nonPersistent
                              ? [WKWebsiteDataStore nonPersistentDataStore]
                              : [WKWebsiteDataStore defaultDataStore];
  made.preferences.javaScriptCanOpenWindowsAutomatically =
      configuration.javaScriptCanOpenWindowsAutomatically;
  QuendoWebView* view = [[QuendoWebView alloc] initWithFrame:NSZeroRect configuration:made];
  // A preview would load a link in a window of the system's.
  view.allowsLinkPreview = NO;
  return view;
}

EvaluationResult resultFrom(id value, NSError* error) {
  if (error) return EvaluationResult{{}, textOf(error.localizedDescription)};
  return EvaluationResult{valueFrom(value), std::nullopt};
}

}  // namespace

WebKitView::WebKitView(const WebViewConfiguration& configuration, CocoaApplication& application)
    : content_(std::static_pointer_cast<WebKitUserContent>(configuration.userContentController)),
      view_(makeView(configuration, *content_)),
      pageDelegate_([[QuendoPageDelegate alloc] init]),
      pageObservation_(view_),
      queuedKeys_(view_) {
  pageDelegate_.owner = this;
  CocoaApplication* opener = &application;
  view_.openFiles = ^(NSArray<NSURL*>* files) {
    std::vector<std::string> urls;
    for (NSURL* url in files) urls.push_back(openedUrl(url));
    opener->openFiles(urls);
  };
  view_.performMenuKey = ^BOOL(NSEvent* event) {
    return opener->performMenuKey(event);
  };
}

WebKitView::~WebKitView() {
  pageDelegate_.owner = nullptr;
  pageDelegate_.navigation = nullptr;
  pageDelegate_.ui = nullptr;
  view_.navigationDelegate = nil;
  view_.UIDelegate = nil;
}

WKWebView* WebKitView::view() const {
  return view_;
}

void WebKitView::setNavigationDelegate(NavigationDelegate* delegate) {
  pageDelegate_.navigation = delegate;
  view_.navigationDelegate = pageDelegate_;
}

void WebKitView::setUiDelegate(UiDelegate* delegate) {
  pageDelegate_.ui = delegate;
  view_.UIDelegate = pageDelegate_;
}

// Before macOS 13.3 no web view can be inspected.
void WebKitView::setInspectable(bool inspectable) {
  if (@available(macOS 13.3, *)) view_.inspectable = inspectable;
}

Rect WebKitView::bounds() const {
  return rectOf(view_.bounds);
}

void WebKitView::loadFile(const std::string& path, const std::string& readAccessPath) {
  [view_ loadFileURL:fileUrl(path) allowingReadAccessToURL:fileUrl(readAccessPath)];
}

void (^WebKitView::handlerFor(EvaluationHandler completion))(id, NSError*) {
  const std::uint64_t number = unanswered_.add(std::move(completion));
  const auto answer = lifetime_.guard(
      [this, number](EvaluationResult result) { unanswered_.answer(number, std::move(result)); });
  return [^(id value, NSError* error) {
    auto finish = answer;
    finish(resultFrom(value, error));
  } copy];
}

void WebKitView::evaluateJavaScript(const std::string& script, EvaluationHandler completion) {
  void (^handler)(id, NSError*) = nil;
  if (completion) handler = handlerFor(std::move(completion));
  [view_ evaluateJavaScript:stringFrom(script) completionHandler:handler];
}

void WebKitView::inKeyOrder(std::chrono::milliseconds limit, std::function<void()> call) {
  queuedKeys_.inOrder(limit, std::move(call));
}

void WebKitView::afterQueuedKeys(std::chrono::milliseconds limit, std::function<void()> then) {
  queuedKeys_.after(limit, std::move(then));
}

void WebKitView::callAsyncJavaScript(const std::string& body, const Value::Dictionary& arguments,
                                     EvaluationHandler completion) {
  [view_ callAsyncJavaScript:stringFrom(body)
                   arguments:objectFrom(arguments)
                     inFrame:nil
              inContentWorld:WKContentWorld.pageWorld
           completionHandler:handlerFor(std::move(completion))];
}

// The system checks what is typed by itself, in the languages that the user chose for it.
void WebKitView::checkSpelling(const std::vector<std::vector<std::string>>& /*choices*/) {}

}  // namespace quendo::cocoa
