# fish completion for lunabrook, lunabrook-wyoming and lunabrook-intents

# The words before the cursor that are neither options nor their values: verb, what follows it.
function __lunabrook_words
    set -l is_value no
    for word in (commandline -opc)[2..-1]
        if test $is_value = yes
            set is_value no
        else if contains -- $word --preferences --now --time-zone --locale --language --bundle --output --width
            set is_value yes
        else if not string match -q -- '-*' $word
            echo $word
        end
    end
end

# Whether they begin with these, and whether they are these: `__lunabrook_after ask`, `__lunabrook_at store show`.
function __lunabrook_after
    set -l words (__lunabrook_words)
    test "$words[1..$(count $argv)]" = "$argv"
end

function __lunabrook_at
    set -l words (__lunabrook_words)
    test "$words" = "$argv"
end

# The languages of the folder with the texts: what --bundle said, else as the program itself looks for it.
function __lunabrook_languages
    set -l words (commandline -opc)
    set -l said (contains -i -- --bundle $words)
    and set -l folder $words[(math $said + 1)]
    or begin
        set -l programs (dirname (realpath (command -s $words[1]; or echo $words[1])))
        set folder $programs/resources
        test -e $folder/Intents.json
        or set folder (dirname $programs)/share/lunabrook
    end
    for language in $folder/*.lproj
        basename $language .lproj
    end
end

for program in lunabrook lunabrook-wyoming lunabrook-intents
    complete -c $program -f
    complete -c $program -l preferences -x -a '(__fish_complete_directories)' -d 'Folder of the store'
    complete -c $program -l now -x -d 'Stop the clock there: 2026-06-10T08:30:00+02:00'
    complete -c $program -l time-zone -x -d 'Zone of days and times' -a '(
        awk \'$1 == "Z" { print $2 } $1 == "L" { print $3 }\' /usr/share/zoneinfo/tzdata.zi 2>/dev/null)'
    complete -c $program -l locale -x -d 'Locale of numbers and times' -a '(
        locale -a 2>/dev/null | string match -r "^[a-z]+_[A-Z]+")'
    complete -c $program -l language -x -d 'Languages of the texts, most wanted first' -a '(
        __fish_complete_list , __lunabrook_languages)'
    complete -c $program -l bundle -x -a '(__fish_complete_directories)' -d 'Folder with the texts'
    complete -c $program -s h -l help -d 'Print help and exit'
    complete -c $program -s V -l version -d 'Print the version and exit'
end

complete -c lunabrook-intents -l idle-seconds -x -d 'Leave when nobody called for so long'
complete -c lunabrook-wyoming -l idle-seconds -x -d 'End a connection that was silent for so long'
complete -c lunabrook-wyoming -l uri -x -a 'stdio:// tcp://127.0.0.1:10620 unix://' -d 'Where to listen'

complete -c lunabrook -n __lunabrook_at -a ask -d 'Answer intents, one sentence a line'
complete -c lunabrook -n __lunabrook_at -a metrics -d 'Show the results of the metrics as JSON'
complete -c lunabrook -n __lunabrook_at -a today -d 'Show the whole morning at a glance'
complete -c lunabrook -n __lunabrook_at -a intents -d 'List the nine intents'
complete -c lunabrook -n __lunabrook_at -a demo -d 'Fill an empty folder with a made-up week'
complete -c lunabrook -n __lunabrook_at -a store -d 'Look into the store or fill it'
complete -c lunabrook -n __lunabrook_at -a watch -d 'Speak to the paired watch'

complete -c lunabrook -n '__lunabrook_after ask' -a lights-off -d 'Record that you go to bed now'
complete -c lunabrook -n '__lunabrook_after ask' -a time-asleep -d 'How long you slept, and the sleep bank'
complete -c lunabrook -n '__lunabrook_after ask' -a readiness -d 'How ready you are for the day'
complete -c lunabrook -n '__lunabrook_after ask' -a sleep-fuel -d 'What the night gave back'
complete -c lunabrook -n '__lunabrook_after ask' -a blood-oxygen -d 'Blood oxygen and its week'
complete -c lunabrook -n '__lunabrook_after ask' -a respiration -d 'Respiration rate and its week'
complete -c lunabrook -n '__lunabrook_after ask' -a latest-bedtime -d 'When to be in bed tonight'
complete -c lunabrook -n '__lunabrook_after ask' -a sleep-rings -d 'Closed rings and the rating'
complete -c lunabrook -n '__lunabrook_after ask' -a wrist-temperature -d 'Wrist temperature and its baseline'
complete -c lunabrook -n '__lunabrook_after ask' -l json -d 'One JSON object a line'

complete -c lunabrook -n '__lunabrook_after metrics' -a 'sleep-rings blood-oxygen respiration wrist-temperature
    readiness sleep-fuel bedtime-consistency latest-bedtime requestQuality requestSpO2 requestRespRate requestWristTemp
    requestReadiness requestOctane requestConsistencyDict requestSleepBank'

complete -c lunabrook -n '__lunabrook_after today' -l json -d 'As one JSON object'
complete -c lunabrook -n '__lunabrook_after today' -l svg -d 'As a picture'
complete -c lunabrook -n '__lunabrook_after today' -l output -r -F -d 'Draw the picture into a file'
complete -c lunabrook -n '__lunabrook_after today' -l width -x -d 'How wide the picture is, 320 to 1600 pixels'
complete -c lunabrook -n '__lunabrook_after intents' -l json -d 'One JSON object a line'
complete -c lunabrook -n '__lunabrook_after demo' -l again -d 'Replace the week that an earlier demo made'

complete -c lunabrook -n '__lunabrook_at store' -a show -d 'Print the store as JSON'
complete -c lunabrook -n '__lunabrook_at store' -a import -d 'Take over a property list'
complete -c lunabrook -n '__lunabrook_at store show' -a 'bankDict watchTrackDict lunabrookConfig activeLightSwitch
    cachedSleepBank cachedSleepBankUpdate'
complete -c lunabrook -n '__lunabrook_at store import' -F
complete -c lunabrook -n '__lunabrook_at watch' -a push -d 'Send the labels of this morning'
