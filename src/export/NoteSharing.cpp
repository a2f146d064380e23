#include "export/NoteSharing.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "export/OffersWithoutSystemPicker.h"
#include "files/SafeFilename.h"
#include "files/WriteTextFile.h"
#include "text/StrictUrl.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kServiceLimit = 1800s;
constexpr std::string_view kDirectoryPrefix = "Quendo-Share-";
// The picker points at a spot in the lower right corner, this far from the web view's edges.
constexpr int kAnchorInset = 52;

}  // namespace

NoteSharing::NoteSharing(const Localization& localization, PageCalls& pageCalls, const Surface& surface,
                         FileManager& fileManager, MainQueue& mainQueue, const Clock& clock,
                         UuidSource& uuids, Toolkit& toolkit, std::vector<std::string> linkHosts)
    : localization_(localization),
      pageCalls_(pageCalls),
      surface_(surface),
      fileManager_(fileManager),
      mainQueue_(mainQueue),
      uuids_(uuids),
      toolkit_(toolkit),
      linkHosts_(std::move(linkHosts)),
      copies_(std::make_shared<SharedCopies>(fileManager, clock, uuids)) {}

NoteSharing::~NoteSharing() {
  if (sharingPicker_) sharingPicker_->setDelegate(nullptr);
  if (activeSharingService_) activeSharingService_->setDelegate(nullptr);
  cleanSharedTemporaryDirectory();
}

void NoteSharing::presentSharePicker(std::string attemptId, std::string title, std::string filename,
                                     std::string content, std::string urlString) {
  if (shareIsUnderWay() || !surface_.window) {
    pageCalls_.nativeShareDidFinish(false, attemptId);
    return;
  }
  // A text without a UTF-8 form fails here and not at the file, where the text itself would be offered in the
  // file's stead, cut or damaged by whatever encodes it last.
  if (!isValidUtf8(title) || !isValidUtf8(filename) || !isValidUtf8(content)) {
    pageCalls_.nativeShareDidFinish(false, attemptId);
    return;
  }
  activeSharingAttemptId_ = std::move(attemptId);
  cleanSharedTemporaryDirectory();
  // A process that was killed in the middle of a share could not remove its folder.
  removeAbandonedDirectories(fileManager_, fileManager_.temporaryDirectory(), kDirectoryPrefix,
                             [](const std::string&) { return true; });
  std::vector<SharedItem> items = itemsFor(title, filename, content, urlString);
  if (items.empty() || !surface_.webView) {
    finishShare(false);
    return;
  }
  auto offers = std::make_shared<OffersWithoutSystemPicker>(items, std::move(title), std::move(content),
                                                            localization_, copies_);
  sharingPicker_ = toolkit_.makeSharingServicePicker({std::move(items), std::move(offers)});
  sharingPicker_->setDelegate(this);
  const Rect bounds = surface_.webView->bounds();
  const Rect anchor{std::max(0, bounds.x + bounds.width - kAnchorInset),
                    std::max(0, bounds.y + bounds.height - kAnchorInset), 1, 1};
  sharingPicker_->showRelativeTo(anchor, *surface_.webView, RectEdge::minY);
}

std::vector<SharedItem> NoteSharing::itemsFor(const std::string& title, const std::string& filename,
                                              const std::string& content, const std::string& urlString) {
  std::vector<SharedItem> items;
  if (mayShareLink(urlString)) items.push_back({SharedItem::Kind::link, urlString});
  if (auto path = writeSharedFile(filename, content)) {
    items.insert(items.begin(), {SharedItem::Kind::file, std::move(*path)});
  } else {
    items.push_back({SharedItem::Kind::text, title + "\n\n" + content});
  }
  return items;
}

std::optional<std::string> NoteSharing::writeSharedFile(const std::string& filename,
                                                        const std::string& content) {
  auto directory =
      createLockedDirectory(fileManager_, uuids_, fileManager_.temporaryDirectory(), kDirectoryPrefix);
  if (!directory) return std::nullopt;
  std::string path = directory->path + "/" + safeFilename(filename);
  if (!writeTextFile(fileManager_, path, content)) {
    fileManager_.removeDirectory(directory->path);
    return std::nullopt;
  }
  sharedTemporaryDirectory_ = std::move(directory);
  return path;
}

bool NoteSharing::mayShareLink(const std::string& urlString) const {
  const auto url = parseStrictUrl(urlString);
  return url && url->scheme == "https" && url->host &&
         std::find(linkHosts_.begin(), linkHosts_.end(), *url->host) != linkHosts_.end();
}

void NoteSharing::didChooseSharingService(std::shared_ptr<SharingService> service) {
  // Its own call is still on the stack.
  mainQueue_.async([ended = std::exchange(sharingPicker_, nullptr)] {});
  if (!service) {
    finishShare(false);
    return;
  }
  service->setDelegate(this);
  sharingTimeout_ =
      mainQueue_.asyncAfter(kServiceLimit, lifetime_.guard([this, chosen = std::weak_ptr(service)] {
        const auto still = chosen.lock();
        if (still && still == activeSharingService_) finishShare(false);
      }));
  activeSharingService_ = std::move(service);
}

// A report of a service that was given up comes too late for everybody.
void NoteSharing::serviceDidFinish(const SharingService& service, bool success) {
  if (activeSharingService_.get() == &service) finishShare(success);
}

void NoteSharing::finishShare(bool success) {
  const std::string attemptId = std::exchange(activeSharingAttemptId_, std::nullopt).value_or("");
  if (sharingTimeout_) std::exchange(sharingTimeout_, nullptr)->cancel();
  if (const auto ended = std::exchange(activeSharingService_, nullptr)) {
    ended->setDelegate(nullptr);
    mainQueue_.async([ended] {});
  }
  pageCalls_.nativeShareDidFinish(success, attemptId);
  cleanSharedTemporaryDirectory();
}

void NoteSharing::cleanSharedTemporaryDirectory() {
  if (const auto directory = std::exchange(sharedTemporaryDirectory_, std::nullopt))
    fileManager_.removeDirectory(directory->path);
}

}  // namespace quendo
