#include "platform/gtk/web/WebKitSession.h"

#include <string>

#include "platform/gtk/web/WebKitRequests.h"

namespace quendo::gtk {

GObjectPtr<WebKitNetworkSession> makeNetworkSession(WebsiteDataStore store) {
  const std::string data = std::string(g_get_user_data_dir()) + "/Quendo-Website-Data";
  const std::string cache = std::string(g_get_user_cache_dir()) + "/Quendo/website";
  auto session = adoptReference(store == WebsiteDataStore::nonPersistent
                                    ? webkit_network_session_new_ephemeral()
                                    : webkit_network_session_new(data.c_str(), cache.c_str()));
  answerRequestsByTable(session.get());
  return session;
}

}  // namespace quendo::gtk
