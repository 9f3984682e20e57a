# Sourced by ./run. Reads and checks its arguments with what every Debian machine has, so that help and mistakes are
# answered at once, whatever has been installed or built. Mistakes end the script with exit status 2.

resources=Installer/Host/resources

# The values that a key has in the host's tables, in one line, English first.
of_each_language() {
    sed -n "s/^\"$1\" = \"\(.*\)\";/\1/p" "$resources"/en.lproj/Localizable.strings \
        $(ls -d "$resources"/*.lproj/Localizable.strings | sed '/\/en\.lproj/d') | paste -sd "$2"
}

language_codes() {
    of_each_language 'Language Setting' ' '
}

usage() {
    cat <<HELP
usage: ./run [media | web | gallery] [OPTION…]
       ./run plan | check [--media DIR] [OPTION…]   looks at media alone; ./run check --help tells more

Installs by the reference host: from the media (the default), from a download site, or once for every state and every
language, with a picture of each. Everything is written into one folder; nothing outside of it is touched.

  --out DIR          where results go (default: out/FLOW); empty, missing, or of an earlier run
  --media DIR        your own media instead of the sample
  --site URL         web: your own download site instead of the sample
  --offline          web: the site cannot be reached
  --language CODE    $(language_codes) (default: EN)
                     for $(of_each_language LanguageName , | sed 's/,/, /g')
  --authorize WORD   the answer to the administrator prompt: grant (default), deny, cancel, or ask, which shows it
  --timeout SECONDS  longest run (default: 600)
  --debug            writes the pane's trace log, and copies it to trace.log
  --show             uses the real display; the window stays open at the end until you close it
  --help             says this

Exit status:
  0  everything is installed
  1  the pane did not come to its end: refused, stuck, cancelled, timed out, or the run could not be made
  2  the arguments are wrong; nothing was done
  3  the pane went on, but packages failed, archives could not be expanded, or software was set aside
HELP
}

refuse() {
    echo "run: $1" >&2
    exit 2
}

refuse_usage() {
    refuse "$1 (./run --help lists what can be said)"
}

is_one_of() {
    local word=$1 each
    shift
    for each in "$@"; do
        [ "$word" = "$each" ] && return 0
    done
    return 1
}

# Sets flow, out, media, site, language, authorize, timeout to what was asked for, and offline, debug, show to "yes".
read_arguments() {
    flow='' out='' media='' site='' language=EN authorize=grant timeout=600 offline='' debug='' show=''
    while [ $# -gt 0 ]; do
        case $1 in
            -h | --help) usage; exit 0 ;;
            --offline | --debug | --show) printf -v "${1#--}" yes ;;
            --out | --media | --site | --language | --authorize | --timeout)
                [ $# -gt 1 ] || refuse_usage "$1 takes a value"
                printf -v "${1#--}" %s "$2"
                shift ;;
            --out=* | --media=* | --site=* | --language=* | --authorize=* | --timeout=*)
                local option=${1%%=*}
                printf -v "${option#--}" %s "${1#*=}" ;;
            -*) refuse_usage "unknown option $1" ;;
            *)
                [ -z "$flow" ] || refuse_usage "$flow and $1 cannot be run at once"
                flow=$1 ;;
        esac
        shift
    done
    check_words
}

check_words() {
    flow=${flow:-media}
    is_one_of "$flow" media web gallery || refuse_usage "there is no flow $flow"
    is_one_of "$authorize" grant deny cancel ask || refuse_usage "--authorize takes grant, deny, cancel or ask"
    # shellcheck disable=SC2046
    is_one_of "$language" $(language_codes) || refuse_usage "--language takes one of $(language_codes)"
    [[ $timeout =~ ^[0-9]+(\.[0-9]+)?$ && ! $timeout =~ ^[0.]+$ ]] || refuse_usage "--timeout takes a number of seconds"
    if [ "$flow" != web ] && [ -n "$site$offline" ]; then
        refuse_usage "--site and --offline belong to web"
    fi
    [ -z "$site" ] || [ -z "$offline" ] || refuse_usage "--site and --offline exclude each other"
    [ -z "$site" ] || [[ $site =~ ^https?://[^[:space:]\"\$\`\\]+$ ]] ||
        refuse_usage "--site takes an address that begins with http:// or https://"
}

# check_places START: looks at the folders, which are taken from START, and leaves in inner_arguments what the runner's
# inner part is to be told.
check_places() {
    local folder
    folder=$(cd "$1" && realpath -m -- "${out:-out/$flow}")
    check_output "$folder"
    inner_arguments=("$flow" --out "$folder" --language "$language" --authorize "$authorize" --timeout "$timeout")
    if [ -n "$media" ]; then
        media=$(cd "$1" && realpath -m -- "$media")
        check_media "$media" "$folder"
        inner_arguments+=(--media "$media")
    fi
    [ -z "$site" ] || inner_arguments+=(--site "$site")
    for word in offline debug show; do
        [ -z "${!word}" ] || inner_arguments+=("--$word")
    done
}

check_output() {
    local above=$1
    until [ -e "$above" ]; do above=$(dirname -- "$above"); done
    [ -d "$above" ] || refuse "--out: $above is no folder"
    [ -w "$above" ] && [ -x "$above" ] || refuse "--out: $above cannot be written to"
    [ -d "$1" ] || return 0
    [ -r "$1" ] || refuse "--out: $1 cannot be read"
    if [ ! -e "$1/.vant-run" ]; then
        [ -z "$(ls -A -- "$1")" ] || refuse "--out: $1 holds files that no run has written: choose an empty folder"
    elif ! (flock --nonblock 9) 9<"$1/.vant-run"; then
        refuse "--out: another run is writing to $1"
    fi
}

check_media() {
    [ -e "$1" ] || refuse "--media: there is no $1"
    [ -d "$1" ] || refuse "--media: $1 is no folder"
    [ -r "$1" ] && [ -x "$1" ] || refuse "--media: $1 cannot be read"
    case $1/ in
        "$2"/*) refuse "--media: $1 lies inside the output folder, whose files the next run replaces" ;;
    esac
}
