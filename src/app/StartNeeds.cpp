#include "app/StartNeeds.h"

#include <string_view>

namespace quendo {
namespace {

std::string_view portugueseText(StartNeed need) {
  switch (need) {
    case StartNeed::display:
      return "O Quendo não encontrou nenhuma tela para abrir sua janela; inicie-o em uma sessão gráfica.";
    case StartNeed::fonts:
      return "O Quendo não encontrou nenhuma fonte para mostrar texto; instale uma, por exemplo DejaVu Sans.";
    case StartNeed::dataDirectory:
      break;
  }
  return "O Quendo não sabe onde guardar suas notas; defina HOME ou XDG_DATA_HOME.";
}

}  // namespace

std::string textOfMissing(StartNeed need, const Localization& localization) {
  return localization.tr(portugueseText(need));
}

}  // namespace quendo
