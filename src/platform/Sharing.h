#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/Rect.h"
#include "platform/WebView.h"

namespace quendo {

/// One thing to share.
struct SharedItem {
  enum class Kind : std::uint8_t { file, link, text };
  Kind kind = Kind::text;
  std::string value;  ///< A file's path, a URL, or a text.
  bool operator==(const SharedItem&) const = default;
};

/// A program that the desktop can open a file with.
struct SharingProgram {
  std::string name;
  bool isThisProgram = false;
};

/// Opens a new message in the user's mail program, with the file attached.
struct ShareByMail {
  std::string subject;  ///< One line.
  std::string body;
  std::optional<std::string> attachment;  ///< The path of a shared file.
  bool operator==(const ShareByMail&) const = default;
};

/// Opens the file with a program. It has taken the file when it ends without an error, or still runs after
/// `trial`.
struct ShareWithProgram {
  std::size_t program = 0;  ///< Among those that `SharingOffers::sections` was given.
  std::string file;
  std::chrono::milliseconds trial{0};
  bool operator==(const ShareWithProgram&) const = default;
};

/// Offers the file itself on the clipboard, as a file manager does.
struct CopySharedFile {
  std::string file;
  bool operator==(const CopySharedFile&) const = default;
};

struct CopySharedText {
  std::string text;
  bool operator==(const CopySharedText&) const = default;
};

/// One entry of a share picker.
struct SharingOffer {
  std::string title;
  std::variant<ShareByMail, ShareWithProgram, CopySharedFile, CopySharedText> action;
  bool operator==(const SharingOffer&) const = default;
};

using SharingSection = std::vector<SharingOffer>;

/// What a picker offers on a platform that has none of its own; where the system has one, the system decides.
/// Main thread.
class SharingOffers {
 public:
  virtual ~SharingOffers() = default;
  /// The entries in the order in which they are listed, each inner list a section. `programs`: those that the
  /// desktop has registered for the type of the shared file, the likeliest first.
  virtual std::vector<SharingSection> sections(const std::vector<SharingProgram>& programs) const = 0;
  /// Copies a shared file for a program that may read it long after the share has ended. The path of the
  /// copy, which has the same name; absent when it could not be made.
  virtual std::optional<std::string> copyForAnotherProgram(const std::string& path) = 0;
};

/// What a share picker is given.
struct SharedItems {
  std::vector<SharedItem> items;
  /// For a platform without a picker of its own. Never null.
  std::shared_ptr<SharingOffers> offersWithoutSystemPicker;
};

class SharingService;

/// Told how a service ended. Main thread.
class SharingServiceDelegate {
 public:
  virtual ~SharingServiceDelegate() = default;
  virtual void didShareItems(SharingService& service) = 0;
  virtual void didFailToShareItems(SharingService& service) = 0;
};

/// One way of sharing that the user chose. It reports to its delegate once, or never. Main thread.
class SharingService {
 public:
  virtual ~SharingService() = default;
  /// The delegate must outlive the service, or be taken back with null.
  virtual void setDelegate(SharingServiceDelegate* delegate) = 0;
};

class SharingServicePickerDelegate {
 public:
  virtual ~SharingServicePickerDelegate() = default;
  /// Called once; with null when the picker was dismissed. A chosen service begins after this returns.
  virtual void didChooseSharingService(std::shared_ptr<SharingService> service) = 0;
};

enum class RectEdge : std::uint8_t { minX, minY, maxX, maxY };

/// Lists what the desktop can do with the items. Destroying it takes it from the screen. Main thread.
class SharingServicePicker {
 public:
  virtual ~SharingServicePicker() = default;
  virtual void setDelegate(SharingServicePickerDelegate* delegate) = 0;
  /// Shows it at `rect` of the web view, in its coordinates, beside that edge where there is room.
  virtual void showRelativeTo(const Rect& rect, WebView& webView, RectEdge preferredEdge) = 0;
};

}  // namespace quendo
