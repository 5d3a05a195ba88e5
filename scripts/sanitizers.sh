# Sourced by scripts/test: one build under the address and undefined behaviour
# sanitizers (clang, with libFuzzer's coverage) that gives both a short run of
# every fuzz target and the test suite again.

hk_sanitizer_env=(ASAN_OPTIONS=detect_leaks=1:check_initialization_order=1:strict_init_order=1
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1)
# Leaks count: what Qt keeps until exit is still reachable and is not reported,
# so a report is an object of ours that nothing owns. A leak inside a library
# that is not ours would go to an LSAN_OPTIONS=suppressions= file, not off.

hk_sanitized_dir="$hk_root/build-sanitize"

# A folder of its own, so no sanitized object mixes with the normal build. Only
# the test programs and the fuzz targets are built, unoptimised with line tables
# only: that compiles in half the time of -O1 -g, and reports still name the lines.
hk_sanitized_build() {
  hk_configure "$hk_sanitized_dir" -DHK_FUZZ=ON -DCMAKE_CXX_COMPILER=clang++ \
    "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O0 -g1"
  cmake --build "$hk_sanitized_dir" -j2 --target hk_fuzz hk_all_tests
}

hk_sanitized_suite() {
  # The test that kills saving stations at random moments needs saves of normal speed
  # to land its kills inside them; an unoptimised sanitized save under load is too slow
  # for that. The screens' second run over PostgreSQL repeats, at a third of the
  # suite's time here, code that the SQLite run and the PostgreSQL instances of the
  # database fixtures already take through the sanitizers. Both run in the normal suite.
  (cd "$hk_sanitized_dir" && env "${hk_sanitizer_env[@]}" QT_QPA_PLATFORM=offscreen \
    ctest --output-on-failure -j2 -L offscreen -E 'SaveTest\.ASaveKilled|^PostgreSQL\.' "$@")
}

# Every fuzz target for `seconds` each, two at a time, on a copy of its seed
# corpus; a crash, a sanitizer report or a broken round trip fails the run and
# keeps the input.
hk_fuzz_briefly() {
  local seconds="$1" dir="$hk_sanitized_dir" failed=0 name
  mkdir -p "$dir/crashes"
  hk_fuzz_one() {
    local name="$1" corpus="$dir/corpus/$1"
    mkdir -p "$corpus"
    env "${hk_sanitizer_env[@]}" "$dir/tests/fuzz/fuzz_$name" -max_total_time="$seconds" \
      -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$dir/crashes/$name-" \
      "$corpus" "$hk_root/tests/fuzz/corpus/$name" >"$dir/fuzz_$name.log" 2>&1
  }
  echo "Fuzzing setfile, keyfiles, ini and conversions for ${seconds}s each, two at a time"
  for pair in "setfile keyfiles" "ini conversions"; do
    set -- $pair
    hk_fuzz_one "$1" & local first=$!
    hk_fuzz_one "$2" & local second=$!
    wait "$first" || failed=1
    wait "$second" || failed=1
  done
  for name in setfile keyfiles ini conversions; do
    if ! grep -qE '^Done [0-9]+ runs' "$dir/fuzz_$name.log"; then
      tail -n 60 "$dir/fuzz_$name.log"
      echo "fuzz_$name failed; the input is in $dir/crashes/"
      failed=1
    else
      echo "fuzz_$name: $(grep -E '^Done [0-9]+ runs' "$dir/fuzz_$name.log")"
    fi
  done
  return "$failed"
}
