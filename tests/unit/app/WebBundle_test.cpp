#include "app/WebBundle.h"

#include <gtest/gtest.h>

namespace quendo {
namespace {

TEST(WebBundle, CountsTheWebRootAndWhatIsUnderItAsInside) {
  WebBundle bundle;
  bundle.setResourcePath("/app/share/quendo");
  for (const char* url :
       {"file:///app/share/quendo/web", "file:///app/share/quendo/web/",
        "file:///app/share/quendo/web/index.html", "file:///app/share/quendo/web/a/b.js?x#y",
        "FILE:///app/share/quendo/web/index.html", "file://localhost/app/share/quendo/web/x",
        "file:///app/share/quendo/../quendo/web/./x", "file:///app//share/quendo/web//x",
        "file:///app/share/quendo/web/..%2e", "file:///app/share/quendo/%77eb/x"}) {
    EXPECT_TRUE(bundle.isInsideWebBundle(url)) << url;
  }
}

TEST(WebBundle, JudgesAPathAfterStandardisingIt) {
  WebBundle bundle;
  bundle.setResourcePath("/app/share/quendo");
  for (const char* url :
       {"file:///app/share/quendo/web/../secret", "file:///app/share/quendo/web/%2e%2e/secret",
        "file:///app/share/quendo/web/..%2fsecret", "file:///app/share/quendo/web/a/../../x",
        "file:///app/share/quendo/web2/index.html", "file:///app/share/quendo/webx",
        "file:///app/share/quendo", "file:///etc/passwd", "file:///",
        "file:", "file:///app/share/quendo/web%00/../x", "file:///app/share/quendo/WEB/index.html",
        "file://host/app/share/quendo/web/index.html"}) {
    EXPECT_FALSE(bundle.isInsideWebBundle(url)) << url;
  }
}

TEST(WebBundle, NeverCountsAUrlThatIsNoFileAsInside) {
  WebBundle bundle;
  bundle.setResourcePath("/app/share/quendo");
  for (const char* url :
       {"https://quendo.example/app/share/quendo/web", "about:blank", "blob:file:///app/share/quendo/web/1",
        "/app/share/quendo/web/index.html", "", "data:text/html,file:///app/share/quendo/web"}) {
    EXPECT_FALSE(bundle.isInsideWebBundle(url)) << url;
  }
}

TEST(WebBundle, CountsNothingAsInsideBeforeTheWebRootIsKnown) {
  const WebBundle bundle;
  EXPECT_FALSE(bundle.isInsideWebBundle("file:///app/share/quendo/web/index.html"));
}

}  // namespace
}  // namespace quendo
