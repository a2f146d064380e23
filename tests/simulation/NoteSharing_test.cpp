#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "simulation/NoteSharingFixture.h"

namespace quendo {
namespace {

using Kind = SharedItem::Kind;

TEST_F(NoteSharingTest, TheNoteIsAFileInAPrivateFolderOfItsOwn) {
  start();
  share("a");
  EXPECT_EQ(picker().shared.items, (std::vector<SharedItem>{{Kind::file, kFolder + "/nota.md"}}));
  EXPECT_EQ(platform_.files.file(kFolder + "/nota.md"), "content");
  EXPECT_TRUE(scripts().empty());
}

TEST_F(NoteSharingTest, TheFileHasTheSafeName) {
  start();
  share("a", "", "a/b.md");
  EXPECT_TRUE(platform_.files.file(kFolder + "/a-b.md"));
}

TEST_F(NoteSharingTest, ThePickerIsAnchoredInTheLowerRightCornerOfTheWebView) {
  start();
  page().area = Rect{0, 0, 1320, 795};
  share("a");
  EXPECT_EQ(picker().anchor, (Rect{1268, 743, 1, 1}));
  EXPECT_EQ(picker().edge, RectEdge::minY);
}

TEST_F(NoteSharingTest, TheAnchorStaysWithinATinyWebView) {
  start();
  page().area = Rect{0, 0, 40, 30};
  share("a");
  EXPECT_EQ(picker().anchor, (Rect{0, 0, 1, 1}));
}

TEST_F(NoteSharingTest, ALinkToTheProductsOwnSiteFollowsTheFile) {
  start();
  for (const char* url :
       {"https://quendo.example/n/1", "https://www.quendo.example", "HTTPS://APP.Quendo.Example/x?y#z"}) {
    share("a", url);
    ASSERT_EQ(picker().shared.items.size(), 2U) << url;
    EXPECT_EQ(picker().shared.items[1], (SharedItem{Kind::link, url}));
    EXPECT_EQ(picker().shared.items[0].kind, Kind::file);
    picker().delegate->didChooseSharingService(nullptr);
  }
}

TEST_F(NoteSharingTest, AnyOtherLinkIsDroppedAndTheFileSharedStill) {
  start();
  for (const char* url :
       {"http://quendo.example/", "https://quendo.example.evil.test/", "https://evil.test/quendo.example",
        "https://quendo.example@evil.test/", "https://evil.test\\@quendo.example/",
        "https://quendo.example./", "https://quendo%2Eexample/",
        "https://q\xD1\x83"
        "endo.example/",
        "https://sub.quendo.example/", "javascript:alert(1)", "quendo.example", "https:/quendo.example/",
        "https://quendo.example /", "//quendo.example/"}) {
    share("a", url);
    ASSERT_EQ(picker().shared.items.size(), 1U) << url;
    EXPECT_EQ(picker().shared.items[0].kind, Kind::file);
    picker().delegate->didChooseSharingService(nullptr);
  }
}

TEST_F(NoteSharingTest, WithoutAFolderTheTextIsSharedBehindTheLink) {
  start();
  platform_.files.failCallsIf(
      [](const std::string& call) { return call.starts_with("createPrivateDirectory"); });
  share("a", "https://quendo.example/");
  EXPECT_EQ(picker().shared.items, (std::vector<SharedItem>{{Kind::link, "https://quendo.example/"},
                                                            {Kind::text, "Title\n\ncontent"}}));
}

TEST_F(NoteSharingTest, AFileThatCannotBeWrittenLeavesNoFolderAndSharesTheText) {
  start();
  platform_.files.failCallsIf([](const std::string& call) { return call.starts_with("write"); });
  share("a");
  EXPECT_EQ(picker().shared.items, (std::vector<SharedItem>{{Kind::text, "Title\n\ncontent"}}));
  EXPECT_FALSE(platform_.files.hasDirectory(kFolder));
}

// The host's representation of a lone surrogate from the page.
const std::string kLoneSurrogate = "\xED\xA0\xBD";

TEST_F(NoteSharingTest, ATextWithoutAUtf8FormIsAnsweredFalseAndNothingOfItIsShared) {
  start();
  for (const char* field : {"content", "title", "filename"}) {
    SCOPED_TRACE(field);
    Value::Dictionary body{
        {"attemptId", "a"}, {"title", "Title"}, {"filename", "nota.md"}, {"content", "content"}};
    body[field] = Value("before" + kLoneSurrogate + "after");
    const std::size_t answered = scripts().size();
    post("quendoShare", body);
    ASSERT_EQ(scripts().size(), answered + 1);
    EXPECT_EQ(scripts().back(), answer(false, "a"));
    EXPECT_TRUE(platform_.toolkit.pickers.empty());
    EXPECT_TRUE(platform_.files.ownDirectories("/tmp").empty());
  }
  share("b");
  EXPECT_EQ(platform_.toolkit.pickers.size(), 1U);
}

TEST_F(NoteSharingTest, ATextWithoutAUtf8FormIsNotSharedInTheFilesSteadEither) {
  start();
  platform_.files.failCallsIf(
      [](const std::string& call) { return call.starts_with("createPrivateDirectory"); });
  post("quendoShare", Value::Dictionary{{"attemptId", "a"},
                                        {"title", "Title"},
                                        {"filename", "nota.md"},
                                        {"content", kLoneSurrogate},
                                        {"url", "https://quendo.example/"}});
  EXPECT_EQ(scripts(), std::vector<std::string>{answer(false, "a")});
  EXPECT_TRUE(platform_.toolkit.pickers.empty());
}

TEST_F(NoteSharingTest, ALinkWithoutAUtf8FormIsDroppedLikeAnyOtherBadLink) {
  start();
  share("a", "https://quendo.example/" + kLoneSurrogate);
  ASSERT_EQ(picker().shared.items.size(), 1U);
  EXPECT_EQ(picker().shared.items[0].kind, Kind::file);
}

TEST_F(NoteSharingTest, ASecondRequestWhileThePickerIsOpenIsAnsweredFalseAndDisturbsNothing) {
  start();
  share("a");
  share("b");
  EXPECT_EQ(scripts(), std::vector<std::string>{answer(false, "b")});
  EXPECT_EQ(platform_.toolkit.pickers.size(), 1U);
  EXPECT_TRUE(platform_.files.hasDirectory(kFolder));
  const auto service = choose();
  share("c");
  service->delegate->didShareItems(*service);
  EXPECT_EQ(scripts(), (std::vector<std::string>{answer(false, "b"), answer(false, "c"), answer(true, "a")}));
}

TEST_F(NoteSharingTest, DismissingThePickerAnswersFalseAndDeletesTheFolder) {
  start();
  share("a");
  picker().delegate->didChooseSharingService(nullptr);
  EXPECT_EQ(scripts(), std::vector<std::string>{answer(false, "a")});
  EXPECT_FALSE(platform_.files.hasDirectory(kFolder));
  EXPECT_FALSE(platform_.files.file(kFolder + "/nota.md"));
  share("b");
  EXPECT_EQ(platform_.toolkit.pickers.size(), 2U);
}

TEST_F(NoteSharingTest, TheServicesReportIsTheAnswerAndThenTheFolderGoes) {
  for (const bool success : {true, false}) {
    SCOPED_TRACE(success);
    fake::FakePlatform platform;
    platform.files.setDirectory("/tmp");
    AppController controller(platform.ports());
    platform.ports().application.setDelegate(&controller);
    platform.application.delegate->applicationDidFinishLaunching();
    platform.toolkit.webView->navigation->didFinishNavigation();
    platform.toolkit.userContent->handlers.at("quendoShare")
        ->didReceiveScriptMessage(
            {"quendoShare",
             Value::Dictionary{{"attemptId", "a"}, {"title", "t"}, {"filename", "f"}, {"content", "c"}},
             true});
    auto service = std::make_shared<fake::FakeSharingService>();
    platform.toolkit.pickers.back()->delegate->didChooseSharingService(service);
    EXPECT_TRUE(platform.files.file("/tmp/Quendo-Share-UUID-1/f"));
    SharingServiceDelegate* delegate = service->delegate;
    success ? delegate->didShareItems(*service) : delegate->didFailToShareItems(*service);
    EXPECT_EQ(platform.toolkit.webView->scripts, std::vector<std::string>{answer(success, "a")});
    EXPECT_FALSE(platform.files.hasDirectory("/tmp/Quendo-Share-UUID-1"));
    // A second report of the same service must be ignored.
    delegate->didShareItems(*service);
    EXPECT_EQ(platform.toolkit.webView->scripts.size(), 1U);
  }
}

TEST_F(NoteSharingTest, AServiceThatNeverReportsIsEndedAfterHalfAnHour) {
  start();
  share("a");
  const auto service = choose();
  SharingServiceDelegate* delegate = service->delegate;
  platform_.mainQueue.advance(1799999ms);
  EXPECT_TRUE(scripts().empty());
  EXPECT_TRUE(platform_.files.hasDirectory(kFolder));
  platform_.mainQueue.advance(1ms);
  EXPECT_EQ(scripts(), std::vector<std::string>{answer(false, "a")});
  EXPECT_FALSE(platform_.files.hasDirectory(kFolder));
  delegate->didShareItems(*service);
  EXPECT_EQ(scripts().size(), 1U);
}

TEST_F(NoteSharingTest, TheTimeOutOfAnEndedShareDoesNotTouchTheNext) {
  start();
  share("a");
  auto service = choose();
  platform_.mainQueue.advance(1000s);
  service->delegate->didShareItems(*service);
  share("b");
  service = choose();
  platform_.mainQueue.advance(1799s);
  EXPECT_EQ(scripts(), std::vector<std::string>{answer(true, "a")});
  platform_.mainQueue.advance(1s);
  EXPECT_EQ(scripts(), (std::vector<std::string>{answer(true, "a"), answer(false, "b")}));
}

TEST_F(NoteSharingTest, WhereThePlatformHasNoPickerTheNoteIsOfferedInTheInterfaceLanguage) {
  start();
  platform_.defaults.strings["QuendoLanguage"] = "es";
  share("a", "https://quendo.example/");
  const auto sections = picker().shared.offersWithoutSystemPicker->sections({});
  EXPECT_EQ(sections[0][0].title, "Enviar por correo");
  EXPECT_EQ(std::get<ShareByMail>(sections[0][0].action),
            (ShareByMail{"Title", "https://quendo.example/", kFolder + "/nota.md"}));
  EXPECT_EQ(std::get<CopySharedText>(sections[1][1].action), CopySharedText{"content"});
}

}  // namespace
}  // namespace quendo
