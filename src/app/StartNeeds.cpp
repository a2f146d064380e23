#include "app/StartNeeds.h"

namespace quendo {

std::string_view keyOfMissing(StartNeed need) {
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

}  // namespace quendo
