#pragma once

#include <memory>
#include <string>

#include "platform/gtk/sharing/GtkSharingServices.h"

namespace quendo::gtk {

/// Opens a new message of the user's mail program, with the file attached: through the desktop portal, or
/// with xdg-email where no portal does it. Without a file its text is the message. It has succeeded when the
/// portal, or xdg-email, says that the mail program took it.
std::shared_ptr<GtkSharingService> makeEmailService(std::string title, std::string subject, std::string file,
                                                    std::string text, const std::string& link);

}  // namespace quendo::gtk
