#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bridge/MessageHandlers.h"
#include "bridge/PageCalls.h"
#include "bridge/Surface.h"
#include "export/LockedDirectories.h"
#include "export/SharedCopies.h"
#include "i18n/Localization.h"
#include "platform/Clock.h"
#include "platform/FileManager.h"
#include "platform/Lifetime.h"
#include "platform/MainQueue.h"
#include "platform/Sharing.h"
#include "platform/Toolkit.h"
#include "platform/UuidSource.h"

namespace quendo {

/// Shares a note through what the desktop offers: as a file in a folder for the user alone, with a link to
/// the product's site where the page gives one. One share at a time; each request of the page is answered
/// once, and its folder lives from the picker to that answer. Main thread.
class NoteSharing final : public ShareHandler,
                          public SharingServicePickerDelegate,
                          public SharingServiceDelegate {
 public:
  /// linkHosts: the hosts, in lower case, to which a shared link may point.
  NoteSharing(const Localization& localization, PageCalls& pageCalls, const Surface& surface,
              FileManager& fileManager, MainQueue& mainQueue, const Clock& clock, UuidSource& uuids,
              Toolkit& toolkit, std::vector<std::string> linkHosts);
  ~NoteSharing() override;
  NoteSharing(const NoteSharing&) = delete;
  NoteSharing& operator=(const NoteSharing&) = delete;

  /// Removes the old ones of the copies that were made for other programs. Also done with each share that
  /// makes another copy, and on destruction.
  void removeOldCopies() { copies_->removeOldCopies(); }

  bool shareIsUnderWay() const override { return sharingPicker_ || activeSharingService_; }
  void presentSharePicker(std::string attemptId, std::string title, std::string filename, std::string content,
                          std::string urlString) override;

  void didChooseSharingService(std::shared_ptr<SharingService> service) override;
  void didShareItems(SharingService& service) override { serviceDidFinish(service, true); }
  void didFailToShareItems(SharingService& service) override { serviceDidFinish(service, false); }

 private:
  std::vector<SharedItem> itemsFor(const std::string& title, const std::string& filename,
                                   const std::string& content, const std::string& urlString);
  std::optional<std::string> writeSharedFile(const std::string& filename, const std::string& content);
  bool mayShareLink(const std::string& urlString) const;
  void serviceDidFinish(const SharingService& service, bool success);
  void finishShare(bool success);
  void cleanSharedTemporaryDirectory();

  const Localization& localization_;
  PageCalls& pageCalls_;
  const Surface& surface_;
  FileManager& fileManager_;
  MainQueue& mainQueue_;
  UuidSource& uuids_;
  Toolkit& toolkit_;
  const std::vector<std::string> linkHosts_;

  std::shared_ptr<SharingServicePicker> sharingPicker_;
  std::shared_ptr<SharingService> activeSharingService_;
  std::optional<std::string> activeSharingAttemptId_;
  std::shared_ptr<DelayedTask> sharingTimeout_;
  std::optional<LockedDirectory> sharedTemporaryDirectory_;
  const std::shared_ptr<SharedCopies> copies_;
  Lifetime lifetime_;
};

}  // namespace quendo
