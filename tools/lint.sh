#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Vireo authors
# SPDX-License-Identifier: Apache-2.0
#
#   tools/lint.sh            all checks that need no build; every one runs, any failure fails
#   tools/lint.sh --format   formats the C++ sources in place instead

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# No caches beside the scripts.
export PYTHONDONTWRITEBYTECODE=1

mode=check
case "${1-}" in
    "") ;;
    --format) mode=format ;;
    *)
        echo "usage: $0 [--format]" >&2
        exit 2
        ;;
esac

# The same idea of "our files" as the other checks have.
list_cpp() {
    python3 - <<'PYTHON'
import os
import sys

sys.path.insert(0, "tools")
from check_common import is_cpp, tree_files

for path in tree_files("."):
    if is_cpp(path):
        sys.stdout.buffer.write(os.fsencode(path) + b"\0")
PYTHON
}

if [ "$mode" = format ]; then
    list_cpp | xargs -0 -r clang-format -i
    exit 0
fi

failed=()

check() {
    local title="$1"
    shift
    local output
    if output="$("$@" 2>&1)"; then
        echo "lint: $title: ok"
    else
        printf '%s\n' "$output"
        echo "lint: $title: FAILED"
        failed+=("$title")
    fi
}

check_format() {
    list_cpp | xargs -0 -r clang-format --dry-run -Werror
}

check "checks' own tests" python3 tools/test_checks.py
check "include ranks" python3 tools/check_ranks.py
check "Qt 4.8 and C++14 in the plug-in" python3 tools/check_qt48.py
check "licence lines" python3 tools/check_headers.py
if [ -e tools/test_render_golden.py ]; then
    check "golden renderer's own tests" python3 tools/test_render_golden.py
fi
check "format" check_format

if [ "${#failed[@]}" -ne 0 ]; then
    echo "lint: ${#failed[@]} failed" >&2
    exit 1
fi
