#pragma once

#include <memory>

#include "platform/Sharing.h"
#include "platform/gtk/sharing/GtkSharingService.h"

namespace quendo::gtk {

/// Opens a new message of the user's mail program, with a copy of the attachment: through the desktop portal,
/// or with xdg-email where no portal does it. It has succeeded when the portal, or xdg-email, says that the
/// mail program took it.
std::shared_ptr<GtkSharingService> makeEmailService(ShareByMail mail, std::shared_ptr<SharingOffers> offers);

}  // namespace quendo::gtk
