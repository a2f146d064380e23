#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quendo {

/// A panel in which the user names a file that is to be written. Main thread.
class SavePanel {
 public:
  virtual ~SavePanel() = default;
  /// What stands in the name field: a name, or a path where the platform takes one.
  virtual std::string nameFieldStringValue() const = 0;
  virtual void setNameFieldStringValue(const std::string& name) = 0;
  /// Index of the item that is selected in the accessory's pop-up; 0 without an accessory.
  virtual std::size_t indexOfSelectedItem() const = 0;
};

/// What a save panel shows and does.
struct SavePanelConfiguration {
  std::string title;
  std::string prompt;  ///< Label of the confirming button.
  std::string cancel;  ///< Label of the other one, where the platform has none in the interface's language.
  /// The suggested name. It is literal: no part of it means another folder.
  std::string nameFieldStringValue;
  /// The path of the folder that is shown first, asked for when the panel opens. Empty, or null, leaves it to
  /// the platform, as does a panel that runs in another process and has a folder of its own.
  std::function<std::string()> startingFolder;
  /// The one type of files that is shown beside the new one; see ContentTypes.
  std::string allowedContentType;
  bool canCreateDirectories = true;
  bool allowsOtherFileTypes = false;

  /// A row below the files: a label and a pop-up, centred vertically.
  struct Accessory {
    static constexpr int kSpacing = 10;       ///< Between label and pop-up, in pixels.
    static constexpr int kVerticalInset = 8;  ///< Above and below, in pixels; none at the sides.
    std::string label;
    std::vector<std::string> items;
    std::size_t selected = 0;
    /// The user selected another item.
    std::function<void(SavePanel&)> didChange;
  };
  std::optional<Accessory> accessory;

  /// The path that is written when the user confirms `path`, which is absolute: the same, or one in the same
  /// folder under another name. The panel asks the user before a file of that name is replaced. Applying it
  /// again changes nothing. Null leaves paths as they are.
  std::function<std::string(const SavePanel&, std::string path)> pathToWrite;
};

/// How a save panel ended.
struct SavePanelResult {
  bool confirmed = false;
  /// The absolute path to write. Absent when the user cancelled, and when the place they confirmed has no
  /// path on this machine.
  std::optional<std::string> path;
};

/// Called once, with the panel still there.
using SavePanelCompletion = std::function<void(SavePanel&, const SavePanelResult&)>;

}  // namespace quendo
