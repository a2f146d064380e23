// A double of what a web view is configured with: scripts, messages, the store of websites' data.

#import <WebKit/WebKit.h>

#include <algorithm>
#include <cstdlib>

#import "Stage.h"
#import "WebKitDoubles.h"

using namespace quendo;
using namespace quendo::doubles;

namespace {

struct ScriptState {
  std::string source;
  WKUserScriptInjectionTime time{};
  bool mainFrameOnly = false;
  WKContentWorld* world = nil;
};

struct MessageState {
  NSString* name = nil;
  id body = nil;
  WKFrameInfo* frame = nil;
};

struct FrameState {
  bool isMain = true;
};

struct ContentState {
  std::shared_ptr<UserContentController> keeps;
  std::vector<WKUserScript*> scripts;
  std::vector<id> handlers;
};

class MessageAdaptor final : public ScriptMessageHandler {
 public:
  MessageAdaptor(WKUserContentController* controller, id<WKScriptMessageHandler> handler)
      : controller_(controller), handler_(handler) {}
  void didReceiveScriptMessage(ScriptMessage message) override {
    const Turn turn;
    WKFrameInfo* frame = [[WKFrameInfo alloc] init];
    stateOf<FrameState>(frame).isMain = message.isMainFrame;
    WKScriptMessage* sent = [[WKScriptMessage alloc] init];
    id body = objectFrom(message.body);
    stateOf<MessageState>(sent) = {stringFrom(message.name), body ? body : [NSNull null], frame};
    [handler_ userContentController:controller_ didReceiveScriptMessage:sent];
  }

 private:
  WKUserContentController* controller_;
  id<WKScriptMessageHandler> handler_;
};

fake::FakeUserContent& contentOf(WKUserContentController* controller) {
  return static_cast<fake::FakeUserContent&>(*stateOf<ContentState>(controller).keeps);
}

}  // namespace

namespace quendo::doubles {

std::shared_ptr<UserContentController> keptContentOf(WKUserContentController* controller) {
  return stateOf<ContentState>(controller).keeps;
}

std::vector<id> messageHandlers(WKUserContentController* controller) {
  return stateOf<ContentState>(controller).handlers;
}

std::size_t hostScriptCount(WKUserContentController* controller) {
  return static_cast<std::size_t>(std::ranges::count_if(
      stateOf<ContentState>(controller).scripts,
      [](WKUserScript* script) { return stateOf<ScriptState>(script).world != [WKContentWorld pageWorld]; }));
}

std::deque<id>& keyCounts() {
  static std::deque<id> counts;
  return counts;
}

}  // namespace quendo::doubles

@implementation WKContentWorld
+ (WKContentWorld*)pageWorld {
  static WKContentWorld* world = [[self alloc] init];
  return world;
}
+ (WKContentWorld*)worldWithName:(NSString*)name {
  static WKContentWorld* world = [[self alloc] init];
  return world;
}
@end

@implementation WKUserScript
- (instancetype)initWithSource:(NSString*)source
                 injectionTime:(WKUserScriptInjectionTime)injectionTime
              forMainFrameOnly:(BOOL)forMainFrameOnly {
  return [self initWithSource:source
                injectionTime:injectionTime
             forMainFrameOnly:forMainFrameOnly
               inContentWorld:[WKContentWorld pageWorld]];
}
- (instancetype)initWithSource:(NSString*)source
                 injectionTime:(WKUserScriptInjectionTime)injectionTime
              forMainFrameOnly:(BOOL)forMainFrameOnly
                inContentWorld:(WKContentWorld*)contentWorld {
  self = [super init];
  stateOf<ScriptState>(self) = {textFrom(source), injectionTime, static_cast<bool>(forMainFrameOnly),
                                contentWorld};
  return self;
}
@end

@implementation WKFrameInfo
- (BOOL)isMainFrame {
  return stateOf<FrameState>(self).isMain;
}
@end

@implementation WKScriptMessage
- (id)body {
  return stateOf<MessageState>(self).body;
}
- (NSString*)name {
  return stateOf<MessageState>(self).name;
}
- (WKFrameInfo*)frameInfo {
  return stateOf<MessageState>(self).frame;
}
@end

@implementation WKUserContentController
- (instancetype)init {
  self = [super init];
  stateOf<ContentState>(self).keeps = facilities().toolkit.makeUserContentController();
  return self;
}
- (void)addUserScript:(WKUserScript*)userScript {
  const ScriptState& script = stateOf<ScriptState>(userScript);
  if (script.time != WKUserScriptInjectionTimeAtDocumentStart || !script.mainFrameOnly) std::abort();
  stateOf<ContentState>(self).scripts.push_back(userScript);
  // The host's own world is not the page's.
  if (script.world == [WKContentWorld pageWorld]) contentOf(self).addUserScript(script.source);
}
- (void)removeAllUserScripts {
  stateOf<ContentState>(self).scripts.clear();
  contentOf(self).removeAllUserScripts();
}
- (void)addScriptMessageHandler:(id<WKScriptMessageHandler>)scriptMessageHandler name:(NSString*)name {
  stateOf<ContentState>(self).handlers.push_back(scriptMessageHandler);
  contentOf(self).addScriptMessageHandler(std::make_shared<MessageAdaptor>(self, scriptMessageHandler),
                                          textFrom(name));
}
@end

@implementation WKWebsiteDataStore
+ (WKWebsiteDataStore*)defaultDataStore {
  static WKWebsiteDataStore* store = [[self alloc] init];
  return store;
}
+ (WKWebsiteDataStore*)nonPersistentDataStore {
  static WKWebsiteDataStore* store = [[self alloc] init];
  return store;
}
@end
