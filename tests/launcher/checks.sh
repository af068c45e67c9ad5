# Sourced by the tests of the commands: what they have in common.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
. "$root/launcher/environment.sh"
. "$root/launcher/device.sh"
take_place
work=$(mktemp -d)
commands=() # what was started, and must not outlive a test that failed
trap 'kill "${commands[@]}" 2>/dev/null; rm -rf "$work"' EXIT
unset DISPLAY
passed=0
failed=0
tests=$build/desk/java/tests.jar

# check NAME COMMAND...
check() {
    local name=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
        echo "ok   $name"
    else
        failed=$((failed + 1))
        echo "FAIL $name"
        sed 's/^/     /' "$work/output" | head -20
    fi
}

tell_result() {
    echo "$passed passed, $failed failed"
    [ $failed = 0 ]
}

# run COMMAND...: its exit code is left in code, what it said in the output.
code=0
run() {
    "$@" >"$work/output" 2>&1 </dev/null
    code=$?
}
says_only() { [ "$code" != 0 ] && [ "$(cat "$work/output")" = "$1" ]; }
says_last() { [ "$code" != 0 ] && [ "$(tail -n1 "$work/output")" = "$1" ]; }

# The folder, display and Java process of the device of a run, which is known by its command.
device_of() {
    local folder
    for folder in "$devices"/*/; do
        folder=${folder%/}
        if [ "$(cat "$folder/owner" 2>/dev/null)" = "$1" ]; then echo "$folder"; fi
    done
}
java_of() { cat "$1/java"; }

# start_waiting NAME OPTIONS...: a program that waits for events, up to its line that says so. Its
# command's process is left in command, its device in folder, and what it says in NAME.
start_waiting() {
    local name=$1
    shift
    rm -f "$work/$name.pipe" && mkfifo "$work/$name.pipe"
    "$root/zemvolt" run "$@" -cp "$tests" com.nuvik.tests.Fatal wait \
        >"$work/$name.pipe" 2>&1 </dev/null &
    command=$!
    commands+=("$command")
    cat "$work/$name.pipe" >"$work/$name" 2>/dev/null &
    if ! await_line "$work/$name" '^waiting$' "$command"; then
        cp "$work/$name" "$work/output"
        return 1
    fi
    folder=$(device_of "$command") && [ -n "$folder" ]
}

# await_line FILE PATTERN PROCESS: until the file has such a line, or the process has ended.
await_line() { grep -q -m 1 -E "$2" < <(timeout 120 tail -n +1 -F --pid="$3" "$1" 2>/dev/null); }

# until_gone FOLDER PROCESS...: until the processes and all of the device are gone.
until_gone() {
    local gone=$1 pid
    shift
    for pid in "$@"; do await_ends 60 "$pid" || return 1; done
    # shellcheck disable=SC2016 # the inner shell's own
    timeout 60 bash -c 'while [ -e "$1" ]; do sleep 0.05; done' - "$gone" || return 1
    [ -z "$(processes_of "$gone")" ]
}
