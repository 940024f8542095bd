# What ./run and ./test share: packages, timed steps, the build.

# Debian packages by purpose. Only those that are missing get installed.
build_packages=(g++ cmake ninja-build pkg-config qt6-base-dev libsqlite3-dev libisal-dev libpugixml-dev libxlsxwriter-dev libzip-dev)
runtime_packages=(libqt6svg6 qt6-image-formats-plugins emf2svg libwmf-bin fonts-crosextra-carlito fonts-crosextra-caladea fonts-liberation fonts-dejavu-core)
test_packages=(libgtest-dev libbenchmark-dev clang clang-format clang-tidy cppcheck xvfb xauth openbox xdotool dbus-daemon imagemagick python3 python3-jeepney git)

say() {
    printf '\n== %s\n' "$*"
}

# step TITLE COMMAND...: runs the command and tells how long it took, failed or not. Inside the command a failure does
# not end the script by itself, since its status is asked for here: functions return it on their own.
step() {
    local title=$1 begin=$SECONDS status=0
    shift
    say "$title"
    "$@" || status=$?
    if ((status == 0)); then
        printf -- '-- %s: %d s\n' "$title" $((SECONDS - begin))
    else
        printf -- '-- %s FAILED with status %d after %d s\n' "$title" "$status" $((SECONDS - begin)) >&2
    fi
    return $status
}

missing_packages() {
    local package
    for package in "$@"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || echo "$package"
    done
}

as_root() {
    if ((EUID == 0)); then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "This needs the system administrator's rights, and there is no sudo: $*" >&2
        return 1
    fi
}

install_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        echo "All of them are there."
        return
    fi
    echo "Missing: ${missing[*]}"
    as_root apt-get update -qq &&
        as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
