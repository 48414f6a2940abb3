#!/usr/bin/env python3
"""The reference page in a real browser: what it shows, finds, checks and writes.

usage: page_test.py PATH_OF_NETPARAM PATH_OF_AXE [unittest arguments]
"""
import base64
import json
import os
import re
import shutil
import sys
import tempfile
import time
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.keys import Keys

sys.dont_write_bytecode = True
import netparam_test as inspector  # pylint: disable=wrong-import-position
from netparam_test import example, run  # pylint: disable=wrong-import-position

AXE = ""


def browser():
    options = webdriver.ChromeOptions()
    for argument in ("--headless=new", "--window-size=1440,1000", "--disable-gpu"):
        options.add_argument(argument)
    if os.getuid() == 0:
        options.add_argument("--no-sandbox")  # the superuser has none
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


def parsed(message, text):
    """The payload that the library makes of the text; none when it is refused."""
    done = run("parse", message, "-", "--json", "--show-secrets", text=text)
    if done.returncode not in (0, 1):
        raise AssertionError(done.stderr)
    return json.loads(done.stdout)["payload"] if done.returncode == 0 else None


def digits(rows):
    """Rows of "0110" as rows of numbers."""
    return [[int(c) for c in row] for row in rows]


class PageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()  # pylint: disable=consider-using-with
        path = os.path.join(cls.folder.name, "reference.html")
        with open(path, "w", encoding="utf-8") as file:
            file.write(run("page").stdout)
        cls.url = "file://" + path
        cls.browser = browser()
        cls.messages = json.loads(run("describe", "--all", "--json").stdout)
        examples = [line.split() for line in example("messages.txt").splitlines()]
        cls.examples = [(file, name) for file, name in examples if file.endswith(".xml")]

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()
        cls.folder.cleanup()

    def setUp(self):
        self.size(1440)
        self.browser.get("about:blank")
        self.browser.get_log("performance")
        self.browser.get(self.url)

    def tearDown(self):
        self.assertEqual([], [entry["message"] for entry in self.browser.get_log("browser")])
        events = [json.loads(entry["message"])["message"] for entry in self.browser.get_log("performance")]
        asked = {event["params"]["request"]["url"].split("#")[0] for event in events if event["method"] == "Network.requestWillBeSent"}
        self.assertLessEqual(asked, {self.url, "about:blank"})

    def go(self, address):
        self.run_script("""
            if (location.hash.slice(1) !== given[0]) {
                const gone = new Promise(done => addEventListener("hashchange", done, { once: true }));
                location.hash = given[0];
                await gone;
            }""", address)

    def run_script(self, script, *arguments):
        """The script's result, waited for; it knows the arguments as `given`."""
        result, fault = self.browser.execute_async_script(
            "const done = arguments[arguments.length - 1];(async (...given) => {" + script + "})(...arguments)"
            ".then(result => done([result, null]), fault => done([null, String(fault.stack)]))", *arguments)
        self.assertIsNone(fault)
        return result

    def press(self, *keys, held=None):
        actions = webdriver.ActionChains(self.browser)
        if held:
            actions.key_down(held)
        actions.send_keys(*keys)
        if held:
            actions.key_up(held)
        actions.perform()

    def drag(self, start, *ends):
        """Of two or more elements; one alone is clicked."""
        actions = webdriver.ActionChains(self.browser, duration=20).click_and_hold(start)
        for end in ends:
            actions.move_to_element(end)
        actions.release().perform()

    def size(self, width, dark=False, media=""):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": 1000, "deviceScaleFactor": 1, "mobile": False})
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "media": media, "features": [{"name": "prefers-color-scheme", "value": "dark" if dark else "light"}]})

    def texts(self, selector):
        return self.run_script("return [...document.querySelectorAll(given[0])].map(each => each.textContent)", selector)

    def wait_for(self, heading):
        """Until the view has this heading; what a key press sets off is not done when it returns."""
        for _ in range(50):
            if self.texts("h1") == [heading]:
                return
            time.sleep(0.1)
        self.assertEqual([heading], self.texts("h1"))

    def text(self):
        """What the message's text is now."""
        return self.run_script("return document.querySelector('.workbench textarea').value")

    def put(self, text):
        """Types the text in place of the example; returns how it is judged and what is found."""
        return self.run_script("""
            const box = document.querySelector(".workbench textarea");
            box.value = given[0];
            box.dispatchEvent(new Event("input"));
            return [document.querySelector(".verdict").className, document.querySelector(".findings").textContent];""", text)

    def cells(self, figure):
        """The states of the cells of a drawing, row by row."""
        flat, columns = self.run_script("""
            const grid = document.querySelectorAll("[role=grid]")[given[0]];
            return [[...grid.querySelectorAll("[role=gridcell]")].map(each => Number(each.dataset.state)), Number(grid.ariaColCount)];""", figure)
        return [flat[at:at + columns] for at in range(0, len(flat), columns)]

    def cell(self, figure, row, column):
        return self.run_script("""
            const grid = document.querySelectorAll("[role=grid]")[given[0]];
            const cell = grid.querySelectorAll("[role=gridcell]")[given[1] * Number(grid.ariaColCount) + given[2]];
            cell.scrollIntoView({ block: "center", behavior: "instant" });
            return cell;""", figure, row, column)

    def test_shows_every_message_without_a_complaint(self):
        names = self.run_script("return [...document.querySelectorAll('#list a')].map(each => each.hash.slice(1))")
        self.assertEqual(sorted(message["name"] for message in self.messages), sorted(names))
        for message in self.messages:
            self.go(message["name"])
            self.assertEqual([message["name"]], self.texts("h1"))
            self.assertEqual("example: " + message["name"], "example: " + self.run_script(
                "return document.querySelector('.workbench textarea').value.length > 20 ? given[0] : ''", message["name"]))
            table = message["read"] or message["written"]
            first = [row["key"] for row in table["keys"] if row["key"]][0]
            self.assertEqual(first, self.run_script("return document.querySelector('.elements tbody th a').textContent"))
        self.go("nosuch")
        self.assertEqual(["No such message"], self.texts("h1"))

    def test_search_finds_titles_and_keys_as_one_types(self):
        self.press("/")
        for typed, best in (("motion detection", "md"), ("sensitivityInfoList", "md"), ("net_ptz_cruise_x2s", "ptz-cruise"),
                            ("dayTypeList", "day-record"), ("4604", "ptz-cruise")):
            self.press(*typed)
            self.assertEqual(best, self.texts("#list a .name")[0], typed)
            self.press(Keys.ESCAPE)
        self.assertEqual(len(self.messages), len(self.texts("#list a")))
        self.press(*"daytypel")
        self.assertEqual(["key dayTypeList"], self.texts("#list .hit"))
        self.assertEqual(["1 message"], self.texts("#hits"))
        self.press(Keys.DOWN, Keys.ENTER)
        self.wait_for("day-record")

    def test_addresses_of_keys(self):
        self.browser.get("about:blank")
        self.browser.get(self.url + "#md/scope/valueTable")
        self.assertEqual([True], self.run_script("""
            return [...document.querySelectorAll("tr.target")].map(row => row.id === "md/scope/valueTable" &&
                row.getBoundingClientRect().top > 0 && row.getBoundingClientRect().bottom < innerHeight)"""))

    def test_examples_are_accepted_and_lie_where_the_library_puts_them(self):
        compared = 0
        for file, name in self.examples:
            self.go(name)
            text = example(file)
            verdict, found = self.put(text)
            self.assertEqual(("verdict accepted", False), (verdict, "Refused" in found), file + found)
            here = dict(self.run_script("return [...document.querySelectorAll('tr[data-offset]:not([data-offset=\"\"])')].map(row => [row.dataset.path, row.dataset.offset])"))
            for line in run("parse", name, file, "--memory").stdout.splitlines():
                place = re.match(r" +(\d+) +\d+  .*?  +(?:\d+:\d+\S*|-) +(\S+)", line)
                if place and here.get(path := place[2].replace("[0]", "")):
                    self.assertEqual((file, path, place[1]), (file, path, here[path]))
                    compared += 1
        self.assertGreater(compared, 700)

    def test_judges_texts_as_the_library_does(self):
        """Every leaf of every example once with another text: what the page refuses, the library refuses, too; what
        the library refuses for its range, its form or its word, the page does."""
        texts = ("", "-7", "99999999", "nosuch", "x" * 300, "1234567890123")
        known = re.compile(r"out of range|no whole number|no such word|too long|no base64|cells")
        judged = refused = 0
        for file, name in self.examples:
            self.go(name)
            leaves = [match for match in re.finditer(r">([^<>\s][^<>]*)</", example(file))]
            for leaf in leaves[::max(1, len(leaves) // 8)]:
                text = example(file)[:leaf.start(1)] + texts[judged % len(texts)] + example(file)[leaf.end(1):]
                with self.subTest(file=file, at=leaf[0], text=texts[judged % len(texts)][:20]):
                    verdict, found = self.put(text)
                    done = run("parse", name, "-", text=text)
                    if verdict == "verdict refused":
                        self.assertEqual(1, done.returncode, found)
                    elif known.search(done.stderr):
                        self.assertEqual(0, done.returncode, done.stderr)
                judged += 1
                refused += verdict == "verdict refused"
        self.assertGreater(judged, 500)
        self.assertGreater(refused, 200)

    def test_structure_is_checked(self):
        request = example("motion_request.xml")
        for old, new, said, code in (
                ("<columns>60</columns>", "", "the child “columns” is missing", 1),
                ("<columns>60</columns>", "<columns>61</columns>", "these are 2040 cells, but a grid of 61 × 34 has 2080", 1),
                ("<sensitivityInfoList>", "<sensitivityInfoList><other/>", "no such child is accepted here", 1),
                ("<enable>1</enable>", "<enabled>1</enabled>", "no key answers to it: it has no effect; did you mean “enable”?", 0),
                ("<enable>1</enable>", "<en>1</en>", "“en” is read as “enable”", 0),
                ("rec,push,ftp", "rec,bogus,ftp", "no word of the set: bogus", 0)):
            with self.subTest(new=new):
                self.go("md")
                text = request.replace(old, new, 1)
                self.assertIn(said, self.put(text)[1])
                self.assertEqual(code, run("parse", "md", "-", text=text).returncode)
        self.put(request.replace("<MD ", "<Ntp/><MD ", 1))
        self.assertIn("The root is Ntp, that of md is MD. Read it as ntp Unread beside Ntp: MD.".replace(" ", ""),
                      self.texts(".verdict")[0].replace(" ", ""))
        self.put("<MD><enable>1</MD>")
        self.assertIn("not well-formed XML: line 1", self.texts(".verdict")[0])

    def test_a_pasted_text_finds_its_message_and_stays_a_text(self):
        hostile = "<Ntp><server>&lt;img src=x onerror=alert(1)&gt;</server><port>70000</port><img src='x'/></Ntp>"
        self.run_script("""
            const box = document.getElementById("paste");
            const gone = new Promise(done => addEventListener("hashchange", done, { once: true }));
            box.value = given[0];
            box.dispatchEvent(new Event("input"));
            await gone;""", hostile)
        self.assertEqual((["ntp"], hostile), (self.texts("h1"), self.text()))
        self.assertIn("<img src=x onerror=", "".join(self.texts("td.text")))
        self.assertIn("Refused line 1 port: the number is out of range", self.texts(".findings li")[0])
        self.assertEqual(0, self.run_script("return document.querySelectorAll('img, script:not([type])').length"))

    def test_texts_are_recognised_as_the_inspector_does(self):
        texts = [example(file) for file, _ in self.examples] + [
            "<Other/>", "<body><x/></body>", "<MD/>", "<md><width>1</width></md>", "<body><Ntp/><MD/></body>",
            "<StreamInfoList/>", "<Other><width>1</width></Other>", "<Other><keyPosId>1</keyPosId></Other>"]
        roots = [message["element"] for message in self.messages]
        texts += [f"<{root}/>" for root in sorted(set(filter(None, roots))) if roots.count(root) > 1]
        seen = self.run_script("""
            const box = document.getElementById("paste"); // it works where it is no longer shown, too
            const verdict = document.getElementById("paste-verdict");
            const seen = [];
            for (const text of given[0]) {
                const before = location.hash;
                box.value = text;
                box.dispatchEvent(new Event("input"));
                if (location.hash !== before) await new Promise(done => addEventListener("hashchange", done, { once: true }));
                const offers = [...verdict.querySelectorAll("button")].map(each => each.textContent.replace("Read it as ", ""));
                seen.push([verdict.textContent === "" ? document.querySelector("h1").textContent : null, offers]);
            }
            return seen;""", texts)
        known = 0
        for text, (name, candidates) in zip(texts, seen):
            with self.subTest(text=text[:200]):
                done = run("parse", "-", "--quiet", text=text)
                if done.returncode != 5:
                    self.assertEqual(f"standard input: {name} ", done.stdout[:done.stdout.index("accepted" if done.returncode == 0 else "refused")])
                    known += 1
                else:
                    named = re.search(r": ([a-z0-9, -]+)$", done.stderr.strip())
                    self.assertIn(name, [None] + [row["name"] for row in self.messages if row["read"] is None])
                    if named and name is None:
                        self.assertEqual(sorted(named[1].split(", ")), candidates)
        self.assertGreater(known, 100)

    def test_an_edited_grid_is_what_the_library_reads(self):
        for message, key in (("md", "scope"), ("ai-area-detect", "area")):
            place = lambda payload: digits(payload[key])  # pylint: disable=cell-var-from-loop
            with self.subTest(message=message):
                self.go(message)
                before = self.cells(0)
                self.assertEqual(before, place(parsed(message, self.text())))
                # By the keyboard: three cells of a column from the upper left corner, one by one and in one go.
                self.drag(self.cell(0, 1, 1))
                self.press(Keys.HOME, held=Keys.CONTROL)
                self.press(" ")
                self.press(Keys.DOWN, Keys.DOWN, held=Keys.SHIFT)
                # By the mouse: a stroke in the last row.
                self.drag(self.cell(0, 33, 10), self.cell(0, 33, 11), self.cell(0, 33, 12))
                wanted = [row[:] for row in before]
                for row, column in ((1, 1), (0, 0), (1, 0), (2, 0), (33, 10), (33, 11), (33, 12)):
                    wanted[row][column] = 1 - before[row][column] if row == column == 1 else 1
                self.assertEqual(wanted, self.cells(0))
                self.assertEqual(wanted, place(parsed(message, self.text())))
                self.browser.execute_cdp_cmd("Browser.grantPermissions", {"permissions": ["clipboardReadWrite", "clipboardSanitizedWrite"]})
                self.assertEqual(self.text(), self.run_script("""
                    document.querySelector(".bar button").click();
                    return await navigator.clipboard.readText();"""))
                # All else is as it was.
                file = dict((name, file) for file, name in self.examples)[message]
                blank = lambda text: re.sub(r"[A-Za-z0-9+/=]{60,}", "", text)
                self.assertEqual(blank(example(file)), blank(self.text()))

    def test_an_edited_week_is_what_the_library_reads(self):
        by_type = lambda word: lambda payload: [[1 if word in hour.split(",") else 0 for hour in day]
                                                for day in payload["typeScheduleList"]["section"]]
        weeks = (("md", 1, None, lambda payload: digits(payload["timeBlockList"]["timeBlock"])),
                 ("ptz-cruise", 0, None, lambda payload: digits(payload["keyPos"][0]["valueTable"])),
                 ("ai-track-task", 0, None, lambda payload: digits(re.findall(".{24}", payload["timeTable"]))),
                 ("record-schedule", 2, "record_schedule_types.xml", by_type("IO")),
                 ("record-schedule", 0, "record_schedule_combinations.xml", by_type("IO")))
        for message, figure, file, place in weeks:
            with self.subTest(message=message, file=file):
                several = file == "record_schedule_combinations.xml"  # there several lists say what an hour has
                self.go(message)
                if file:
                    self.put(example(file))
                before = self.cells(figure)
                self.assertEqual(7, len(before))
                if not several:
                    self.assertEqual(before, place(parsed(message, self.text())))
                self.drag(self.cell(figure, 2, 3), self.cell(figure, 2, 4), self.cell(figure, 3, 4))
                if not several:
                    self.press(Keys.END, " ")
                after = self.cells(figure)
                self.assertNotEqual(before, after)
                read = place(parsed(message, self.text()))
                changed = [(day, hour) for day in range(7) for hour in range(24) if before[day][hour] != after[day][hour]]
                self.assertGreater(len(changed), 2)
                for day, hour in changed:
                    self.assertEqual(after[day][hour], read[day][hour], (day, hour))
                if not several:
                    self.assertEqual(after, read)

    def test_edited_days_of_a_month(self):
        self.go("day-record")
        words = ["none", "normal", "alarm", "all"]
        days = lambda: [words.index(day) for day in parsed("day-record", self.text())["DayRecordList"]["DayRecord"][0]["dayTypeList"]["dayType"]]
        self.assertEqual(self.cells(0)[0], days())
        self.drag(self.cell(0, 0, 6))
        self.press(Keys.RIGHT, " ", " ", Keys.END, " ")
        self.assertEqual([1, 2, 2], [self.cells(0)[0][day] for day in (6, 7, 30)])
        self.assertEqual(self.cells(0)[0], days())

    def test_no_accessibility_fault(self):
        with open(AXE, encoding="utf-8") as file:
            axe = file.read()
        for address in ("", "md", "ntp", "support", "record-schedule", "day-record", "ptz-cruise", "link", "ability"):
            for width, dark in ((1440, False), (1440, True), (390, False), (390, True)):
                self.size(width, dark)
                self.go(address)
                if address == "ntp":
                    self.put("<Ntp><port>70000</port><stranger/></Ntp>")
                found = self.run_script(axe + """;
                    const { violations, incomplete, passes } = await axe.run(document, { resultTypes: ["violations"] });
                    return [passes.length, violations.map(each => `${each.id}: ${each.nodes.map(node => node.html.slice(0, 160)).slice(0, 3).join(" ")}`)];""")
                self.assertGreater(found[0], 20)
                self.assertEqual((address, width, dark, []), (address, width, dark, found[1]))
                self.assertLessEqual(self.run_script("return document.documentElement.scrollWidth"), width, address)

    def test_theme(self):
        colour = lambda: self.run_script("return getComputedStyle(document.documentElement).backgroundColor")
        light = colour()
        self.run_script("document.getElementById('theme').click(); document.getElementById('theme').click()")
        self.assertNotEqual(light, colour())
        self.browser.get(self.url)
        self.assertEqual(["Theme: dark"], self.texts("#theme"))
        self.run_script("document.getElementById('theme').click()")
        self.assertEqual(light, colour())

    def test_prints(self):
        self.go("md")
        document = base64.b64decode(self.browser.print_page())
        self.assertEqual(b"%PDF", document[:4])
        self.assertGreater(document.count(b"/Type /Page\n") + document.count(b"/Type /Page "), 2)
        self.size(800, media="print")
        self.assertEqual([], self.run_script("""
            return ["header", "nav", "button", ".workbench textarea"].filter(each => document.querySelector(each).checkVisibility())"""))
        self.assertEqual([example("motion_request.xml")], self.texts(".printed"))
        self.assertTrue(self.run_script("return document.querySelector('.printed').checkVisibility()"))
        self.go("all")
        self.assertEqual(len(self.messages), len(self.texts("article.message")))


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    inspector.NETPARAM = os.path.abspath(sys.argv.pop(1))
    AXE = os.path.abspath(sys.argv.pop(1))
    unittest.main()
