// The minimal program that shows the page: a window and a web view. Anything Quendo costs beyond this is
// Quendo's own.
//
//   bare_window PAGE [--script FILE] [--save-in DIRECTORY] [--deliver FILE]...
//
// Prints "finished SECONDS", as wall-clock time, when the page has loaded. `--script` is a user script that
// runs before the page's own. "quendoState" messages are answered immediately: after writing, flushing and
// renaming the document in a directory, or without doing anything. On SIGUSR2 it reads the files to deliver
// and passes their texts to the page's `deliver`.

#include <fcntl.h>
#include <glib-unix.h>
#include <gtk/gtk.h>
#include <unistd.h>
#include <webkit/webkit.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Options {
  const char* page = nullptr;
  const char* script = nullptr;
  const char* saveIn = nullptr;
  std::vector<const char*> delivered;
};

struct Window {
  Options options;
  WebKitWebView* view = nullptr;
};

void require(bool condition, const char* what) {
  if (condition) return;
  std::perror(what);
  std::exit(1);
}

Options takeOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--script") == 0 && i + 1 < argc) {
      options.script = argv[++i];
    } else if (std::strcmp(argv[i], "--save-in") == 0 && i + 1 < argc) {
      options.saveIn = argv[++i];
    } else if (std::strcmp(argv[i], "--deliver") == 0 && i + 1 < argc) {
      options.delivered.push_back(argv[++i]);
    } else if (!options.page) {
      options.page = argv[i];
    } else {
      options.page = nullptr;
      break;
    }
  }
  if (!options.page) {
    std::fputs("usage: bare_window PAGE [--script FILE] [--save-in DIRECTORY] [--deliver FILE]...\n", stderr);
    std::exit(2);
  }
  return options;
}

void writeFlushRename(const std::string& directory, const char* bytes, gsize size) {
  const std::string temporary = directory + "/plain.tmp";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  require(file != -1, "open");
  while (size > 0) {
    const ssize_t count = ::write(file, bytes, size);
    require(count > 0, "write");
    bytes += count;
    size -= static_cast<gsize>(count);
  }
  require(::fsync(file) == 0 && ::close(file) == 0, "flush");
  require(std::rename(temporary.c_str(), (directory + "/plain.json").c_str()) == 0, "rename");
}

void saveDocument(JSCValue* message, const char* directory) {
  JSCValue* document = jsc_value_object_get_property(message, "serialized");
  GBytes* bytes = jsc_value_to_string_as_bytes(document);
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
  writeFlushRename(directory, data, size);
  g_bytes_unref(bytes);
  g_object_unref(document);
}

void onState(WebKitUserContentManager*, JSCValue* message, gpointer data) {
  const auto* window = static_cast<Window*>(data);
  if (window->options.saveIn) saveDocument(message, window->options.saveIn);
  JSCValue* revision = jsc_value_object_get_property(message, "revision");
  const auto number = static_cast<long long>(jsc_value_to_double(revision));
  g_object_unref(revision);
  const std::string answer = "window.quendoNativeSaveDidFinish?.(true," + std::to_string(number) + ")";
  webkit_web_view_evaluate_javascript(window->view, answer.c_str(), -1, nullptr, nullptr, nullptr, nullptr,
                                      nullptr);
}

gboolean deliver(gpointer data) {
  const auto* window = static_cast<Window*>(data);
  GVariantBuilder texts;
  g_variant_builder_init(&texts, G_VARIANT_TYPE_VARDICT);
  int number = 0;
  for (const char* path : window->options.delivered) {
    gchar* text = nullptr;
    gsize size = 0;
    require(g_file_get_contents(path, &text, &size, nullptr), path);
    require(g_utf8_validate(text, static_cast<gssize>(size), nullptr), path);
    const std::string name = "text" + std::to_string(number++);
    g_variant_builder_add(&texts, "{sv}", name.c_str(), g_variant_new_take_string(text));
  }
  webkit_web_view_call_async_javascript_function(window->view, "deliver([text0, text1, text2]);", -1,
                                                 g_variant_builder_end(&texts), nullptr, nullptr, nullptr,
                                                 nullptr, nullptr);
  return G_SOURCE_CONTINUE;
}

void onLoadChanged(WebKitWebView*, WebKitLoadEvent event, gpointer) {
  if (event != WEBKIT_LOAD_FINISHED) return;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  std::printf("finished %.6f\n", std::chrono::duration<double>(now).count());
  std::fflush(stdout);
}

void addScript(WebKitUserContentManager* content, const char* path) {
  gchar* source = nullptr;
  require(g_file_get_contents(path, &source, nullptr, nullptr), path);
  WebKitUserScript* script =
      webkit_user_script_new(source, WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                             WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START, nullptr, nullptr);
  webkit_user_content_manager_add_script(content, script);
  webkit_user_script_unref(script);
  g_free(source);
}

/// Without the handlers the page would assume a browser and start differently.
WebKitUserContentManager* makeContent(Window& window) {
  WebKitUserContentManager* content = webkit_user_content_manager_new();
  for (const char* name :
       {"quendoState", "quendoExport", "quendoSaveAs", "quendoClipboard", "quendoShare", "quendoLanguage"}) {
    webkit_user_content_manager_register_script_message_handler(content, name, nullptr);
  }
  g_signal_connect(content, "script-message-received::quendoState", G_CALLBACK(onState), &window);
  if (window.options.script) addScript(content, window.options.script);
  return content;
}

}  // namespace

int main(int argc, char** argv) {
  Window window;
  window.options = takeOptions(argc, argv);
  gtk_init();
  WebKitUserContentManager* content = makeContent(window);
  window.view = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "user-content-manager", content, nullptr));
  g_signal_connect(window.view, "load-changed", G_CALLBACK(onLoadChanged), nullptr);
  GtkWidget* shown = gtk_window_new();
  gtk_window_set_title(GTK_WINDOW(shown), "Bare window");
  gtk_window_set_default_size(GTK_WINDOW(shown), 1320, 820);
  gtk_window_set_child(GTK_WINDOW(shown), GTK_WIDGET(window.view));
  gtk_window_present(GTK_WINDOW(shown));
  gchar* uri = g_filename_to_uri(window.options.page, nullptr, nullptr);
  require(uri != nullptr, window.options.page);
  webkit_web_view_load_uri(window.view, uri);
  g_free(uri);
  // SIGUSR1 is taken: JavaScriptCore's garbage collector suspends threads with it.
  g_unix_signal_add(SIGUSR2, deliver, &window);
  GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
  g_signal_connect_swapped(shown, "destroy", G_CALLBACK(g_main_loop_quit), loop);
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
  g_object_unref(content);
}
