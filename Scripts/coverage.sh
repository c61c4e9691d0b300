#!/usr/bin/env bash
# Prints what part of each fuzz target's sources its seed corpus reaches: first a row a file, then the lines never reached.
#   Scripts/coverage.sh [BUILD_FOLDER]      made with the preset `coverage` where it is missing; default build-coverage
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build-coverage}

# A row a target: program, corpus below Tests/Fuzz/Corpus, then the sources that it is for.
targets=(
    "NativeReaderFuzz NativeReader Library/Source/Files/NativeFile.cpp Library/Source/Files/LoadLimits.cpp"
    "KtxReaderFuzz KtxReader Library/Source/Files/KtxReader.cpp Library/Source/Files/KtxHeader.cpp"
    "DdsReaderFuzz DdsReader Library/Source/Files/DdsReader.cpp Library/Source/Files/DdsHeader.cpp"
    "AstcReaderFuzz AstcReader Library/Source/Files/AstcFile.cpp"
    "LegacyReaderFuzz LegacyReader Library/Source/Files/LegacyFile.cpp"
    "EtcDecoderFuzz EtcDecoder Library/Source/Codecs/ETC/EtcDecompressImage.cpp Library/Source/Codecs/ETC/EtcDecodeBlock.cpp Library/Source/Codecs/ETC/EtcDecodeA1.cpp Library/Source/Codecs/ETC/EacBlock.cpp"
    "PreferencesFuzz Preferences Application/Common/PlistDocument.cpp Application/Common/Preferences.cpp"
)

log="build-coverage.log"
{ cmake --preset coverage -B "$build" && cmake --build "$build" --target fuzz-targets; } >"$log" 2>&1 || { tail -n 60 "$log" >&2; exit 1; }
for target in "${targets[@]}"; do
    read -r program corpus sources <<<"$target"
    raw=$build/$program.profraw
    data=$build/$program.profdata
    # -runs=0: every file of the corpus once, nothing made up.
    LLVM_PROFILE_FILE=$raw "$build/bin/$program" -runs=0 "Tests/Fuzz/Corpus/$corpus" 2>/dev/null
    llvm-profdata-14 merge -sparse "$raw" -o "$data"
    echo "== $program over Tests/Fuzz/Corpus/$corpus"
    # shellcheck disable=SC2086 # several sources
    llvm-cov-14 report "$build/bin/$program" -instr-profile="$data" $sources
    echo "Lines not reached:"
    # shellcheck disable=SC2086
    llvm-cov-14 show "$build/bin/$program" -instr-profile="$data" $sources | grep -E '^(/|\s*[0-9]+\|\s+0\|)' || true
done
