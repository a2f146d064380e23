#include "files/Path.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace quendo {

std::string_view lastPathComponent(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  if (path == "/") return path;
  return path.substr(path.rfind('/') + 1);
}

std::string_view deletingLastPathComponent(std::string_view path) {
  while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
  const std::size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {};
  path = path.substr(0, slash);
  while (path.ends_with('/')) path.remove_suffix(1);
  return path.empty() ? "/" : path;
}

std::string_view pathExtension(std::string_view path) {
  const std::string_view name = lastPathComponent(path);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return {};
  return name.substr(dot + 1);
}

std::string_view deletingPathExtension(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  const bool inLastComponent = dot != std::string_view::npos && path.find('/', dot) == std::string_view::npos;
  return inLastComponent ? path.substr(0, dot) : path;
}

std::string standardizedPath(std::string_view path) {
  std::vector<std::string_view> components;
  std::size_t start = 0;
  while (start <= path.size()) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    const std::string_view component = path.substr(start, end - start);
    if (component == "..") {
      if (!components.empty()) components.pop_back();
    } else if (!component.empty() && component != ".") {
      components.push_back(component);
    }
    start = end + 1;
  }
  std::string result;
  for (const std::string_view component : components) {
    result.push_back('/');
    result.append(component);
  }
  return result.empty() ? "/" : result;
}

}  // namespace quendo
