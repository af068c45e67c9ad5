# Sourced by zemvolt: runs examples and programs, each on a device of its own.

# A screen of the device's size, of this run's own.
start_display() {
    local number xvfb
    mkfifo "$device/displayfd"
    ZEMVOLT_RUN=$device Xvfb -displayfd 3 -screen 0 "$(desk_screen)x24" -noreset -nolisten tcp \
        3<>"$device/displayfd" >"$device/logs/xvfb.log" 2>&1 </dev/null 9>&- &
    xvfb=$!
    disown
    read -r -t 20 number <>"$device/displayfd" ||
        fail "the display cannot be started: $(tail -n1 "$device/logs/xvfb.log")"
    echo "$number $xvfb" >"$device/display"
    export DISPLAY=:$number
}

display_works() { [ -n "${DISPLAY:-}" ] && xdotool getdisplaygeometry >/dev/null 2>&1; }

# The program ends with this script, but is asked to, and its own exit code is told.
start_java() {
    local place=--screen
    [ "$kind" = x11 ] || place=--on
    # shellcheck disable=SC2086 # one word, or none
    "$root/launcher/java-on-device" $place "$device" $device_code "${checking[@]}" "$@" 9>&- &
    program=$!
}
await_program() {
    local code
    trap 'kill -TERM $program 2>/dev/null' TERM INT HUP
    trap 'kill -QUIT $program 2>/dev/null' QUIT
    wait "$program"
    code=$?
    # A trapped signal ends the waiting before the program has ended.
    while kill -0 "$program" 2>/dev/null; do
        wait "$program"
        code=$?
    done
    return $code
}

