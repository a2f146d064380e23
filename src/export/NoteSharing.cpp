#include "export/NoteSharing.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "files/SafeFilename.h"
#include "files/WriteTextFile.h"
#include "i18n/NativeLanguage.h"
#include "text/StrictUrl.h"

namespace quendo {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds kServiceLimit = 1800s;
constexpr std::string_view kDirectoryPrefix = "Quendo-Share-";
// The picker points at a spot in the lower right corner, this far from the web view's edges.
constexpr int kAnchorInset = 52;

bool isUpperCaseUuid(std::string_view text) {
  constexpr std::string_view kPattern = "XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX";
  return text.size() == kPattern.size() &&
         std::equal(text.begin(), text.end(), kPattern.begin(), [](char character, char place) {
           if (place == '-') return character == '-';
           return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F');
         });
}

bool isShareDirectoryName(std::string_view name) {
  return name.starts_with(kDirectoryPrefix) && isUpperCaseUuid(name.substr(kDirectoryPrefix.size()));
}

}  // namespace

NoteSharing::NoteSharing(const Localization& localization, PageCalls& pageCalls, const Surface& surface,
                         FileManager& fileManager, MainQueue& mainQueue, UuidSource& uuids, Toolkit& toolkit,
                         std::vector<std::string> linkHosts)
    : localization_(localization),
      pageCalls_(pageCalls),
      surface_(surface),
      fileManager_(fileManager),
      mainQueue_(mainQueue),
      uuids_(uuids),
      toolkit_(toolkit),
      linkHosts_(std::move(linkHosts)) {}

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
  activeSharingAttemptId_ = std::move(attemptId);
  cleanSharedTemporaryDirectory();
  removeAbandonedDirectories();
  std::vector<SharedItem> items = itemsFor(title, filename, content, urlString);
  if (items.empty() || !surface_.webView) {
    finishShare(false);
    return;
  }
  sharingPicker_ = toolkit_.makeSharingServicePicker(
      {std::move(items), std::move(title), std::string(rawValue(localization_.current()))});
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
  std::string directory =
      fileManager_.temporaryDirectory() + "/" + std::string(kDirectoryPrefix) + uuids_.randomUuid();
  if (!fileManager_.createPrivateDirectory(directory)) return std::nullopt;
  std::string path = directory + "/" + safeFilename(filename);
  if (!writeTextFile(fileManager_, path, content)) {
    fileManager_.removeDirectory(directory);
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
    fileManager_.removeDirectory(*directory);
}

// A process that was killed in the middle of a share could not remove its folder.
void NoteSharing::removeAbandonedDirectories() {
  const std::string parent = fileManager_.temporaryDirectory();
  for (const std::string& name : fileManager_.ownDirectories(parent)) {
    if (isShareDirectoryName(name))
      fileManager_.removeDirectory(std::string(parent).append("/").append(name));
  }
}

}  // namespace quendo
