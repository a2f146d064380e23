#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quendo {

/// A panel for choosing where to save a file. Main thread.
class SavePanel {
 public:
  virtual ~SavePanel() = default;
  /// Contents of the name field: a name, or a path if the platform accepts one.
  virtual std::string nameFieldStringValue() const = 0;
  virtual void setNameFieldStringValue(const std::string& name) = 0;
  /// Index of the selected item in the accessory's pop-up; 0 without an accessory.
  virtual std::size_t indexOfSelectedItem() const = 0;
};

/// Contents and behaviour of a save panel. The callbacks run on the main thread.
struct SavePanelConfiguration {
  std::string title;
  std::string prompt;  ///< Label of the confirm button.
  std::string cancel;  ///< Label of the cancel button, on platforms that do not localise it themselves.
  /// The suggested name, taken literally: no part of it selects another folder.
  std::string nameFieldStringValue;
  /// Path of the initial folder, called when the panel opens. If the function is null or returns an empty
  /// string, or the panel runs in another process that has its own folder, the platform chooses.
  std::function<std::string()> startingFolder;
  /// The one file type that the panel shows; see ContentTypes.
  std::string allowedContentType;
  bool canCreateDirectories = true;
  bool allowsOtherFileTypes = false;

  /// A row below the file list: a label and a pop-up, centred vertically.
  struct Accessory {
    static constexpr int kSpacing = 10;       ///< Between label and pop-up, in pixels.
    static constexpr int kVerticalInset = 8;  ///< Above and below, in pixels; none at the sides.
    std::string label;
    std::vector<std::string> items;
    std::size_t selected = 0;
    /// Called when the user selects another item.
    std::function<void(SavePanel&)> didChange;
  };
  std::optional<Accessory> accessory;

  /// Maps the absolute path the user confirmed to the one to write: the same path, or another name in the
  /// same folder. A panel that cannot put the other name into effect unseen, because the user or the system
  /// granted only the confirmed one, shows it and has it confirmed again; in any case it asks before
  /// replacing a file of the name that is written. Must be idempotent. Null leaves paths unchanged.
  std::function<std::string(const SavePanel&, std::string path)> pathToWrite;
  std::string writtenPath(const SavePanel& panel, std::string confirmed) const {
    return pathToWrite ? pathToWrite(panel, std::move(confirmed)) : confirmed;
  }
};

/// Result of a save panel.
struct SavePanelResult {
  bool confirmed = false;
  /// The absolute path to write. `nullopt` if the user cancelled or confirmed a location that has no local
  /// path.
  std::optional<std::string> path;
};

/// Called once, on the main thread; the panel still exists during the call.
using SavePanelCompletion = std::function<void(SavePanel&, const SavePanelResult&)>;

}  // namespace quendo
