#!/usr/bin/env python3
"""Payloads as JSON, as differences and as pictures: what the inspector's verbs write and diff, and --svg and --grid do.

usage: netparam_json_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import re
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

sys.dont_write_bytecode = True
import netparam_test as inspector  # pylint: disable=wrong-import-position
from netparam_test import EXAMPLES, MESSAGES, REQUEST, example, run  # pylint: disable=wrong-import-position


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


def extension_of(name):
    own = name + "_extension.xml"
    return own if os.path.exists(os.path.join(EXAMPLES, own)) else "motion_extension.xml"


def payload_of(message, file, *more, **input_text):
    done = run("parse", message, file, "--json", "--show-secrets", *more, **input_text)
    return json.loads(done.stdout)["payload"]


def inner(value, path):
    """The value at a path as parse prints it."""
    for step in re.findall(r"[^/\[\]]+", path):
        value = value[int(step) if isinstance(value, list) else step]
    return value


class RoundTrip(WithFolder):
    def test_every_example_comes_back_byte_by_byte(self):
        writers = {row["name"]: row["writer"] for row in json.loads(run("list", "--json").stdout)}
        for name, message in MESSAGES.items():
            with self.subTest(example=name):
                common = ("--ext", extension_of(name), "--show-secrets")
                parsed = run("parse", message, name + ".xml", *common, "--json", "--raw", self.path("parsed"))
                written = run("write", message, "-", *common, "--raw", self.path("loaded"), text=parsed.stdout)
                self.assertEqual(0, written.returncode, written.stderr)
                self.assertEqual(self.content("parsed"), self.content("loaded"))
                if not writers[message]:
                    continue
                reply = run("exchange", message, name + ".xml", *common, "--full").stdout.split("\nReply\n")[1]
                reply = "" if reply.startswith("  none:") else re.sub("^  ", "", reply, flags=re.MULTILINE)
                self.assertEqual(reply, written.stdout)

    def test_examples_of_payloads_are_written(self):
        for name, message, expected in (
                ("ai_settings", "ai-cfg", "<detectType>people,vehicle,dog_cat</detectType>"),
                ("crossline", "crossline-detect", "<direction>antiClockwise</direction>"),
                ("record_schedule", "record-schedule", "<channelId>3</channelId>"),
                ("motion", "md", "<columns>96</columns>")):  # small grids are always written in the classic size
            with self.subTest(payload=name):
                done = run("write", message, name + "_payload.json")
                self.assertEqual((0, ""), (done.returncode, done.stderr))
                self.assertIn(expected, done.stdout)
                self.assertEqual(0, run("parse", message, "-", text=done.stdout).returncode)

    def test_what_the_json_does_not_name_stays_as_initialised(self):
        done = run("write", "osd-date", "-", "--ext", "motion_extension.xml", text='{"width": -7}')
        # The parser would refuse the width; the writer does not mind.
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn("<width>-7</width>", done.stdout)
        channel = re.search(r"<channelId>\d+</channelId>", example("motion_extension.xml"))[0]
        self.assertIn(channel, done.stdout)

    def test_words_numbers_texts_and_arrays_mean_the_same(self):
        payload = json.loads(example("ai_settings_payload.json"))
        wanted = run("write", "ai-cfg", "-", text=json.dumps(payload)).stdout
        self.assertIn(">people,vehicle,dog_cat<", wanted)
        for types in (["dog_cat", "PEOPLE", "vehicle"], " vehicle , people,dog_cat", 0x4C0000):
            payload["detectType"] = types
            self.assertEqual(wanted, run("write", "ai-cfg", "-", text=json.dumps({"payload": payload})).stdout)
        for language in ("Chinese", "chinese", 0):
            done = run("write", "osd-date", "-", text=json.dumps({"language": language}))
            self.assertIn("<language>Chinese</language>", done.stdout)

    def test_a_payload_that_cannot_be_written(self):
        done = run("write", "ai-area-detect", "-", text="{}")
        self.assertEqual((1, ""), (done.returncode, done.stdout))
        self.assertIn("standard input: refused: the payload cannot be written\n  member    type\n", done.stderr)

    def test_secrets(self):
        text = "<RecordKey><key>front-door</key></RecordKey>"
        hidden = run("parse", "record-decrypt-key", "-", "--json", text=text).stdout
        done = run("write", "record-decrypt-key", "-", "--raw", self.path("bytes"), text=hidden)
        self.assertEqual(1, done.returncode)
        self.assertIn("the secret itself is not there", done.stderr)
        shown = run("parse", "record-decrypt-key", "-", "--json", "--show-secrets", text=text).stdout
        done = run("write", "record-decrypt-key", "-", "--raw", self.path("bytes"), text=shown)
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn(b"front-door\0", self.content("bytes"))


class RefusedJson(unittest.TestCase):
    GRID = '{"width": 4, "height": 2, "scope": '
    # message, JSON, exit code, what is said
    TABLE = (
        ("md", '{"width": 60,\n  "height" 34}', 4, r"standard input:2:13: not well-formed JSON: .*expected ':'"),
        ("md", "", 4, r"standard input:1:1: not well-formed JSON"),
        ("md", "[" * 100000, 4, r"not well-formed JSON"),
        ("md", b'{"width": "\xff"}', 4, r"standard input:1:1\d: not well-formed JSON: .*UTF-8"),
        ("md", '{"width": 1, "width": 2}', 4, r'"width" is given twice'),
        ("md", '{"message": "ntp", "payload": {}}', 1, r'this is a payload of "ntp", not of "md"'),
        ("md", "[]", 1, r"this is no object\n  member    \(the payload itself\)\n  read      an array of 0\n"),
        ("md", '{"widht": 60}', 1, r"no such member; did you mean width\?\n  member    widht\n  read      60\n"),
        ("md", '{"width": "60"}', 1, r'this is no whole number\n  member    width\n  read      "60"\n'
                                     r"  accepted  a whole number from -2147483648 to 2147483647\n"),
        ("md", '{"width": 1.5}', 1, "this is no whole number"),
        ("md", '{"width": 2147483648}', 1, "does not fit the member"),
        ("md", '{"sensitivityInfoList": {"sensitivityInfo": [{}, {}, {}, {}, {}]}}', 1, "too long(.|\n)*accepted  an array of at most 4"),
        ("md", '{"sensitivityInfoList": {"sensitivityInfo": [{}, {"endHuor": 1}]}}', 1,
         r"member    sensitivityInfoList/sensitivityInfo\[1\]/endHuor"),
        ("md", GRID + '["0110"]}', 1, "number of rows is wrong(.|\n)*accepted  an array of 2 rows, each a text of 4"),
        ("md", GRID + '["0110", "011"]}', 1, r"the row has 3 cells\n  member    scope\[1\]"),
        ("md", GRID + '["0110", "0120"]}', 1, r"cell 3 is neither 0 nor 1\n  member    scope\[1\]"),
        ("md", GRID + '[[0, 1, 256, 0], "0000"]}', 1, r"member    scope\[0\]\[2\]\n  read      256\n.*from 0 to 255"),
        ("md", '{"handleException": {"handleType": "io,rce"}}', 1, 'no such word; did you mean "rec"'),
        ("norm", '{"norm": "PLA"}', 1, r'did you mean "PAL"\?\n  member    norm\n  read      "PLA"\n.*: PAL, NTSC'),
        ("dns-info", '{"dns1": "%s"}' % ("x" * 300), 1, r"too long: 300 bytes(.|\n)*a text of at most \d+ bytes"),
        ("dns-info", '{"dns1": "a\\u0000b"}', 1, "a zero byte in the text"),
        ("crossline-detect", '{"crosslineDetectItem": [{"pointList": {"pointNum": 3, "point": [{"x": 0}]}}]}', 1,
         "pointNum is 3, which contradicts the array"),
        ("crossline-detect", '{"crosslineDetectItem": [{"pointList": {"point": [{"x": 1e39}]}}]}', 1,
         r"does not fit the member\n  member    crosslineDetectItem\[0\]/pointList/point\[0\]/x"),
        ("record-schedule", '{"typeScheduleList": {"section": [["MD"]]}}', 1, "this is no week"),
        ("record-schedule", '{"typeScheduleList": {"types": "MD,crossline_3"}}', 1, "no such word"),
        ("ptz-cruise", "{", 4, "not well-formed"),
        ("alarm-area", "{}", 2, "has no writer"),
    )

    def test_what_does_not_fit(self):
        for message, text, code, said in self.TABLE:
            with self.subTest(message=message, text=text[:60]):
                done = run("write", message, "-", text=text)
                self.assertEqual((code, ""), (done.returncode, done.stdout), done.stderr)
                self.assertRegex(done.stderr, said)

    def test_unreadable(self):
        self.assertEqual(3, run("write", "md", "no-such-file").returncode)


class ReadBack(WithFolder):
    @staticmethod
    def drawings(message, file, extension):
        """The drawn cells by their paths, as parse prints them."""
        shown = run("parse", message, file, "--ext", extension).stdout
        blocks = re.findall(r"^  (\S+) {2,}.*\n((?: {6}.*\n)+)", shown, re.MULTILINE)
        return [(path, drawing) for path, drawing in blocks if "+---" not in drawing and "not drawn" not in drawing]

    def test_every_drawn_value_is_read_back(self):
        kinds = set()
        for name, message in MESSAGES.items():
            extension = extension_of(name)
            for path, drawing in self.drawings(message, name + ".xml", extension):
                with self.subTest(example=name, path=path):
                    payload = payload_of(message, name + ".xml", "--ext", extension)
                    wanted = json.dumps(inner(payload, path))
                    cells = inner(payload, path)
                    schedule = isinstance(cells, dict)
                    rows = cells["section"] if schedule else cells
                    kinds.add((type(rows).__name__, type(rows[0]).__name__, len(rows) == 7))
                    # Something else first, so that it must be the drawing that brings the cells.
                    rows = rows[::-1]
                    owner, _, last = path.rpartition("/")
                    owner = inner(payload, owner) if owner else payload
                    owner[last] = {**cells, "section": rows} if schedule else rows
                    file = self.path("drawing", drawing.replace("      ", "   \t"))
                    done = run("write", message, "-", "--ext", extension, "--grid", f"{path}={file}", "--raw",
                               self.path("bytes"), text=json.dumps(payload))
                    self.assertEqual(0, done.returncode, done.stderr)
                    run("parse", message, name + ".xml", "--ext", extension, "--raw", self.path("parsed"))
                    differing = sum(a != b for a, b in zip(self.content("parsed"), self.content("bytes")))
                    # A schedule goes on to mention the types that are drawn: bits of one set.
                    self.assertLessEqual(differing, 8 if schedule else 0, wanted)
        self.assertIn(("list", "str", False), kinds)  # grids
        self.assertIn(("list", "str", True), kinds)   # hours
        self.assertIn(("list", "list", True), kinds)  # sets of alarm types

    def test_the_examples(self):
        done = run("write", "md", "motion_payload.json", "--grid", "motion_grid.txt")
        self.assertEqual(run("write", "md", "motion_payload.json").stdout, done.stdout)
        done = run("write", "record-schedule", "record_schedule_payload.json", "--grid", "record_week.txt", "--raw",
                   self.path("bytes"))
        # The body's format of schedule holds fewer types than are drawn.
        self.assertRegex(done.stderr, r"^record_schedule_payload.json:5:23: note: typeScheduleList .* comes back as MD\n$")
        self.assertNotEqual(run("write", "record-schedule", "record_schedule_payload.json").stdout, done.stdout)

    DAYS = "".join(f"{day:11}{'#' * 24}\n" for day in
                   ("Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"))
    GRID = ("." * 60 + "\n") * 34
    # drawing, exit code, what is said
    TABLE = (
        ("md", "  #x\n" + GRID, 4, r':1:4: the drawing does not fit: "x" stands for nothing; known: # \.'),
        ("md", "\n" + "." * 61 + "\n", 4, r":2:61: the drawing does not fit: 61 cells here, 60 cells wanted"),
        ("md", "  ..\n", 4, r":1:5: the drawing does not fit: 2 cells here"),
        ("md", GRID[61:], 4, r":34:1: the drawing does not fit: 33 rows here, 34 wanted"),
        ("md", GRID + "." * 60, 4, r":35:1: the drawing does not fit: the grid has only 34 rows"),
        ("md", DAYS.replace("Friday", "Sunday"), 4, r":6:1: the drawing does not fit: the day is drawn twice"),
        ("md", DAYS.replace("Friday", "Fryday"), 4, r":6:1: the drawing does not fit: this is no day of the week"),
        ("md", DAYS.replace("Monday     #", "Monday     +"), 4, r':2:12: .*"\+" stands for nothing'),
        ("md", DAYS[:-36], 4, r":7:1: the drawing does not fit: Saturday is missing"),
        ("record-schedule", DAYS, 4, r':1:12: .*"#" stands for nothing; known: \.'),
        ("record-schedule", DAYS.replace("#", "a") + "  a = MD, poeple\n", 4, r':8:11: .*"poeple" is no alarm type'),
        ("record-schedule", GRID, 2, "the payload has no grid that can be drawn"),
        ("ai-cfg", GRID, 2, "the payload has no grid and no schedule"),
    )

    def test_what_does_not_fit(self):
        payloads = {"md": "motion_payload.json", "record-schedule": "record_schedule_payload.json",
                    "ai-cfg": "ai_settings_payload.json"}
        for message, drawing, code, said in self.TABLE:
            with self.subTest(message=message, drawing=drawing[:30], said=said):
                done = run("write", message, payloads[message], "--grid", "-", text=drawing)
                self.assertEqual((code, ""), (done.returncode, done.stdout), done.stderr)
                self.assertRegex(done.stderr, said)
        done = run("write", "md", "motion_payload.json", "--grid", "scop=-", text=self.GRID)
        self.assertEqual(2, done.returncode)
        self.assertIn("did you mean scope?", done.stderr)

    def test_which_of_several(self):
        payload = {f"{kind}Area": {"width": 2, "height": 1, "area": ["00"]} for kind in ("md", "face")}
        arguments = ("write", "alarm-area", self.path("payload", json.dumps(payload)), "--raw", self.path("bytes"))
        done = run(*arguments, "--grid", "-", text="#.\n")
        self.assertEqual(2, done.returncode)
        self.assertIn("mdArea/area", done.stderr)
        done = run(*arguments, "--grid", "faceArea/area=-", text="#.\n")
        self.assertEqual(0, done.returncode, done.stderr)
        drawn = self.content("bytes")
        run(*arguments)
        self.assertEqual(1, sum(a != b for a, b in zip(drawn, self.content("bytes"))), "no other cell is set")


class Losses(WithFolder):
    """A body that does not hold the whole payload, or cannot be written at all, says which member is to blame."""

    def test_every_example_comes_back_or_says_what_does_not(self):
        named = 0
        messages = {row["name"]: row for row in json.loads(run("list", "--json").stdout)}
        for name, message in MESSAGES.items():
            if not messages[message]["root"]:
                continue
            common = ("--ext", extension_of(name), "--show-secrets")
            parsed = run("parse", message, name + ".xml", *common, "--json").stdout
            written = json.loads(run("write", message, "-", *common, "--json", text=parsed).stdout)
            lost = [one["member"] for one in written["lost"]]
            done = run("diff", message, name + ".xml", self.path("body", written["body"]), *common, "--json")
            with self.subTest(example=name):
                self.assertIsNone(written["refused"])
                different = [one["path"] for one in json.loads(done.stdout)["differences"]]
                self.assertEqual([], [path for path in different if not any(path.startswith(one) for one in lost)])
                self.assertEqual([], [one for one in lost if not any(path.startswith(one) for path in different)])
                named += len(lost)
        self.assertGreater(named, 30)

    def test_what_is_said(self):
        done = run("write", "md", "-", text='{\n "usepir": 1,\n "handleException": {"handleType": "rec"}}')
        self.assertEqual(0, done.returncode)
        self.assertIn('standard input:3:36: note: handleException/handleType (rec (0x4)) does not reach the body', done.stderr)
        done = run("write", "md", "-", "--strict", text='{"handleException": {"handleType": "rec"}}')
        self.assertEqual((1, ""), (done.returncode, done.stdout))
        done = run("write", "record-key-and-prompt", "-", text='{"key": "hunter2"}')
        self.assertIn("key (********) does not reach the body", done.stderr)

    def test_the_member_that_cannot_be_written(self):
        for message, text, said in (
                ("ai-area-detect", '{"payload": {\n  "type": 77}}', ("2:11", "type", "(0x4d)", "people, vehicle")),
                ("ptz-serial", '{"dataBit": 5}', ("1:13", "dataBit", "5 (has no word)", "CS8, CS7")),
                ("md", '{"width": "x"}', ("1:11", "width", '"x"', "a whole number from")),
                ("md", '{"timeBlockList": {"timeBlock": [\n3]}}', ("1:33", "timeBlockList/timeBlock", "an array of 1", "7 rows"))):
            with self.subTest(message=message, text=text):
                done = run("write", message, "-", text=text)
                self.assertEqual((1, ""), (done.returncode, done.stdout))
                for one in (f"standard input:{said[0]}: refused: ", f"  member    {said[1]}\n", *said[2:]):
                    self.assertIn(one, done.stderr)
                shown = json.loads(run("write", message, "-", "--json", text=text).stdout)["refused"]
                self.assertEqual((said[0], said[1]), (f"{shown['line']}:{shown['column']}", shown["element"]))


class Differences(WithFolder):
    def differ(self, message, old, new, *options, file=REQUEST):
        text = example(file)
        self.assertIn(old, text)
        return run("diff", message, file, "-", *options, text=text.replace(old, new, 1))

    def test_exit_codes(self):
        same = run("diff", "md", REQUEST, REQUEST)
        self.assertEqual((0, ""), (same.returncode, same.stdout))
        for arguments, text, code in (((REQUEST, "-"), "<MD><width>5</width></MD>", 1),
                                      ((REQUEST, "-"), "<MD><width>0</width></MD>", 4),
                                      ((REQUEST, "-"), "<MD><width>", 4),
                                      ((REQUEST, "no-such-file"), "", 3),
                                      (("-", "-"), "", 2)):
            with self.subTest(arguments=arguments, text=text):
                self.assertEqual(code, run("diff", "md", *arguments, text=text).returncode)

    def test_fields_with_both_values(self):
        done = self.differ("md", "<endHour>18<", "<endHour>19<")
        self.assertEqual((1, ""), (done.returncode, done.stderr))
        self.assertIn("md: 1 field differs\n", done.stdout)
        self.assertIn("  sensitivityInfoList/sensitivityInfo[2]/endHour  18  ->  19\n", done.stdout)
        words = self.differ("norm", "PAL", "NTSC", file="video_standard.xml").stdout
        self.assertIn("  norm  PAL (0)  ->  NTSC (1)\n", words)

    def test_cells_are_counted_and_drawn_over_each_other(self):
        areas = ["<A><chn>1</chn><faceArea><width>10</width><height>2</height><area>%s</area></faceArea></A>" % cells
                 for cells in ("/+AA", "f+gA")]  # the first row loses a cell, the second one gets one
        done = run("diff", "alarm-area", self.path("a", areas[0]), "-", text=areas[1])
        self.assertIn("2 cells differ", done.stdout)
        drawn = [line.strip() for line in done.stdout.splitlines()]
        self.assertIn("-#########", drawn)
        self.assertIn("#.+.......", drawn)

    def test_lists_of_different_length(self):
        shelter = "<Shelter><id>%d</id><width>5</width></Shelter>"
        texts = ["<S><shelterList>" + "".join(shelter % i for i in range(n)) + "</shelterList></S>" for n in (1, 2)]
        done = run("diff", "pic-shelter", self.path("a", texts[0]), "-", "--json", text=texts[1])
        found = {one["path"]: (one["a"], one["b"]) for one in json.loads(done.stdout)["differences"]}
        self.assertEqual((1, 2), found["shelterNum" if "shelterNum" in found else "shelterList/shelterNum"])
        self.assertEqual((None, 5), found["shelterList/Shelter[1]/width"])

    def test_as_json(self):
        shown = json.loads(self.differ("md", "<width>60<", "<width>58<", "--json").stdout)
        self.assertEqual(("md", REQUEST, False), (shown["message"], shown["a"], shown["equal"]))
        self.assertEqual({"path": "width", "a": 60, "b": 58}, shown["differences"][0])

    def test_secrets_differ_unseen(self):
        keys = ["<RecordKey><key>%s</key></RecordKey>" % key for key in ("hunter2", "hunter3")]
        for option in ((), ("--json",)):
            done = run("diff", "record-decrypt-key", self.path("a", keys[0]), "-", *option, text=keys[1])
            self.assertEqual(1, done.returncode)
            self.assertNotIn("hunter", done.stdout + done.stderr)
            self.assertIn("********", done.stdout)


class Pictures(WithFolder):
    SVG = "{http://www.w3.org/2000/svg}"

    def picture(self, message, file, verb="parse"):
        done = run(verb, message, file, "--svg", self.path("picture"))
        self.assertEqual(0, done.returncode, done.stderr)
        root = ElementTree.fromstring(self.content("picture"))
        self.assertEqual(self.SVG + "svg", root.tag)
        return root, [text.text for text in root.iter(self.SVG + "text")]

    def test_each_drawing_is_there_with_title_axes_and_legend(self):
        for verb in ("parse", "exchange"):
            root, texts = self.picture("md", REQUEST, verb)
            for text in ("scope", "timeBlockList/timeBlock", "60 x 34 cells, 432 set", "50", "row \\ column", "Sunday", "24", "set", "not set"):
                self.assertIn(text, texts)
            scope = [one for one in root.iter(self.SVG + "rect") if one.get("fill") == "#3b7dc4" and one.get("height") == "14"]
            # A row of cells is drawn in pieces; the widths must add up to the cells.
            self.assertEqual(432 * 14, sum(float(one.get("width")) for one in scope))

    def test_schedules_months_figures_and_masks(self):
        _, texts = self.picture("record-schedule", "record_schedule_combinations.xml")
        self.assertIn("c Normal", texts)
        _, texts = self.picture("day-record", "day_records.xml")
        self.assertIn("A all", texts)
        root, texts = self.picture("crossline-detect", "crossline_rules.xml")
        lines = [one.get("points").split() for one in root.iter(self.SVG + "polyline")]
        self.assertEqual([2, 3, 8], [len(points) for points in lines])
        root, _ = self.picture("intrusion-detect", "intrusion_rules.xml")
        self.assertTrue(list(root.iter(self.SVG + "polygon")))
        _, texts = self.picture("pic-shelter", "privacy_masks.xml")
        self.assertIn("1700", texts)

    def test_nothing_to_draw(self):
        done = run("parse", "ntp", "ntp.xml", "--svg", self.path("picture"))
        self.assertEqual(3, done.returncode)
        self.assertIn("there is nothing to draw", done.stderr)
        self.assertFalse(os.path.exists(self.path("picture")))
        self.assertEqual(3, run("parse", "md", REQUEST, "--svg", self.path("no/folder")).returncode)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    inspector.NETPARAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
