#pragma once

#include <cstdint>
#include <memory>
#include <string>
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

/// What a share picker offers, and in which language.
struct SharedItems {
  std::vector<SharedItem> items;
  std::string title;         ///< Of what is shared, for the subject of a message.
  std::string languageCode;  ///< "pt", "en" or "es".
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
