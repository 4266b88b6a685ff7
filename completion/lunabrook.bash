# bash completion for lunabrook, lunabrook-wyoming and lunabrook-intents

# The folder with the texts: what --bundle said, else as the program itself looks for it.
_lunabrook_bundle() {
    local i folder
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --bundle) echo "${words[i + 1]}" && return ;;
            --bundle=*) echo "${words[i]#*=}" && return ;;
        esac
    done
    folder=$(dirname "$(realpath "$(type -P "${words[0]}")" 2>/dev/null)")
    if [[ -e $folder/resources/Intents.json ]]; then
        echo "$folder/resources"
    else
        echo "$(dirname "$folder")/share/lunabrook"
    fi
}

_lunabrook_languages() {
    local folder
    for folder in "$(_lunabrook_bundle)"/*.lproj; do
        folder=${folder##*/}
        [[ $folder == "*.lproj" ]] || echo "${folder%.lproj}"
    done
}

# The values of the options that all three have.
_lunabrook_device_value() {
    case $1 in
        --preferences | --bundle)
            _filedir -d
            ;;
        --time-zone)
            local zones=/usr/share/zoneinfo/tzdata.zi
            # Zones are the lines "Z NAME ...", other names for them the lines "L ZONE NAME".
            [[ -r $zones ]] &&
                COMPREPLY=($(compgen -W "$(awk '$1 == "Z" { print $2 } $1 == "L" { print $3 }' $zones)" -- "$cur"))
            ;;
        --locale)
            COMPREPLY=($(compgen -W "$(locale -a 2>/dev/null | sed -n 's/^\([a-z]*_[A-Z]*\).*/\1/p')" -- "$cur"))
            ;;
        --language)
            # The last one of a list.
            local before=""
            [[ $cur == *,* ]] && before=${cur%,*},
            COMPREPLY=($(compgen -P "$before" -W "$(_lunabrook_languages)" -- "${cur##*,}"))
            ;;
        --now) ;;
        *) return 1 ;;
    esac
    return 0
}

_lunabrook_device="--preferences --now --time-zone --locale --language --bundle --help --version -V"

_lunabrook() {
    local cur prev words cword split
    _init_completion -s -n : || return
    case $prev in
        --output)
            _filedir
            return
            ;;
        --width) return ;;
    esac
    _lunabrook_device_value "$prev" && return
    $split && return

    # The verb is the first word that is no option and no option's value.
    local i verb="" inner=""
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
            --preferences | --now | --time-zone | --locale | --language | --bundle | --output | --width)
                ((++i))
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

    local choices="" options=$_lunabrook_device
    case $verb in
        "") choices="ask metrics today intents demo store watch" ;;
        ask)
            choices="lights-off time-asleep readiness sleep-fuel blood-oxygen respiration latest-bedtime sleep-rings
                wrist-temperature"
            options+=" --json"
            ;;
        intents) options+=" --json" ;;
        today) options+=" --json --svg --output --width" ;;
        demo) options+=" --again" ;;
        metrics)
            choices="sleep-rings blood-oxygen respiration wrist-temperature readiness sleep-fuel bedtime-consistency
                latest-bedtime requestQuality requestSpO2 requestRespRate requestWristTemp requestReadiness
                requestOctane requestConsistencyDict requestSleepBank"
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
        COMPREPLY=($(compgen -W "$options" -- "$cur"))
    elif [[ $verb == store && $inner == import ]]; then
        _filedir
    else
        COMPREPLY=($(compgen -W "$choices" -- "$cur"))
    fi
} &&
    complete -F _lunabrook lunabrook

_lunabrook_service() {
    local cur prev words cword split
    _init_completion -s -n : || return
    case $prev in
        --uri)
            # Readline takes a colon for the end of a word.
            COMPREPLY=($(compgen -W "stdio:// tcp://127.0.0.1:10620 unix://" -- "$cur"))
            __ltrim_colon_completions "$cur"
            return
            ;;
        --idle-seconds) return ;;
    esac
    _lunabrook_device_value "$prev" && return
    $split && return

    local options="$_lunabrook_device --idle-seconds"
    [[ ${words[0]##*/} == lunabrook-wyoming ]] && options+=" --uri"
    [[ $cur == -* ]] && COMPREPLY=($(compgen -W "$options" -- "$cur"))
} &&
    complete -F _lunabrook_service lunabrook-wyoming lunabrook-intents

# ex: filetype=sh
