# clang-tidy over the product's code, with the checks of .clang-tidy.

# lint BUILD [FILE...]: checks these files, or all. BUILD holds what the build generates from forms.
lint() {
    local build=$1 folder files=("${@:2}")
    ((${#files[@]})) || mapfile -t files < <(git ls-files 'src/*.cpp')
    local flags=(-std=c++20 -fPIC -I src '-DLUMIVANE_VERSION="0"' -DQT_NO_KEYWORDS -DQT_USE_QSTRINGBUILDER)
    local -a packages
    mapfile -t packages < <(pkg-config --cflags Qt6Widgets sqlite3 libisal pugixml | xargs -n 1)
    for folder in "$build"/src/*/*_autogen/include; do
        flags+=(-I "$folder")
    done
    flags+=("${packages[@]}")
    # The headers of the toolkit are parsed once for all files.
    local headers=$build/lint.h
    printf '#include <%s>\n' QDateTime QDir QFile QString QStringList QVariant QWidget algorithm functional map memory \
        optional vector >"$headers"
    clang++ "${flags[@]}" -x c++-header "$headers" -o "$build/lint.pch" || return
    printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -I '{}' \
        clang-tidy --quiet '{}' -- "${flags[@]}" -include-pch "$build/lint.pch" 2>/dev/null
}
