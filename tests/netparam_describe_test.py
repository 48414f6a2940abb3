#!/usr/bin/env python3
"""What the inspector tells of a message's table, and of where a value lies and came from.

usage: netparam_describe_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from xml.etree import ElementTree

try:
    import jsonschema
except ImportError:
    jsonschema = None

sys.dont_write_bytecode = True
import netparam_test as inspector  # pylint: disable=wrong-import-position
from netparam_test import REQUEST, run  # pylint: disable=wrong-import-position

ETHERNET = "<Ip>\n  <ip>10.0.0.2</ip>\n  <m>255.0.0.0</m>\n  <MAC>00:11:22:33:44:55</MAC>\n</Ip>"


def described(message):
    return json.loads(run("describe", message, "--json").stdout)


def keys(table):
    return {key["key"]: key for key in table["keys"] if key["read"]}


class Describing(unittest.TestCase):
    def test_header(self):
        message = described("nets_param_ethernet_init")
        self.assertEqual(("ethernet", 801, 512, "Ip"), tuple(message[k] for k in ("name", "id", "size", "root")))
        self.assertIn("dataSize 512", message["read_check"])
        self.assertIn("sets inited to 2", message["read_check"])
        self.assertEqual(["ip", "mask", "mac", "gateway"], message["read"]["order"])

    def test_limits_words_and_capacities(self):
        task = keys(described("floodlight-task")["read"])
        self.assertEqual([0, 63], task["channel"]["range"])
        self.assertEqual(0x400000, {word["word"]: word["code"] for word in task["detectType"]["words"]}["dog_cat"])
        item = keys(task["FloodlightScheduleList"]["record"])["item"]
        self.assertEqual((64, 8, 2560), (item["capacity"], item["offset"], item["bytes"]))
        ddns = keys(described("ddns")["read"])["ddnsType"]
        self.assertEqual(["kelvo", "dyndns", "peatnuts", "3322", "no-ip"], [word["word"] for word in ddns["words"]])
        self.assertIn("the beginning of a word will do", ddns["notes"][0])

    def test_oddities_are_told(self):
        for message, text in (("dhcp", "only the first child is looked at"), ("ptz-preset", "net_ptz_preset_s2x: writes nothing"),
                              ("osd-chn", "code of its own"), ("encoding-list", "counted by the envelope's reserved1"),
                              ("floodlight-status-report", "an item too many overwrites the last one"),
                              ("link", 'a code without a word is written as "LAN"'),
                              ("stream-info", "host prepares the envelope")):
            with self.subTest(message=message):
                self.assertIn(text, re.sub(r"\s+", " ", run("describe", message).stdout))

    def test_keys_that_no_child_reaches_say_so(self):
        disk = keys(described("support")["read"])["diskNum"]
        self.assertEqual([], disk["notes"])
        written = [key for key in described("support")["read"]["keys"] if key["key"] == "disk"]
        self.assertEqual([(False, True)], [(key["read"], key["written"]) for key in written])

    def test_elements_that_the_payload_keeps_in_another_form(self):
        preset = described("ptz-preset")
        self.assertEqual(("presets", []), (preset["title"], preset["read"]["order"]))
        self.assertIn("dataSize 21504", preset["read_check"])
        top = keys(preset["read"])
        self.assertEqual(["channelId", "maxPresetNum", "maxPresetPicNum", "presetList"], list(top))
        self.assertTrue(top["channelId"]["required"])
        self.assertNotIn("member", top["channelId"])  # it is not the payload's
        item = keys(top["presetList"]["record"])["preset"]
        self.assertEqual(256, item["capacity"])
        self.assertEqual("id", keys(item["record"])["id"]["member"])
        motion = keys(described("md")["read"])
        self.assertEqual(["columns", "rows", "valueTable"], list(keys(motion["scope"]["record"])))
        part = keys(keys(motion["sensitivityInfoList"]["record"])["sensitivityInfo"]["record"])
        self.assertEqual("sensitivity", part["sensitivity"]["member"])
        again = keys(keys(motion["sensInfoNew"]["record"])["sensInfoList"]["again"])
        self.assertTrue(keys(again["sensInfo"]["record"])["priority"]["required"])
        bits = keys(keys(keys(described("support")["read"])["IOTsupport"]["record"])["alertorLight"]["record"])
        self.assertEqual("a bit, 0x400", bits["brightness"]["accepts"])
        self.assertEqual("smartPlug", keys(keys(keys(described("support")["read"])["IOTsupport"]["record"])[
            "smartPlug"]["record"])["duration"]["member"])

    def test_lines_keep_within_the_terminal_where_the_words_allow_it(self):
        for line in run("describe", "md").stdout.splitlines():
            self.assertLessEqual(len(line), max(80, max(map(len, line.split()), default=0) + 34))

    def test_every_message_stands_on_the_page_and_every_link_leads_somewhere(self):
        page = run("describe", "--all", "--markdown").stdout
        anchors = {"#" + heading.lower().replace(" ", "-") for heading in re.findall(r"^#+ (.*)$", page, re.MULTILINE)}
        self.assertEqual(set(), set(re.findall(r"\]\((#[^)]*)\)", page)) - anchors)
        for name in run("list", "--names").stdout.split():
            self.assertIn("#" + name, anchors)
        for row in re.findall(r"^\| `.*$", page, re.MULTILINE):
            self.assertEqual(5, len(re.findall(r"(?<!\\)\|", row)), row)

    def test_usage(self):
        for arguments in ((), ("md", "--all"), ("md", "--markdown"), ("md", "--rows"), ("--all", "--json", "--rows"),
                          ("nosuchthing",), ("nets_param_led_state_init",)):
            with self.subTest(arguments=arguments):
                done = run("describe", *arguments)
                self.assertEqual((2, ""), (done.returncode, done.stdout))


class Examples(unittest.TestCase):
    """The page's examples are read, or written, as the page shows them."""

    @classmethod
    def setUpClass(cls):
        page = run("describe", "--all", "--markdown", "--examples", inspector.EXAMPLES)
        cls.page, cls.errors = page.stdout, page.stderr
        cls.examples = dict(re.findall(r"^## ([\w-]+)\n(?:(?!## |# )[^\n]*\n)*?```xml\n(.*?)```$", cls.page, re.M | re.S))

    def test_each_message_has_one(self):
        self.assertEqual("", self.errors)
        messages = json.loads(run("describe", "--all", "--json").stdout)
        self.assertEqual({message["name"] for message in messages}, set(self.examples))
        for message in messages:
            with self.subTest(message=message["name"]):
                self.assertIn(f"**{message['title'][0].upper()}{message['title'][1:]}.** {message['summary']}", self.page)

    def test_each_is_accepted_and_complete(self):
        for message in json.loads(run("describe", "--all", "--json").stdout):
            example = self.examples[message["name"]]
            with self.subTest(message=message["name"]):
                root = ElementTree.fromstring(example)
                others = [self.root_of(name) for name, each in inspector.MESSAGES.items() if each == message["name"]]
                if message["parser"] is None:
                    self.assertEqual(message["root"], root.tag)
                    continue
                done = run("parse", message["name"], "-", text=example)
                self.assertEqual(0, done.returncode, done.stderr)
                self.assertEqual(set(), set(self.lacking(message["read"], [root, *others])))

    @staticmethod
    def root_of(example):
        """The body; a message's alternatives stand in several examples."""
        root = ElementTree.parse(os.path.join(inspector.EXAMPLES, example + ".xml")).getroot()
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


