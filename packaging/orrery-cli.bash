# Bash completion for orrery-cli.

_orrery_cli_years()
{
    local year
    year=$(date +%Y)
    printf '%s\n' "$year" "$((year + 1))" "$((year + 1))-$((year + 10))"
}

# The number of positional arguments after the command, without options and their values.
_orrery_cli_positionals()
{
    local count=0 i
    for ((i = 2; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            --settings | --template-folder | --output-folder | --holiday-folder | --engine | --pdf-by | \
                --section | --sheet | --year | --years | --output | --date-order | --month | --svg | --ics | \
                --region | --language)
                ((i++))
                ;;
            -*) ;;
            *) ((count++)) ;;
        esac
    done
    printf '%s\n' "$count"
}

# The folder options of the command line, for the list of templates.
_orrery_cli_folders()
{
    local i
    for ((i = 2; i < COMP_CWORD - 1; i++)); do
        case ${COMP_WORDS[i]} in
            --settings | --template-folder)
                printf '%s\n' "${COMP_WORDS[i]}" "${COMP_WORDS[i + 1]}"
                ;;
        esac
    done
}

# Adds the candidates on standard input, one per line, that begin with the current word.
_orrery_cli_offer()
{
    local candidate
    while IFS= read -r candidate; do
        [[ $candidate == "$1"* ]] && COMPREPLY+=("$candidate")
    done
}

_orrery_cli()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]}
    local folders='--settings --template-folder --holiday-folder'
    local -a given
    COMPREPLY=()

    if ((COMP_CWORD == 1)); then
        _orrery_cli_offer "$current" < <(printf '%s\n' generate templates parameters check look \
            propose holidays import easter --help --version)
        return
    fi

    case $previous in
        --settings | --svg | --ics | --output)
            _orrery_cli_offer "$current" < <(compgen -f -- "$current")
            return
            ;;
        --template-folder | --output-folder | --holiday-folder)
            _orrery_cli_offer "$current" < <(compgen -d -- "$current")
            return
            ;;
        --engine)
            _orrery_cli_offer "$current" < <(printf '%s\n' auto builtin excel libreoffice)
            return
            ;;
        --pdf-by)
            _orrery_cli_offer "$current" < <(printf '%s\n' builtin office)
            return
            ;;
        --section)
            [[ $command == import ]] && return
            _orrery_cli_offer "$current" < <(printf '%s\n' monthly yearly)
            return
            ;;
        --years)
            _orrery_cli_offer "$current" < <(_orrery_cli_years)
            return
            ;;
        --date-order)
            _orrery_cli_offer "$current" < <(printf '%s\n' dmy mdy ymd)
            return
            ;;
        --year)
            _orrery_cli_offer "$current" < <(_orrery_cli_years | head -n 2)
            return
            ;;
        --month)
            _orrery_cli_offer "$current" < <(seq 12)
            return
            ;;
        --sheet | --region | --language)
            return
            ;;
    esac

    if [[ $current == -* ]]; then
        case $command in
            generate)
                set -- $folders --output-folder --engine --pdf --pdf-by --open --json --help
                ;;
            check)
                set -- $folders --engine --json --help
                ;;
            look)
                set -- $folders --sheet --year --month --svg --json --help
                ;;
            propose)
                set -- $folders --write --json --help
                ;;
            holidays)
                set -- $folders --section --region --all-kinds --language --ics --json --help
                ;;
            import)
                set -- $folders --years --output --replace --date-order --section --json --help
                ;;
            templates | parameters)
                set -- $folders --json --help
                ;;
            *)
                set -- --json --help
                ;;
        esac
        _orrery_cli_offer "$current" < <(printf '%s\n' "$@")
        return
    fi

    case $command:$(_orrery_cli_positionals) in
        generate:0 | parameters:0 | check:0 | look:0 | propose:0)
            mapfile -t given < <(_orrery_cli_folders)
            _orrery_cli_offer "$current" < <("${COMP_WORDS[0]}" templates "${given[@]}" \
                2>/dev/null)
            _orrery_cli_offer "$current" < <(compgen -f -- "$current")
            ;;
        holidays:0 | import:0)
            _orrery_cli_offer "$current" < <(compgen -f -- "$current")
            ;;
        holidays:*)
            _orrery_cli_offer "$current" < <(_orrery_cli_years && compgen -f -- "$current")
            ;;
        generate:1 | check:1 | easter:*)
            _orrery_cli_offer "$current" < <(_orrery_cli_years)
            ;;
    esac
}

complete -o filenames -F _orrery_cli orrery-cli
