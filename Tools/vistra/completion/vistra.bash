# Completion of the command vistra for bash.

_vistra_options() {
    case $1 in
    "") echo "--help --version" ;;
    list) echo "--help --files --json" ;;
    show) echo "--help --clear" ;;
    check) echo "--help --most --quiet" ;;
    export) echo "--help --format" ;;
    report) echo "--help --output" ;;
    doctor) echo "--help --family --product --key --host --agent --state --json" ;;
    opt-in) echo "--help" ;;
    opt-in/*) echo "--help --json" ;;
    erase) echo "--help --key --dry-run --yes" ;;
    esac
}

# The command, and behind it what `opt-in` is to do, as far as they stand before the cursor.
_vistra_command() {
    local word command=
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $command:$word in
        :-*) ;;
        :*) command=$word ;;
        opt-in:status | opt-in:in | opt-in:out | opt-in:reset) command=opt-in/$word ;;
        esac
    done
    echo "$command"
}

_vistra() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command words
    command=$(_vistra_command)
    COMPREPLY=()
    compopt -o filenames 2>/dev/null
    case $previous in
    --format) words="jsonl csv" ;;
    --state) words="0 1 2 3" ;;
    --key | --family | --product | --most) return ;;
    --agent)
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --host | --output | -o)
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    *)
        case $command:$current in
        *:-*) words=$(_vistra_options "$command") ;;
        :*) words="list show check export report doctor opt-in erase" ;;
        opt-in:*) words="status in out reset" ;;
        list:* | report:*)
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            return
            ;;
        show:* | check:* | export:*)
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            return
            ;;
        esac
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
}

complete -F _vistra vistra
