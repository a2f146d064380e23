#include "platform/gtk/application/GioContentTypes.h"

#include <gio/gio.h>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

std::optional<std::string> GioContentTypes::typeForExtension(std::string_view extension) const {
  const std::string name = "x." + std::string(extension);
  gboolean uncertain = FALSE;
  const GCharPtr type(g_content_type_guess(name.c_str(), nullptr, 0, &uncertain));
  if (!type || uncertain || g_content_type_is_unknown(type.get())) return std::nullopt;
  return type.get();
}

}  // namespace quendo::gtk
