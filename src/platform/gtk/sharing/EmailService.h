#pragma once

#include <memory>

#include "platform/Sharing.h"
#include "platform/gtk/sharing/GtkSharingService.h"

namespace quendo::gtk {

/// Opens a new message in the user's mail program, with a copy of the attachment: through the desktop portal,
/// or with xdg-email if no portal supports it. It succeeds once the portal or xdg-email reports that the mail
/// program accepted the message.
std::shared_ptr<GtkSharingService> makeEmailService(ShareByMail mail, std::shared_ptr<SharingOffers> offers);

}  // namespace quendo::gtk
