import { aliasTexts } from './texts/aliasTexts';
import { commandTexts } from './texts/commandTexts';
import { editorTexts } from './texts/editorTexts';
import { lookTexts } from './texts/lookTexts';
import { writingTexts } from './texts/writingTexts';
import { linkTexts } from './texts/linkTexts';
import { findingTexts } from './texts/findingTexts';
import { libraryTexts } from './texts/libraryTexts';
import type { Texts } from './texts/texts';
import { versionTexts } from './texts/versionTexts';

/** Every text of the page. */
// biome-ignore format: one row per text
export const catalogue = {
  ...aliasTexts,
  ...commandTexts,
  ...editorTexts,
  ...lookTexts,
  ...writingTexts,
  ...linkTexts,
  ...findingTexts,
  ...libraryTexts,
  ...versionTexts,

  'untitled': ['Sem título', 'Untitled', 'Sin título'],
  'close': ['Fechar', 'Close', 'Cerrar'],
  'cancel': ['Cancelar', 'Cancel', 'Cancelar'],
  'undo': ['Desfazer', 'Undo', 'Deshacer'],
  'open': ['Abrir', 'Open', 'Abrir'],
  'key.enter': ['Enter', 'Enter', 'Intro'],
  'key.delete': ['Delete', 'Delete', 'Supr'],
  'key.escape': ['Esc', 'Esc', 'Esc'],
  'key.tab': ['Tab', 'Tab', 'Tab'],

  'sidebar.label': ['Notas', 'Notes', 'Notas'],
  'sidebar.show': ['Mostrar a lista de notas', 'Show the note list', 'Mostrar la lista de notas'],
  'sidebar.hide': ['Ocultar a lista de notas', 'Hide the note list', 'Ocultar la lista de notas'],
  'sidebar.empty': ['Suas notas aparecem aqui.', 'Your notes will appear here.', 'Tus notas aparecerán aquí.'],
  'sidebar.emptyNote': ['Nota vazia', 'Empty note', 'Nota vacía'],
  'search.label': ['Buscar notas', 'Search notes', 'Buscar notas'],
  'search.none': ['Nada encontrado para “{query}”.', 'Nothing found for “{query}”.', 'No se encontró nada para “{query}”.'],
  'search.count.one': ['1 nota encontrada', '1 note found', '1 nota encontrada'],
  'search.count.many': ['{n} notas encontradas', '{n} notes found', '{n} notas encontradas'],

  'tabs.label': ['Abas abertas', 'Open tabs', 'Pestañas abiertas'],
  'tabs.close': ['Fechar {title}', 'Close {title}', 'Cerrar {title}'],
  'tabs.closed.one': ['1 aba fechada', '1 tab closed', '1 pestaña cerrada'],
  'tabs.closed.many': ['{n} abas fechadas', '{n} tabs closed', '{n} pestañas cerradas'],
  'tabs.closeAsk.one': ['Fechar 1 aba?', 'Close 1 tab?', '¿Cerrar 1 pestaña?'],
  'tabs.closeAsk.many': ['Fechar {n} abas?', 'Close {n} tabs?', '¿Cerrar {n} pestañas?'],
  'tabs.closeWhy': ['Só as últimas 50 poderão ser reabertas como abas. As notas continuam na lista.', 'Only the last 50 can be reopened as tabs. The notes stay in the list.', 'Solo las últimas 50 se podrán reabrir como pestañas. Las notas siguen en la lista.'],
  'tabs.closeDo': ['Fechar abas', 'Close tabs', 'Cerrar pestañas'],
  'tabs.nothingToClose': ['Não há outras abas para fechar', 'There are no other tabs to close', 'No hay otras pestañas que cerrar'],
  'tabs.nothingToReopen': ['Nenhuma aba fechada para reabrir', 'There is no closed tab to reopen', 'No hay pestañas cerradas que reabrir'],
  'overview.title': ['Abas abertas', 'Open tabs', 'Pestañas abiertas'],
  'overview.hint': ['Setas para escolher, {enter} para abrir, {delete} para fechar a aba', 'Arrows to choose, {enter} to open, {delete} to close the tab', 'Flechas para elegir, {enter} para abrir, {delete} para cerrar la pestaña'],
  'overview.empty': ['Nenhuma aba aberta.', 'No open tabs.', 'No hay pestañas abiertas.'],

  'empty.title.none': ['Uma página em branco', 'A blank page', 'Una página en blanco'],
  'empty.text.none': ['Crie a primeira nota e comece a escrever. Tudo é gravado sozinho.', 'Create the first note and start writing. Everything is saved by itself.', 'Crea la primera nota y empieza a escribir. Todo se guarda solo.'],
  'empty.title.some': ['Nenhuma nota aberta', 'No note is open', 'No hay ninguna nota abierta'],
  'empty.text.some': ['Escolha uma nota na lista ou comece outra.', 'Choose a note from the list or start another.', 'Elige una nota de la lista o empieza otra.'],

  'capture.title': ['Captura rápida', 'Quick capture', 'Captura rápida'],
  'capture.placeholder': ['O que não pode se perder?', 'What must not get lost?', '¿Qué no se puede perder?'],
  'capture.save': ['Guardar nota', 'Keep note', 'Guardar nota'],
  'capture.hint': ['{key} guarda · {escape} volta sem perder o rascunho', '{key} keeps it · {escape} goes back, the draft stays', '{key} guarda · {escape} vuelve sin perder el borrador'],
  'capture.done': ['Guardado nas notas', 'Kept in your notes', 'Guardado en tus notas'],

  'save.saved': ['Salvo', 'Saved', 'Guardado'],
  'save.unsaved': ['Não salvo', 'Not saved', 'Sin guardar'],
  'save.saving': ['Salvando…', 'Saving…', 'Guardando…'],
  'save.failed': ['Falha ao salvar', 'Saving failed', 'Error al guardar'],
  'save.failedWhy': ['Não foi possível salvar. O texto continua aqui; o Quendo tenta de novo sozinho.', 'Saving failed. Your text is still here; Quendo keeps trying.', 'No se pudo guardar. El texto sigue aquí; Quendo lo intentará de nuevo.'],
  'save.recovered': ['Tudo salvo de novo', 'Everything is saved again', 'Todo está guardado de nuevo'],
  'save.readonly': ['Somente leitura', 'Read only', 'Solo lectura'],
  'save.retry': ['Tentar agora', 'Try now', 'Intentar ahora'],

  'readonly.notice': ['Estas notas foram gravadas por uma versão mais nova do Quendo. Elas abrem somente para leitura e nada será alterado.', 'These notes were written by a newer version of Quendo. They open read-only and nothing will be changed.', 'Estas notas fueron guardadas por una versión más nueva de Quendo. Se abren solo para lectura y no se cambiará nada.'],
  'readonly.refused': ['Somente leitura: instale a versão mais nova para editar', 'Read only: install the newer version to edit', 'Solo lectura: instala la versión más nueva para editar'],

  'actions.label': ['Ações da nota', 'Note actions', 'Acciones de la nota'],
  'language.label': ['Idioma', 'Language', 'Idioma'],
  'language.pt': ['Português', 'Português', 'Português'],
  'language.en': ['English', 'English', 'English'],
  'language.es': ['Español', 'Español', 'Español'],

  'theme.label': ['Aparência', 'Appearance', 'Apariencia'],
  'theme.system': ['Como o sistema', 'Like the desktop', 'Como el sistema'],
  'theme.light': ['Clara', 'Light', 'Clara'],
  'theme.dark': ['Escura', 'Dark', 'Oscura'],
  'zoom.now': ['Texto em {percent}%', 'Text at {percent}%', 'Texto al {percent}%'],

  'palette.label': ['Digite um comando', 'Type a command', 'Escribe un comando'],
  'palette.none': ['Nenhum comando como “{query}”.', 'No command like “{query}”.', 'Ningún comando como “{query}”.'],
  'palette.count.one': ['1 comando', '1 command', '1 comando'],
  'palette.count.many': ['{n} comandos', '{n} commands', '{n} comandos'],

  'bin.title': ['Lixeira', 'Bin', 'Papelera'],
  'bin.hint': ['{enter} traz a nota de volta. Notas ficam aqui por 30 dias.', '{enter} brings a note back. Notes stay here for 30 days.', '{enter} recupera la nota. Las notas quedan aquí 30 días.'],
  'bin.nothing': ['A lixeira está vazia. Notas apagadas ficam aqui por 30 dias.', 'The bin is empty. Deleted notes stay here for 30 days.', 'La papelera está vacía. Las notas borradas quedan aquí 30 días.'],
  'bin.restored': ['“{title}” está de volta', '“{title}” is back', '“{title}” está de vuelta'],
  'bin.empty': ['Esvaziar a lixeira…', 'Empty the bin…', 'Vaciar la papelera…'],
  'bin.emptyTitle': ['Esvaziar a lixeira', 'Empty the bin', 'Vaciar la papelera'],
  'bin.emptyAsk.one': ['Apagar 1 nota para sempre?', 'Delete 1 note for good?', '¿Borrar 1 nota para siempre?'],
  'bin.emptyAsk.many': ['Apagar {n} notas para sempre?', 'Delete {n} notes for good?', '¿Borrar {n} notas para siempre?'],
  'bin.emptyWhy': ['Depois disso não há como trazê-las de volta.', 'After that there is no way to bring them back.', 'Después no hay forma de recuperarlas.'],
  'bin.emptyDo': ['Apagar para sempre', 'Delete for good', 'Borrar para siempre'],
  'bin.emptied': ['A lixeira está vazia', 'The bin is empty', 'La papelera está vacía'],

  'note.pinned': ['Fixada no alto da lista', 'Pinned to the top of the list', 'Fijada en lo alto de la lista'],
  'note.unpinned': ['Não está mais fixada', 'No longer pinned', 'Ya no está fijada'],
  'note.isPinned': ['Fixada:', 'Pinned:', 'Fijada:'],
  'note.deleted': ['“{title}” apagada', '“{title}” deleted', '“{title}” borrada'],
  'note.needed': ['Abra uma nota primeiro', 'Open a note first', 'Abre una nota primero'],
  'copied.markdown': ['Markdown copiado', 'Markdown copied', 'Markdown copiado'],
  'copied.plain': ['Texto copiado', 'Text copied', 'Texto copiado'],
  'copied.whatsapp': ['Copiado para o WhatsApp', 'Copied for WhatsApp', 'Copiado para WhatsApp'],
  'copy.failed': ['Não foi possível copiar', 'Could not copy', 'No se pudo copiar'],
  'copy.empty': ['A nota está vazia: não há o que copiar', 'The note is empty: there is nothing to copy', 'La nota está vacía: no hay nada que copiar'],
  'copy.tooLarge': ['O texto passa de 2 MB e é grande demais para copiar assim', 'The text is over 2 MB, too large to copy this way', 'El texto supera los 2 MB y es demasiado grande para copiarlo así'],
  'share.tooLarge': ['O texto passa de 2 MB e é grande demais para compartilhar', 'The text is over 2 MB, too large to share', 'El texto supera los 2 MB y es demasiado grande para compartir'],
  'share.done': ['Compartilhado', 'Shared', 'Compartido'],
  'share.failed': ['Nada foi compartilhado', 'Nothing was shared', 'No se compartió nada'],
  'share.busy': ['Já há um compartilhamento em andamento', 'Something is being shared already', 'Ya hay algo que se está compartiendo'],
  'share.unavailable': ['O compartilhamento não está disponível aqui', 'Sharing is not available here', 'Compartir no está disponible aquí'],
  'file.tooLarge': ['O texto passa de 20 MB e não pode ser gravado em arquivo', 'The text is over 20 MB and cannot be written to a file', 'El texto supera los 20 MB y no se puede guardar en un archivo'],
  'file.saved': ['Salvo como {name}', 'Saved as {name}', 'Guardado como {name}'],
  'file.cancelled': ['Salvamento cancelado', 'Saving canceled', 'Guardado cancelado'],
  'file.failed': ['Não foi possível salvar o arquivo', 'Could not save the file', 'No se pudo guardar el archivo'],
  'export.done': ['Arquivo exportado', 'File exported', 'Archivo exportado'],
  'export.failed': ['Não foi possível exportar o arquivo', 'Could not export the file', 'No se pudo exportar el archivo'],
  'file.downloaded': ['{name} foi para os downloads', '{name} went to your downloads', '{name} se envió a las descargas'],
  'import.label': ['Abrir cópias de arquivos de texto', 'Open copies of text files', 'Abrir copias de archivos de texto'],
  'import.tooLarge': ['{name}: passa de 20 MB', '{name}: over 20 MB', '{name}: supera los 20 MB'],
  'import.binary': ['{name}: não parece ser um arquivo de texto', '{name}: does not look like a text file', '{name}: no parece un archivo de texto'],
  'import.unreadable': ['{name}: não pôde ser lido', '{name}: could not be read', '{name}: no se pudo leer'],
  'import.more': ['e mais {n}', 'and {n} more', 'y {n} más'],

  'count.words.one': ['1 palavra', '1 word', '1 palabra'],
  'count.words.many': ['{n} palavras', '{n} words', '{n} palabras'],
  'count.characters.one': ['1 caractere', '1 character', '1 carácter'],
  'count.characters.many': ['{n} caracteres', '{n} characters', '{n} caracteres'],
  'count.selected': ['seleção: {count}', 'selected: {count}', 'selección: {count}'],
  'preview.label': ['Prévia da nota', 'Note preview', 'Vista previa de la nota'],
  'preview.image': ['imagem', 'image', 'imagen'],
  'preview.part': ['A nota é longa: esta é a parte em torno do que está na tela.', 'The note is long: this is the part around what is on screen.', 'La nota es larga: esta es la parte que rodea lo que está en pantalla.'],
  'preview.empty': ['Nada para mostrar ainda.', 'Nothing to show yet.', 'Todavía no hay nada que mostrar.'],
  'preview.done': ['feita', 'done', 'hecha'],
  'preview.toDo': ['por fazer', 'to do', 'por hacer'],

} as const satisfies Texts;

export type Key = keyof typeof catalogue;
