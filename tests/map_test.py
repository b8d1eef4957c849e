#!/usr/bin/env python3
"""map_test.py PARSECS SAMPLES: the map as a person with a browser meets it."""

import contextlib
import json
import os
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from urllib.parse import quote

from browser import Browser, installed

SKIPPED = 77
LIT, FUNCTION, STOPPED = "d6006c", "2f7fc1", "c23b00"  # colours of the style
HOSTILE_NAME = b"<img src=x onerror=alert(1)>'\"\x1b[31m\xff\xe2\x80\xae.cs"  # and texts:
HOSTILE = [
    b'a = "</script><script>document.title = 1</script>"',
    b'b = "<!-- <img src=x onerror=document.title=2> -->"',
    b"c = '\"' + \"'&lt;&amp;{{data}}\"",
]


def parsecs(*arguments, **where):
    return subprocess.run([PARSECS, *map(str, arguments)], check=True, capture_output=True, **where).stdout


def rows_of(*inputs):
    lines = parsecs("--jsonl", *inputs).decode().splitlines()
    return [json.loads(line) for line in lines[1:]]


def is_statement(row):
    return row["kind"] not in ("filepath", "preprocessor") and row["id"] != 1


def functions_of(*inputs):
    """Of what the index calls functions: the file, and how many branches are in it."""
    with tempfile.TemporaryDirectory() as folder:
        parsecs("--db", Path(folder, "db"), *inputs)
        with contextlib.closing(sqlite3.connect(Path(folder, "db"))) as database:
            return database.execute("SELECT path, branches FROM functions").fetchall()


def nesting_of(rows):
    """How deep loops and branches lie in one another."""
    open_rows, deepest = [], 0
    for row in rows:
        open_rows = [outer for outer in open_rows if outer["last"] >= row["id"]]
        if row["kind"] in ("logic", "loop") and row["name"] == "":
            open_rows.append(row)
            deepest = max(deepest, len(open_rows))
    return deepest


def counts_of(rows, functions):
    of = lambda kind: sum(row["kind"] == kind and row["name"] == "" for row in rows)
    return [of("filepath"), functions, sum(map(is_statement, rows)), of("logic"), of("loop")]


class MapTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.browser = Browser()
        cls.rows = rows_of(SAMPLES)

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.folder.cleanup()

    def make(self, *inputs, **where):
        """The address of a page for the inputs."""
        page = Path(self.folder.name, f"{self._testMethodName}.html")
        parsecs("--html", page, *inputs, **where)
        return page.as_uri()

    def sources(self, **texts):
        """A folder of files."""
        folder = Path(self.folder.name, self._testMethodName)
        folder.mkdir()
        for name, text in texts.items():
            Path(folder, f"{name}.cs").write_text(text)
        return folder

    def source(self, name, text):
        path = Path(self.folder.name, os.fsdecode(name))
        path.write_bytes(text)
        return path

    def numbers(self):
        return [int(number.replace(",", "")) for number in re.findall(r"[\d,]+", self.browser.text("#counts"))]

    def list(self, selector):
        return self.browser.run(
            "return [...document.querySelectorAll(arguments[0] + ' .row')].map((row) => row.querySelector('.text').textContent)", selector)

    def wait_for(self, name):
        """Addresses and clicks on links take effect when the browser has told the page."""
        self.browser.wait(f"document.getElementById('name').textContent === {json.dumps(name)}")

    def find(self, query, regex=False, order="source"):
        address = f"#find={quote(query)}&order={order}{'&regex=1' if regex else ''}"
        self.browser.run("delete document.documentElement.dataset.searched; location.hash = arguments[0]", address)
        self.browser.wait("document.documentElement.dataset.searched")
        return self.browser.text("#found")

    def colours(self):
        """Of the map: how many points have which."""
        counts = self.browser.value("""(() => {
            const map = document.getElementById("map");
            const pixels = new Uint32Array(map.getContext("2d").getImageData(0, 0, map.width, map.height).data.buffer);
            const counts = {};
            for (const pixel of pixels) counts[pixel] = (counts[pixel] ?? 0) + 1;
            return counts; })()""")
        return {int(pixel).to_bytes(4, "little").hex()[:6]: count for pixel, count in counts.items()}

    def test_counts_are_those_of_the_rows(self):
        self.browser.open(self.make(SAMPLES))
        functions = functions_of(SAMPLES)
        self.assertEqual(self.numbers(), counts_of(self.rows, len(functions)))
        for file in filter(lambda row: row["id"] == 0, self.rows):
            self.browser.run("location.hash = arguments[0]", "#at=" + str(Path(file["file"]).relative_to(SAMPLES)))
            self.wait_for("≡ " + file["text"])
            rows = [row for row in self.rows if row["file"] == file["file"]]
            most = max(branches for path, branches in functions if path == file["file"])
            facts = [f"{sum(map(is_statement, rows))} statements", f"nesting {nesting_of(rows)}", f"at most {most} branch"]
            for fact in facts:
                self.assertIn(fact, self.browser.text("#facts"))

    def test_search_finds_what_the_rows_hold(self):
        page = self.make(SAMPLES)
        self.browser.open(page)
        shown = [row for row in self.rows if is_statement(row) or row["kind"] == "preprocessor" and row["text"]]
        for query, matches in {
            "levels": lambda text: "levels" in text.lower(),
            "RETURN": lambda text: "RETURN" in text,
            "name this": lambda text: "this" in text.lower() and "name" in text.lower(),
            "[i] <": lambda text: "[i]" in text.lower() and "<" in text,
            "nothing like it": lambda text: False,
            "/^(else )?if\\b.*0/": lambda text: re.search("^(else )?if\\b.*0", text, re.I | re.M),
            "/\\($/": lambda text: re.search("\\($", text, re.M),
            "/[A-Z][a-z]+Exception/": lambda text: re.search("[A-Z][a-z]+Exception", text),
        }.items():
            with self.subTest(query):
                regex = query.startswith("/")
                expected = [row["text"] for row in shown if matches(row["text"]) or matches(row["name"])]
                found = self.find(query.strip("/"), regex)
                self.assertEqual(int(found.split()[0]), len(expected))
                listed = self.list("#hits")
                self.assertEqual(len(listed), min(len(expected), len(listed)))
                for text, row in zip(expected, listed):
                    self.assertTrue(text.replace("\n", "↵").endswith(row.lstrip("…")), (text, row))
        self.assertIn("not a regular", self.find("(", True))

    def test_hits_light_up_and_the_rest_is_dimmed(self):
        self.browser.open(self.make(SAMPLES))
        before = self.colours()
        self.assertNotIn(LIT, before)
        self.find("levels")
        after = self.colours()
        self.assertGreater(after.get(LIT, 0), 1000)
        self.assertLess(after.get(FUNCTION, 0), before[FUNCTION] / 2)

    def test_definitions_come_first_or_alone(self):
        self.browser.open(self.make(SAMPLES))
        found = [row for row in self.rows if is_statement(row) and "count" in f"{row['name']} {row['text']}".lower()]
        rank = lambda row: 3 if row["declares"] == "" else 0 if row["name"].lower() == "count" else 1 if "count" in row["name"].lower() else 2
        alone = [row for row in found if row["declares"] != ""]
        for order, rows in (("source", found), ("definitions", sorted(found, key=rank)), ("alone", sorted(alone, key=rank))):
            with self.subTest(order):
                self.assertEqual(int(self.find("count", order=order).split()[0]), len(rows))
                for row, text in zip(rows, self.list("#hits")):
                    self.assertTrue(row["text"].endswith(text.lstrip("…")), (row, text))

    def test_zoom_and_back(self):
        browser = self.browser
        browser.open(self.make(SAMPLES) + "#at=Inventory.cs")
        start = browser.text("#name")
        browser.click("#map")
        browser.wait(f"document.getElementById('name').textContent !== {json.dumps(start)}")
        inner, address = browser.text("#name"), browser.value("location.href")
        browser.open(address)
        self.assertEqual(browser.text("#name"), inner)
        browser.press(*["Escape"] * 20)
        self.wait_for("▤ samples")
        browser.call("/back", {})
        self.wait_for("≡ Inventory.cs")
        browser.open(self.make(SAMPLES) + "#at=Inventory.cs&colour=constructor&row=-1&box=999999")
        self.assertEqual(browser.text("#name"), "≡ Inventory.cs")
        browser.click("#trail li:first-child a")
        self.wait_for("▤ samples")

    def test_keyboard_alone(self):
        browser = self.browser
        browser.open(self.make(SAMPLES))
        browser.run("document.getElementById('regex').focus()")
        browser.press("/", "Recount", "Enter", "Down", "Enter")
        self.assertEqual(browser.value("document.activeElement.id"), "hits")
        self.assertIn("Recount", browser.text("#text"))
        browser.run("document.getElementById('map').focus()")
        name = browser.text("#name")
        browser.press("Escape", "Down", "Enter")
        self.assertNotEqual(browser.text("#name"), name)
        browser.run("document.getElementById('boxes').focus()")
        browser.press("End")
        chosen = browser.run("return document.querySelector('#boxes [aria-selected=true] .text').textContent")
        self.assertEqual(chosen, browser.text("#text"))

    def test_expressions_that_match_line_feeds_stay_in_their_texts(self):
        lines = "".join(f"v{i} = {i};" for i in range(20_000))
        self.browser.open(self.make(self.source("lines.cs", lines.encode())))
        self.assertEqual(self.find("[^;]*#", True), "0 hits")
        self.assertLess(float(self.browser.value("document.documentElement.dataset.searched")), 2000)
        self.assertEqual(self.find("v[^ ]*7 = 19997$", True), "1 hit")

    def test_no_search_stops_the_page(self):
        self.source("x.cs", b"x" * 60 + b"();")
        self.browser.open(self.make("x.cs", cwd=self.folder.name))  # whose own name may hold an x
        for query, regex, found in (
            ("(x+x+)+y", True, "given up after 5 seconds"),
            ("x|(x+x+)+y", True, "2 hits"),  # the file's name is one
            ("x" * 50_000, True, "too large an expression"),
            ("(" * 50_000, True, "not a regular expression"),
            ("x" * 50_000, False, "0 hits"),
            ("x y " * 12_500, False, "0 hits"),
            ("x " * 25_000, False, "2 hits"),
        ):
            with self.subTest(query[:20]):
                self.assertEqual(self.find(query, regex), found)

    def test_a_click_goes_one_level_and_never_to_nothing(self):
        browser = self.browser
        browser.open(self.make(SAMPLES))
        reached, named = set(), set()
        for x, y in [(x, y) for x in (-300, -150, 60, 250) for y in (-180, -60, 60, 200)]:
            browser.run("location.hash = ''")
            self.wait_for("▤ samples")
            browser.click("#map", x, y, press=False)
            if place := re.search(r" · (\w+\.cs):(\d+) · ", browser.text("#here")):
                named.add(place.groups())
            browser.click("#map", x, y)
            reached.add(browser.text("#name"))
            for _ in range(6):
                browser.click("#map", x, y)
                self.assertGreater(len(self.list("#boxes")), 1)
        self.assertLessEqual({"≡ Inventory.cs", "▤ shop"}, reached)
        self.assertGreater(len(named), 8)
        self.assertLessEqual(named, {(Path(row["file"]).name, str(row["line"])) for row in self.rows})

    def test_labels_tell_neighbours_apart(self):
        names = [f"CosmosDatabaseQuery{middle}{end}Test" for middle in ("Simple", "Nested", "Grouped") for end in "ABCDEFGHIJKL"]
        script = """window.labels = []; const { fillText } = CanvasRenderingContext2D.prototype;
            CanvasRenderingContext2D.prototype.fillText = function (text) { labels.push(text); fillText.apply(this, arguments); };"""
        made = self.browser.devtools("Page.addScriptToEvaluateOnNewDocument", source=script)
        self.browser.open(self.make(self.sources(**{name: "a;" * 50 for name in names})))
        self.browser.devtools("Page.removeScriptToEvaluateOnNewDocument", **made)
        labels = [label for label in self.browser.value("labels") if label.endswith("Test")][-len(names):]
        self.assertEqual(len(set(labels)), len(names), labels)
        self.assertEqual([label for label in labels if label.startswith("Cosmos")], [])

    def test_lists_of_the_largest(self):
        kinds = ("method", "constructor", "destructor", "operator", "conversion", "local")
        measures = []
        for row in filter(lambda row: row["declares"] in kinds, self.rows):
            inside = [other for other in self.rows if other["file"] == row["file"] and row["id"] <= other["id"] <= row["last"]]
            branches = sum(other["kind"] in ("logic", "loop") and other["name"] == "" for other in inside)
            measures.append({"branches": branches, "nesting": nesting_of(inside), "lines": row["endLine"] - row["line"] + 1, "statements": len(inside)})
        page = self.make(SAMPLES)
        for by in measures[0]:
            self.browser.open(f"{page}#list=functions&by={by}")
            self.assertEqual(self.browser.text("#ranked"), f"{len(measures)} functions in samples")
            cells = self.browser.run("return [...document.querySelectorAll('#ranks .' + arguments[0])].map((cell) => Number(cell.textContent))", by)
            self.assertEqual(cells, sorted((measure[by] for measure in measures), reverse=True)[:len(cells)])
        self.browser.click("#ranks .row")
        self.browser.wait("document.getElementById('name').textContent[0] === 'ƒ'")
        self.assertEqual(self.browser.text("#ranks [aria-selected=true] .statements"), str(max(measure["statements"] for measure in measures)))
        self.browser.click("#trail li:first-child a")
        self.wait_for("▤ samples")
        self.browser.run("document.querySelector('[name=list]').click()")
        self.browser.click("#facts button")
        self.assertEqual(self.browser.value("location.hash"), "#list=functions")

    def test_boxes_may_be_as_large_as_lines(self):
        page = self.make(self.sources(busy="a;" * 90, long="a;\n" * 60))
        for address, largest in (("", "busy.cs"), ("#size=lines", "long.cs")):
            self.browser.open(page + address)
            self.browser.run("document.getElementById('map').focus()")
            self.browser.press("Down")
            self.assertIn(largest, self.browser.text("#here"))

    def test_files_that_lack_something_are_marked(self):
        folder = self.sources(whole="class A { }", early="class D { }\n}\nint y;\n" + "a;" * 90,
                              cut="class D { void F() {\n#if A\nif (a) {\n#else\nif (b) {\n#endif\n}\n}\n}")
        self.browser.open(self.make(folder) + "#list=incomplete")
        self.assertEqual(self.list("#ranks"), ["cut.cs", "early.cs"])
        self.assertIn("1 file stopped early", self.browser.text("#counts"))
        self.assertIn("closed file", self.browser.text("#legend"))
        self.assertGreater(self.colours().get(STOPPED, 0), 20)

    def test_the_title_is_the_path_given(self):
        folder = self.sources(a="a;", b="b;")
        for given, where, title in ((folder, "/", str(folder)), (folder.name, folder.parent, f"{folder.parent.name}/{folder.name}"), (".", folder, folder.name)):
            self.browser.open(self.make(given, cwd=where))
            self.assertEqual(self.browser.text("#title"), title)

    def test_links_open_places(self):
        source = self.source("a #?&%+'\"{line}\u00e9.cs", b"class A\n{\n  void F() { if (a) b(); }\n}")
        places = lambda: self.browser.run("return [...document.querySelectorAll('#open, .list a')].map((link) => link.getAttribute('href'))")
        chosen = f"#at={quote(source.name)}&row=2&find=F"
        self.browser.open(self.make(source) + chosen)
        self.assertEqual(places(), [None])
        self.browser.open(self.make("--link", "https://host/{path}?l={line}&c={column}", source) + chosen)
        path = quote(str(source), safe="/'")
        at = lambda line, column: f"https://host/{path}?l={line}&c={column}"
        self.assertEqual(self.browser.run("return document.getElementById('open').href"), at(3, 3))
        self.assertEqual(set(places()), {at(1, 1), at(3, 3), at(3, 14)})

    def test_on_a_narrow_screen_what_was_found_is_seen(self):
        self.browser.devtools("Emulation.setDeviceMetricsOverride", width=400, height=700, deviceScaleFactor=1, mobile=True)
        self.browser.open(self.make(SAMPLES) + "#find=count")
        third = self.browser.value("document.querySelectorAll('#hits .row')[2].getBoundingClientRect().bottom")
        wide = self.browser.value("document.documentElement.scrollWidth")
        self.browser.devtools("Emulation.clearDeviceMetricsOverride")
        self.assertLess(third, 700)
        self.assertLessEqual(wide, 400)

    def test_names_and_roles(self):
        self.browser.open(self.make(SAMPLES) + "#find=a")
        for selector, role in {"#map": "application", "#query": "searchbox", "#boxes": "tree", "#hits": "listbox",
                               "#colour": "combobox", "#trail": "navigation", "#copy": "button"}.items():
            found, label = self.browser.role_and_label(selector)
            self.assertEqual(found, role)
            self.assertNotEqual(label, "", selector)

    def test_nothing_runs_and_nothing_is_fetched(self):
        browser = self.browser
        source = self.source(HOSTILE_NAME, b"".join(line + b";\n" for line in HOSTILE))
        page = self.make(source)
        browser.requests(), browser.complaints()
        browser.open(page)
        self.assertEqual(browser.requests(), [page])
        self.assertEqual(browser.complaints(), [])
        self.assertEqual(browser.value("document.title"), f"Map of {self.folder.name}")
        self.assertEqual(browser.value("document.scripts.length"), 1)
        self.assertEqual(self.list("#boxes"), [line.decode() for line in HOSTILE])
        self.assertEqual(browser.text("#name"), "≡ <img src=x onerror=alert(1)>'\"\\x1b[31m\ufffd\\u202e.cs")
        browser.run("""const script = document.createElement("script");
            script.textContent = "document.title = 'ran'"; document.body.append(script);
            document.body.append(Object.assign(new Image(), {src: "http://127.0.0.1:9/x.png"}));""")
        self.assertNotEqual(browser.value("document.title"), "ran")
        self.assertEqual(len(browser.complaints()), 2)

    def test_a_hundred_thousand_deep(self):
        browser = self.browser
        browser.open(self.make(self.source("deep.cs", b"if (a) {" * 100_000)))
        browser.run("document.getElementById('boxes').focus()")
        browser.press("End")
        last = browser.run("return document.querySelector('#boxes [aria-selected=true]').getAttribute('aria-level')")
        self.assertEqual(int(last), 100_000)
        browser.press("Enter", "Escape", "Escape")
        self.assertEqual(self.find("if (a)"), "100,000 hits")  # no folder has that name

    def test_a_list_of_a_million_has_its_last_row(self):
        self.browser.open(self.make(self.source("long.cs", b"a;" * 999_999 + b'b = "%s";' % (b"c " * 500_000))))
        self.browser.run("document.getElementById('boxes').focus()")
        self.browser.press("End")
        self.assertEqual(self.browser.text("#boxes [aria-posinset='1000000'] .text")[:7], 'b = "c ')
        self.assertIn("1,000,006 letters", self.browser.text("#text"))

    def test_beyond_ten_thousand_files_are_only_definitions(self):
        many = Path(self.folder.name, "many")
        many.mkdir()
        text = Path(SAMPLES, "Inventory.cs").read_bytes()
        first = self.source("first.cs", text)
        names = [many / f"{i}.cs" for i in range(10_001)]
        for name in names:
            os.link(first, name)
        self.browser.open(self.make(many))
        self.assertFalse(self.browser.value("document.getElementById('notice').hidden"))
        self.assertEqual(self.numbers(), [10_001 * count for count in counts_of(rows_of(first), len(functions_of(first)))[:3]])
        self.browser.run("location.hash = '#at=77.cs'")
        self.wait_for("≡ 77.cs")
        facts = self.browser.text("#facts")
        self.browser.open(self.make(many / "77.cs"))
        self.assertEqual(self.browser.text("#facts"), facts)

    def test_light_and_dark_show_something(self):
        shots = []
        for scheme in ("light", "dark"):
            self.browser.devtools("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
            self.browser.open(self.make(SAMPLES))
            shots.append(self.browser.screenshot())
        self.browser.devtools("Emulation.setEmulatedMedia", features=[])
        self.browser.call("/url", {"url": "about:blank"})
        grounds = []
        for shot in shots:
            pixels = self.browser.call("/execute/async", {"args": [shot], "script": """
                const image = new Image();
                image.onload = () => {
                  const canvas = new OffscreenCanvas(image.width, image.height).getContext("2d");
                  canvas.drawImage(image, 0, 0);
                  const pixels = new Uint32Array(canvas.getImageData(0, 0, image.width, image.height).data.buffer);
                  arguments[1]([new Set(pixels).size, pixels.at(-1) & 0xff]);
                };
                image.src = "data:image/png;base64," + arguments[0];"""})
            self.assertGreater(pixels[0], 50)
            grounds.append(pixels[1])
        self.assertGreater(grounds[0] - grounds[1], 200)


if __name__ == "__main__":
    PARSECS, SAMPLES = map(os.path.abspath, sys.argv[1:3])
    if installed() is None:
        print("skipped: chromium and chromedriver are not installed")
        sys.exit(SKIPPED)
    unittest.main(argv=sys.argv[:1], verbosity=2)