examples=$root/launcher/examples
example_names() { basename -s .script "$examples"/*.script; }
toolkit=$build/desk/java/zemvolt11.jar:$build/desk/java/program.jar

# What tests need beside the toolkit (docs/testing.md).
kit=$build/desk/java/testing.jar:/usr/share/java/junit4.jar:/usr/share/java/hamcrest-core.jar
kit_options=(-companion:testing.dll=com/nuvik/testing/Emulated)
# A class of JUnit's runs tests: nobody looks at their device unless a display is named.
runs_tests() { [[ ${program_words[0]:-} = org.junit.* ]]; }
use_kit() {
    toolkit=$toolkit:$kit
    vm_words=("${kit_options[@]}" "${vm_words[@]}")
    [ -n "$display" ] || kind=null
}

# An example is played by its script where nobody looks at it, unless another script is named.
run_example() {
    local words=() code class=com.nuvik.examples.${example^} picture=$device/screenshot.png
    [ "$example" != gauge ] || words=(-companion:gauge.dll=com/nuvik/examples/Gauge)
    words+=("${vm_words[@]}" -cp "$toolkit:$build/desk/java/examples.jar")
    [ -z "$script" ] || words+=(-Dzemvolt.screenshot="$picture" com.nuvik.testing.Script "$script")
    start_java "${words[@]}" "$class" </dev/null
    await_program
    code=$?
    if [ $code = 0 ] && [ -f "$picture" ]; then keep_screenshot "$picture"; fi
    return $code
}

# A file is there as a whole or not at all: several runs may leave the latest.
keep_screenshot() {
    local folder=$build/screenshots
    if [ -z "$screenshot" ]; then
        screenshot=$folder/$example-$$.png
        mkdir -p "$folder" && cp "$1" "$device/latest.png" && mv "$device/latest.png" "$build/screenshot.png"
    fi
    mv "$1" "$screenshot" && echo "screenshot: ${screenshot#"$root/"}"
}

# Adds the toolkit, and what programs on it need, to the program's class path.
run_program() {
    local words=()
    while [ $# -gt 0 ]; do
        case $1 in
        -cp | -classpath | --class-path)
            [ $# -ge 2 ] || fail "$1 wants a value"
            words+=(-cp "$toolkit:$2")
            shift
            ;;
        --class-path=*) words+=(-cp "$toolkit:${1#*=}") ;;
        -jar) words+=(-cp "$toolkit" "$@") && break ;;
        -*) words+=("$1") ;;
        *) words+=(${script:+com.nuvik.testing.Script "$script"} "$@") && break ;; # what follows is the program's
        esac
        shift
    done
    [ "$kind" = null ] || display_works || start_display
    start_java "${words[@]}" </dev/null
    await_program
}

# What the device's sound is asked for: to a file, at another speed, and on this machine's output.
sound_to_file() {
    local file
    file=$(realpath -m -- "$1")
    [ -w "$file" ] || { [ ! -e "$file" ] && [ -w "$(dirname "$file")" ]; } ||
        fail "$1 cannot be written"
    export ZEMVOLT_SOUND_FILE=Z:$file # as the device sees it
}

sound_at_speed() {
    [[ $1 =~ ^[0-9]{1,6}$ ]] || fail "--sound-speed wants a number"
    export ZEMVOLT_SOUND_SPEED=$1
}

has_sound_output() {
    [ -n "${PULSE_SERVER:-}" ] || [ -S "${XDG_RUNTIME_DIR:-/run/user/$(id -u)}/pulse/native" ] ||
        grep -qs '^ *[0-9]' /proc/asound/cards
}

keep_storage() {
    storage=$(realpath -m -- "$1")
    { mkdir -p "$storage" 2>/dev/null && [ -w "$storage" ]; } || fail "$1 cannot be written"
}

# takes_one_of OPTION VALUE CHOICE...
takes_one_of() {
    is_one_of "$2" "${@:3}" && return
    echo "zemvolt: $1 takes no $2; it takes: ${*:3}" >&2
    exit 2
}

# What handhelds have. A larger screen has as many dots more per inch.
screens=(240x320 320x240 240x240 480x640 640x480 480x480)
densities=(96 128 192)
usual_density() {
    case $1 in
    *480*) echo 192 ;;
    *) echo 96 ;;
    esac
}

add_setting() { export ZEMVOLT_DEVICE=${ZEMVOLT_DEVICE:+$ZEMVOLT_DEVICE,}$1; }

# What the options make of the device.
describe_device() {
    [ -z "$screen" ] || add_setting "screen=$screen,dpi=$(usual_density "$screen")"
    [ -z "$density" ] || add_setting "dpi=$density"
    [ "$wants_task_bar" != off ] || add_setting bar=0
    add_task_bar
    [ "$wants_panel" != off ] || add_setting panel=none
    [ -n "$can_turn" ] || return
    if [ "$(setting_of bar)" = 0 ]; then
        echo "zemvolt: --rotate wants the task bar, whose button turns the screen" >&2
        exit 2
    fi
    add_setting turn=button
}

# The languages and regions that the machine's own description of them knows.
locale_names() {
    sed -n 's,^\([a-z]*_[A-Z]*\)\(\.UTF-8\)\? UTF-8.*,\1,p' /usr/share/i18n/SUPPORTED | sort -u
}

must_be_locale() {
    local names
    install_missing locales
    mapfile -t names < <(locale_names)
    is_one_of "$1" "${names[@]}" && return
    tell_near "--locale takes no $1" "$1" "${names[@]}"
    exit 2
}

# use_locale NAME: compiled for this run's device, as the machine need not have it.
use_locale() {
    mkdir "$device/locale"
    localedef -i "$1" -f UTF-8 "$device/locale/$1.UTF-8" >>"$device/logs/locale.log" 2>&1 ||
        [ -e "$device/locale/$1.UTF-8/LC_CTYPE" ] || fail "the locale $1 cannot be made"
    export LOCPATH=$device/locale
    export LC_ALL=$1.UTF-8 2>/dev/null # this shell does not find it there
}

has_fonts() {
    font_folder=$(realpath -m -- "$1")
    [ -n "$(find "$font_folder" -iname '*.[to]t[fc]' -print -quit 2>/dev/null)" ] && return
    echo "zemvolt: $1 has no fonts; --fonts takes a folder with files *.ttf, *.otf or *.ttc" >&2
    exit 2
}

# check_calls throw|report: what stands between the program and the natives tells misuse.
check_calls() {
    takes_one_of --check "$1" throw report
    checking=(-check)
    [ "$1" = throw ] || checking=(-check:report)
    toolkit=$toolkit:$build/desk/java/checking.jar
}

screenshot_to() {
    screenshot=$(realpath -m -- "$1")
    { [ -d "$(dirname "$screenshot")" ] && [ -w "$(dirname "$screenshot")" ]; } ||
        fail "$1 cannot be written"
}

# A wrong script is told before anything starts, by the host's own Java.
must_be_script() {
    [ "${program_words[0]:-}" != -jar ] || fail "--script wants a class, and no jar"
    java -cp "$build/desk/java/testing.jar" com.nuvik.testing.Script --check "$script" || exit 2
}

version() {
    local revision
    revision=$(git -C "$root" describe --always --dirty 2>/dev/null) || revision=unknown
    echo "zemvolt11, revision $revision"
    [ ! -x "$wine" ] || echo "on Wine $(dpkg-query -W -f '${Version}' wine32:i386 2>/dev/null)"
    [ ! -f "$jre/release" ] || sed -n 's/^JAVA_VERSION="\(.*\)"/with Java \1/p' "$jre/release"
}

options=(--check --device --display --dpi --fonts --help --input-panel --locale --rotate --screen
    --screenshot --script --sound-file --sound-speed --storage --task-bar --version)
# The Java VM's own.
vm_options=(--add-exports --add-modules --add-opens --add-reads --class-path --enable-preview
    --illegal-access --limit-modules --module-path --patch-module --upgrade-module-path)

device_code= # or --device
checking=()
kind=x11     # or null, without a display
display=
storage=
screen=
density=
wants_task_bar=
wants_panel=
can_turn=
locale=
font_folder=
script=
screenshot= # by default one of the run's own among the screenshots, and the latest beside them
vm_words=()
program_words=()

# set_option NAME [VALUE]
set_option() {
    case $1 in
    --check) check_calls "${2:-throw}" ;;
    --device) device_code=--device ;;
    --display) display=$2 ;;
    --dpi) takes_one_of "$1" "$2" "${densities[@]}" && density=$2 ;;
    --fonts) has_fonts "$2" ;;
    --input-panel) takes_one_of "$1" "$2" on off && wants_panel=$2 ;;
    --locale) locale=$2 ;;
    --rotate) can_turn=yes ;;
    --screen) takes_one_of "$1" "$2" "${screens[@]}" && screen=$2 ;;
    --screenshot) screenshot_to "$2" ;;
    --script) script=$2 ;;
    --sound-file) sound_to_file "$2" ;;
    --sound-speed) sound_at_speed "$2" ;;
    --storage) keep_storage "$2" ;;
    --task-bar) takes_one_of "$1" "$2" on off && wants_task_bar=$2 ;;
    --version)
        version
        exit
        ;;
    --help)
        usage_of_run
        exit
        ;;
    esac
}
takes_value() { [[ $1 != --@(check|device|help|rotate|version) ]]; }
is_one_of() {
    local word=$1
    shift
    while [ $# -gt 0 ]; do
        [ "$1" != "$word" ] || return 0
        shift
    done
    return 1
}

# Takes this command's own options out of the words, and leaves the example's name or the words of the
# program, with the VM's options before. Behind a class or a jar all words are the program's; behind
# an example options are still this command's.
read_options() {
    local name value has_class_path=
    while [ $# -gt 0 ]; do
        name=${1%%=*}
        if is_one_of "$name" "${options[@]}"; then
            value=()
            if takes_value "$name"; then
                [ "$name" = "$1" ] || set -- "$name" "${1#*=}" "${@:2}"
                [ $# -ge 2 ] || fail "$name wants a value"
                value=("$2")
                shift
            elif [ "$name" = --check ] && [ "$name" != "$1" ]; then
                value=("${1#*=}")
            fi
            shift
            set_option "$name" "${value[@]}"
            continue
        fi
        case $1 in
        -cp | -classpath | --class-path)
            vm_words+=("${@:1:2}")
            has_class_path=yes
            shift $(($# < 2 ? $# : 2))
            continue
            ;;
        --class-path=*) has_class_path=yes ;;
        -jar)
            program_words=("$@")
            return
            ;;
        --*) is_one_of "$name" "${vm_options[@]}" || refuse_option run "$1" "${options[@]}" ;;
        -*) ;;
        *)
            if [ -n "$has_class_path" ]; then
                program_words=("$@")
                return
            fi
            [ -z "$example" ] || fail "an example takes no arguments: $1"
            example=$1
            shift
            continue
            ;;
        esac
        vm_words+=("$1")
        shift
    done
    [ -z "$has_class_path" ] || fail "there is no class to run"
    example=${example:-tap}
}

must_be_example() {
    local names
    [ -f "$examples/$1.script" ] && return
    mapfile -t names < <(example_names)
    tell_near "there is no example $1, and a program wants a class path" "$1" "${names[@]}"
    exit 2
}

run_command() {
    example=
    read_options "$@"
    [ -z "$example" ] || must_be_example "$example"
    if ! runs_tests && has_sound_output; then export ZEMVOLT_SOUND_OUTPUT=desk; fi
    describe_device
    [ -z "$locale" ] || must_be_locale "$locale"
    [ -z "$display" ] || export DISPLAY=$display
    setup_for_running
    if [ -n "$example" ] && [ -z "$script" ] && ! display_works; then script=$examples/$example.script; fi
    if runs_tests || [ -n "$script" ]; then use_kit; fi
    [ -z "$script" ] || must_be_script
    [ -z "$display" ] || display_works || fail "there is no display $DISPLAY"
    new_device "$kind" "$storage"
    trap leave_device EXIT
    [ -z "$locale" ] || use_locale "$locale"
    [ -z "$font_folder" ] ||
        fonts_conf "$run/fontconfig/fonts" "$font_folder" >"$device/fonts.conf"
    if [ -n "$example" ]; then
        run_example
    else
        run_program "${vm_words[@]}" "${program_words[@]}"
    fi
}
