# Sourced by zemvolt: what the commands are told with, and what is said of words that they do not know.

commands=(setup run test prove coverage mutate bench docs device)
proofs=(bytes checkouts cycles damage disposal faults threads varieties walks)

usage() {
    cat <<'TEXT'
./zemvolt run [EXAMPLE]    runs an example (tap without a name)
./zemvolt run [OPTIONS] [VM OPTIONS] -cp PATH CLASS ARGUMENTS...
                           runs a Java program on the emulated device
./zemvolt setup            installs what running needs, and builds it
./zemvolt test [--checks]  runs every test; with --checks the style checks too
./zemvolt prove PROOF      runs what is too long for every day (docs/proof.md)
./zemvolt coverage         tells which lines and branches of the library no test runs
./zemvolt mutate           changes the library, and tells which changes no test notices
./zemvolt bench            measures the library against the plain way, side by side
./zemvolt docs             builds the documentation of the natives, and tells where it is
./zemvolt device           builds the DLL and the package for the device, into build/device
./zemvolt COMMAND --help   tells more of a command
TEXT
}

usage_of_setup() {
    cat <<'TEXT'
./zemvolt setup
  Installs what running needs, when it is missing, and builds it. The other commands do so
  themselves. ZEMVOLT_BUILD=FOLDER puts all that is built there, and nothing into this checkout.
TEXT
}

usage_of_run() {
    cat <<TEXT
./zemvolt run [OPTIONS] [EXAMPLE]
./zemvolt run [OPTIONS] [VM OPTIONS] -cp PATH CLASS ARGUMENTS...
./zemvolt run [OPTIONS] [VM OPTIONS] -jar FILE.jar ARGUMENTS...
  Runs an example, or a Java program, on an emulated device of its own.
  EXAMPLE is one of: $(example_names | tr '\n' ' ')
  OPTIONS stand before or behind the example's name, and before the class or jar:
    --display NAME         shows the device there
    --screen SIZE          its screen: 240x320, 320x240, 240x240, 480x640, 640x480 or 480x480; the
                           large ones have 192 dots per inch, the others 96
    --dpi N                or so many: 96, 128 or 192
    --rotate               a button in the task bar turns the screen while the program runs
    --task-bar off         without the task bar, which shows the window's title
    --input-panel off      without the menu bar's button for the keyboard on the screen
    --locale NAME          its language and region, such as de_DE
    --fonts FOLDER         it has the fonts of that folder too
    --screenshot FILE.png  where a played example leaves its picture
    --script FILE          plays the person by a script (docs/testing.md), without a display unless
                           --display names one
    --storage FOLDER       keeps the device's files there; without it they go with the device
    --check                tells a program's misuse of the natives by exceptions that say what is
                           wrong and where it began, and at the end what was never disposed of;
                           --check=report tells it in lines and lets the program go on
    --device               runs the library's code for the device, on an emulated processor
    --sound-file FILE.wav  writes what the device plays; further sounds to FILE-2.wav ...
    --sound-speed N        plays N times faster than real time, and silently; 0 stands still
    --version              tells what runs here, and runs nothing
TEXT
}

usage_of_test() {
    cat <<'TEXT'
./zemvolt test [--checks]
  Runs every test on the emulated device; with --checks also those of format and static properties.
TEXT
}

usage_of_prove() {
    cat <<TEXT
./zemvolt prove PROOF
  Runs all of a proof, of which ./zemvolt test runs a part; docs/proof.md tells what each shows.
  PROOF is one of: ${proofs[*]}
TEXT
}

usage_of_coverage() {
    cat <<'TEXT'
./zemvolt coverage [TEST...]
  Runs the tests of the library with one that counts, and prints which lines never ran and which
  branches were never taken, then both as shares by file. With tests named, only these run. Fails when
  a line is neither run nor named in tools/coverage/unreachable.txt (docs/proof.md).
TEXT
}

usage_of_mutate() {
    cat <<'TEXT'
./zemvolt mutate [--directed] [--count N] [--seed N] [--number N] [--within N] [FILE...]
  Changes one expression of src at a time and runs the tests that run the changed line, until one
  fails; at the end it tells the changes that none noticed, and fails when there are such. What runs a
  line is known from the last ./zemvolt coverage. With files named, only these are changed. What was
  seen is kept: stopped, it goes on where it was, and a change that none noticed is tried again with the
  tests that are others since alone.
    --count N   so many changes at random places, 100 without it
    --seed N    others than those of seed 1
    --directed  the changes of tools/mutants/directed.txt instead
    --number N  of these only the one that was printed with that number
    --within N  leaves out the tests that took longer than so many seconds
TEXT
}

usage_of_bench() {
    cat <<'TEXT'
./zemvolt bench
  Measures the library against the plain way, side by side.
TEXT
}

usage_of_docs() {
    cat <<'TEXT'
./zemvolt docs
  Builds the documentation of the toolkit's classes and of what programs on them need, and prints the
  path of its first page.
TEXT
}

usage_of_device() {
    cat <<'TEXT'
./zemvolt device [--vm COMMAND]
  Builds the DLL for Windows CE on ARM and the package, into build/device. The package's shortcuts
  start the virtual machine with COMMAND. docs/device.md says what to do with both.
TEXT
}

# near_words WORD CANDIDATE...: those that a slip of the finger or two away, or begin alike.
near_words() {
    local word=$1
    shift
    printf '%s\n' "$@" | awk -v word="$word" '
        function least(a, b) { return a < b ? a : b }
        function distance(a, b,   i, j, d, cost, swap) {
            for (i = 0; i <= length(a); i++) d[i, 0] = i
            for (j = 0; j <= length(b); j++) d[0, j] = j
            for (i = 1; i <= length(a); i++)
                for (j = 1; j <= length(b); j++) {
                    cost = substr(a, i, 1) != substr(b, j, 1)
                    d[i, j] = least(d[i-1, j-1] + cost, least(d[i-1, j], d[i, j-1]) + 1)
                    swap = i > 1 && j > 1 && substr(a, i, 1) == substr(b, j-1, 1) &&
                           substr(a, i-1, 1) == substr(b, j, 1)
                    if (swap) d[i, j] = least(d[i, j], d[i-2, j-2] + 1)
                }
            return d[length(a), length(b)]
        }
        distance(word, $0) <= 2 || (length(word) > 2 && index($0, word) == 1)'
}

# tell_near LINE WORD CANDIDATE...: the line, with the candidates near to the word, or all of them.
tell_near() {
    local line=$1 near
    shift
    near=$(near_words "$@" | paste -sd ' ')
    if [ -n "$near" ]; then
        echo "zemvolt: $line; near to it: $near" >&2
    else
        shift
        echo "zemvolt: $line; there are: $*" >&2
    fi
}

# refuse_option COMMAND WORD KNOWN...
refuse_option() {
    tell_near "$1 has no option $2" "${@:2}"
    exit 2
}

takes_no_words() {
    [ $# = 1 ] && return
    echo "zemvolt: $1 takes no $2; see ./zemvolt $1 --help" >&2
    exit 2
}
