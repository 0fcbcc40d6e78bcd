# shellcheck shell=bash
# The words of orvanten-manager, and the files that it opens.
_orvanten_manager()
{
    local word=${COMP_WORDS[COMP_CWORD]} line
    COMPREPLY=()
    # A word counts only if it stands alone.
    if [[ $COMP_CWORD -eq 1 ]]; then
        while read -r line; do
            COMPREPLY+=("$line")
        done < <(compgen -W "--play --pause --next --help --version /play /hide" -- "$word")
    fi
    if [[ $word != -* ]]; then
        compopt -o filenames 2>/dev/null
        while read -r line; do
            case ${line,,} in
                *.m3u | *.m3u8 | *.pls | *.nml | *.mp3 | *.wma | *.wav) COMPREPLY+=("$line") ;;
                *) [[ ! -d $line ]] || COMPREPLY+=("$line") ;;
            esac
        done < <(compgen -f -- "$word")
    fi
}
complete -F _orvanten_manager orvanten-manager
