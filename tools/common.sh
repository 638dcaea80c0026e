# What the commands share. They read it when they are at the top of the tree.
# shellcheck shell=bash

command=tools/${0##*/}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

refuse() { # MESSAGE
    echo "$command: $1" >&2
    exit 2
}

help() { # the comment at the head of the command
    sed -n '2,/^[^#]/ s/^# \{0,1\}//p' "$command"
    exit 0
}

# The first python3 that runs a statement: which packages it has differs from one to the next.
python_that() { # STATEMENT
    local python
    while read -r python; do
        if "$python" -c "$1" >/dev/null 2>&1 </dev/null; then
            echo "$python"
            return 0
        fi
    done < <(type -ap python3; echo /usr/bin/python3)
    return 1
}

# Compiles by way of ccache where that is installed and can write to its cache. Where it cannot, it is switched off, for
# build folders that were configured with it, too.
use_ccache() {
    command -v ccache >/dev/null || return 0
    if (cd "$scratch" && : >empty.cpp && ccache "${CXX:-c++}" -c empty.cpp) >/dev/null 2>&1; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    else
        export CCACHE_DISABLE=1
    fi
}

# CMake refuses a build folder that was made elsewhere, as in a copy of the tree.
drop_if_moved() { # FOLDER, with build folders or one itself
    local cache
    for cache in "$1"/CMakeCache.txt "$1"/*/CMakeCache.txt; do
        if [ -e "$cache" ] && ! [ "$(sed -n 's/^CMAKE_CACHEFILE_DIR:INTERNAL=//p' "$cache")" -ef "${cache%/*}" ]; then
            rm -rf "$1"
            return
        fi
    done
}

# Before anything is built: what is needed is there, and the folder can be written.
prepare() { # FOLDER GROUP...
    tools/setup "${@:2}"
    drop_if_moved "$1"
    if ! mkdir -p "$1" 2>/dev/null || ! [ -w "$1" ]; then
        refuse "cannot write to the folder $PWD/$1"
    fi
    use_ccache
}