class Schemas(unittest.TestCase):
    """What the schemas find valid is what the tool prints, and what the library accepts."""
    # Examples with children that the library does not know, or with one that may come twice where its table is read again.
    STRANGERS = {"day_records", "floodlight_task", "osd_channel", "shared_users", "alarm_report"}

    def schema(self, message, kind):
        done = run("describe", message, "--schema", kind)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        return done.stdout

    @unittest.skipUnless(jsonschema, "no jsonschema")
    def test_payloads(self):
        refused = 0
        for name, message in inspector.MESSAGES.items():
            validator = jsonschema.Draft202012Validator(json.loads(self.schema(message, "json")))
            payload = json.loads(run("parse", message, name + ".xml", "--json",
                                     "--show-secrets").stdout)["payload"]
            with self.subTest(example=name):
                self.assertEqual([], list(validator.iter_errors(payload)))
                self.assertFalse(validator.is_valid({**payload, "other": 1}))
                for key, value in payload.items():
                    if isinstance(value, int):
                        self.assertFalse(validator.is_valid({**payload, key: [value]}))
                        refused += 1
        self.assertGreater(refused, 300)

    @unittest.skipUnless(shutil.which("xmllint"), "no xmllint")
    def test_bodies(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "schema.xsd")

            def valid(text):
                return subprocess.run(["xmllint", "--noout", "--schema", path, "-"], input=text.encode(),
                                      capture_output=True, check=False).returncode == 0
            for message in run("list", "--names").stdout.split():
                with open(path, "w", encoding="utf-8") as file:
                    file.write(self.schema(message, "xsd"))
                with self.subTest(message=message):
                    self.assertTrue(valid(run("new", message).stdout))
                    self.assertTrue(valid(run("new", message, "--minimal").stdout))
                    self.assertFalse(valid("<body><other/></body>"))
                    for name, each in inspector.MESSAGES.items():
                        if each == message:
                            self.assertEqual(name not in self.STRANGERS, valid(inspector.example(name + ".xml")), name)
            with open(path, "w", encoding="utf-8") as file:
                file.write(self.schema("md", "xsd"))
            self.assertFalse(valid("<MD><width>0</width></MD>"))
            self.assertFalse(valid("<MD><scope><columns>5</columns></scope></MD>"))


