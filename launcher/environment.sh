# Sourced by the launcher's scripts: where the emulated device lives and how its programs run.
# Everything stays below the build folder.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bin=$root/build/desk/bin
run=$root/build/run
jre=$run/jre32/usr/lib/jvm/java-17-openjdk-i386
wine=/usr/lib/wine/wine

# The recipe of a prefix; a prefix of another recipe, or of a folder that was moved, is made anew.
prefix_recipe="6 in $root"

fail() {
    echo "zemvolt: $*" >&2
    exit 1
}

# enter_prefix null|x11: the environment in which programs of that prefix run. The null prefix has
# a screen without a display, for tests; the other one shows it.
enter_prefix() {
    export WINEPREFIX=$run/prefix-$1 WINEARCH=win32 WINESERVER=/usr/lib/wine/wineserver32
    export WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d"
    export FONTCONFIG_FILE=$run/fontconfig/fonts.conf
    unset LD_PRELOAD
    # A test must not reach a screen that happens to be there.
    if [ "$1" = null ]; then unset DISPLAY WAYLAND_DISPLAY; fi
}

# Ends the prefix's own processes. Whatever still runs in it ends too.
leave_prefix() {
    [ -d "$run/prefix-$1" ] || return 0
    WINEPREFIX=$run/prefix-$1 WINEARCH=win32 "/usr/lib/wine/wineserver32" -k 2>/dev/null || true
    # The server's socket has a folder of its own among the temporary files.
    local server
    server=server-$(stat -c %D "$run/prefix-$1")-$(printf %x "$(stat -c %i "$run/prefix-$1")")
    for server in "${TMPDIR:-/tmp}"/wine-*/"$server" "${TMPDIR:-/tmp}/.wine-$(id -u)/$server"; do
        [ -d "$server" ] || continue
        rm -rf "$server"
        rmdir "$(dirname "$server")" 2>/dev/null || true
    done
}

# The services and the desktop of the prefix must start without the preloaded library, which their
# processes could not use.
open_desk() {
    "$wine" "$bin/opendesk.exe" >>"$run/logs/opendesk.log" 2>&1 </dev/null ||
        fail "the device's screen cannot be opened"
}

# use_device_code armv4t|armv4: programs run the library's code for the device, on an emulated
# processor, in place of the desk's.
use_device_code() {
    local folder=$root/build/device
    [ "$1" = armv4t ] || folder=$folder/$1
    export ZEMVOLT_ARCHITECTURE=$1
    export ZEMVOLT_IMAGE=${ZEMVOLT_IMAGE:-Z:$folder/zemvolt11.dll}
    export ZEMVOLT_SYMBOLS=${ZEMVOLT_SYMBOLS-Z:$bin/zemvolt11.symbols}
    export ZEMVOLT_PROCESSOR=$run/unicorn/libunicorn.so.2
    [ -f "${ZEMVOLT_IMAGE#Z:}" ] || fail "the device's library is not built; ./zemvolt device builds it"
    [ -f "$ZEMVOLT_PROCESSOR" ] ||
        fail "the processor's emulator is missing; ./zemvolt test unpacks it"
}
