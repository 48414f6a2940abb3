# bash completion for netparam; made by "netparam completion bash".

_netparam_reply() # WORDS
{
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

_netparam_files()
{
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$cur")
}

_netparam()
{
    local cur=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} program=${1/#\~\//$HOME/}
    local verb='' place=0 i word valued='' options=''
    # The shell makes "--option=value" three words.
    if [[ $cur == = ]]; then
        cur=
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ -z $verb ]]; then
            [[ $word == -* ]] && continue
            verb=$word
            case $verb in
            list)
                options='-h --help --json --names'
                valued='  '
                ;;
            describe)
                options='-h --help --all --json --schema --markdown --examples --rows'
                valued=' --schema --examples '
                ;;
            page)
                options='-h --help'
                valued='  '
                ;;
            parse)
                options='-h --help --ext --show-secrets --traces --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone --format --json --memory --svg --only --nonzero --flat --quiet --grid-out --raw'
                valued=' --ext --channels --alarm-inputs --alarm-outputs --type --display-type --country --format --svg --only --grid-out --raw '
                ;;
            exchange)
                options='-h --help --ext --show-secrets --traces --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone --full --svg --format --json'
                valued=' --ext --channels --alarm-inputs --alarm-outputs --type --display-type --country --svg --format '
                ;;
            new)
                options='-h --help --minimal --bare'
                valued='  '
                ;;
            set)
                options='-h --help --ext --show-secrets --traces --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone --grid --diff --in-place'
                valued=' --ext --channels --alarm-inputs --alarm-outputs --type --display-type --country --grid '
                ;;
            write)
                options='-h --help --ext --show-secrets --traces --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone --grid --strict --json --raw'
                valued=' --ext --channels --alarm-inputs --alarm-outputs --type --display-type --country --grid --raw '
                ;;
            diff)
                options='-h --help --ext --show-secrets --traces --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone --json'
                valued=' --ext --channels --alarm-inputs --alarm-outputs --type --display-type --country '
                ;;
            check)
                options='-h --help --message --format --json --strict --any-root -v --verbose --ext --show-secrets --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone'
                valued=' --message --format --ext --channels --alarm-inputs --alarm-outputs --type --display-type --country '
                ;;
            watch)
                options='-h --help --details --message --show-secrets --channels --alarm-inputs --alarm-outputs --type --display-type --country --wifi --wifi-kit --standalone'
                valued=' --message --channels --alarm-inputs --alarm-outputs --type --display-type --country '
                ;;
            filter)
                options='-h --help --also'
                valued=' --also '
                ;;
            *) return ;;
            esac
        elif [[ $valued == *" $word "* ]]; then
            ((i++))
            [[ ${COMP_WORDS[i]} == = ]] && ((i++))
        elif [[ $word != -?* ]]; then
            ((place++))
        fi
    done
    if [[ -z $verb ]]; then
        _netparam_reply 'list describe page parse exchange new set write diff check watch filter --version -h --help'
        return
    fi
    case $verb,$before in
    describe,--schema) _netparam_reply 'json xsd' ;;
    describe,--examples) : ;;
    parse,--ext) _netparam_files ;;
    parse,--channels) : ;;
    parse,--alarm-inputs) : ;;
    parse,--alarm-outputs) : ;;
    parse,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    parse,--display-type) : ;;
    parse,--country) : ;;
    parse,--format) _netparam_reply 'text json github-actions' ;;
    parse,--svg) _netparam_files ;;
    parse,--only) _netparam_files ;;
    parse,--grid-out) _netparam_files ;;
    parse,--raw) _netparam_files ;;
    exchange,--ext) _netparam_files ;;
    exchange,--channels) : ;;
    exchange,--alarm-inputs) : ;;
    exchange,--alarm-outputs) : ;;
    exchange,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    exchange,--display-type) : ;;
    exchange,--country) : ;;
    exchange,--svg) _netparam_files ;;
    exchange,--format) _netparam_reply 'text github-actions' ;;
    set,--ext) _netparam_files ;;
    set,--channels) : ;;
    set,--alarm-inputs) : ;;
    set,--alarm-outputs) : ;;
    set,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    set,--display-type) : ;;
    set,--country) : ;;
    set,--grid) _netparam_files ;;
    write,--ext) _netparam_files ;;
    write,--channels) : ;;
    write,--alarm-inputs) : ;;
    write,--alarm-outputs) : ;;
    write,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    write,--display-type) : ;;
    write,--country) : ;;
    write,--grid) _netparam_files ;;
    write,--raw) _netparam_files ;;
    diff,--ext) _netparam_files ;;
    diff,--channels) : ;;
    diff,--alarm-inputs) : ;;
    diff,--alarm-outputs) : ;;
    diff,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    diff,--display-type) : ;;
    diff,--country) : ;;
    check,--message) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    check,--format) _netparam_reply 'text json github-actions' ;;
    check,--ext) _netparam_files ;;
    check,--channels) : ;;
    check,--alarm-inputs) : ;;
    check,--alarm-outputs) : ;;
    check,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    check,--display-type) : ;;
    check,--country) : ;;
    watch,--message) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    watch,--channels) : ;;
    watch,--alarm-inputs) : ;;
    watch,--alarm-outputs) : ;;
    watch,--type) _netparam_reply 'IPC NVR HVR DVR BASE HOMEHUB' ;;
    watch,--display-type) : ;;
    watch,--country) : ;;
    filter,--also) : ;;
    esac
    [[ $valued == *" $before "* ]] && return
    if [[ $cur == -?* || $cur == - ]]; then
        _netparam_reply "$options"
        return
    fi
    case $verb,$place in
    list,0) : ;;
    describe,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    parse,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    parse,1) _netparam_files ;;
    exchange,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    exchange,1) _netparam_files ;;
    new,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    set,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    set,1) _netparam_files ;;
    set,*) _netparam_files ;;
    write,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    write,1) _netparam_files ;;
    diff,0) _netparam_reply "$("$program" list --names 2>/dev/null)" ;;
    diff,1) _netparam_files ;;
    diff,2) _netparam_files ;;
    check,*) _netparam_files ;;
    watch,0) _netparam_files ;;
    filter,*) _netparam_files ;;
    esac
}

complete -F _netparam netparam
