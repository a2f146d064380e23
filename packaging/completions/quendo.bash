# bash completion for quendo(1)

_quendo()
{
    local cur prev words cword split
    _init_completion -s || return

    local index
    for ((index = 1; index < cword; index++)); do
        if [[ ${words[index]} == -- ]]; then
            _filedir
            return
        fi
    done

    if $split; then
        if [[ $prev == --rendering ]]; then
            COMPREPLY=($(compgen -W 'auto card processor' -- "$cur"))
        fi
        return
    fi

    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W '--new-note --rendering= --without-web-sandbox --version --help' -- "$cur"))
        [[ ${COMPREPLY-} == *= ]] && compopt -o nospace
        return
    fi
    _filedir
} && complete -F _quendo quendo
