#!/usr/bin/env python3
"""Coverage of each test case alone: which lines and branches of src/ only it reaches.

Called by `scripts/coverage --per-case` once the counting build is done. Every ctest
test runs by itself with its own GCOV_PREFIX (two at a time), the display layer as
one; a case that ctest runs on both engines counts once. Prints, per case, the lines
and branches no other case reaches, and a greedy choice of cases whose every line
and branch the remaining cases still reach.
"""
import collections
import concurrent.futures
import glob
import json
import os
import shutil
import subprocess
import sys
import tempfile

build, root = sys.argv[1], sys.argv[2]
src = os.path.join(root, "src") + "/"
out = os.path.join(build, "cases")
scratch = tempfile.mkdtemp(prefix="hk-cases-")


def reached(prefix):
    """The src/ lines and branches counted under one GCOV_PREFIX."""
    lines, branches = set(), set()
    for gcda in glob.glob(prefix + build + "/src/**/*.gcda", recursive=True):
        here = os.path.dirname(gcda)
        stem = os.path.basename(gcda)[:-len(".gcda")]
        gcno = os.path.join(here[len(prefix):], stem + ".gcno")
        if not os.path.exists(gcno):
            continue
        # gcov looks for the notes file beside the counts
        os.symlink(gcno, os.path.join(here, stem + ".gcno"))
        run = subprocess.run(["gcov", "--json-format", "--stdout", "-b", "-o", here, gcda],
                             capture_output=True, text=True, cwd=scratch)
        for document in filter(str.strip, run.stdout.splitlines()):
            for f in json.loads(document)["files"]:
                if not f["file"].startswith(src):
                    continue
                name = os.path.relpath(f["file"], root)
                for line in f["lines"]:
                    at = f"{name}:{line['line_number']}"
                    if line["count"]:
                        lines.add(at)
                    own = (b for b in line["branches"] if not b["throw"])
                    branches.update(f"{at}:{i}" for i, b in enumerate(own) if b["count"])
    return lines, branches


def run_alone(key, command, cwd, env):
    prefix = os.path.join(scratch, key)
    env = dict(env, GCOV_PREFIX=prefix, GCOV_PREFIX_STRIP="0")
    try:
        passed = subprocess.run(command, cwd=cwd, env=env, capture_output=True,
                                timeout=600).returncode == 0
    except subprocess.TimeoutExpired:
        passed = False
    result = reached(prefix)
    shutil.rmtree(prefix, ignore_errors=True)
    return passed, result


def case_of(test):
    """A case run on both engines, or on PostgreSQL again, is one case."""
    name = test.split("  #")[0].removeprefix("PostgreSQL.")
    parts = name.split("/")
    return parts[1] if len(parts) == 3 else parts[0]


listing = json.loads(subprocess.run(["ctest", "--show-only=json-v1"], cwd=build,
                                    capture_output=True, text=True, check=True).stdout)
tests, cluster = [], None
for number, test in enumerate(listing["tests"]):
    props = {p["name"]: p["value"] for p in test.get("properties", [])}
    env = dict(os.environ, QT_QPA_PLATFORM="offscreen")
    env.update(e.split("=", 1) for e in props.get("ENVIRONMENT", []))
    cwd = props.get("WORKING_DIRECTORY", build)
    if "FIXTURES_SETUP" in props:
        cluster = (test["command"], cwd)
    elif test["name"] == "display_tests":
        tests.append((number, test["name"], test["command"], cwd, env, 3))
    elif "FIXTURES_CLEANUP" not in props and not test["command"][0].endswith("cmake"):
        tests.append((number, test["name"], test["command"], cwd, env, 1))

os.makedirs(out, exist_ok=True)
cases = collections.defaultdict(lambda: (set(), set()))
failed = []


def run(entry):
    number, name, command, cwd, env, shards = entry
    lines, branches, passed = set(), set(), True
    # run.sh stops the display layer after 110 s, which this build outlasts in one part
    for shard in range(shards):
        part = dict(env, GTEST_TOTAL_SHARDS=str(shards), GTEST_SHARD_INDEX=str(shard))
        ok, (l, b) = run_alone(f"{number}-{shard}", command, cwd, part)
        passed &= ok
        lines |= l
        branches |= b
    return name, passed, lines, branches


if cluster:
    subprocess.run([*cluster[0][:1], "start", *cluster[0][2:]], cwd=cluster[1], check=True)
try:
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        for name, passed, lines, branches in pool.map(run, tests):
            if not passed:
                failed.append(name)
            case = cases["display layer" if name == "display_tests" else case_of(name)]
            case[0].update(lines)
            case[1].update(branches)
finally:
    if cluster:
        subprocess.run([*cluster[0][:1], "stop", *cluster[0][2:]], cwd=cluster[1])
    shutil.rmtree(scratch, ignore_errors=True)

json.dump({c: {"lines": sorted(l), "branches": sorted(b)} for c, (l, b) in cases.items()},
          open(os.path.join(out, "cases.json"), "w"))
reach = collections.Counter()
for lines, branches in cases.values():
    reach.update(lines | branches)
print(f"{len(cases)} cases; lines and branches that only this case reaches:")
own = {c: sum(1 for x in l | b if reach[x] == 1) for c, (l, b) in cases.items()}
for case in sorted(cases, key=lambda c: (own[c], c)):
    print(f"{own[case]:6}  {case}")
# the narrowest first, so that the broad cases are the ones left to reach the rest
spare = []
for case in sorted(cases, key=lambda c: len(cases[c][0] | cases[c][1])):
    every = cases[case][0] | cases[case][1]
    if case != "display layer" and all(reach[x] > 1 for x in every):
        reach.subtract(every)
        spare.append(case)
print(f"\n{len(spare)} cases whose every line and branch the others still reach, together:")
print("\n".join(f"        {c}" for c in sorted(spare)))
for name in failed:
    print(f"failed: {name}")
print(f"Per case: {out}/cases.json")
