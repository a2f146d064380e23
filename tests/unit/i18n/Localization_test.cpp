#include "i18n/Localization.h"

#include <gtest/gtest.h>

#include <array>

#include "fake/FakePlatform.h"
#include "i18n/Translations.h"

namespace quendo {
namespace {

class LocalizationTest : public ::testing::Test {
 protected:
  void setLanguage(const char* code) { defaults_.strings["QuendoLanguage"] = code; }

  fake::FakeDefaults defaults_;
  fake::FakeLocale locale_;
  Localization localization_{defaults_, locale_};
};

TEST_F(LocalizationTest, FollowsTheLocaleWithoutAStoredSetting) {
  const std::array<std::pair<const char*, const char*>, 6> expected = {{{"en", "New Note"},
                                                                        {"es", "Nueva nota"},
                                                                        {"pt", "Nova nota"},
                                                                        {"fr", "Nova nota"},
                                                                        {"ja", "Nova nota"},
                                                                        {"EN", "Nova nota"}}};
  for (const auto& [code, text] : expected) {
    locale_.code = code;
    EXPECT_EQ(localization_.tr("Nova nota"), text) << code;
  }
  locale_.code.reset();
  EXPECT_EQ(localization_.tr("Nova nota"), "Nova nota");
}

TEST_F(LocalizationTest, PrefersAStoredSettingToTheLocale) {
  locale_.code = "es";
  setLanguage("en");
  EXPECT_EQ(localization_.current(), NativeLanguage::en);
  setLanguage("pt");
  EXPECT_EQ(localization_.current(), NativeLanguage::pt);
}

TEST_F(LocalizationTest, PassesOverAStoredSettingThatIsNoCodeAndLeavesItThere) {
  locale_.code = "es";
  for (const char* bad : {"EN", "english", "pt-BR", "", " en", "en "}) {
    setLanguage(bad);
    EXPECT_EQ(localization_.current(), NativeLanguage::es) << bad;
    EXPECT_EQ(defaults_.strings["QuendoLanguage"], bad);
  }
}

TEST_F(LocalizationTest, ReturnsATextThatIsNoKeyUnchangedInEveryLanguage) {
  for (const char* code : {"pt", "en", "es"}) {
    setLanguage(code);
    for (const char* text : {"Nova Nota", "Salvar como...", "", "nova nota", "Nova nota "}) {
      EXPECT_EQ(localization_.tr(text), text);
    }
  }
}

TEST_F(LocalizationTest, LooksUpAKeyWhoseTranslationEqualsIt) {
  setLanguage("es");
  EXPECT_EQ(localization_.tr("Idioma"), "Idioma");
  setLanguage("en");
  EXPECT_EQ(localization_.tr("Idioma"), "Language");
}

TEST_F(LocalizationTest, FollowsAChangeOfTheSettingAtTheNextCall) {
  setLanguage("en");
  EXPECT_EQ(localization_.tr("Cancelar"), "Cancel");
  setLanguage("es");
  EXPECT_EQ(localization_.tr("Abrir arquivo…"), "Abrir archivo…");
}

TEST_F(LocalizationTest, ATerminalShowsTheFirstLanguageOfTheUsersThatThereIsAndElseEnglish) {
  setLanguage("pt");
  const auto shown = [this](std::optional<std::string> code, std::vector<std::string> languages) {
    locale_.code = std::move(code);
    locale_.languages = std::move(languages);
    return terminalLanguage(locale_);
  };
  EXPECT_EQ(shown("es", {"es_ES"}), NativeLanguage::es);
  EXPECT_EQ(shown("pt", {"pt_BR"}), NativeLanguage::pt);
  EXPECT_EQ(shown("pt", {"fr", "es_AR", "pt_BR"}), NativeLanguage::es);
  EXPECT_EQ(shown("fr", {"fr_FR"}), NativeLanguage::en);
  EXPECT_EQ(shown("fr", {}), NativeLanguage::en);
  EXPECT_EQ(shown(std::nullopt, {"es"}), NativeLanguage::en)
      << "the standard locale, whatever LANGUAGE lists";
}

TEST(NativeLanguage, ListsItsThreeCasesInOrder) {
  ASSERT_EQ(kAllLanguages.size(), 3U);
  EXPECT_EQ(rawValue(kAllLanguages[0]), "pt");
  EXPECT_EQ(rawValue(kAllLanguages[1]), "en");
  EXPECT_EQ(rawValue(kAllLanguages[2]), "es");
}

TEST(NativeLanguage, ComesOnlyFromTheExactCodes) {
  EXPECT_EQ(nativeLanguageFromRawValue("es"), NativeLanguage::es);
  for (const char* other : {"", "PT", "pt-BR", " pt", "pt ", "fr"}) {
    EXPECT_FALSE(nativeLanguageFromRawValue(other)) << other;
  }
}

TEST(Translations, LeavesTextsThatStayPortugueseUntranslatedInEveryLanguage) {
  fake::FakeDefaults defaults;
  const fake::FakeLocale locale;
  const Localization localization(defaults, locale);
  for (const char* code : {"pt", "en", "es"}) {
    defaults.strings["QuendoLanguage"] = code;
    for (const std::string_view text : portugueseOnlyTexts()) EXPECT_EQ(localization.tr(text), text);
  }
}

TEST(Translations, TranslatesEveryTextOfTheHostsOwnOnce) {
  for (const Translation& row : hostTexts()) {
    EXPECT_EQ(findTranslation(row.portuguese), &row) << row.portuguese;
    EXPECT_FALSE(row.english.empty() || row.spanish.empty()) << row.portuguese;
  }
}

TEST(Translations, HoldsExactlyTheSixtyRows) {
  static constexpr Translation kExpected[] = {
      {"Sobre o Quendo", "About Quendo", "Acerca de Quendo"},
      {"Verificar atualizações…", "Check for Updates…", "Buscar actualizaciones…"},
      {"Idioma", "Language", "Idioma"},
      {"Ocultar Quendo", "Hide Quendo", "Ocultar Quendo"},
      {"Ocultar Outros", "Hide Others", "Ocultar otros"},
      {"Sair do Quendo", "Quit Quendo", "Salir de Quendo"},
      {"Arquivo", "File", "Archivo"},
      {"Nova nota", "New Note", "Nueva nota"},
      {"Captura rápida", "Quick Capture", "Captura rápida"},
      {"Abrir arquivo…", "Open File…", "Abrir archivo…"},
      {"Salvar agora", "Save Now", "Guardar ahora"},
      {"Salvar como…", "Save As…", "Guardar como…"},
      {"Copiar para WhatsApp", "Copy for WhatsApp", "Copiar para WhatsApp"},
      {"Editar", "Edit", "Editar"},
      {"Desfazer", "Undo", "Deshacer"},
      {"Refazer", "Redo", "Rehacer"},
      {"Recortar", "Cut", "Cortar"},
      {"Copiar", "Copy", "Copiar"},
      {"Colar", "Paste", "Pegar"},
      {"Selecionar Tudo", "Select All", "Seleccionar todo"},
      {"Visualizar", "View", "Ver"},
      {"Buscar notas", "Search Notes", "Buscar notas"},
      {"Atalhos", "Shortcuts", "Atajos"},
      {"Como usar edição avançada…", "How to Use Advanced Editing…", "Cómo usar la edición avanzada…"},
      {"Janela", "Window", "Ventana"},
      {"Aba anterior", "Previous Tab", "Pestaña anterior"},
      {"Próxima aba", "Next Tab", "Pestaña siguiente"},
      {"Mostrar todas as abas", "Show All Tabs", "Mostrar todas las pestañas"},
      {"Reabrir aba fechada", "Reopen Closed Tab", "Reabrir pestaña cerrada"},
      {"Fechar aba…", "Close Tab…", "Cerrar pestaña…"},
      {"Fechar outras abas…", "Close Other Tabs…", "Cerrar otras pestañas…"},
      {"Fechar abas à direita…", "Close Tabs to the Right…", "Cerrar pestañas a la derecha…"},
      {"Fechar todas as abas…", "Close All Tabs…", "Cerrar todas las pestañas…"},
      {"Minimizar", "Minimize", "Minimizar"},
      {"Fechar janela", "Close Window", "Cerrar ventana"},
      {"Continuar editando", "Continue Editing", "Continuar editando"},
      {"Cancelar", "Cancel", "Cancelar"},
      {"Abrir", "Open", "Abrir"},
      {"Salvar", "Save", "Guardar"},
      {"Exportar", "Export", "Exportar"},
      {"Salvar nota como", "Save Note As", "Guardar nota como"},
      {"Extensão:", "Extension:", "Extensión:"},
      {"Personalizada (digite no nome)", "Custom (type it in the name)",
       "Personalizada (escríbela en el nombre)"},
      {"Abrir arquivos de texto no Quendo", "Open Text Files in Quendo", "Abrir archivos de texto en Quendo"},
      {"Baixar atualização", "Download Update", "Descargar actualización"},
      {"Lembrar depois", "Remind Me Later", "Recordar más tarde"},
      {"O Quendo não fechou", "Quendo Did Not Quit", "Quendo no se cerró"},
      {"Este arquivo não foi aberto", "This File Was Not Opened", "Este archivo no se abrió"},
      {"Alguns arquivos não foram abertos", "Some Files Were Not Opened", "Algunos archivos no se abrieron"},
      {"O Quendo não pôde iniciar", "Quendo Could Not Start", "Quendo no pudo iniciarse"},
      {"Exportar arquivo de texto", "Export Text File", "Exportar archivo de texto"},
      {"Exportar nota em Markdown", "Export Markdown Note", "Exportar nota en Markdown"},
      {"Exportação cancelada", "Export canceled", "Exportación cancelada"},
      {"Arquivo exportado", "File exported", "Archivo exportado"},
      {"Markdown exportado", "Markdown exported", "Markdown exportado"},
      {"Não foi possível exportar o arquivo", "Could not export the file", "No se pudo exportar el archivo"},
      {"Não foi possível verificar atualizações", "Could not check for updates",
       "No se pudo buscar actualizaciones"},
      {"Você já está na versão mais recente", "You already have the latest version",
       "Ya tienes la versión más reciente"},
      {"Não foi possível copiar para o WhatsApp", "Could not copy for WhatsApp",
       "No se pudo copiar para WhatsApp"},
      {"A ação não pôde ser concluída", "The action could not be completed",
       "No se pudo completar la acción"},
  };
  const auto rows = allTranslations();
  ASSERT_EQ(rows.size(), 60U);
  ASSERT_EQ(rows.size(), std::size(kExpected));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i].portuguese, kExpected[i].portuguese);
    EXPECT_EQ(rows[i].english, kExpected[i].english);
    EXPECT_EQ(rows[i].spanish, kExpected[i].spanish);
    EXPECT_EQ(findTranslation(kExpected[i].portuguese), &rows[i]);
  }
}

TEST(Translations, FindsEachTextOfTheHostWholeAndOnce) {
  for (const Translation& row : hostTexts()) {
    EXPECT_FALSE(row.english.empty() || row.spanish.empty()) << row.portuguese;
    EXPECT_EQ(findTranslation(row.portuguese), &row) << row.portuguese;
  }
}

}  // namespace
}  // namespace quendo
