# shellcheck shell=bash
# What the scripts share. Reading this file has no effect of its own but to set radice.

radice=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

errore() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# elenco GROUP...: the lines "package check" of these groups in the list of packages.
elenco() {
    local pacchetto gruppo ricerca
    while read -r pacchetto gruppo ricerca _; do
        case "$pacchetto" in '' | '#'*) continue ;; esac
        case " $* " in *" $gruppo "*) printf '%s %s\n' "$pacchetto" "$ricerca" ;; esac
    done <"$radice/scripts/pacchetti"
}

installato() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs with apt what is not there yet; asks for nothing when all is there.
installa_con_apt() {
    local pacchetto ricerca mancanti=()
    while read -r pacchetto ricerca; do
        installato "$pacchetto" || mancanti+=("$pacchetto")
    done < <(elenco "$@")
    [ ${#mancanti[@]} -gt 0 ] || return 0

    local come=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || errore "missing packages: ${mancanti[*]} (install them as root, there is no sudo here)"
        come=(sudo)
    fi
    echo "Installing: ${mancanti[*]}"
    "${come[@]}" apt-get update -q
    "${come[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${mancanti[@]}"
}

# cerca_librerie PACKAGE/COMPONENT...: prints those that CMake does not find, by asking it in a project of no content.
cerca_librerie() {
    local cartella libreria
    cartella=$(mktemp -d)
    {
        echo 'cmake_minimum_required(VERSION 3.24)'
        echo 'project(ricerca LANGUAGES CXX)'
        for libreria in "$@"; do
            local componente=${libreria#*/}
            [ "$componente" != "$libreria" ] && componente="COMPONENTS $componente" || componente=""
            echo "find_package(${libreria%%/*} QUIET $componente)"
            # A package that was found once stays found, so each component is looked at by its own name as well.
            local prova=${libreria%%/*}_FOUND
            case "$libreria" in Qt6/*) prova=Qt6${libreria#*/}_FOUND ;; esac
            echo "if(NOT $prova)"
            echo "    message(STATUS \"manca $libreria\")"
            echo 'endif()'
        done
    } >"$cartella/CMakeLists.txt"
    cmake -G Ninja -S "$cartella" -B "$cartella/build" 2>/dev/null | sed -n 's/^-- manca //p' || true
    rm -rf "$cartella"
}

# Where there is no apt: names everything that is missing, and stops.
controlla_senza_apt() {
    local pacchetto ricerca mancanti=() librerie=()
    while read -r pacchetto ricerca; do
        case "$ricerca" in
        tool:*) command -v "${ricerca#tool:}" >/dev/null || mancanti+=("${ricerca#tool:} (Debian package $pacchetto)") ;;
        cmake:*) librerie+=("${ricerca#cmake:}") ;;
        esac
    done < <(elenco "$@")
    if [ ${#librerie[@]} -gt 0 ]; then
        if command -v cmake >/dev/null && command -v ninja >/dev/null && command -v g++ >/dev/null; then
            while read -r ricerca; do
                mancanti+=("$ricerca (development files)")
            done < <(cerca_librerie "${librerie[@]}")
        else
            for ricerca in "${librerie[@]}"; do
                mancanti+=("perhaps $ricerca (development files)")
            done
        fi
    fi
    [ ${#mancanti[@]} -gt 0 ] || return 0
    printf '%s: there is no apt here; please install what is missing:\n' "${0##*/}" >&2
    printf '  %s\n' "${mancanti[@]}" >&2
    exit 1
}

# prepara GROUP...: sees to it that everything for these groups is on the machine.
prepara() {
    if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
        installa_con_apt "$@"
    else
        controlla_senza_apt "$@"
    fi
}

# costruisci PRESET [OPTION of cmake --build]...: configures once, then builds what changed. Clones share what was compiled.
costruisci() {
    (
        cd "$radice" || exit
        export CCACHE_BASEDIR=$radice CCACHE_NOHASHDIR=1
        [ -f "build/$1/build.ninja" ] || cmake --preset "$1"
        cmake --build --preset "$@"
    )
}

# schermo_virtuale: starts an X server and a window manager of its own and sets DISPLAY. Needs the group "screen". The caller
# ends the processes, which are added to the array processi, and removes the folder lavoro.
# shellcheck disable=SC2154
schermo_virtuale() {
    # The server itself picks a free number and tells it once it takes connections.
    Xvfb -displayfd 1 -screen 0 1280x720x24 -nolisten tcp >"$lavoro/display" 2>"$lavoro/xvfb.log" &
    processi+=($!)
    local server=$! inizio=$SECONDS
    until [ -s "$lavoro/display" ]; do
        if [ $((SECONDS - inizio)) -ge 60 ] || ! kill -0 "$server" 2>/dev/null; then
            cat "$lavoro/xvfb.log" >&2
            errore "the virtual display does not start"
        fi
        sleep 0.05
    done
    DISPLAY=:$(<"$lavoro/display")
    export DISPLAY
    openbox --config-file /dev/null >"$lavoro/openbox.log" 2>&1 &
    processi+=($!)
}

# termina: ends the array processi, the last one first, and removes the folder lavoro. For "trap termina EXIT".
termina() {
    local i
    for ((i = ${#processi[@]} - 1; i >= 0; i--)); do
        kill "${processi[i]}" 2>/dev/null || true
        wait "${processi[i]}" 2>/dev/null || true
    done
    rm -rf "$lavoro"
}
