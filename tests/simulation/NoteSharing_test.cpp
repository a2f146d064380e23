#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "fake/HostFixture.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;
using Kind = SharedItem::Kind;

const std::string kFolder = "/tmp/Quendo-Share-01234567-89AB-CDEF-0123-456789ABCDE1";

std::string answer(bool success, const std::string& attemptId) {
  return std::string("window.quendoNativeShareDidFinish?.(") + (success ? "true" : "false") + ", \"" +
         attemptId + "\")";
}

class NoteSharingTest : public fake::HostTest {
 protected:
  NoteSharingTest() {
    platform_.files.setDirectory("/tmp");
    platform_.uuids.prefix = "01234567-89AB-CDEF-0123-456789ABCDE";
  }
  void share(const std::string& attemptId, const std::string& url = "",
             const std::string& filename = "nota.md") {
    post("quendoShare", Value::Dictionary{{"attemptId", attemptId},
                                          {"title", "Title"},
                                          {"filename", filename},
                                          {"content", "content"},
                                          {"url", url}});
  }
  fake::FakeSharingPicker& picker() { return *platform_.toolkit.pickers.back(); }
  std::shared_ptr<fake::FakeSharingService> choose() {
    auto service = std::make_shared<fake::FakeSharingService>();
    picker().delegate->didChooseSharingService(service);
    return service;
  }
};

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

// What a lone surrogate of the page becomes in the host.
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
    platform.application.setDelegate(&controller);
    controller.applicationDidFinishLaunching();
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
    // A second report of the same service is one too many.
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

TEST_F(NoteSharingTest, FoldersThatACrashLeftGoWithTheNextShareAndOthersStay) {
  start();
  const std::string abandoned = "/tmp/Quendo-Share-AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  for (const std::string& folder : {abandoned, std::string("/tmp/Quendo-Share-mine"),
                                    std::string("/tmp/Quendo-Share-aaaaaaaa-1111-2222-3333-bbbbbbbbbbbb")})
    platform_.files.setDirectory(folder);
  platform_.files.setFile(abandoned + "/nota.md", "left");
  share("a");
  EXPECT_FALSE(platform_.files.hasDirectory(abandoned));
  EXPECT_TRUE(platform_.files.hasDirectory("/tmp/Quendo-Share-mine"));
  EXPECT_TRUE(platform_.files.hasDirectory("/tmp/Quendo-Share-aaaaaaaa-1111-2222-3333-bbbbbbbbbbbb"));
  EXPECT_TRUE(platform_.files.hasDirectory(kFolder));
}

TEST_F(NoteSharingTest, TheFolderOfAnotherRunningInstanceStays) {
  start();
  const std::string shown = "/tmp/Quendo-Share-AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  platform_.files.setDirectory(shown);
  platform_.files.lockedByAnother.insert(shown);
  share("a");
  EXPECT_TRUE(platform_.files.hasDirectory(shown));
  EXPECT_EQ(platform_.toolkit.pickers.size(), 1U);
}

TEST_F(NoteSharingTest, TheFolderIsLockedFromThePickerToTheAnswer) {
  start();
  share("a");
  const auto lock = [&] { return platform_.files.lockDirectory(kFolder); };
  EXPECT_TRUE(lock().heldByAnother);
  const auto service = choose();
  EXPECT_TRUE(lock().heldByAnother);
  service->delegate->didShareItems(*service);
  platform_.files.setDirectory(kFolder);
  EXPECT_TRUE(lock().lock);
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

TEST_F(NoteSharingTest, OldCopiesGoAtTheStartAndAtTheEndOfTheProgram) {
  const std::string copy = "/home/user/.cache/Quendo/Shared/AAAAAAAA-1111-2222-3333-BBBBBBBBBBBB";
  const auto leaveAnOldCopy = [&] {
    platform_.files.setDirectory(copy);
    platform_.files.modificationDates[copy] = platform_.clock.now() - 25h;
  };
  leaveAnOldCopy();
  {
    AppController controller(platform_.ports());
    platform_.application.setDelegate(&controller);
    EXPECT_TRUE(platform_.files.hasDirectory(copy));
    controller.applicationDidFinishLaunching();
    EXPECT_FALSE(platform_.files.hasDirectory(copy));
    leaveAnOldCopy();
  }
  EXPECT_FALSE(platform_.files.hasDirectory(copy));
}

}  // namespace
}  // namespace quendo
