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
  std::string nameFieldStringValue;
  /// The one type of files that is shown beside the new one; see ContentTypes.
  std::string allowedContentType;
  bool canCreateDirectories = true;
  bool allowsOtherFileTypes = false;

  /// A row below the files: a label and a pop-up.
  struct Accessory {
    std::string label;
    std::vector<std::string> items;
    std::size_t selected = 0;
    /// The user selected another item.
    std::function<void(SavePanel&)> didChange;
  };
  std::optional<Accessory> accessory;

  /// The path that is written when the user confirms another one, by adding an extension for instance. The
  /// panel asks before it is replaced. Null leaves paths as they are.
  std::function<std::string(const SavePanel&, std::string path)> pathToWrite;
};

/// Told the path to write when the user confirmed, or nothing when they cancelled. Called once; the panel
/// is still there.
using SavePanelCompletion = std::function<void(SavePanel&, std::optional<std::string> path)>;

}  // namespace quendo
