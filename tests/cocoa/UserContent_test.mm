#import "platform/cocoa/web/WebKitUserContent.h"

#import "CocoaTest.h"
#import "WebKitDoubles.h"

namespace quendo::cocoa {
namespace {

struct Handler final : ScriptMessageHandler {
  void didReceiveScriptMessage(ScriptMessage message) override { messages.push_back(std::move(message)); }
  std::vector<ScriptMessage> messages;
};

class CocoaUserContentTest : public CocoaTest {
 protected:
  void post(const std::string& name, Value body, bool isMainFrame) {
    seen().handlers.at(name)->didReceiveScriptMessage({name, std::move(body), isMainFrame});
  }
  fake::FakeUserContent& seen() { return *platform_.toolkit.userContent; }

  std::shared_ptr<Handler> handler_ = std::make_shared<Handler>();
  WebKitUserContent content_;
};

TEST_F(CocoaUserContentTest, EachNameHasAReceiverOfItsOwn) {
  content_.addScriptMessageHandler(handler_, "first");
  content_.addScriptMessageHandler(handler_, "second");
  const auto receivers = doubles::messageHandlers(content_.controller());
  ASSERT_EQ(receivers.size(), 2U);
  EXPECT_NE(receivers[0], receivers[1]);
  post("first", 1.0, true);
  post("second", 2.0, true);
  ASSERT_EQ(handler_->messages.size(), 2U);
  EXPECT_EQ(handler_->messages[0].name, "first");
  EXPECT_EQ(handler_->messages[0].body, Value(1.0));
  EXPECT_EQ(handler_->messages[1].name, "second");
}

TEST_F(CocoaUserContentTest, AMessageTellsWhetherItIsTheMainFrames) {
  content_.addScriptMessageHandler(handler_, "name");
  post("name", "body", true);
  post("name", "body", false);
  EXPECT_TRUE(handler_->messages.at(0).isMainFrame);
  EXPECT_FALSE(handler_->messages.at(1).isMainFrame);
}

TEST_F(CocoaUserContentTest, HandlersStayAsLongAsTheContent) {
  content_.addScriptMessageHandler(handler_, "name");
  const std::weak_ptr<Handler> held = std::exchange(handler_, nullptr);
  ASSERT_FALSE(held.expired());
  post("name", "body", true);
  EXPECT_EQ(held.lock()->messages.size(), 1U);
}

TEST_F(CocoaUserContentTest, KeysAreCountedWhateverScriptsThePageGets) {
  for (int times = 0; times < 2; ++times) {
    content_.removeAllUserScripts();
    content_.addUserScript("window.a = 1");
    EXPECT_EQ(seen().scripts, std::vector<std::string>{"window.a = 1"});
    EXPECT_EQ(doubles::hostScriptCount(content_.controller()), 1U);
  }
}

}  // namespace
}  // namespace quendo::cocoa
