#!/usr/bin/env bash
# Builds the explorer and tries it in Debian's Chromium, opened from the disk: byte for byte against the
# program, with wrong files, for a while, and how long a change takes. Takes the pictures of it for the
# documents with --pictures. Not part of the gate, which has no minutes left.
#
#     scripts/test-explorer.sh [--pictures] [NAME OF A TEST]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-dependencies.sh explorer
cmake --preset release -DMVFREQ_BUILD_EXPLORER=ON >/dev/null
cmake --build build/release --target mvfreq_explorer_page mvfreq_tool
# The python3 of the distribution: selenium comes with it.
exec /usr/bin/python3 -B explorer/tests/test_page.py build/release/explorer/explorer.html build/release/tools/mvfreq "$@"
