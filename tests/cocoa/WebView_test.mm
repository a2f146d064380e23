#import "WebViewTest.h"

@interface Drag : NSPasteboard <NSDraggingInfo> {
  NSArray* objects_;
 @public
  id source_;
}
@end

/// A drag of objects, and the pasteboard that it comes with.
@implementation Drag
- (instancetype)initWithObjects:(NSArray*)objects {
  objects_ = objects;
  return self;
}
- (id)draggingSource {
  return source_;
}
- (NSPasteboard*)draggingPasteboard {
  return self;
}
- (NSArray*)readObjectsForClasses:(NSArray*)classes options:(NSDictionary*)options {
  const bool filesOnly = [[options objectForKey:NSPasteboardURLReadingFileURLsOnlyKey] boolValue];
  NSMutableArray* read = [NSMutableArray array];
  for (id object in objects_) {
    if (![classes containsObject:[NSURL class]] || ![object isKindOfClass:[NSURL class]]) continue;
    if (!filesOnly || [object isFileURL]) [read addObject:object];
  }
  return read;
}
@end

/// A file as the Finder names it: by its number on the disk.
@interface NumberedFile : NSURL
@end
@implementation NumberedFile
- (NSString*)absoluteString {
  return @"file:///.file/id=6571367.2";
}
- (NSString*)path {
  return @"/.file/id=6571367.2";
}
- (NSURL*)filePathURL {
  return [NSURL fileURLWithPath:@"/notes/a b.md"];
}
@end

namespace quendo::cocoa {
namespace {

class CocoaWebViewTest : public WebViewTest {
 protected:
  EvaluationHandler answer(const std::string& name = "call") {
    return [this, name](const EvaluationResult& result) {
      navigation_.log.push_back(name + ": " + result.error.value_or("answered"));
      answers_.push_back(result.value);
    };
  }
  void pageAnswers(std::size_t call, EvaluationResult result) {
    const auto completion = page().evaluations.at(call).completion;
    completion(std::move(result));
  }

