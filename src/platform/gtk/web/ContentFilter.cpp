#include "platform/gtk/web/ContentFilter.h"

#include <glib/gstdio.h>
#include <sys/stat.h>

#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/gtk/GObjectPtr.h"

namespace quendo::gtk {
namespace {

std::string regularExpressionFor(std::string_view text) {
  std::string expression;
  for (const char c : text) {
    if (std::string_view(".*+?^${}()|[]\\").find(c) != std::string_view::npos) expression += '\\';
    expression += c;
  }
  return expression;
}

std::string jsonText(std::string_view text) {
  std::string json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  return json + '"';
}

/// A new private directory in the system's directory for temporary files, where others could pre-create any
/// guessable name. Empty on failure.
std::string makeTemporaryDirectory() {
  std::string path = std::string(g_get_tmp_dir()) + "/Quendo-content-filters-XXXXXX";
  return g_mkdtemp_full(path.data(), S_IRWXU) ? path : std::string();
}

void removeDirectory(const std::string& path) {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

/// Tries several directories in turn, since a full or read-only cache must not keep the program from
/// starting; each is checked for previously compiled rules first. The last is a temporary one, removed at
/// once: the active rules are in memory.
class FilterInstallation {
 public:
  FilterInstallation(WebKitUserContentManager* manager, std::string rules,
                     std::function<void(bool)> completion)
      : manager_(addReference(manager)), rules_(std::move(rules)), completion_(std::move(completion)) {
    const GCharPtr digest(g_compute_checksum_for_string(G_CHECKSUM_SHA256, rules_.c_str(), -1));
    identifier_ = digest.get();
    for (const char* directory : {g_get_user_runtime_dir(), g_get_user_cache_dir()}) {
      directories_.push_back(std::string(directory) + "/Quendo/content-filters");
    }
  }

  /// Finally calls `delete this`.
  void tryNextDirectory() {
    std::string directory;
    if (!directories_.empty()) {
      directory = std::move(directories_.back());
      directories_.pop_back();
      g_mkdir_with_parents(directory.c_str(), S_IRWXU);
    } else if (temporary_.empty()) {
      directory = temporary_ = makeTemporaryDirectory();
    }
    if (directory.empty()) {
      finish(nullptr);
      return;
    }
    store_ = adoptReference(webkit_user_content_filter_store_new(directory.c_str()));
    webkit_user_content_filter_store_load(store_.get(), identifier_.c_str(), nullptr, onLoaded, this);
  }

 private:
  static void onLoaded(GObject* source, GAsyncResult* result, gpointer data) {
    auto* self = static_cast<FilterInstallation*>(data);
    auto* store = WEBKIT_USER_CONTENT_FILTER_STORE(source);
    WebKitUserContentFilter* filter = webkit_user_content_filter_store_load_finish(store, result, nullptr);
    if (filter) {
      self->finish(filter);
      return;
    }
    GBytes* rules = g_bytes_new(self->rules_.data(), self->rules_.size());
    webkit_user_content_filter_store_save(store, self->identifier_.c_str(), rules, nullptr, onSaved, self);
    g_bytes_unref(rules);
  }

  static void onSaved(GObject* source, GAsyncResult* result, gpointer data) {
    auto* self = static_cast<FilterInstallation*>(data);
    WebKitUserContentFilter* filter = webkit_user_content_filter_store_save_finish(
        WEBKIT_USER_CONTENT_FILTER_STORE(source), result, nullptr);
    if (filter) {
      self->finish(filter);
    } else {
      self->tryNextDirectory();
    }
  }

  void finish(WebKitUserContentFilter* filter) {
    if (filter) {
      webkit_user_content_manager_add_filter(manager_.get(), filter);
      webkit_user_content_filter_unref(filter);
    }
    if (!temporary_.empty()) removeDirectory(temporary_);
    const auto completion = std::move(completion_);
    delete this;
    completion(filter != nullptr);
  }

  GObjectPtr<WebKitUserContentManager> manager_;
  GObjectPtr<WebKitUserContentFilterStore> store_;
  std::string rules_;
  std::string identifier_;
  std::vector<std::string> directories_;
  std::string temporary_;  ///< The temporary directory to remove at the end, if any.
  std::function<void(bool)> completion_;
};

}  // namespace

// An encoded slash is refused even inside the root: here it is part of one path component, but two once the
// loader has decoded it, which could escape the root through "..". A query or fragment after the path names
// no file.
std::string fileAccessRules(const std::string& readAccessPath) {
  const GCharPtr uri(g_filename_to_uri(readAccessPath.c_str(), nullptr, nullptr));
  const std::string root = "^" + regularExpressionFor(uri.get()) + "/";
  return R"([{"trigger":{"url-filter":"^file:"},"action":{"type":"block"}},)"
         R"({"trigger":{"url-filter":)" +
         jsonText(root) +
         R"(,"url-filter-is-case-sensitive":true},"action":{"type":"ignore-previous-rules"}},)"
         R"({"trigger":{"url-filter":"^file:[^?#]*%2f"},"action":{"type":"block"}}])";
}

void installFileAccessFilter(WebKitUserContentManager* manager, const std::string& readAccessPath,
                             std::function<void(bool)> completion) {
  (new FilterInstallation(manager, fileAccessRules(readAccessPath), std::move(completion)))
      ->tryNextDirectory();
}

}  // namespace quendo::gtk
