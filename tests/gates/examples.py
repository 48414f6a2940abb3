#!/usr/bin/env python3
"""What the library makes of every example: the payload, the log and the reply, for a golden file.

    examples.py NETPARAM EXAMPLES

EXAMPLES/messages.txt names each file's message. What is 0 or empty is left out; long texts, and what stands behind
the first values of a payload, are shortened to a hash.
"""
import concurrent.futures
import hashlib
import json
import pathlib
import re
import subprocess
import sys

LONGEST = 100  # characters of a line
MOST = 40  # values of a payload


def digest(text):
    return hashlib.sha256(text.encode()).hexdigest()[:16]


def cut(text):
    return text if len(text) <= LONGEST else f"{text[:LONGEST]}... {len(text)} characters, {digest(text)}"


def flat(value, path):
    """A line a value that is not 0 or empty."""
    if isinstance(value, dict):
        for key, inner in value.items():
            yield from flat(inner, f"{path}.{key}" if path else key)
    elif isinstance(value, list):
        if all(isinstance(item, (int, float)) for item in value):
            if any(value):
                yield f"  {path} = {cut(json.dumps(value))}"
        else:
            for index, inner in enumerate(value):
                yield from flat(inner, f"{path}[{index}]")
    elif value not in (0, "", None):
        yield f"  {path} = {cut(json.dumps(value, ensure_ascii=False))}"


def run(netparam, *arguments):
    done = subprocess.run([netparam, *arguments], capture_output=True, text=True)
    return done.returncode, done.stdout, done.stderr


def describe(netparam, folder, name, message):
    file, lines = str(folder / name), [f"{name}: {message}"]
    if name.endswith(".xml"):
        code, out, _ = run(netparam, "parse", message, file, "--json", "--show-secrets")
        read = json.loads(out) if out else {}
        lines.append(f"  parse {code}, {read.get('size')} bytes, inited {read.get('inited')}")
        values = [line for key in ("refused", "log", "payload") for line in flat(read.get(key), key)]
        lines += values[:MOST]
        if len(values) > MOST:
            lines.append(f"  ... {len(values) - MOST} more values, {digest(''.join(values))}")
    code, out, errors = run(netparam, "exchange" if name.endswith(".xml") else "write", message, file, "--show-secrets")
    reply = re.split(r"^Reply$", out, flags=re.M)[-1] if name.endswith(".json") or "\nReply\n" in out else ""
    reply = re.sub(r"\s*\n\s*", "", reply)
    pieces = [reply[at : at + 4 * LONGEST] for at in range(0, 12 * LONGEST, 4 * LONGEST)]
    lines += [f"  reply {code}"] + ["    " + piece for piece in pieces if piece]
    if len(reply) > 12 * LONGEST:
        lines.append(f"    ... {len(reply)} characters, {digest(reply)}")
    lines += ["  " + cut(line.replace(str(folder) + "/", "")) for line in errors.splitlines() if line.strip()]
    return "\n".join(lines)


def main():
    netparam, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    pairs = [line.split() for line in (folder / "messages.txt").read_text().splitlines() if line and line[0] != "#"]
    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        for text in pool.map(lambda pair: describe(netparam, folder, *pair), pairs):
            print(re.sub(r"\x1b\[[0-9;]*m", "", text))


if __name__ == "__main__":
    main()
