#include "bridge/BootstrapScript.h"

#include <gtest/gtest.h>

#include "fake/FakePlatform.h"

namespace quendo {
namespace {

class BootstrapScriptTest : public ::testing::Test {
 protected:
  void save(const std::string& document) {
    store_.save(document, 1, [](bool) {});
    platform_.settle();
  }
  std::string install() {
    bootstrap_.installBootstrapScript(&content_);
    return content_.scripts.size() == 1 ? content_.scripts[0] : "not one script";
  }

  fake::FakePlatform platform_;
  Localization localization_{platform_.defaults, platform_.locale};
  StateStore store_{platform_.files, platform_.storeQueue, platform_.mainQueue, false};
  BootstrapScript bootstrap_{store_, localization_, "https://quendo.example/"};
  fake::FakeUserContent content_{platform_.log};
};

TEST_F(BootstrapScriptTest, EndsWithTheLanguageWhenThereIsNoState) {
  EXPECT_EQ(install(),
            "window.__QUENDO_IS_MAC__ = true;"
            R"(window.__QUENDO_PUBLIC_URL__ = "https:\/\/quendo.example\/";)"
            R"(window.__QUENDO_NATIVE_LANGUAGE__ = "pt";)");
}

TEST_F(BootstrapScriptTest, CarriesTheStateAsBase64) {
  save("{}");
  EXPECT_EQ(install(),
            "window.__QUENDO_IS_MAC__ = true;"
            R"(window.__QUENDO_PUBLIC_URL__ = "https:\/\/quendo.example\/";)"
            R"(window.__QUENDO_NATIVE_LANGUAGE__ = "pt";)"
            "window.__QUENDO_NATIVE_STATE__ = JSON.parse(new TextDecoder().decode(Uint8Array.from("
            "atob('e30='), c => c.charCodeAt(0))));");
}

TEST_F(BootstrapScriptTest, CarriesAnyTextWithoutEscaping) {
  save("{\"t\":\"é'\\\"\\\\\u2028\U0001F600\"}");
  // The document's bytes, encoded with a separate tool.
  EXPECT_NE(install().find("atob('eyJ0Ijoiw6knXCJcXOKAqPCfmIAifQ==')"), std::string::npos);
}

TEST_F(BootstrapScriptTest, NamesTheLanguageInForceAtItsInstallation) {
  platform_.defaults.strings["QuendoLanguage"] = "es";
  EXPECT_NE(install().find(R"(window.__QUENDO_NATIVE_LANGUAGE__ = "es";)"), std::string::npos);
  platform_.defaults.strings["QuendoLanguage"] = "en";
  EXPECT_NE(install().find(R"(window.__QUENDO_NATIVE_LANGUAGE__ = "en";)"), std::string::npos);
}

TEST_F(BootstrapScriptTest, ReplacesTheScriptBeforeWithTheNewestState) {
  install();
  save("{\"n\":2}");
  const std::string script = install();
  EXPECT_NE(script.find("eyJuIjoyfQ=="), std::string::npos);
  EXPECT_EQ(platform_.log, (fake::CallLog{"removeAllUserScripts", "addUserScript", "removeAllUserScripts",
                                          "addUserScript"}));
}

TEST_F(BootstrapScriptTest, WaitsForAWriteThatWasHandedOverBefore) {
  store_.save("{\"late\":1}", 1, [](bool) {});
  EXPECT_NE(install().find("eyJsYXRlIjoxfQ=="), std::string::npos);
}

TEST_F(BootstrapScriptTest, InstallsNothingWithoutAController) {
  bootstrap_.installBootstrapScript(nullptr);
  EXPECT_TRUE(platform_.log.empty());
}

}  // namespace
}  // namespace quendo
