# Sourced by the launcher's scripts behind environment.sh: emulated devices. A device is a folder with
# all that its programs change: the state of a Wine prefix, the storage, temporary files and logs. What
# no program changes is shared with the prefix that make-prefix makes.
#
# A device lives as long as somebody holds the lock of its folder: the script that made it, or the
# program that this script becomes. A keeper waits for that lock and then ends what still runs on the
# device and removes it, however its owner ended. When the keeper is gone too, the next device's
# maker does it.

devices=$run/devices

# processes_of FOLDER: the ids of the device's processes, known by their environment.
processes_of() {
    grep -lzxF "ZEMVOLT_RUN=$1" /proc/[0-9]*/environ 2>/dev/null | cut -d/ -f3
    return 0 # other people's processes are not for reading, and some end meanwhile
}

# The one that was started last: another one may still be ending.
server_of() {
    local pids
    pids=$(processes_of "$1")
    [ -z "$pids" ] || ps --sort=start_time,pid -o pid=,comm= -p "${pids//$'\n'/,}" |
        awk '$2 == "wineserver32" { server = $1 } END { if (server) print server }'
}

# await_ends SECONDS PID...: until none of the processes runs, or the time is over. One that has ended may
# stay listed for seconds, until its parent asks for it.
await_ends() {
    local seconds=$1 pid
    shift
    for pid in "$@"; do
        # shellcheck disable=SC2016 # the inner shell's own
        timeout "$seconds" bash -c \
            'while grep -qs "^State:.[^ZX]" "/proc/$1/status"; do sleep 0.02; done' - "$pid" || return 1
    done
}

