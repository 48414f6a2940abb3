#!/usr/bin/env python3
"""Bodies made, changed and watched: what the inspector's verbs new, set and watch do, and how parse prints a part.

usage: netparam_edit_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import re
import subprocess
import sys
import time
import unittest
import xml.etree.ElementTree as ElementTree

sys.dont_write_bytecode = True
import netparam_test as inspector  # pylint: disable=wrong-import-position
from netparam_json_test import WithFolder, extension_of  # pylint: disable=wrong-import-position
from netparam_test import MESSAGES, REQUEST, example, run  # pylint: disable=wrong-import-position


def catalogue():
    return {row["name"]: row for row in json.loads(run("list", "--json").stdout) if row["name"]}


class New(unittest.TestCase):
    def test_what_it_prints_is_accepted(self):
        for name, message in catalogue().items():
            texts = {option: run("new", name, *option.split()).stdout for option in ("", "--minimal", "--bare")}
            with self.subTest(message=name):
                self.assertEqual(message["element"], ElementTree.fromstring(texts["--bare"])[0].tag)
                for option, text in texts.items():
                    if message["parser"]:
                        done = run("parse", name, "-", text=text)
                        self.assertEqual((0, ""), (done.returncode, done.stderr), option)
                self.assertEqual(ElementTree.canonicalize(texts["--bare"], strip_text=True),
                                 ElementTree.canonicalize(texts[""], strip_text=True))

    def test_comments_tell_what_is_accepted(self):
        text = run("new", "md").stdout
        for said in ("<!-- md: motion detection settings. ", "sensitivityInfo: a list of exactly 4",
                     "<width>1<!-- a whole number from 1 to 155 --></width>", "<columns>6<!-- required: "):
            self.assertIn(said, text)
        self.assertIn("<Ntp version=\"1.1\"></Ntp>", run("new", "ntp", "--minimal").stdout)


class Set(WithFolder):
    LEAF = re.compile(r"<(?![!?/])[^<>]*[^/<>]>\s*([^<>\s](?:[^<>]*[^<>\s])?)\s*</")

    def leaves(self, text):
        """The paths of the texts in a body, and where these stand."""
        paths = []

        def walk(element, path):
            names = [child.tag for child in element]
            for place, child in enumerate(element):
                step = path + child.tag + (f"[{names[:place].count(child.tag)}]" if names.count(child.tag) > 1 else "")
                if len(child):
                    walk(child, step + "/")
                elif child.text and child.text.strip():
                    paths.append(step)

        root = ElementTree.fromstring(text)
        walk(root[0] if root.tag.lower() == "body" else root, "")
        spans = [match.span(1) for match in self.LEAF.finditer(text)]
        self.assertEqual(len(paths), len(spans))
        return dict(zip(paths, spans))

    @staticmethod
    def neighbours(old):
        """Texts that may be accepted in its place."""
        if re.fullmatch(r"-?\d+", old):
            return [old[:-1] + digit for digit in ("0", "1", "2") if digit != old[-1]]
        if old.endswith("day"):
            return ["Tuesday" if old != "Tuesday" else "Sunday"]
        return [("B" if old[0] == "A" else "A") + old[1:], old[:-1] + ("2" if old[-1] == "1" else "1")]

    def settle(self, name, text, candidates, leaves):
        """Sets a candidate each at once, those left out that have none which the library takes; of words, it says them."""
        candidates = {path: list(texts) for path, texts in candidates.items()}
        asked = set()
        while candidates:
            done = run("set", MESSAGES[name], "-", *(f"{path}={texts[0]}" for path, texts in candidates.items()),
                       "--ext", extension_of(name), text=text)
            if done.returncode == 0:
                break
            self.assertEqual(1, done.returncode, done.stderr)
            place = re.search(r"^standard input:(\d+):\d+: refused[^^]*\^\n  element +(\S+)", done.stderr, re.MULTILINE)
            refused = [path for path in candidates if place and text.count("\n", 0, leaves[path][0]) == int(place[1]) - 1 and
                       place[2].endswith(path)] or list(candidates)[-1:]
            words = re.search("accepted +.*words: (.*)", done.stderr)
            for path in refused:
                del candidates[path][0]
                if words and path not in asked:
                    asked.add(path)
                    candidates[path] = [word for word in re.split("[, ]+", words[1]) if word != text[slice(*leaves[path])]]
                if not candidates[path]:
                    del candidates[path]
        return {path: texts[0] for path, texts in candidates.items()}, done.stdout if candidates else text

    def test_each_leaf_changes_alone(self):
        """Every text of every example that can be another one: half of them at once, and what cannot change beside others
        alone. They change where they stand, and nothing else does."""
        changed = kept = 0
        for name in MESSAGES:
            text = example(name + ".xml")
            leaves = self.leaves(text)
            turns = [list(leaves)[::2], list(leaves)[1::2]]
            for turn in turns:
                values, after = self.settle(name, text, {path: self.neighbours(text[slice(*leaves[path])]) for path in turn}, leaves)
                expected = text
                for path in sorted(values, key=leaves.get, reverse=True):
                    expected = expected[:leaves[path][0]] + values[path] + expected[leaves[path][1]:]
                self.assertEqual(expected, after, name)
                changed += len(values)
                if len(turn) > 1:
                    turns += [[path] for path in turn if path not in values]
                else:
                    kept += not values
        self.assertGreater(changed, 3980)
        self.assertLess(kept, 50)  # sides of grids whose cells stay, indices that others have, numbers that few are accepted of

    def test_whatever_stands_there(self):
        for text, value, expected in (
                ("<MD a='>'>\r\n <!-- <width>9</width> --><width\n x='1' >\n 5 \r\n</width ></MD>", "7",
                 "<MD a='>'>\r\n <!-- <width>9</width> --><width\n x='1' >\n 7 \r\n</width ></MD>"),
                ("<MD><width>5<!-- c --></width></MD>", "7", "<MD><width>7<!-- c --></width></MD>"),
                ("<MD><width/></MD>", "7", "<MD><width>7</width></MD>"),
                ("<MD><width></width></MD>", "7", "<MD><width>7</width></MD>"),
                ("<MD><WID><![CDATA[5]]></WID></MD>", "7", "<MD><WID>7</WID></MD>"),  # by the key
                ("<MD><WID>5</WID><width>6</width></MD>", "7", "<MD><WID>5</WID><width>7</width></MD>"),  # its own name first
                ("<?xml version='1.0'?>\n<body><x/><MD><width>0</width></MD></body>", "7",
                 "<?xml version='1.0'?>\n<body><x/><MD><width>7</width></MD></body>")):
            with self.subTest(text=text):
                done = subprocess.run([inspector.NETPARAM, "set", "md", "-", f"MD/width={value}"], input=text.encode(),
                                      capture_output=True, check=True)
                self.assertEqual(expected, done.stdout.decode())
        done = run("set", "image-file-info", "-", "imageName=a<b>&\"c\n",
                   text="<imageFileInfo><imageName>d</imageName></imageFileInfo>")
        self.assertIn("<imageName>a&lt;b&gt;&amp;\"c&#10;</imageName>", done.stdout, done.stderr)

    def test_what_cannot_be_set(self):
        for values, code, said in ((("width=0",), 1, "refused: the number is out of range"), (("wdith=1",), 2, "did you mean width?"),
                                   (("sensitivityInfoList/sensitivityInfo/id=0",), 2, "say sensitivityInfo[0] to sensitivityInfo[3]"),
                                   (("sensitivityInfoList/sensitivityInfo[4]/id=0",), 2, "has only 4"),
                                   (("scope=1",), 2, "has no text but children"), (("width=1", "width=2"), 2, "set twice"),
                                   ((), 2, "nothing is to be set"), (("width",), 2, "is no PATH=VALUE")):
            with self.subTest(values=values):
                done = run("set", "md", REQUEST, *values)
                self.assertEqual((code, ""), (done.returncode, done.stdout))
                self.assertIn(said, done.stderr)

    def test_a_drawn_grid(self):
        path = self.path("request.xml", example(REQUEST))
        self.assertEqual(f"{path}: md accepted\n", run("parse", "md", path, "--grid-out", "scope=" + self.path("grid"), "--quiet").stdout)
        self.assertEqual(2, run("set", "md", path, "--grid", self.path("grid"), "--diff").stdout.count("\n"))
        drawn = self.content("grid").decode().splitlines()
        self.assertEqual((34, {60}), (len(drawn), set(map(len, drawn))))
        drawn[3] = "#.#" + drawn[3][3:]
        self.path("grid", "\n".join(drawn))
        self.assertEqual("", run("set", "md", path, "enable=0", "--grid", "scope=" + self.path("grid"), "--in-place").stdout)
        payload = json.loads(run("parse", "md", path, "--json").stdout)["payload"]
        self.assertEqual("101" + "0" * 57, payload["scope"][3])
        self.assertEqual(0, payload["enable"])
        diff = run("diff", "md", REQUEST, path).stdout
        self.assertIn("md: 2 fields differ", diff)
        self.assertIn("2 cells differ", diff)

    def test_a_drawn_schedule(self):
        """One cell of each kind: what is drawn is read back, and nothing outside its element changes."""
        days = "DayRecordList/DayRecord[%d]/dayTypeList/dayType"
        for name, path, line, mark, element, place in (
                ("motion_request", "timeBlockList/timeBlock", "Tuesday", "#", "timeBlockList", 0),
                ("track_schedule", "timeTable", "Friday", "#", "timeTable", 0),
                ("ptz_cruises", "keyPos[0]/valueTable", "Sunday", "#", "valueTable", 0),
                ("record_schedule_types", "typeScheduleList", "Monday", "a", "typeScheduleList", 0),
                ("record_schedule_combinations", "typeScheduleList", "Saturday", "a", "ScheduleList", 0),
                ("day_records", days % 0, "", "a", "dayTypeList", 0), ("day_records", days % 1, "", "n", "dayTypeList", 1)):
            with self.subTest(example=name, path=path):
                message, text, extension = MESSAGES[name], example(name + ".xml"), ("--ext", extension_of(name))
                run("parse", message, name + ".xml", *extension, "--quiet", "--grid-out", f"{path}={self.path('drawn')}")
                drawn = self.content("drawn").decode().splitlines()
                at = next(i for i, one in enumerate(drawn) if i > 0 and one.startswith(line))
                self.assertNotEqual(mark, drawn[at][-1])
                drawn[at] = drawn[at][:-1] + mark
                self.path("drawn", "\n".join(drawn))
                there = "cruiseList/cruise[0]/valueTable" if name == "ptz_cruises" else path
                done = run("set", message, name + ".xml", *extension, "--grid", f"{there}={self.path('drawn')}")
                self.assertEqual(0, done.returncode, done.stderr)
                new = self.path("new.xml", done.stdout)
                run("parse", message, new, *extension, "--quiet", "--grid-out", f"{path}={self.path('again')}")
                self.assertEqual(drawn, self.content("again").decode().splitlines())
                self.assertIn("1 cell differs", run("diff", message, name + ".xml", new, *extension).stdout)
                outside = [re.split(f"</?{element}>", one) for one in (text, done.stdout)]
                self.assertEqual(*([part for i, part in enumerate(parts) if i != 2 * place + 1] for parts in outside))
                again = run("set", message, new, *extension, "--grid", f"{there}={self.path('drawn')}")
                self.assertEqual(done.stdout, again.stdout)
        self.assertIn("the body has cruiseList/cruise[0]/valueTable", run(
            "set", "ptz-cruise", "ptz_cruises.xml", "--grid", "keyPos[0]/valueTable=" + self.path("drawn", "\n".join(
                day + " " + "." * 24 for day in "Sunday Monday Tuesday Wednesday Thursday Friday Saturday".split()))).stderr)

    def test_the_difference(self):
        done = run("set", "md", "-", "width=7", "height=8", "channelId=1", "--diff",
                   text="<MD>\n<channelId>0</channelId>\n\n<width>5</width><height>6</height>\n</MD>")
        self.assertEqual("--- standard input\n+++ standard input\n@@ -2 +2 @@\n-<channelId>0</channelId>\n+<channelId>1</channelId>\n"
                         "@@ -4 +4 @@\n-<width>5</width><height>6</height>\n+<width>7</width><height>8</height>\n", done.stdout)


class Parts(unittest.TestCase):
    def test_only_nonzero_flat(self):
        flat = run("parse", "md", REQUEST, "--flat").stdout
        self.assertIn("sensitivityInfoList/sensitivityInfo[1]/sensitivity = 20\n", flat)
        self.assertIn('handleException/handleType = "rec,ftp,push"\n', flat)
        self.assertIn("scope = 60 x 34 cells, 432 set\n", flat)
        part = run("parse", "md", REQUEST, "--flat", "--only", "sensitivityInfoList/sensitivityInfo[1]").stdout
        self.assertEqual([line for line in flat.splitlines() if "sensitivityInfo[1]/" in line], part.splitlines())
        some = run("parse", "md", REQUEST, "--flat", "--nonzero").stdout.splitlines()
        self.assertLess(len(some), len(flat.splitlines()))
        self.assertEqual([], [line for line in some if re.search(r" = (0|\"\")$", line)])
        self.assertIn("did you mean scope?", run("parse", "md", REQUEST, "--only", "scop").stderr)
        self.assertIn("timeBlockList/timeBlock", run("parse", "md", REQUEST, "--only", "timeBlockList").stdout)


class Watch(WithFolder):
    LOG = ("12:00:01.250 <- <body><MD version='1.1'><width>5</width></MD></body> sent\n"
           "2026-03-01 12:00:02 got <MD>\n  <width>0</width></MD>\n"
           "a < b, <b>bold</b>, <Ip>1.2.3.4</Ip>\n"
           "12:00:03 <RecordKey><key>hunter2</key></RecordKey><Ntp><x/></Ntp>\n"
           "12:00:04 <MD><width>\n12:00:05 <?xml version='1.0'?><body><Other><y/></Other></body>\n"
           "12:00:06 <MD><width></MD>\n")
    SHOWN = (("1", "12:00:01.250", "md", "accepted"), ("2", "2026-03-01 12:00:02", "md", "refused: MD/width: the number is out"),
             ("5", "12:00:03", "record-decrypt-key", "accepted"), ("5", "12:00:03", "ntp", "accepted, 1 note"),
             ("6", "12:00:04", "-", "cut:"), ("7", "12:00:05", "-", "unknown: "), ("8", "12:00:06", "-", "malformed: "))

    def assert_shown(self, output):
        lines = output.splitlines()
        self.assertEqual(len(self.SHOWN), len(lines), output)
        for line, (row, moment, message, verdict) in zip(lines, self.SHOWN):
            self.assertRegex(line, rf"^ +{row}  {re.escape(moment)} +{re.escape(message)} +{re.escape(verdict)}")

    def test_each_message_of_a_log_however_it_arrives(self):
        self.assert_shown(run("watch", text=self.LOG).stdout)
        process = subprocess.Popen([inspector.NETPARAM, "watch"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0)
        head = self.LOG.index("sent")
        for at in range(0, head):
            process.stdin.write(self.LOG[at:at + 1].encode())
        got = process.stdout.readline()  # although the rest has not come
        process.stdin.write(self.LOG[head:].encode())
        process.stdin.close()
        self.assert_shown((got + process.stdout.read()).decode())
        process.stdout.close()
        process.wait()

    def test_details_without_secrets(self):
        done = run("watch", "--details", text=self.LOG).stdout
        self.assertNotIn("hunter", done)
        self.assertIn(":3:10: refused: the number is out of range\n    3 |   <width>0</width></MD>", done)
        self.assertIn("  width      5\n", re.sub(r"width +5", "width      5", done))
        self.assertIn("Ntp/x is ignored", done)

    def test_a_log_that_grows_and_is_replaced(self):
        path = self.path("log", self.LOG)
        process = subprocess.Popen([inspector.NETPARAM, "watch", path], stdout=subprocess.PIPE)
        try:
            self.assert_shown("".join(process.stdout.readline().decode() for _ in range(5)) + "".join(
                process.stdout.readline().decode() for _ in range(2)))
            with open(path, "a", encoding="utf-8") as log:
                log.write("12:00:07 <Ntp><server>a</server></Ntp>\n")
            self.assertIn(b"12:00:07", process.stdout.readline())
            os.rename(path, path + ".1")
            self.path("log", "12:00:08 <Ntp><server>a</server></Ntp>\n")
            self.assertIn(b"12:00:08", process.stdout.readline())
        finally:
            process.kill()
            process.stdout.close()
            process.wait()

    def test_memory_is_bounded(self):
        process = subprocess.Popen([inspector.NETPARAM, "watch"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        for _ in range(40):
            process.stdin.write(b"<MD>" + b"<x>a line of the log\n" * 50000)
        process.stdin.flush()
        time.sleep(0.2)
        with open(f"/proc/{process.pid}/status", encoding="utf-8") as status:
            self.assertLess(int(re.search(r"VmHWM:\s+(\d+)", status.read())[1]), 40000)  # KiB
        output = process.communicate()[0].decode()
        self.assertIn("cut:", output)

    def test_a_finished_log_is_checked(self):
        path = self.path("device.log", self.LOG)
        done = run("check", "-v", path)
        self.assertEqual(4, done.returncode)
        self.assertIn("7 files: 3 accepted, 1 refused, 2 malformed, 1 unknown", done.stdout.replace("messages", "files"))
        self.assertIn(f"{path}:3:10: refused: the number is out of range", done.stdout)
        self.assertRegex(done.stdout, re.escape(path) + ":8:[0-9]+: not well-formed XML")
        self.assertEqual(5, run("check", self.path("empty.log", "nothing\n")).returncode)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    inspector.NETPARAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
