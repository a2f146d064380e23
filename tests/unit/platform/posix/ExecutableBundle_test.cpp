#include "platform/posix/ExecutableBundle.h"

#include <gtest/gtest.h>

#include "platform/SiteConfiguration.h"

namespace quendo::gtk {
namespace {

TEST(ExecutableBundle, FindsTheResourcesBesideTheExecutable) {
  EXPECT_EQ(resourcePathOfExecutable("/opt/quendo here/bin/quendo"), "/opt/quendo here/share/quendo");
  EXPECT_EQ(resourcePathOfExecutable("/usr/bin/quendo"), "/usr/share/quendo");
}

TEST(ExecutableBundle, HasNoResourcesOutsideAnInstalledTree) {
  EXPECT_EQ(resourcePathOfExecutable("/home/a/quendo"), "");
}

TEST(ExecutableBundle, TellsVersionAndBuild) {
  const ExecutableBundle bundle;
  EXPECT_EQ(bundle.infoDictionaryString("CFBundleShortVersionString"), kProductVersion);
  EXPECT_EQ(bundle.infoDictionaryString("CFBundleVersion"), kProductBuild);
  EXPECT_FALSE(bundle.infoDictionaryString("CFBundleName"));
}

}  // namespace
}  // namespace quendo::gtk
