# What the scripts share. Source it first; it moves to the project's root.
#
#     source "$(dirname "${BASH_SOURCE[0]}")/common.bash"
#     build check              # configures where needed, builds build/check
#     stage "Building" build check && print_stages
shopt -s inherit_errexit
script=$(realpath "$0")
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# A headline on standard error, so that it never mixes with a result.
step() {
    printf '\n== %s\n' "$*" >&2
}

stages=()

# stage NAME COMMAND...: the command under a headline; how long it took is remembered.
stage() {
    local name=$1 began=$SECONDS
    step "$name"
    "${@:2}"
    stages+=("$(printf '%5d s  %s' $((SECONDS - began)) "$name")")
}

# What each stage took, and all of the script.
print_stages() {
    printf '%s\n' "${stages[@]}" "$(printf '%5d s  in all' "$SECONDS")"
}

fail() {
    printf '%s: %s\n' "${script##*/}" "$*" >&2
    exit 1
}

# Prints the calling script's opening comment, without the marks.
usage() {
    sed -n '2,/^[^#]/{ s/^# \{0,1\}//p }' "$script"
}

# configure PRESET [FOLDER]: Ninja configures again by itself when a CMake file changes, but not when
# the presets do, nor when another preset takes the folder over.
configure() {
    local preset=$1
    local stamp=build/${2-$preset}/configured
    if [[ ! -e $stamp || CMakePresets.json -nt $stamp || $(<"$stamp") != "$preset" ]]; then
        cmake --preset "$preset"
        echo "$preset" >"$stamp"
    fi
}

build() {
    local preset=$1
    configure "$preset"
    cmake --build --preset "$preset"
}

# What people run, in build/release. Where that was made for the tests it is not made anew without.
build_programs() {
    local preset=demo
    [[ ! -e build/release/configured ]] || preset=$(<build/release/configured)
    configure "$preset" release
    cmake --build build/release --target programs
}
