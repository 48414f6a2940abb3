#!/usr/bin/env python3
"""What holds for every message and every example: they are shown, written back, drawn, changed and described.

usage: netparam_messages_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import re
import subprocess
import sys
import unittest
from xml.etree import ElementTree

import jsonschema

sys.dont_write_bytecode = True
import netparam_test as inspector  # pylint: disable=wrong-import-position
from netparam_test import EXAMPLES, WithFolder, example, run  # pylint: disable=wrong-import-position

HEADERS = os.path.join(EXAMPLES, os.pardir, "netpublic", "include")
# The message of each example, as the list beside them says it; write-only messages have payloads in JSON.
MESSAGES = {name[:-4]: message for name, message in map(str.split, example("messages.txt").splitlines())
            if name.endswith(".xml")}

# Components of messages, not messages: they have no envelope or serve several.
COMPONENTS = {
    "get_sensitivity_new_info_x2s", "net_exten_x2s", "net_float_value_s2x", "net_int_value_s2x",
    "net_smart_ai_direction_s2x", "net_smart_ai_op_s2x", "net_smart_ai_points_s2x",
    "net_text_x2s", "net_text_s2x",  # of any message
}


def shown(*arguments, **text):
    """What is printed as JSON."""
    return json.loads(run(*arguments, "--json", **text).stdout)


def catalogue():
    return {row["name"]: row for row in shown("list") if row["name"]}


def extension_of(name):
    own = name + "_extension.xml"
    return "--ext", own if os.path.exists(os.path.join(EXAMPLES, own)) else "motion_extension.xml"


class Completeness(unittest.TestCase):
    def test_every_example_goes_through_its_message(self):
        examples = sorted(name[:-4] for name in os.listdir(EXAMPLES)
                          if name.endswith(".xml") and not name.endswith("_extension.xml"))
        self.assertEqual(examples, sorted(MESSAGES))
        messages = catalogue()
        for name, message in MESSAGES.items():
            with self.subTest(example=name):
                verb = "exchange" if messages[message]["writer"] else "parse"
                done = run(verb, message, name + ".xml", *extension_of(name))
                self.assertEqual(0, done.returncode, done.stderr)
                payload = done.stdout.split("\nReply\n")[0]
                self.assertNotRegex(payload, r"\d bytes, (\[|all zero)")  # a record whose members have no names
                self.assertNotIn("no rows describe", payload)

    def test_every_parser_and_writer_is_listed(self):
        declared = set()
        for file in os.listdir(HEADERS):
            with open(os.path.join(HEADERS, file), encoding="utf-8") as header:
                declared.update(re.findall(r"^NETPUBLIC_API int (\w+_(?:x2s|s2x))\(", header.read(), re.MULTILINE))
        listed = {row[kind] for row in shown("list") for kind in ("parser", "writer")}
        self.assertGreater(len(declared), 100)
        self.assertEqual(COMPONENTS, declared - listed)


class OtherMessages(unittest.TestCase):
    """Every example under every message: only those with the same root element may pass."""
    # A body, and the messages of others that it fits, with the reason.
    FITTING = {
        "stream_information": {"encoding-list"},  # the older and the newer form of the same list of encoders
        "encoding_list": {"stream-info"},
        "found_file": {"file-info-list"},  # the device's and the client's side of a file search
        "file_search": {"client-file-info-list"},
        "replay_seek_channels": {"replay-seek"},  # the newer one has more channels, which the older ignores
        "replay_seek": {"new-replay-seek"},
        "configuration_file": {"config-file"},  # a file's announcement and its transfer
        "configuration_transfer": {"config-file-info"},
    }

    def test_each_example_under_each_message(self):
        pairs = 0
        fitting = {}
        for message in filter(lambda row: row["parser"], shown("list")):
            for file in shown("check", "--message", message["name"], ".")["files"]:
                name = os.path.basename(file["file"])[:-4]
                if name.endswith("_extension"):
                    continue
                pairs += 1
                if MESSAGES[name] == message["name"]:
                    self.assertEqual("accepted", file["result"], file)
                elif file["result"] == "accepted":
                    fitting.setdefault(name, set()).add(message["name"])
                else:
                    self.assertEqual("refused", file["result"], file)
        self.assertGreater(pairs, 110 * 100)
        self.assertEqual(self.FITTING, fitting)


class RoundTrip(WithFolder):
    def test_every_example_comes_back_byte_by_byte(self):
        messages = catalogue()
        for name, message in MESSAGES.items():
            with self.subTest(example=name):
                common = (*extension_of(name), "--show-secrets")
                parsed = run("parse", message, name + ".xml", *common, "--json", "--raw", self.path("parsed"))
                written = run("write", message, "-", *common, "--raw", self.path("loaded"), text=parsed.stdout)
                self.assertEqual(0, written.returncode, written.stderr)
                self.assertEqual(self.content("parsed"), self.content("loaded"))
                if messages[message]["writer"]:
                    reply = run("exchange", message, name + ".xml", *common, "--full").stdout.split("\nReply\n")[1]
                    reply = "" if reply.startswith("  none:") else re.sub("^  ", "", reply, flags=re.MULTILINE)
                    self.assertEqual(reply, written.stdout)

    def test_every_example_comes_back_or_it_is_said_what_does_not(self):
        named = 0
        messages = catalogue()
        for name, message in MESSAGES.items():
            if not messages[message]["root"]:
                continue
            common = (*extension_of(name), "--show-secrets")
            parsed = run("parse", message, name + ".xml", *common, "--json").stdout
            written = shown("write", message, "-", *common, text=parsed)
            lost = [one["member"] for one in written["lost"]]
            differences = shown("diff", message, name + ".xml", self.path("body", written["body"]), *common)["differences"]
            different = [one["path"] for one in differences]
            with self.subTest(example=name):
                self.assertIsNone(written["refused"])
                self.assertEqual([], [path for path in different if not any(path.startswith(one) for one in lost)])
                self.assertEqual([], [one for one in lost if not any(path.startswith(one) for path in different)])
                named += len(lost)
        self.assertGreater(named, 30)


class Drawings(WithFolder):
    def drawings(self, message, file, *extension):
        """The drawn cells by their paths, as parse prints them; whatever is drawn can be a picture, too."""
        done = run("parse", message, file, *extension, "--svg", self.path("picture"))
        if done.returncode == 0:
            root = ElementTree.parse(self.path("picture")).getroot()
            self.assertEqual("{http://www.w3.org/2000/svg}svg", root.tag)
        blocks = re.findall(r"^  (\S+) {2,}.*\n((?: {6}.*\n)+)", done.stdout, re.MULTILINE)
        return [(path, drawing) for path, drawing in blocks if "+---" not in drawing and "not drawn" not in drawing]

    @staticmethod
    def inner(value, steps):
        for step in steps:
            value = value[int(step) if isinstance(value, list) else step]
        return value

    def test_every_drawn_value_is_read_back(self):
        kinds = set()
        for name, message in MESSAGES.items():
            common = (*extension_of(name), "--show-secrets")
            for path, drawing in self.drawings(message, name + ".xml", *common):
                with self.subTest(example=name, path=path):
                    payload = shown("parse", message, name + ".xml", *common, "--raw", self.path("parsed"))["payload"]
                    *owner, last = re.findall(r"[^/\[\]]+", path)
                    owner = self.inner(payload, owner)
                    cells = owner[last]
                    schedule = isinstance(cells, dict)
                    rows = cells["section"] if schedule else cells
                    kinds.add((type(rows[0]).__name__, len(rows) == 7))
                    # Something else first, so that it must be the drawing that brings the cells.
                    owner[last] = {**cells, "section": rows[::-1]} if schedule else rows[::-1]
                    file = self.path("drawing", drawing.replace("      ", "   \t"))
                    done = run("write", message, "-", *common, "--grid", f"{path}={file}", "--raw", self.path("bytes"),
                               text=json.dumps(payload))
                    self.assertEqual(0, done.returncode, done.stderr)
                    differing = sum(a != b for a, b in zip(self.content("parsed"), self.content("bytes")))
                    # A schedule goes on to mention the types that are drawn: bits of one set.
                    self.assertLessEqual(differing, 8 if schedule else 0)
        self.assertEqual({("str", False), ("str", True), ("list", True)}, kinds)  # grids, hours, sets of alarm types

    def test_a_drawn_schedule_changes_alone(self):
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
                message, text, extension = MESSAGES[name], example(name + ".xml"), extension_of(name)

                def drawn_of(file):
                    run("parse", message, file, *extension, "--quiet", "--grid-out", f"{path}={self.path('drawn')}")
                    return self.content("drawn").decode().splitlines()

                drawn = drawn_of(name + ".xml")
                at = next(i for i, one in enumerate(drawn) if i > 0 and one.startswith(line))
                self.assertNotEqual(mark, drawn[at][-1])
                drawn[at] = drawn[at][:-1] + mark
                there = "cruiseList/cruise[0]/valueTable" if name == "ptz_cruises" else path
                grid = f"{there}={self.path('changed', chr(10).join(drawn))}"
                done = run("set", message, name + ".xml", *extension, "--grid", grid)
                self.assertEqual(0, done.returncode, done.stderr)
                new = self.path("new.xml", done.stdout)
                self.assertEqual(drawn, drawn_of(new))
                self.assertIn("1 cell differs", run("diff", message, name + ".xml", new, *extension).stdout)
                outside = [re.split(f"</?{element}>", one) for one in (text, done.stdout)]
                self.assertEqual(*([part for i, part in enumerate(parts) if i != 2 * place + 1] for parts in outside))
                self.assertEqual(done.stdout, run("set", message, new, *extension, "--grid", grid).stdout)


class Set(unittest.TestCase):
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
        asked = set()
        while candidates:
            done = run("set", MESSAGES[name], "-", *(f"{path}={texts[0]}" for path, texts in candidates.items()),
                       *extension_of(name), text=text)
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


class ReferencePage(unittest.TestCase):
    """Every message stands on the page, with an example that is read, or written, as the page shows it."""

    @classmethod
    def setUpClass(cls):
        page = run("describe", "--all", "--markdown", "--examples", EXAMPLES)
        cls.page, cls.errors = page.stdout, page.stderr
        cls.examples = dict(re.findall(r"^## ([\w-]+)\n(?:(?!## |# )[^\n]*\n)*?```xml\n(.*?)```$", cls.page, re.M | re.S))
        cls.messages = shown("describe", "--all")

    def test_every_link_leads_somewhere(self):
        anchors = {"#" + heading.lower().replace(" ", "-") for heading in re.findall(r"^#+ (.*)$", self.page, re.MULTILINE)}
        self.assertEqual(set(), set(re.findall(r"\]\((#[^)]*)\)", self.page)) - anchors)
        for row in re.findall(r"^\| `.*$", self.page, re.MULTILINE):
            self.assertEqual(5, len(re.findall(r"(?<!\\)\|", row)), row)

    def test_each_message_has_an_example_that_is_accepted_and_complete(self):
        self.assertEqual("", self.errors)
        names = {message["name"] for message in self.messages}
        self.assertEqual((names, names), (set(run("list", "--names").stdout.split()), set(self.examples)))
        for message in self.messages:
            text = self.examples[message["name"]]
            with self.subTest(message=message["name"]):
                self.assertIn(f"**{message['title'][0].upper()}{message['title'][1:]}.** {message['summary']}", self.page)
                root = ElementTree.fromstring(text)
                if message["parser"] is None:
                    self.assertEqual(message["root"], root.tag)
                    continue
                done = run("parse", message["name"], "-", text=text)
                self.assertEqual(0, done.returncode, done.stderr)
                others = [self.root_of(name) for name, each in MESSAGES.items() if each == message["name"]]
                self.assertEqual(set(), set(self.lacking(message["read"], [root, *others])))

    @staticmethod
    def root_of(name):
        """The body; a message's alternatives stand in several examples."""
        root = ElementTree.fromstring(example(name + ".xml"))
        return root[0] if root.tag.lower() == "body" else root

    def lacking(self, table, elements, path=""):
        """The keys that no element has a child for."""
        for row in table["keys"]:
            if not row["read"] or "an earlier row of this name takes the child" in row["notes"]:
                continue
            children = [child for element in elements for child in element
                        if child.tag.lower() == row["key"].lower() or "whatever its name" in str(table["notes"])]
            if not children:
                yield path + row["key"]
            elif "record" in row:
                yield from self.lacking(row["record"], children, path + row["key"] + "/")
                if "again" in row:
                    yield from self.lacking(row["again"], children, path + row["key"] + "/")


