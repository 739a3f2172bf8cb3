#!/usr/bin/env bash
# Mutation check: plants the faults of scripts/mutants.txt one at a time, rebuilds build/mutants
# incrementally, runs the tests the fault reaches and puts the file back.
#
#   scripts/mutants.sh                  every fault of the sample
#   scripts/mutants.sh M07 C02          only these
#   scripts/mutants.sh --timeout 300    seconds one test may take before the fault counts as
#                                       caught by a hang (default 120; the whole suite takes ~10)
#   scripts/mutants.sh --check          only checks that every line still matches its file
#
# "caught N of M (P %)": M counts the faults that compiled; N those that made a test fail or
# hang. Each fault that lived is listed: a change of behaviour no test noticed. Faults the
# compiler refused, and lines marked "# equivalent: why" (no behaviour changed), are listed
# apart and left out of the share. Logs of each fault stay in build/mutants/mutant-logs/.
set -uo pipefail

cd "$(dirname "$0")/.."
ROOT=$PWD
SAMPLE=scripts/mutants.txt
BUILD=build/mutants
LOGS=$BUILD/mutant-logs
TIMEOUT=120
CHECK_ONLY=0
WANTED=()

while [[ $# -gt 0 ]]; do
    case $1 in
        --timeout) TIMEOUT=$2; shift 2 ;;
        --timeout=*) TIMEOUT=${1#*=}; shift ;;
        --check) CHECK_ONLY=1; shift ;;
        -h|--help) sed -n '2,14p' "$0"; exit 0 ;;
        -*) echo "mutants.sh: unknown option $1" >&2; exit 2 ;;
        *) WANTED+=("$1"); shift ;;
    esac
done

