#include "bridge/BootstrapScript.h"

#include <optional>

#include "bridge/JavaScriptLiteral.h"
#include "bridge/PageProtocol.h"
#include "text/Base64.h"

namespace quendo {
namespace {

std::string assignment(const protocol::Global& global) {
  return "window." + std::string(global.name) + " = ";
}

}  // namespace

void BootstrapScript::installBootstrapScript(UserContentController* userContentController) {
  if (userContentController) userContentController->removeAllUserScripts();
  std::string source = assignment(protocol::kIsMac) + "true;" + assignment(protocol::kPublicUrl) +
                       javascriptLiteral(publicUrl_) + ";" + assignment(protocol::kNativeLanguage) +
                       javascriptLiteral(rawValue(localization_.current())) + ";";
  // Base64 needs no escaping, whatever the text contains: quotes, line separators and so on. What the store
  // returns is already UTF-8.
  if (const std::optional<std::string> state = store_.load()) {
    static constexpr std::string_view kPrefix = "JSON.parse(new TextDecoder().decode(Uint8Array.from(atob('";
    static constexpr std::string_view kSuffix = "'), c => c.charCodeAt(0))));";
    const std::string target = assignment(protocol::kNativeState);
    source.reserve(source.size() + target.size() + kPrefix.size() + (state->size() + 2) / 3 * 4 +
                   kSuffix.size());
    source += target;
    source += kPrefix;
    appendBase64(source, *state);
    source += kSuffix;
  }
  if (userContentController) userContentController->addUserScript(source);
}

}  // namespace quendo
