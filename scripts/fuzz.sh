#!/usr/bin/env bash
# Fuzzes the rewriting of statements under the sanitizers. A finding ends it and stays as build/fuzz-findings/…; running
# build/fuzz/bin/rewriter_fuzz FILE plays it again. Needs clang with its runtime (libclang-rt-dev).
#
#   scripts/fuzz.sh [SECONDS]    (3600)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
mkdir -p build/fuzz-corpus build/fuzz-findings
cmake --preset fuzz >build/fuzz-configure.log || { cat build/fuzz-configure.log; exit 1; }
cmake --build --preset fuzz
export QT_QPA_PLATFORM=offscreen
exec build/fuzz/bin/rewriter_fuzz -max_total_time="${1:-3600}" -max_len=2000 -dict=tests/fuzz/sql.dict \
    -artifact_prefix=build/fuzz-findings/ -print_final_stats=1 -rss_limit_mb=8192 build/fuzz-corpus
