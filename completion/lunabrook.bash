# bash completion for lunabrook

_lunabrook() {
    local cur prev words cword split
    _init_completion -s || return

    local device="--preferences --now --time-zone --locale --language --bundle"
    case $prev in
        --preferences | --bundle)
            _filedir -d
            return
            ;;
        --time-zone)
            local zones=/usr/share/zoneinfo/tzdata.zi
            # Zones are the lines "Z NAME ...", other names for them the lines "L ZONE NAME".
            [[ -r $zones ]] &&
                COMPREPLY=($(compgen -W "$(awk '$1 == "Z" { print $2 } $1 == "L" { print $3 }' $zones)" -- "$cur"))
            return
            ;;
        --locale)
            COMPREPLY=($(compgen -W "$(locale -a 2>/dev/null | sed -n 's/^\(..*_[A-Z]*\).*/\1/p')" -- "$cur"))
            return
            ;;
        --now | --language)
            return
            ;;
    esac
    $split && return

    # The verb is the first word that is no option and no option's value.
    local i verb="" inner=""
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --preferences | --now | --time-zone | --locale | --language | --bundle)
                ((++i))
                # Readline parts --option=VALUE into three words.
                [[ ${words[i]} == = ]] && ((++i))
                ;;
            -*) ;;
            *)
                if [[ ! $verb ]]; then
                    verb=${words[i]}
                elif [[ ! $inner ]]; then
                    inner=${words[i]}
                fi
                ;;
        esac
    done

    local choices=""
    case $verb in
        "") choices="ask metrics today intents demo store watch" ;;
        ask)
            choices="lights-off time-asleep readiness sleep-fuel blood-oxygen respiration latest-bedtime sleep-rings
                wrist-temperature"
            device+=" --json"
            ;;
        intents) device+=" --json" ;;
        metrics)
            choices="requestQuality requestSpO2 requestRespRate requestWristTemp requestReadiness requestOctane
                requestConsistencyDict requestSleepBank"
            ;;
        store)
            case $inner in
                "") choices="show import" ;;
                show) choices="bankDict watchTrackDict lunabrookConfig activeLightSwitch cachedSleepBank cachedSleepBankUpdate" ;;
            esac
            ;;
        watch) [[ $inner ]] || choices=push ;;
    esac

    if [[ $cur == -* ]]; then
        [[ $verb ]] || device+=" --version"
        COMPREPLY=($(compgen -W "$device --help" -- "$cur"))
    elif [[ $verb == store && $inner == import ]]; then
        _filedir
    else
        COMPREPLY=($(compgen -W "$choices" -- "$cur"))
    fi
} &&
    complete -F _lunabrook lunabrook

# ex: filetype=sh
