#include "app/CommandLine.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "files/Url.h"
#include "i18n/Translations.h"
#include "text/Utf8.h"

namespace quendo {
namespace {

constexpr std::string_view kNewNote = "--new-note";
constexpr std::string_view kRendering = "--rendering";
constexpr std::string_view kWithoutWebSandbox = "--without-web-sandbox";
constexpr std::string_view kVersion = "--version";
constexpr std::string_view kHelp = "--help";

constexpr std::array<std::string_view, 3> kRenderings = {"auto", "card", "processor"};

constexpr std::array kOptions = {
    CommandLineOption{kNewNote, "abre uma nova nota"},
    CommandLineOption{kRendering, "o que desenha a janela: auto, card (a placa de vídeo) ou processor",
                      kRenderings},
    CommandLineOption{kWithoutWebSandbox,
                      "continua onde o sistema não permite isolar a página em uma sandbox"},
    CommandLineOption{kVersion, "mostra a versão e sai"},
    CommandLineOption{kHelp, "mostra esta ajuda e sai"},
};

constexpr std::size_t kHelpColumn = 25;

std::string filledIn(std::string_view key, std::string_view subject, NativeLanguage language) {
  constexpr std::string_view kPlaceholder = "{argument}";
  std::string text(translated(key, language));
  if (const std::size_t at = text.find(kPlaceholder); at != std::string::npos)
    text.replace(at, kPlaceholder.size(), repairedUtf8(subject));
  return text;
}

CommandLine& refuse(CommandLine& line, std::string_view complaint, std::string_view subject) {
  line.action = CommandLine::Action::refuse;
  line.complaint = complaint;
  line.subject = subject;
  return line;
}

/// Takes one option. False when nothing after it counts.
bool takeOption(CommandLine& line, std::string_view argument) {
  const std::string_view name = argument.substr(0, argument.find('='));
  const auto option = std::ranges::find(kOptions, name, &CommandLineOption::name);
  if (option == kOptions.end()) {
    refuse(line, "quendo: opção desconhecida: {argument}", argument);
    return false;
  }
  const bool hasValue = name.size() < argument.size();
  if (option->values.empty() && hasValue) {
    refuse(line, "quendo: a opção não aceita um valor: {argument}", argument);
    return false;
  }
  if (name == kRendering) {
    const std::string_view value = hasValue ? argument.substr(name.size() + 1) : std::string_view();
    const auto known = std::ranges::find(option->values, value);
    if (known == option->values.end()) {
      refuse(line, "quendo: --rendering é auto, card ou processor", argument);
      return false;
    }
    line.rendering = *known;
  }
  if (name == kNewNote) line.request.newNote = true;
  if (name == kWithoutWebSandbox) line.withoutWebSandbox = true;
  if (name == kVersion) line.action = CommandLine::Action::showVersion;
  if (name == kHelp) line.action = CommandLine::Action::showHelp;
  return line.action == CommandLine::Action::start;
}

}  // namespace

std::span<const CommandLineOption> commandLineOptions() {
  return kOptions;
}

CommandLine parseCommandLine(std::span<const char* const> arguments, std::string_view directory) {
  CommandLine line;
  bool optionsHaveEnded = false;
  for (const std::string_view argument : arguments) {
    if (argument == kStandardInput) {
      line.request.urls.emplace_back(kStandardInput);
    } else if (optionsHaveEnded || !argument.starts_with('-')) {
      line.request.urls.push_back(urlOfArgument(argument, directory));
    } else if (argument == "--") {
      optionsHaveEnded = true;
    } else if (!takeOption(line, argument)) {
      break;
    }
  }
  return line;
}

std::vector<std::string> argumentsOf(const StartRequest& request) {
  std::vector<std::string> arguments = request.urls;
  if (request.newNote) arguments.emplace_back(kNewNote);
  return arguments;
}

std::string helpText(NativeLanguage language) {
  const auto text = [language](std::string_view key) { return std::string(translated(key, language)); };
  std::string help = text("Uso: quendo [OPÇÃO]... [ARQUIVO]...") + "\n\n";
  help += text(
              "Abre cada ARQUIVO, um caminho ou uma URL file:, em uma aba. Se ARQUIVO é -,\n"
              "a entrada padrão é lida até o fim e se torna uma nova nota. Se o Quendo já\n"
              "está aberto, a janela dele recebe tudo.") +
          "\n\n";
  for (const CommandLineOption& option : kOptions) {
    std::string name = "  " + std::string(option.name);
    if (!option.values.empty()) name += "=" + text("MODO");
    name.resize(std::max(kHelpColumn, name.size() + 2), ' ');
    help += name + text(option.help) + "\n";
  }
  help += "\n" +
          text(
              "Status de saída:\n"
              "  0  tudo certo; um Quendo já aberto recebeu ao menos um ARQUIVO\n"
              "  1  o Quendo não pôde iniciar; a saída de erro diz por quê\n"
              "  2  o Quendo já aberto não recebeu nenhum ARQUIVO, ou o texto da entrada\n"
              "     padrão não foi aberto") +
          "\n";
  return help;
}

std::string refusalText(const CommandLine& line, NativeLanguage language) {
  return filledIn(line.complaint, line.subject, language) + "\n" +
         std::string(translated("Veja quendo --help para mais informações.", language)) + "\n";
}

}  // namespace quendo
