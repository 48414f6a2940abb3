#!/usr/bin/env python3
"""The inspector as its user sees it: output, exit codes, hidden secrets.

usage: netparam_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import pty
import re
import subprocess
import sys
import tempfile
import textwrap
import unittest

EXAMPLES = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, "examples")
HEADERS = os.path.join(EXAMPLES, os.pardir, "netpublic", "include")
REQUEST = "motion_request.xml"
NETPARAM = ""


def example(name):
    with open(os.path.join(EXAMPLES, name), encoding="utf-8") as file:
        return file.read()


def run(*arguments, text=None, cwd=EXAMPLES, **variables):
    """The finished process; `text` is its standard input."""
    data = text.encode() if isinstance(text, str) else text
    environment = {**os.environ, **variables}
    done = subprocess.run([NETPARAM, *arguments], input=data, capture_output=True, cwd=cwd, env=environment,
                          timeout=60, check=False)
    done.stdout = done.stdout.decode("utf-8")
    done.stderr = done.stderr.decode("utf-8")
    return done


def fields(output):
    """The "path  value" lines of a payload."""
    return dict(re.findall(r"^  (\S+) {2,}(\S.*)$", output, re.MULTILINE))


class Catalogue(unittest.TestCase):
    def test_shows_id_size_directions_and_initialiser(self):
        done = run("list", "nets_param_md_init")
        self.assertEqual(0, done.returncode)
        self.assertEqual(["md", "1903", "17056", "parse", "write", "motion", "detection", "settings", "nets_param_md_init"],
                         done.stdout.splitlines()[1].split())

    def test_filters_by_id_and_text(self):
        self.assertEqual(2, len(run("list", "1903").stdout.splitlines()))
        self.assertEqual(2, len(run("list", "NETS_PARAM_LED").stdout.splitlines()))
        self.assertEqual("md", run("list", "motion").stdout.splitlines()[1].split()[0])
        done = run("list", "nosuchthing")
        self.assertEqual((2, ""), (done.returncode, done.stdout))

    def test_lists_initialisers_without_parser_and_writer(self):
        # Shared ids, an initialiser that does nothing, one that stamps the envelope only.
        rows = json.loads(run("list", "--json").stdout)
        by_name = {row["initialiser"]: row for row in rows}
        self.assertEqual((201, 36, None), tuple(by_name["net_param_isp_base_init"][k] for k in ("id", "size", "parser")))
        self.assertEqual(201, by_name["nets_param_isp_base_init"]["id"])
        self.assertIsNone(by_name["net_param_large_battery_init"]["id"])
        self.assertEqual((1401, 0), tuple(by_name["nets_param_file_info_init"][k] for k in ("id", "size")))


class Names(unittest.TestCase):
    def test_any_name_of_a_message_will_do(self):
        for name in ("md", "MD", "nets_param_md_init", "net_md_x2s", "net_md_s2x", "net_md", "net-md"):
            with self.subTest(name=name):
                self.assertEqual(0, run("parse", name, REQUEST).returncode)

    def test_unknown_names_get_suggestions(self):
        done = run("parse", "alram-area", REQUEST)
        self.assertEqual((2, ""), (done.returncode, done.stdout))
        self.assertIn("did you mean alarm-area", done.stderr)
        self.assertIn("did you mean parse?", run("prase", "md", REQUEST).stderr)

    def test_a_message_that_cannot_be_read_is_a_usage_error(self):
        done = run("parse", "nets_param_led_state_init", REQUEST)
        self.assertEqual(2, done.returncode)
        self.assertIn("neither parser nor writer", done.stderr)

    def test_usage(self):
        for arguments in ((), ("parse",), ("parse", "md"), ("parse", "md", REQUEST, "--channels", "-1"),
                          ("parse", "md", "-", "--ext", "-"), ("exchange", "alarm-area")):
            with self.subTest(arguments=arguments):
                self.assertEqual(2, run(*arguments, text="").returncode)
        self.assertEqual(0, run("--help").returncode)


class Parsing(unittest.TestCase):
    def test_shows_the_payload_field_by_field(self):
        done = run("parse", "md", REQUEST)
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        shown = fields(done.stdout)
        self.assertEqual("60", shown["width"])
        self.assertEqual("20", shown["sensitivityInfoList/sensitivityInfo[1]/sensitivity"])
        self.assertEqual("12", shown["sensInfoNew/sensitivityDefault"])
        self.assertEqual("rec,ftp,push (0x244)", " ".join(shown["handleException/handleType"].split()))
        self.assertEqual("60 x 34 cells, 432 set", shown["scope"])

    def test_draws_grids_and_weeks(self):
        lines = [line.strip() for line in run("parse", "md", REQUEST).stdout.splitlines()]
        self.assertIn("." * 10 + "#" * 10 + "." * 9 + "#" * 17 + "." * 14, lines)
        self.assertIn("Sunday     ############..##########", lines)
        self.assertIn("Monday     ........##########......", lines)

    def test_grids_stored_by_columns_are_drawn_alike(self):
        # 10 x 2 cells: the first row is set, and the first cell of the second.
        done = run("parse", "alarm-area", "-",
                   text="<A><chn>1</chn><faceArea><width>10</width><height>2</height><area>/+AA</area></faceArea></A>")
        self.assertEqual(0, done.returncode, done.stderr)
        drawn = [line.strip() for line in done.stdout.splitlines()]
        self.assertIn("##########", drawn)
        self.assertIn("#.........", drawn)

    def test_weekly_schedules_name_their_alarm_types(self):
        shown = run("parse", "record-schedule", "record_schedule_combinations.xml").stdout
        self.assertIn("Monday     aaaaaabbccccccccccbbbb..", shown)
        self.assertIn("c = Normal", shown)

    def test_words_show_their_spelling(self):
        self.assertEqual("PAL (0)", fields(run("parse", "norm", "video_standard.xml").stdout)["norm"])

    def test_the_body_is_the_root_or_its_first_element(self):
        for text in ("<MD><width>7</width></MD>", "<BODY><!-- x --><MD><width>7</width></MD></BODY>"):
            with self.subTest(text=text):
                self.assertEqual("7", fields(run("parse", "md", "-", text=text).stdout)["width"])

    def test_the_extension_reaches_the_initialiser(self):
        with tempfile.NamedTemporaryFile("w", suffix=".xml") as extension:
            extension.write("<Extension><channelId>5</channelId></Extension>")
            extension.flush()
            done = run("parse", "md", "-", "--ext", extension.name, text="<MD/>")
            self.assertEqual("5", fields(done.stdout)["channelId"])

    def test_json_bears_the_names_of_the_rows(self):
        shown = json.loads(run("parse", "md", REQUEST, "--json").stdout)
        self.assertEqual((1903, 2, None), (shown["id"], shown["inited"], shown["refused"]))
        payload = shown["payload"]
        self.assertEqual(34, len(payload["scope"]))
        self.assertEqual("0" * 10 + "1" * 36 + "0" * 14, payload["scope"][8])
        self.assertEqual(9, payload["sensitivityInfoList"]["sensitivityInfo"][3]["sensitivity"])
        self.assertEqual("rec,ftp,push", payload["handleException"]["handleType"])

    def test_any_bytes_make_valid_json(self):
        done = run("parse", "image-file-info", "-", "--json",
                   text=b"<imageFileInfo><imageName>\xff\x01&#x1b;</imageName></imageFileInfo>")
        self.assertEqual(0, done.returncode)
        self.assertTrue(json.loads(done.stdout)["payload"]["imageName"].endswith("\x01\x1b"))


class Drawings(unittest.TestCase):
    def drawn(self, message, text, name):
        """The lines below the value."""
        done = run("parse", message, "-", text=text)
        self.assertEqual(0, done.returncode, done.stderr)
        after = re.search(rf"^  \S*{re.escape(name)}\b.*\n((?: {{6}}.*\n)+)", done.stdout, re.MULTILINE)
        self.assertIsNotNone(after, done.stdout)
        return [line[6:].rstrip("\n") for line in after[1].splitlines()]

    @staticmethod
    def rule(message, *points):
        listed = "".join(f"<point><x>{x}</x><y>{y}</y></point>" for x, y in points)
        return (f"<{message}><op>modify</op><{message[0].lower()}{message[1:]}Item><index>0</index>"
                f"<pointList>{listed}</pointList></{message[0].lower()}{message[1:]}Item></{message}>")

    def test_areas_are_closed_and_lines_are_not(self):
        corners = ((0, 0), (1, 0), (1, 1), (0, 1))
        area = self.drawn("intrusion-detect", self.rule("IntrusionDetect", *corners), "pointList")
        self.assertEqual(["+" + "-" * 48 + "+", "|1" + "*" * 46 + "2|", "|*" + " " * 46 + "*|"], area[:3])
        self.assertEqual("|4" + "*" * 46 + "3|", area[16])
        line = self.drawn("crossline-detect", self.rule("CrosslineDetect", *corners), "pointList")
        self.assertEqual("|" + " " * 47 + "*|", line[2])

    def test_points_outside_the_picture_are_not_drawn(self):
        drawn = self.drawn("intrusion-detect", self.rule("IntrusionDetect", (0, 0), (2, 0), (1, 1)), "pointList")
        self.assertEqual(1, len(drawn))
        self.assertIn("outside the picture", drawn[0])

    def test_masks_are_scaled_to_their_extent(self):
        masks = "".join(f"<Shelter><id>{i}</id><topLeftX>{x}</topLeftX><topLeftY>{y}</topLeftY><width>{w}</width>"
                        f"<height>{h}</height></Shelter>" for i, x, y, w, h in ((5, 0, 0, 50, 100), (2, 150, 150, 50, 50)))
        drawn = self.drawn("pic-shelter", f"<Shelter><shelterList>{masks}</shelterList></Shelter>", "Shelter")
        self.assertEqual(["|" + "5" * 12 + " " * 36 + "|"] * 8, drawn[1:9])
        self.assertEqual("|" + " " * 48 + "|", drawn[9])
        self.assertEqual("|" + " " * 36 + "2" * 12 + "|", drawn[16])
        self.assertEqual("scaled to the largest extent, 200 x 200", drawn[18])

    def test_the_days_of_a_month(self):
        lines = [line.strip() for line in run("parse", "day-record", "day_records.xml").stdout.splitlines()]
        self.assertIn("nA..a............A............n", lines)
        self.assertIn(". = none, n = normal, a = alarm, A = all", lines)

    def test_the_hours_of_a_week(self):
        for message, file, monday in (("ptz-cruise", "ptz_cruises.xml", "Monday     ........##########......"),
                                      ("ai-track-task", "track_schedule.xml", "Monday     .......###########......")):
            with self.subTest(message=message):
                self.assertIn(monday, run("parse", message, file).stdout)

    def test_sets_and_masks_show_their_words(self):
        shown = fields(run("parse", "alarm-report", "alarm_report.xml").stdout)
        smart = "AlarmEvent[0]/smartAiTypeList/"
        self.assertEqual("crossline_0,crossline_1,crossline_2,loitering_0", shown[smart + "events"])
        self.assertEqual("people,vehicle (0x3)", shown[smart + "crossline[1]"])


# The message of each example, as the list beside them says it; write-only messages have payloads in JSON.
def examples_of(suffix):
    with open(os.path.join(EXAMPLES, "messages.txt"), encoding="utf-8") as file:
        pairs = [line.split() for line in file]
    return {name[:-len(suffix)]: message for name, message in pairs if name.endswith(suffix)}


MESSAGES = examples_of(".xml")

# Components of messages, not messages: they have no envelope or serve several.
COMPONENTS = {
    "get_sensitivity_new_info_x2s", "net_exten_x2s", "net_float_value_s2x", "net_int_value_s2x",
    "net_smart_ai_direction_s2x", "net_smart_ai_op_s2x", "net_smart_ai_points_s2x",
    "net_text_x2s", "net_text_s2x",  # of any message
}


class Completeness(unittest.TestCase):
    def test_every_example_goes_through_its_message(self):
        examples = sorted(name[:-4] for name in os.listdir(EXAMPLES)
                          if name.endswith(".xml") and not name.endswith("_extension.xml"))
        self.assertEqual(examples, sorted(MESSAGES))
        writers = {row["name"]: row["writer"] for row in json.loads(run("list", "--json").stdout)}
        for name, message in MESSAGES.items():
            with self.subTest(example=name):
                extension = name + "_extension.xml"
                if not os.path.exists(os.path.join(EXAMPLES, extension)):
                    extension = "motion_extension.xml"
                verb = "exchange" if writers[message] else "parse"
                done = run(verb, message, name + ".xml", "--ext", extension)
                self.assertEqual(0, done.returncode, done.stderr)
                payload = done.stdout.split("\nReply\n")[0]
                self.assertNotRegex(payload, r"\d bytes, (\[|all zero)")  # a record whose members have no names
                self.assertNotIn("no rows describe", payload)

    def test_every_parser_and_writer_is_listed(self):
        declared = set()
        for file in os.listdir(HEADERS):
            with open(os.path.join(HEADERS, file), encoding="utf-8") as header:
                declared.update(re.findall(r"^NETPUBLIC_API int (\w+_(?:x2s|s2x))\(", header.read(), re.MULTILINE))
        listed = {row[kind] for row in json.loads(run("list", "--json").stdout) for kind in ("parser", "writer")}
        self.assertGreater(len(declared), 100)
        self.assertEqual(COMPONENTS, declared - listed)


class Refusals(unittest.TestCase):
    def refused(self, old, new, message="md"):
        text = example(REQUEST)
        self.assertIn(old, text)
        done = run("parse", message, "-", text=text.replace(old, new, 1))
        self.assertEqual(1, done.returncode, done.stderr)
        return done.stderr

    def test_a_number_out_of_range(self):
        said = self.refused("<endHour>18</endHour>", "<endH>25</endH>")
        line = example(REQUEST)[:example(REQUEST).index("<endHour>18</endHour>")].count("\n") + 1
        source = example(REQUEST).splitlines()[line - 1]
        column = source.index("<endHour>18") + len("<endH>") + 1
        self.assertIn(f"standard input:{line}:{column}: refused: the number is out of range", said)
        self.assertIn("element   MD/sensitivityInfoList/sensitivityInfo[2]/endH  (key endHour)", said)
        self.assertIn('read      "25"', said)
        self.assertIn("accepted  a whole number from 0 to 23", said)

    def test_the_caret_points_at_the_text(self):
        said = run("parse", "md", "-", text="<MD>\n\t<width>0</width>\n</MD>").stderr.splitlines()
        self.assertEqual("    2 |  <width>0</width>", said[1])
        self.assertEqual(said[1].index(">0<") + 1, said[2].index("^"))

    def test_a_misspelt_word_gets_a_suggestion(self):
        said = self.refused("Monday", "Mnoday")
        self.assertIn('no such word; did you mean "Monday"?', said)
        self.assertIn("Sunday, Monday, Tuesday", said)

    def test_no_number_no_text_no_element(self):
        self.assertIn("this is no whole number", self.refused("<width>60<", "<width>0x3c<"))
        self.assertIn("accepted  0 or 1", self.refused("<enable>1<", "<enable>true<"))
        self.assertIn("the element has no text", self.refused("<width>60<", "<width><"))
        self.assertIn("the number is too long", self.refused("<width>60<", "<width>1234567890123<"))
        self.assertIn("this is no element", self.refused("<width>60</width>", "<!--wid-->"))

    def test_a_missing_child(self):
        said = self.refused("<columns>60</columns>", "")
        self.assertIn('the child "columns" is missing', said)
        self.assertIn("element   MD/scope\n", said.replace("  (key columns)", ""))
        self.assertIn("columns: a whole number from 1 to 155", said)

    def test_what_only_the_message_knows_is_in_the_log(self):
        said = self.refused("<columns>60<", "<columns>61<")
        self.assertIn("these are 2040 cells, but a grid of 61 x 34 has 2080", said)
        self.assertRegex(said, 'element   MD/scope/valueTable\n  read      "A+"\\.\\.\\. .*\n  accepted  .*base64')
        self.assertIn("The library's log\n  Func(get_scope_from_xmlnode)", said)

    def test_what_was_read_before_is_shown(self):
        done = run("parse", "md", "-", text="<MD><width>70</width><height>101</height></MD>")
        self.assertEqual(("70", "101"), tuple(fields(done.stdout)[k] for k in ("width", "height")))
        self.assertIn("as far as it was read", done.stdout)

    def test_ignored_children_are_noted(self):
        done = run("parse", "md", "-", text="<MD>\n<enabel>1</enabel><!-- c --></MD>")
        self.assertEqual(0, done.returncode)
        self.assertIn("standard input:2:1: note: MD/enabel is ignored: no key answers to it; did you mean enable?",
                      done.stderr)
        self.assertEqual(1, done.stderr.count("note:"))

    def test_an_extension_that_the_device_does_not_have(self):
        with tempfile.NamedTemporaryFile("w", suffix=".xml") as extension:
            extension.write("<Extension>\n<inputId>3</inputId></Extension>")
            extension.flush()
            arguments = ("parse", "md", REQUEST, "--ext", extension.name, "--alarm-inputs")
            self.assertEqual(0, run(*arguments, "4").returncode)
            done = run(*arguments, "3")
            self.assertEqual(1, done.returncode)
            self.assertIn(":2:10: refused:", done.stderr)

    def test_a_refusal_as_json(self):
        done = run("parse", "md", "-", "--json", text="<MD><width>0</width></MD>")
        self.assertEqual(1, done.returncode)
        refused = json.loads(done.stdout)["refused"]
        self.assertEqual((1, 12, "MD/width", "width", "0"),
                         tuple(refused[k] for k in ("line", "column", "element", "key", "read")))


class Files(unittest.TestCase):
    def test_unreadable(self):
        for arguments in (("parse", "md", "no-such-file"), ("parse", "md", EXAMPLES),
                          ("exchange", "md", REQUEST, "--ext", "no-such-file")):
            done = run(*arguments)
            self.assertEqual((3, ""), (done.returncode, done.stdout))

    def test_unwritable(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            done = subprocess.run([NETPARAM, "list"], stdout=full, stderr=subprocess.PIPE, check=False)
        self.assertEqual(3, done.returncode)

    def test_not_well_formed(self):
        done = run("parse", "md", "-", text="<MD>\n <width>6</widht>\n</MD>")
        self.assertEqual(4, done.returncode)
        self.assertRegex(done.stderr, r"^netparam: standard input:2:\d+: not well-formed XML: .+\n +2 \|  <width>")

    def test_not_fit_to_be_parsed(self):
        for text in ("", " ", "<!DOCTYPE a [<!ELEMENT a ANY>]>", "<body/>", "<a>" * 100, "<a>\xe2".encode("latin-1"),
                     b"<MD>\0</MD>", "<a " + " ".join(f"x{i}='1'" for i in range(100)) + "/>",
                     "<MD>" + " " * (4 << 20) + "</MD>"):
            with self.subTest(text=text[:20]):
                done = run("parse", "md", "-", text=text)
                self.assertEqual((4, ""), (done.returncode, done.stdout))

    def test_large_text_is_fine(self):
        done = run("parse", "md", "-", text="<MD>" + "<b/>" * 100000 + "<width>9</width></MD>")
        self.assertEqual(0, done.returncode)
        self.assertEqual("9", fields(done.stdout)["width"])
        self.assertIn("100000 children are ignored in all", done.stderr)


class Exchange(unittest.TestCase):
    def test_shows_request_payload_and_reply(self):
        done = run("exchange", "md", REQUEST, "--ext", "motion_extension.xml")
        self.assertEqual((0, ""), (done.returncode, done.stderr))
        places = [done.stdout.index(heading) for heading in
                  ("Request, extension header\n", "Request, body\n", "Payload, md:", "Reply\n")]
        self.assertEqual(sorted(places), places)
        reply = done.stdout[places[-1]:]
        self.assertIn("<columns>96</columns>", reply)  # small grids are always written in the classic size
        self.assertNotIn("handleException", reply)

    def test_without_a_request(self):
        done = run("exchange", "md")
        # A payload of zeros is a grid of no size, written as the classic one.
        self.assertEqual(0, done.returncode, done.stderr)
        self.assertIn("<enable>0</enable>", done.stdout)

    def test_a_payload_that_cannot_be_written(self):
        done = run("exchange", "ai-area-detect")
        self.assertEqual(1, done.returncode)
        self.assertNotIn("Reply", done.stdout)
        self.assertIn("net_ai_area_detect_s2x: refused: the payload cannot be written", done.stderr)
        self.assertIn("ai type is error", done.stderr)

    def test_a_refused_request_has_no_reply(self):
        done = run("exchange", "md", "-", text="<MD><width>0</width></MD>")
        self.assertEqual(1, done.returncode)
        self.assertNotIn("Reply", done.stdout)
        self.assertIn("accepted  a whole number from 1 to 155", done.stderr)


class Secrets(unittest.TestCase):
    TEXT = "<Extension><pass>hunter2</pass><token>t0ps3cret</token><patrolId>9</patrolId></Extension>"

    def everything(self, *arguments, **more):
        done = run(*arguments, **more)
        return done.stdout + done.stderr

    def test_hidden_in_every_output(self):
        with tempfile.NamedTemporaryFile("w", suffix=".xml") as extension:
            extension.write(self.TEXT)
            extension.flush()
            for verb in (("parse",), ("exchange",), ("parse", "--json")):
                with self.subTest(verb=verb):
                    said = self.everything(*verb, "md", REQUEST, "--ext", extension.name)
                    self.assertNotIn("hunter2", said)
                    self.assertNotIn("t0ps3cret", said)
            said = self.everything("parse", "md", REQUEST, "--ext", extension.name, "--show-secrets")
            self.assertIn("t0ps3cret", said)

    def test_hidden_in_payloads_and_malformed_text(self):
        secret = "front-door-key"
        text = f"<RecordKey><key>{secret}</key></RecordKey>"
        for arguments in (("record-decrypt-key", "-"), ("record-decrypt-key", "-", "--json")):
            self.assertNotIn(secret, self.everything("parse", *arguments, text=text))
        self.assertIn(secret, self.everything("parse", "record-decrypt-key", "-", "--show-secrets", text=text))
        self.assertNotIn(secret, self.everything("parse", "md", "-", text=f"<MD><key>{secret}</kex>"))

    def test_hidden_when_refused(self):
        secret = "s" * 600
        said = self.everything("parse", "record-decrypt-key", "-", text=f"<RecordKey><k>{secret}</k></RecordKey>")
        self.assertIn("refused:", said)
        self.assertNotIn("sss", said)


class Terminal(unittest.TestCase):
    def on_terminal(self, *arguments, **variables):
        environment = {**os.environ, "TERM": "xterm", **variables}
        master, slave = pty.openpty()
        done = subprocess.Popen([NETPARAM, *arguments], stdin=subprocess.DEVNULL, stdout=slave, stderr=slave,
                                cwd=EXAMPLES, env=environment)
        os.close(slave)
        said = b""
        try:
            while data := os.read(master, 65536):
                said += data
        except OSError:  # the terminal's end of file
            pass
        os.close(master)
        done.wait()
        return said

    def test_colour_on_a_terminal_only(self):
        environment = dict(os.environ)
        environment.pop("NO_COLOR", None)
        os.environ.pop("NO_COLOR", None)
        try:
            self.assertIn(b"\033[1m", self.on_terminal("parse", "md", REQUEST))
            self.assertNotIn(b"\033", self.on_terminal("parse", "md", REQUEST, NO_COLOR="1"))
            self.assertNotIn("\033", run("parse", "md", REQUEST).stdout)
        finally:
            os.environ.update(environment)

    def test_texts_cannot_steer_the_terminal(self):
        text = "<MD><width>\x1b[2J&#x1b;]0;x&#7;</width><&#x1b;/></MD>".replace("<&#x1b;/>", "")
        done = run("parse", "md", "-", text=text)
        self.assertEqual(1, done.returncode)
        self.assertNotIn("\033", done.stdout + done.stderr)
        self.assertIn("\\x1b", done.stderr)


class Readme(unittest.TestCase):
    """The screens that the README shows are what one sees."""

    def setUp(self):
        with open(os.path.join(EXAMPLES, os.pardir, "README.md"), encoding="utf-8") as file:
            self.screens = {command: textwrap.dedent(screen) for command, screen in
                            re.findall(r"^    \$ netparam (.*)\n((?:    .*\n)+)", file.read(), re.MULTILINE)}

    def test_the_refused_request(self):
        request = example(REQUEST).replace("<sensitivity>9<", "<sensitivity>90<", 1)
        with tempfile.TemporaryDirectory() as folder:
            with open(os.path.join(folder, "request.xml"), "w", encoding="utf-8") as file:
                file.write(request)
            done = run("parse", "md", "request.xml", cwd=folder)
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
