# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
#
# Sourced by the scripts of .ci that count steps; each ends with finish.
. .ci/common.sh

passed=0
failed=0
skipped=0
logs=$(mktemp -d)
trap 'rm -rf --one-file-system "$logs"' EXIT

# step NAME COMMAND...: counts as one test; shows its output when it fails.
step() {
  local name=$1 start=$SECONDS
  shift
  if "$@" >"$logs/step" 2>&1; then
    passed=$((passed + 1))
    echo "ok    $name ($((SECONDS - start)) s)"
  else
    failed=$((failed + 1))
    echo "FAIL  $name ($((SECONDS - start)) s)"
    tail -n 60 "$logs/step"
  fi
}

# steps_of SCRIPT: runs one that counts for itself, and adds what it counted. One that says
# nothing has failed.
steps_of() {
  local last
  "$@" | tee "$logs/steps"
  last=$(tail -n 1 "$logs/steps")
  if [[ $last =~ ^([0-9]+)\ passed,\ ([0-9]+)\ failed$ ]]; then
    passed=$((passed + BASH_REMATCH[1]))
    failed=$((failed + BASH_REMATCH[2]))
  else
    failed=$((failed + 1))
  fi
}

fuzz_names=(parse format copy add multiply convert)

# fuzz NAME SECONDS [OPTION...]: a target of the decimals, from the corpus that is kept on.
fuzz() {
  local name=$1 seconds=$2
  shift 2
  mkdir -p "$logs/corpus-$name"
  build/fuzz/tests/fuzz/"fuzz_bcdii_$name" -max_total_time="$seconds" \
    -artifact_prefix="$logs/" "$@" "$logs/corpus-$name" tests/fuzz/corpus/"$name"
}

finish() {
  [ "$skipped" -eq 0 ] || echo "$skipped skipped"
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
  exit
}
