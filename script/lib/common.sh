# Shared by the scripts: where the tree is, how to print messages, how to stop. Sourced first; leaves the shell in the tree's root.
# shellcheck shell=bash
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"
me=script/$(basename "$0")

say() { printf '%s\n' "$*" >&2; }

die() {
    say "$me: $*"
    exit 1
}

# Prints the calling script's head comment, and exits.
usage() {
    sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$root/$me"
    exit "${1:-0}"
}

wrong_usage() {
    say "$me: don't know what to do with \"$1\""
    usage 2 >&2
}

# bootstrap SET: what this needs from the system. VELTO_SKIP_BOOTSTRAP=1 leaves the system alone.
bootstrap() {
    [[ ${VELTO_SKIP_BOOTSTRAP:-0} == 1 ]] || "$root/script/bootstrap" --for "$1"
}

# remove_session FOLDER: with what the document portal mounted in its runtime folder and left there when the bus ended.
remove_session() {
    local documents=$1/runtime/doc
    if grep -qF " $documents " /proc/self/mounts; then
        fusermount3 -uz "$documents" 2>/dev/null || umount -l "$documents" 2>/dev/null || true
    fi
    rm -rf "$1"
}

# version_14 TOOL: the tool of the version that the tree is formatted and linted with.
version_14() {
    command -v "$1-14" && return
    [[ $("$1" --version 2>/dev/null) == *"version 14."* ]] && command -v "$1" && return
    die "$1 14 is missing (script/bootstrap --for dev installs it on Debian and Ubuntu)"
}
