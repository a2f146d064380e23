#include "export/SaveNames.h"

#include "files/Path.h"
#include "text/Utf8.h"

namespace quendo {

std::string withExtension(std::string path, std::string_view extension) {
  const bool wanted = !extension.empty() && pathExtension(path).empty();
  if (wanted && isValidUtf8(lastPathComponent(path))) path.append(".").append(extension);
  return path;
}

std::string replacingExtension(std::string_view typed, std::string_view extension) {
  std::string name(deletingPathExtension(typed));
  if (name.empty() || name.ends_with('/')) name += "nota";
  return name.append(".").append(extension);
}

}  // namespace quendo
