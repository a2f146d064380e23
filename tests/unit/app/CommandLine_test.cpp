#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <set>
#include <string>
#include <vector>

#include "i18n/Localization.h"

namespace quendo {
namespace {

using Action = CommandLine::Action;
using Urls = std::vector<std::string>;

CommandLine parse(std::initializer_list<const char*> arguments, std::string_view directory = "/here") {
  return parseCommandLine(std::span(arguments.begin(), arguments.size()), directory);
}

TEST(CommandLine, IsAStartWithoutArguments) {
  const CommandLine line = parse({});
  EXPECT_EQ(line.action, Action::start);
  EXPECT_TRUE(line.request.urls.empty());
  EXPECT_FALSE(line.request.newNote || line.request.wantsStandardInput() || line.withoutWebSandbox);
  EXPECT_EQ(line.rendering, "");
}

TEST(CommandLine, TakesPathsAddressesAndStandardInputInTheirOrder) {
  const CommandLine line = parse({"a b.md", "-", "/etc/x", "file:///y%20z", "https://example.org/", "-"});
  EXPECT_EQ(line.request.urls, (Urls{"file:///here/a%20b.md", "-", "file:///etc/x", "file:///y%20z",
                                     "https://example.org/", "-"}));
  EXPECT_TRUE(line.request.wantsStandardInput());
  EXPECT_FALSE(line.request.standardInput);
}

TEST(CommandLine, TakesOptionsBeforeBetweenAndAfterFiles) {
  const CommandLine line = parse({"--new-note", "a", "--without-web-sandbox", "b", "--rendering=card"});
  EXPECT_EQ(line.action, Action::start);
  EXPECT_EQ(line.request.urls, (Urls{"file:///here/a", "file:///here/b"}));
  EXPECT_TRUE(line.request.newNote && line.withoutWebSandbox);
  EXPECT_EQ(line.rendering, "card");
}

TEST(CommandLine, TakesWhatFollowsTwoDashesAsFiles) {
  const CommandLine line = parse({"--", "--help", "--", "-", "-x"});
  EXPECT_EQ(line.action, Action::start);
  EXPECT_EQ(line.request.urls, (Urls{"file:///here/--help", "file:///here/--", "-", "file:///here/-x"}));
}

TEST(CommandLine, OpensAFileWhoseNameIsADashByItsPath) {
  EXPECT_EQ(parse({"./-"}).request.urls, Urls{"file:///here/./-"});
}

TEST(CommandLine, LetsTheLastRenderingCountAndKnowsThreeOfThem) {
  EXPECT_EQ(parse({"--rendering=card", "--rendering=auto"}).rendering, "auto");
  for (const char* value : {"auto", "card", "processor"})
    EXPECT_EQ(parse({(std::string("--rendering=") + value).c_str()}).rendering, value);
}

TEST(CommandLine, LetsTheFirstThatIsNoStartDecide) {
  EXPECT_EQ(parse({"a", "--help", "--bogus"}).action, Action::showHelp);
  EXPECT_EQ(parse({"--version", "--help"}).action, Action::showVersion);
  EXPECT_EQ(parse({"--bogus", "--help"}).action, Action::refuse);
}

TEST(CommandLine, RefusesWhatItDoesNotKnow) {
  for (const char* argument : {"--bogus", "-x", "-h", "--", "--new", "--new-note=", "--help=x", "--rendering",
                               "--rendering=", "--rendering=abacus", "--Help", "--=", "---"}) {
    const bool endsOptions = std::string_view(argument) == "--";
    EXPECT_EQ(parse({argument}).action, endsOptions ? Action::start : Action::refuse) << argument;
  }
}

TEST(CommandLine, SaysInThreeLanguagesWhatIsWrong) {
  const CommandLine unknown = parse({"--caf\xE9"});
  EXPECT_EQ(refusalText(unknown, NativeLanguage::en),
            "quendo: unknown option: --caf\uFFFD\nSee quendo --help for more information.\n");
  EXPECT_EQ(refusalText(unknown, NativeLanguage::pt),
            "quendo: opção desconhecida: --caf\uFFFD\nVeja quendo --help para mais informações.\n");
  EXPECT_EQ(refusalText(unknown, NativeLanguage::es),
            "quendo: opción desconocida: --caf\uFFFD\nConsulte quendo --help para más información.\n");
  EXPECT_EQ(refusalText(parse({"--new-note=1"}), NativeLanguage::en),
            "quendo: the option takes no value: --new-note=1\nSee quendo --help for more information.\n");
  EXPECT_EQ(refusalText(parse({"--rendering=x"}), NativeLanguage::en),
            "quendo: --rendering is auto, card or processor\nSee quendo --help for more information.\n");
}

TEST(CommandLine, ExplainsItselfInThreeLanguages) {
  EXPECT_EQ(helpText(NativeLanguage::en),
            R"(Usage: quendo [OPTION]... [FILE]...

Opens each FILE, a path or a file: URL, in a tab. When FILE is -, standard input
is read to its end and becomes a new note. Where Quendo runs already, its window
takes everything.

  --new-note             open a new note
  --rendering=MODE       what draws the window: auto, card (the graphics card) or processor
  --without-web-sandbox  go on where the system does not let the page be sandboxed
  --version              print the version and exit
  --help                 print this help and exit

Exit status:
  0  all went well; a Quendo that runs already took at least one FILE
  1  Quendo could not start; standard error says why
  2  a Quendo that runs already took no FILE, or the text of standard input
     was not opened
)");
  EXPECT_EQ(helpText(NativeLanguage::pt),
            R"(Uso: quendo [OPÇÃO]... [ARQUIVO]...

Abre cada ARQUIVO, um caminho ou uma URL file:, em uma aba. Se ARQUIVO é -,
a entrada padrão é lida até o fim e se torna uma nova nota. Se o Quendo já
está aberto, a janela dele recebe tudo.

  --new-note             abre uma nova nota
  --rendering=MODO       o que desenha a janela: auto, card (a placa de vídeo) ou processor
  --without-web-sandbox  continua onde o sistema não permite isolar a página em uma sandbox
  --version              mostra a versão e sai
  --help                 mostra esta ajuda e sai

Status de saída:
  0  tudo certo; um Quendo já aberto recebeu ao menos um ARQUIVO
  1  o Quendo não pôde iniciar; a saída de erro diz por quê
  2  o Quendo já aberto não recebeu nenhum ARQUIVO, ou o texto da entrada
     padrão não foi aberto
)");
  EXPECT_EQ(helpText(NativeLanguage::es),
            R"(Uso: quendo [OPCIÓN]... [ARCHIVO]...

Abre cada ARCHIVO, una ruta o una URL file:, en una pestaña. Si ARCHIVO es -,
la entrada estándar se lee hasta el final y se convierte en una nota nueva. Si
Quendo ya está abierto, su ventana lo recibe todo.

  --new-note             abre una nota nueva
  --rendering=MODO       qué dibuja la ventana: auto, card (la tarjeta gráfica) o processor
  --without-web-sandbox  continúa donde el sistema no permite aislar la página en una sandbox
  --version              muestra la versión y termina
  --help                 muestra esta ayuda y termina

Estado de salida:
  0  todo bien; un Quendo ya abierto recibió al menos un ARCHIVO
  1  Quendo no pudo iniciarse; la salida de error dice por qué
  2  el Quendo ya abierto no recibió ningún ARCHIVO, o el texto de la entrada
     estándar no se abrió
)");
}

TEST(CommandLine, ListsEachOptionOnceAndTakesIt) {
  std::set<std::string_view> names;
  for (const CommandLineOption& option : commandLineOptions()) {
    EXPECT_TRUE(names.insert(option.name).second) << option.name;
    const std::string argument =
        std::string(option.name) + (option.values.empty() ? "" : "=" + std::string(option.values[0]));
    EXPECT_NE(parse({argument.c_str()}).action, Action::refuse) << argument;
  }
}

TEST(CommandLine, HandsARequestOverInArgumentsThatMeanTheSameAnywhere) {
  const CommandLine given = parse({"--new-note", "a\xE9 b", "-", "--", "--help", "-x"});
  const std::vector<std::string> arguments = argumentsOf(given.request);
  std::vector<const char*> pointers;
  for (const std::string& argument : arguments) pointers.push_back(argument.c_str());
  const CommandLine taken = parseCommandLine(pointers, "/elsewhere");
  EXPECT_EQ(taken.action, Action::start);
  EXPECT_EQ(taken.request.urls, given.request.urls);
  EXPECT_TRUE(taken.request.newNote);
  EXPECT_TRUE(argumentsOf(StartRequest{}).empty());
}

}  // namespace
}  // namespace quendo
