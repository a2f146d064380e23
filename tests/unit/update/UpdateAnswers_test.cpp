#include <thread>

#include "unit/update/UpdateFixture.h"

namespace quendo {
namespace {

class UpdateAnswersTest : public UpdateTest {
 protected:
  /// Both kinds of check treat this answer as a failure, and the next check may run.
  void expectFailure(const std::optional<HttpResponse>& response, const std::string& what) {
    page_.scripts.clear();
    platform_.defaults.dates.clear();
    checks_->performUpdateCheck(false);
    answer(response);
    EXPECT_TRUE(isSilent()) << what;
    checkManually(response);
    EXPECT_EQ(messages(), std::vector<std::string>{message("Could not check for updates")}) << what;
    EXPECT_EQ(offers(), 0U) << what;
    EXPECT_TRUE(noOfferRecorded()) << what;
  }

  void SetUp() override { platform_.defaults.setString(kLanguageDefaultsKey, "en"); }

  /// A manifest of a newer release, padded to `size` bytes with trailing blanks.
  static std::string paddedTo(std::size_t size) {
    std::string body = newer();
    body.resize(size, ' ');
    return body;
  }
};

TEST_F(UpdateAnswersTest, AsksForTheManifestAndNothingElse) {
  checks_->checkForUpdates();
  const HttpRequest& request = lastRequest();
  EXPECT_EQ(request.url, "https://" + std::string(kSiteDomain) + "/releases/latest.json");
  using Headers = std::vector<std::pair<std::string, std::string>>;
  EXPECT_EQ(request.headers, (Headers{{"Accept", "application/json"}, {"User-Agent", "Quendo/1.5.0"}}));
  EXPECT_TRUE(request.ignoresCachedData);
  EXPECT_EQ(request.timeout, 15s);
  EXPECT_EQ(request.maximumBodyBytes, 100'001U);
}

TEST_F(UpdateAnswersTest, FollowsTenRedirectsAndOnlyToHttps) {
  checks_->checkForUpdates();
  const auto& redirect = lastRequest().redirect;
  for (const char* url :
       {"http://cdn.example/latest.json", "file:///etc/hostname", "httpsx://cdn.example/", "", "/a"}) {
    EXPECT_EQ(redirect(url), Redirect::answer) << url;
  }
  for (int number = 1; number <= 10; ++number) {
    EXPECT_EQ(redirect(number % 2 ? "https://cdn.example/a" : "HTTPS://cdn.example/a"), Redirect::follow)
        << number;
  }
  EXPECT_EQ(redirect("https://cdn.example/a"), Redirect::fail);
}

TEST_F(UpdateAnswersTest, CountsTheRedirectsOfEachCheckAnew) {
  for (int check = 0; check < 2; ++check) {
    checkManually(manifest("1.5.0", 3));
    const auto redirect = platform_.httpSession.tasks.back().request.redirect;
    for (int number = 0; number < 10; ++number)
      EXPECT_EQ(redirect("https://cdn.example/a"), Redirect::follow);
  }
}

TEST_F(UpdateAnswersTest, SaysThatNothingIsNewerOnlyWhenAsked) {
  checkManually(manifest("1.5.0", 3));
  EXPECT_EQ(messages(), std::vector<std::string>{message("You already have the latest version")});
  EXPECT_EQ(offers(), 0U);
  EXPECT_TRUE(platform_.defaults.dates.empty()) << "nothing is recorded";
  EXPECT_FALSE(storedText(kPromptedVersion));
  page_.scripts.clear();
  for (const char* version : {"1.4.9", "1.5", "1.5.0", "v9", "9-beta", "1.0.0.0.1"}) {
    platform_.defaults.dates.clear();
    checkAutomatically(manifest(version, 3));
    EXPECT_TRUE(isSilent()) << version;
    EXPECT_TRUE(noOfferRecorded());
  }
}

TEST_F(UpdateAnswersTest, SaysItInTheLanguage) {
  platform_.defaults.setString(kLanguageDefaultsKey, "pt");
  checkManually(manifest("1.5.0", 3));
  checkManually(std::nullopt);
  platform_.defaults.setString(kLanguageDefaultsKey, "es");
  checkManually(manifest("1.5.0", 3));
  checkManually(std::nullopt);
  EXPECT_EQ(messages(), (std::vector<std::string>{message("Você já está na versão mais recente"),
                                                  message("Não foi possível verificar atualizações"),
                                                  message("Ya tienes la versión más reciente"),
                                                  message("No se pudo buscar actualizaciones")}));
}

TEST_F(UpdateAnswersTest, SpeaksToThePageBeforeItIsReadyAndWhileAQuitIsPending) {
  state_.webReady = false;
  state_.terminationPending = true;
  checkManually(std::nullopt);
  EXPECT_EQ(messages().size(), 1U);
}

TEST_F(UpdateAnswersTest, DropsTheMessageWithoutAPage) {
  surface_.webView = nullptr;
  checkManually(std::nullopt);
  EXPECT_TRUE(isSilent());
}

TEST_F(UpdateAnswersTest, FailsWithoutAnAnswer) {
  expectFailure(std::nullopt, "no answer");
}

TEST_F(UpdateAnswersTest, FailsOnEveryStatusBut200) {
  for (const int status : {0,   100, 199, 201, 202, 203, 204, 206, 226, 300, 301, 302,
                           304, 307, 400, 401, 403, 404, 407, 410, 429, 500, 503, 599}) {
    expectFailure(HttpResponse{status, newer()}, std::to_string(status));
  }
}

TEST_F(UpdateAnswersTest, FailsOnABodyThatIsEmptyOrNoManifest) {
  for (const char* body : {"", " ", "null", "[]", "{}", "<!doctype html><title>Sign in</title>"}) {
    expectFailure(HttpResponse{200, body}, body);
  }
  expectFailure(
      HttpResponse{200, R"({"version":"1.6.0","build":"4","download_url":")" + trustedUrl() + "\"}"},
      "a build number in quotes");
}

TEST_F(UpdateAnswersTest, TakesAManifestOf100000BytesButNotOneMore) {
  expectFailure(HttpResponse{200, paddedTo(100'001)}, "100001 bytes");
  checkManually(paddedTo(100'000));
  EXPECT_EQ(offers(), 1U);
}

TEST_F(UpdateAnswersTest, FailsOnAnAddressThatIsNotTrustedAlsoWhenTheReleaseIsNewer) {
  const std::string site(kSiteDomain);
  for (const std::string& url :
       {std::string("https://other.example/Quendo.dmg"), "http://" + site + "/Quendo.dmg",
        "https://" + site + "/Q.zip", "https://" + site + ".other.example/Quendo.dmg",
        std::string("Quendo.dmg"), std::string()}) {
    expectFailure(HttpResponse{200, manifest("1.6.0", 4, "", url)}, url);
    expectFailure(HttpResponse{200, manifest("1.5.0", 3, "", url)}, url + " of the same release");
  }
}

TEST_F(UpdateAnswersTest, ComparesTheBuildOfTheBundle) {
  const auto isNewerThanBuild = [this](std::optional<std::string> build, int releaseBuild) {
    window_.alerts.clear();
    if (build) {
      platform_.bundle.information["CFBundleVersion"] = *build;
    } else {
      platform_.bundle.information.erase("CFBundleVersion");
    }
    checkManually(manifest("1.5.0", releaseBuild));
    return offers() == 1;
  };
  for (const char* zero : {"", "12a", "a", " 1", "1 ", "+", "-", "+-5", "++5", "--5", "1.0", "0x5", "\u0663",
                           "9223372036854775808", "99999999999999999999"}) {
    EXPECT_FALSE(isNewerThanBuild(zero, 0)) << zero;
    EXPECT_TRUE(isNewerThanBuild(zero, 1)) << zero;
  }
  EXPECT_FALSE(isNewerThanBuild(std::nullopt, 0));
  EXPECT_TRUE(isNewerThanBuild(std::nullopt, 1));
  EXPECT_FALSE(isNewerThanBuild("+7", 7));
  EXPECT_TRUE(isNewerThanBuild("+7", 8));
  EXPECT_TRUE(isNewerThanBuild("-7", -6));
  EXPECT_FALSE(isNewerThanBuild("9223372036854775807", 2'000'000'000));
}

TEST_F(UpdateAnswersTest, CountsABundleWithoutAVersionAsZero) {
  platform_.bundle.information.clear();
  EXPECT_EQ(checks_->currentVersion(), "0.0.0");
  EXPECT_EQ(checks_->currentBuild(), 0);
  checkManually(manifest("0.0.1", 0));
  EXPECT_EQ(lastRequest().headers.back().second, "Quendo/0.0.0");
  EXPECT_EQ(offers(), 1U);
}

TEST_F(UpdateAnswersTest, OffersNothingAgainstAVersionThatCannotBeRead) {
  platform_.bundle.information["CFBundleShortVersionString"] = "1.5-dev";
  checkManually(newer());
  EXPECT_EQ(messages(), std::vector<std::string>{message("You already have the latest version")});
}

TEST_F(UpdateAnswersTest, HandlesAnAnswerOfAnotherThreadOnTheMainQueue) {
  checks_->checkForUpdates();
  std::thread([this] { platform_.httpSession.tasks.back().completion(HttpResponse{200, newer()}); }).join();
  EXPECT_TRUE(isSilent());
  checks_->checkForUpdates();
  EXPECT_EQ(messages().size(), 1U) << "the check is under way until the main queue has the answer";
  platform_.mainQueue.runPending();
  EXPECT_EQ(offers(), 1U);
}

TEST_F(UpdateAnswersTest, IgnoresAnAnswerThatComesAfterItsEnd) {
  checks_->checkForUpdates();
  checks_.reset();
  answer(newer());
  EXPECT_TRUE(isSilent());
}

}  // namespace
}  // namespace quendo
