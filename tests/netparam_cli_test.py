#!/usr/bin/env python3
"""The inspector's command line: filter, check, formats of refusals, help, manual and completions.

usage: netparam_cli_test.py PATH_OF_NETPARAM [unittest arguments]
"""
import json
import os
import pty
import random
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import netparam_test
from netparam_test import EXAMPLES, MESSAGES, REQUEST, example, run


def filtered(text, *arguments):
    data = text if isinstance(text, bytes) else text.encode()
    return subprocess.run([netparam_test.NETPARAM, "filter", *arguments], input=data, capture_output=True,
                          timeout=60, check=True).stdout


class Filter(unittest.TestCase):
    def test_masks_elements_and_attributes(self):
        for text, masked in (
                ("12:00 <pass>a\xe9</pass> b", "12:00 <pass>***</pass> b"),
                ("<key>\r\n  abc\n</key>", "<key>\r\n*****\n</key>"),
                ("<refreshToken v='1'>x</refreshToken ><ip>1</ip><IP>2</IP>",
                 "<refreshToken v='1'>*</refreshToken ><ip>*</ip><IP>*</IP>"),
                ("<a token=\"s->t\" b='c' key = x pwd=''/>", "<a token=\"****\" b='c' key = * pwd=''/>"),
                ("<key/>a<encodeType>b</encodeType></key>", "<key/>a<encodeType>b</encodeType></key>"),
                ("<key><![CDATA[a</key>]]]>b</key>c", "<key>" + "*" * 21 + "</key>c"),
                ("<key><!--</key>-->b</keys></key>c", "<key>" + "*" * 21 + "</key>c"),
                # A secret within one of the same name.
                ("<key>a<key b='>'>c</key>d<key/>e</key>f", "<key>" + "*" * 27 + "</key>f"),
                ("<key>a<keys>b</key>c", "<key>" + "*" * 8 + "</key>c"),
                # A log that was cut, or that was none: rather too much is hidden than too little.
                ("<pwd>a\n<pwd>b</pwd> c</pwd> d", "<pwd>*\n" + "*" * 14 + "</pwd> d"), ("a < b <3 <x <key>s</key>", "a < b <3 <x <key>*</key>"),
                ("<a token='b\n<a token='c d'>e<pwd>f</pwd>", "<a token='*\n**************>e<pwd>*</pwd>"),
        ):
            with self.subTest(text=text):
                self.assertEqual(masked, filtered(text).decode())

    def test_further_names(self):
        self.assertEqual(b"<deviceName>***</deviceName><A DEVICENAME='*'/>",
                         filtered("<deviceName>abc</deviceName><A DEVICENAME='d'/>", "--also", "devicename"))

    def test_however_the_text_is_cut_into_pieces(self):
        text = b"\xff\0x<pwd a='b'>s3</pwx></pw</pwd>y <a key=\"s3\"/><k><![CDATA[s3]]></k>\n"
        whole = filtered(text)
        self.assertTrue(whole.startswith(b"\xff\0x<pwd"))
        self.assertNotIn(b"s3", whole)
        for step in (1, 2, 3, 5):
            process = subprocess.Popen([netparam_test.NETPARAM, "filter"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       bufsize=0)
            for at in range(0, len(text), step):
                process.stdin.write(text[at:at + step])
                if at == 0:  # a piece leaves before the next one comes
                    got = os.read(process.stdout.fileno(), 1)
            process.stdin.close()
            got += process.stdout.read()
            process.stdout.close()
            process.wait()
            self.assertEqual(whole, got)
        # The tool reads 65,536 bytes at a time.
        for before in range(65520, 65537):
            self.assertNotIn(b"s3cr3t", filtered(b"." * before + b"<password>s3cr3t</password>"))

    def test_masks_at_least_what_the_library_does(self):
        names = ("password", "key", "authToken", "accessKey", "mac", "ip", "gateway", "mask", "dns1", "user", "Width")
        generator = random.Random(7)

        def element(around=()):
            name = generator.choice([one for one in names if one not in around])
            count = generator.randrange(3) if len(around) < 3 else 0
            inside = "".join(element((*around, name)) for _ in range(count))
            return f"<{name}>s{inside}t</{name}>" + generator.choice(("", " x", "\n", "<", "</", "a > b"))
        for _ in range(30):
            text = "".join(element() for _ in range(20))
            kinds = ("password", "key", "authToken", "authSignature", "refreshToken", "accessToken", "clientSecret", "mac",
                     "ip", "accessKey", "secretKey", "ipAddress", "macAddress", "gateway", "mask", "dns1", "dns2")
            expected = text
            for kind in kinds:
                expected = re.sub(f"(<{kind}>)(.*?)(</{kind}>)",
                                  lambda m: m[1] + "*" * len(m[2]) + m[3], expected, flags=re.DOTALL)
            got = filtered(text).decode()
            self.assertEqual(len(text), len(got))
            for mine, library, byte in zip(got, expected, text):
                if library == "*" and byte not in "*\n":
                    self.assertEqual("*", mine)

    def test_a_tag_that_is_never_closed_hides_only_so_much(self):
        log = b"send <token> now\n" + b"a line of the log\n" * 2000
        done = subprocess.run([netparam_test.NETPARAM, "filter"], input=log, capture_output=True, check=True)
        hidden = (16 * 1024 - 5) // 18 + 1
        self.assertEqual(b"send <token>****\n" + (b"*" * 17 + b"\n") * hidden + b"a line of the log\n" * (2000 - hidden),
                         done.stdout)
        self.assertIn(b"1 open tag has no close tag", done.stderr)
        # A longer secret on one line stays hidden.
        self.assertNotIn(b"s", filtered("<key>" + "s" * 100000).replace(b"<key>", b""))

    def test_files(self):
        done = run("filter", "no-such-file", REQUEST)
        self.assertEqual((3, example(REQUEST)), (done.returncode, done.stdout))
        for name in ((), ("",), ("<a",), ("a b",)):
            self.assertEqual(2, run("filter", "--also", *name, text="").returncode)


class Folder(unittest.TestCase):
    """A folder with one file of each sort."""
    FILES = {
        "good.xml": "<MD><width>5</width></MD>",
        "inner/ignored.XML": "<MD>\n<enabel>1</enabel></MD>",
        "inner/md.2.xml": "<MD><width>6</width></MD>",
        "refused.xml": "<MD>\n\t<width>0</width></MD>",
        "malformed.xml": "<MD>\n<width></MD>",
        "stranger.xml": "<Stranger/>",
        "several.xml": "<DownloadByTime/>",
        "header.xml": "<Extension><channelId>3</channelId></Extension>",
        "other.txt": "no XML",
    }

    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        os.mkdir(os.path.join(self.folder, "inner"))
        for name, text in self.FILES.items():
            with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
                file.write(text)

    def check(self, *arguments):
        return run("check", *arguments, cwd=self.folder)

    def test_results(self):
        done = self.check(".", "--format", "json")
        self.assertEqual(4, done.returncode)
        report = json.loads(done.stdout)
        self.assertEqual({"./good.xml": ("md", "accepted"), "./inner/ignored.XML": ("md", "accepted"),
                          "./inner/md.2.xml": ("md", "accepted"), "./refused.xml": ("md", "refused"),
                          "./malformed.xml": (None, "malformed"), "./stranger.xml": (None, "unknown"),
                          "./several.xml": (None, "unknown"), "./header.xml": ("extension header", "accepted")},
                         {file["file"]: (file["message"], file["result"]) for file in report["files"]})
        self.assertEqual((8, 4, 1, 1, 2, 1), tuple(report["summary"][k] for k in (
            "files", "accepted", "refused", "malformed", "unknown", "with parts that are not read")))

    def test_exit_codes_by_severity(self):
        for code, arguments in ((0, ("good.xml", "header.xml", "inner")), (1, ("inner", "--strict")),
                                (5, ("good.xml", "stranger.xml")), (1, ("stranger.xml", "refused.xml")),
                                (4, ("refused.xml", "malformed.xml")), (3, ("malformed.xml", "no-such-file")),
                                (1, ("stranger.xml", "--message", "md")),
                                (0, ("stranger.xml", "--message", "md", "--any-root")), (2, ("good.xml", "--message", "nosuch")), (2, ())):
            with self.subTest(arguments=arguments):
                done = self.check(*arguments)
                self.assertEqual(code, done.returncode, done.stdout)
        self.assertIn("2 files: 1 accepted, 1 refused\n", self.check("good.xml", "refused.xml").stdout.replace(
            "; 1 written back", ""))

    def test_chosen_by_pattern(self):
        done = self.check("stranger.xml", "good.xml", "-v", "--message", "str*=md", "--message", "good.xml=user", "--any-root")
        self.assertRegex(done.stdout, r"(?m)^accepted +md +stranger.xml$")
        self.assertRegex(done.stdout, r"(?m)^refused +user +good.xml$")

    def test_known_by_root_and_keys(self):
        for name, text, message, result, said in (
                ("a.xml", "<body><Ntp/><md><width>0</width></md></body>", "ntp", "accepted", "md stands beside Ntp and"),
                ("b.xml", "<Other><usepir>1</usepir></Other>", None, "unknown", "but keys for its children: md\n"),
                ("c.xml", "<Other><usepi>1</usepi></Other>", None, "unknown", "has the root element \"Other\"\n"),
                ("d.xml", "<ReplaySeek><seekTime/></ReplaySeek>", None, "unknown", "several messages have the root"),
                ("md.xml", "<Ntp/>", "md", "refused", "md.xml:1:1: refused: Ntp is the root, md's is MD"),
        ):
            with self.subTest(text=text):
                with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
                    file.write(text)
                report = json.loads(self.check(name, "--format", "json").stdout)["files"][0]
                self.assertEqual((message, result), (report["message"], report["result"]))
                self.assertIn(said, self.check(name).stdout)

    def test_shortened_names_are_told(self):
        with open(os.path.join(self.folder, "md.xml"), "w", encoding="utf-8") as file:
            file.write("<MD>\n<wid>5</wid></MD>")
        self.assertIn("md.xml:2:1: note: MD/wid was read as width\n", self.check("md.xml").stdout)
        report = json.loads(self.check("md.xml", "--format", "json").stdout)
        self.assertEqual([("shortened", 2, 1, "MD/wid", "width")],
                         [tuple(note[k] for k in ("kind", "line", "column", "element", "key"))
                          for note in report["files"][0]["notes"]])

    def test_workflow_commands(self):
        done = self.check("inner/ignored.XML", "refused.xml", "malformed.xml", "stranger.xml", "--format",
                          "github-actions")
        commands = done.stdout.splitlines()
        self.assertEqual("::warning file=inner/ignored.XML,line=2,col=1,title=ignored::MD/enabel is ignored: no key "
                         "answers to it; did you mean enable?", commands[0])
        self.assertEqual("::error file=refused.xml,line=2,col=9,title=refused::MD/width: the number is out of range%0A"
                         "read \"0\"%0Aaccepted a whole number from 1 to 155", commands[1])
        self.assertRegex(commands[2], r"^::error file=malformed.xml,line=2,col=\d+,title=malformed::not well-formed")
        self.assertRegex(commands[3], r"^::error file=stranger.xml,title=unknown::stranger.xml: no message has the root element")

    def test_workflow_commands_are_escaped(self):
        name = "50%,a:b.xml"
        with open(os.path.join(self.folder, name), "w", encoding="utf-8") as file:
            file.write("<MD><width>a:100%,&#10;</width></MD>")
        done = run("parse", "md", name, "--format", "github-actions", cwd=self.folder)
        self.assertEqual(1, done.returncode)
        self.assertTrue(done.stdout.startswith("::error file=50%25%2Ca%3Ab.xml,line=1,col=12,title=refused::MD/width: "))
        self.assertIn("read \"a:100%25,", done.stdout)
        self.assertEqual(1, done.stdout.count("\n"))

    def test_progress_on_a_terminal_only(self):
        for index in range(1500):
            shutil.copy(os.path.join(EXAMPLES, "support_16_channels.xml"), os.path.join(self.folder, f"s{index}.xml"))
        master, slave = pty.openpty()
        process = subprocess.Popen([netparam_test.NETPARAM, "check", self.folder], stdout=subprocess.DEVNULL, stderr=slave)
        os.close(slave)
        said = b""
        try:
            while data := os.read(master, 65536):
                said += data
        except OSError:  # the terminal's end of file
            pass
        os.close(master)
        process.wait()
        self.assertRegex(said, rb"\d+ of 1508  ")
        self.assertTrue(said.endswith(b"\r"))
        self.assertEqual("", self.check(".").stderr)


class OtherMessages(unittest.TestCase):
    """Every example under every message: only those with the same root element may pass."""
    # A body, and the messages of others that it fits, with the reason.
    FITTING = {
        "stream_information.xml": ("encoding-list",),  # the older and the newer form of the same list of encoders
        "encoding_list.xml": ("stream-info",),
        "found_file.xml": ("file-info-list",),  # the device's and the client's side of a file search
        "file_search.xml": ("client-file-info-list",),
        "replay_seek_channels.xml": ("replay-seek",),  # the newer one has more channels, which the older ignores
        "replay_seek.xml": ("new-replay-seek",),
        "configuration_file.xml": ("config-file",),  # a file's announcement and its transfer
        "configuration_transfer.xml": ("config-file-info",),
    }

    def test_each_example_under_each_message(self):
        pairs = 0
        fitting = {file: set() for file in self.FITTING}
        for message in json.loads(run("list", "--json").stdout):
            if message["parser"] is None:
                continue
            for file in json.loads(run("check", "--message", message["name"], "--json", ".").stdout)["files"]:
                name = os.path.basename(file["file"])
                if name.endswith("_extension.xml"):
                    continue
                pairs += 1
                if MESSAGES[name[:-4]] == message["name"]:
                    self.assertEqual("accepted", file["result"], file)
                elif file["result"] == "accepted":
                    fitting.setdefault(name, set()).add(message["name"])
                else:
                    self.assertEqual("refused", file["result"], file)
        self.assertGreater(pairs, 110 * 100)
        self.assertEqual({name: set(messages) for name, messages in self.FITTING.items()}, fitting)

    def test_which_element_is_read(self):
        text = "<body><Ntp/><MD>\n<width>0</width></MD></body>"
        done = run("parse", "md", "-", text=text)
        self.assertIn("standard input:1:7: note: Ntp stands beside MD and is not read", done.stderr)
        self.assertIn("standard input:2:8: refused: the number is out of range", done.stderr)
        self.assertIn("note: Ntp is the root, md's is MD", run("parse", "md", "-", text="<Ntp/>").stderr)
        done = run("parse", "ntp.xml")
        self.assertEqual(run("parse", "ntp", "ntp.xml").stdout, done.stdout)
        self.assertEqual(5, run("parse", "-", text="<Other/>").returncode)

    def test_words_that_nobody_knows(self):
        for text, said in (("bogus,rec", '"bogus" is no word of the set and is ignored'), ("recc", '"recc" is read as rec'),
                           (" REC , none", "")):
            done = run("parse", "md", "-", text=f"<MD><handleException>\n<handleType>{text}</handleType></handleException></MD>")
            self.assertEqual(0, done.returncode)
            self.assertEqual("standard input:2:13: note: MD/handleException/handleType " + said if said else "",
                             done.stderr.strip().split("; did")[0])


class Formats(unittest.TestCase):
    def test_every_verb_that_refuses(self):
        text = "<MD><enabel/><width>0</width></MD>"
        self.assertEqual(run("parse", "md", "-", "--json", text=text).stdout,
                         run("parse", "md", "-", "--format", "json", text=text).stdout)
        self.assertEqual(2, run("parse", "md", "-", "--format", "yaml", text=text).returncode)
        done = run("parse", "md", "-", "--format", "github-actions", text=text)
        self.assertEqual(["::warning title=ignored", "::error title=refused"],
                         [line.rsplit("::", 1)[0] for line in done.stdout.splitlines()])
        for verb in (("check", "--message", "md"), ("exchange", "md")):
            done = run(*verb, "-", "--json", text=text)
            self.assertEqual(1, done.returncode)
            self.assertIn('"MD/width"', done.stdout)
        reply = json.loads(run("exchange", "md", REQUEST, "--json").stdout)
        self.assertEqual(("md", 17056, None), tuple(reply[k] for k in ("message", "size", "refused")))
        self.assertIn("<columns>96</columns>", reply["reply"])
        done = run("exchange", "md", "-", "--format", "github-actions", text=text)
        self.assertEqual(1, done.returncode)
        self.assertIn("::error title=refused::MD/width", done.stderr)

    def test_failures_become_commands(self):
        for code, arguments in ((2, ("nosuch", "-")), (3, ("md", "no-such-file")), (4, ("md", "-"))):
            done = run("parse", *arguments, "--format", "github-actions", text="<MD")
            self.assertEqual(code, done.returncode)
            self.assertTrue(done.stdout.startswith("::error "), done.stdout)


class RefusalKinds(unittest.TestCase):
    """Every kind of row says where, what and why."""
    # Example, text there, what to put in its place, reason, what is accepted.
    KINDS = (
        ("motion_request", "<width>60<", "<width>156<", "the number is out of range", "a whole number from 1 to 155"),
        ("motion_request", "<enable>1<", "<enable>2<", "the number is out of range", "0 or 1"),
        ("record_deletion", "<chnbits>9", "<chnbits>x", "this is no whole number", "a whole number of at most 20 char"),
        ("video_standard", ">PAL<", ">PALL<", "no such word; did you mean \"PAL\"?", "one of these words: PAL, NTSC"),
        ("file_search", "<recordType>", "<recordType>none,", "\"none\" cannot stand beside", "with any of: none, manual"),
        ("track_limit", "left_limit.jpg", "l" * 200, "the text is too long: 200 characters", "a text of at most"),
        ("cover_preview", "<frameNo>", "<frameNo>x", "this is no whole number", "of at most 12 characters, "),
        ("video_standard", "<norm>", "<nrm>1</nrm><norm>", "no such child is accepted here", "norm"),
        ("motion_request", "<columns>60</columns>", "", "the child \"columns\" is missing", "a whole number from 1 to"),
        ("motion_request", "<width>60</width>", "<!--wid-->", "this is no element", "a whole number from 1 to 155"),
        ("crossline_rules", "<x>", "<x/><x>", "the element has no text", "a number"),
        ("ethernet", "<mac>0", "<mac>", "the message's own code refuses this text", "exactly 17 characters"),
        ("ptz_serial", "<baudRate>2400<", "<baudRate>2401<", "own code refuses this text", "1200, 2400, 4800 or 9600"),
        ("osd_channel", "Gate (north)", "Gate|north", "own code refuses this text", "without $ & * /"),
        ("ai_detect_area", "<width>", "<width>9", "there is no grid of 960 x 34 cells", "in base64"),
        ("motion_request", "AAD/////", "AD/////", "this is no base64", "the grid's cells in base64"),
        ("motion_request", "<id>1</id>", "<id>2</id>", "own code refuses this number", "the period's place in the list"),
        ("record_schedule_combinations", "<alarmType>", "<timeBlockList/><alarmType>", "another child is expected here",
         "alarmType, then timeBlockList"),
        ("support_camera", "<chnID>", "<audioTalk>1</audioTalk><chnID>", "must come first", "of at most 12 char"),
        ("ptz_presets", "<preset>", "<cruise/><preset>", "no such child is accepted here", "preset"),
        ("users", "<userSetState>", "<validHours>0</validHours><userSetState>", "own code refuses this number", "-1, for ever"),
    )

    def test_each_kind(self):
        for name, old, new, reason, accepted in self.KINDS:
            text = example(name + ".xml")
            with self.subTest(example=name, new=new[:30]):
                self.assertIn(old, text)
                done = run("parse", MESSAGES[name], "-", text=text.replace(old, new, 1))
                self.assertEqual(1, done.returncode, done.stderr)
                said = re.search(r"standard input:(\d+):\d+: refused: (.*)\n +(\d+) \| .*\n +\| +\^\n(?:  .*\n)+",
                                 done.stderr)
                self.assertIsNotNone(said, done.stderr)
                self.assertEqual(said[1], said[3])
                self.assertIn(reason, said[2])
                self.assertIn("  element   ", said[0])
                if accepted:
                    self.assertRegex(said[0], "  accepted  .*" + re.escape(accepted))

    def test_too_few_items_and_strangers(self):
        said = run("parse", "md", "-", text="<MD><sensitivityInfoList/></MD>").stderr
        self.assertIn('refused: there are only 0 of "sensitivityInfo"', said)
        self.assertIn("  accepted  sensitivityInfo: exactly 4 elements with the children id, sens", said)
        said = run("parse", "md", "-", text="<MD><sensInfoNew><sensInfoList>3</sensInfoList></sensInfoNew></MD>").stderr
        self.assertIn("this is no element; a comment or text is refused here", said)
        # Nothing of a login is an account.
        said = run("parse", "user", "login.xml").stderr
        self.assertNotIn("each of its elements was read", said)
        self.assertIn("  accepted  User\n", said)

    def test_a_header_that_is_none(self):
        path = os.path.join(EXAMPLES, REQUEST)
        done = run("parse", "md", path, "--ext", path)
        self.assertEqual(1, done.returncode)
        self.assertRegex(done.stderr, r"motion_request.xml:\d+:1: refused: this is no extension header")
        self.assertIn("  accepted  a root element called Extension", done.stderr)

    def test_the_caret_stays_below(self):
        for before in ("\t", "\xe9\t", "\u540d\u524d", "e\u0301", "<a b='" + "\u540d" * 100 + "'/>", "<a/>" * 500):
            text = f"<?xml version='1.0' encoding='UTF-8'?>\n<MD><x>{before}</x><width>0</width>{'<b/>' * 100}</MD>"
            with self.subTest(before=before[:9]):
                lines = run("parse", "md", "-", text=text).stderr.split("refused:")[1].splitlines()
                wide = {"\u540d": 2, "\u524d": 2, "\u0301": 0}
                columns = sum(wide.get(c, 1) for c in lines[1].split("0</width>")[0])
                self.assertEqual(columns, lines[2].index("^"))
                self.assertLessEqual(sum(wide.get(c, 1) for c in lines[1]), 80)


class CommandLine(unittest.TestCase):
    def verbs(self):
        return re.findall(r"^  ([a-z]+) ", run("--help").stdout.split("Verbs:")[1].split("Exit codes")[0], re.MULTILINE)

    def test_help_of_each_verb(self):
        self.assertGreater(len(self.verbs()), 4)
        for verb in self.verbs():
            with self.subTest(verb=verb):
                done = run(verb, "--help")
                self.assertEqual(0, done.returncode)
                self.assertIn("\"netparam --help\" explains the exit codes.", done.stdout)
                self.assertRegex(done.stdout, rf"\nExamples:\n(  .*\n)*  (.* )?netparam {verb}\b")
                self.assertLessEqual(max(map(len, done.stdout.splitlines())), 80)

    def test_version(self):
        with open(os.path.join(netparam_test.HEADERS, "net_version.h"), encoding="utf-8") as header:
            version = re.search(r'VERSION_STRING "([\d.]+)"', header.read())[1]
        self.assertEqual(f"netparam {version}\n", run("--version").stdout)

    def test_a_reader_that_has_seen_enough(self):
        done = subprocess.run(["bash", "-c", 'trap "" PIPE; "$0" list | head -n 1', netparam_test.NETPARAM],
                              capture_output=True, check=False)
        self.assertEqual((b"", 1), (done.stderr, done.stdout.count(b"\n")))

    def test_what_cannot_be_written(self):
        for arguments in (("--help",), ("--version",), ("list", "--help"), ("list",), ("manual",), ("check", EXAMPLES)):
            with open("/dev/full", "w", encoding="utf-8") as full:
                done = subprocess.run([netparam_test.NETPARAM, *arguments], stdout=full, stderr=subprocess.PIPE,
                                      check=False)
            self.assertEqual((3, b"netparam: the output cannot be written\n"), (done.returncode, done.stderr))

    def test_the_manual_tells_everything(self):
        page = run("manual").stdout.replace("\\-", "-")
        for verb in self.verbs():
            self.assertIn(f".SS netparam {verb}\n", page)
            for option in re.findall(r"--[a-z-]+", run(verb, "--help").stdout.split("Examples:")[0]):
                self.assertIn(option, page)
        for code in (0, 1, 2, 3, 4, 5, 70):
            self.assertIn(f"\n\\fB{code}\\fR\n", page)


    def test_what_was_meant(self):
        for arguments, said in (
                (("parse", "md", REQUEST, "--jsn"), "did you mean --json?"),
                (("parse", "mmd", REQUEST), "did you mean md?"), (("list", "motoin"), "matches \"motoin\""),
                (("list", "nets_param_md_inti"), "did you mean nets_param_md_init?"),
                (("describe",), "which message?"), (("describe", "md", "--all"), "not both"),
                (("parse", "md", "-"), "standard input: the text is empty; nothing was parsed"),
                (("parse", "-"), "the text is empty")):
            with self.subTest(arguments=arguments):
                self.assertIn(said, run(*arguments, text="").stderr)
        self.assertIn("behind the document type declaration", run(
            "parse", "md", "-", text="<!DOCTYPE a [<!ELEMENT a ANY>]><a/>").stderr)
        self.assertIn("netparam: there is not enough memory\n", subprocess.run(
            ["bash", "-c", 'ulimit -v 90000; "$0" parse md -', netparam_test.NETPARAM], check=False, capture_output=True,
            input="<MD>" + "<b/>" * 900000 + "</MD>", text=True).stderr)

    def test_the_catalogue_is_searched_by_structures_and_keys(self):
        for text, message in (("tag_net_pic_motion_cfg_v20_t", "md"), ("fBacklash", "backlash"), ("pan and tilt stand", "ptz-position"),
                              ("HddInitList", "hdd-init")):
            with self.subTest(text=text):
                self.assertIn(message, run("list", text, "--names").stdout.split())

    def test_limits_stand_in_help_and_manual(self):
        for page in (run("--help").stdout, run("manual").stdout):
            self.assertIn("4 MiB, 64 levels", re.sub(r"\s+", " ", page))


class Completions(unittest.TestCase):
    def complete(self, *words):
        script = (run("completion", "bash").stdout +
                  'COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _netparam "$1"; printf "%s\\n" "${COMPREPLY[@]}"')
        done = subprocess.run(["bash", "-c", script, "bash", netparam_test.NETPARAM, *words], capture_output=True,
                              cwd=EXAMPLES, check=True, text=True)
        self.assertEqual("", done.stderr)
        return done.stdout.split()

    def test_bash(self):
        for words, some in ((("pa",), ["page", "parse"]), (("--v",), ["--version"]), (("parse", "cover"), ["cover-preview"]),
                            (("parse", "--form"), ["--format"]), (("parse", "--format", "j"), ["json"]),
                            (("parse", "--format", "=", "j"), ["json"]), (("parse", "md", "motion_r"), [REQUEST]),
                            (("parse", "--ext", "x", "md", "motion_r"), [REQUEST]), (("check", "a", "ntp.x"), ["ntp.xml"]),
                            (("check", "--message", "cover"), ["cover-preview"]), (("parse", "--channels", ""), []),
                            (("parse", "--type", "HO"), ["HOMEHUB"]), (("parse", "md", "--ext", "motion_e"), ["motion_extension.xml"]), (("nosuch", ""), [])):
            with self.subTest(words=words):
                self.assertEqual(some, self.complete(*words))
        self.assertEqual(run("list", "--names").stdout.split(), self.complete("exchange", ""))

    @unittest.skipUnless(shutil.which("zsh"), "no zsh")
    def test_zsh_understands_its_own(self):
        done = subprocess.run(["zsh", "-n"], input=run("completion", "zsh").stdout.encode(), capture_output=True,
                              check=False)
        self.assertEqual((0, b""), (done.returncode, done.stderr))


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    netparam_test.NETPARAM = os.path.abspath(sys.argv.pop(1))
    unittest.main()
