# Sourced by scripts/test: the test suite again under the address and undefined
# behaviour sanitizers, and a short run of every fuzz target.

hk_sanitizer_flags="-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"

# Leaks count: what Qt keeps until exit is still reachable and is not reported,
# so a report is an object of ours that nothing owns. A leak inside a library
# that is not ours would go to an LSAN_OPTIONS=suppressions= file, not off.
hk_sanitizer_env=(ASAN_OPTIONS=detect_leaks=1:check_initialization_order=1:strict_init_order=1
  UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1)

# A folder of its own, so no sanitized object mixes with the normal build. Only
# the test program is built, unoptimised with line tables only: it compiles in a
# third of the time of -O1 -g and the suite is short, yet reports name the lines.
hk_sanitized_suite() {
  local dir="$hk_root/build-asan"
  hk_configure "$dir" "-DCMAKE_CXX_FLAGS=$hk_sanitizer_flags" "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O0 -g1" \
    "-DCMAKE_EXE_LINKER_FLAGS=-fsanitize=address,undefined"
  cmake --build "$dir" -j2 --target hk_all_tests
  # The test that kills saving stations at random moments needs saves of normal speed
  # to land its kills inside them; an unoptimised sanitized save under load is too slow
  # for that. It runs in the normal suite.
  (cd "$dir" && env "${hk_sanitizer_env[@]}" QT_QPA_PLATFORM=offscreen \
    ctest --output-on-failure -j2 -L offscreen -E 'SaveTest\.ASaveKilled' "$@")
}

# Every fuzz target for `seconds` each, on a copy of its seed corpus; a crash,
# a sanitizer report or a broken round trip fails the run and keeps the input.
hk_fuzz_briefly() {
  local seconds="$1" dir="$hk_root/build-fuzz"
  hk_configure "$dir" -DHK_FUZZ=ON -DCMAKE_CXX_COMPILER=clang++ "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1 -g"
  cmake --build "$dir" -j2 --target hk_fuzz
  local name corpus
  for name in setfile keyfiles ini conversions; do
    corpus="$dir/corpus/$name"
    mkdir -p "$corpus" "$dir/crashes"
    echo "Fuzzing $name for ${seconds}s"
    if ! env "${hk_sanitizer_env[@]}" "$dir/tests/fuzz/fuzz_$name" -max_total_time="$seconds" \
      -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$dir/crashes/$name-" \
      "$corpus" "$hk_root/tests/fuzz/corpus/$name" >"$dir/fuzz_$name.log" 2>&1; then
      tail -n 60 "$dir/fuzz_$name.log"
      echo "fuzz_$name failed; the input is in $dir/crashes/"
      return 1
    fi
    grep -E '^Done [0-9]+ runs' "$dir/fuzz_$name.log" || true
  done
}