# Asks the processes of the device to end, and ends those that do not within some seconds.
end_processes() {
    local pids
    mapfile -t pids < <(processes_of "$1")
    [ ${#pids[@]} = 0 ] && return
    # Some may have ended meanwhile, which is as good.
    kill -TERM "${pids[@]}" 2>/dev/null || true
    await_ends "${2:-2}" "${pids[@]}" && return
    mapfile -t pids < <(processes_of "$1")
    [ ${#pids[@]} = 0 ] && return
    kill -KILL "${pids[@]}" 2>/dev/null || true
    await_ends 5 "${pids[@]}" || true
}

# What a display that was killed leaves among the temporary files, unless another has its number now.
forget_display() {
    local number pid
    read -r number pid 2>/dev/null <"$1/display" || return 0
    [ "$(tr -d ' ' 2>/dev/null <"/tmp/.X$number-lock")" = "$pid" ] || return 0
    await_ends 2 "$pid" || return 0
    rm -f "/tmp/.X$number-lock" "/tmp/.X11-unix/X$number"
}

# end_device FOLDER: ends what runs on the device and removes it. The Java program first: it may have
# something to do in the end.
end_device() {
    local java
    if read -r java 2>/dev/null <"$1/java"; then
        processes_of "$1" | grep -qx "$java" && kill -TERM "$java" 2>/dev/null && await_ends 5 "$java"
        rm -f "/tmp/.java_pid$java"
    fi
    end_processes "$1"
    forget_display "$1"
    rm -rf "$1"
}

# Ends the devices whose owner and keeper are gone.
end_lost_devices() {
    local folder
    for folder in "$devices"/*/; do
        folder=${folder%/}
        [ -e "$folder/lock" ] || continue
        (
            exec 8<"$folder/lock"
            flock -n 8 && end_device "$folder"
        )
    done
}

# setting_of NAME [OTHERWISE]: what ZEMVOLT_DEVICE says of it (emulator/README.md), the last word.
setting_of() {
    local value
    value=$(tr , '\n' <<<"${ZEMVOLT_DEVICE:-}" | sed -n "s/^$1=//p" | tail -n 1)
    echo "${value:-${2:-}}"
}

# What people look at has a task bar unless ZEMVOLT_DEVICE says otherwise: as large to the eye on every
# screen.
add_task_bar() {
    [ -n "$(setting_of bar)" ] ||
        export ZEMVOLT_DEVICE=${ZEMVOLT_DEVICE:+$ZEMVOLT_DEVICE,}bar=$((26 * $(setting_of dpi 96) / 96))
}

# What shows a device's screen is as large as it may get: it can be turned while a program runs.
desk_screen() {
    local screen width height
    screen=$(setting_of screen 240x320)
    width=${screen%x*}
    height=${screen#*x}
    if [ -n "$(setting_of turn)" ]; then
        width=$((width > height ? width : height))
        height=$width
    fi
    echo "${width}x$height"
}

# user_registry KIND: what a device has of its own in the current user's part of the registry.
user_registry() {
    local screen=240x320
    [ "$1" != x11 ] || screen=$(desk_screen)
    cat <<REG

[Software\\\\Wine\\\\Explorer] 1
"Desktop"="device"

[Software\\\\Wine\\\\Explorer\\\\Desktops] 1
"device"="$screen"
REG
    [ "$1" = x11 ] || cat <<'REG'

[Software\\Wine\\Drivers] 1
"Graphics"="null"
REG
}

# fill_device FOLDER KIND STORAGE: the prefix of a device, from the one that make-prefix made. Its
# drives: c: as ever, w: all that is built, x: the storage, y: the programs and libraries, z: this
# machine's root.
fill_device() {
    local shared
    mkdir -p "$1"/{dosdevices,drive_c,tmp,logs} "$3/My Documents" || return 1
    for shared in "$run"/prefix/drive_c/*; do
        [ "${shared##*/}" = users ] || ln -s "$shared" "$1/drive_c/"
    done
    cp -a "$run/prefix/drive_c/users" "$1/drive_c/" &&
        ln -s ../drive_c "$1/dosdevices/c:" && ln -s "$build" "$1/dosdevices/w:" &&
        ln -s "$3" "$1/dosdevices/x:" && ln -s "$bin" "$1/dosdevices/y:" &&
        ln -s / "$1/dosdevices/z:" &&
        cp "$run"/prefix/{system,user,userdef}.reg "$run/prefix/.update-timestamp" "$1/" &&
        user_registry "$2" >>"$1/user.reg"
}

# new_device null|x11 [STORAGE]: makes a device and leaves its folder in device. A null device has a
# screen without a display, for tests; the other one shows it. Its storage goes with it unless another
# folder is named. The lock is on file descriptor 9, which what is started from here must not inherit
# unless it is the device's owner.
new_device() {
    "$root/launcher/make-prefix" || exit 1
    mkdir -p "$devices" || fail "$build cannot be written; ZEMVOLT_BUILD names another build folder"
    exec 7>"$devices/making"
    flock 7
    end_lost_devices 7>&-
    device=$(mktemp -d "$devices/XXXXXX")
    exec 9>"$device/lock"
    flock 9
    echo $$ >"$device/owner"
    exec 7>&-
    fill_device "$device" "$1" "${2:-$device/storage}" || fail "the device cannot be made in $device"
    setsid "$root/launcher/keep-device" "$device" </dev/null >/dev/null 2>&1 9>&- &
    disown
}

# leave_device: ends the device that this script made, unless its keeper has been quicker.
leave_device() {
    exec 9>&-
    { exec 8<"$device/lock"; } 2>/dev/null || return
    flock 8
    end_device "$device"
}

# stay_on_processor NUMBER: on one of those that this script may run on, with all that it starts. A program
# and the server of its device wait for each other all the time, which takes a machine several times as
# long where each has a processor of its own to be woken on. Several checkouts begin with different ones.
stay_on_processor() {
    local processors first last checkout
    checkout=$(cksum <<<"$run")
    mapfile -t processors < <(
        sed -n 's/^Cpus_allowed_list:[[:space:]]*//p' /proc/self/status | tr , '\n' |
            while IFS=- read -r first last; do seq "$first" "${last:-$first}"; done
    )
    taskset -cp "${processors[($1 + ${checkout%% *}) % ${#processors[@]}]}" $BASHPID >/dev/null
}

# take_place: of the tests that run at once each has a place of its own, and all that it starts stays on
# the place's processor, unless ZEMVOLT_PROCESSORS is all. The place is left in place; it is this script's
# until it ends (file descriptor 9, which what is started from here must not inherit).
take_place() {
    mkdir -p "$run/places" || fail "$build cannot be written; ZEMVOLT_BUILD names another build folder"
    for ((place = 1; ; place++)); do
        exec 9>"$run/places/$place"
        flock -n 9 && break
    done
    [ "${ZEMVOLT_PROCESSORS:-}" = all ] || stay_on_processor "$place"
}

# shared_device: a device without a display, for one program at a time of the tests; making one for each
# would take longer than most of them. It is that of this script's place. Its processes stay for a minute
# behind the last program, its storage is empty. Its folder is left in device. ZEMVOLT_SHARED names another
# kind than the usual one.
shared_device() {
    "$root/launcher/make-prefix" || exit 1
    local kind=${ZEMVOLT_SHARED:-plain}
    [ "${ZEMVOLT_PROCESSORS:-}" != all ] || kind=$kind-all
    take_place
    device=$run/device-$kind-$place
    if [ ! "$device/system.reg" -nt "$run/prefix/.recipe" ] ||
        [ "$(readlink "$device/dosdevices/w:")" != "$build" ]; then
        end_device "$device" 9>&-
        fill_device "$device" null "$device/storage" || fail "the device cannot be made in $device"
    fi
    rm -rf "${device:?}/storage" && mkdir -p "$device/storage/My Documents"
}

# Those in whose place somebody else runs are left alone.
end_shared_devices() {
    local folder
    for folder in "$run"/device-*/; do
        [ -d "$folder" ] || continue
        folder=${folder%/}
        (
            mkdir -p "$run/places" && exec 9>"$run/places/${folder##*-}" || exit
            flock -n 9 && end_processes "$folder" 9>&-
        )
    done
}

# fonts_conf FOLDER...: the fonts of these folders, and no others.
fonts_conf() {
    echo '<?xml version="1.0"?><!DOCTYPE fontconfig SYSTEM "fonts.dtd">'
    echo "<fontconfig>$(printf '<dir>%s</dir>' "$@")<cachedir>$run/fontconfig/cache</cachedir></fontconfig>"
}

# enter_device FOLDER KIND: the environment in which the device's programs run.
enter_device() {
    export ZEMVOLT_RUN=$1 ZEMVOLT_STORAGE=x:
    export WINEPREFIX=$1 WINEARCH=win32 WINESERVER=/usr/lib/wine/wineserver32 TMPDIR=$1/tmp
    export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d"
    export FONTCONFIG_FILE=$run/fontconfig/fonts.conf
    [ ! -f "$1/fonts.conf" ] || FONTCONFIG_FILE=$1/fonts.conf
    unset LD_PRELOAD
    # A test must not reach a screen that happens to be there.
    if [ "$2" = null ]; then unset DISPLAY WAYLAND_DISPLAY; fi
}

# The services and the desktop of the device must start without the preloaded library, which their
# processes could not use. A desk stays for a minute (launcher/opendesk); it is not opened again while it
# will stay for half of that.
open_desk() {
    local said='' opened=$ZEMVOLT_RUN/desk
    if [ -n "$(find "$opened" -newermt '-30 seconds' 2>/dev/null)" ] && is_server "$(cat "$opened")"; then
        return
    fi
    read -r -t 60 said < <("$wine" "$bin/opendesk.exe" 2>>"$ZEMVOLT_RUN/logs/opendesk.log" </dev/null 9>&-)
    [[ $said = open* ]] || fail "the device's screen cannot be opened"
    server_of "$ZEMVOLT_RUN" >"$opened"
}
is_server() { [[ $(readlink "/proc/$1/exe") = */wineserver32 ]]; }
