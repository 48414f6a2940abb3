"""What the tools that break the library on purpose have in common: a copy of the tree, to be broken and built."""
import contextlib
import resource
import shutil
import subprocess
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
IGNORED = {"build", ".git", "__pycache__"}


def limits():
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_FSIZE, (1 << 32, 1 << 32))


def run(*command, **options):
    """Whether the command succeeds; its output is nobody's, and one that takes too long has failed."""
    try:
        return subprocess.run([str(part) for part in command], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              stdin=subprocess.DEVNULL, check=False, preexec_fn=limits, **options).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def sources(top, *patterns):
    return sorted({path for pattern in patterns for path in (top / "netpublic/src").rglob(pattern)})


class Copy:
    """A copy of the tree. Only what differs is copied, so that a second run builds little."""

    def __init__(self, work):
        self.top = work / "tree"
        every = (path.relative_to(TOP) for path in TOP.rglob("*") if path.is_file())
        wanted = {path for path in every if not IGNORED & set(path.parts)}
        for path in self.top.rglob("*"):
            if path.is_file() and path.relative_to(self.top) not in wanted:
                path.unlink()
        for path in wanted:
            copy = self.top / path
            if not copy.exists() or copy.read_bytes() != (TOP / path).read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(TOP / path, copy)

    def sources(self, *patterns):
        return sources(self.top, *patterns)


def configure(top, directory, *options):
    return run("cmake", "-S", top, "-B", directory, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
               "-DNETPUBLIC_BUILD_BENCH=OFF", "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF", *options)


def build(directory, jobs, *targets):
    return run("cmake", "--build", directory, f"-j{jobs}", "--target", *targets)


@contextlib.contextmanager
def replaced(path, text):
    """The file holds the text meanwhile."""
    before = path.read_text()
    try:
        path.write_text(text)
        yield
    finally:
        path.write_text(before)