  std::vector<Value> answers_;
};

TEST_F(CocoaWebViewTest, ScriptsAreAnsweredOnce) {
  view_->evaluateJavaScript("1 + 1", answer());
  EXPECT_EQ(page().scripts, Log{"1 + 1"});
  pageAnswers(0, {2.0, std::nullopt});
  pageAnswers(0, {3.0, std::nullopt});
  EXPECT_EQ(answers_, std::vector<Value>{2.0});
  EXPECT_EQ(navigation_.log, Log{"call: answered"});
}

TEST_F(CocoaWebViewTest, AScriptNeedsNoAnswer) {
  view_->evaluateJavaScript("run()", {});
  EXPECT_FALSE(page().evaluations.at(0).completion);
}

TEST_F(CocoaWebViewTest, AFunctionGetsItsArguments) {
  view_->callAsyncJavaScript("return text", {{"text", "Ação"}, {"on", true}}, answer());
  EXPECT_EQ(page().asyncCalls.at(0).script, "return text");
  EXPECT_EQ(page().asyncCalls.at(0).arguments, (Value::Dictionary{{"text", "Ação"}, {"on", true}}));
  const auto completion = page().asyncCalls.at(0).completion;
  completion({"done", std::nullopt});
  EXPECT_EQ(answers_, std::vector<Value>{"done"});
}

TEST_F(CocoaWebViewTest, AScriptThatFailsIsAnsweredInWords) {
  view_->evaluateJavaScript("fail()", answer());
  pageAnswers(0, {{}, "it failed"});
  platform_.mainQueue.runPending();
  EXPECT_EQ(navigation_.log, Log{"call: it failed"});
}

TEST_F(CocoaWebViewTest, UnansweredCallsFailOnceWhenThePageIsReplaced) {
  view_->evaluateJavaScript("a()", answer("a"));
  view_->callAsyncJavaScript("b()", {}, answer("b"));
  [navigationOf() webView:view() didCommitNavigation:nil];
  EXPECT_EQ(navigation_.log, (Log{"a: the page was replaced", "b: the page was replaced"}));
  pageAnswers(0, {1.0, std::nullopt});
  [navigationOf() webView:view() didCommitNavigation:nil];
  EXPECT_EQ(navigation_.log.size(), 2U);
}

TEST_F(CocoaWebViewTest, UnansweredCallsFailOnceTheDelegateKnowsOfTheLostProcess) {
  view_->evaluateJavaScript("a()", answer("a"));
  [navigationOf() webViewWebContentProcessDidTerminate:view()];
  EXPECT_EQ(navigation_.log, (Log{"process ended", "a: the page's process ended"}));
}

TEST_F(CocoaWebViewTest, ACallThatFailsWithTheProcessIsAnsweredAfterItsEndIsKnown) {
  view_->evaluateJavaScript("a()", answer("a"));
  ports_.mainQueue.async([] {});
  pageAnswers(0, {{}, "the process crashed"});
  EXPECT_TRUE(navigation_.log.empty());
  [navigationOf() webViewWebContentProcessDidTerminate:view()];
  platform_.mainQueue.runPending();
  EXPECT_EQ(navigation_.log, (Log{"process ended", "a: the page's process ended"}));
}

TEST_F(CocoaWebViewTest, AnswersAfterItIsGoneAreForNobody) {
  view_->evaluateJavaScript("a()", answer("a"));
  view_->evaluateJavaScript("b()", answer("b"));
  ports_.mainQueue.async([] {});
  view_.reset();
  pageAnswers(0, {1.0, std::nullopt});
  pageAnswers(1, {{}, "gone"});
  platform_.mainQueue.runPending();
  EXPECT_TRUE(navigation_.log.empty());
}

TEST_F(CocoaWebViewTest, TheContextMenuKeepsWhatTheCoreKeeps) {
  NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
  [menu addItem:[NSMenuItem separatorItem]];
  for (NSString* name : {@"Reload",
                         @"GoBack",
                         @"GoForward",
                         @"Copy",
                         @"Paste",
                         @"OpenLink",
                         @"OpenLinkInNewWindow",
                         @"CopyLink",
                         @"CopyImage",
                         @"CopyMediaLink",
                         @"DownloadImage",
                         @"DownloadLinkedFile",
                         @"DownloadMedia",
                         @"OpenFrameInNewWindow",
                         @"OpenImageInNewWindow",
                         @"OpenMediaInNewWindow",
                         @"InspectElement",
                         @"ShowHideMediaControls",
                         @"ToggleEnhancedFullScreen",
                         @"ToggleFullScreen",
                         @"LookUp",
                         @"SpellingMenu",
                         @"SpeechMenu",
                         @"Translate",
                         @"Unheard"}) {
    NSMenuItem* item = [[NSMenuItem alloc] initWithTitle:name action:nullptr keyEquivalent:@""];
    item.identifier = [@"WKMenuItemIdentifier" stringByAppendingString:name];
    [menu addItem:item];
  }
  [menu addItem:[NSMenuItem separatorItem]];
  [menu addItem:[[NSMenuItem alloc] initWithTitle:@"Cut" action:nullptr keyEquivalent:@""]];
  [menu addItem:[NSMenuItem separatorItem]];
  [menu addItem:[NSMenuItem separatorItem]];
  [view() willOpenMenu:menu withEvent:nil];
  Log kept;
  for (NSMenuItem* item in menu.itemArray)
    kept.push_back(item.isSeparatorItem ? "-" : doubles::textFrom(item.title));
  EXPECT_EQ(kept, (Log{"Copy", "Paste", "OpenLink", "CopyLink", "LookUp", "SpellingMenu", "SpeechMenu",
                       "Translate", "-", "Cut"}));
}

TEST_F(CocoaWebViewTest, DroppedFilesAreTheHosts) {
  Drag* drag = [[Drag alloc] initWithObjects:@[
    [NSURL fileURLWithPath:@"/notes/a b.md"], @"text", [NSURL URLWithString:@"https://quendo.example/"],
    [NSURL fileURLWithPath:@"/notes/b.md"]
  ]];
  EXPECT_EQ([view() draggingEntered:drag], NSDragOperationCopy);
  EXPECT_EQ([view() draggingUpdated:drag], NSDragOperationCopy);
  EXPECT_TRUE(host_.opened.empty());
  EXPECT_TRUE([view() performDragOperation:drag]);
  EXPECT_EQ(host_.opened, (std::vector<Log>{{"file:///notes/a%20b.md", "file:///notes/b.md"}}));
}

TEST_F(CocoaWebViewTest, OtherDragsAreThePages) {
  for (id object : {(id) @"text", (id)[NSURL URLWithString:@"https://quendo.example/"]}) {
    Drag* drag = [[Drag alloc] initWithObjects:@[ object ]];
    EXPECT_EQ([view() draggingEntered:drag], NSDragOperationNone);
    EXPECT_EQ([view() draggingUpdated:drag], NSDragOperationNone);
    EXPECT_FALSE([view() performDragOperation:drag]);
  }
  EXPECT_TRUE(host_.opened.empty());
}

TEST_F(CocoaWebViewTest, LoadsAFileWithTheAccessThatItMayHave) {
  platform_.log.clear();
  view_->loadFile("/app/web/index a.html", "/app/web");
  EXPECT_EQ(platform_.log, Log{"loadFile /app/web/index a.html allowing /app/web"});
}

TEST_F(CocoaWebViewTest, DraggedFilesHaveTheirPathsWhateverTheSystemCallsThem) {
  NumberedFile* file = [[NumberedFile alloc] initFileURLWithPath:@"/notes/a b.md"];
  Drag* drag = [[Drag alloc] initWithObjects:@[ file ]];
  [view() draggingEntered:drag];
  [view() performDragOperation:drag];
  EXPECT_EQ(host_.opened, (std::vector<Log>{{"file:///notes/a%20b.md"}}));
}

TEST_F(CocoaWebViewTest, WhatIsDraggedFromThePageIsThePagesThoughItIsAFile) {
  Drag* drag = [[Drag alloc] initWithObjects:@[ [NSURL fileURLWithPath:@"/app/web/index.html"] ]];
  drag->source_ = view();
  EXPECT_EQ([view() draggingEntered:drag], NSDragOperationNone);
  EXPECT_EQ([view() draggingUpdated:drag], NSDragOperationNone);
  EXPECT_FALSE([view() performDragOperation:drag]);
  EXPECT_TRUE(host_.opened.empty());
}

TEST_F(CocoaWebViewTest, TheMenuHasItsKeysBeforeThePage) {
  auto menu = std::make_shared<Menu>();
  MenuItem command;
  command.action = "newNote";
  command.keyEquivalent = "n";
  MenuItem undo;
  undo.action = "undo";
  undo.platformAction = PlatformAction::undo;
  undo.keyEquivalent = "z";
  menu->items = {command, undo};
  application_.setMainMenu(menu);
  EXPECT_TRUE([view() performKeyEquivalent:doubles::keyPress(@"n", kModifierCommand)]);
  EXPECT_EQ(host_.performed, Log{"newNote"});
  EXPECT_FALSE([view() performKeyEquivalent:doubles::keyPress(@"n", kModifierCommand | kModifierShift)]);
  EXPECT_FALSE([view() performKeyEquivalent:doubles::keyPress(@"z", kModifierCommand)]) << "the page edits";
  EXPECT_EQ(host_.performed.size(), 1U);
}

TEST_F(CocoaWebViewTest, ShowsNoPreviewsOfLinks) {
  EXPECT_FALSE(view().allowsLinkPreview);
}

TEST_F(CocoaWebViewTest, IsConfiguredAsTheCoreWants) {
  for (const auto store : {WebsiteDataStore::nonPersistent, WebsiteDataStore::defaultStore}) {
    for (const bool opensWindows : {true, false}) {
      ports_.toolkit.makeWebView({content_, store, opensWindows});
      EXPECT_EQ(platform_.toolkit.configuration.websiteDataStore, store);
      EXPECT_EQ(platform_.toolkit.configuration.javaScriptCanOpenWindowsAutomatically, opensWindows);
    }
  }
}

}  // namespace
}  // namespace quendo::cocoa
