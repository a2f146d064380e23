#include "platform/gtk/web/SpellChecking.h"

#include <string_view>
#include <vector>

namespace quendo::gtk {
namespace {

constexpr guint kDelayMilliseconds = 1000;

std::string_view withoutCountry(std::string_view name) {
  return name.substr(0, name.find('_'));
}

/// The names of the desktop's languages, the first of each language or all of them, for the web view.
std::vector<const char*> languageNames(bool all) {
  std::vector<const char*> names;
  for (const char* const* listed = g_get_language_names(); *listed; ++listed) {
    const std::string_view name = *listed;
    // The list has each name also with its encoding, and ends with a language that nobody writes.
    bool isNeeded = name != "C" && name != "POSIX" && name.find_first_of(".@") == std::string_view::npos;
    for (const char* one : names) isNeeded = isNeeded && (all || withoutCountry(one) != withoutCountry(name));
    if (isNeeded) names.push_back(*listed);
  }
  names.push_back(nullptr);
  return names;
}

gboolean checkSpelling(gpointer data) {
  auto* context = static_cast<WebKitWebContext*>(data);
  // A dictionary takes up to a third of a second to load, so that one language is not loaded for its country
  // and by itself as well.
  webkit_web_context_set_spell_checking_languages(context, languageNames(false).data());
  if (!webkit_web_context_get_spell_checking_languages(context)) {
    webkit_web_context_set_spell_checking_languages(context, languageNames(true).data());
  }
  webkit_web_context_set_spell_checking_enabled(context, TRUE);
  return G_SOURCE_REMOVE;
}

}  // namespace

void checkSpellingSoon(WebKitWebContext* context) {
  if (webkit_web_context_get_spell_checking_enabled(context)) return;
  // The main thread loads the dictionaries, and the first frames must not wait for them.
  g_timeout_add_full(G_PRIORITY_LOW, kDelayMilliseconds, checkSpelling, g_object_ref(context),
                     g_object_unref);
}

}  // namespace quendo::gtk
