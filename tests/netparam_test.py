#!/usr/bin/env python3
"""The inspector where transcripts do not reach: on a terminal, fed piece by piece, against the library's rules.

usage: netparam_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import os
import pty
import random
import re
import shutil
import subprocess
import sys
import tempfile
import textwrap
import time
import unittest

EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, "examples")
REQUEST = "motion_request.xml"
NETPARAM = ""


def example(name):
    with open(os.path.join(EXAMPLES, name), encoding="utf-8") as file:
        return file.read()


def run(*arguments, text=None, cwd=EXAMPLES):
    """The finished process; `text` is its standard input."""
    data = text.encode() if isinstance(text, str) else text
    done = subprocess.run([NETPARAM, *arguments], input=data, capture_output=True, cwd=cwd, timeout=60, check=False)
    done.stdout = done.stdout.decode("utf-8")
    done.stderr = done.stderr.decode("utf-8")
    return done


class WithFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name, text=None):
        path = os.path.join(self.folder, name)
        if text is not None:
            with open(path, "w", encoding="utf-8") as file:
                file.write(text)
        return path

    def content(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()


def on_terminal(*arguments, stdout=None, **variables):
    """What is written to a terminal; `stdout` says where standard output goes instead."""
    environment = {**os.environ, "TERM": "xterm", "NO_COLOR": "", **variables}
    master, slave = pty.openpty()
    said = b""
    with subprocess.Popen([NETPARAM, *arguments], stdin=subprocess.DEVNULL, stdout=stdout or slave, stderr=slave,
                          cwd=EXAMPLES, env=environment):
        os.close(slave)
        try:
            while data := os.read(master, 65536):
                said += data
        except OSError:  # the terminal's end of file
            pass
    os.close(master)
    return said


class Terminal(WithFolder):
    def test_colour_on_a_terminal_only(self):
        self.assertIn(b"\033[1m", on_terminal("parse", "md", REQUEST))
        self.assertNotIn(b"\033", on_terminal("parse", "md", REQUEST, NO_COLOR="1"))
        self.assertNotIn("\033", run("parse", "md", REQUEST).stdout)

    def test_progress_on_a_terminal_only(self):
        for index in range(1500):
            shutil.copy(os.path.join(EXAMPLES, "support_16_channels.xml"), self.path(f"s{index}.xml"))
        said = on_terminal("check", self.folder, stdout=subprocess.DEVNULL)
        self.assertRegex(said, rb"\d+ of 1500  ")
        self.assertTrue(said.endswith(b"\r"))
        self.assertEqual("", run("check", self.folder).stderr)

    def test_the_caret_stays_below(self):
        wide = {"\u540d": 2, "\u524d": 2, "\u0301": 0}
        for before in ("\t", "\xe9\t", "\u540d\u524d", "e\u0301", "<a b='" + "\u540d" * 100 + "'/>", "<a/>" * 500):
            text = f"<?xml version='1.0' encoding='UTF-8'?>\n<MD><x>{before}</x><width>0</width>{'<b/>' * 100}</MD>"
            with self.subTest(before=before[:9]):
                lines = run("parse", "md", "-", text=text).stderr.split("refused:")[1].splitlines()
                columns = sum(wide.get(c, 1) for c in lines[1].split("0</width>")[0])
                self.assertEqual(columns, lines[2].index("^"))
                self.assertLessEqual(sum(wide.get(c, 1) for c in lines[1]), 80)


class Filter(unittest.TestCase):
    @staticmethod
    def filtered(data):
        return subprocess.run([NETPARAM, "filter"], input=data, capture_output=True, timeout=60, check=True).stdout

    def test_however_the_text_is_cut_into_pieces(self):
        text = b"\xff\0x<pwd a='b'>s3</pwx></pw</pwd>y <a key=\"s3\"/><k><![CDATA[s3]]></k>\n"
        whole = self.filtered(text)
        self.assertTrue(whole.startswith(b"\xff\0x<pwd"))
        self.assertNotIn(b"s3", whole)
        for step in (1, 2, 3, 5):
            with subprocess.Popen([NETPARAM, "filter"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0) as process:
                for at in range(0, len(text), step):
                    process.stdin.write(text[at:at + step])
                    if at == 0:  # a piece leaves before the next one comes
                        got = os.read(process.stdout.fileno(), 1)
                process.stdin.close()
                self.assertEqual(whole, got + process.stdout.read())
        # The tool reads 65,536 bytes at a time.
        for before in range(65520, 65537):
            self.assertNotIn(b"s3cr3t", self.filtered(b"." * before + b"<password>s3cr3t</password>"))

    def test_masks_at_least_what_the_library_does(self):
        names = ("password", "key", "authToken", "accessKey", "mac", "ip", "gateway", "mask", "dns1", "user", "Width")
        kinds = ("password", "key", "authToken", "authSignature", "refreshToken", "accessToken", "clientSecret", "mac",
                 "ip", "accessKey", "secretKey", "ipAddress", "macAddress", "gateway", "mask", "dns1", "dns2")
        generator = random.Random(7)

        def element(around=()):
            name = generator.choice([one for one in names if one not in around])
            count = generator.randrange(3) if len(around) < 3 else 0
            inside = "".join(element((*around, name)) for _ in range(count))
            return f"<{name}>s{inside}t</{name}>" + generator.choice(("", " x", "\n", "<", "</", "a > b"))
        for _ in range(30):
            text = "".join(element() for _ in range(20))
            expected = text
            for kind in kinds:
                expected = re.sub(f"(<{kind}>)(.*?)(</{kind}>)",
                                  lambda m: m[1] + "*" * len(m[2]) + m[3], expected, flags=re.DOTALL)
            got = self.filtered(text.encode()).decode()
            self.assertEqual(len(text), len(got))
            for mine, library, byte in zip(got, expected, text):
                if library == "*" and byte not in "*\n":
                    self.assertEqual("*", mine)


class Watch(WithFolder):
    LOG = ("12:00:01.250 <- <body><MD version='1.1'><width>5</width></MD></body> sent\n"
           "12:00:02 got <MD>\n  <width>0</width></MD>\n")

    @staticmethod
    def watching(*arguments):
        return subprocess.Popen([NETPARAM, "watch", *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0)

    def setUp(self):
        super().setUp()
        self.shown = run("watch", text=self.LOG).stdout.encode()
        self.assertEqual(2, self.shown.count(b"\n"))

    def test_however_it_arrives(self):
        with self.watching() as process:
            head = self.LOG.index("sent")
            for byte in self.LOG[:head].encode():
                process.stdin.write(bytes([byte]))
            got = process.stdout.readline()  # although the rest has not come
            process.stdin.write(self.LOG[head:].encode())
            process.stdin.close()
            self.assertEqual(self.shown, got + process.stdout.read())

    def test_a_log_that_grows_and_is_replaced(self):
        path = self.path("log", self.LOG)
        with self.watching(path) as process:
            try:
                self.assertEqual(self.shown, process.stdout.readline() + process.stdout.readline())
                with open(path, "a", encoding="utf-8") as log:
                    log.write("12:00:07 <Ntp><server>a</server></Ntp>\n")
                self.assertIn(b"12:00:07", process.stdout.readline())
                os.rename(path, path + ".1")
                self.path("log", "12:00:08 <Ntp><server>a</server></Ntp>\n")
                self.assertIn(b"12:00:08", process.stdout.readline())
            finally:
                process.kill()

    def test_memory_is_bounded(self):
        with self.watching() as process:
            for _ in range(40):
                process.stdin.write(b"<MD>" + b"<x>a line of the log\n" * 50000)
            time.sleep(0.2)
            with open(f"/proc/{process.pid}/status", encoding="utf-8") as status:
                self.assertLess(int(re.search(r"VmHWM:\s+(\d+)", status.read())[1]), 40000)  # KiB
            self.assertIn(b"cut:", process.communicate()[0])


class Readme(WithFolder):
    """The screens that the README shows are what one sees."""

    def setUp(self):
        super().setUp()
        with open(os.path.join(EXAMPLES, os.pardir, "README.md"), encoding="utf-8") as file:
            self.screens = {command: textwrap.dedent(screen) for command, screen in
                            re.findall(r"^    \$ netparam (.*)\n((?:    .*\n)+)", file.read(), re.MULTILINE)}

    def test_the_refused_request(self):
        self.path("request.xml", example(REQUEST).replace("<sensitivity>9<", "<sensitivity>90<", 1))
        done = run("parse", "md", "request.xml", cwd=self.folder)
        self.assertEqual(1, done.returncode)
        self.assertEqual(self.screens["parse md request.xml >/dev/null"], done.stderr)

    def test_the_drawn_values(self):
        done = run("parse", "md", REQUEST)
        above, *excerpts = re.split(r"^\.\.\.\n", self.screens["parse md examples/motion_request.xml"], flags=re.MULTILINE)
        self.assertEqual(("", [9, 1, 4]), (above, [len(excerpt.splitlines()) for excerpt in excerpts]))
        for excerpt in excerpts:
            self.assertIn(textwrap.indent(excerpt, "  "), done.stdout)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    NETPARAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
