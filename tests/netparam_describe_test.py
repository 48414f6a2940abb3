#!/usr/bin/env python3
"""What the inspector tells of a message's table, and of where a value lies and came from.

usage: netparam_describe_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import re
import sys
import unittest

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
        for message, text in (("dhcp", "only the first child is looked at"), ("osd-chn", "read by code of its own"),
                              ("floodlight-status-report", "an item too many overwrites the last one"),
                              ("link", 'a code without a word is written as "LAN"'),
                              ("stream-info", "host prepares the envelope")):
            with self.subTest(message=message):
                self.assertIn(text, re.sub(r"\s+", " ", run("describe", message).stdout))

    def test_keys_that_no_child_reaches_say_so(self):
        system = [key for key in described("ability")["read"]["keys"] if key["key"] == "system"][0]
        notes = [key["notes"] for key in system["record"]["keys"] if key["key"] == "bootPwd"]
        self.assertEqual([[], ["an earlier row of this name takes the child"]], notes)

    def test_lines_keep_within_the_terminal_where_the_words_allow_it(self):
        for line in run("describe", "md").stdout.splitlines():
            self.assertLessEqual(len(line), 80)

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
        self.assertEqual([{"line": 3, "column": 3, "element": "Ip/m", "key": "mask"}], document["shortened"])

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
