#include "fake/HostFixture.h"

namespace quendo {
namespace {

class NavigationTest : public fake::HostTest {
 protected:
  NavigationTest() { start(); }

  bool allows(const std::string& url, bool linkActivated) {
    return page().navigation->decidePolicyForNavigation(NavigationAction{url, linkActivated});
  }
  const std::vector<std::string>& opened() { return platform_.workspace.opened; }
};

TEST_F(NavigationTest, OpensAClickedHttpsLinkOnTheDesktopAndStaysOnThePage) {
  EXPECT_FALSE(allows("https://example.org/a", true));
  EXPECT_FALSE(allows("http://example.org/", true));
  EXPECT_FALSE(allows("HTTPS://example.org/B", true));
  EXPECT_EQ(opened(), (std::vector<std::string>{"https://example.org/a", "http://example.org/",
                                                "HTTPS://example.org/B"}));
}

TEST_F(NavigationTest, OpensNothingForAnAddressAssignedByScript) {
  EXPECT_FALSE(allows("https://example.org/a", false));
  EXPECT_FALSE(allows("mailto:a@example.org", false));
  EXPECT_TRUE(opened().empty());
}

TEST_F(NavigationTest, OpensTheMailProgramForAClickedMailtoLink) {
  EXPECT_FALSE(allows("mailto:a@example.org", true));
  EXPECT_EQ(opened(), std::vector<std::string>{"mailto:a@example.org"});
}

TEST_F(NavigationTest, DoesNothingForAClickedLinkOfAnotherSchemeOrAFileOutside) {
  for (const char* url : {"ftp://example.org/", "file:///etc/passwd", "javascript:alert(1)",
                          "data:text/html,x", "file:///app/share/quendo/web/../../secret", "vscode://x", "",
                          "no url at all", "https", "://", "1https://example.org"}) {
    EXPECT_FALSE(allows(url, true)) << url;
  }
  EXPECT_TRUE(opened().empty());
}

TEST_F(NavigationTest, CancelsANavigationWithoutAnAddress) {
  EXPECT_FALSE(page().navigation->decidePolicyForNavigation(NavigationAction{std::nullopt, true}));
}

TEST_F(NavigationTest, LoadsAFileOfTheBundleInTheWebView) {
  EXPECT_TRUE(allows("file:///app/share/quendo/web/help.html", true));
  EXPECT_TRUE(allows("file:///app/share/quendo/web/index.html", false));
  EXPECT_TRUE(opened().empty());
}

TEST_F(NavigationTest, AllowsAboutAndBlobDocuments) {
  for (const char* url : {"about:blank", "about:srcdoc", "ABOUT:blank", "blob:null/1-2"}) {
    EXPECT_TRUE(allows(url, false)) << url;
  }
}

TEST_F(NavigationTest, NeverMakesASecondWindowButOpensExternalAddresses) {
  page().ui->createWebView("https://example.org/");
  page().ui->createWebView("MAILTO:a@example.org");
  page().ui->createWebView("file:///app/share/quendo/web/index.html");
  page().ui->createWebView("about:blank");
  page().ui->createWebView(std::nullopt);
  EXPECT_EQ(opened(), (std::vector<std::string>{"https://example.org/", "MAILTO:a@example.org"}));
  EXPECT_TRUE(platform_.log.empty());
}

}  // namespace
}  // namespace quendo
