#include "platform/gtk/rendering/OpenGlProbe.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/posix/FileCalls.h"

namespace quendo::gtk {
namespace {

using std::chrono::steady_clock;

constexpr std::chrono::milliseconds kAnswerLimit{500};

/// EGL's functions, from the library that GTK would load.
class Egl {
 public:
  Egl() : library_(::dlopen("libEGL.so.1", RTLD_NOW | RTLD_LOCAL)) {
    if (library_) find_ = reinterpret_cast<decltype(find_)>(::dlsym(library_, "eglGetProcAddress"));
  }
  explicit operator bool() const { return find_ != nullptr; }

  template <typename Function>
  Function function(const char* name) const {
    return reinterpret_cast<Function>(find_(name));
  }

 private:
  void* library_;
  __eglMustCastToProperFunctionPointerType (*find_)(const char*) = nullptr;
};

/// Device files of the kernel's own drivers, of virtual machines on Windows, and of drivers that do without
/// the kernel's.
constexpr std::array<std::string_view, 8> kDevices = {"dri",  "nvidia", "nvhost",  "dxg",
                                                      "mali", "kgsl",   "galcore", "pvr"};

/// Whether there is no card at all, which is known without loading a driver.
bool hasOnlyTheProcessor(const Egl& egl) {
  const auto queryDevices = egl.function<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
  const auto queryString = egl.function<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
  if (!queryDevices || !queryString) return false;
  std::array<EGLDeviceEXT, 16> devices{};
  EGLint count = 0;
  if (!queryDevices(static_cast<EGLint>(devices.size()), devices.data(), &count)) return false;
  for (EGLint i = 0; i < count; ++i) {
    const char* extensions = queryString(devices[static_cast<std::size_t>(i)], EGL_EXTENSIONS);
    if (!extensions ||
        std::string_view(extensions).find("EGL_MESA_device_software") == std::string_view::npos)
      return false;
  }
  return count > 0;
}

std::string textOf(const unsigned char* text) {
  return text ? reinterpret_cast<const char*>(text) : "";
}

std::optional<OpenGlDriver> driverOf(const Egl& egl) {
  const auto getDisplay = egl.function<EGLDisplay (*)(EGLNativeDisplayType)>("eglGetDisplay");
  const auto initialize = egl.function<EGLBoolean (*)(EGLDisplay, EGLint*, EGLint*)>("eglInitialize");
  const auto bindApi = egl.function<EGLBoolean (*)(EGLenum)>("eglBindAPI");
  const auto createContext =
      egl.function<EGLContext (*)(EGLDisplay, EGLConfig, EGLContext, const EGLint*)>("eglCreateContext");
  const auto makeCurrent =
      egl.function<EGLBoolean (*)(EGLDisplay, EGLSurface, EGLSurface, EGLContext)>("eglMakeCurrent");
  const auto getString = egl.function<const unsigned char* (*)(unsigned)>("glGetString");
  if (!getDisplay || !initialize || !bindApi || !createContext || !makeCurrent || !getString)
    return std::nullopt;
  const EGLDisplay display = getDisplay(EGL_DEFAULT_DISPLAY);
  if (!display || !initialize(display, nullptr, nullptr) || !bindApi(EGL_OPENGL_ES_API)) return std::nullopt;
  constexpr std::array<EGLint, 3> kVersion = {EGL_CONTEXT_CLIENT_VERSION, 2, EGL_NONE};
  const EGLContext context = createContext(display, EGL_NO_CONFIG_KHR, EGL_NO_CONTEXT, kVersion.data());
  if (!context || !makeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context)) return std::nullopt;
  constexpr unsigned kVendor = 0x1F00;
  return OpenGlDriver{textOf(getString(kVendor)), textOf(getString(kVendor + 1)),
                      textOf(getString(kVendor + 2))};
}

/// The rest of the answer, as far as it comes in time.
std::string readAll(const FileDescriptor& from) {
  const auto deadline = steady_clock::now() + kAnswerLimit;
  std::string text;
  std::array<char, 1024> buffer{};
  while (from.isOpen()) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - steady_clock::now());
    pollfd waiting{from.get(), POLLIN, 0};
    if (left.count() <= 0 ||
        retryInterrupted([&] { return ::poll(&waiting, 1, static_cast<int>(left.count())); }) <= 0)
      return text;
    const ssize_t got = retryInterrupted([&] { return ::read(from.get(), buffer.data(), buffer.size()); });
    if (got <= 0) return text;
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return text;
}

std::optional<OpenGlDriver> driverFrom(std::string_view answer) {
  std::array<std::string, 3> lines;
  for (std::string& line : lines) {
    const std::size_t end = answer.find('\n');
    if (end == std::string_view::npos) return std::nullopt;
    line = answer.substr(0, end);
    answer.remove_prefix(end + 1);
  }
  return OpenGlDriver{lines[0], lines[1], lines[2]};
}

[[noreturn]] void answerTo(int descriptor, OpenGlProbe::Question question) {
  // Drivers complain there about what is missing.
  ::close(STDERR_FILENO);
  ::open("/dev/null", O_WRONLY);
  if (const auto driver = question()) {
    const std::string text = driver->vendor + "\n" + driver->renderer + "\n" + driver->version + "\n";
    // Less than a pipe takes at once.
    [[maybe_unused]] const ssize_t written = ::write(descriptor, text.data(), text.size());
  }
  // Without what the program itself does at its end.
  ::_exit(0);
}

/// Starts a process that answers; what it answers can be read from the result.
FileDescriptor ask(OpenGlProbe::Question question, pid_t& asked) {
  std::array<int, 2> ends{-1, -1};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return FileDescriptor(-1);
  const FileDescriptor write(ends[1]);
  asked = ::fork();
  if (asked == 0) answerTo(write.get(), question);
  return FileDescriptor(ends[0]);
}

}  // namespace

bool hasGraphicsDevice(const std::string& devices) {
  std::error_code failure;
  for (std::filesystem::directory_iterator entry(devices, failure), end; !failure && entry != end;
       entry.increment(failure)) {
    const std::string name = entry->path().filename();
    if (std::ranges::any_of(kDevices, [&](std::string_view device) { return name.starts_with(device); }))
      return true;
  }
  // Where the directory cannot be read, the driver knows.
  return static_cast<bool>(failure);
}

std::optional<OpenGlDriver> askForOpenGlDriver() {
  const Egl egl;
  if (!egl) return std::nullopt;
  if (hasOnlyTheProcessor(egl)) return OpenGlDriver{"Mesa", "swrast", ""};
  return driverOf(egl);
}

OpenGlProbe::OpenGlProbe(Question question) : answer_(ask(question, asked_)) {}

OpenGlProbe::~OpenGlProbe() {
  if (asked_ <= 0) return;
  ::kill(asked_, SIGKILL);
  retryInterrupted([this] { return ::waitpid(asked_, nullptr, 0); });
}

std::optional<OpenGlDriver> OpenGlProbe::driver() {
  return driverFrom(readAll(answer_));
}

}  // namespace quendo::gtk
