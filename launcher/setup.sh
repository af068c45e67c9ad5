# Sourced by zemvolt: installs what is missing, unpacks the Java run-time, builds. Says what it will
# install before it does, and does nothing when everything is there.

host_packages=(cmake ninja-build python3 gcc g++-mingw-w64-i686-posix openjdk-17-jdk-headless ecj
    fonts-wine fonts-liberation xvfb xauth xdotool procps junit4)
device_packages=(clang-14 lld-14 gcab)
check_packages=(clang-14 clang-format-14 clang-tidy-14 cppcheck shellcheck pyflakes3)
foreign_packages=(wine32:i386)

# What is unpacked into the build folder and not installed: package, folder, what of it (all when
# nothing is named; a folder, with a slash at its end; or single files), a file by which it is known
# to be there. Installed, the 32-bit Java run-time would bind the machine's own Java to its version,
# and of the ARM compiler one file is wanted.
java_runtime="openjdk-17-jre-headless:i386|jre32||usr/lib/jvm/java-17-openjdk-i386/lib/server/libjvm.so"
other_peoples_sounds="libpython3.11-testsuite|sounds||usr/lib/python3.11/test/audiodata/pluck-pcm16.wav"
arm_arithmetic="gcc-arm-none-eabi|libgcc|./usr/lib/gcc/arm-none-eabi/*/libgcc.a|libgcc.a"
arm_processor="libunicorn2:i386|unicorn|./usr/lib/i386-linux-gnu/libunicorn.so.2|libunicorn.so.2"
images_of_go="golang-1.19-src|images-go|./usr/share/go-1.19/src/image/|usr/share/go-1.19/src/image/png/testdata/pngsuite/basn0g01.png"
more_images_of_go="golang-golang-x-image-dev|images-more|./usr/share/gocode/src/golang.org/x/image/testdata/|usr/share/gocode/src/golang.org/x/image/testdata/video-001.bmp"
images_of_pixbuf="gdk-pixbuf-tests|images-pixbuf|./usr/libexec/installed-tests/gdk-pixbuf/test-images/|usr/libexec/installed-tests/gdk-pixbuf/test-images/fail/hang_114.gif"

test_packages=(googletest gxemul imagemagick "$other_peoples_sounds"
    python3-pil "$images_of_go" "$more_images_of_go" "$images_of_pixbuf")

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# Of what is to be unpacked, that which is not there.
missing_unpacked() {
    local entry folder proof
    for entry in "$@"; do
        IFS='|' read -r _ folder _ proof <<<"$entry"
        [ -f "$run/$folder/$proof" ] || echo "$entry"
    done
}