class Schemas(WithFolder):
    """What the schemas find valid is what the tool prints, and what the library accepts."""
    # Examples with children that the library does not know, or with one that may come twice where its table is read again.
    STRANGERS = {"day_records", "floodlight_task", "osd_channel", "shared_users", "alarm_report"}

    def schema(self, message, kind):
        done = run("describe", message, "--schema", kind)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        return done.stdout

    def test_payloads(self):
        refused = 0
        for name, message in MESSAGES.items():
            validator = jsonschema.Draft202012Validator(json.loads(self.schema(message, "json")))
            payload = shown("parse", message, name + ".xml", "--show-secrets")["payload"]
            with self.subTest(example=name):
                self.assertEqual([], list(validator.iter_errors(payload)))
                self.assertFalse(validator.is_valid({**payload, "other": 1}))
                for key, value in payload.items():
                    if isinstance(value, int):
                        self.assertFalse(validator.is_valid({**payload, key: [value]}))
                        refused += 1
        self.assertGreater(refused, 300)

    def valid(self, text):
        return subprocess.run(["xmllint", "--noout", "--schema", self.path("schema"), "-"], input=text.encode(),
                              capture_output=True, check=False).returncode == 0

    def test_bodies(self):
        for message in run("list", "--names").stdout.split():
            self.path("schema", self.schema(message, "xsd"))
            with self.subTest(message=message):
                self.assertTrue(self.valid(run("new", message).stdout))
                self.assertTrue(self.valid(run("new", message, "--minimal").stdout))
                self.assertFalse(self.valid("<body><other/></body>"))
                for name, each in MESSAGES.items():
                    if each == message:
                        self.assertEqual(name not in self.STRANGERS, self.valid(example(name + ".xml")), name)
        self.path("schema", self.schema("md", "xsd"))
        self.assertFalse(self.valid("<MD><width>0</width></MD>"))
        self.assertFalse(self.valid("<MD><scope><columns>5</columns></scope></MD>"))


class Places(unittest.TestCase):
    def test_each_place_is_the_values_own_or_none(self):
        """Whatever the message: what stands there is what was read."""
        for name, message in MESSAGES.items():
            text = example(name + ".xml")
            lines = text.splitlines()
            with self.subTest(example=name):
                for row in shown("parse", message, "-", "--show-secrets", text=text)["rows"]:
                    for spot in row["from"]:
                        there = lines[spot["line"] - 1][spot["column"] - 1:]
                        # An element's own place, where it holds no text: never that of the list around it.
                        own = "<" + row["path"].split("/")[-1].split("[")[0]
                        self.assertTrue(there[0] != "<" or there.startswith(own), (row, spot))


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    inspector.NETPARAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
