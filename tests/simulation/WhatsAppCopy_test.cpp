#include "fake/HostFixture.h"

namespace quendo {
namespace {

class WhatsAppCopyTest : public fake::HostTest {
 protected:
  void chooseItem() { application().performMenuItem(menuItem("copyForWhatsApp")); }
};

TEST_F(WhatsAppCopyTest, AsksThePageToCopyTheNote) {
  start();
  chooseItem();
  ASSERT_EQ(page().asyncCalls.size(), 1U);
  EXPECT_EQ(page().asyncCalls[0].script,
            "return await window.quendoCopyCurrentNoteForWhatsApp?.() ?? false;");
}

TEST_F(WhatsAppCopyTest, OnlyBeepsBeforeThePageHasLoaded) {
  launch();
  platform_.log.clear();
  chooseItem();
  EXPECT_EQ(platform_.log, fake::CallLog{"beep"});
  EXPECT_TRUE(page().asyncCalls.empty());
  EXPECT_TRUE(scripts().empty());
}

TEST_F(WhatsAppCopyTest, OnlyBeepsWhileAQuitIsPending) {
  start();
  platform_.application.terminate();
  platform_.log.clear();
  chooseItem();
  EXPECT_EQ(platform_.log, fake::CallLog{"beep"});
  EXPECT_TRUE(page().asyncCalls.empty());
}

TEST_F(WhatsAppCopyTest, OnlyBeepsAfterAFatalErrorEvenIfThePageIsReadyAgain) {
  start();
  page().navigation->didFailNavigation("gone");
  finishLoading();
  platform_.log.clear();
  chooseItem();
  EXPECT_EQ(platform_.log, fake::CallLog{"beep"});
  EXPECT_TRUE(page().asyncCalls.empty());
}

TEST_F(WhatsAppCopyTest, SaysSoWhenThePageCouldNotCopy) {
  platform_.defaults.strings["QuendoLanguage"] = "es";
  start();
  chooseItem();
  page().asyncCalls[0].completion({{}, "TypeError"});
  EXPECT_EQ(scripts(), std::vector<std::string>{R"(showToast("No se pudo copiar para WhatsApp"))"});
}

TEST_F(WhatsAppCopyTest, LeavesACallThatCompletesToThePage) {
  start();
  chooseItem();
  page().asyncCalls[0].completion({Value(false), std::nullopt});
  EXPECT_TRUE(scripts().empty());
}

}  // namespace
}  // namespace quendo