# One answer for all: asking takes longer than looking. What is of one kind for all processors is
# installed as that of this machine.
missing_of() {
    comm -23 <(printf '%s\n' "$@" | sort) <(
        dpkg-query -W -f '${db:Status-Status} ${Package}\n${db:Status-Status} ${Package}:${Architecture}\n' \
            "$@" 2>/dev/null | sed -n 's/^installed //p' | sort
    )
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

# What is fetched, built and logged lies in the build folder.
must_be_writable() {
    { mkdir -p "$run/logs" 2>/dev/null && [ -w "$run/logs" ]; } ||
        fail "$build cannot be written; ZEMVOLT_BUILD names another build folder"
}

# install_missing PACKAGE...: by name, or as what is to be unpacked.
install_missing() {
    local wanted=() kept=("$java_runtime") host foreign unpacked word
    for word in "$@"; do
        case $word in *'|'*) kept+=("$word") ;; *) wanted+=("$word") ;; esac
    done
    mapfile -t host < <(missing_of "${wanted[@]}")
    mapfile -t foreign < <(missing_of "${foreign_packages[@]}")
    mapfile -t unpacked < <(missing_unpacked "${kept[@]}")
    [ ${#host[@]} -eq 0 ] && [ ${#foreign[@]} -eq 0 ] && [ ${#unpacked[@]} -eq 0 ] && return 0

    must_be_writable
    [ ${#unpacked[@]} -eq 0 ] || word="${unpacked[*]%%|*} (unpacked into $run)"
    echo "zemvolt: this machine lacks ${host[*]} ${foreign[*]} ${unpacked[*]:+$word}"
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null || fail "installing needs root or sudo"
    command -v apt-get >/dev/null || fail "this is no Debian machine: install them by hand"
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
    for word in "${unpacked[@]}"; do unpack_package "$word"; done
    if [ ${#lists[@]} -gt 0 ]; then
        as_root "${apt[@]}" update >>"$run/logs/apt.log" 2>&1 || true
    fi
}

download() {
    (cd "$2" && "${apt[@]}" "${lists[@]}" download "$1") >>"$run/logs/apt.log" 2>&1
}

# unpack_package ENTRY: what is to be unpacked, as above. Single files lie in the folder itself.
unpack_package() {
    local package folder members proof new chosen=()
    IFS='|' read -r package folder members proof <<<"$1"
    new=$run/$folder.new
    rm -rf "$new" && mkdir -p "$new"
    download "$package" "$new" || { narrow_lists && download "$package" "$new"; } ||
        fail "$package cannot be fetched (see $run/logs/apt.log)"
    case $members in
    '') ;;
    */) chosen=("$members") ;;
    *) chosen=(--wildcards --no-wildcards-match-slash --transform 's,.*/,,' "$members") ;;
    esac
    dpkg-deb --fsys-tarfile "$new"/*.deb | tar -x -C "$new" "${chosen[@]}" ||
        fail "$package is not as expected"
    rm "$new"/*.deb
    [ -f "$new/$proof" ] || fail "$package lacks $proof"
    rm -rf "${run:?}/$folder" && mv "$new" "$run/$folder"
}

for_device=("${device_packages[@]}" "$arm_arithmetic")

# leave_moved FOLDER: what was built in another place can neither be used nor built on.
leave_moved() {
    local home
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$1/CMakeCache.txt" 2>/dev/null)
    if [ -z "$home" ] || { [ "$home" = "$root" ] && [ -f "$1/build.ninja" ] &&
        grep -qxF "# For build in directory: $1" "$1/CMakeCache.txt"; }; then
        return
    fi
    echo "zemvolt: this checkout was copied or moved; building anew"
    rm -rf "$1"
}

# Tells how far a build is, now and then.
tell_progress() {
    tee "$1" | awk -F'[][/]' '/^\[[0-9]+\/[0-9]+\]/ {
        if (!parts && $3 > 5) { parts = 4; next_part = 1 }
        while (parts && $2 >= next_part * $3 / parts && next_part < parts) {
            if (!told[next_part]++) print "zemvolt: built " $2 " of " $3
            ++next_part
        }
        fflush() }'
}

# is_current STAMP FOLDER...: nothing of the sources is newer than what was built of them.
is_current() {
    [ -f "$1" ] && [ -z "$(find "${@:2}" -newer "$1" -print -quit 2>&1)" ]
}

# build running|all|counted: what running needs, or the tests and their images too, or the library that
# counts what runs. One at a time.
build() {
    local log=$run/logs/build.log folder=$build/desk stamp tests=OFF
    local sources=("$root"/{CMakeLists.txt,CMakePresets.json,cmake,companion,emulator,include,java,launcher,platform,src})
    stamp=$folder/.built-$1
    if [ "$1" = all ] || [ "$1" = counted ]; then
        tests=ON
        sources+=("$root"/{bench,tests})
    fi
    is_current "$stamp" "${sources[@]}" && return
    must_be_writable
    exec 6>"$run/build.lock"
    flock -n 6 || {
        echo "zemvolt: waiting for another build of this checkout"
        flock 6
    }
    if ! is_current "$stamp" "${sources[@]}"; then
        leave_moved "$folder"
        [ -f "$bin/zemvolt11.dll" ] || echo "zemvolt: building, which takes some minutes the first time"
        grep -qs '^ZEMVOLT_TESTS:BOOL=ON' "$folder/CMakeCache.txt" && tests=ON
        mkdir -p "$folder" && touch "$stamp.new"
        {
            (cd "$root" && cmake --preset desk -B "$folder" -DZEMVOLT_TESTS=$tests) &&
                cmake --build "$folder" --target "$1"
        } 2>&1 6>&- | tell_progress "$log"
        [ "${PIPESTATUS[0]}" = 0 ] || {
            grep -E 'error|Error|FAILED' "$log" | head -20 >&2
            fail "the build failed (see $log)"
        }
        mv "$stamp.new" "$stamp"
    fi
    exec 6>&-
}

# build_for_device CMAKE-OPTIONS...
# shellcheck disable=SC2120 # the command device passes some
build_for_device() {
    install_missing "${host_packages[@]}" "${for_device[@]}"
    leave_moved "$build/device"
    (cd "$root" && cmake --preset device -B "$build/device" "$@") && cmake --build "$build/device" -j2
}

setup_for_running() {
    local for_processor=()
    [ -z "$device_code" ] || for_processor=("${for_device[@]}" "$arm_processor")
    install_missing "${host_packages[@]}" "${for_processor[@]}"
    build running
    # shellcheck disable=SC2119
    [ -z "$device_code" ] || build_for_device || fail "the library for the device cannot be built"
}
