# Sourced by the launcher's scripts: where things are. Everything stays below the build folder, which
# ZEMVOLT_BUILD may put somewhere else than into this checkout.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=${ZEMVOLT_BUILD:-$root/build}
bin=$build/desk/bin
run=$build/run
jre=$run/jre32/usr/lib/jvm/java-17-openjdk-i386
wine=/usr/lib/wine/wine

fail() {
    echo "zemvolt: $*" >&2
    exit 1
}

# In a locale without letters beyond ASCII such file names would be lost on the way to the device.
[ "$(locale charmap 2>/dev/null)" = UTF-8 ] || export LC_ALL=C.UTF-8

# use_device_code armv4t|armv4: programs run the library's code for the device, on an emulated
# processor, in place of the desk's.
use_device_code() {
    local folder=device
    [ "$1" = armv4t ] || folder=$folder/$1
    [ -n "${ZEMVOLT_IMAGE:-}" ] || [ -f "$build/$folder/zemvolt11.dll" ] ||
        fail "the device's library is not built; ./zemvolt device builds it"
    export ZEMVOLT_ARCHITECTURE=$1
    export ZEMVOLT_IMAGE=${ZEMVOLT_IMAGE:-W:/$folder/zemvolt11.dll} # a device's drive of what is built
    export ZEMVOLT_SYMBOLS=${ZEMVOLT_SYMBOLS-W:/desk/bin/zemvolt11.symbols}
    export ZEMVOLT_PROCESSOR=$run/unicorn/libunicorn.so.2
    [ -f "$ZEMVOLT_PROCESSOR" ] ||
        fail "the processor's emulator is missing; ./zemvolt test unpacks it"
}