class Places(unittest.TestCase):
    def rows(self, message, text, *arguments):
        done = run("parse", message, "-", "--json", "--show-secrets", *arguments, text=text)
        document = json.loads(done.stdout)
        return document, {row["path"]: row for row in document["rows"]}

    def test_offset_bytes_type_and_origin(self):
        document, rows = self.rows("ethernet", ETHERNET)
        self.assertEqual({"path": "mac", "offset": 256, "bytes": 128, "type": "char[128]",
                          "from": [{"line": 4, "column": 8}]}, rows["mac"])
        self.assertEqual([], rows["gateway"]["from"])
        self.assertEqual([{"kind": "shortened", "line": 3, "column": 3, "element": "Ip/m", "key": "mask",
                           "text": "was read as mask"}], document["notes"])

    def test_lists_and_repeated_messages(self):
        _, rows = self.rows("floodlight-task", "<F><FloodlightScheduleList><item><action>1</action></item>\n"
                            "<item><daymap>3</daymap></item></FloodlightScheduleList></F>")
        path = "FloodlightScheduleList/item[1]/"
        self.assertEqual(80 + 8 + 40 + 36, rows[path + "daymap"]["offset"])
        self.assertEqual(2, rows[path + "daymap"]["from"][0]["line"])
        self.assertEqual([], rows[path + "action"]["from"])
        self.assertEqual([], rows["auto_bright"]["from"])

    def test_a_refused_number_is_shown_where_it_stood(self):
        _, rows = self.rows("md", "<MD>\n<width>0</width></MD>")
        self.assertEqual([{"line": 2, "column": 8}], rows["width"]["from"])

    def test_what_own_code_reads_came_from_its_element(self):
        _, rows = self.rows("osd-chn", "<O>\n<name>door</name></O>")
        self.assertEqual(2, rows["name"]["from"][0]["line"])

    def test_each_place_is_the_values_own_or_none(self):
        """Whatever the message: what stands there is what was read."""
        for name, message in inspector.MESSAGES.items():
            text = inspector.example(name + ".xml")
            document, rows = self.rows(message, text)
            lines = text.splitlines()
            with self.subTest(example=name):
                for row in rows.values():
                    for spot in row["from"]:
                        there = lines[spot["line"] - 1][spot["column"] - 1:]
                        # An element's own place, where it holds no text: never that of the list around it.
                        own = "<" + row["path"].split("/")[-1].split("[")[0]
                        self.assertTrue(there[0] != "<" or there.startswith(own), (row, spot))

    def test_the_rows_lie_within_the_payload(self):
        document, rows = self.rows("md", inspector.example(REQUEST))
        self.assertTrue(all(row["offset"] + row["bytes"] <= document["size"] and row["type"] for row in rows.values()))

    def test_as_text(self):
        done = run("parse", "ethernet", "-", "--memory", text=ETHERNET)
        self.assertIn(["128", "128", "char[128]", "3:6", "mask", '"255.0.0.0"'],
                      [line.split() for line in done.stdout.splitlines()])
        self.assertIn("standard input:3:3: note: Ip/m was read as mask", done.stderr)
        self.assertNotIn("MAC", done.stderr)


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    inspector.NETPARAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
