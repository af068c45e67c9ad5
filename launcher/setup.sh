# Sourced by zemvolt: installs what is missing, unpacks the Java run-time, builds. Says what it will
# install before it does, and does nothing when everything is there.

host_packages=(cmake ninja-build python3 gcc g++-mingw-w64-i686-posix openjdk-17-jdk-headless
    fonts-wine fonts-liberation xvfb xauth xdotool imagemagick procps)
# The last four: images of independent suites, and a decoder to compare with.
test_packages=(googletest junit4
    golang-1.19-src golang-golang-x-image-dev gdk-pixbuf-tests python3-pil)
check_packages=(clang-14 clang-format-14 clang-tidy-14 cppcheck)
foreign_packages=(wine32:i386)

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

is_installed() { [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

missing_of() {
    local package
    for package in "$@"; do is_installed "$package" || echo "$package"; done
}

# The machine's own sources without the ones that carry fixes for some architectures only: lists
# that disagree about a library's version keep its 32-bit form from being installed.
release_sources() {
    local folder=$1 file
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] || continue
        awk 'BEGIN { RS = ""; ORS = "\n\n" } !/-security/ && /Suites:/' "$file" \
            >"$folder/$(basename "$file")"
        [ -s "$folder/$(basename "$file")" ] || rm "$folder/$(basename "$file")"
    done
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null |
        grep -E '^deb ' | grep -v -- -security >"$folder/release.list" || rm -f "$folder/release.list"
}

apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y)

# choose_lists PACKAGES...: leaves in lists the options under which they can be installed.
lists=()
choose_lists() {
    lists=()
    "${apt[@]}" -s install --no-install-recommends "$@" >/dev/null 2>&1 && return 0
    narrow_lists &&
        "${apt[@]}" "${lists[@]}" -s install --no-install-recommends "$@" \
            >>"$run/logs/apt.log" 2>&1
}

narrow_lists() {
    echo "zemvolt: the package lists disagree; taking what is missing from the release alone"
    local folder=$run/apt
    rm -rf "$folder" && mkdir -p "$folder"
    release_sources "$folder"
    lists=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$folder")
    as_root "${apt[@]}" "${lists[@]}" update >>"$run/logs/apt.log" 2>&1
}

install_packages() {
    echo "zemvolt: installing $*"
    as_root "${apt[@]}" "${lists[@]}" install --no-install-recommends "$@" \
        >>"$run/logs/apt.log" 2>&1 || fail "these packages cannot be installed: $* (see $run/logs/apt.log)"
}

install_missing() {
    local host foreign
    mapfile -t host < <(missing_of "$@")
    mapfile -t foreign < <(missing_of "${foreign_packages[@]}")
    local wants_jre=
    [ -f "$jre/lib/server/libjvm.so" ] || wants_jre=openjdk-17-jre-headless:i386
    [ ${#host[@]} -eq 0 ] && [ ${#foreign[@]} -eq 0 ] && [ -z "$wants_jre" ] && return 0

    echo "zemvolt: this machine lacks ${host[*]} ${foreign[*]} ${wants_jre:+$wants_jre (unpacked into $run)}"
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null || fail "installing needs root or sudo"
    command -v apt-get >/dev/null || fail "this is no Debian machine: install them by hand"
    mkdir -p "$run/logs"
    dpkg --print-foreign-architectures | grep -qx i386 || as_root dpkg --add-architecture i386
    as_root "${apt[@]}" update >>"$run/logs/apt.log" 2>&1 ||
        echo "zemvolt: not all package lists can be read; going on with the others"
    if [ ${#host[@]} -gt 0 ]; then
        choose_lists "${host[@]}" || fail "no package list offers ${host[*]}"
        install_packages "${host[@]}"
    fi
    if [ ${#foreign[@]} -gt 0 ]; then
        choose_lists "${foreign[@]}" || fail "no package list offers ${foreign[*]}"
        install_packages "${foreign[@]}"
    fi
    [ -z "$wants_jre" ] || unpack_jre
    if [ ${#lists[@]} -gt 0 ]; then
        as_root "${apt[@]}" update >>"$run/logs/apt.log" 2>&1 || true
    fi
}

download_jre() {
    (cd "$1" && "${apt[@]}" "${lists[@]}" download openjdk-17-jre-headless:i386) \
        >>"$run/logs/apt.log" 2>&1
}

# Unpacked, not installed: installed it would bind the machine's own Java to its version.
unpack_jre() {
    local folder=$run/jre32.new
    rm -rf "$folder" && mkdir -p "$folder"
    download_jre "$folder" || { narrow_lists && download_jre "$folder"; } ||
        fail "the 32-bit Java run-time cannot be fetched (see $run/logs/apt.log)"
    dpkg -x "$folder"/*.deb "$folder" && rm "$folder"/*.deb
    rm -rf "$run/jre32" && mv "$folder" "$run/jre32"
}

build() {
    local log=$run/logs/build.log
    mkdir -p "$run/logs"
    [ -f "$bin/zemvolt11.dll" ] || echo "zemvolt: building, which takes some minutes the first time"
    (cd "$root" && cmake --preset desk && cmake --build --preset desk) >"$log" 2>&1 || {
        grep -E 'error|Error|FAILED' "$log" | head -20 >&2
        fail "the build failed (see $log)"
    }
}
