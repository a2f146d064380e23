#include "bridge/BootstrapScript.h"

#include <optional>

#include "bridge/JavaScriptLiteral.h"
#include "text/Base64.h"

namespace quendo {

void BootstrapScript::installBootstrapScript(UserContentController* userContentController) {
  if (userContentController) userContentController->removeAllUserScripts();
  std::string source =
      "window.__QUENDO_IS_MAC__ = true;window.__QUENDO_PUBLIC_URL__ = " + javascriptLiteral(publicUrl_) +
      ";window.__QUENDO_NATIVE_LANGUAGE__ = " + javascriptLiteral(rawValue(localization_.current())) + ";";
  // The base64 carries any text into the page without escaping: quotes, line separators, all of it. What
  // the store returns is UTF-8 already.
  const std::optional<std::string> state = store_.load();
  if (state) {
    static constexpr std::string_view kPrefix =
        "window.__QUENDO_NATIVE_STATE__ = JSON.parse(new TextDecoder().decode(Uint8Array.from(atob('";
    static constexpr std::string_view kSuffix = "'), c => c.charCodeAt(0))));";
    source.reserve(source.size() + kPrefix.size() + (state->size() + 2) / 3 * 4 + kSuffix.size());
    source += kPrefix;
    appendBase64(source, *state);
    source += kSuffix;
  }
  if (userContentController) userContentController->addUserScript(source);
}

}  // namespace quendo
