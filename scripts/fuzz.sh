# The fuzz targets of ./test: built once by clang, run side by side, one check each.
# Every run starts from the kept seeds alone: to replay what former ones learned would take its whole time.
# shellcheck shell=bash

FUZZ_SECONDS=30

fuzz_targets() { (cd "$root/fuzz" && printf '%s\n' *_fuzz.cpp) | sed 's/_fuzz\.cpp$//'; }

build_fuzzers() { configure fuzz && build fuzz fuzzers; }

# fuzz_one TARGET: leaves its log and, if it found a fault, the input beside it.
fuzz_one() {
    local name=$1 folder=$root/build/fuzz/runs/$1
    rm -rf "$folder"
    mkdir -p "$folder/found"
    "$root/build/fuzz/fuzz/${name}_fuzz" -max_total_time="$FUZZ_SECONDS" -timeout=10 -print_final_stats=1 \
        -dict="$root/fuzz/words.dict" -exact_artifact_path="$folder/input" \
        "$folder/found" "$root/fuzz/corpus/$name" >"$folder/log" 2>&1 && touch "$folder/clean"
}

run_fuzzers() {
    export root FUZZ_SECONDS
    export -f fuzz_one
    say "fuzzing, $FUZZ_SECONDS s each"
    fuzz_targets | xargs -r -d '\n' -n 1 -P "$(nproc)" bash -c 'fuzz_one "$1"' fuzz
    return 0
}

# check_fuzzed TARGET: whether its run was clean and tried anything. The input of a fault is shown in base64.
check_fuzzed() {
    local folder=$root/build/fuzz/runs/$1
    [[ -e $folder/clean ]] && grep -qE '^stat::number_of_executed_units: +[1-9]' "$folder/log" && return
    [[ -e $folder/log ]] && grep -av '^#[0-9]' "$folder/log" | tail -n 60 | cat -v >&2
    [[ ! -e $folder/input ]] || say "the input that did it: $(base64 -w 0 "$folder/input")"
    return 1
}
