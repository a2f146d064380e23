#import "platform/cocoa/web/WebKitUserContent.h"

#include <utility>

#import "platform/cocoa/Text.h"
#import "platform/cocoa/web/QueuedKeys.h"
#import "platform/cocoa/web/WebKitValues.h"

@interface QuendoMessageHandler : NSObject <WKScriptMessageHandler> {
  void (^receive_)(WKScriptMessage*);
}
@property(nonatomic, copy) void (^receive)(WKScriptMessage*);
@end

@implementation QuendoMessageHandler

@synthesize receive = receive_;

- (void)userContentController:(WKUserContentController*)userContentController
      didReceiveScriptMessage:(WKScriptMessage*)message {
  self.receive(message);
}

@end

namespace quendo::cocoa {

WebKitUserContent::WebKitUserContent() : controller_([[WKUserContentController alloc] init]) {}

void WebKitUserContent::addScriptMessageHandler(std::shared_ptr<ScriptMessageHandler> handler,
                                                const std::string& name) {
  QuendoMessageHandler* receiver = [[QuendoMessageHandler alloc] init];
  receiver.receive = ^(WKScriptMessage* message) {
    handler->didReceiveScriptMessage(ScriptMessage{textOf(message.name), valueFrom(message.body),
                                                   static_cast<bool>(message.frameInfo.isMainFrame)});
  };
  [controller_ addScriptMessageHandler:receiver name:stringFrom(name)];
}

void WebKitUserContent::removeAllUserScripts() {
  [controller_ removeAllUserScripts];
  [controller_ addUserScript:keyCountingScript()];
}

void WebKitUserContent::addUserScript(const std::string& source) {
  [controller_ addUserScript:[[WKUserScript alloc] initWithSource:stringFrom(source)
                                                    injectionTime:WKUserScriptInjectionTimeAtDocumentStart
                                                 forMainFrameOnly:YES]];
}

}  // namespace quendo::cocoa
