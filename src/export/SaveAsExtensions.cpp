#include "export/SaveAsExtensions.h"

#include <algorithm>
#include <string>

#include "files/Path.h"

namespace quendo {

std::size_t saveAsExtensionOf(std::string_view name) {
  std::string extension(pathExtension(name));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char letter) { return letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter; });
  const auto* const row =
      std::find_if(kSaveAsExtensions.begin(), kSaveAsExtensions.end(),
                   [&](const SaveAsExtension& candidate) { return candidate.extension == extension; });
  return static_cast<std::size_t>(row - kSaveAsExtensions.begin());
}

std::string_view saveAsExtensionAt(std::size_t index) {
  return index < kSaveAsExtensions.size() ? kSaveAsExtensions[index].extension : std::string_view();
}

}  // namespace quendo
