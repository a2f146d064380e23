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

/// A program that can open the shared file.
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

/// Opens the file with a program. It succeeds if the program exits without an error or is still running after
/// `trial`.
struct ShareWithProgram {
  std::size_t program = 0;  ///< Index into the list passed to `SharingOffers::sections`.
  std::string file;
  std::chrono::milliseconds trial{0};
  bool operator==(const ShareWithProgram&) const = default;
};

/// Puts the file itself on the clipboard, as a file manager does.
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

/// The entries of the share picker on platforms without one of their own; otherwise the system provides them.
/// Main thread.
class SharingOffers {
 public:
  virtual ~SharingOffers() = default;
  /// The entries in display order, one inner list per section. `programs`: those registered for the shared
  /// file's type, most likely first.
  virtual std::vector<SharingSection> sections(const std::vector<SharingProgram>& programs) const = 0;
  /// Copies a shared file for a program that may read it long after the share has ended. Returns the path of
  /// the copy, which has the same name; `nullopt` on failure.
  virtual std::optional<std::string> copyForAnotherProgram(const std::string& path) = 0;
};

/// The contents of a share picker.
struct SharedItems {
  std::vector<SharedItem> items;
  /// Used on platforms without a picker of their own. Never null.
  std::shared_ptr<SharingOffers> offersWithoutSystemPicker;
};

class SharingService;

/// Receives a service's outcome. Main thread.
class SharingServiceDelegate {
 public:
  virtual ~SharingServiceDelegate() = default;
  virtual void didShareItems(SharingService& service) = 0;
  virtual void didFailToShareItems(SharingService& service) = 0;
};

/// A chosen way of sharing. It calls its delegate at most once. Main thread.
class SharingService {
 public:
  virtual ~SharingService() = default;
  /// The delegate must outlive the service or be reset to null first.
  virtual void setDelegate(SharingServiceDelegate* delegate) = 0;
};

/// Receives the user's choice. Main thread.
class SharingServicePickerDelegate {
 public:
  virtual ~SharingServicePickerDelegate() = default;
  /// Called once, with null if the picker was dismissed. A chosen service starts after this returns.
  virtual void didChooseSharingService(std::shared_ptr<SharingService> service) = 0;
};

enum class RectEdge : std::uint8_t { minX, minY, maxX, maxY };

/// Lists the ways to share the items. Destroying it closes it. Main thread.
class SharingServicePicker {
 public:
  virtual ~SharingServicePicker() = default;
  /// The delegate must outlive the picker or be reset to null first.
  virtual void setDelegate(SharingServicePickerDelegate* delegate) = 0;
  /// Shows the picker at `rect`, in the web view's coordinates, on `preferredEdge` if there is room.
  virtual void showRelativeTo(const Rect& rect, WebView& webView, RectEdge preferredEdge) = 0;
};

}  // namespace quendo
