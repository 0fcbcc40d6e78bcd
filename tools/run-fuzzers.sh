#!/usr/bin/env bash
# Builds the fuzzers with clang and lets each run for some seconds, from the seeds under fuzz/seeds.
# usage: tools/run-fuzzers.sh [SECONDS [SEED]]      60 if nothing is told
# With a SEED and without an earlier corpus a run tries what any other with that SEED tries. What it finds beyond the
# seeds stays in build/fuzz/corpus; a crash ends it and leaves its input in build/fuzz.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-60}
seed=${2:-0}

cmake -G Ninja -B build/fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DORVANTINE_FUZZ=ON -DORVANTINE_SANITIZE=ON -DORVANTINE_TESTS=OFF >/dev/null
for kind in reader writer replacement archive journal; do
    cmake --build build/fuzz --target "fuzz-$kind"
done
for kind in reader writer replacement archive journal; do
    mkdir -p "build/fuzz/corpus/$kind"
    echo "fuzz-$kind: $seconds s"
    "build/fuzz/bin/fuzz-$kind" -seed="$seed" -max_total_time="$seconds" -max_len=65536 -timeout=10 -rss_limit_mb=1024 \
        -print_final_stats=1 -verbosity=0 -artifact_prefix="build/fuzz/$kind-" \
        "build/fuzz/corpus/$kind" "fuzz/seeds/$kind"
done