trim() {
    local s=$1
    s=${s#"${s%%[![:space:]]*}"}
    printf '%s' "${s%"${s##*[![:space:]]}"}"
}

# ---- Reading the sample ----------------------------------------------------------------------

IDS=() PATHS=() ORIGS=() REPLS=() DESCS=() EQUIV=()
bad=0
lineno=0
while IFS= read -r line || [[ -n $line ]]; do
    lineno=$((lineno + 1))
    [[ $line =~ ^[[:space:]]*(#|$) ]] && continue
    equivalent=""
    if [[ $line == *" # equivalent:"* ]]; then
        equivalent=$(trim "${line##*" # equivalent:"}")
        line=${line%" # equivalent:"*}
    fi
    rest=$line fields=()
    while [[ $rest == *" | "* ]]; do
        fields+=("${rest%%" | "*}")
        rest=${rest#*" | "}
    done
    fields+=("$rest")
    if [[ ${#fields[@]} -ne 5 ]]; then
        echo "$SAMPLE:$lineno: ${#fields[@]} fields instead of 5 (id | path | original | replacement | description)" >&2
        bad=1
        continue
    fi
    id=$(trim "${fields[0]}")
    if [[ " ${IDS[*]} " == *" $id "* ]]; then
        echo "$SAMPLE:$lineno: id $id used twice" >&2
        bad=1
    fi
    IDS+=("$id")
    PATHS+=("$(trim "${fields[1]}")")
    ORIGS+=("$(trim "${fields[2]}")")
    REPLS+=("$(trim "${fields[3]}")")
    DESCS+=("$(trim "${fields[4]}")")
    EQUIV+=("$equivalent")
done <"$SAMPLE"

for id in "${WANTED[@]}"; do
    if [[ " ${IDS[*]} " != *" $id "* ]]; then
        echo "mutants.sh: no mutant $id in $SAMPLE" >&2
        exit 2
    fi
done

selected() {
    [[ ${#WANTED[@]} -eq 0 || " ${WANTED[*]} " == *" $1 "* ]]
}

# How often the original text occurs in the file; a line must match exactly once.
occurrences() {
    local content=$1 text=$2
    local without=${content//"$text"/}
    echo $(((${#content} - ${#without}) / ${#text}))
}

for i in "${!IDS[@]}"; do
    selected "${IDS[$i]}" || continue
    file=${PATHS[$i]}
    if [[ ! -f $file ]]; then
        echo "$SAMPLE: ${IDS[$i]}: no file $file" >&2
        bad=1
        continue
    fi
    if [[ -z ${ORIGS[$i]} || ${ORIGS[$i]} == "${REPLS[$i]}" ]]; then
        echo "$SAMPLE: ${IDS[$i]}: empty original text, or the replacement changes nothing" >&2
        bad=1
        continue
    fi
    IFS= read -r -d '' content <"$file"
    n=$(occurrences "$content" "${ORIGS[$i]}")
    if [[ $n -ne 1 ]]; then
        echo "$SAMPLE: ${IDS[$i]}: the original text occurs $n times in $file: ${ORIGS[$i]}" >&2
        bad=1
    fi
done

if [[ $bad -ne 0 ]]; then
    echo "mutants.sh: the sample does not match the code; fix $SAMPLE first" >&2
    exit 2
fi
if [[ $CHECK_ONLY -eq 1 ]]; then
    echo "every line of $SAMPLE matches its file once"
    exit 0
fi

PRISTINE=$BUILD/mutant-pristine
# A run killed outright (no trap runs then) leaves its fault behind: put it back first.
if [[ -f $PRISTINE.path ]]; then
    left=$(<"$PRISTINE.path")
    echo "mutants.sh: an earlier run was killed while $left held a fault; restoring it" >&2
    [[ -f $PRISTINE ]] && cp "$PRISTINE" "$left"
    rm -f "$PRISTINE" "$PRISTINE.path"
fi

# A fault is planted over the committed text, so that the check at the end can tell the tree
# is as it was.
touched=()
for i in "${!IDS[@]}"; do
    selected "${IDS[$i]}" && [[ -z ${EQUIV[$i]} ]] && touched+=("${PATHS[$i]}")
done
if [[ ${#touched[@]} -gt 0 ]] && ! git diff --quiet HEAD -- "${touched[@]}"; then
    echo "mutants.sh: commit or stash the changes to these files first:" >&2
    git diff --name-only HEAD -- "${touched[@]}" >&2
    exit 2
fi

# ---- Planting and restoring ------------------------------------------------------------------

planted=""

restore() {
    [[ -n $planted ]] || return 0
    # A plain copy, not one keeping the time stamp: ninja must see the file as changed again.
    cp "$PRISTINE" "$planted"
    rm -f "$PRISTINE" "$PRISTINE.path"
    planted=""
}

# Builds and tests run in the background and the script waits for them: a shell that waits in
# the foreground lets a Ctrl-C that ninja or ctest handles pass unseen, and the run would go on.
child=""
# run LOG COMMAND...: the command's output goes to LOG.
run() {
    "${@:2}" >"$1" 2>&1 &
    child=$!
    wait "$child"
    local status=$?
    child=""
    return $status
}

interrupted() {
    # The build ends before the file is restored, so that no object of the fault outlives it.
    if [[ -n $child ]]; then
        kill -TERM "$child" 2>/dev/null
        wait "$child" 2>/dev/null
    fi
    restore
    echo >&2
    echo "mutants.sh: interrupted; the source is restored" >&2
    exit 130
}

trap 'restore' EXIT
trap 'interrupted' INT TERM HUP

plant() {
    local file=$1 orig=$2 repl=$3 content
    IFS= read -r -d '' content <"$file"
    cp "$file" "$PRISTINE"
    printf '%s' "$file" >"$PRISTINE.path"
    planted=$file
    printf '%s' "${content/"$orig"/"$repl"}" >"$file"
}

# ---- Building and testing --------------------------------------------------------------------

export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER:-ccache}
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$(dirname "$ROOT")}

# Like the dev preset, but a warning the fault provokes must not stop the build.
if [[ ! -f $BUILD/build.ninja ]]; then
    nice -n 19 cmake -S . -B "$BUILD" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DVARO_BUILD_TESTS=ON \
        -DVARO_BUILD_BENCH=OFF -DVARO_WERROR=OFF >/dev/null || exit 2
fi
mkdir -p "$LOGS"

build() {
    run "$1" nice -n 19 cmake --build "$BUILD" -j 2
}

# Every test's executable, in the order ctest numbers the tests.
TEST_EXES=()
list_tests() {
    local listing
    listing=$(ctest --test-dir "$BUILD" -N -V 2>/dev/null) || return 1
    TEST_EXES=()
    local line re='^([0-9]+): Test command: ("[^"]*"|[^ ]*)'
    while IFS= read -r line; do
        if [[ $line =~ $re ]]; then
            local exe=${BASH_REMATCH[2]}
            TEST_EXES[$((BASH_REMATCH[1] - 1))]=${exe//\"/}
        fi
    done <<<"$listing"
    [[ ${#TEST_EXES[@]} -gt 0 ]]
}

# Runs the tests whose executable changed since the stamp (a fault in code a program does not
# link cannot change its results). Returns 0 passed, 1 failed, 2 hung, 3 no test reached.
run_tests() {
    local stamp=$1 log=$2 numbers="" i
    for i in "${!TEST_EXES[@]}"; do
        local exe=${TEST_EXES[$i]}
        [[ -n $stamp && -n $exe && $exe -ot $stamp ]] && continue
        numbers+=",$((i + 1))"
    done
    if [[ -z $numbers ]]; then
        echo "no test executable changed" >"$log"
        return 3
    fi
    printf '0,0,0%s\n' "$numbers" >"$LOGS/selection"
    # ctest stops a hung test itself; the outer limit only catches a hung ctest.
    run "$log" nice -n 19 timeout --kill-after=10 $((2 * TIMEOUT + 60)) \
        ctest --test-dir "$BUILD" -j 2 --stop-on-failure --timeout "$TIMEOUT" \
        --output-on-failure -I "$ROOT/$LOGS/selection"
    local status=$?
    if [[ $status -eq 124 || $status -eq 137 ]] || grep -q '\*\*\*Timeout' "$log"; then
        return 2
    fi
    [[ $status -eq 0 ]] && return 0
    return 1
}

started=$(date +%s)
echo "building $BUILD from the working tree (commit test changes first: a baseline counts them)"
if ! build "$LOGS/pristine.build.log"; then
    echo "mutants.sh: the unmutated tree does not build; see $LOGS/pristine.build.log" >&2
    exit 2
fi
list_tests || { echo "mutants.sh: ctest cannot list the tests" >&2; exit 2; }
echo "running the ${#TEST_EXES[@]} tests on the unmutated tree"
run_tests "" "$LOGS/pristine.test.log"
if [[ $? -ne 0 ]]; then
    echo "mutants.sh: the unmutated tree fails its tests; see $LOGS/pristine.test.log" >&2
    exit 2
fi

caught=0 tested=0
lived=() compile=() equivalent=()
for i in "${!IDS[@]}"; do
    id=${IDS[$i]}
    selected "$id" || continue
    line="$id  ${PATHS[$i]}  ${DESCS[$i]}"
    if [[ -n ${EQUIV[$i]} ]]; then
        equivalent+=("$line (${EQUIV[$i]})")
        continue
    fi
    t0=$(date +%s)
    plant "${PATHS[$i]}" "${ORIGS[$i]}" "${REPLS[$i]}"
    stamp=$LOGS/$id.stamp
    touch "$stamp"
    if ! build "$LOGS/$id.build.log"; then
        verdict="does not compile"
        compile+=("$line")
    else
        run_tests "$stamp" "$LOGS/$id.test.log"
        case $? in
            0) verdict="LIVED"; lived+=("$line") ;;
            1) verdict="caught"; caught=$((caught + 1)) ;;
            2) verdict="caught (hung)"; caught=$((caught + 1)) ;;
            3) verdict="LIVED (no test links this code)"; lived+=("$line (no test links it)") ;;
        esac
        tested=$((tested + 1))
    fi
    restore
    rm -f "$stamp"
    printf '%-4s %-42s %s  (%ss)\n' "$id" "${PATHS[$i]}" "$verdict" $(($(date +%s) - t0))
done

echo "rebuilding $BUILD without the faults"
build "$LOGS/restored.build.log" || echo "mutants.sh: the restored tree did not build" >&2

echo
if [[ $tested -gt 0 ]]; then
    echo "caught $caught of $tested ($((100 * caught / tested)) %)"
else
    echo "caught 0 of 0"
fi
if [[ ${#lived[@]} -gt 0 ]]; then
    echo "lived (no test noticed the fault):"
    printf '  %s\n' "${lived[@]}"
fi
if [[ ${#compile[@]} -gt 0 ]]; then
    echo "caught by the compiler, not counted:"
    printf '  %s\n' "${compile[@]}"
fi
if [[ ${#equivalent[@]} -gt 0 ]]; then
    echo "equivalent, not run:"
    printf '  %s\n' "${equivalent[@]}"
fi
echo "took $(( ($(date +%s) - started) / 60 )) min"

status=0
if [[ ${#touched[@]} -gt 0 ]] && ! git diff --quiet HEAD -- "${touched[@]}"; then
    echo "mutants.sh: the source is not as committed after the run:" >&2
    git diff --stat HEAD -- "${touched[@]}" >&2
    status=2
fi
exit $status
