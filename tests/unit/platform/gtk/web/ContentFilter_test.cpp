#include "platform/gtk/web/ContentFilter.h"

#include <gtest/gtest.h>

namespace quendo::gtk {
namespace {

TEST(ContentFilter, RefusesEveryFileButThoseUnderTheRootAndEncodedSlashesEvenThere) {
  EXPECT_EQ(fileAccessRules("/opt/q/web"),
            R"([{"trigger":{"url-filter":"^file:"},"action":{"type":"block"}},)"
            R"({"trigger":{"url-filter":"^file:///opt/q/web/","url-filter-is-case-sensitive":true},)"
            R"("action":{"type":"ignore-previous-rules"}},)"
            R"({"trigger":{"url-filter":"^file:[^?#]*%2f"},"action":{"type":"block"}}])");
}

TEST(ContentFilter, TakesThePathForTextAndNotForAPattern) {
  const std::string rules = fileAccessRules("/a.b+(c)/é web");
  EXPECT_NE(rules.find(R"("^file:///a\\.b\\+\\(c\\)/%C3%A9%20web/")"), std::string::npos) << rules;
}

}  // namespace
}  // namespace quendo::gtk
