# fish completion for quendo(1)

complete -c quendo -l new-note -d 'Open a new note'
complete -c quendo -l rendering -x -a 'auto card processor' -d 'What draws the window'
complete -c quendo -l without-web-sandbox -d 'Go on where the system does not let the page be sandboxed'
complete -c quendo -l version -d 'Print the version and exit'
complete -c quendo -l help -d 'Print a help text and exit'
