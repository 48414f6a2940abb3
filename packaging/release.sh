# shellcheck shell=bash
# Sourced by build_debs.sh and recipes.sh: the archive of the sources, and templates filled in from the one place
# where each thing stands: the version in net_version.h, the words on the licence in licence.txt.
packaging=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck disable=SC2034 # used by those that source this
version=$(sed -n 's/^#define NETPUBLIC_VERSION_STRING "\(.*\)".*/\1/p' "$packaging/../netpublic/include/net_version.h")

# What git knows of, with changes that are not committed yet. A commit gives the same bytes every time.
make_archive() { # FILE
    local state
    (
        cd "$packaging/.." || exit
        state=$(git stash create)
        git archive --format=tar --prefix="netpublic-$version/" "${state:-HEAD}" | gzip -n -9 >"$1"
    )
}

# Replaces @NAME@ by the value of the variable NAME in every file below a directory, which may have several lines.
fill_in() { # DIRECTORY NAME...
    python3 - "$@" <<'EOF'
import os
import pathlib
import sys

for path in pathlib.Path(sys.argv[1]).rglob("*"):
    if path.is_file():
        text = path.read_text()
        for name in sys.argv[2:]:
            text = text.replace(f"@{name}@", os.environ[name])
        path.write_text(text)
EOF
}
