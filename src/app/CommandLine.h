#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "i18n/NativeLanguage.h"
#include "platform/Application.h"

namespace quendo {

/// An option of the program. What it says of itself is the key of a text.
struct CommandLineOption {
  std::string_view name;  ///< With its dashes.
  std::string_view help;
  std::span<const std::string_view> values = {};  ///< One of them follows "="; none for an option without.
};

/// All of them, in the order in which --help lists them.
std::span<const CommandLineOption> commandLineOptions();

/// What a command line asks for.
struct CommandLine {
  enum class Action : std::uint8_t { start, showHelp, showVersion, refuse };

  Action action = Action::start;
  StartRequest request;            ///< Without the text of standard input, which nobody has read yet.
  bool withoutWebSandbox = false;  ///< --without-web-sandbox
  std::string_view rendering;      ///< A value of --rendering; empty without the option.
  std::string_view complaint;      ///< Key of the text that says what is wrong with `subject`.
  std::string subject;
};

/// Reads the arguments of a start, without the program's name. Options may follow files; "--" ends them. The
/// first argument that asks for a text instead of a start, or is wrong, decides. Paths are relative to
/// `directory`.
CommandLine parseCommandLine(std::span<const char* const> arguments, std::string_view directory);

/// Arguments that come to the same request in any directory.
std::vector<std::string> argumentsOf(const StartRequest& request);

std::string helpText(NativeLanguage language);
/// Of a command line that is refused, for standard error.
std::string refusalText(const CommandLine& line, NativeLanguage language);

}  // namespace quendo
