#include "platform/gtk/application/GLibUuidSource.h"

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {

std::string GLibUuidSource::randomUuid() {
  const GCharPtr lower(g_uuid_string_random());
  const GCharPtr upper(g_ascii_strup(lower.get(), -1));
  return upper.get();
}

}  // namespace quendo::gtk
