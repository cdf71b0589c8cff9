#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the tests.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Another compiler than those of CI may know warnings that are no reason to stop.
warnings_as_errors=OFF
if [[ ${CI:-} == true ]]; then warnings_as_errors=ON; fi

scripts/install-dependencies.sh
cmake --preset release -DMVFREQ_BUILD_TESTS=ON -DMVFREQ_WARNINGS_AS_ERRORS=$warnings_as_errors
cmake --build --preset release
outcome=0
ctest --preset release --parallel "$(nproc)" --output-junit tests.xml || outcome=$?
python3 -B scripts/skipped_tests.py build/release/tests.xml
exit $outcome
